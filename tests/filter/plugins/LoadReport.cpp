// Tells when the code of the bundle comes and goes. Part of every test bundle.
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

const int kPlace = 0;

void report(const char* what) {
  Dl_info info{};
  if (std::getenv("REPORT_LOADED_CODE") == nullptr || dladdr(&kPlace, &info) == 0) return;
  std::string_view name = info.dli_fname;
  name.remove_prefix(name.rfind('/') + 1);
  const bool closed = fcntl(STDOUT_FILENO, F_GETFD) == -1;
  static_cast<void>(std::fprintf(stderr, "%s %.*s, standard output is %s\n", what,
                                 static_cast<int>(name.size()), name.data(),
                                 closed ? "closed" : "open"));
}

[[gnu::constructor]] void reportLoading() { report("loaded"); }
[[gnu::destructor]] void reportUnloading() { report("unloaded"); }

}  // namespace
