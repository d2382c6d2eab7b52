#include "runtime/Exception.h"

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace commandfilter {
namespace {

TEST(Exception, KeepsItsReason) {
  const Exception exception("nested too deeply");
  EXPECT_EQ(exception.reason(), "nested too deeply");
  EXPECT_STREQ(exception.what(), "nested too deeply");
}

TEST(Exception, IsAStandardException) {
  try {
    throw Exception("reason");
  } catch (const std::exception& exception) {
    EXPECT_STREQ(exception.what(), "reason");
    return;
  }
  FAIL() << "it was not caught";
}

TEST(Exception, IsCopiedWithItsReason) {
  Exception exception("one");
  const Exception copy = exception;
  exception = Exception("two");
  EXPECT_EQ(copy.reason(), "one");
  EXPECT_EQ(exception.reason(), "two");
}

}  // namespace
}  // namespace commandfilter
