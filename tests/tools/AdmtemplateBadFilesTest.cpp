// Files that admtemplate cannot use, or that are made to break it, in each of their roles.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

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

using namespace std::string_literals;
using ::testing::HasSubstr;

constexpr std::string_view kGoodTemplate =
    "<plist><dict><key>TemplateValues</key><dict>"
    "<key>One</key><dict><key>Value</key><string>1</string></dict></dict></dict></plist>";

std::string repeated(std::string_view text, std::size_t times) {
  std::string result;
  result.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

// A dictionary whose only entry is nested that deep.
std::string nested(std::size_t depth) {
  return "<plist><dict><key>Deep</key>" + repeated("<array>", depth) + repeated("</array>", depth) +
         "</dict></plist>";
}

ChildResult eval(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "eval");
  return runAdmtemplate(arguments);
}

// The same file as template, device description and input.
class AdmtemplateBadFiles : public ::testing::TestWithParam<std::string_view> {
 protected:
  AdmtemplateBadFiles() { writeFile(template_, kGoodTemplate); }

  ChildResult evalOver(const std::string& file) {
    if (GetParam() == "template") return eval({file});
    return eval({template_, "--" + std::string(GetParam()), file});
  }
  ChildResult evalOver(std::string_view bytes) {
    writeFile(file_, bytes);
    return evalOver(file_);
  }
  static void expectRefusal(const ChildResult& result, std::string_view file,
                            std::string_view reason) {
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.exitStatus, 2) << reason;
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr(std::string(GetParam()) + " "));
    EXPECT_THAT(result.errors, HasSubstr(std::string(file)));
    EXPECT_THAT(result.errors, HasSubstr(std::string(reason)));
  }
  void expectRefusal(std::string_view bytes, std::string_view reason) {
    expectRefusal(evalOver(bytes), file_, reason);
  }

  TemporaryFolder folder_;
  std::string template_ = (folder_.path() / "template.plist").string();
  std::string file_ = (folder_.path() / "file.plist").string();
};

INSTANTIATE_TEST_SUITE_P(Roles, AdmtemplateBadFiles,
                         ::testing::Values("template", "device", "input"),
                         [](const auto& role) { return std::string(role.param); });

TEST_P(AdmtemplateBadFiles, AreNoFilesAtAll) {
  const std::string missing = (folder_.path() / "missing").string();
  expectRefusal(evalOver(missing), missing, "");
  expectRefusal(evalOver(folder_.path().string()), folder_.path().string(),
                "is not a regular file");
  const std::string fifo = (folder_.path() / "fifo").string();
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  expectRefusal(evalOver(fifo), fifo, "is not a regular file");
}

TEST_P(AdmtemplateBadFiles, AreNoPropertyLists) {
  expectRefusal(std::string_view(""), "is no property list");
  expectRefusal(std::string_view("{ Name = 1; }"), "is no property list");
  expectRefusal(std::string_view("bplist00"), "");
  expectRefusal(std::string_view("\xFF\xFE<plist>"),
                "neither UTF-8 text nor a binary list; save it in UTF-8");
  expectRefusal(std::string_view("<plist><array/></plist>"), "dict");
}

TEST_P(AdmtemplateBadFiles, AreNoGoodXML) {
  expectRefusal(std::string_view("<plist>\n<dict>\n<key>One</kex></dict></plist>"),
                ": line 3, column 11: mismatched tag");
  expectRefusal(std::string_view("<dict>\n<key>One</key><integer>1.5</integer></dict>"),
                ": line 2, column 27: an <integer> must be a whole number of 64 bits");
}

TEST_P(AdmtemplateBadFiles, EndTooEarly) {
  for (std::size_t length = 0; length + 8 < kGoodTemplate.size(); length += 11) {
    const ChildResult result = evalOver(kGoodTemplate.substr(0, length));
    EXPECT_EQ(result.exitStatus, 2) << length;
    EXPECT_THAT(result.errors, HasSubstr(file_));
  }
}

TEST_P(AdmtemplateBadFiles, AreNestedTooDeep) {
  expectRefusal(std::string_view(nested(600)), "nested too deeply");
  expectRefusal(std::string_view(nested(1'000'000)), "nested too deeply");
  EXPECT_EQ(evalOver(std::string_view(nested(500))).exitStatus, 0);
}

TEST_P(AdmtemplateBadFiles, AreHuge) {
  constexpr std::size_t kMegabyte = 1024 * 1024;
  const ChildResult text =
      evalOver(std::string_view("<plist><dict><key>Long</key><string>" +
                                std::string(100 * kMegabyte, 'x') + "</string></dict></plist>"));
  EXPECT_FALSE(text.timedOut);
  EXPECT_EQ(text.exitStatus, 0) << text.errors;
  expectRefusal(std::string_view("<plist><dict><key>Many</key><array>" +
                                 repeated("<true/>", 15 * kMegabyte) + "</array></dict></plist>"),
                "values");
}

// One value that is fine among descriptions of every other type.
TEST(AdmtemplateBadTemplate, HasDescriptionsOfTheWrongType) {
  const std::vector<std::string_view> kinds{"<array/>",
                                            "<true/>",
                                            "<integer>1</integer>",
                                            "<real>1</real>",
                                            "<string>1</string>",
                                            "<data>AA==</data>",
                                            "<date>2020-01-01T00:00:00Z</date>",
                                            "<dict/>"};
  TemporaryFolder folder;
  const std::string file = (folder.path() / "template.plist").string();
  for (const std::string_view kind : kinds) {
    for (const std::string_view name :
         {"Value", "Filter", "Range", "ServiceName", "EvaluationContext", "AcceptsEmptyArray",
          "TemplateConstants", "TemplateMacroses"}) {
      const bool isSection = name.starts_with("Template");
      const std::string entry = "<key>" + std::string(name) + "</key>" + std::string(kind);
      writeFile(file, "<plist><dict>" + (isSection ? entry : "") +
                          "<key>TemplateValues</key><dict><key>Odd</key>" + std::string(kind) +
                          "<key>Made</key><dict><key>Value</key><string>$C + _M()</string>" +
                          (isSection ? "" : entry) +
                          "</dict><key>One</key><dict><key>Value</key><string>1</string></dict>"
                          "</dict></dict></plist>");
      const ChildResult result = eval({file, "--format", "json"});
      ASSERT_EQ(result.exitStatus, 0) << name << ' ' << kind;
      EXPECT_EQ(nlohmann::json::parse(result.output).at("values").at("One"), 1)
          << name << ' ' << kind;
    }
  }
}

// What one subcommand takes, the other takes.
TEST(AdmtemplateBadTemplate, IsTheSameToEveryCommand) {
  TemporaryFolder folder;
  const std::string file = (folder.path() / "template.plist").string();
  const auto isTaken = [&file](const std::string& content) {
    writeFile(file, content);
    const int evaluated = eval({file, "--format", "json"}).exitStatus;
    const ChildResult checked = runAdmtemplate({"check", file});
    EXPECT_EQ(evaluated == 0, checked.exitStatus != 2) << content << checked.errors;
    return evaluated == 0;
  };
  const auto list = [](std::string_view entries) {
    return "<plist><dict>" + std::string(entries) + "</dict></plist>";
  };
  for (const std::string& content :
       {"<dict/>"s, "\xEF\xBB\xBF" + list(""), "\n" + list("<key/><integer> 0x1F </integer>"),
        list("<!-- a --><key>a</key><![CDATA[ ]]><string>&#65;</string><?b?>"),
        "<?xml version='1.0' encoding='UTF-16'?><!DOCTYPE plist SYSTEM 'x'>" + list(""),
        list("<key>a</key><true/><key>a</key><real>nan</real>")}) {
    EXPECT_TRUE(isTaken(content)) << content;
  }
  for (const std::string& content :
       {"<array/>"s, "<plist/>"s, list("a"), list("<key>a</key>"), list("<true/>"),
        list("<key>a</key><integer/>"), list("<key>a</key><null/>"),
        list("<key>a</key><string>&b;</string>"), list("<key>a</key><string>a & b</string>"),
        list("<key>a</key><string>\xE4</string>"), list("<key>a</key><date>2020</date>"),
        list("") + list(""), "x" + list(""), "\n<?xml version='1.0'?>" + list(""),
        "<!DOCTYPE plist [<!ENTITY a 'b'>]>" + list("<key>a</key><string>&a;</string>")}) {
    EXPECT_FALSE(isTaken(content)) << content;
  }
}

TEST(AdmtemplateBadTemplate, HasSectionsOfTheWrongType) {
  TemporaryFolder folder;
  const std::string file = (folder.path() / "template.plist").string();
  writeFile(file, "<plist><dict><key>TemplateValues</key><string>1</string></dict></plist>");
  const ChildResult result = eval({file, "--format", "json"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(nlohmann::json::parse(result.output),
            nlohmann::json::parse(R"({"values": {}, "errors": {}})"));
}

}  // namespace
}  // namespace commandfilter::testing
