#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <cstdlib>

#include "commands/unicode_text.h"
#include "lantern/program_environment.h"

namespace qrl {

namespace {

std::string ToUtf8(std::wstring_view wide) {
  return Utf16ToUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(wide.data()), wide.size()));
}

}  // namespace

// The narrow argv holds the arguments in the ANSI code page, which loses
// whatever that page lacks; the wide command line has them all.
std::vector<std::string> ProgramArguments(int, char**) {
  SetConsoleOutputCP(CP_UTF8);
  int count = 0;
  LPWSTR* wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  if (!wide) return arguments;
  arguments.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) arguments.push_back(ToUtf8(wide[i]));
  LocalFree(wide);
  return arguments;
}

std::string ExecutableFolder() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return "";
    if (length < path.size()) {
      path.resize(length);
      break;
    }
    path.resize(path.size() * 2);
  }
  const std::string executable = ToUtf8(path);
  return executable.substr(0, executable.find_last_of("\\/") + 1);
}

void SetEnvironment(const char* name, const std::string& value) {
  _putenv_s(name, value.c_str());
}

bool InputIsInteractive() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

}  // namespace qrl
