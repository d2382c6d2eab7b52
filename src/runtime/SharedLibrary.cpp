#include "runtime/SharedLibrary.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "runtime/File.h"
#include "runtime/FileDescriptor.h"

namespace commandfilter {

namespace {

// True for a library that ends before its segments do, as one does that is still being copied: the
// loader maps it all the same, and the process dies of SIGBUS.
bool isCutOff(const std::string& path) {
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat status {};
  if (!file || fstat(file.get(), &status) != 0) return false;
  ElfW(Ehdr) header{};
  if (pread(file.get(), &header, sizeof header, 0) != static_cast<ssize_t>(sizeof header) ||
      std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
      header.e_phentsize != sizeof(ElfW(Phdr))) {
    // No library of this machine, which the loader notices itself.
    return false;
  }
  std::vector<ElfW(Phdr)> segments(header.e_phnum);
  const std::size_t size = segments.size() * sizeof(ElfW(Phdr));
  if (pread(file.get(), segments.data(), size, static_cast<off_t>(header.e_phoff)) !=
      static_cast<ssize_t>(size)) {
    return true;
  }
  const auto end = static_cast<std::size_t>(status.st_size);
  return std::ranges::any_of(segments, [end](const ElfW(Phdr) & segment) {
    return segment.p_type == PT_LOAD &&
           (segment.p_offset > end || segment.p_filesz > end - segment.p_offset);
  });
}

Result<void*> loadCode(const char* place, int binding) {
  void* handle = dlopen(place, binding | RTLD_LOCAL);
  if (handle != nullptr) return handle;
  const char* reason = dlerror();
  return Failure{reason != nullptr ? reason : "cannot be loaded"};
}

// False when something took the place of the C library's allocator: sanitizers, or a library that
// was loaded before all others.
bool usesOwnAllocator() noexcept {
  void* library = dlopen("libc.so.6", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) return false;
  const bool same = dlsym(library, "malloc") == dlsym(RTLD_DEFAULT, "malloc");
  dlclose(library);
  return same;
}

}  // namespace

Result<SharedLibrary> SharedLibrary::open(const std::string& path) {
  // The loader would wait for a writer if this were a fifo.
  if (!isRegularFile(path)) return Failure{"is not a regular file"};
  if (isCutOff(path)) return Failure{"is cut off"};
  // A name without a slash would be searched for in the system's folders.
  const std::string place = path.find('/') == std::string::npos ? "./" + path : path;
  Result<void*> handle = loadCode(place.c_str(), RTLD_NOW);
  if (!handle) return Failure{handle.reason()};
  return SharedLibrary(*handle, Kind::Bundle);
}

Result<SharedLibrary> SharedLibrary::openSystemLibrary(const SystemLibrary& library) {
  // The loader's searches are nearly the whole cost of libcups: functions that are never called are
  // not searched for, and those that are, not in this program first. A library that searches so
  // would not see an allocator that took the place of the C library's.
  const int binding = RTLD_LAZY | (usesOwnAllocator() ? RTLD_DEEPBIND : 0);
  for (const char* part : library.parts) static_cast<void>(loadCode(part, binding));
  Result<void*> handle = loadCode(library.name, binding);
  if (!handle) return Failure{handle.reason()};
  return SharedLibrary(*handle, Kind::System);
}

SharedLibrary::~SharedLibrary() {
  if (handle_ != nullptr) dlclose(handle_);
}

const void* SharedLibrary::symbol(const char* name) const noexcept {
  // Without a library, the loader would search the whole process.
  if (handle_ == nullptr) return nullptr;
  const void* address = dlsym(handle_, name);
  // Asking whose the address is costs a walk over all the library's names.
  if (address == nullptr || kind_ == Kind::System) return address;
  // The search goes on in the libraries that this one is linked with; their names do not count.
  link_map* self = nullptr;
  dl_find_object found{};
  const bool own = dlinfo(handle_, RTLD_DI_LINKMAP, &self) == 0 &&
                   _dl_find_object(const_cast<void*>(address), &found) == 0 &&
                   found.dlfo_link_map == self;
  return own ? address : nullptr;
}

}  // namespace commandfilter
