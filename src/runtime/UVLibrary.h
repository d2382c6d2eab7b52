// libuv, loaded when the first source is scheduled in a run loop.
#pragma once

#include <uv.h>

#include "runtime/SharedLibrary.h"

namespace commandfilter {

/// The functions of libuv that run loops call. The library is not linked with it: loading it adds a
/// tenth to a job that waits for nothing.
class UVLibrary {
 public:
  /// The library, loaded on the first call and kept; nullptr when it cannot be loaded.
  [[nodiscard]] static const UVLibrary* shared();

  decltype(&uv_loop_init) loopInit;
  decltype(&uv_loop_close) loopClose;
  decltype(&uv_run) run;
  decltype(&uv_stop) stop;
  decltype(&uv_update_time) updateTime;
  decltype(&uv_close) close;
  decltype(&uv_timer_init) timerInit;
  decltype(&uv_timer_start) timerStart;
  decltype(&uv_timer_stop) timerStop;
  decltype(&uv_poll_init) pollInit;
  decltype(&uv_poll_start) pollStart;
  decltype(&uv_strerror) describe;

 private:
  friend class SharedLibrary;

  explicit UVLibrary(const SharedLibrary& library);
  [[nodiscard]] bool isComplete() const noexcept;
};

}  // namespace commandfilter
