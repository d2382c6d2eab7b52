// admtemplate repl with a script on standard input.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Admtemplate.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {
namespace {

using ::testing::HasSubstr;

constexpr std::string_view kReplTemplate = R"(<plist version="1.0"><dict>
<key>TemplateValues</key><dict>
  <key>Full</key>
  <dict><key>ServiceName</key><string>S</string><key>Range</key><string>@list</string>
        <key>Filter</key><string>@element ne $Skipped</string>
        <key>Value</key><string>_Twice(@element)</string></dict>
  <key>Circle</key><dict><key>Value</key><string>[Circle]</string></dict>
</dict>
<key>TemplateConstants</key><dict><key>Skipped</key><string>"b"</string></dict>
<key>TemplateMacroses</key><dict><key>Twice</key><string>@arg0 + @arg0</string></dict>
</dict></plist>
)";

constexpr std::string_view kReplDevice = R"(<plist version="1.0"><dict>
<key>StatusServices</key><dict>
  <key>S</key><dict><key>Messages</key><dict>
    <key>list</key><array><string>a</string><string>b</string></array>
    <key>levelOf:</key><dict><key>a</key><integer>7</integer></dict>
  </dict></dict>
  <key>T</key><dict><key>Messages</key><dict><key>other</key><integer>5</integer></dict></dict>
</dict></dict></plist>
)";

class Repl : public ::testing::Test {
 protected:
  Repl() {
    writeFile(template_, kReplTemplate);
    writeFile(device_, kReplDevice);
  }
  ChildResult run(const std::string& lines, std::vector<std::string> more = {}) {
    std::vector<std::string> arguments{"repl", template_, "--device", device_, "--service", "S"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runAdmtemplate(arguments, lines);
  }
  std::string output(const std::string& lines) {
    const ChildResult result = run(lines);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
    return result.output;
  }

  TemporaryFolder folder_;
  std::string template_ = (folder_.path() / "template.plist").string();
  std::string device_ = (folder_.path() / "device.plist").string();
};

TEST_F(Repl, PrintsTheValueOfEachLineAndNoPrompt) {
  EXPECT_EQ(output("1 + 2\n\n  @list _GetItem 1  \n[Full]"), "12\nb\n(\n    aa\n)\n");
}

TEST_F(Repl, ShowsWhereAnErrorIs) {
  EXPECT_EQ(output("1 + _Nix(2)\n"),
            "1\n"
            "Error 2: Can not find procedure Nix\n"
            "    1 + _Nix(2)\n"
            "        ^^^^\n");
}

TEST_F(Repl, GoesOnBehindWhatIsBrokenOff) {
  EXPECT_EQ(output("[Circle]\n5\n"), "nil\nbroken off: nested too deeply\n5\n");
}

TEST_F(Repl, WorksWithoutTemplateAndDevice) {
  EXPECT_EQ(runAdmtemplate({"repl"}, "@x\n_GetSize(_Array(1))\n").output, "nil\n1\n");
}

TEST_F(Repl, TellsThatAnyLineFailedWhenItIsStrict) {
  EXPECT_EQ(run("1\n", {"--strict"}).exitStatus, 0);
  EXPECT_EQ(run("1 gt \"x\"\n1\n", {"--strict"}).exitStatus, 1);
  EXPECT_EQ(run(":nix\n", {"--strict"}).exitStatus, 1);
  EXPECT_EQ(run(":trace 1 gt \"x\"\n", {"--strict"}).exitStatus, 1);
  EXPECT_EQ(run(":nix\n").exitStatus, 0);
}

TEST_F(Repl, EndsAtQuit) { EXPECT_EQ(output("1\n:quit\n2\n"), "1\n"); }

TEST_F(Repl, ShowsWhatBindsToWhat) {
  EXPECT_EQ(output(":tree 1 + 2 gt 3 and @x\n"),
            "(((1 + 2) gt 3) and @x)\n"
            "  and\n"
            "    gt\n"
            "      +\n"
            "        1\n"
            "        2\n"
            "      3\n"
            "    @x\n");
  EXPECT_EQ(output(":tree _F(1) _G(@x, \"a\")\n"),
            "(_F(1) _G(@x, \"a\"))\n"
            "  _G\n"
            "    _F\n"
            "      1\n"
            "    ,\n"
            "      @x\n"
            "      \"a\"\n");
  EXPECT_EQ(output(":tree (1\n"), "Error 1: Incorrect brace balance\n    (1\n    ^\n");
}

TEST_F(Repl, TracesItemsInTheOrderOfTheirEvaluation) {
  EXPECT_EQ(output(":trace (@list _GetItem 0) eq \"a\"\n"),
            "    @list = [\"a\",\"b\"]\n"
            "  @list _GetItem 0 = \"a\"\n"
            "(@list _GetItem 0) eq \"a\" = true\n");
}

TEST_F(Repl, TracesNothingThatIsNotEvaluated) {
  EXPECT_EQ(output(":trace @true or @list\n"), "  @true = true\n@true or @list = true\n");
  EXPECT_EQ(output(":trace @nix and @list\n"), "  @nix = nil\n@nix and @list = nil\n");
}

TEST_F(Repl, TracesEachElementOfAList) {
  EXPECT_EQ(output(":trace _Filter(@list, @levelOf: ne @nil)\n"),
            "  @list = [\"a\",\"b\"]\n"
            "    @levelOf: = 7\n"
            "    @nil = nil\n"
            "  @levelOf: ne @nil = true\n"
            "    @levelOf: = nil\n"
            "    @nil = nil\n"
            "  @levelOf: ne @nil = false\n"
            "_Filter(@list, @levelOf: ne @nil) = [\"a\"]\n");
}

TEST_F(Repl, TracesIntoValuesAndMacros) {
  EXPECT_EQ(output(":trace [Full]\n"),
            "  @list = [\"a\",\"b\"]\n"
            "    @element = \"a\"\n"
            "    $Skipped = \"b\"\n"
            "  @element ne $Skipped = true\n"
            "    @element = \"a\"\n"
            "      @arg0 = \"a\"\n"
            "      @arg0 = \"a\"\n"
            "    @arg0 + @arg0 = \"aa\"\n"
            "  _Twice(@element) = \"aa\"\n"
            "    @element = \"b\"\n"
            "    $Skipped = \"b\"\n"
            "  @element ne $Skipped = false\n"
            "[Full] = [\"aa\"]\n");
}

TEST_F(Repl, TracesAnErrorAtTheItemThatRaisedIt) {
  EXPECT_EQ(output(":trace ((1 gt \"x\") or 5)\n"),
            "  1 gt \"x\" = nil, Error 2: Incorrect types for comparison operation\n"
            "(1 gt \"x\") or 5 = 5\n"
            "Error 2: Incorrect types for comparison operation\n"
            "    ((1 gt \"x\") or 5)\n"
            "        ^^\n");
}

TEST_F(Repl, TracesWhatIsBrokenOff) {
  const std::string text = output(":trace 1 + [Circle]\n7\n");
  EXPECT_THAT(text, HasSubstr("[Circle] = broken off: nested too deeply\n"));
  EXPECT_THAT(text, ::testing::EndsWith("\n7\n"));
}

TEST_F(Repl, TracesTheSameValuesAsItEvaluates) {
  for (const char* expression :
       {"_Aggregate(@list, @initial + @element, _Array())",
        "_Aggregate(@list, @initial + @element, \"\")", "_Sort(_Array(\"b\", \"a\"), @element)",
        "!@nil", "_Dictionary(1, \"a\") + (2, \"b\")", "_Array(1, (2 + 3), \"x\" ~ @nil)",
        "@list _Contains(\"a\", \"b\")", "0x10 bitand 0x11"}) {
    const std::string plain = runAdmtemplate({"eval", "--device", device_, "--service", "S",
                                              "--expression", expression, "--format", "json"})
                                  .output;
    const std::string traced = output(std::string(":trace ") + expression + "\n");
    const std::string before = std::string("\n") + expression + " = ";
    const std::size_t place = ("\n" + traced).rfind(before);
    ASSERT_NE(place, std::string::npos) << traced;
    std::string compact;
    bool isText = false;
    for (const char c : plain) {
      if (c == '"') isText = !isText;
      if (isText || (c != ' ' && c != '\n')) compact.push_back(c);
    }
    EXPECT_EQ("{\"value\":" +
                  traced.substr(place + before.size() - 1, traced.size() - place - before.size()) +
                  "}",
              compact);
  }
}

TEST_F(Repl, BoundsATraceAndShowsItsEnd) {
  const std::string list = "_AllKeys(_Array(1,2,3,4,5,6,7,8,9,10))";
  std::string nested = "@index";
  for (int i = 0; i < 5; ++i) nested = "_Aggregate(" + list + ", " + nested + ")";
  const ChildResult result = run(":trace " + nested + "\n");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_LT(result.output.size(), 10'000'000U);
  EXPECT_TRUE(result.output.find(nested + " = 9\nand ") != std::string::npos);
  EXPECT_TRUE(result.output.ends_with(" steps are not shown\n"));
}

TEST_F(Repl, TracesDeepExpressions) {
  std::string deep = ":trace ";
  for (int i = 0; i < 20'000; ++i) deep.append("(1 + ");
  deep.append("@nil").append(20'000, ')');
  const ChildResult result = run(deep + "\n5\n");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, ::testing::EndsWith("\n5\n"));
}

TEST_F(Repl, ListsTheKeys) {
  const std::string input = (folder_.path() / "input.plist").string();
  writeFile(input, "<plist><dict><key>Start</key><integer>4</integer></dict></plist>");
  EXPECT_EQ(run(":keys\n", {"--input", input}).output,
            "values:    [Full], [Circle]\n"
            "constants: $Skipped\n"
            "macros:    _Twice\n"
            "input:     _InputValue(\"Start\")\n");
}

TEST_F(Repl, ShowsAValueByItsKey) {
  EXPECT_EQ(output(":value Full\n"), "Full = (\n    aa\n)\n");
  EXPECT_THAT(output(":value Ful\n"), HasSubstr("no value named Ful; it has Full, Circle"));
  EXPECT_THAT(runAdmtemplate({"repl"}, ":value X\n").output, HasSubstr("there is no template"));
}

TEST_F(Repl, AsksAnotherService) {
  EXPECT_EQ(output("@other\n:service T\n@other\n"),
            "nil\nthe service T is asked; the device has S, T\n5\n");
  EXPECT_THAT(output(":service U\n@list _GetItem 0\n"),
              HasSubstr("no service named U; it has S, T\na\n"));
}

TEST_F(Repl, ShowsTheDevice) { EXPECT_THAT(output(":device\n"), HasSubstr("@levelOf: of a = 7")); }

TEST_F(Repl, ExplainsCommands) {
  EXPECT_THAT(output(":help\n"), HasSubstr(":trace EXPR"));
  EXPECT_THAT(output(":nix\n"), HasSubstr("no command :nix; :help"));
  EXPECT_THAT(output(":trace\n"), HasSubstr(":trace wants something: :trace EXPR"));
  EXPECT_THAT(output(":keys x\n"), HasSubstr("stands alone"));
}

TEST_F(Repl, RefusesWhatItCannotUse) {
  const ChildResult result = runAdmtemplate({"repl", (folder_.path() / "none").string()}, "1\n");
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, HasSubstr("template"));
}

TEST_F(Repl, TakesAnyBytes) {
  std::string line;
  for (int c = 1; c < 256; ++c) {
    if (c != '\n') line.push_back(static_cast<char>(c));
  }
  const ChildResult result = run("\"" + line + "\"\n:tree " + line + "\n:trace " + line + "\n1\n");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, ::testing::EndsWith("1\n"));
}

}  // namespace
}  // namespace commandfilter::testing
