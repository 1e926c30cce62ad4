#include <windows.h>

#include <string>

#include "commands/unicode_text.h"
#include "lantern/module_host.h"

namespace qrl {

namespace {

std::string LoaderText(DWORD error) {
  char* text = nullptr;
  const DWORD length = FormatMessageA(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, error, 0, reinterpret_cast<char*>(&text), 0, nullptr);
  std::string message = length ? std::string(text, length) : "error " + std::to_string(error);
  LocalFree(text);
  while (!message.empty() && (message.back() == '\n' || message.back() == '\r')) message.pop_back();
  return message;
}

// GetProcAddress gives every export as one generic function type; the cast
// goes through void* because the two function types have nothing in common.
template <class Function>
Function ExportOf(HMODULE library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

}  // namespace

std::unique_ptr<ModuleHost> ModuleHost::Load(const std::string& path) {
  const std::u16string wide = Utf8ToUtf16(path);
  HMODULE library = LoadLibraryW(reinterpret_cast<const wchar_t*>(wide.c_str()));
  if (library == nullptr) {
    throw ModuleLoadError("cannot load the module " + path + ": " + LoaderText(GetLastError()));
  }
  ModuleExports exports;
  exports.query = ExportOf<QORExtenderQueryFn>(library, "QORExtenderQuery");
  exports.dispatch = ExportOf<QORExtender2Fn>(library, "QORExtender2");
  if (exports.query == nullptr || exports.dispatch == nullptr) {
    const std::string missing = exports.query == nullptr ? "QORExtenderQuery" : "QORExtender2";
    FreeLibrary(library);
    throw ModuleLoadError(path + " is no extender module: it does not export " + missing);
  }
  try {
    auto host = std::make_unique<ModuleHost>(exports);
    host->library_ = library;
    return host;
  } catch (...) {
    FreeLibrary(library);
    throw;
  }
}

void ModuleHost::CloseLibrary(void* library) {
  if (library != nullptr) FreeLibrary(static_cast<HMODULE>(library));
}

}  // namespace qrl
