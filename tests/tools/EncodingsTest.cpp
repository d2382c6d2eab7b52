#include "Encodings.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace commandfilter::tools {
namespace {

TEST(Base64, PadsToGroupsOfFour) {
  EXPECT_EQ(base64(""), "");
  EXPECT_EQ(base64("f"), "Zg==");
  EXPECT_EQ(base64("fo"), "Zm8=");
  EXPECT_EQ(base64("foo"), "Zm9v");
  EXPECT_EQ(base64("foobar"), "Zm9vYmFy");
}

TEST(Base64, TakesAnyByte) { EXPECT_EQ(base64(std::string("\0\xFF\xFE", 3)), "AP/+"); }

TEST(TimeInUTC, IsWrittenAsTheStandardSays) {
  EXPECT_EQ(timeInUTC(0), "1970-01-01T00:00:00Z");
  EXPECT_EQ(timeInUTC(1580472000), "2020-01-31T12:00:00Z");
  EXPECT_EQ(timeInUTC(-1), "1969-12-31T23:59:59Z");
}

TEST(TimeInUTC, KeepsPartsOfASecond) {
  EXPECT_EQ(timeInUTC(0.5), "1970-01-01T00:00:00.5Z");
  EXPECT_EQ(timeInUTC(-0.25), "1969-12-31T23:59:59.75Z");
  EXPECT_EQ(timeInUTC(0.9999999), "1970-01-01T00:00:00.999999Z");
}

TEST(TimeInUTC, IsANumberBeyondTheCalendar) {
  EXPECT_EQ(timeInUTC(253402300799), "9999-12-31T23:59:59Z");
  EXPECT_EQ(timeInUTC(253402300800), "253402300800");
  EXPECT_EQ(timeInUTC(-62167219200), "0000-01-01T00:00:00Z");
  EXPECT_EQ(timeInUTC(-62167219201), "-62167219201");
  EXPECT_EQ(timeInUTC(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(timeInUTC(std::numeric_limits<double>::quiet_NaN()), "nan");
}

}  // namespace
}  // namespace commandfilter::tools
