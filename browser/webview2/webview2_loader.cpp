#include "browser/webview2/webview2_loader.h"

#include <string>

namespace qrl::webview2 {
namespace {

constexpr wchar_t LoaderName[] = L"WebView2Loader.dll";

// The folder of the module that holds this code, with its trailing
// backslash; empty when it cannot be told.
std::wstring OwnModuleFolder() {
  HMODULE self = nullptr;
  if (!GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          reinterpret_cast<LPCWSTR>(&FindLoader), &self))
    return {};
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(self, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length < path.size()) {
      path.resize(length);
      break;
    }
    path.resize(path.size() * 2);
  }
  return path.substr(0, path.find_last_of(L"\\/") + 1);
}

HMODULE LoadLoaderLibrary() {
  const std::wstring folder = OwnModuleFolder();
  if (!folder.empty()) {
    if (HMODULE beside = LoadLibraryW((folder + LoaderName).c_str())) return beside;
  }
  return LoadLibraryW(LoaderName);
}

}  // namespace

LoaderEntry FindLoader() {
  static CreateEnvironmentWithOptionsFn found = nullptr;
  if (found) return {found, S_OK};
  HMODULE loader = LoadLoaderLibrary();
  if (!loader) return {nullptr, HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND)};
  found = reinterpret_cast<CreateEnvironmentWithOptionsFn>(
      reinterpret_cast<void*>(GetProcAddress(loader, CreateEnvironmentWithOptionsName)));
  if (found) return {found, S_OK};
  // A library of that name without the entry point is not the loader.
  FreeLibrary(loader);
  return {nullptr, HRESULT_FROM_WIN32(ERROR_PROC_NOT_FOUND)};
}

}  // namespace qrl::webview2
