#include "runtime/RunLoopMode.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "runtime/RunLoopEntry.h"

namespace commandfilter {

namespace {

// Some thirty thousand years; libuv adds it to its clock.
constexpr double kLongestWait = 1e15;

bool hasPassed(RunLoop::Deadline limit) noexcept {
  return std::chrono::steady_clock::now() >= limit;
}

}  // namespace

std::uint64_t millisecondsOf(double seconds) noexcept {
  const double milliseconds = seconds * 1000;
  if (!(milliseconds > 0)) return 0;
  // libuv's clock counts whole milliseconds that have begun: one more than the length.
  return static_cast<std::uint64_t>(std::ceil(std::min(milliseconds, kLongestWait))) + 1;
}

Result<std::unique_ptr<RunLoopMode>> RunLoopMode::create() {
  const UVLibrary* library = UVLibrary::shared();
  if (library == nullptr) return Failure{"libuv cannot be loaded"};
  auto mode = std::make_unique<RunLoopMode>(*library);
  const int error = library->loopInit(&mode->loop_);
  if (error != 0) return Failure{library->describe(error)};
  mode->isOpen_ = true;
  library->timerInit(&mode->loop_, &mode->limit_);
  return mode;
}

RunLoopMode::~RunLoopMode() {
  if (!isOpen_) return;
  // How libuv knows its handles: each begins with the members of this one.
  close(static_cast<uv_handle_t*>(static_cast<void*>(&limit_)));
  library_.loopClose(&loop_);
}

void RunLoopMode::close(uv_handle_t* handle) noexcept {
  bool closed = false;
  handle->data = &closed;
  library_.close(handle, [](uv_handle_t* gone) { *static_cast<bool*>(gone->data) = true; });
  // Nothing is served meanwhile: libuv's callbacks only mark what is due.
  while (!closed) library_.run(&loop_, UV_RUN_NOWAIT);
}

void RunLoopMode::remove(const RunLoopEntry& entry, uv_handle_t& handle) noexcept {
  close(&handle);
  std::erase_if(entries_, [&entry](const auto& other) { return other.get() == &entry; });
}

// Marks what is due; waits for it until the limit unless something is due already.
void RunLoopMode::waitUntil(RunLoop::Deadline limit) noexcept {
  bool waits = !hasPassed(limit);
  for (const auto& entry : entries_) {
    // Readiness may be gone since; libuv says it again.
    if (!entry->isTimer()) entry->forget();
    waits = waits && !entry->isDue();
  }
  if (waits && limit != RunLoop::Deadline::max()) {
    const std::chrono::duration<double> left = limit - std::chrono::steady_clock::now();
    library_.updateTime(&loop_);
    library_.timerStart(
        &limit_, [](uv_timer_t* /*timer*/) {}, millisecondsOf(left.count()), 0);
  }
  library_.run(&loop_, waits ? UV_RUN_ONCE : UV_RUN_NOWAIT);
  library_.timerStop(&limit_);
}

// Serves the timers that are due now, not those that become due meanwhile.
bool RunLoopMode::serveTimers() {
  ++round_;
  bool served = false;
  while (true) {
    const auto due = std::ranges::find_if(entries_, [this](const auto& entry) {
      return entry->isTimer() && entry->isDue() && entry->lastServed() != round_;
    });
    if (due == entries_.end()) return served;
    const std::shared_ptr<RunLoopEntry> entry = *due;
    served = true;
    entry->serve(round_);
  }
}

// Serves the ready descriptor that has waited longest, so that a busy one does not keep the others
// from being served.
bool RunLoopMode::serveSource() {
  std::shared_ptr<RunLoopEntry> next;
  for (const auto& entry : entries_) {
    if (entry->isTimer() || !entry->isDue()) continue;
    if (!next || entry->lastServed() < next->lastServed()) next = entry;
  }
  if (!next) return false;
  next->serve(++round_);
  return true;
}

bool RunLoopMode::run(RunLoop::Deadline limit) {
  if (entries_.empty()) return false;
  while (true) {
    waitUntil(limit);
    // A timer's callback may have read what was ready.
    if (serveTimers()) waitUntil(RunLoop::Deadline::min());
    if (serveSource() || entries_.empty() || hasPassed(limit)) return true;
  }
}

}  // namespace commandfilter
