#include "runtime/RunLoopEntry.h"

#include "runtime/RunLoopMode.h"

namespace commandfilter {

uv_handle_t* RunLoopEntry::handle() noexcept {
  // A handle of any kind begins as a uv_handle_t does.
  if (auto* timer = std::get_if<uv_timer_t>(&handle_)) {
    return reinterpret_cast<uv_handle_t*>(timer);  // NOLINT
  }
  return reinterpret_cast<uv_handle_t*>(std::get_if<uv_poll_t>(&handle_));  // NOLINT
}

int RunLoopEntry::startWatching() noexcept {
  isStopped_ = false;
  return mode_->library().pollStart(std::get_if<uv_poll_t>(&handle_), events_,
                                    [](uv_poll_t* poll, int status, int /*events*/) {
                                      auto& entry = *static_cast<RunLoopEntry*>(poll->data);
                                      entry.isDue_ = true;
                                      entry.isStopped_ = status < 0;
                                    });
}

int RunLoopEntry::watch(FileDescriptor descriptor, RunLoop::Readiness readiness) {
  const UVLibrary& library = mode_->library();
  auto& poll = handle_.emplace<uv_poll_t>();
  int error = library.pollInit(&mode_->loop(), &poll, descriptor.get());
  if (error != 0) {
    handle_.emplace<std::monostate>();
    return error;
  }
  poll.data = this;
  descriptor_ = std::move(descriptor);
  events_ = readiness == RunLoop::Readiness::Readable ? UV_READABLE : UV_WRITABLE;
  error = startWatching();
  if (error != 0) remove();
  return error;
}

void RunLoopEntry::start(std::uint64_t milliseconds, std::uint64_t repetition) noexcept {
  const UVLibrary& library = mode_->library();
  auto& timer = handle_.emplace<uv_timer_t>();
  library.timerInit(&mode_->loop(), &timer);
  timer.data = this;
  repeats_ = repetition != 0;
  library.updateTime(&mode_->loop());
  library.timerStart(
      &timer,
      [](uv_timer_t* fired) {
        auto& entry = *static_cast<RunLoopEntry*>(fired->data);
        entry.isDue_ = true;
        // Or libuv would go on to wait for something else.
        entry.mode_->library().stop(fired->loop);
      },
      milliseconds, repetition);
}

void RunLoopEntry::remove() noexcept {
  if (mode_ == nullptr) return;
  isDue_ = false;
  std::exchange(mode_, nullptr)->remove(*this, *handle());
  descriptor_ = FileDescriptor();
  // Last, because the mode goes with the run loop.
  loop_ = nullptr;
}

void RunLoopEntry::serve(std::uint64_t round) {
  isDue_ = false;
  lastServed_ = round;
  if (isTimer() && !repeats_) {
    remove();
  } else if (isStopped_) {
    static_cast<void>(startWatching());
  }
  callback_();
}

}  // namespace commandfilter
