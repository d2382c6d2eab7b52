// The attributes of a queue, asked of a real scheduler.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "InChild.h"
#include "PrivateScheduler.h"
#include "device_model/CupsQueueFacts.h"

namespace commandfilter::testing {
namespace {

TEST(QueueFacts, AreThoseOfTheScheduler) {
  const PrivateScheduler scheduler;
  static_cast<void>(scheduler.addRecordingQueue("queue"));
  const std::string server = scheduler.variable("CUPS_SERVER");
  const std::map<std::string, std::string> expected = scheduler.attributes("queue");
  // A process has one connection to the scheduler.
  runInChild([&] {
    setenv("CUPS_SERVER", server.c_str(), 1);
    setenv("PRINTER", "queue", 1);
    CupsQueueFacts facts;
    const QueueAttributes& attributes = facts.attributes();
    ASSERT_EQ(attributes.count("printer-make-and-model"), 1U);
    EXPECT_EQ(attributes.at("printer-make-and-model"),
              std::vector{expected.at("printer-make-and-model")});
    EXPECT_EQ(attributes.at("printer-state-reasons"),
              std::vector{expected.at("printer-state-reasons")});
    EXPECT_FALSE(attributes.at("printer-resolution-supported").empty());
    EXPECT_TRUE(attributes.at("printer-resolution-supported").front().ends_with("dpi"));
    EXPECT_EQ(&facts.attributes(), &attributes);
  });
  runInChild([&] {
    setenv("CUPS_SERVER", server.c_str(), 1);
    setenv("PRINTER", "another", 1);
    CupsQueueFacts facts;
    EXPECT_EQ(facts.attributes().count("printer-make-and-model"), 0U);
  });
}

}  // namespace
}  // namespace commandfilter::testing
