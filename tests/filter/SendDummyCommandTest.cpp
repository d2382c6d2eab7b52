#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "DummyJobs.h"
#include "doubles/DeviceModelDouble.h"
#include "filter/ACommandFilterContext.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Description.h"
#include "runtime/Exception.h"
#include "runtime/LiveObjects.h"

namespace commandfilter {
namespace {

using testing::DeviceModelDouble;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::kDeviceModelDouble;
using testing::kPacket;
using testing::kZeros;

// A provider with a service info to show.
class ProviderDouble final : public Implements<Object, ICommandFilterServiceInfoProvider> {
 public:
  static const Class kClass;
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value serviceInfo() override {
    DeviceModelDouble::shared().called("serviceInfo");
    return String::create("the service info");
  }
};
constexpr auto kProviderProtocols =
    conformances<ProviderDouble, ICommandFilterServiceInfoProvider>();
constinit const Class ProviderDouble::kClass{
    .name = "ProviderDouble", .base = &Object::kClass, .protocols = kProviderProtocols};

// Puts the end of a socket in the place of standard output. Each write on it is one record.
class StandardOutput {
 public:
  StandardOutput() : saved_(dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends.data()), 0);
    reader_ = ends[0];
    dup2(ends[1], STDOUT_FILENO);
    close(ends[1]);
  }
  StandardOutput(const StandardOutput&) = delete;
  StandardOutput& operator=(const StandardOutput&) = delete;
  ~StandardOutput() {
    dup2(saved_, STDOUT_FILENO);
    close(saved_);
    close(reader_);
  }

  [[nodiscard]] static bool isOpen() { return fcntl(STDOUT_FILENO, F_GETFD) != -1; }
  // The bytes of each write so far.
  [[nodiscard]] std::vector<std::string> writes() const {
    std::vector<std::string> records;
    std::string record(2048, '\0');
    while (true) {
      const ssize_t size = recv(reader_, record.data(), record.size(), MSG_DONTWAIT);
      if (size <= 0) break;
      records.emplace_back(record, 0, static_cast<std::size_t>(size));
    }
    return records;
  }

 private:
  int saved_;
  int reader_ = -1;
};

class SendDummyCommand : public ::testing::Test {
 protected:
  struct Sent {
    std::vector<std::string> writes;
    bool open = false;
  };

  void SetUp() override { framework().reset(); }
  void TearDown() override { framework().reset(); }

  static DeviceModelDouble& framework() { return DeviceModelDouble::shared(); }
  static Ref<ACommandFilterContext> contextWithProvider() {
    return ACommandFilterContext::contextWithServiceInfoProvider(make<ProviderDouble>());
  }
  static Sent send(ACommandFilterContext& context) {
    const StandardOutput output;
    context.sendDummyCommand();
    const bool open = StandardOutput::isOpen();
    return {output.writes(), open};
  }
  static Sent sendWithFramework() {
    const auto registration = ClassRegistry::shared().add(kDeviceModelDouble);
    return send(*contextWithProvider());
  }
};

TEST_F(SendDummyCommand, WritesThePacketInOneWriteForAPrinterThatSpeaksLDL) {
  framework().deviceID = "MFG:Acme;CMD:PCL,LDL,PS;";
  const Sent sent = sendWithFramework();
  EXPECT_THAT(sent.writes, ElementsAre(kPacket));
  EXPECT_FALSE(sent.open);
}

TEST_F(SendDummyCommand, WritesZerosInOneWriteForAPrinterThatDoesNot) {
  for (const char* identifier : {"MFG:Acme;CMD:PCL,PS;", "CMD:LDLX,ldl;", "MFG:LDL;", ""}) {
    framework().deviceID = identifier;
    const Sent sent = sendWithFramework();
    EXPECT_THAT(sent.writes, ElementsAre(kZeros)) << identifier;
    EXPECT_FALSE(sent.open);
  }
}

TEST_F(SendDummyCommand, AsksTheFrameworkStepByStep) {
  framework().deviceID = "MFG:Acme;CMD:LDL;";
  sendWithFramework();
  EXPECT_THAT(framework().calls, ElementsAre("newDeviceIDServiceFactory", "serviceInfo",
                                             "deviceIDAccessProviderForServiceInfo:", "deviceID",
                                             "initWithDeviceIDString:", "languages"));
  EXPECT_EQ(descriptionOf(framework().serviceInfo), "the service info");
  EXPECT_EQ(framework().interpretedID, "MFG:Acme;CMD:LDL;");
}

TEST_F(SendDummyCommand, LeavesNoObjectsOfTheFramework) {
  framework().deviceID = "CMD:LDL;";
  const auto before = LiveObjects::byClass();
  sendWithFramework();
  framework().reset();
  EXPECT_EQ(LiveObjects::byClass(), before);
}

TEST_F(SendDummyCommand, OnlyClosesStandardOutputWithoutAFramework) {
  framework().deviceID = "CMD:LDL;";
  const Sent sent = send(*contextWithProvider());
  EXPECT_THAT(sent.writes, IsEmpty());
  EXPECT_FALSE(sent.open);
  EXPECT_THAT(framework().calls, IsEmpty());
}

TEST_F(SendDummyCommand, OnlyClosesStandardOutputWithoutADeviceID) {
  framework().deviceID = std::nullopt;
  const Sent sent = sendWithFramework();
  EXPECT_THAT(sent.writes, IsEmpty());
  EXPECT_FALSE(sent.open);
  EXPECT_EQ(framework().calls.back(), "deviceID");
}

TEST_F(SendDummyCommand, OnlyClosesStandardOutputWithoutAServiceFactory) {
  framework().deviceID = "CMD:LDL;";
  framework().hasServiceFactory = false;
  const Sent sent = sendWithFramework();
  EXPECT_THAT(sent.writes, IsEmpty());
  EXPECT_FALSE(sent.open);
}

TEST_F(SendDummyCommand, OnlyClosesStandardOutputWithoutAnAccessProvider) {
  framework().deviceID = "CMD:LDL;";
  framework().hasAccessProvider = false;
  const Sent sent = sendWithFramework();
  EXPECT_THAT(sent.writes, IsEmpty());
  EXPECT_FALSE(sent.open);
}

TEST_F(SendDummyCommand, WritesZerosWhenNobodyCanReadTheDeviceID) {
  framework().deviceID = "CMD:LDL;";
  framework().hasInterpreter = false;
  const Sent sent = sendWithFramework();
  EXPECT_THAT(sent.writes, ElementsAre(kZeros));
  EXPECT_FALSE(sent.open);
}

TEST_F(SendDummyCommand, HandsANilServiceInfoOnWhenThereIsNoProvider) {
  const auto registration = ClassRegistry::shared().add(kDeviceModelDouble);
  framework().deviceID = "CMD:LDL;";
  framework().serviceInfo = String::create("of an earlier call");
  const Sent sent = send(*ACommandFilterContext::contextWithServiceInfoProvider(nullptr));
  EXPECT_TRUE(framework().serviceInfo.isNil());
  EXPECT_THAT(sent.writes, ElementsAre(kPacket));
}

TEST_F(SendDummyCommand, ClosesStandardOutputWhenTheFrameworkThrows) {
  for (const char* call : {"newDeviceIDServiceFactory", "serviceInfo",
                           "deviceIDAccessProviderForServiceInfo:", "deviceID",
                           "initWithDeviceIDString:", "languages"}) {
    const auto registration = ClassRegistry::shared().add(kDeviceModelDouble);
    framework().reset();
    framework().deviceID = "CMD:LDL;";
    framework().throwingCall = call;
    const Ref<ACommandFilterContext> context = contextWithProvider();
    bool thrown = false;
    bool open = true;
    std::vector<std::string> writes;
    {
      const StandardOutput output;
      try {
        context->sendDummyCommand();
      } catch (const Exception&) {
        thrown = true;
      }
      open = StandardOutput::isOpen();
      writes = output.writes();
    }
    EXPECT_TRUE(thrown) << call;
    EXPECT_FALSE(open) << call;
    EXPECT_THAT(writes, IsEmpty()) << call;
  }
}

TEST_F(SendDummyCommand, IgnoresThatNothingCanBeWritten) {
  framework().deviceID = "CMD:LDL;";
  const auto registration = ClassRegistry::shared().add(kDeviceModelDouble);
  const Ref<ACommandFilterContext> context = contextWithProvider();
  bool open = true;
  {
    const StandardOutput output;
    const int nowhere = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(nowhere, 0);
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
    context->sendDummyCommand();
    open = StandardOutput::isOpen();
  }
  EXPECT_FALSE(open);
}

}  // namespace
}  // namespace commandfilter
