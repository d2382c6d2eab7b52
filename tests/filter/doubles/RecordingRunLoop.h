// A run loop that notes how it is run.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "runtime/RunLoop.h"

namespace commandfilter::testing {

/// Runs as its base does, but never waits, and calls back before each run.
class RecordingRunLoop final : public RunLoop {
 public:
  static const Class kClass;

  struct Run {
    std::string mode;
    Deadline limit;
    /// When the run before this one had ended, and when this one began.
    Deadline earliest;
    Deadline latest;
    bool ran;
  };

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  bool runMode_beforeDate(const String& mode, Deadline limit) override {
    const Deadline now = std::chrono::steady_clock::now();
    if (beforeRun) beforeRun(runs.size());
    const bool ran = RunLoop::runMode_beforeDate(mode, Deadline::min());
    runs.push_back(
        {mode.text(), limit, std::exchange(ended_, std::chrono::steady_clock::now()), now, ran});
    return ran;
  }

  /// Called with the number of runs so far.
  std::function<void(std::size_t)> beforeRun;
  std::vector<Run> runs;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  RecordingRunLoop() noexcept : ended_(std::chrono::steady_clock::now()) {}
  ~RecordingRunLoop() override = default;

  Deadline ended_;
};

inline constinit const Class RecordingRunLoop::kClass{.name = "RecordingRunLoop",
                                                      .base = &RunLoop::kClass};

}  // namespace commandfilter::testing
