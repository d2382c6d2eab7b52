#include <gtest/gtest.h>

#include <string>

#include "filter/ACommandFilterContext.h"
#include "runtime/Array.h"
#include "runtime/String.h"

namespace commandfilter {
namespace {

using namespace std::string_literals;

class ReportMessage : public ::testing::Test {
 protected:
  template <typename... Arguments>
  std::string report(const char* format, const Arguments&... arguments) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    context_->reportMessageWithFormat(format, arguments...);
    std::string written = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    return written;
  }

  Ref<ACommandFilterContext> context_ =
      ACommandFilterContext::contextWithServiceInfoProvider(nullptr);
};

TEST_F(ReportMessage, WritesOneLine) {
  EXPECT_EQ(report("STATE: +media-empty"), "STATE: +media-empty\n");
}

TEST_F(ReportMessage, WritesALineFeedAloneForAnEmptyMessage) { EXPECT_EQ(report(""), "\n"); }

TEST_F(ReportMessage, WritesNothingForANilFormat) {
  EXPECT_EQ(report(nullptr), "");
  EXPECT_EQ(report(nullptr, 1, "text"), "");
}

TEST_F(ReportMessage, FormatsItsArguments) {
  EXPECT_EQ(report("%@ %d %s %@", String::create("ink"), 42, "left", Value::boolean(true)),
            "ink 42 left 1\n");
}

TEST_F(ReportMessage, WritesThePlatformsTextForNilAndForTheNullObject) {
  EXPECT_EQ(report("%@", Value()), "(null)\n");
  EXPECT_EQ(report("%@", nullptr), "(null)\n");
  EXPECT_EQ(report("%@", Value::null()), "<null>\n");
}

TEST_F(ReportMessage, WritesTheDescriptionOfAnObject) {
  const Ref<Array> array = Array::create({Value(String::create("a b")), Value(Number::integer(7))});
  EXPECT_EQ(report("%@", array), "(\n    \"a b\",\n    7\n)\n");
}

TEST_F(ReportMessage, KeepsLineBreaks) {
  EXPECT_EQ(report("%@", String::create("first\nsecond\r\nthird")), "first\nsecond\r\nthird\n");
  EXPECT_EQ(report("ends with one\n"), "ends with one\n\n");
}

TEST_F(ReportMessage, DoesNotReadTheArgumentsAsAFormat) {
  EXPECT_EQ(report("%@", String::create("100% %d %n %@ %s")), "100% %d %n %@ %s\n");
  EXPECT_EQ(report("%s", "%s%s%n"), "%s%s%n\n");
}

TEST_F(ReportMessage, WritesUTF8) {
  EXPECT_EQ(report("%@", String::create("Pr\xC3\xAAt \xF0\x9F\x96\xA8")),
            "Pr\xC3\xAAt \xF0\x9F\x96\xA8\n");
}

TEST_F(ReportMessage, EndsAtNULAsACStringDoes) {
  EXPECT_EQ(report("%@", String::create("before\0after"s)), "before\n");
}

TEST_F(ReportMessage, WritesALongMessageWhole) {
  const std::string text(3'000'000, 'x');
  EXPECT_EQ(report("%@", String::create(text)), text + "\n");
}

TEST_F(ReportMessage, DropsAMessageThatCannotBeFormatted) {
  EXPECT_EQ(report("%s", "\xFF"), "");
  EXPECT_EQ(report("%d", "no number"), "");
  EXPECT_EQ(report("%s", 1), "");
}

}  // namespace
}  // namespace commandfilter
