#include "integration/InstalledProduct.h"

#include <stdexcept>
#include <utility>

#include "TestBundles.h"
#include "support/ChildProcess.h"
#include "support/File.h"

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

std::filesystem::path InstalledProduct::contents() const {
  return prefix_ / "lib" / "commandfilter" / "CommandFilter.app" / "Contents";
}

void InstalledProduct::addPlugIn(std::string_view bundle,
                                 const std::vector<std::string>& commands) const {
  addBundle(prefix_ / "lib" / "commandfilter" / "plugins", std::string(bundle), bundle, commands);
}

void InstalledProduct::removeDeviceModel() const {
  if (std::filesystem::remove_all(contents() / "Frameworks" / "VemoDeviceModel.bundle") == 0) {
    throw std::runtime_error("no device model is installed");
  }
}

void InstalledProduct::setSystemVersion(std::string_view version) const {
  const std::filesystem::path resources = contents() / "Resources";
  std::filesystem::create_directories(resources);
  std::string entries = "<dict><key>ProductVersion</key><string>";
  entries.append(version).append("</string></dict>");
  writeFile(resources / "SystemVersion.plist", propertyList(entries));
}

}  // namespace commandfilter::testing
