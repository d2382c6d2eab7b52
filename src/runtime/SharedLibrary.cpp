#include "runtime/SharedLibrary.h"

#include <dlfcn.h>
#include <link.h>

#include <string_view>

#include "runtime/File.h"

namespace commandfilter {

namespace {

Result<void*> loadCode(const char* place) {
  void* handle = dlopen(place, RTLD_NOW | RTLD_LOCAL);
  if (handle != nullptr) return handle;
  const char* reason = dlerror();
  return Failure{reason != nullptr ? reason : "cannot be loaded"};
}

}  // namespace

Result<SharedLibrary> SharedLibrary::open(const std::string& path) {
  // The loader would wait for a writer if this were a fifo.
  if (!isRegularFile(path)) return Failure{"is not a regular file"};
  // A name without a slash would be searched for in the system's folders.
  const std::string place = path.find('/') == std::string::npos ? "./" + path : path;
  Result<void*> handle = loadCode(place.c_str());
  if (!handle) return Failure{handle.reason()};
  return SharedLibrary(*handle);
}

Result<SharedLibrary> SharedLibrary::openSystemLibrary(const char* name) {
  Result<void*> handle = loadCode(name);
  if (!handle) return Failure{handle.reason()};
  return SharedLibrary(*handle);
}

SharedLibrary::~SharedLibrary() {
  if (handle_ != nullptr) dlclose(handle_);
}

const void* SharedLibrary::symbol(const char* name) const noexcept {
  // Without a library, the loader would search the whole process.
  if (handle_ == nullptr) return nullptr;
  const void* address = dlsym(handle_, name);
  if (address == nullptr) return nullptr;
  // The search goes on in the libraries that this one is linked with; their names do not count.
  const link_map* self = nullptr;
  Dl_info found{};
  if (dlinfo(handle_, RTLD_DI_LINKMAP, &self) != 0 || dladdr(address, &found) == 0) return nullptr;
  const bool own = reinterpret_cast<ElfW(Addr)>(found.dli_fbase) == self->l_addr;
  return own ? address : nullptr;
}

}  // namespace commandfilter
