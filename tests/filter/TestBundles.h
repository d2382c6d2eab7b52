// Bundles in folders of a test's own, made from the test bundles of the build.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter::testing {

/// The text of a property list with this content, which is XML.
[[nodiscard]] std::string propertyList(std::string_view content);
/// A key and the array of strings under it, as the content of a dictionary.
[[nodiscard]] std::string arrayEntry(std::string_view key, const std::vector<std::string>& strings);

/// Where the build left a test bundle, named without "Test".
[[nodiscard]] std::filesystem::path builtBundle(std::string_view bundle);
/// Where the build left its code.
[[nodiscard]] std::filesystem::path builtCode(std::string_view bundle);

/// Makes a bundle with a copy of a test bundle's code and these commands. Its principal class is
/// the first that the code hands over.
std::filesystem::path addBundle(const std::filesystem::path& folder, const std::string& name,
                                std::string_view code, const std::vector<std::string>& commands);
/// The same with another information property list.
std::filesystem::path addBundleWithInfo(const std::filesystem::path& folder,
                                        const std::string& name, std::string_view code,
                                        std::string_view info);

/// Makes an application bundle that names these folders under "PlugInLocations".
std::filesystem::path addApplication(const std::filesystem::path& folder,
                                     const std::vector<std::string>& locations);

/// Where the code of a bundle lies that was made here.
[[nodiscard]] std::filesystem::path codeOf(const std::filesystem::path& bundle);
/// True when the code of the bundle is loaded in this process.
[[nodiscard]] bool isLoaded(const std::filesystem::path& bundle);

}  // namespace commandfilter::testing
