#include <windows.h>

#include <string>

#include "commands/unicode_text.h"
#include "lantern/host/module_host.h"

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

}  // namespace

void* ModuleHost::OpenLibrary(const std::string& path) {
  const std::u16string wide = Utf8ToUtf16(path);
  HMODULE library = LoadLibraryW(reinterpret_cast<const wchar_t*>(wide.c_str()));
  if (library == nullptr) {
    throw ModuleLoadError("cannot load the module " + path + ": " + LoaderText(GetLastError()));
  }
  return library;
}

// GetProcAddress gives every export as one generic function type; the
// caller casts it to the export's own through void*.
void* ModuleHost::LibrarySymbol(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void ModuleHost::CloseLibrary(void* library) {
  if (library != nullptr) FreeLibrary(static_cast<HMODULE>(library));
}

}  // namespace qrl
