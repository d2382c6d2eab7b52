// What a run loop waits for.
#pragma once

#include <memory>
#include <utility>

#include "runtime/Export.h"

namespace commandfilter {

class RunLoopEntry;

/// Owns a descriptor source or a timer in one mode of a run loop, and takes it out when it goes.
/// The run loop lives at least as long as its sources. Callbacks may remove, move or destroy any
/// source, the one that they are called for included; what that callback captured then lives until
/// it returns.
class COMMANDFILTER_EXPORT RunLoopSource {
 public:
  /// Owns nothing.
  RunLoopSource() noexcept = default;
  RunLoopSource(RunLoopSource&& other) noexcept = default;
  RunLoopSource& operator=(RunLoopSource&& other) noexcept {
    RunLoopSource moved(std::move(other));
    entry_.swap(moved.entry_);
    return *this;
  }
  RunLoopSource(const RunLoopSource&) = delete;
  RunLoopSource& operator=(const RunLoopSource&) = delete;
  ~RunLoopSource() { remove(); }

  /// Takes the source out of its mode; its callback is not called again. Does nothing for a source
  /// that is out already.
  void remove() noexcept;
  /// True while the source is in its mode. A timer that fires once is out when its callback runs.
  [[nodiscard]] bool isScheduled() const noexcept;

 private:
  friend class RunLoop;
  explicit RunLoopSource(std::shared_ptr<RunLoopEntry> entry) noexcept;

  std::shared_ptr<RunLoopEntry> entry_;
};

}  // namespace commandfilter
