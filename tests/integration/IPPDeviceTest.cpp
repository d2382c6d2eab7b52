// CUPS's own `ipp` backend and its test printer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "integration/JobFixture.h"
#include "integration/devices/IPPPrinter.h"
#include "support/File.h"

namespace commandfilter::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

constexpr const char* kFormat = "image/pwg-raster";

class IPPDevice : public JobFixture {
 protected:
  // Prints to a queue whose PPD has this device ID, as the backend knows none.
  std::string print(const std::string& deviceID, std::string_view lines) {
    std::string ppd = readFile(PrivateScheduler::ppd());
    const auto replace = [&ppd](std::string_view old, const std::string& text) {
      const std::size_t start = ppd.find(old);
      ppd.replace(start, ppd.find('\n', start) - start, text);
    };
    // The printer refuses what has no type that it knows.
    replace("*cupsFilter:", std::string(R"(*cupsFilter2: "application/vnd.cups-command )") +
                                kFormat + R"( 0 commandfilter")");
    // No agent is asked, here or elsewhere.
    replace("*1284DeviceID:", "*cupsSNMPSupplies: False\n*1284DeviceID: \"" + deviceID + '"');
    writeFile(folder_.path() / "ipp.ppd", ppd);
    scheduler_.addQueue("queue", printer_.uri(), folder_.path() / "ipp.ppd");
    submit("queue", lines);
    return wait();
  }

  IPPPrinter printer_{kFormat};
};

TEST_F(IPPDevice, GetsThePacketWhenTheQueueSaysThatItSpeaksLDL) {
  product_.addPlugIn("DeviceReport", {"Report identity"});
  EXPECT_EQ(print("MFG:Acme;MDL:IPP 1;CMD:PWGRaster,LDL;", "Report identity\n"), "completed");
  EXPECT_THAT(log(), Contains("model = IPP 1"));
  EXPECT_THAT(printer_.documents(), ElementsAre(kPacket));
}

TEST_F(IPPDevice, GetsZerosWhenTheQueueSaysThatItDoesNot) {
  EXPECT_EQ(print("MFG:Acme;MDL:IPP 1;CMD:PWGRaster;", ""), "completed");
  EXPECT_THAT(printer_.documents(), ElementsAre(kZeros));
}

}  // namespace
}  // namespace commandfilter::testing
