// commandfilter-queue, as somebody who runs queues uses it: installed, with a scheduler.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "integration/JobFixture.h"
#include "support/File.h"

namespace commandfilter::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr std::string_view kPostScript = R"PPD(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "TEST.PPD"
*Manufacturer: "Example"
*Product: "(Test)"
*ModelName: "Test"
*ShortNickName: "Test"
*NickName: "Test"
*PSVersion: "(3010.000) 0"
*LanguageLevel: "3"
*OpenUI *PageSize/Media Size: PickOne
*OrderDependency: 10 AnySetup *PageSize
*DefaultPageSize: A4
*PageSize A4/A4: ""
*PageSize A5/A5: ""
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*OrderDependency: 10 AnySetup *PageRegion
*DefaultPageRegion: A4
*PageRegion A4/A4: ""
*PageRegion A5/A5: ""
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4/A4: "18 36 577 806"
*ImageableArea A5/A5: "18 36 400 500"
*DefaultPaperDimension: A4
*PaperDimension A4/A4: "595 842"
*PaperDimension A5/A5: "420 595"
)PPD";

class QueueTool : public JobFixture {
 protected:
  // With no plug-ins but the test's own.
  QueueTool() {
    const fs::path builtIn = product_.filter().parent_path() / "CommandFilter.app/Contents/PlugIns";
    for (const fs::directory_entry& entry : fs::directory_iterator(builtIn)) {
      fs::remove_all(entry.path());
    }
    product_.addPlugIn("Echo", {"Echo", "Clean all"});
  }

  [[nodiscard]] fs::path prefix() const {
    return product_.filter().parent_path().parent_path().parent_path().parent_path();
  }
  [[nodiscard]] fs::path plugIn() const {
    return prefix() / "lib" / "commandfilter" / "plugins" / "Echo";
  }
  [[nodiscard]] std::string program() const {
    return (prefix() / "sbin" / "commandfilter-queue").string();
  }
  // Runs the tool.
  [[nodiscard]] ChildResult tool(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), program());
    return scheduler_.client(arguments);
  }
  // The same for attach and status, which ask as whom filters run.
  [[nodiscard]] ChildResult asked(std::vector<std::string> arguments) const {
    if (geteuid() != 0) arguments.insert(arguments.end(), {"--user", userName()});
    return tool(std::move(arguments));
  }
  [[nodiscard]] static std::string userName() {
    const passwd* user = getpwuid(geteuid());
    return user != nullptr ? user->pw_name : "nobody";
  }
  [[nodiscard]] nlohmann::json status(const std::vector<std::string>& queues = {}) const {
    std::vector<std::string> arguments = {"status", "--format", "json"};
    arguments.insert(arguments.end(), queues.begin(), queues.end());
    const ChildResult result = asked(arguments);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    return nlohmann::json::parse(result.output);
  }
  // Makes a queue of a PPD with these bytes.
  void addQueue(const std::string& queue, std::string_view ppd) const {
    const fs::path file = folder_.path() / "queue.ppd";
    writeFile(file, ppd);
    static_cast<void>(scheduler_.addRecordingQueue(queue, file));
  }
  [[nodiscard]] std::string ppd(const std::string& queue) const {
    return readFile(fs::path(scheduler_.variable("CUPS_SERVERROOT")) / "ppd" / (queue + ".ppd"));
  }
  void expectRefusal(const std::vector<std::string>& arguments, int exitStatus,
                     const std::string& reason) const {
    const ChildResult result = tool(arguments);
    EXPECT_EQ(result.exitStatus, exitStatus);
    EXPECT_THAT(result.errors, HasSubstr(reason));
    EXPECT_EQ(result.output, "");
  }
  [[nodiscard]] bool acceptsPostScript(const std::string& queue) const {
    const fs::path file = folder_.path() / "page.ps";
    writeFile(file, "%!PS\nshowpage\n");
    return scheduler_
               .client({"lp", "-d", queue, "-o", "document-format=application/vnd.cups-postscript",
                        file.string()})
               .exitStatus == 0;
  }
};

TEST_F(QueueTool, AttachesAQueueAndDetachesIt) {
  addQueue("q", kPostScript);
  ASSERT_EQ(ppd("q"), kPostScript);
  const ChildResult attached = asked({"attach", "q"});
  EXPECT_EQ(attached.exitStatus, 0) << attached.errors;
  EXPECT_EQ(attached.errors, "");
  EXPECT_EQ(attached.output,
            "q: attached\n"
            "  commands went to: commandtops\n"
            "  commands go to:   commandfilter\n"
            "  commands listed:  Echo Clean\n");
  EXPECT_EQ(scheduler_.attributes("q")["printer-commands"], "Echo,Clean");
  EXPECT_TRUE(acceptsPostScript("q")) << "documents print as before";

  submit("q", "Echo\n");
  EXPECT_EQ(wait(), "completed");
  EXPECT_THAT(log(), Contains(HasSubstr("/filter/commandfilter (PID")));
  EXPECT_THAT(log(), Contains("echo answers: Echo"));

  EXPECT_EQ(asked({"attach", "q"}).output, "q: attached already, nothing is changed\n");
  const ChildResult detached = tool({"detach", "q"});
  EXPECT_EQ(detached.exitStatus, 0);
  EXPECT_EQ(detached.output,
            "q: detached\n"
            "  commands go to:   commandtops\n"
            "  commands listed:  none\n");
  EXPECT_EQ(ppd("q"), kPostScript);
  EXPECT_EQ(tool({"detach", "q"}).output, "q: not attached, nothing is changed\n");
}

TEST_F(QueueTool, TakesTheLineBackAfterThePPDWasChanged) {
  addQueue("q", kPostScript);
  ASSERT_EQ(asked({"attach", "q"}).exitStatus, 0);
  ASSERT_EQ(scheduler_.client({"lpadmin", "-p", "q", "-o", "PageSize=A5"}).exitStatus, 0);
  ASSERT_THAT(ppd("q"), HasSubstr("*DefaultPageSize: A5"));
  ASSERT_EQ(tool({"detach", "q"}).exitStatus, 0);
  std::string expected(kPostScript);
  for (const char* keyword : {"*DefaultPageSize: A4", "*DefaultPageRegion: A4",
                              "*DefaultImageableArea: A4", "*DefaultPaperDimension: A4"}) {
    const std::size_t place = expected.find(keyword);
    expected.replace(place + std::string_view(keyword).size() - 1, 1, "5");
  }
  EXPECT_EQ(ppd("q"), expected);
}

TEST_F(QueueTool, TakesTheCommandsOfNewPlugIns) {
  addQueue("q", kPostScript);
  ASSERT_EQ(asked({"attach", "q"}).exitStatus, 0);
  product_.addPlugIn("Second", {"Align"});
  const ChildResult again = asked({"attach", "q"});
  EXPECT_THAT(again.output, HasSubstr("q: attached already, its commands are brought up to date"));
  EXPECT_THAT(scheduler_.attributes("q")["printer-commands"], HasSubstr("Align"));
}

TEST_F(QueueTool, DetachesAllThatAreAttached) {
  addQueue("a", kPostScript);
  addQueue("b", kPostScript);
  addQueue("c", kPostScript);
  ASSERT_EQ(asked({"attach", "a", "c"}).exitStatus, 0);
  const ChildResult result = tool({"detach", "--all"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, HasSubstr("a: detached"));
  EXPECT_THAT(result.output, HasSubstr("c: detached"));
  EXPECT_THAT(result.output, Not(HasSubstr("b: ")));
}

TEST_F(QueueTool, GoesOnBehindAQueueThatCannotBe) {
  addQueue("q", kPostScript);
  const ChildResult result = asked({"attach", "missing", "q"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.output, HasSubstr("q: attached"));
  EXPECT_THAT(result.errors, HasSubstr("missing: there is no such queue; lpstat -e"));
}

TEST_F(QueueTool, RefusesWhatCannotBeAttached) {
  ASSERT_EQ(scheduler_.client({"lpadmin", "-p", "raw", "-v", "file:/dev/null", "-E"}).exitStatus,
            0);
  expectRefusal({"attach", "raw"}, 1, "raw: is a raw queue");
  expectRefusal({"detach", "raw"}, 1, "raw: is a raw queue");

  std::string everywhere(kPostScript);
  everywhere.replace(everywhere.find("TEST.PPD"), 8, "ippeve.ppd");
  addQueue("everywhere", everywhere);
  expectRefusal({"attach", "everywhere"}, 1, "everywhere: is an everywhere queue");
  EXPECT_EQ(ppd("everywhere"), everywhere);

  addQueue("member", kPostScript);
  ASSERT_EQ(scheduler_.client({"lpadmin", "-p", "member", "-c", "class"}).exitStatus, 0);
  expectRefusal({"attach", "class"}, 1, "class: is a class of printers");

  // Somebody spoiled the file behind the scheduler's back.
  addQueue("spoilt", kPostScript);
  writeFile(fs::path(scheduler_.variable("CUPS_SERVERROOT")) / "ppd" / "spoilt.ppd", "*no PPD\n");
  expectRefusal({"attach", "spoilt"}, 1, "spoilt: its PPD cannot be read: Missing PPD-Adobe-4.x");
}

TEST_F(QueueTool, RefusesArgumentsThatMakeNoSense) {
  expectRefusal({}, 2, "commandfilter-queue: name a command; take one of attach detach status\n");
  expectRefusal({"attach"}, 2, "attach: QUEUE is required; see commandfilter-queue attach --help");
  expectRefusal({"detach"}, 2, "name a queue, or say --all");
  expectRefusal({"detach", "--all", "q"}, 2, "--all");
  expectRefusal({"status", "--format", "yaml"}, 2,
                "there is no format yaml; take one of json text");
  expectRefusal({"status", "--user", "no-such-user"}, 2, "there is no such user");
  expectRefusal({"status", "--application", "/nowhere"}, 2, "name CommandFilter.app");
  expectRefusal({"frobnicate"}, 2,
                "commandfilter-queue: there is no command frobnicate; take one of");
}

TEST_F(QueueTool, SaysThatNoSchedulerAnswers) {
  const std::string nowhere = (folder_.path() / "no.sock").string();
  expectRefusal({"-h", nowhere, "detach", "q"}, 3, "no scheduler answers at " + nowhere);
  expectRefusal({"detach", "-h", nowhere, "q"}, 3, "no scheduler answers");
}

TEST_F(QueueTool, FindsTheSchedulerByItsAddress) {
  addQueue("q", kPostScript);
  EXPECT_EQ(asked({"-h", "localhost:" + scheduler_.variable("PORT"), "attach", "q"}).exitStatus, 0);
  EXPECT_THAT(ppd("q"), HasSubstr("commandfilter"));
}

TEST_F(QueueTool, ReportsOnQueues) {
  addQueue("attached", kPostScript);
  addQueue("other", kPostScript);
  ASSERT_EQ(asked({"attach", "attached"}).exitStatus, 0);
  const nlohmann::json report = status();
  ASSERT_EQ(report["queues"].size(), 2U);
  const nlohmann::json& attached = report["queues"][0];
  EXPECT_EQ(attached["name"], "attached");
  EXPECT_EQ(attached["attached"], true);
  EXPECT_EQ(attached["handledBy"], nlohmann::json({"commandfilter"}));
  EXPECT_EQ(attached["commands"][0],
            nlohmann::json({{"name", "Echo"}, {"plugIn", plugIn().string()}}));
  EXPECT_EQ(report["queues"][1]["attached"], false);
  EXPECT_EQ(report["queues"][1]["handledBy"], nlohmann::json({"commandtops"}));

  const ChildResult text = asked({"status", "other"});
  EXPECT_THAT(text.output, HasSubstr("other: not attached\n  commands go to:   commandtops (as "
                                     "for every PostScript printer)\n"));
  EXPECT_THAT(text.output, Not(HasSubstr("attached: attached")));
  EXPECT_THAT(text.output, HasSubstr(plugIn().string() + "\n    Echo, Clean all\n"));
}

TEST_F(QueueTool, ReportsWhetherTheDeviceCanBeAsked) {
  const auto canBeAsked = [this](const std::string& uri) {
    writeFile(folder_.path() / "q.ppd", kPostScript);
    scheduler_.addQueue("q", uri, folder_.path() / "q.ppd");
    return status({"q"})["queues"][0]["device"]["canBeAsked"].get<std::string>();
  };
  EXPECT_EQ(canBeAsked("socket://printer.example"), "yes");
  EXPECT_EQ(canBeAsked("socket://printer.example?waiteof=false&snmp=false"), "no");
  EXPECT_EQ(canBeAsked("ipp://printer.example/ipp/print"), "partly");
  EXPECT_EQ(canBeAsked("file:/dev/null"), "no");
}

TEST_F(QueueTool, ExplainsWhatTheFilterRefusesToLoad) {
  const fs::path code = plugIn() / "Contents" / "Linux" / "Code";
  ASSERT_EQ(chmod(code.c_str(), 0775), 0);
  product_.addPlugIn("NotAnExecutor", {"Other"});
  product_.addPlugIn("NoEntryPoint", {"None"});
  const nlohmann::json report = status();
  const auto plugInOf = [&report](const std::string& name) {
    for (const nlohmann::json& plugIn : report["plugIns"]) {
      if (plugIn["path"].get<std::string>().ends_with("/" + name)) return plugIn;
    }
    return nlohmann::json();
  };
  const nlohmann::json echo = plugInOf("Echo");
  EXPECT_EQ(echo["loaded"], false);
  EXPECT_EQ(echo["fault"]["path"], code.string());
  EXPECT_EQ(echo["fault"]["mode"], "0775");
  EXPECT_EQ(echo["refusal"], code.string() +
                                 " can be written by others than its owner (mode 0775); use: "
                                 "chmod go-w '" +
                                 code.string() + "'");
  EXPECT_THAT(plugInOf("NotAnExecutor")["refusal"].get<std::string>(),
              HasSubstr("does not conform to ICommandFilterExecutor"));
  EXPECT_THAT(plugInOf("NoEntryPoint")["refusal"].get<std::string>(),
              HasSubstr("exports no command_filter_module"));

  // The filter does as it was said: the job is carried out without it, and without a word.
  addQueue("q", kPostScript);
  ASSERT_EQ(asked({"attach", "q"}).exitStatus, 0);
  submit("q", "Echo\n");
  EXPECT_EQ(wait(), "completed");
  EXPECT_THAT(log(), Not(Contains("echo answers: Echo")));
  ASSERT_EQ(chmod(code.c_str(), 0755), 0);
  submit("q", "Echo\n");
  EXPECT_EQ(wait(), "completed");
  EXPECT_THAT(log(), Contains("echo answers: Echo"));
}

TEST_F(QueueTool, ExplainsFoldersThatAreNotSearched) {
  const fs::path folder = plugIn().parent_path();
  ASSERT_EQ(chmod(folder.c_str(), 0777), 0);
  const nlohmann::json report = status();
  EXPECT_THAT(report["plugIns"], ::testing::IsEmpty());
  EXPECT_EQ(report["folders"][0]["fault"]["path"], folder.string());
  addQueue("q", kPostScript);
  const ChildResult attached = asked({"attach", "q"});
  EXPECT_EQ(attached.exitStatus, 0);
  EXPECT_THAT(attached.errors, HasSubstr("the filter finds no plug-in"));
  EXPECT_THAT(attached.output, HasSubstr("commands listed:  none"));
}

TEST_F(QueueTool, TellsOfAFilterThatTheSchedulerDoesNotRun) {
  if (geteuid() != 0) GTEST_SKIP() << "only the scheduler of root looks at rights";
  ASSERT_EQ(chmod(product_.filter().c_str(), 0777), 0);
  addQueue("q", kPostScript);
  const ChildResult attached = asked({"attach", "q"});
  EXPECT_THAT(attached.errors, HasSubstr("cups-insecure-filter-warning"));
}

TEST_F(QueueTool, SaysThatItIsNotPermitted) {
  if (geteuid() != 0) GTEST_SKIP() << "needs a scheduler of another user";
  const fs::path settings = scheduler_.root() / "etc" / "cupsd.conf";
  addQueue("q", kPostScript);
  std::string text = readFile(settings);
  const std::string limit = "  <Limit All>\n";
  text.replace(
      text.find(limit), limit.size(),
      "  <Limit CUPS-Add-Modify-Printer>\n    Require user administrator\n  </Limit>\n" + limit);
  writeFile(settings, text);
  // The scheduler reads its settings again when it is told to.
  for (const fs::directory_entry& process : fs::directory_iterator("/proc")) {
    std::error_code error;
    if (fs::read_symlink(process.path() / "exe", error) == scheduler_.root() / "sbin" / "cupsd") {
      ASSERT_EQ(kill(std::stoi(process.path().filename().string()), SIGHUP), 0);
    }
  }
  // Each changes something as long as it may.
  ChildResult result;
  for (int i = 0; i < 200 && result.exitStatus != 4; ++i) {
    usleep(20'000);
    result =
        i % 2 == 0 ? asked({"-U", "guest", "attach", "q"}) : tool({"-U", "guest", "detach", "q"});
  }
  EXPECT_EQ(result.exitStatus, 4) << result.errors;
  EXPECT_THAT(result.errors, HasSubstr("the scheduler does not let you"));
}

}  // namespace
}  // namespace commandfilter::testing
