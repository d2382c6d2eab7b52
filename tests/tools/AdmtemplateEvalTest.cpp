// admtemplate eval, as a user runs it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "Admtemplate.h"
#include "support/ChildProcess.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {
namespace {

using ::testing::HasSubstr;

constexpr std::string_view kEvalTemplate = R"(<plist version="1.0"><dict>
<key>TemplateValues</key><dict>
  <key>Model</key>
  <dict><key>Value</key><string>"Printer " + {Name}</string>
        <key>ServiceName</key><string>DMFDeviceStatus</string></dict>
  <key>Wrong</key><dict><key>Value</key><string>1 gt "x"</string></dict>
  <key>Twice</key><dict><key>Value</key><string>_Double([Wrong] or _InputValue("Start"))</string></dict>
  <key>List</key><dict><key>Value</key><string>_Array(@true, 1)</string></dict>
  <key>Useless</key><dict/>
</dict>
<key>TemplateMacroses</key><dict><key>Double</key><string>@arg0 + @arg0</string></dict>
</dict></plist>
)";

constexpr std::string_view kEvalDevice = R"(<plist version="1.0"><dict>
<key>DeviceID</key><string>MFG:Acme;MDL:M1;CMD:PCL;</string>
<key>StatusServices</key><dict><key>DMFDeviceStatus</key><dict><key>Features</key><dict>
  <key>Name</key><dict><key>Value</key><string>M1</string></dict>
</dict></dict></dict>
</dict></plist>
)";

class AdmtemplateEval : public ::testing::Test {
 protected:
  AdmtemplateEval() {
    writeFile(template_, kEvalTemplate);
    writeFile(device_, kEvalDevice);
    writeFile(input_, "<plist><dict><key>Start</key><integer>4</integer></dict></plist>");
  }

  static ChildResult eval(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "eval");
    return runAdmtemplate(arguments);
  }
  // What cannot be used: status 2, nothing on standard output, this on standard error.
  void expectRefusal(const std::vector<std::string>& arguments, std::string_view reason) {
    const ChildResult result = eval(arguments);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr(std::string(reason)));
  }

  TemporaryFolder folder_;
  std::string template_ = (folder_.path() / "template.plist").string();
  std::string device_ = (folder_.path() / "a device.plist").string();
  std::string input_ = (folder_.path() / "input.plist").string();
};

TEST_F(AdmtemplateEval, ShowsValuesInTheOrderOfTheFileAndErrorsWithTheirPlace) {
  const ChildResult result = eval({template_, "--device", device_, "--input", input_});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output,
            "Model = Printer M1\n"
            "Wrong = nil\n"
            "Twice = 44\n"
            "List = (\n    1,\n    1\n)\n"
            "Useless = nil\n"
            "Wrong: Error 2: Incorrect types for comparison operation\n"
            "    1 gt \"x\"\n"
            "      ^^\n"
            "Useless: Error 3: Failed to create processor\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(AdmtemplateEval, ShowsTheKeysThatAreNamedInTheirOrder) {
  const ChildResult result = eval({template_, "Wrong", "Model", "--device", device_});
  EXPECT_THAT(result.output, ::testing::StartsWith("Wrong = nil\nModel = Printer M1\n"));
}

TEST_F(AdmtemplateEval, TakesKeysThatAreNamedLikeCommands) {
  writeFile(
      template_,
      "<plist><dict><key>TemplateValues</key><dict>"
      "<key>device</key><dict><key>Value</key><string>1</string></dict>"
      "<key>check</key><dict><key>Value</key><string>2</string></dict></dict></dict></plist>");
  EXPECT_EQ(eval({template_, "device", "check"}).output, "device = 1\ncheck = 2\n");
}

TEST_F(AdmtemplateEval, SaysThatAnExpressionIsEmpty) {
  writeFile(template_, R"(<plist><dict>
    <key>TemplateMacroses</key><dict><key>Empty</key><string/></dict>
    <key>TemplateValues</key><dict><key>A</key><dict><key>Value</key><string>_Empty()</string></dict>
    </dict></dict></plist>)");
  EXPECT_EQ(eval({template_}).output,
            "A = nil\nA: Error 1: Incorrect Expression\n    (the expression is empty)\n");
}

TEST_F(AdmtemplateEval, PrintsOneJSONObject) {
  const ChildResult result =
      eval({template_, "--device", device_, "--input", input_, "--format", "json"});
  EXPECT_EQ(nlohmann::json::parse(result.output), nlohmann::json::parse(R"({
    "values": {"Model": "Printer M1", "Twice": "44", "List": [true, 1]},
    "errors": {
      "Wrong": {"category": 2, "description": "Incorrect types for comparison operation"},
      "Useless": {"category": 3, "description": "Failed to create processor"}}})"));
}

TEST_F(AdmtemplateEval, HasNoErrorsInTheObjectWhenThereAreNone) {
  const ChildResult result = eval({template_, "Model", "--device", device_, "--format", "json"});
  EXPECT_EQ(nlohmann::json::parse(result.output),
            nlohmann::json::parse(R"({"values": {"Model": "Printer M1"}, "errors": {}})"));
}

TEST_F(AdmtemplateEval, PrintsAPropertyListThatItCanRead) {
  const ChildResult result = eval({template_, "Model", "--device", device_, "--format", "plist"});
  writeFile(input_, result.output);
  const ChildResult again =
      eval({"--expression", R"(_InputValue("values") _GetItem "Model")", "--input", input_});
  EXPECT_EQ(again.output, "Printer M1\n");
}

TEST_F(AdmtemplateEval, TakesAllWordsForKeysWhenAnOptionNamesTheTemplate) {
  EXPECT_EQ(eval({"--template", template_, "List", "Model", "--device", device_}).output,
            "List = (\n    1,\n    1\n)\nModel = Printer M1\n");
  EXPECT_EQ(eval({"List", "--template", template_}).output, "List = (\n    1,\n    1\n)\n");
  expectRefusal({input_, "--template", template_, "--expression", "1"}, "exclude each other");
}

TEST_F(AdmtemplateEval, EvaluatesOneExpression) {
  EXPECT_EQ(eval({"--expression", "1 + 2"}).output, "12\n");
  EXPECT_EQ(eval({"--expression", "_Double(5)", "--template", template_}).output, "55\n");
  EXPECT_EQ(eval({"--expression", "{Name}", "--service", "DMFDeviceStatus", "--device", device_,
                  "--format", "json"})
                .output,
            "{\n  \"value\": \"M1\"\n}\n");
  EXPECT_EQ(nlohmann::json::parse(eval({"--expression", "1 +", "--format", "json"}).output),
            nlohmann::json::parse(
                R"({"error": {"category": 1, "description": "Incorrect Expression"}})"));
}

TEST_F(AdmtemplateEval, TakesADeviceURI) {
  const std::string uri = "simulated://" + folder_.path().string() + "/a%20device.plist";
  EXPECT_THAT(eval({template_, "Model", "--device", uri}).output, HasSubstr("Printer M1"));
}

TEST_F(AdmtemplateEval, ExitsWithOneForErrorsWhenStrict) {
  EXPECT_EQ(eval({template_, "--strict", "--device", device_, "Model"}).exitStatus, 0);
  EXPECT_EQ(eval({template_, "--strict", "--device", device_, "Wrong"}).exitStatus, 1);
  EXPECT_EQ(eval({"--strict", "--expression", "_Nothing()"}).exitStatus, 1);
}

TEST_F(AdmtemplateEval, GoesOnBehindAValueThatIsBrokenOff) {
  writeFile(template_, R"(<plist><dict><key>TemplateValues</key><dict>
    <key>Circle</key><dict><key>Value</key><string>[Circle]</string></dict>
    <key>After</key><dict><key>Value</key><string>1</string></dict></dict></dict></plist>)");
  const ChildResult text = eval({template_});
  EXPECT_EQ(text.exitStatus, 0);
  EXPECT_EQ(text.output, "Circle = nil\nAfter = 1\nCircle: broken off: nested too deeply\n");
  const ChildResult json = eval({template_, "--format", "json"});
  EXPECT_EQ(nlohmann::json::parse(json.output),
            nlohmann::json::parse(R"({"values": {"After": 1}, "errors": {}})"));
  EXPECT_THAT(json.errors, HasSubstr("Circle: broken off"));
}

TEST_F(AdmtemplateEval, GoesOnBehindAValueThatNoReportCanHold) {
  writeFile(template_, R"(<plist><dict><key>TemplateMacroses</key><dict>
    <key>Twice</key><string>_Array(@arg0, @arg0)</string>
    <key>Often</key><string>_Twice(_Twice(_Twice(_Twice(_Twice(_Twice(@arg0))))))</string>
    <key>Deep</key><string>_Array(_Array(_Array(_Array(_Array(_Array(_Array(@arg0)))))))</string>
    <key>Deeper</key><string>_Deep(_Deep(_Deep(_Deep(_Deep(_Deep(_Deep(_Deep(@arg0))))))))</string>
    <key>Deepest</key>
    <string>_Deeper(_Deeper(_Deeper(_Deeper(_Deeper(_Deeper(_Deeper(_Deeper(_Deeper(_Deeper(1))))))))))</string>
    </dict><key>TemplateValues</key><dict>
    <key>Large</key><dict><key>Value</key>
      <string>_Often(_Often(_Often(_Often(_Often(_Often(_Often(_Often(_Often(1)))))))))</string></dict>
    <key>Same</key><dict><key>Value</key><string>[Large] eq _Array()</string></dict>
    <key>Deep</key><dict><key>Value</key><string>_Deepest(1)</string></dict>
    <key>After</key><dict><key>Value</key><string>1</string></dict></dict></dict></plist>)");
  for (const char* format : {"text", "json", "plist"}) {
    const ChildResult result = eval({template_, "--format", format});
    EXPECT_EQ(result.exitStatus, 0) << format;
    EXPECT_THAT(result.output, HasSubstr("After")) << format;
    const std::string report = result.output + result.errors;
    EXPECT_THAT(report, HasSubstr("Large: broken off: a value is too large")) << format;
    EXPECT_THAT(report, HasSubstr("Deep: broken off: nested too deeply")) << format;
  }
}

TEST_F(AdmtemplateEval, ExplainsWhatItCannotUse) {
  const std::string missing = (folder_.path() / "missing").string();
  const std::string list = (folder_.path() / "list.plist").string();
  writeFile(list, "<plist><array/></plist>");
  expectRefusal({}, "nothing to evaluate");
  expectRefusal({missing}, "template " + missing + ": cannot be opened");
  expectRefusal({folder_.path().string()}, "is not a regular file");
  expectRefusal({list}, "its root must be <dict>");
  expectRefusal({template_, "--input", missing}, "input " + missing);
  expectRefusal({template_, "--device", missing}, "there is no such file");
  expectRefusal({template_, "--device", list}, "device " + list);
  expectRefusal({template_, "--device", "simulated://" + missing}, missing);
  expectRefusal({template_, "--plugin", missing}, "plug-in " + missing);
  expectRefusal({template_, "Model", "--expression", "1"}, "exclude each other");
  expectRefusal({template_, "--service", "S"}, "--service belongs to --expression");
  expectRefusal({template_, "--format", "yaml"},
                "there is no format yaml; take one of json plist text");
  expectRefusal({template_, "--unknown"}, "--unknown");
}

TEST(Admtemplate, NamesItsCommandsForOneThatItDoesNotHave) {
  const ChildResult result = runAdmtemplate({"evl"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.errors,
            "admtemplate: there is no command evl; take one of eval check repl device\n");
}

TEST(Admtemplate, NamesItselfTheCommandAndTheRemedyForWrongArguments) {
  const auto messageFor = [](const std::vector<std::string>& arguments) {
    const ChildResult result = runAdmtemplate(arguments);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    return result.errors;
  };
  EXPECT_EQ(messageFor({}), "admtemplate: name a command; take one of eval check repl device\n");
  EXPECT_EQ(messageFor({"--nix"}),
            "admtemplate: there is no command --nix; take one of eval check repl device\n");
  EXPECT_EQ(messageFor({"check"}),
            "admtemplate check: TEMPLATE is required; see admtemplate check --help\n");
  EXPECT_EQ(messageFor({"device", "--nix"}),
            "admtemplate device: The following argument was not expected: --nix; see admtemplate "
            "device --help\n");
  EXPECT_EQ(messageFor({"eval", "--device"}),
            "admtemplate eval: --device: 1 required DEVICE missing; see admtemplate eval --help\n");
}

TEST_F(AdmtemplateEval, TellsOfKeysThatTheTemplateDoesNotHave) {
  const ChildResult result = eval({template_, "Modle"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "Modle = nil\n");
  EXPECT_THAT(result.errors, HasSubstr("no value named Modle"));
}

TEST_F(AdmtemplateEval, TellsOfATemplateWithoutValues) {
  writeFile(template_, "<plist><dict><key>TemplateValue</key><dict/></dict></plist>");
  const ChildResult result = eval({template_});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, HasSubstr("template " + template_ + " has no values"));
  EXPECT_THAT(result.errors, HasSubstr("TemplateValues"));
}

TEST_F(AdmtemplateEval, TellsOfDescriptionsThatAreNoDictionaries) {
  writeFile(template_, R"(<plist><dict><key>TemplateValues</key><dict>
    <key>Text</key><string>1</string></dict></dict></plist>)");
  const ChildResult result = eval({template_});
  EXPECT_EQ(result.output, "Text = nil\n");
  EXPECT_THAT(result.errors, HasSubstr("Text is no dictionary"));
}

TEST_F(AdmtemplateEval, TellsOfContextsThatNoPlugInHasBrought) {
  writeFile(template_, R"(<plist><dict><key>TemplateValues</key><dict><key>A</key><dict>
    <key>EvaluationContext</key><string>OtherContext</string><key>Value</key><string>1</string>
    </dict></dict></dict></plist>)");
  const ChildResult result = eval({template_});
  EXPECT_EQ(result.output, "A = 1\n");
  EXPECT_EQ(result.errors,
            "admtemplate: A: there is no class OtherContext; load its plug-in with --plugin\n");
}

TEST_F(AdmtemplateEval, TellsOnceThatThereIsNobodyToAsk) {
  const ChildResult result = eval({template_, "Model", "Model"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors,
            "admtemplate: there is no device to ask for DMFDeviceStatus; name one with --device\n");
  EXPECT_EQ(eval({template_, "List"}).errors, "");
}

TEST_F(AdmtemplateEval, TellsOfServicesThatTheDeviceDoesNotHave) {
  const std::string note = "admtemplate: device " + device_ + " has no service DMFSuppliesStatus\n";
  EXPECT_EQ(eval({"--expression", "@suppliesIdentifiers", "--service", "DMFSuppliesStatus",
                  "--device", device_})
                .errors,
            note);
  writeFile(template_, R"(<plist><dict><key>TemplateValues</key><dict><key>A</key><dict>
    <key>ServiceName</key><string>DMFSuppliesStatus</string><key>Value</key><string>1</string>
    </dict></dict></dict></plist>)");
  EXPECT_EQ(eval({template_, "--device", device_}).errors, note);
}

}  // namespace
}  // namespace commandfilter::testing
