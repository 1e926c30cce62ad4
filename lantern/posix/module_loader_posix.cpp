#include <dlfcn.h>

#include "lantern/host/module_host.h"

namespace qrl {

namespace {

std::string LoaderText() {
  const char* text = dlerror();
  return text ? text : "unknown loader failure";
}

}  // namespace

void* ModuleHost::OpenLibrary(const std::string& path) {
  // A bare file name would send the loader through the library search path;
  // the host means the file in the current directory.
  const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
  // Loaded as any host loads an extender: whether it may be unmapped again is
  // the module's own business.
  void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    // The loader's text names the file itself, mostly.
    const std::string reason = LoaderText();
    throw ModuleLoadError("cannot load the module " +
                          (reason.starts_with(file) ? reason : file + ": " + reason));
  }
  return library;
}

void* ModuleHost::LibrarySymbol(void* library, const char* name) { return dlsym(library, name); }

void ModuleHost::CloseLibrary(void* library) {
  if (library != nullptr) dlclose(library);
}

}  // namespace qrl
