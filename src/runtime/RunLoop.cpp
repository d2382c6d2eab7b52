#include "runtime/RunLoop.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <utility>

#include "runtime/RunLoopEntry.h"
#include "runtime/RunLoopMode.h"

namespace commandfilter {

namespace {

// Does not own it: a run loop that nobody holds is gone.
constinit thread_local RunLoop* currentLoop = nullptr;

// Above the channels that a filter is started with.
constexpr int kLowestDescriptor = 5;

}  // namespace

constinit const Class RunLoop::kClass{.name = "RunLoop", .base = &Object::kClass};

RunLoop::RunLoop() noexcept = default;

RunLoop::~RunLoop() {
  if (currentLoop == this) currentLoop = nullptr;
}

Ref<RunLoop> RunLoop::currentRunLoop() {
  if (currentLoop != nullptr) return Ref<RunLoop>(*currentLoop);
  Ref<RunLoop> loop = make<RunLoop>();
  currentLoop = loop.get();
  return loop;
}

RunLoop::Deadline RunLoop::dateAfter(double seconds) noexcept {
  using std::chrono::steady_clock;
  const auto now = steady_clock::now();
  const double left = std::chrono::duration<double>(Deadline::max() - now).count();
  if (std::isnan(seconds)) return now;
  if (seconds >= left / 2) return Deadline::max();
  const std::chrono::duration<double> wait(std::max(seconds, -left / 2));
  return now + std::chrono::duration_cast<steady_clock::duration>(wait);
}

Result<RunLoopMode*> RunLoop::modeNamed(const String& name) {
  const auto found = modes_.find(name.view());
  if (found != modes_.end()) return found->second.get();
  Result<std::unique_ptr<RunLoopMode>> mode = RunLoopMode::create();
  if (!mode) return Failure{mode.reason()};
  return modes_.emplace(name.text(), std::move(*mode)).first->second.get();
}

Result<RunLoopSource> RunLoop::addDescriptor(int descriptor, Readiness readiness,
                                             const String& mode, Callback callback) {
  Result<RunLoopMode*> place = modeNamed(mode);
  if (!place) return Failure{place.reason()};
  // One of its own: libuv watches a descriptor for one source only, and while it does so the
  // descriptor must stay open.
  FileDescriptor own(fcntl(descriptor, F_DUPFD_CLOEXEC, kLowestDescriptor));
  if (!own) return Failure{(*place)->library().describe(-errno)};
  (*place)->reserve();
  auto entry = std::make_shared<RunLoopEntry>(*this, **place, std::move(callback));
  const int error = entry->watch(std::move(own), readiness);
  if (error != 0) return Failure{(*place)->library().describe(error)};
  (*place)->add(entry);
  return RunLoopSource(std::move(entry));
}

Result<RunLoopSource> RunLoop::addTimerEntry(double seconds, bool repeating, const String& mode,
                                             Callback callback) {
  Result<RunLoopMode*> place = modeNamed(mode);
  if (!place) return Failure{place.reason()};
  (*place)->reserve();
  auto entry = std::make_shared<RunLoopEntry>(*this, **place, std::move(callback));
  const std::uint64_t milliseconds = millisecondsOf(seconds);
  const std::uint64_t distance = milliseconds > 1 ? milliseconds - 1 : 1;
  entry->start(milliseconds, repeating ? distance : 0);
  (*place)->add(entry);
  return RunLoopSource(std::move(entry));
}

Result<RunLoopSource> RunLoop::addTimer(double seconds, const String& mode, Callback callback) {
  return addTimerEntry(seconds, false, mode, std::move(callback));
}

Result<RunLoopSource> RunLoop::addRepeatingTimer(double seconds, const String& mode,
                                                 Callback callback) {
  return addTimerEntry(seconds, true, mode, std::move(callback));
}

bool RunLoop::runMode_beforeDate(const String& mode, Deadline date) {
  const auto found = modes_.find(mode.view());
  if (found == modes_.end()) return false;
  // A callback may let go of the last source, and with it of the run loop.
  const Ref<RunLoop> self(*this);
  return found->second->run(date);
}

RunLoopSource::RunLoopSource(std::shared_ptr<RunLoopEntry> entry) noexcept
    : entry_(std::move(entry)) {}

void RunLoopSource::remove() noexcept {
  if (entry_) entry_->remove();
  // What the callback captured goes now, unless it is running.
  entry_.reset();
}

bool RunLoopSource::isScheduled() const noexcept { return entry_ && entry_->isScheduled(); }

RunLoop::CurrentScope::CurrentScope(RunLoop& loop) noexcept
    : previous_(std::exchange(currentLoop, &loop)) {}

RunLoop::CurrentScope::~CurrentScope() { currentLoop = previous_.get(); }

}  // namespace commandfilter
