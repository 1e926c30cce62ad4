// Version and description on Linux: there is no version resource and no
// language file here, so the number is the one the build declares and the
// description is always the built-in text.
#include <dlfcn.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "host/module_version.h"

namespace qrl {
namespace {

constexpr std::string_view BuiltInDescription = "DllMapServices extender API example";

// Any object of this module will do to ask the loader where the module is.
const char ModuleAnchor = 0;

}  // namespace

std::int32_t ReadVersionNumber() {
  return QRL_VERSION_NUMBER;
}

bool ReadModuleBaseName(char* name) {
  Dl_info info{};
  if (dladdr(&ModuleAnchor, &info) == 0 || !info.dli_fname) return false;
  const std::string_view path = info.dli_fname;
  if (path.empty() || path.size() >= TextFieldSize) return false;
  std::string_view file = path.substr(path.find_last_of('/') + 1);
  if (const auto dot = file.find_last_of('.'); dot != std::string_view::npos)
    file = file.substr(0, dot);
  std::memcpy(name, file.data(), file.size());
  name[file.size()] = '\0';
  return true;
}

// In a description `~` stands for a line break and `|` for a tab, so that a
// one-line text can carry both.
void LoadDescription(char* buffer) {
  const auto length = std::min(BuiltInDescription.size(), TextFieldSize - 1);
  std::memcpy(buffer, BuiltInDescription.data(), length);
  buffer[length] = '\0';
  for (char* c = buffer; *c; ++c) {
    if (*c == '~') *c = '\n';
    else if (*c == '|') *c = '\t';
  }
}

}  // namespace qrl
