// The template engine, as a plug-in reaches it through the program.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "process/FilterApplication.h"
#include "support/File.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;
using testing::FilterApplication;
using testing::Job;
using testing::Outcome;

constexpr const char* kDevice = R"(
<key>ModelName</key><string>Quill 7</string>
<key>StatusServices</key><dict>
  <key>DMFDeviceStatus</key><dict>
    <key>Messages</key><dict><key>deviceState</key><string>idle</string></dict>
    <key>Features</key><dict>
      <key>Cover</key><dict>
        <key>Value</key><string>closed</string>
        <key>Properties</key><dict>
          <key>Lock</key><dict><key>Value</key><integer>1</integer></dict>
        </dict>
      </dict>
    </dict>
  </dict>
  <key>DMFSuppliesStatus</key><dict>
    <key>Messages</key><dict>
      <key>suppliesIdentifiers</key>
      <array><string>K</string><string>C</string><string>M</string></array>
      <key>supplyLevelForIdentifier:</key>
      <dict><key>K</key><integer>80</integer><key>C</key><integer>5</integer>
        <key>M</key><integer>40</integer></dict>
    </dict>
  </dict>
</dict>)";

std::string description(const std::string& expression, const std::string& service = "") {
  std::string text = "<dict><key>Value</key><string>" + expression + "</string>";
  if (!service.empty()) text += "<key>ServiceName</key><string>" + service + "</string>";
  return text + "</dict>";
}

std::string value(const std::string& key, const std::string& described) {
  return "<key>" + key + "</key>" + described;
}

class TemplateEngineProcess : public ::testing::Test {
 protected:
  void SetUp() override {
    const fs::path frameworks = application_.contents() / "Frameworks";
    fs::create_directories(frameworks);
    fs::create_directory_symlink(DEVICE_MODEL_BUNDLE, frameworks / "VemoDeviceModel.bundle");
    application_.addPlugIn("Template");
  }

  // What the executor reports for these values of a template and this device.
  Outcome run(const std::string& values, const std::string& keys,
              const std::string& command = "Template values", const std::string& device = kDevice) {
    const fs::path devicePath = application_.root() / "device.plist";
    const fs::path templatePath = application_.root() / "template.plist";
    testing::writeFile(devicePath, "<plist><dict>" + device + "</dict></plist>");
    testing::writeFile(templatePath, "<plist><dict><key>TemplateValues</key><dict>" + values +
                                         "</dict>" + sections_ + "</dict></plist>");
    Job job("#CUPS-COMMAND\n" + command + "\n");
    job.environment["DEVICE_URI"] = "simulated://" + devicePath.string();
    job.environment["TEST_TEMPLATE"] = templatePath.string();
    job.environment["TEST_KEYS"] = keys;
    job.environment["TEST_TABLE"] = application_.root().string();
    if (!input_.empty()) {
      const fs::path inputPath = application_.root() / "input.plist";
      testing::writeFile(inputPath, "<plist><dict>" + input_ + "</dict></plist>");
      job.environment["TEST_INPUT"] = inputPath.string();
    }
    return application_.run(job);
  }

  FilterApplication application_;
  std::string sections_;
  std::string input_;
};

TEST_F(TemplateEngineProcess, AnswersFromTheDevice) {
  const Outcome outcome =
      run(value("State", description("@deviceState", "DMFDeviceStatus")) +
              value("Cover", description("{Cover}", "DMFDeviceStatus")) +
              value("Lock", description("{Cover}.Lock", "DMFDeviceStatus")) +
              value("Low",
                    "<dict><key>ServiceName</key><string>DMFSuppliesStatus</string>"
                    "<key>Range</key><string>@suppliesIdentifiers</string>"
                    "<key>Filter</key><string>@supplyLevelForIdentifier: lt 50</string>"
                    "<key>Value</key><string>@element + \"=\" + @supplyLevelForIdentifier:"
                    "</string></dict>"),
          "State,Cover,Lock,Low,Nowhere");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors,
            "State = idle\nCover = closed\nLock = 1\n"
            "Low = (\n    \"C=5\",\n    \"M=40\"\n)\nNowhere = (null)\n(null)\n");
}

TEST_F(TemplateEngineProcess, HasConstantsMacrosAndInputParameters) {
  sections_ =
      "<key>TemplateConstants</key><dict><key>Low</key><string>20</string></dict>"
      "<key>TemplateMacroses</key><dict><key>Twice</key><string>@arg0 + @arg0</string></dict>";
  input_ = "<key>Who</key><string>me</string>";
  const Outcome outcome = run(value("A", description("$Low + _Twice([B])")) +
                                  value("B", description("_InputValue(\"Who\")")),
                              "A");
  EXPECT_EQ(outcome.errors, "A = 20meme\n(null)\n");
}

TEST_F(TemplateEngineProcess, ReportsErrorsByKey) {
  const Outcome outcome =
      run(value("Broken", "<dict/>") + value("Types", description("1 &lt; 2 lt \"x\"")) +
              value("Service", description("{Cover}", "NoSuchService")) +
              value("Circle", description("[Circle]")) + value("Text", "<string>5</string>"),
          "Broken,Service,Circle,Text");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors,
            "Broken = (null)\nService = (null)\nCircle = (null)\nText = (null)\n"
            "{\n    Broken = {\n        category = 3;\n"
            "        description = \"Failed to create processor\";\n    };\n"
            "    Service = {\n        category = 2;\n"
            "        description = \"Empty service\";\n    };\n}\n");
}

TEST_F(TemplateEngineProcess, EvaluatesInAContextOfThePlugIn) {
  const Outcome outcome =
      run(value("A",
                "<dict><key>Value</key><string>@plugIn</string>"
                "<key>EvaluationContext</key><string>TestTemplateContext</string></dict>"),
          "A");
  EXPECT_EQ(outcome.errors, "A = from the plug-in\n(null)\n");
}

TEST_F(TemplateEngineProcess, FindsTheTemplateOfTheModel) {
  const fs::path table = application_.root() / "Templates.plist";
  testing::writeFile(table,
                     "<plist><dict><key>Quill 7</key><dict><key>CommandFilterTemplate</key><dict>"
                     "<key>TemplateValues</key><dict>" +
                         value("Stored", description("@deviceState", "DMFDeviceStatus")) +
                         "</dict></dict></dict></dict></plist>");
  EXPECT_EQ(run("", "Stored", "Template stored").errors, "Stored = idle\n(null)\n");
  fs::remove(table);
  EXPECT_EQ(run("", "Stored", "Template stored").errors, "no engine\n");
}

TEST_F(TemplateEngineProcess, HasOneFactoryForTheJob) {
  EXPECT_EQ(run("", "", "Template service").errors, "the same 1, in lower case 0\n");
}

TEST_F(TemplateEngineProcess, AnswersNilForADeviceThatCannotBeUsed) {
  const Outcome outcome =
      run(value("A", description("1")), "A", "Template values",
          "<key>Resolution</key><dict><key>Outcome</key><string>fail</string></dict>");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, "A = (null)\n(null)\n");
}

TEST_F(TemplateEngineProcess, IsUnavailableWithoutTheFramework) {
  fs::remove(application_.contents() / "Frameworks" / "VemoDeviceModel.bundle");
  const Outcome outcome = run(value("A", description("1")), "A");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, "no factory\n");
}

TEST_F(TemplateEngineProcess, HasNoEngineForWhatIsNoTemplate) {
  EXPECT_EQ(run("<broken", "A").errors, "no engine\n");
}

}  // namespace
}  // namespace commandfilter
