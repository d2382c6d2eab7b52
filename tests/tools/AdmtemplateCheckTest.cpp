// admtemplate check, as a user runs it. What it finds is told by the cases of check/.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/BinaryList.h"
#include "support/ChildProcess.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class AdmtemplateCheck : public ::testing::Test {
 protected:
  AdmtemplateCheck() {
    writeFile(wrong_, R"(<plist><dict>
<key>TemplateValues</key><dict><key>Sum</key><dict>
  <key>Value</key><string>1 &amp; _GetItm(2)</string>
</dict></dict>
</dict></plist>
)");
    writeFile(right_, templateOf("_InputValue(\"Start\") + 1"));
    writeFile(input_, "<plist><dict><key>Start</key><integer>4</integer></dict></plist>");
  }

  static std::string templateOf(const std::string& expression) {
    return "<plist><dict><key>TemplateValues</key><dict><key>V</key><dict><key>Value</key>"
           "<string>" +
           expression + "</string></dict></dict></dict></plist>";
  }
  [[nodiscard]] std::string path(const std::string& name) const {
    return (folder_.path() / name).string();
  }

  static ChildResult check(const std::vector<std::string>& arguments) {
    ChildOptions options;
    options.program = ADMTEMPLATE;
    options.arguments = {"admtemplate", "check"};
    options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
    options.environment = {"PATH=/usr/bin:/bin"};
    return runChild(options);
  }
  // What cannot be used: status 2, nothing on standard output, this on standard error.
  static void expectRefusal(const std::vector<std::string>& arguments, std::string_view reason) {
    const ChildResult result = check(arguments);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr(std::string(reason)));
  }

  TemporaryFolder folder_;
  std::string wrong_ = path("wrong.plist");
  std::string right_ = path("right.plist");
  std::string input_ = path("input.plist");
};

TEST_F(AdmtemplateCheck, IsSilentAboutCleanTemplates) {
  const ChildResult result = check({right_});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "");
}

TEST_F(AdmtemplateCheck, ShowsPlaceAndRemedy) {
  const ChildResult result = check({right_, wrong_});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output, wrong_ +
                               ":3:35: error: there is no procedure _GetItm\n"
                               "    <key>Value</key><string>1 &amp; _GetItm(2)</string>\n"
                               "                                    ^^^^^^^\n"
                               "  remedy: write _GetItem(container, key [, default])\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(AdmtemplateCheck, PrintsOneJSONObject) {
  const ChildResult result = check({wrong_, right_, "--format", "json"});
  EXPECT_EQ(result.exitStatus, 1);
  const nlohmann::json expected{{"errors", 1},
                                {"warnings", 0},
                                {"findings",
                                 {{{"file", wrong_},
                                   {"line", 3},
                                   {"column", 35},
                                   {"key", {"TemplateValues", "Sum", "Value"}},
                                   {"expression", "1 & _GetItm(2)"},
                                   {"range", {4, 11}},
                                   {"kind", "unknown-procedure"},
                                   {"severity", "error"},
                                   {"message", "there is no procedure _GetItm"},
                                   {"remedy", "write _GetItem(container, key [, default])"}}}}};
  EXPECT_EQ(nlohmann::json::parse(result.output), expected);
  EXPECT_EQ(nlohmann::json::parse(check({right_, "--format", "json"}).output),
            nlohmann::json::parse(R"({"findings": [], "errors": 0, "warnings": 0})"));
}

TEST_F(AdmtemplateCheck, ComparesInputParametersWithThoseThatAreRead) {
  EXPECT_EQ(check({right_, "--input", input_}).exitStatus, 0);
  writeFile(input_, "<plist><dict>\n<key>Strat</key><integer>4</integer>\n</dict></plist>");
  const ChildResult result = check({right_, "--input", input_});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.output, HasSubstr("the input parameter Start is not given"));
  EXPECT_THAT(result.output, HasSubstr("remedy: write \"Strat\""));
  EXPECT_THAT(result.output, HasSubstr(input_ + ":2:6: warning: the input parameter Strat is"));
}

TEST_F(AdmtemplateCheck, LetsParametersBeMissingWhereTheExpressionDoesWithout) {
  writeFile(right_, templateOf("(_InputValue(\"Copies\") or 1) + _InputValue(\"Start\")"));
  EXPECT_EQ(check({right_, "--input", input_}).output, "");
}

TEST_F(AdmtemplateCheck, KnowsNothingOfParametersWhoseNamesAreComputed) {
  writeFile(right_, templateOf("_InputValue(\"St\" + \"art\")"));
  writeFile(input_, "<plist><dict><key>Other</key><integer>4</integer></dict></plist>");
  EXPECT_EQ(check({right_, "--input", input_}).output, "");
}

TEST_F(AdmtemplateCheck, ReadsParametersOfAllTemplates) {
  const std::string other = path("other.plist");
  writeFile(other, templateOf("1"));
  EXPECT_EQ(check({other, right_, "--input", input_}).output, "");
  EXPECT_THAT(check({other, "--input", input_}).output, HasSubstr("Start is never used"));
}

TEST_F(AdmtemplateCheck, ReportsValuesThatNobodyAsksForWhenItIsToldWhichAreAsked) {
  writeFile(right_, R"(<plist><dict><key>TemplateValues</key><dict>
    <key>Asked</key><dict><key>Value</key><string>[Used]</string></dict>
    <key>Used</key><dict><key>Value</key><string>1</string></dict>
    <key>Idle</key><dict><key>Value</key><string>2</string></dict>
    </dict></dict></plist>)");
  EXPECT_EQ(check({right_}).output, "");
  const ChildResult result = check({right_, "--key", "Asked"});
  EXPECT_THAT(result.output, HasSubstr("the value Idle is never used"));
  EXPECT_THAT(result.output, Not(HasSubstr("Used is")));
  EXPECT_THAT(check({right_, "--key", "Gone"}).output,
              HasSubstr("the value Gone is asked for and not defined"));
}

TEST_F(AdmtemplateCheck, KnowsWhatPlugInsBringAlong) {
  writeFile(right_, R"(<plist><dict><key>TemplateValues</key><dict><key>V</key><dict>
    <key>EvaluationContext</key><string>ExtendedEvaluationContext</string>
    <key>Value</key><string>_Twice(_External("Join", 1)) + _Filter(_Array(1), _Twice(1))</string>
    </dict></dict></dict></plist>)");
  const std::string bundle = EXTENSIONS_BUNDLE;
  const ChildResult result = check({right_, "--plugin", bundle});
  EXPECT_THAT(result.output, Not(HasSubstr("external")));
  EXPECT_THAT(result.output, HasSubstr("only values with the EvaluationContext "
                                       "ExtendedEvaluationContext have it"));
  // Once, for the call that another context evaluates.
  EXPECT_EQ(result.output.find("remedy"), result.output.rfind("remedy"));
  EXPECT_THAT(check({right_}).output, HasSubstr("there is no class ExtendedEvaluationContext"));
  writeFile(right_, templateOf("_External(\"join\", 1)"));
  EXPECT_THAT(check({right_, "--plugin", bundle}).output, HasSubstr("write \"Join\""));
  EXPECT_THAT(check({right_}).output, HasSubstr("--plugin"));
}

TEST_F(AdmtemplateCheck, NamesTheKeysInABinaryPropertyList) {
  const BinaryList list = BinaryList()
                              .addDictionary({1}, {2})
                              .addString("TemplateValues")
                              .addDictionary({3}, {4})
                              .addString("Sum")
                              .addDictionary({5}, {6})
                              .addString("Value")
                              .addString("1 +");
  writeFile(wrong_, list.bytes());
  EXPECT_EQ(check({wrong_}).output,
            wrong_ +
                ": TemplateValues/Sum/Value: error: an operand is missing behind +\n"
                "    1 +\n"
                "      ^\n"
                "  remedy: put an operand behind it, or take it out\n");
  const nlohmann::json report =
      nlohmann::json::parse(check({wrong_, "--format", "json"}).output)["findings"][0];
  EXPECT_FALSE(report.contains("line"));
  EXPECT_EQ(report["range"], nlohmann::json({2, 3}));
}

TEST_F(AdmtemplateCheck, ExplainsWhatItCannotUse) {
  const std::string broken = path("broken.plist");
  const std::string fifo = path("fifo");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  expectRefusal({}, "TEMPLATE");
  expectRefusal({path("missing")}, "template " + path("missing") + ": cannot be opened");
  expectRefusal({folder_.path().string()}, "is not a regular file");
  expectRefusal({fifo}, "is not a regular file");
  writeFile(broken, "<plist>\n<dict>\n  <key>TemplateValues</kex>\n</dict></plist>");
  expectRefusal({broken}, "line 3, column 24: mismatched tag");
  writeFile(broken, "<plist>\n<dict><key>TemplateValues</key>");
  expectRefusal({broken}, "template " + broken);
  writeFile(broken, "<plist><array/></plist>");
  expectRefusal({broken}, "its root must be <dict>");
  writeFile(broken, "");
  expectRefusal({broken}, "template " + broken);
  std::string deep = "<plist>";
  for (int i = 0; i < 100'000; ++i) deep.append("<dict><key>k</key>");
  writeFile(broken, deep);
  expectRefusal({broken}, "nested too deeply");
  expectRefusal({right_, "--input", path("missing")}, "input " + path("missing"));
  expectRefusal({right_, "--plugin", path("missing")}, "plug-in " + path("missing"));
  expectRefusal({right_, "--format", "plist"}, "--format");
}

TEST_F(AdmtemplateCheck, ChecksTheOtherTemplatesWhenOneCannotBeUsed) {
  const ChildResult result = check({path("missing"), wrong_});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_THAT(result.output, StartsWith(wrong_ + ":3:35: error"));
  EXPECT_THAT(result.errors, HasSubstr("missing"));
}

TEST_F(AdmtemplateCheck, TakesExpressionsOfAnyDepth) {
  int depth = 1'000'000;
  for (const auto& [opening, closing] : std::vector<std::pair<std::string, std::string>>{
           {"(", ")"}, {"!(", ")"}, {"_Array(", ")"}, {"1 or (", ")"}, {"1+", ""}}) {
    std::string expression;
    for (int i = 0; i < depth; ++i) expression.append(opening);
    expression.append("1");
    for (int i = 0; i < depth; ++i) expression.append(closing);
    writeFile(right_, templateOf(expression));
    EXPECT_EQ(check({right_}).exitStatus, 0) << opening;
    // Still deeper than any stack.
    depth = 200'000;
  }
}

TEST_F(AdmtemplateCheck, ShowsOnlyThePartOfALongLineThatIsWrong) {
  writeFile(wrong_, templateOf(std::string(100'000, ' ') + "1 + \"\xC3\xA9\" + _Nope()" +
                               std::string(100'000, ' ')));
  const ChildResult result = check({wrong_});
  EXPECT_LT(result.output.size(), 1000U);
  EXPECT_THAT(result.output, HasSubstr("_Nope"));
}

TEST_F(AdmtemplateCheck, ShowsNoMoreThanTenThousandFindings) {
  std::string values;
  for (int i = 0; i < 10'100; ++i) {
    values +=
        "<key>v" + std::to_string(i) + "</key><dict><key>Value</key><string>$x</string></dict>";
  }
  writeFile(wrong_,
            "<plist><dict><key>TemplateValues</key><dict>" + values + "</dict></dict></plist>");
  const nlohmann::json report = nlohmann::json::parse(check({wrong_, "--format", "json"}).output);
  EXPECT_EQ(report["findings"].size(), 10'001U);
  EXPECT_EQ(report["findings"].back()["kind"], "more");
}

}  // namespace
}  // namespace commandfilter::testing
