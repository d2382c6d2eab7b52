// One mode of a run loop: a loop of libuv and what is scheduled in it.
#pragma once

#include <uv.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "runtime/Result.h"
#include "runtime/RunLoop.h"
#include "runtime/UVLibrary.h"

namespace commandfilter {

/// Whole milliseconds that are never over before the seconds are.
[[nodiscard]] std::uint64_t millisecondsOf(double seconds) noexcept;

/// Serves its entries outside libuv. Must be empty when it goes.
class RunLoopMode {
 public:
  /// Fails without libuv, and without a free descriptor for its loop.
  [[nodiscard]] static Result<std::unique_ptr<RunLoopMode>> create();

  /// For `create`, which opens it.
  explicit RunLoopMode(const UVLibrary& library) noexcept : library_(library) {}
  RunLoopMode(const RunLoopMode&) = delete;
  RunLoopMode& operator=(const RunLoopMode&) = delete;
  ~RunLoopMode();

  /// What RunLoop::runMode_beforeDate does.
  bool run(RunLoop::Deadline limit);
  /// Adds an entry whose handle is open.
  void add(std::shared_ptr<RunLoopEntry> entry) { entries_.push_back(std::move(entry)); }
  /// Makes room, so that the next `add` does not fail.
  void reserve() { entries_.reserve(entries_.size() + 1); }
  /// Closes the handle, at once, and lets the entry go.
  void remove(const RunLoopEntry& entry, uv_handle_t& handle) noexcept;

  [[nodiscard]] const UVLibrary& library() const noexcept { return library_; }
  [[nodiscard]] uv_loop_t& loop() noexcept { return loop_; }

 private:
  void close(uv_handle_t* handle) noexcept;
  void waitUntil(RunLoop::Deadline limit) noexcept;
  bool serveTimers();
  bool serveSource();

  const UVLibrary& library_;
  uv_loop_t loop_{};
  uv_timer_t limit_{};
  std::vector<std::shared_ptr<RunLoopEntry>> entries_;
  std::uint64_t round_ = 0;
  bool isOpen_ = false;
};

}  // namespace commandfilter
