#include "device_model/PrinterState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace commandfilter {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::string_view_literals;

TEST(DetectedErrors, AreTheBitsFromTheHighestOn) {
  EXPECT_THAT(detectedErrors("\x80"), ElementsAre("media-low"));
  EXPECT_THAT(detectedErrors("\x08"), ElementsAre("door-open"));
  EXPECT_THAT(detectedErrors("\x01"), ElementsAre("service-needed"));
  EXPECT_THAT(detectedErrors("\0\x02"sv), ElementsAre("maintenance-overdue"));
}

TEST(DetectedErrors, BeginWithTheMostSerious) {
  EXPECT_THAT(detectedErrors("\xFF\xFE"),
              ElementsAre("offline", "media-jam", "door-open", "media-empty", "input-tray-empty",
                          "input-tray-missing", "output-tray-missing", "output-area-full",
                          "marker-supply-missing", "marker-supply-empty", "service-needed",
                          "maintenance-overdue", "marker-supply-low", "media-low",
                          "output-area-almost-full"));
}

TEST(DetectedErrors, MayBeNone) {
  EXPECT_THAT(detectedErrors(""), IsEmpty());
  EXPECT_THAT(detectedErrors("\0\0\0\0"sv), IsEmpty());
  EXPECT_THAT(detectedErrors("\0\x01"sv), IsEmpty());
}

TEST(PrinterStateWord, IsThatOfThePrinterUnlessTheDeviceIsDown) {
  EXPECT_EQ(printerStateWord(3, 2), "idle");
  EXPECT_EQ(printerStateWord(4, 3), "processing");
  EXPECT_EQ(printerStateWord(5, std::nullopt), "warmup");
  EXPECT_EQ(printerStateWord(1, 5), "stopped");
  EXPECT_EQ(printerStateWord(1, 2), "unknown");
  EXPECT_EQ(printerStateWord(77, std::nullopt), "unknown");
  EXPECT_EQ(printerStateWord(std::nullopt, 2), "unknown");
  EXPECT_EQ(printerStateWord(std::nullopt, 5), "stopped");
  EXPECT_EQ(printerStateWord(std::nullopt, std::nullopt), "");
}

}  // namespace
}  // namespace commandfilter
