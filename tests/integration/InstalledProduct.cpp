#include "integration/InstalledProduct.h"

#include <stdexcept>
#include <utility>

#include "TestBundles.h"
#include "support/ChildProcess.h"

namespace commandfilter::testing {

InstalledProduct::InstalledProduct(std::filesystem::path prefix) : prefix_(std::move(prefix)) {
  ChildOptions options;
  options.program = CMAKE_PROGRAM;
  options.arguments = {"cmake", "--install", BUILD_FOLDER, "--prefix", prefix_.string()};
  options.environment = {"PATH=/usr/bin:/bin"};
  const ChildResult result = runChild(options);
  if (result.exitStatus != 0) throw std::runtime_error("cannot install: " + result.errors);
}

std::filesystem::path InstalledProduct::filter() const {
  return prefix_ / "lib" / "cups" / "filter" / "commandfilter";
}

void InstalledProduct::addPlugIn(std::string_view bundle,
                                 const std::vector<std::string>& commands) const {
  addBundle(prefix_ / "lib" / "commandfilter" / "plugins", std::string(bundle), bundle, commands);
}

}  // namespace commandfilter::testing
