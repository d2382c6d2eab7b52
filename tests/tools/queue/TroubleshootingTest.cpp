// docs/troubleshooting.md quotes what people see: each line that it quotes is brought about here.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "integration/JobFixture.h"
#include "support/File.h"

namespace commandfilter::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::HasSubstr;

// The lines of the block behind a mark, without what indents them.
std::vector<std::string> quoted(const std::string& name) {
  std::istringstream document(readFile(TROUBLESHOOTING));
  const std::string mark = "<!-- quote: " + name + " -->";
  std::vector<std::string> lines;
  int fences = -1;
  for (std::string line; std::getline(document, line) && fences < 2;) {
    line.erase(0, line.find_first_not_of(' '));
    if (line == mark) {
      fences = 0;
    } else if (fences >= 0 && line.starts_with("```")) {
      ++fences;
    } else if (fences == 1) {
      lines.push_back(line);
    }
  }
  EXPECT_FALSE(lines.empty()) << name << " is not quoted";
  return lines;
}

const std::set<std::string> kBroughtAbout{
    "refused", "documents",  "insecure",     "insecure-job", "missing",    "failed",
    "library", "broken-off", "device-model", "distrust",     "snmp-false", "no-scheduler"};

class Troubleshooting : public JobFixture {
 protected:
  void addQueue(const std::string& filters, const std::string& device = "file:/dev/null") {
    std::string ppd = readFile(PrivateScheduler::ppd());
    for (const char* keyword : {"*cupsFilter", "*cupsCommands"}) {
      const std::size_t start = ppd.find(keyword);
      ppd.erase(start, ppd.find('\n', start) + 1 - start);
    }
    const fs::path file = folder_.path() / "queue.ppd";
    writeFile(file, ppd.insert(ppd.find("*OpenUI"), filters));
    scheduler_.addQueue("q", device, file);
  }
  [[nodiscard]] fs::path prefix() const { return folder_.path() / "prefix"; }
  [[nodiscard]] fs::path contents() const {
    return prefix() / "lib/cups/filter/CommandFilter.app/Contents";
  }
  // With the folders of an installed package instead of those of the test.
  [[nodiscard]] std::string asInstalled(std::string text) const {
    const std::vector<std::pair<std::string, std::string>> folders = {
        {fs::canonical(prefix()).string(), "/usr"},
        {prefix().string(), "/usr"},
        {scheduler_.variable("SERVER_BIN"), "/usr/lib/cups"},
        {scheduler_.variable("ERROR_LOG"), "/var/log/cups/error_log"}};
    for (const auto& [from, to] : folders) {
      for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos;) {
        text.replace(at, from.size(), to);
      }
    }
    return text;
  }
  void expectQuotedIn(const std::string& name, const std::string& text) const {
    for (const std::string& line : quoted(name)) EXPECT_THAT(asInstalled(text), HasSubstr(line));
  }
  [[nodiscard]] std::string jobLog() const {
    std::string text;
    for (const std::string& line : log()) text.append(line).append("\n");
    return text;
  }
  [[nodiscard]] std::string lp(const std::string& format) const {
    const fs::path file = folder_.path() / "file";
    writeFile(file, "#CUPS-COMMAND\n");
    return scheduler_.client({"lp", "-d", "q", "-o", "document-format=" + format, file.string()})
        .errors;
  }
  [[nodiscard]] std::string state() const {
    return scheduler_.client({"lpstat", "-p", "q"}).output;
  }
  [[nodiscard]] ChildResult tool(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), (prefix() / "sbin/commandfilter-queue").string());
    return scheduler_.client(arguments);
  }

  const std::string kLine = "*cupsFilter: \"application/vnd.cups-command 0 commandfilter\"\n";
};

TEST(TroubleshootingGuide, QuotesNothingElse) {
  std::istringstream document(readFile(TROUBLESHOOTING));
  std::set<std::string> names;
  const std::string mark = "<!-- quote: ";
  for (std::string line; std::getline(document, line);) {
    line.erase(0, line.find_first_not_of(' '));
    if (line.starts_with(mark)) {
      names.insert(line.substr(mark.size(), line.find(" -->") - mark.size()));
    }
  }
  EXPECT_EQ(names, kBroughtAbout);
}

TEST_F(Troubleshooting, RefusedFiles) {
  addQueue("*cupsFilter: \"application/vnd.cups-raster 0 -\"\n");
  expectQuotedIn("refused", lp("application/vnd.cups-command"));
  addQueue("*cupsFilter2: \"application/vnd.cups-raster image/pwg-raster 0 -\"\n" + kLine);
  expectQuotedIn("refused", lp("application/vnd.cups-command"));
  addQueue(kLine);
  expectQuotedIn("documents", lp("application/postscript"));
}

TEST_F(Troubleshooting, FiltersThatTheSchedulerDoesNotRun) {
  if (geteuid() != 0) GTEST_SKIP() << "only the scheduler of root looks at rights";
  addQueue(kLine);
  ASSERT_EQ(chmod(product_.filter().c_str(), 0777), 0);
  submit("q");
  EXPECT_EQ(wait(), "processing-stopped");
  expectQuotedIn("insecure", state());
  expectQuotedIn("insecure-job", jobLog());
}

TEST_F(Troubleshooting, AMissingFilter) {
  fs::remove(fs::path(scheduler_.variable("SERVER_BIN")) / "filter" / "commandfilter");
  addQueue(kLine);
  submit("q");
  EXPECT_EQ(wait(), "processing-stopped");
  expectQuotedIn("missing", state());
}

TEST_F(Troubleshooting, AMissingLibrary) {
  for (const fs::directory_entry& entry : fs::directory_iterator(prefix() / "lib")) {
    if (entry.path().filename().string().starts_with("libcommandfilter")) fs::remove(entry.path());
  }
  addQueue(kLine);
  submit("q");
  EXPECT_EQ(wait(), "processing-stopped");
  EXPECT_THAT(state(), HasSubstr("Filter failed"));
  expectQuotedIn("failed", jobLog());
  expectQuotedIn("library", jobLog());
}

TEST_F(Troubleshooting, LinesOfTheFilter) {
  addQueue(kLine);
  product_.addPlugIn("Throwing", {"Throw standard exception"});
  ASSERT_EQ(chmod((contents() / "Frameworks").c_str(), 0775), 0);
  submit("q", "Throw standard exception\n");
  EXPECT_EQ(wait(), "completed");
  expectQuotedIn("broken-off", jobLog());
  expectQuotedIn("device-model", jobLog());
}

TEST_F(Troubleshooting, LinesOfTheTool) {
  addQueue(kLine, "socket://printer.example?snmp=false");
  product_.addPlugIn("Echo", {"Echo"});
  ASSERT_EQ(chmod((prefix() / "lib/commandfilter/plugins/Echo/Contents/Linux/Code").c_str(), 0775),
            0);
  // Whoever runs the test owns the files.
  const passwd* owner = getpwuid(geteuid());
  ASSERT_NE(owner, nullptr);
  const std::string report = tool({"status", "--user", owner->pw_name}).output;
  expectQuotedIn("distrust", report);
  expectQuotedIn("snmp-false", report);
  expectQuotedIn("no-scheduler", tool({"-h", "localhost:1", "status"}).errors);
}

}  // namespace
}  // namespace commandfilter::testing
