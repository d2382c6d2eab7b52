#include "TestBundles.h"

#include <dlfcn.h>

#include "support/File.h"

namespace commandfilter::testing {

namespace fs = std::filesystem;

namespace {

constexpr const char* kCodeName = "Code";

}  // namespace

std::string propertyList(std::string_view content) {
  std::string text = R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0">)";
  return text.append(content).append("</plist>\n");
}

std::string arrayEntry(std::string_view key, const std::vector<std::string>& strings) {
  std::string text = "<key>";
  text.append(key).append("</key><array>");
  for (const std::string& string : strings) {
    text.append("<string>").append(string).append("</string>");
  }
  return text.append("</array>");
}

fs::path builtBundle(std::string_view bundle) {
  return fs::path(TEST_BUNDLES) / ("Test" + std::string(bundle) + ".bundle");
}

fs::path builtCode(std::string_view bundle) {
  return builtBundle(bundle) / "Contents" / "Linux" / ("Test" + std::string(bundle));
}

fs::path addBundleWithInfo(const fs::path& folder, const std::string& name, std::string_view code,
                           std::string_view info) {
  const fs::path bundle = folder / name;
  fs::create_directories(bundle / "Contents" / "Linux");
  fs::copy_file(builtCode(code), codeOf(bundle));
  writeFile(bundle / "Contents" / "Info.plist", info);
  return bundle;
}

fs::path addBundle(const fs::path& folder, const std::string& name, std::string_view code,
                   const std::vector<std::string>& commands) {
  std::string content = "<dict><key>CFBundleExecutable</key><string>";
  content.append(kCodeName).append("</string>");
  content.append(arrayEntry("SupportedCommands", commands)).append("</dict>");
  return addBundleWithInfo(folder, name, code, propertyList(content));
}

fs::path addApplication(const fs::path& folder, const std::vector<std::string>& locations) {
  const fs::path application = folder / "Test.app";
  fs::create_directories(application / "Contents" / "Linux");
  writeFile(application / "Contents" / "Info.plist",
            propertyList("<dict>" + arrayEntry("PlugInLocations", locations) + "</dict>"));
  return application;
}

fs::path codeOf(const fs::path& bundle) { return bundle / "Contents" / "Linux" / kCodeName; }

bool isLoaded(const fs::path& bundle) {
  void* handle = dlopen(codeOf(bundle).c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (handle == nullptr) return false;
  dlclose(handle);
  return true;
}

}  // namespace commandfilter::testing
