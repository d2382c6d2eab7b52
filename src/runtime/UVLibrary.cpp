#include "runtime/UVLibrary.h"

#include <optional>

namespace commandfilter {

namespace {

template <typename Function>
Function functionNamed(const SharedLibrary& library, const char* name) {
  // POSIX promises that a function's address survives this; C++ has no other way to say it.
  return reinterpret_cast<Function>(const_cast<void*>(library.symbol(name)));  // NOLINT
}

}  // namespace

UVLibrary::UVLibrary(const SharedLibrary& library)
    : loopInit(functionNamed<decltype(loopInit)>(library, "uv_loop_init")),
      loopClose(functionNamed<decltype(loopClose)>(library, "uv_loop_close")),
      run(functionNamed<decltype(run)>(library, "uv_run")),
      stop(functionNamed<decltype(stop)>(library, "uv_stop")),
      updateTime(functionNamed<decltype(updateTime)>(library, "uv_update_time")),
      close(functionNamed<decltype(close)>(library, "uv_close")),
      timerInit(functionNamed<decltype(timerInit)>(library, "uv_timer_init")),
      timerStart(functionNamed<decltype(timerStart)>(library, "uv_timer_start")),
      timerStop(functionNamed<decltype(timerStop)>(library, "uv_timer_stop")),
      pollInit(functionNamed<decltype(pollInit)>(library, "uv_poll_init")),
      pollStart(functionNamed<decltype(pollStart)>(library, "uv_poll_start")),
      describe(functionNamed<decltype(describe)>(library, "uv_strerror")) {}

bool UVLibrary::isComplete() const noexcept {
  return loopInit != nullptr && loopClose != nullptr && run != nullptr && stop != nullptr &&
         updateTime != nullptr && close != nullptr && timerInit != nullptr &&
         timerStart != nullptr && timerStop != nullptr && pollInit != nullptr &&
         pollStart != nullptr && describe != nullptr;
}

const UVLibrary* UVLibrary::shared() {
  static const std::optional<UVLibrary> functions = []() -> std::optional<UVLibrary> {
    Result<SharedLibrary> library = SharedLibrary::openSystemLibrary({"libuv.so.1"});
    if (!library) return std::nullopt;
    UVLibrary found(*library);
    if (!found.isComplete()) return std::nullopt;
    library->keep();
    return found;
  }();
  return functions ? &*functions : nullptr;
}

}  // namespace commandfilter
