// The queue's facts by libcups.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "device_model/QueueFacts.h"

namespace commandfilter {

/// The queue that the scheduler names in the environment: its PPD file under "PPD", its name under
/// "PRINTER". libcups is loaded by the first question that needs it.
class CupsQueueFacts final : public QueueFacts {
 public:
  /// How long the scheduler may take to connect, and for each part of its answer. It is on the same
  /// machine, so one that takes longer hangs.
  static constexpr double kSeconds = 10;

  /// `seconds` is for tests.
  explicit CupsQueueFacts(double seconds = kSeconds) noexcept : seconds_(seconds) {}

  [[nodiscard]] std::string ppdAttribute(const char* name) override;
  [[nodiscard]] std::vector<InstallableOption> installableOptions() override;
  [[nodiscard]] const QueueAttributes& attributes() override;
  void forgetAnswers() noexcept override { attributes_.reset(); }
  [[nodiscard]] URIParts partsOfURI(const std::string& uri) override;

 private:
  double seconds_;
  std::optional<QueueAttributes> attributes_;
};

}  // namespace commandfilter
