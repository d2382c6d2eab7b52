// The plug-in under the filter program, with devices that are described.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "process/FilterApplication.h"
#include "runtime/UTF8.h"
#include "support/File.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using ::testing::Contains;
using ::testing::ElementsAreArray;
using testing::FilterApplication;
using ::testing::HasSubstr;
using testing::Job;
using testing::Outcome;

std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '&') {
      result += "&amp;";
    } else if (c == '<') {
      result += "&lt;";
    } else {
      result.push_back(c);
    }
  }
  return result;
}

// The value as an element of a property list.
std::string elementOf(const json& value) {
  if (value.is_boolean()) return value.get<bool>() ? "<true/>" : "<false/>";
  if (value.is_number_integer()) return "<integer>" + value.dump() + "</integer>";
  if (value.is_number()) return "<real>" + value.dump() + "</real>";
  if (value.is_string()) return "<string>" + escaped(value.get<std::string>()) + "</string>";
  std::string text = value.is_array() ? "<array>" : "<dict>";
  for (const auto& [key, entry] : value.items()) {
    if (value.is_object()) text += "<key>" + escaped(key) + "</key>";
    text += elementOf(entry);
  }
  return text + (value.is_array() ? "</array>" : "</dict>");
}

// The messages that answer for supplies, from identifier to property to value.
json suppliesMessages(const json& supplies) {
  static const std::map<std::string, std::string> kSelectors{
      {"name", "supplyNameForIdentifier:"},
      {"level", "supplyLevelForIdentifier:"},
      {"levelInfo", "supplyAdditionalInkLevelInfoForIdentifier:"},
      {"state", "supplyStateForIdentifier:"},
      {"type", "supplyTypeForIdentifier:"},
      {"class", "supplyClassForIdentifier:"},
      {"color", "supplyColorNameForIdentifier:"},
      {"rgb", "supplyRGBRepresentationForIdentifier:"},
  };
  json messages = json::object();
  messages["suppliesIdentifiers"] = json::array();
  for (const auto& [identifier, properties] : supplies.items()) {
    messages["suppliesIdentifiers"].push_back(identifier);
    for (const auto& [property, value] : properties.items()) {
      messages[kSelectors.at(property)][identifier] = value;
    }
  }
  return messages;
}

class StandardCommands : public ::testing::Test {
 protected:
  StandardCommands() {
    fs::create_directories(application_.contents() / "Frameworks");
    fs::create_directories(application_.contents() / "PlugIns");
    fs::create_directory_symlink(DEVICE_MODEL_BUNDLE,
                                 application_.contents() / "Frameworks" / "VemoDeviceModel.bundle");
    fs::create_directory_symlink(STANDARD_COMMANDS_BUNDLE,
                                 application_.contents() / "PlugIns" / "StandardCommands.bundle");
    fs::create_directories(tables());
  }
  [[nodiscard]] fs::path tables() const { return application_.root() / "etc" / "commandfilter"; }

  // The lines of a command's run: what goes wrong in expressions apart from the rest.
  struct Lines {
    std::vector<std::string> lines;
    std::vector<std::string> debug;
  };
  Lines run(const json& device, const std::string& command) {
    json description = json::object();
    description["ModelName"] = "Press 9";
    json& services = description["StatusServices"];
    services = json::object();
    if (device.contains("supplies")) {
      services["DMFSuppliesStatus"]["Messages"] = suppliesMessages(device["supplies"]);
    }
    for (const char* key : {"suppliesFeatures", "status", "statusFeatures"}) {
      if (!device.contains(key)) continue;
      const bool ofSupplies = std::string(key) == "suppliesFeatures";
      json& service = services[ofSupplies ? "DMFSuppliesStatus" : "DMFDeviceStatus"];
      service[std::string(key) == "status" ? "Messages" : "Features"] = device[key];
    }
    const fs::path path = application_.root() / "device.plist";
    testing::writeFile(path, "<plist>" + elementOf(description) + "</plist>");
    Job job("#CUPS-COMMAND\n" + command + "\n");
    job.environment["DEVICE_URI"] = "simulated://" + path.string();
    job.environment["CUPS_SERVERROOT"] = (application_.root() / "etc").string();
    const Outcome outcome = application_.run(job);
    EXPECT_EQ(outcome.status, 0);
    Lines result;
    std::istringstream stream(outcome.errors);
    for (std::string line; std::getline(stream, line);) {
      EXPECT_LE(line.size(), 2046U);
      EXPECT_TRUE(isUTF8(line)) << line;
      (line.starts_with("DEBUG:") ? result.debug : result.lines).push_back(line);
    }
    return result;
  }
  void writeTable(const std::string& command, const std::string& model, const std::string& value) {
    testing::writeFile(tables() / (command + ".plist"),
                       "<plist><dict><key>" + model +
                           "</key><dict><key>CommandFilterTemplate</key><dict>"
                           "<key>TemplateValues</key><dict>" +
                           value + "</dict></dict></dict></dict></plist>");
  }
  static std::string described(const std::string& key, const std::string& expression) {
    return "<key>" + key + "</key><dict><key>Value</key><string>" + expression + "</string></dict>";
  }

  FilterApplication application_;
};

TEST_F(StandardCommands, AnswerAsTheCasesSay) {
  const json cases = json::parse(testing::readFile(CASES));
  ASSERT_FALSE(cases.empty());
  for (const json& each : cases) {
    SCOPED_TRACE(each["case"].get<std::string>());
    EXPECT_THAT(run(each["device"], each["command"]).lines,
                ElementsAreArray(each["lines"].get<std::vector<std::string>>()));
  }
}

// A device whose service has no features leaves a note about the value that asks for them.
TEST_F(StandardCommands, SayWhatGoesWrongInAnExpression) {
  EXPECT_THAT(run({{"supplies", {{"K", {{"level", "much"}}}}}}, "ReportLevels").debug,
              Contains("DEBUG: the template's value marker-levels: Incorrect types for comparison "
                       "operation"));
}

TEST_F(StandardCommands, AreFoundWhateverTheirCase) {
  EXPECT_EQ(run({{"supplies", json::object()}}, "REPORTLEVELS").lines,
            run({{"supplies", json::object()}}, "ReportLevels").lines);
}

TEST_F(StandardCommands, KeepTwoHundredSuppliesOnWholeLines) {
  json supplies = json::object();
  for (int i = 1000; i < 1200; ++i) {
    supplies[std::to_string(i)] = {{"name", "Toner, \"black\" \u9ed2 " + std::to_string(i)},
                                   {"type", "tonerCartridge"},
                                   {"rgb", "#000000"},
                                   {"level", i - 1000}};
  }
  const Lines result = run({{"supplies", supplies}}, "ReportLevels");
  std::size_t attributes = 0;
  for (const std::string& line : result.lines) {
    if (!line.starts_with("ATTR: ")) continue;
    ++attributes;
    // Commas of names are marked with two backslashes.
    std::size_t values = 1;
    for (std::size_t at = 0; at < line.size(); ++at) {
      if (line[at] == ',' && line[at - 1] != '\\') ++values;
    }
    EXPECT_EQ(values, 200U) << line;
  }
  EXPECT_EQ(attributes, 6U);
}

TEST_F(StandardCommands, UseTheTemplateOfTheModel) {
  writeTable("ReportLevels", "Press 9", described("Messages", "_Array(\"INFO: mine\")"));
  EXPECT_THAT(run({}, "ReportLevels").lines, ElementsAreArray({"INFO: mine"}));
  writeTable("ReportLevels", "Default", described("Messages", "_Array(\"INFO: everybody's\")"));
  EXPECT_THAT(run({}, "ReportLevels").lines, ElementsAreArray({"INFO: everybody's"}));
}

TEST_F(StandardCommands, UseTheirOwnTemplateForOtherModels) {
  writeTable("ReportLevels", "Press 8", described("Messages", "_Array(\"INFO: mine\")"));
  EXPECT_THAT(run({}, "ReportLevels").lines,
              ElementsAreArray({"INFO: Neither the printer nor its queue tells about supplies"}));
}

TEST_F(StandardCommands, SayWhyATableCannotBeUsed) {
  testing::writeFile(tables() / "ReportLevels.plist", "<plist><dict>");
  const Lines result = run({}, "ReportLevels");
  EXPECT_THAT(result.lines, Contains(HasSubstr("WARNING: " + tables().string())));
  EXPECT_THAT(result.lines,
              Contains("INFO: Neither the printer nor its queue tells about supplies"));
  testing::writeFile(tables() / "ReportLevels.plist", "<plist><array/></plist>");
  EXPECT_THAT(run({}, "ReportLevels").lines, Contains(HasSubstr("it is no dictionary")));
}

TEST_F(StandardCommands, PassOnOnlyWhatTheSchedulerCanRead) {
  writeTable(
      "ReportStatus", "Press 9",
      described("Reasons", "_Array(\"a b\", \"door-open\", \"x,y\", \"door-open\")") +
          described("OwnReasons", "_Array(\"door-open\", \"c\", \"\")") +
          described("Options", "_Dictionary(\"True\", \"Duplexer\", \"a b\", \"Other\")") +
          described("Attributes", "_Dictionary(_Array(1, 2), \"marker-levels\", 1, \"a b\")") +
          described("Messages", "_Array(\"\", \"INFO: a\" + _EndLine() + \"STATE: b\")"));
  EXPECT_THAT(run({}, "ReportStatus").lines,
              ElementsAreArray({"ATTR: marker-levels=1,2", "STATE: +door-open", "STATE: -c",
                                "PPD: DefaultDuplexer=True", "INFO: a STATE: b"}));
}

TEST_F(StandardCommands, SayThatAPrinterWhoseTemplateIsEmptyCannotBeAsked) {
  writeTable("ReportStatus", "Press 9", "");
  EXPECT_THAT(run({}, "ReportStatus").lines,
              ElementsAreArray({"INFO: ReportStatus: the printer cannot be asked"}));
}

TEST_F(StandardCommands, SayThatThereIsNoDeviceModel) {
  fs::remove(application_.contents() / "Frameworks" / "VemoDeviceModel.bundle");
  EXPECT_THAT(run({}, "ReportLevels").lines, Contains(HasSubstr("no device model")));
}

}  // namespace
}  // namespace commandfilter
