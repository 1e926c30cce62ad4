#include "browser/linux/data_folder.h"

#include <sys/stat.h>

#include <cstdlib>
#include <string>

#include "commands/unicode_text.h"

namespace qrl {
namespace {

bool IsAbsolute(const char* path) { return path && path[0] == '/'; }

}  // namespace

std::optional<std::u16string> UserDataHome() {
  const char* dataHome = std::getenv("XDG_DATA_HOME");
  if (IsAbsolute(dataHome)) return Utf8ToUtf16(dataHome);
  const char* home = std::getenv("HOME");
  if (IsAbsolute(home)) return Utf8ToUtf16(std::string(home) + "/.local/share");
  return std::nullopt;
}

void MakeFolder(std::u16string_view path) { ::mkdir(Utf16ToUtf8(path).c_str(), 0700); }

}  // namespace qrl
