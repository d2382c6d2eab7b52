// Waiting for descriptors and timers, one named mode at a time.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Result.h"
#include "runtime/RunLoopSource.h"
#include "runtime/String.h"

namespace commandfilter {

class RunLoopMode;

/// Sources and timers, each in a mode of a name. Running a mode serves what is scheduled in it and
/// nothing else; callbacks may run it again, or another mode. A run loop belongs to the thread that
/// it was made on. Nothing is opened before the first source is scheduled in a mode.
class COMMANDFILTER_EXPORT RunLoop : public Object {
 public:
  static const Class kClass;

  /// A moment of the steady clock.
  using Deadline = std::chrono::steady_clock::time_point;
  using Callback = std::function<void()>;
  /// What a descriptor source waits for. Either comes with errors and hang-ups too, which the next
  /// read or write then reports.
  enum class Readiness { Readable, Writable };

  /// The calling thread's run loop. It lives as long as a reference or a source holds it; the next
  /// call then makes another, which nobody can tell apart from the empty one that is gone.
  [[nodiscard]] static Ref<RunLoop> currentRunLoop();
  /// The moment so many seconds from now. Not a number counts as 0.
  [[nodiscard]] static Deadline dateAfter(double seconds) noexcept;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// Calls back in the mode whenever the descriptor is ready. The descriptor is made non-blocking;
  /// it stays the caller's and may be closed at any time, though its other end sees that only when
  /// the source is removed. Fails for what cannot be waited for, such as a regular file.
  [[nodiscard]] Result<RunLoopSource> addDescriptor(int descriptor, Readiness readiness,
                                                    const String& mode, Callback callback);
  /// Calls back in the mode once, no earlier than after so many seconds.
  [[nodiscard]] Result<RunLoopSource> addTimer(double seconds, const String& mode,
                                               Callback callback);
  /// Calls back in the mode again and again at this distance in seconds, at least a millisecond.
  [[nodiscard]] Result<RunLoopSource> addRepeatingTimer(double seconds, const String& mode,
                                                        Callback callback);

  /// Waits in the mode until one descriptor source was served, the mode is empty, or the date is
  /// there; timers are served meanwhile, and a date that has passed serves what is ready now. What
  /// a callback throws comes out of here; what was due besides is served by the next run.
  /// @return false, at once, when the mode has neither sources nor timers; otherwise true.
  virtual bool runMode_beforeDate(const String& mode, Deadline date);

  /// Puts another run loop in the place of the thread's while it lives, as tests do.
  class COMMANDFILTER_EXPORT CurrentScope {
   public:
    explicit CurrentScope(RunLoop& loop) noexcept;
    CurrentScope(const CurrentScope&) = delete;
    CurrentScope& operator=(const CurrentScope&) = delete;
    ~CurrentScope();

   private:
    RefPtr<RunLoop> previous_;
  };

 protected:
  RunLoop() noexcept;
  ~RunLoop() override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  Result<RunLoopMode*> modeNamed(const String& name);
  Result<RunLoopSource> addTimerEntry(double seconds, bool repeating, const String& mode,
                                      Callback callback);

  std::map<std::string, std::unique_ptr<RunLoopMode>, std::less<>> modes_;
};

}  // namespace commandfilter
