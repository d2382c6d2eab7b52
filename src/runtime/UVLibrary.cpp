#include "runtime/UVLibrary.h"

namespace commandfilter {

UVLibrary::UVLibrary(const SharedLibrary& library)
    : loopInit(library.function<decltype(loopInit)>("uv_loop_init")),
      loopClose(library.function<decltype(loopClose)>("uv_loop_close")),
      run(library.function<decltype(run)>("uv_run")),
      stop(library.function<decltype(stop)>("uv_stop")),
      updateTime(library.function<decltype(updateTime)>("uv_update_time")),
      close(library.function<decltype(close)>("uv_close")),
      timerInit(library.function<decltype(timerInit)>("uv_timer_init")),
      timerStart(library.function<decltype(timerStart)>("uv_timer_start")),
      timerStop(library.function<decltype(timerStop)>("uv_timer_stop")),
      pollInit(library.function<decltype(pollInit)>("uv_poll_init")),
      pollStart(library.function<decltype(pollStart)>("uv_poll_start")),
      describe(library.function<decltype(describe)>("uv_strerror")) {}

bool UVLibrary::isComplete() const noexcept {
  return loopInit != nullptr && loopClose != nullptr && run != nullptr && stop != nullptr &&
         updateTime != nullptr && close != nullptr && timerInit != nullptr &&
         timerStart != nullptr && timerStop != nullptr && pollInit != nullptr &&
         pollStart != nullptr && describe != nullptr;
}

const UVLibrary* UVLibrary::shared() {
  static const auto functions = SharedLibrary::functionsOf<UVLibrary>({"libuv.so.1"});
  return functions ? &*functions : nullptr;
}

}  // namespace commandfilter
