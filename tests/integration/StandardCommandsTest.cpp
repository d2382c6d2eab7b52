// The standard commands on components that are not ours: the scheduler, its backends, an SNMP agent
// and CUPS's test printer. What counts is what the queue says afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "integration/JobFixture.h"
#include "integration/devices/IPPPrinter.h"
#include "integration/devices/LoopbackAddress.h"
#include "integration/devices/PrinterAgent.h"
#include "integration/devices/PrinterListener.h"
#include "support/File.h"

namespace commandfilter::testing {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

std::size_t countOf(const std::string& list) {
  return list.empty() ? 0 : static_cast<std::size_t>(std::ranges::count(list, ',')) + 1;
}

// A row of prtMarkerSuppliesTable.
struct AgentSupply {
  std::string description = "string Supply";
  int colorant = 0;
  int supplyClass = 3;
  int type = 3;
  int unit = 19;
  int capacity = 100;
  int level = 50;
  std::string integerType = "integer";
};

std::string tableOf(const std::vector<AgentSupply>& supplies) {
  std::string values;
  int row = 0;
  for (const AgentSupply& supply : supplies) {
    ++row;
    const auto add = [&](int column, const std::string& value) {
      values.append(".1.3.6.1.2.1.43.11.1.1.").append(std::to_string(column)).append(".1.");
      values.append(std::to_string(row)).append(" ").append(value).append("\n");
    };
    const auto number = [&](int value) { return supply.integerType + " " + std::to_string(value); };
    add(3, number(supply.colorant));
    add(4, number(supply.supplyClass));
    add(5, number(supply.type));
    add(6, supply.description);
    add(7, number(supply.unit));
    add(8, number(supply.capacity));
    add(9, number(supply.level));
  }
  return values.append(".1.3.6.1.4.1.2699.1.2.1.2.1.1.3.1 string MFG:Acme;MDL:Press 9;CMD:PCL;\n");
}

class StandardCommandsOverSocket : public JobFixture {
 protected:
  void SetUp() override {
    const std::string reason = PrinterAgent::unavailable(address_);
    if (!reason.empty()) GTEST_SKIP() << reason;
    listener_.emplace(address_);
    addQueue("*cupsSNMPSupplies: False\n");
  }
  // The lines stand in the queue's PPD.
  void addQueue(const std::string& lines) {
    const std::string ppd = readFile(PrivateScheduler::ppd());
    writeFile(folder_.path() / "queue.ppd", ppd + lines);
    scheduler_.addQueue("queue", "socket://" + address_ + ":" + std::to_string(listener_->port()),
                        folder_.path() / "queue.ppd");
  }
  void startAgent(const std::string& values) {
    agent_.reset();
    agent_.emplace(address_, values);
  }
  std::map<std::string, std::string> report(const std::string& command) {
    submit("queue", command + "\n");
    EXPECT_EQ(wait(), "completed");
    return scheduler_.attributes("queue");
  }
  static std::string withLevel(const std::string& row, const std::string& level) {
    std::string values = readFile(PrinterAgent::values());
    const std::string object = ".43.11.1.1.9.1." + row + " integer ";
    const std::size_t start = values.find(object) + object.size();
    return values.replace(start, values.find('\n', start) - start, level);
  }

  const std::string address_ = loopbackAddress();
  std::optional<PrinterListener> listener_;
  std::optional<PrinterAgent> agent_;
};

TEST_F(StandardCommandsOverSocket, ShowTheLevelsOnTheQueue) {
  startAgent(readFile(PrinterAgent::values()));
  const auto queue = report("ReportLevels");
  EXPECT_EQ(queue.at("marker-names"), "Black Cartridge,Cyan Cartridge,Waste Box");
  EXPECT_EQ(queue.at("marker-types"), "toner,toner,waste-toner");
  EXPECT_EQ(queue.at("marker-colors"), "#000000,#00FFFF,none");
  EXPECT_EQ(queue.at("marker-levels"), "42,3,70");
  EXPECT_EQ(queue.at("marker-low-levels"), "10,10,0");
  EXPECT_EQ(queue.at("marker-high-levels"), "100,100,100");
  EXPECT_EQ(queue.at("printer-state-reasons"), "toner-low-report");
  EXPECT_THAT(log(),
              Contains("Black Cartridge: 42 %, Cyan Cartridge: 3 %, Waste Box: 70 % room left"));
}

TEST_F(StandardCommandsOverSocket, TakeBackAReasonThatNoLongerHolds) {
  startAgent(withLevel("3", "0"));
  auto queue = report("ReportLevels");
  EXPECT_EQ(queue.at("printer-state-reasons"), "toner-low-report,marker-waste-full-warning");
  EXPECT_EQ(queue.at("marker-levels"), "42,3,0");
  startAgent(withLevel("2", "1900"));
  queue = report("ReportLevels");
  EXPECT_EQ(queue.at("printer-state-reasons"), "none");
  EXPECT_EQ(queue.at("marker-levels"), "42,95,70");
}

// It does when the agent names its localization. It counts how full a receptacle is.
TEST_F(StandardCommandsOverSocket, LeaveTheLastWordToABackendThatReportsLevelsItself) {
  addQueue("");
  startAgent(withLevel("1", "-2") +
             ".1.3.6.1.2.1.43.5.1.1.2.1 integer 1\n"
             ".1.3.6.1.2.1.43.7.1.1.4.1.1 integer 106\n");
  const auto queue = report("ReportLevels");
  EXPECT_EQ(queue.at("marker-levels"), "-1,3,30");
  EXPECT_EQ(queue.at("marker-high-levels"), "100,100,100");
  EXPECT_THAT(queue.at("printer-state-reasons"), HasSubstr("toner-low-report"));
  EXPECT_THAT(log(), Contains("Black Cartridge: unknown, Cyan Cartridge: 3 %, Waste Box: 70 % "
                              "room left"));
}

TEST_F(StandardCommandsOverSocket, TellNamesThatTheQueueHasOnlyOnce) {
  startAgent(readFile(PrinterAgent::values()));
  static_cast<void>(report("ReportLevels"));
  static_cast<void>(report("ReportLevels"));
  EXPECT_THAT(log(), Not(Contains(HasSubstr("marker-names"))));
  // The scheduler keeps them in an attribute of its own, too, and would list that once more.
  const std::string uri = "ipp://127.0.0.1:" + scheduler_.variable("PORT") + "/printers/queue";
  const std::string all =
      scheduler_.client({"ipptool", "-tv", uri, "get-printer-attributes.test"}).output;
  const std::string name = "printer-supply-description (";
  EXPECT_NE(all.find(name), std::string::npos) << all;
  EXPECT_EQ(all.find(name), all.rfind(name));
}

TEST_F(StandardCommandsOverSocket, KeepTheQueueSaneWhenThePrinterLies) {
  std::vector<AgentSupply> supplies{
      {.description = "string Black, \"XL\""},
      {.description = "string It's \\ {odd}; a=b", .unit = 15, .capacity = 1000, .level = 5000},
      {.description = "octet 59 65 6c 0a 6c 01 6f 77", .level = -3},
      {.description = "octet 53 63 68 77 e4 72 7a", .level = -2},
      {.description = "octet 00 01 02", .level = -1},
      {.description = "string Unit without capacity", .unit = 13, .capacity = -2, .level = 7},
      {.description = "string Negative", .level = -99},
      {.description = "string Waste", .supplyClass = 4, .type = 4, .level = 0},
  };
  startAgent(tableOf(supplies));
  auto queue = report("ReportLevels");
  EXPECT_EQ(queue.at("marker-names"),
            "Black, \\\"XL\\\",It's \\\\ {odd}; a=b,Yel l ow,Schw\xC3\xA4rz,Supply 5,"
            "Unit without capacity,Negative,Waste");
  EXPECT_EQ(queue.at("marker-levels"), "50,100,-3,-2,-1,-2,-1,0");
  EXPECT_EQ(queue.at("marker-colors"), "none,none,none,none,none,none,none,none");
  EXPECT_EQ(queue.at("printer-state-reasons"), "marker-waste-full-warning");
  // Fewer supplies than before, and numbers of another type.
  supplies = {{.integerType = "counter"}, {.level = 4, .integerType = "gauge"}};
  startAgent(tableOf(supplies));
  queue = report("ReportLevels");
  EXPECT_EQ(queue.at("marker-names"), "Supply,Supply");
  EXPECT_EQ(queue.at("marker-levels"), "50,4");
  EXPECT_EQ(queue.at("marker-types"), "toner,toner");
  EXPECT_EQ(queue.at("printer-state-reasons"), "toner-low-report");
}

TEST_F(StandardCommandsOverSocket, FitTwoHundredSuppliesIntoTheQueue) {
  std::vector<AgentSupply> supplies(
      200, {.description = "string Toner, of \"some\" colour", .type = 21});
  supplies.back().level = 1;
  startAgent(tableOf(supplies));
  const auto queue = report("ReportLevels");
  EXPECT_EQ(countOf(queue.at("marker-levels")), 200U);
  EXPECT_EQ(countOf(queue.at("marker-types")), 200U);
  EXPECT_EQ(countOf(queue.at("marker-colors")), 200U);
  EXPECT_THAT(queue.at("marker-levels"), ::testing::EndsWith(",50,1"));
  EXPECT_THAT(queue.at("marker-names"), ::testing::StartsWith("Toner,"));
  EXPECT_EQ(queue.at("printer-state-reasons"), "toner-low-report");
}

TEST_F(StandardCommandsOverSocket, LeaveTheQueueAsItIsWhenThePrinterHasNoSupplies) {
  startAgent(readFile(PrinterAgent::values()));
  const auto before = report("ReportLevels");
  startAgent(tableOf({}));
  const auto queue = report("ReportLevels");
  EXPECT_EQ(queue.at("marker-levels"), before.at("marker-levels"));
  EXPECT_EQ(queue.at("printer-state-reasons"), "toner-low-report");
  EXPECT_THAT(log(), Contains(HasSubstr("As of the last job: Black Cartridge: 42 %")));
}

TEST_F(StandardCommandsOverSocket, ShowTheStatusOnTheQueue) {
  startAgent(readFile(PrinterAgent::values()) +
             ".1.3.6.1.2.1.43.18.1.1.2.1.1 integer 3\n"
             ".1.3.6.1.2.1.43.18.1.1.7.1.1 integer 1002\n"
             ".1.3.6.1.2.1.43.18.1.1.8.1.1 string Fuser, too hot\n");
  auto queue = report("ReportStatus");
  EXPECT_THAT(queue.at("printer-state-reasons"),
              AllOf(HasSubstr("door-open-report"), HasSubstr("toner-low-warning"),
                    HasSubstr("fuser-over-temp-warning")));
  EXPECT_THAT(log(), Contains("The printer is idle, door open, a supply is low"));
  EXPECT_THAT(log(), Contains("The printer reports: Fuser, too hot"));
  std::string values = readFile(PrinterAgent::values());
  values.replace(values.find("octet 28 00"), 11, "octet 00 00");
  startAgent(values);
  queue = report("ReportStatus");
  EXPECT_EQ(queue.at("printer-state-reasons"), "none");
}

TEST_F(StandardCommandsOverSocket, DoNotTouchEachOthersReasons) {
  startAgent(readFile(PrinterAgent::values()));
  static_cast<void>(report("ReportLevels"));
  auto queue = report("ReportStatus");
  EXPECT_EQ(queue.at("printer-state-reasons"),
            "toner-low-report,door-open-report,toner-low-warning");
  startAgent(withLevel("2", "1900"));
  queue = report("ReportLevels");
  EXPECT_EQ(queue.at("printer-state-reasons"), "door-open-report,toner-low-warning");
}

TEST_F(StandardCommandsOverSocket, SetWhatIsBuiltIn) {
  addQueue(
      "*OpenGroup: InstallableOptions/Options Installed\n"
      "*OpenUI *Duplexer/Duplex Unit: Boolean\n*DefaultDuplexer: False\n"
      "*Duplexer True/Installed: \"\"\n*Duplexer False/Not Installed: \"\"\n*CloseUI: *Duplexer\n"
      "*OpenUI *Option2/Tray 2: PickOne\n*DefaultOption2: Installed\n"
      "*Option2 Installed/Yes: \"\"\n*Option2 NotInstalled/No: \"\"\n*CloseUI: *Option2\n"
      "*OpenUI *Stapler/Stapler: Boolean\n*DefaultStapler: False\n"
      "*Stapler True/Installed: \"\"\n*Stapler False/Not Installed: \"\"\n*CloseUI: *Stapler\n"
      "*CloseGroup: InstallableOptions\n");
  startAgent(readFile(PrinterAgent::values()) +
             ".1.3.6.1.2.1.43.8.2.1.2.1.1 integer 3\n"
             ".1.3.6.1.2.1.43.13.4.1.9.1.1 integer 5\n"
             ".1.3.6.1.2.1.43.13.4.1.9.1.2 integer 3\n");
  static_cast<void>(report("AutoConfigure"));
  EXPECT_THAT(log(), Contains("Set Duplex Unit: True, Tray 2: NotInstalled"));
  const std::string ppd = readFile(scheduler_.root() / "etc" / "ppd" / "queue.ppd");
  EXPECT_THAT(ppd,
              AllOf(HasSubstr("*DefaultDuplexer: True\n"), HasSubstr("*DefaultStapler: False\n"),
                    HasSubstr("*DefaultOption2: NotInstalled\n")));
  EXPECT_THAT(ppd, Not(HasSubstr("*DefaultDuplexer: False")));
  static_cast<void>(report("AutoConfigure"));
  EXPECT_THAT(log(), Contains("The options of the queue are what the printer tells"));
}

TEST_F(StandardCommandsOverSocket, AreCarriedOutAsTheModelsTableSays) {
  std::filesystem::create_directory(scheduler_.root() / "etc" / "commandfilter");
  writeFile(scheduler_.root() / "etc" / "commandfilter" / "ReportLevels.plist",
            "<plist><dict><key>Colour Press 9</key><dict><key>CommandFilterTemplate</key><dict>"
            "<key>TemplateValues</key><dict><key>Messages</key><dict><key>Value</key>"
            "<string>_Array(\"INFO: by the table\")</string></dict></dict></dict></dict></dict>"
            "</plist>");
  startAgent(readFile(PrinterAgent::values()));
  const auto queue = report("ReportLevels");
  EXPECT_EQ(queue.count("marker-levels"), 0U);
  EXPECT_THAT(log(), Contains("by the table"));
}

// The printer's own words come from the backend, while it prints.
class StandardCommandsOverIPP : public JobFixture {
 protected:
  StandardCommandsOverIPP() {
    std::string ppd = readFile(PrivateScheduler::ppd()) + "*cupsSNMPSupplies: False\n";
    const std::string plain = "*cupsFilter: \"application/vnd.cups-command 0 commandfilter\"";
    ppd.replace(ppd.find(plain), plain.size(),
                "*cupsFilter2: \"application/vnd.cups-command image/pwg-raster 0 commandfilter\"");
    writeFile(folder_.path() / "ipp.ppd", ppd);
    scheduler_.addQueue("queue", printer_.uri(), folder_.path() / "ipp.ppd");
  }
  std::map<std::string, std::string> report(const std::string& levels, const std::string& state) {
    printer_.setReport(
        "ATTR: marker-names=Black,Cyan marker-types=toner,toner "
        "marker-colors=#000000,#00FFFF marker-levels=" +
        levels + "\nSTATE: " + state + "toner-low-report\n");
    submit("queue", "ReportLevels\nReportStatus\n");
    EXPECT_EQ(wait(), "completed");
    return scheduler_.attributes("queue");
  }

  // What the printer takes must have a type that it knows.
  IPPPrinter printer_{"image/pwg-raster"};
};

TEST_F(StandardCommandsOverIPP, LeaveLevelsAndReasonsToTheBackend) {
  auto queue = report("60,3", "+");
  EXPECT_EQ(queue.at("marker-names"), "Black,Cyan");
  EXPECT_EQ(queue.at("marker-levels"), "60,3");
  EXPECT_EQ(queue.at("printer-state-reasons"), "toner-low-report");
  EXPECT_THAT(log(), Contains("Neither the printer nor its queue tells about supplies"));
  queue = report("60,95", "-");
  EXPECT_EQ(queue.at("marker-levels"), "60,95");
  EXPECT_EQ(queue.at("printer-state-reasons"), "none");
  EXPECT_THAT(log(), Contains("As of the last job: Black: 60 %, Cyan: 3 %"));
}

}  // namespace
}  // namespace commandfilter::testing
