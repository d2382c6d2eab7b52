#include "runtime/RunLoop.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "TestFolder.h"
#include "runtime/FileDescriptor.h"

namespace commandfilter {
namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Deadline = RunLoop::Deadline;
using Readiness = RunLoop::Readiness;

// Far enough that a test that waits for it has failed.
constexpr double kLong = 3600;

class Channel {
 public:
  Channel() {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    near_ = FileDescriptor(ends[0]);
    far_ = FileDescriptor(ends[1]);
  }
  [[nodiscard]] int descriptor() const { return near_.get(); }
  void send() const { EXPECT_EQ(write(far_.get(), "x", 1), 1); }
  void receive() const {
    char byte = 0;
    EXPECT_EQ(read(near_.get(), &byte, 1), 1);
  }
  void closeFar() { far_ = FileDescriptor(); }
  void closeNear() { near_ = FileDescriptor(); }

 private:
  FileDescriptor near_;
  FileDescriptor far_;
};

class RunLoopTest : public ::testing::Test {
 protected:
  [[nodiscard]] RunLoopSource watch(int descriptor, RunLoop::Callback callback,
                                    Readiness readiness = Readiness::Readable) {
    return take(loop->addDescriptor(descriptor, readiness, *mode, std::move(callback)));
  }
  [[nodiscard]] RunLoopSource timer(double seconds, RunLoop::Callback callback) {
    return take(loop->addTimer(seconds, *mode, std::move(callback)));
  }
  [[nodiscard]] RunLoopSource repeat(double seconds, RunLoop::Callback callback) {
    return take(loop->addRepeatingTimer(seconds, *mode, std::move(callback)));
  }
  bool run(double seconds = kLong) {
    return loop->runMode_beforeDate(*mode, RunLoop::dateAfter(seconds));
  }
  RunLoop::Callback note(const char* name) {
    return [this, name] { calls.emplace_back(name); };
  }

  Ref<RunLoop> loop = RunLoop::currentRunLoop();
  Ref<String> mode = String::create("TEST_MODE");
  std::vector<std::string> calls;

 private:
  static RunLoopSource take(Result<RunLoopSource> source) {
    EXPECT_TRUE(source) << source.reason();
    return source ? std::move(*source) : RunLoopSource();
  }
};

std::size_t openDescriptors() {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    ++count;
  }
  return count;
}

TEST_F(RunLoopTest, DoesNotRunAnEmptyMode) {
  EXPECT_FALSE(loop->runMode_beforeDate(*mode, Deadline::max()));
}

TEST_F(RunLoopTest, IsTheSameOnAThreadWhileItIsHeld) {
  EXPECT_EQ(RunLoop::currentRunLoop().get(), loop.get());
}

TEST_F(RunLoopTest, IsAnotherOnEveryThread) {
  RunLoop* other = nullptr;
  std::thread([&other] { other = RunLoop::currentRunLoop().get(); }).join();
  EXPECT_NE(other, loop.get());
}

TEST_F(RunLoopTest, IsHeldByItsSources) {
  const RunLoopSource source = timer(kLong, [] {});
  const RunLoop* held = loop.get();
  loop = make<RunLoop>();
  EXPECT_EQ(RunLoop::currentRunLoop().get(), held);
}

TEST_F(RunLoopTest, GivesWayToAnotherForATime) {
  const Ref<RunLoop> other = make<RunLoop>();
  {
    const RunLoop::CurrentScope scope(*other);
    EXPECT_EQ(RunLoop::currentRunLoop().get(), other.get());
  }
  EXPECT_EQ(RunLoop::currentRunLoop().get(), loop.get());
}

TEST_F(RunLoopTest, RunsUntilTheDate) {
  const RunLoopSource source = timer(kLong, note("timer"));
  const Deadline date = RunLoop::dateAfter(0.02);
  EXPECT_TRUE(loop->runMode_beforeDate(*mode, date));
  EXPECT_GE(std::chrono::steady_clock::now(), date);
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RunLoopTest, ServesWhatIsReadyWhenTheDateHasPassed) {
  const Channel channel;
  channel.send();
  const RunLoopSource source = watch(channel.descriptor(), note("readable"));
  const RunLoopSource due = timer(0, note("timer"));
  EXPECT_TRUE(loop->runMode_beforeDate(*mode, Deadline::min()));
  EXPECT_THAT(calls, ElementsAre("timer", "readable"));
}

TEST_F(RunLoopTest, RunsWithoutADate) {
  const RunLoopSource source = timer(0.001, note("timer"));
  EXPECT_TRUE(loop->runMode_beforeDate(*mode, Deadline::max()));
  EXPECT_THAT(calls, ElementsAre("timer"));
}

TEST_F(RunLoopTest, ReturnsWhenOneSourceWasServed) {
  const Channel first;
  const Channel second;
  const RunLoopSource one = watch(first.descriptor(), note("first"));
  const RunLoopSource two = watch(second.descriptor(), note("second"));
  first.send();
  second.send();
  EXPECT_TRUE(run());
  EXPECT_EQ(calls.size(), 1U);
}

TEST_F(RunLoopTest, ServesSourcesInTurnThatAreAlwaysReady) {
  const Channel first;
  const Channel second;
  const RunLoopSource one = watch(first.descriptor(), note("first"));
  const RunLoopSource two = watch(second.descriptor(), note("second"));
  first.send();
  second.send();
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(run());
  EXPECT_THAT(calls, AnyOf(ElementsAre("first", "second", "first", "second"),
                           ElementsAre("second", "first", "second", "first")));
}

TEST_F(RunLoopTest, ServesSourcesBesideATimerThatIsAlwaysDue) {
  const Channel channel;
  channel.send();
  const RunLoopSource source = watch(channel.descriptor(), note("readable"));
  const RunLoopSource busy =
      repeat(0, [] { std::this_thread::sleep_for(std::chrono::milliseconds(2)); });
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("readable"));
}

TEST_F(RunLoopTest, GoesOnWaitingAfterATimer) {
  const Channel channel;
  const RunLoopSource source = watch(channel.descriptor(), note("readable"));
  const RunLoopSource later = timer(0.002, [&] {
    calls.emplace_back("timer");
    channel.send();
  });
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("timer", "readable"));
}

TEST_F(RunLoopTest, DoesNotServeWhatATimerHasReadAlready) {
  const Channel channel;
  channel.send();
  const RunLoopSource source = watch(channel.descriptor(), note("readable"));
  const RunLoopSource reader = timer(0, [&] { channel.receive(); });
  EXPECT_TRUE(run(0.01));
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RunLoopTest, ReturnsWhenTheLastTimerHasFired) {
  const RunLoopSource source = timer(0.002, note("timer"));
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("timer"));
  EXPECT_FALSE(source.isScheduled());
  EXPECT_FALSE(run());
}

TEST_F(RunLoopTest, ReturnsWhenACallbackEmptiesTheMode) {
  const Channel channel;
  RunLoopSource source = watch(channel.descriptor(), note("readable"));
  RunLoopSource again;
  again = repeat(0.001, [&] {
    source.remove();
    again.remove();
  });
  EXPECT_TRUE(run());
  EXPECT_FALSE(run());
}

TEST_F(RunLoopTest, FiresNoTimerEarly) {
  // Begun at any fraction of libuv's milliseconds.
  for (std::size_t i = 0; i < 20; ++i) {
    std::this_thread::sleep_for(std::chrono::microseconds(50 * i));
    const Deadline date = RunLoop::dateAfter(0.002);
    const RunLoopSource source = timer(0.002, note("timer"));
    while (calls.size() == i) loop->runMode_beforeDate(*mode, Deadline::min());
    EXPECT_GE(std::chrono::steady_clock::now(), date);
  }
}

TEST_F(RunLoopTest, FiresTimersInTheOrderOfTheirDates) {
  const RunLoopSource later = timer(0.02, note("later"));
  const RunLoopSource sooner = timer(0.001, note("sooner"));
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("sooner", "later"));
}

TEST_F(RunLoopTest, TakesOddTimesAsTheNearestThatMakesSense) {
  const RunLoopSource negative = timer(-1, note("negative"));
  const RunLoopSource none = timer(std::numeric_limits<double>::quiet_NaN(), note("none"));
  const RunLoopSource never = timer(std::numeric_limits<double>::infinity(), note("never"));
  EXPECT_TRUE(run(0.01));
  EXPECT_THAT(calls, ElementsAre("negative", "none"));
  EXPECT_EQ(RunLoop::dateAfter(std::numeric_limits<double>::infinity()), Deadline::max());
  for (const double past : {-std::numeric_limits<double>::infinity(), -1.0, 0.0,
                            std::numeric_limits<double>::quiet_NaN()}) {
    const Deadline date = RunLoop::dateAfter(past);
    EXPECT_LE(date, std::chrono::steady_clock::now()) << past;
  }
}

TEST_F(RunLoopTest, RepeatsUntilItIsRemoved) {
  RunLoopSource source;
  source = repeat(0.001, [&] {
    calls.emplace_back("again");
    if (calls.size() == 3) source.remove();
  });
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("again", "again", "again"));
}

TEST_F(RunLoopTest, ServesOneModeOnly) {
  const Ref<String> other = String::create("OTHER_MODE");
  const RunLoopSource source = timer(0, note("timer"));
  EXPECT_FALSE(loop->runMode_beforeDate(*other, Deadline::max()));
  Result<RunLoopSource> elsewhere = loop->addTimer(0.001, *other, note("other"));
  ASSERT_TRUE(elsewhere);
  EXPECT_TRUE(loop->runMode_beforeDate(*other, Deadline::max()));
  EXPECT_THAT(calls, ElementsAre("other"));
}

TEST_F(RunLoopTest, RunsOtherModesAndItsOwnInsideACallback) {
  const Ref<String> other = String::create("OTHER_MODE");
  Result<RunLoopSource> elsewhere = loop->addTimer(0, *other, note("other"));
  ASSERT_TRUE(elsewhere);
  RunLoopSource inner;
  const RunLoopSource outer = timer(0, [&] {
    EXPECT_TRUE(loop->runMode_beforeDate(*other, Deadline::max()));
    EXPECT_FALSE(run());
    inner = timer(0.001, note("inner"));
    EXPECT_TRUE(run());
    calls.emplace_back("outer");
  });
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("other", "inner", "outer"));
}

TEST_F(RunLoopTest, WaitsUntilADescriptorCanBeWritten) {
  const Channel channel;
  const RunLoopSource source = watch(channel.descriptor(), note("writable"), Readiness::Writable);
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("writable"));
}

TEST_F(RunLoopTest, HasAnyNumberOfSourcesForADescriptor) {
  const Channel channel;
  const RunLoopSource reader = watch(channel.descriptor(), note("readable"));
  const RunLoopSource writer = watch(channel.descriptor(), note("writable"), Readiness::Writable);
  channel.send();
  EXPECT_TRUE(run());
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ::testing::UnorderedElementsAre("readable", "writable"));
}

TEST_F(RunLoopTest, ReportsTheEndOfAChannelAsReadiness) {
  Channel channel;
  const RunLoopSource source = watch(channel.descriptor(), note("ended"));
  channel.closeFar();
  EXPECT_TRUE(run());
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("ended", "ended"));
}

TEST_F(RunLoopTest, ReportsAnErrorAsReadinessAgainAndAgain) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
  FileDescriptor reader(ends[0]);
  const FileDescriptor writer(ends[1]);
  const std::string full(1 << 20, 'x');
  ASSERT_EQ(fcntl(writer.get(), F_SETFL, O_NONBLOCK), 0);
  while (write(writer.get(), full.data(), full.size()) > 0) continue;
  const RunLoopSource source = watch(writer.get(), note("broken"), Readiness::Writable);
  reader = FileDescriptor();
  EXPECT_TRUE(run());
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("broken", "broken"));
}

TEST_F(RunLoopTest, SurvivesThatTheDescriptorIsClosed) {
  Channel channel;
  const RunLoopSource source = watch(channel.descriptor(), note("readable"));
  channel.closeNear();
  channel.send();
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("readable"));
}

TEST_F(RunLoopTest, SaysWhatCannotBeWaitedFor) {
  const testing::TestFolder folder;
  const std::string path = folder.write("file", "text");
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  for (const int descriptor : {-1, file.get()}) {
    Result<RunLoopSource> source =
        loop->addDescriptor(descriptor, Readiness::Readable, *mode, [] {});
    EXPECT_FALSE(source);
    EXPECT_FALSE(source.reason().empty());
  }
  EXPECT_FALSE(run());
}

TEST_F(RunLoopTest, SaysWhenThereIsNoDescriptorForAMode) {
  const Channel channel;
  // libuv opens what all its loops share with the first one.
  const RunLoopSource first = timer(0, [] {});
  const Ref<String> other = String::create("OTHER_MODE");
  rlimit before{};
  getrlimit(RLIMIT_NOFILE, &before);
  const rlimit none{0, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
  Result<RunLoopSource> refusedTimer = loop->addTimer(0, *other, [] {});
  Result<RunLoopSource> refusedSource =
      loop->addDescriptor(channel.descriptor(), Readiness::Readable, *mode, [] {});
  setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_FALSE(refusedTimer);
  EXPECT_FALSE(refusedTimer.reason().empty());
  EXPECT_FALSE(refusedSource);
  EXPECT_FALSE(refusedSource.reason().empty());
  EXPECT_FALSE(loop->runMode_beforeDate(*other, Deadline::max()));
}

TEST_F(RunLoopTest, ForgetsASourceThatIsRemovedWhileItIsDue) {
  const Channel first;
  const Channel second;
  RunLoopSource one;
  RunLoopSource two;
  const auto removeBoth = [&](const char* name) {
    return [&, name] {
      calls.emplace_back(name);
      one = RunLoopSource();
      two = RunLoopSource();
    };
  };
  one = watch(first.descriptor(), removeBoth("first"));
  two = watch(second.descriptor(), removeBoth("second"));
  first.send();
  second.send();
  EXPECT_TRUE(run());
  EXPECT_FALSE(run());
  EXPECT_EQ(calls.size(), 1U);
}

TEST_F(RunLoopTest, ForgetsATimerThatIsRemovedWhileItIsDue) {
  RunLoopSource second;
  const RunLoopSource first = timer(0, [&] { second.remove(); });
  second = timer(0, note("second"));
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RunLoopTest, KeepsWhatACallbackCapturedUntilItReturns) {
  const Ref<String> captured = String::create("captured");
  RunLoopSource source;
  source = timer(0, [&, captured] {
    source = RunLoopSource();
    calls.push_back(captured->text());
  });
  EXPECT_EQ(captured->referenceCount(), 2U);
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("captured"));
  EXPECT_EQ(captured->referenceCount(), 1U);
}

TEST_F(RunLoopTest, OutlivesTheLastReferenceWhileItRuns) {
  RunLoopSource source;
  source = repeat(0.001, [&] { source.remove(); });
  RunLoop* running = loop.get();
  loop = make<RunLoop>();
  EXPECT_TRUE(running->runMode_beforeDate(*mode, Deadline::max()));
  EXPECT_NE(RunLoop::currentRunLoop().get(), nullptr);
}

TEST_F(RunLoopTest, LetsExceptionsOutAndGoesOn) {
  const RunLoopSource first = timer(0, [] { throw std::runtime_error("first"); });
  const RunLoopSource second = timer(0, note("second"));
  const Channel channel;
  channel.send();
  bool thrown = false;
  const RunLoopSource source = watch(channel.descriptor(), [&] {
    if (!std::exchange(thrown, true)) throw std::runtime_error("source");
    calls.emplace_back("source");
  });
  EXPECT_THROW(run(), std::runtime_error);
  EXPECT_THAT(calls, IsEmpty());
  EXPECT_THROW(run(), std::runtime_error);
  EXPECT_THAT(calls, ElementsAre("second"));
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("second", "source"));
}

TEST_F(RunLoopTest, MovesASourceWithItsPlaceInTheMode) {
  RunLoopSource first = timer(0, note("first"));
  RunLoopSource second = timer(0, note("second"));
  first = std::move(second);
  EXPECT_TRUE(first.isScheduled());
  EXPECT_TRUE(run());
  EXPECT_THAT(calls, ElementsAre("second"));
}

TEST_F(RunLoopTest, RemovesASourceOnceOnly) {
  RunLoopSource source = timer(0, note("timer"));
  source.remove();
  source.remove();
  RunLoopSource().remove();
  EXPECT_FALSE(source.isScheduled());
  EXPECT_FALSE(run());
}

TEST_F(RunLoopTest, ClosesEverythingWhenItGoes) {
  // libuv keeps a pair of descriptors of its own from the first loop on.
  static_cast<void>(timer(0, [] {}));
  loop = RunLoop::currentRunLoop();
  const Channel channel;
  loop = make<RunLoop>();
  const std::size_t before = openDescriptors();
  for (int i = 0; i < 3; ++i) {
    const Ref<RunLoop> other = make<RunLoop>();
    Result<RunLoopSource> source =
        other->addDescriptor(channel.descriptor(), Readiness::Readable, *mode, [] {});
    Result<RunLoopSource> repeating = other->addRepeatingTimer(0.001, *mode, [] {});
    ASSERT_TRUE(source && repeating);
    EXPECT_TRUE(other->runMode_beforeDate(*mode, RunLoop::dateAfter(0.003)));
    EXPECT_GT(openDescriptors(), before);
  }
  EXPECT_EQ(openDescriptors(), before);
}

TEST_F(RunLoopTest, OpensNothingBeforeASourceIsScheduled) {
  const std::size_t before = openDescriptors();
  const Ref<RunLoop> other = make<RunLoop>();
  EXPECT_FALSE(other->runMode_beforeDate(*mode, Deadline::max()));
  EXPECT_EQ(openDescriptors(), before);
}

}  // namespace
}  // namespace commandfilter
