// The man pages and the shells' completions tell the same as --help.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "Admtemplate.h"
#include "repl/Commands.h"
#include "repl/Vocabulary.h"
#include "support/File.h"

namespace commandfilter::testing {
namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::Not;
using Words = std::set<std::string>;

// The first group of each match.
Words matchesOf(const std::string& pattern, const std::string& text) {
  Words words;
  const std::regex expression(pattern);
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
       ++match) {
    words.insert((*match)[1]);
  }
  return words;
}

std::string helpOf(const std::vector<std::string>& command) {
  std::vector<std::string> arguments = command;
  arguments.emplace_back("--help");
  const ChildResult result = runAdmtemplate(arguments);
  EXPECT_EQ(result.exitStatus, 0);
  return result.output;
}

Words commands() {
  const std::string help = helpOf({});
  Words words = matchesOf("\n  ([a-z]+) ", help.substr(help.find("Subcommands:")));
  EXPECT_GE(words.size(), 4U);
  return words;
}

Words optionsOf(const std::string& command) {
  return matchesOf("\n  --([a-z]+)", helpOf({command}));
}

// The lines from the one that begins with the first text to the one that begins with the second.
std::string between(const std::string& text, const std::string& first, const std::string& behind) {
  const std::size_t begin = text.find("\n" + first);
  EXPECT_NE(begin, std::string::npos) << first;
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find("\n" + behind, begin + 1) - begin);
}

TEST(Help, TellsEveryArgumentAndShowsAnExampleThatNamesTheCommand) {
  for (const std::string& command : commands()) {
    const std::string help = helpOf({command});
    EXPECT_THAT(help, HasSubstr("Example")) << command;
    EXPECT_THAT(help, HasSubstr("  admtemplate " + command)) << command;
    EXPECT_THAT(help, HasSubstr("Exit status:")) << command;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LE(line.size(), 130U) << line;
      // What an argument is, not of which type.
      EXPECT_THAT(line, Not(AnyOf(HasSubstr("TEXT"), HasSubstr("ENUM")))) << command;
    }
  }
}

TEST(Help, IsShownForAWrongCommandWithStatusTwo) {
  const ChildResult result = runAdmtemplate({"nix"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_NE(result.errors, "");
  EXPECT_EQ(runAdmtemplate({}).exitStatus, 2);
}

TEST(ManPage, HasEveryCommandAndItsOptions) {
  const std::string page = readFile(std::string(MAN_PAGES) + "/admtemplate.1");
  const std::string description = between(page, ".Sh DESCRIPTION", ".Sh DEVICES") + "\n.Ss";
  EXPECT_EQ(matchesOf("\n\\.Ss ([a-z]+)\n", description), commands());
  const std::string synopsis = between(page, ".Sh SYNOPSIS", ".Nm\n.Op Cm");
  EXPECT_EQ(matchesOf("\n\\.Cm ([a-z]+)\n", synopsis), commands());
  for (const std::string& command : commands()) {
    EXPECT_EQ(matchesOf("\n\\.It Fl -([a-z]+)", between(description, ".Ss " + command, ".Ss")),
              optionsOf(command));
    EXPECT_EQ(
        matchesOf("\n\\.Op Fl -([a-z]+)", between(synopsis + "\n.Nm", ".Cm " + command, ".Nm")),
        optionsOf(command));
  }
}

TEST(ManPage, HasEveryCommandOfThePrompt) {
  const std::string page = readFile(std::string(MAN_PAGES) + "/admtemplate.1");
  const std::vector<std::string> words = tools::commandWords();
  EXPECT_EQ(matchesOf("\n\\.It Ic (:[a-z]+)", page), Words(words.begin(), words.end()));
}

TEST(ManPage, HasEveryProcedure) {
  const std::string page = readFile(std::string(MAN_PAGES) + "/commandfilter-template.5");
  Words procedures;
  for (const std::string& name : tools::Vocabulary::procedures()) procedures.insert("_" + name);
  Words named = matchesOf("\n\\.Ql (_[A-Za-z]+) [,;.]", page);
  EXPECT_EQ(named, procedures);
}

// What bash offers for the words, the last of which is being typed.
Words completions(const std::vector<std::string>& words) {
  std::string script = "source '" COMPLETIONS "/admtemplate.bash'; COMP_WORDS=(admtemplate";
  for (const std::string& word : words) script += " '" + word + "'";
  script += "); COMP_CWORD=" + std::to_string(words.size()) +
            "; _admtemplate; printf '%s\\n' \"${COMPREPLY[@]}\"";
  ChildOptions options;
  options.program = "/bin/bash";
  options.arguments = {"bash", "--norc", "-c", script};
  options.environment = {"PATH=" + std::filesystem::path(ADMTEMPLATE).parent_path().string() +
                         ":/usr/bin:/bin"};
  const ChildResult result = runChild(options);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  return matchesOf("([^\n]+)\n", result.output);
}

TEST(BashCompletion, OffersEveryCommandAndItsOptions) {
  Words expected = commands();
  expected.insert("--help");
  EXPECT_EQ(completions({""}), expected);
  for (const std::string& command : commands()) {
    Words options{"--help"};
    for (const std::string& option : optionsOf(command)) options.insert("--" + option);
    EXPECT_EQ(completions({command, "--"}), options) << command;
  }
}

TEST(BashCompletion, OffersTheFormatsOfTheCommand) {
  EXPECT_EQ(completions({"eval", "--format", ""}), Words({"text", "json", "plist"}));
  EXPECT_EQ(completions({"check", "--format", ""}), Words({"text", "json"}));
  EXPECT_EQ(completions({"device", "--format", "p"}), Words({"plist"}));
}

TEST(BashCompletion, OffersTheKeysOfTheTemplate) {
  const std::string levels = std::string(EXAMPLE_TEMPLATE);
  EXPECT_EQ(completions({"eval", levels, "Le"}), Words({"Levels"}));
  EXPECT_EQ(completions({"check", levels, "--key", "L"}), Words({"Levels"}));
  EXPECT_EQ(completions({"check", levels, "--key", "T"}), Words({"Title", "ToOrder"}));
}

TEST(ZshCompletion, HasEveryCommandAndItsOptions) {
  const std::string text = readFile(std::string(COMPLETIONS) + "/_admtemplate");
  EXPECT_EQ(matchesOf("\n    '([a-z]+):", text), commands());
  for (const std::string& command : commands()) {
    Words options = optionsOf(command);
    options.insert("help");
    EXPECT_EQ(matchesOf("\n        ['\"]\\*?--([a-z]+)\\[",
                        between(text, "    " + command + ")", "      ;;")),
              options);
  }
}

TEST(FishCompletion, HasEveryCommandAndItsOptions) {
  const std::string text = readFile(std::string(COMPLETIONS) + "/admtemplate.fish");
  EXPECT_EQ(matchesOf("__fish_use_subcommand -f -a ([a-z]+) ", text), commands());
  for (const std::string& command : commands()) {
    EXPECT_EQ(matchesOf("'__fish_seen_subcommand_from " + command + "' -l ([a-z]+) ", text),
              optionsOf(command));
  }
}

}  // namespace
}  // namespace commandfilter::testing
