// A source or timer in one mode of a run loop.
#pragma once

#include <uv.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <variant>

#include "runtime/FileDescriptor.h"
#include "runtime/Ref.h"
#include "runtime/RunLoop.h"

namespace commandfilter {

/// Holds the run loop as long as it is scheduled; its mode and its RunLoopSource share it. libuv's
/// callbacks only mark it as due: it is served by the mode, outside libuv, so that what a callback
/// throws passes through no C code.
class RunLoopEntry {
 public:
  RunLoopEntry(RunLoop& loop, RunLoopMode& mode, RunLoop::Callback callback)
      : loop_(&loop), mode_(&mode), callback_(std::move(callback)) {}
  RunLoopEntry(const RunLoopEntry&) = delete;
  RunLoopEntry& operator=(const RunLoopEntry&) = delete;
  ~RunLoopEntry() = default;

  /// Watches a descriptor of its own. Returns libuv's error, 0 for success.
  [[nodiscard]] int watch(FileDescriptor descriptor, RunLoop::Readiness readiness);
  /// Starts the timer; a repetition of 0 fires once.
  void start(std::uint64_t milliseconds, std::uint64_t repetition) noexcept;
  /// Takes it out of its mode. The run loop may be gone afterwards.
  void remove() noexcept;

  [[nodiscard]] bool isScheduled() const noexcept { return mode_ != nullptr; }
  [[nodiscard]] bool isTimer() const noexcept {
    return std::holds_alternative<uv_timer_t>(handle_);
  }
  [[nodiscard]] bool isDue() const noexcept { return isDue_; }
  void forget() noexcept { isDue_ = false; }
  /// The number of the round in which it was served last.
  [[nodiscard]] std::uint64_t lastServed() const noexcept { return lastServed_; }
  /// Calls back. A timer that fires once is removed first.
  void serve(std::uint64_t round);

 private:
  [[nodiscard]] uv_handle_t* handle() noexcept;
  [[nodiscard]] int startWatching() noexcept;

  RefPtr<RunLoop> loop_;
  RunLoopMode* mode_;
  RunLoop::Callback callback_;
  FileDescriptor descriptor_;
  std::variant<std::monostate, uv_timer_t, uv_poll_t> handle_;
  int events_ = 0;
  std::uint64_t lastServed_ = 0;
  bool repeats_ = false;
  bool isDue_ = false;
  /// libuv stops watching a descriptor that has an error.
  bool isStopped_ = false;
};

}  // namespace commandfilter
