// The templates of check/, each with what `admtemplate check` says about it; check/README.md tells
// how to add one. And the templates of the repository, about which it has nothing to say.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "CheckCommand.h"
#include "check/TemplateCheck.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/PropertyList.h"
#include "support/File.h"
#include "template/LibraryClasses.h"
#include "template/TemplateCaseFile.h"
#include "template/status/StatusServiceClasses.h"

namespace commandfilter::testing {
namespace {

using ::testing::Each;
using ::testing::IsEmpty;

// The classes of the library, as the tool has them.
class LibraryClasses {
 public:
  LibraryClasses() {
    registrations_.push_back(ClassRegistry::shared().add(runtimeClasses()));
    registrations_.push_back(ClassRegistry::shared().add(statusServiceClasses()));
    registrations_.push_back(ClassRegistry::shared().add(templateClasses()));
  }

 private:
  std::vector<ClassRegistry::Registration> registrations_;
};

std::vector<std::string> templatesIn(const std::string& folder) {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == ".plist") paths.push_back(entry.path().string());
  }
  std::ranges::sort(paths);
  return paths;
}

class CheckCase : public ::testing::TestWithParam<std::string> {
 protected:
  LibraryClasses classes_;
};

TEST_P(CheckCase, FindsWhatStandsBesideTheTemplate) {
  const std::filesystem::path path = GetParam();
  tools::CheckArguments arguments;
  arguments.templates = {path.string()};
  std::ostringstream report;
  std::ostringstream messages;
  const int status = tools::runCheck(arguments, report, messages);
  std::string found = report.str();
  const std::string folder = path.parent_path().string() + "/";
  for (std::size_t at = found.find(folder); at != std::string::npos; at = found.find(folder, at)) {
    found.erase(at, folder.size());
  }
  const std::string expected = readFile(std::filesystem::path(path).replace_extension(".findings"));
  EXPECT_EQ(found, expected);
  EXPECT_EQ(status, expected.empty() ? 0 : 1);
  EXPECT_EQ(messages.str(), "");
}

std::string nameOf(const ::testing::TestParamInfo<std::string>& info) {
  std::string name = std::filesystem::path(info.param).stem().string();
  std::ranges::replace(name, '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Templates, CheckCase, ::testing::ValuesIn(templatesIn(CHECK_CASES)),
                         nameOf);

class OwnTemplates : public ::testing::Test {
 protected:
  // What is said about a template, each thing on a line.
  static std::vector<std::string> messagesAbout(const Dictionary& configuration) {
    tools::KeyPaths paths;
    tools::Findings findings;
    tools::checkTemplate(configuration, {}, nullptr, paths, findings);
    std::vector<std::string> messages;
    for (const tools::Finding& finding : findings.all()) {
      messages.push_back(finding.complaint.message);
    }
    return messages;
  }

  LibraryClasses classes_;
};

TEST_F(OwnTemplates, OfTheExamplesAreClean) {
  std::size_t templates = 0;
  for (const std::string& path : templatesIn(EXAMPLES)) {
    Result<Value> list = readPropertyList(path);
    ASSERT_TRUE(list) << path;
    const auto* configuration = castTo<Dictionary>(*list);
    if (configuration == nullptr || configuration->objectForKey("TemplateValues").isNil()) continue;
    // It names classes of its plug-in, with which the test of the documents checks it.
    if (path.ends_with("/order.plist")) continue;
    EXPECT_THAT(messagesAbout(*configuration), IsEmpty()) << path;
    ++templates;
  }
  EXPECT_GT(templates, 0U);
}

RefPtr<Dictionary> dictionaryOf(const TemplateCase::Names& names) {
  DictionaryBuilder builder;
  for (const auto& [name, value] : names) builder.set(name, value.value());
  return builder.build();
}

Ref<Dictionary> templateOf(const TemplateCase& tested) {
  DictionaryBuilder sections;
  sections.set("TemplateValues", dictionaryOf(tested.values));
  sections.set("TemplateConstants", dictionaryOf(tested.constants));
  sections.set("TemplateMacroses", dictionaryOf(tested.macros));
  for (const auto& [name, value] : tested.sections) sections.set(name, value.value());
  return sections.build();
}

TEST_F(OwnTemplates, OfTheDocumentsAreClean) {
  std::size_t templates = 0;
  for (const TemplateCase& tested : templateCasesOfMarkdown(TEMPLATE_REFERENCE)) {
    const bool showsErrors = std::ranges::any_of(
        tested.steps, [](const TemplateStep& step) { return step.error.has_value(); });
    if (showsErrors) {
      EXPECT_THAT(messagesAbout(*templateOf(tested)), ::testing::Not(IsEmpty())) << tested.name;
    } else {
      EXPECT_THAT(messagesAbout(*templateOf(tested)), IsEmpty()) << tested.name;
      ++templates;
    }
  }
  EXPECT_GT(templates, 0U);
}

TEST_F(OwnTemplates, OfTheTestsAreAllChecked) {
  std::size_t templates = 0;
  for (const TemplateCase& tested : templateCasesOfFolder(TEMPLATE_CASES)) {
    ASSERT_EQ(tested.problem, "");
    EXPECT_THAT(messagesAbout(*templateOf(tested)), Each(::testing::Not(IsEmpty())));
    ++templates;
  }
  EXPECT_GT(templates, 50U);
}

}  // namespace
}  // namespace commandfilter::testing
