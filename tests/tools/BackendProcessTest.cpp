// Devices that are reached through a backend, which a script plays.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <thread>

#include "Admtemplate.h"
#include "TerminalSession.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// The only processes that could know the folder are the tool and its backend.
bool anyProcessNames(const std::string& text) {
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const std::string name = entry.path().filename().string();
    if (name.find_first_not_of("0123456789") != std::string::npos) continue;
    std::error_code error;
    const auto program = std::filesystem::read_symlink(entry.path() / "exe", error);
    if (!error && program.string().starts_with(text)) return true;
  }
  return false;
}

class BackendProcess : public ::testing::Test {
 protected:
  BackendProcess() {
    std::filesystem::create_directory(folder_.path() / "backend");
    std::filesystem::copy_file(RECORDING_BACKEND, folder_.path() / "backend" / "recording");
    script("GET_DEVICE_ID OK MFG:Acme;MDL:M1;SN:77;\n");
  }
  ~BackendProcess() override { EXPECT_FALSE(anyProcessNames(folder_.path().string())); }

  void script(std::string_view text) const { writeFile(record_ + ".script", text); }
  void addBackend(const std::string& scheme, const std::string& program) const {
    const std::filesystem::path path = folder_.path() / "backend" / scheme;
    writeFile(path, "#!/bin/sh\n" + program);
    std::filesystem::permissions(path, std::filesystem::perms(0755));
  }
  [[nodiscard]] ChildResult run(const std::vector<std::string>& arguments,
                                std::vector<std::string> variables = {}) const {
    variables.push_back("CUPS_SERVERBIN=" + folder_.path().string());
    return runAdmtemplate(arguments, "", variables);
  }
  [[nodiscard]] ChildResult ask(const std::string& expression,
                                const std::vector<std::string>& variables = {}) const {
    return run(
        {"eval", "--device", uri_, "--service", "DMFDeviceStatus", "--expression", expression},
        variables);
  }
  [[nodiscard]] std::string events() const { return readFile(record_ + ".events"); }

  TemporaryFolder folder_;
  std::string record_ = (folder_.path() / "record").string();
  std::string uri_ = "recording://" + record_;
};

TEST_F(BackendProcess, AnswersForTheDevice) {
  const ChildResult result = ask("{model}.vendor + @deviceSerialNumber");
  EXPECT_EQ(result.output, "Acme77\n");
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(BackendProcess, GetsNothingToPrint) {
  static_cast<void>(ask("{model}.vendor"));
  EXPECT_THAT(events(), HasSubstr("request GET_DEVICE_ID"));
  EXPECT_THAT(events(), Not(HasSubstr("data")));
  EXPECT_THAT(events(), Not(HasSubstr("end")));
}

TEST_F(BackendProcess, SavesADescriptionThatAnswersTheSame) {
  const ChildResult result = run({"device", uri_, "--format", "plist"});
  EXPECT_EQ(result.exitStatus, 0);
  const std::string saved = (folder_.path() / "saved.plist").string();
  writeFile(saved, result.output);
  for (const char* service : {"DMFDeviceStatus", "DMFSuppliesStatus", "CapabilitiesInfoProvider"}) {
    for (const char* expression :
         {"@deviceSerialNumber", "@isAvailable", "{model}", "{model}.name", "{model}.vendor",
          "{model}.firmwareVersion", "{state}", "{pageCount}", "@suppliesIdentifiers", "{supplies}",
          "{supplies}.level", "{nothing}", "{supportedSupplies}"}) {
      const std::vector<std::string> arguments{"eval",     "--service", service, "--expression",
                                               expression, "--format",  "json",  "--device"};
      std::vector<std::string> live = arguments;
      live.push_back(uri_);
      std::vector<std::string> described = arguments;
      described.push_back(saved);
      EXPECT_EQ(run(described).output, run(live).output) << service << ' ' << expression;
    }
  }
}

TEST_F(BackendProcess, IsNotMixedUpWithTheUsersDefaultPrinter) {
  static_cast<void>(ask("{model}", {"PRINTER=other", "PPD=/nonexistent", "CLASS=c"}));
  EXPECT_EQ(ask("{model}", {"PRINTER=other", "PPD=/nonexistent"}).output, "M1\n");
}

TEST_F(BackendProcess, TellsWhatItComplainsAbout) {
  addBackend("broken",
             "echo 'DEBUG: no' >&2\necho 'ERROR: The cable is missing.' >&2\n"
             "echo 'INFO: Trying again.' >&2\nexit 1\n");
  const ChildResult result = run({"device", "broken://x"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, HasSubstr("does not tell its device ID"));
  EXPECT_THAT(result.errors, HasSubstr("its backend says: The cable is missing.\n"));
  EXPECT_THAT(result.errors, HasSubstr("its backend says: Trying again.\n"));
  EXPECT_THAT(result.errors, Not(HasSubstr("no\n")));
  const ChildResult evaluated = run({"eval", "--device", "broken://x", "--service",
                                     "DMFDeviceStatus", "--expression", "{model}"});
  EXPECT_EQ(evaluated.output, "nil\n");
  EXPECT_THAT(evaluated.errors, HasSubstr("The cable is missing."));
}

TEST_F(BackendProcess, EndsWithTheToolEvenIfItWillNot) {
  addBackend("stubborn", "trap '' TERM INT HUP PIPE\nwhile :; do sleep 1; done\n");
  EXPECT_EQ(run({"eval", "--device", "stubborn://x", "--expression", "1 + 1"}).output, "11\n");
}

TEST_F(BackendProcess, IsGoneWhenADeviceCannotBeUsed) {
  EXPECT_EQ(run({"eval", "--device", uri_, "--expression", "[x] gt _Nix("}).exitStatus, 0);
  EXPECT_EQ(run({"device", "recording:"}).exitStatus, 1);
}

TEST_F(BackendProcess, EndsWithAToolThatIsKilled) {
  TerminalSession session({ADMTEMPLATE, "repl", "--device", uri_},
                          {"PATH=/usr/bin:/bin", "TERM=xterm", "HOME=" + folder_.path().string(),
                           "CUPS_SERVERBIN=" + folder_.path().string()});
  ASSERT_TRUE(session.waitForPrompt());
  EXPECT_TRUE(anyProcessNames(folder_.path().string()));
  kill(session.process(), SIGKILL);
  EXPECT_EQ(session.finish(), -1);
  while (anyProcessNames(folder_.path().string())) std::this_thread::yield();
}

TEST_F(BackendProcess, OutlivesControlCAtThePromptAndIsAskedAfreshOnReload) {
  TerminalSession session({ADMTEMPLATE, "repl", "--device", uri_, "--service", "DMFDeviceStatus"},
                          {"PATH=/usr/bin:/bin", "TERM=xterm", "HOME=" + folder_.path().string(),
                           "CUPS_SERVERBIN=" + folder_.path().string()});
  ASSERT_TRUE(session.waitForPrompt());
  session.type("x\x03");
  ASSERT_TRUE(session.typeUntil("{model}\n", "\nM1\r\n"));
  script("GET_DEVICE_ID OK MFG:Acme;MDL:M2;\n");
  session.type("{model}\n");
  ASSERT_TRUE(session.waitFor("\nM1\r\n"));
  session.type(":reload\n{model}\n");
  EXPECT_TRUE(session.waitFor("\nM2\r\n"));
  EXPECT_EQ(session.finish("\x04"), 0);
}

TEST_F(BackendProcess, ExplainsOneThatMayNotBeRun) {
  writeFile(folder_.path() / "backend" / "locked", "");
  std::filesystem::permissions(folder_.path() / "backend" / "locked", std::filesystem::perms(0600));
  const ChildResult locked = run({"device", "locked://x"});
  EXPECT_EQ(locked.exitStatus, 2);
  EXPECT_THAT(locked.errors, HasSubstr("run this command as root"));
  addBackend("strange", "");
  writeFile(folder_.path() / "backend" / "strange", "#!/nonexistent\n");
  const ChildResult strange = run({"device", "strange://x"});
  EXPECT_EQ(strange.exitStatus, 2);
  EXPECT_THAT(strange.errors, HasSubstr("cannot run its backend"));
}

}  // namespace
}  // namespace commandfilter::testing
