// The product as it is installed, in a folder of the test's own.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter::testing {

/// Installs this build below a prefix that every user can reach, as the scheduler's filters run as
/// another one.
class InstalledProduct {
 public:
  /// @throws std::runtime_error when the installation fails.
  explicit InstalledProduct(std::filesystem::path prefix);

  /// The link that the scheduler follows.
  [[nodiscard]] std::filesystem::path filter() const;
  /// Installs a copy of a test bundle, named without "Test", for these commands.
  void addPlugIn(std::string_view bundle, const std::vector<std::string>& commands) const;
  /// Takes the device-model framework out of the application.
  void removeDeviceModel() const;
  /// Sets the version of the system that the filter takes itself to run under.
  void setSystemVersion(std::string_view version) const;

 private:
  [[nodiscard]] std::filesystem::path contents() const;

  std::filesystem::path prefix_;
};

}  // namespace commandfilter::testing
