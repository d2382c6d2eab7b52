#include "LoadTrial.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <limits>

#include "ToolError.h"
#include "filter/protocols/ICommandFilterExecutor.h"
#include "runtime/Bundle.h"
#include "runtime/File.h"
#include "runtime/FileDescriptor.h"

namespace commandfilter::tools {

namespace {

// A plug-in that waits for something must not keep the tool waiting.
constexpr unsigned kLongestTrial = 20;

std::string load(const std::string& path, bool isExecutorWanted) {
  const RefPtr<Bundle> bundle = Bundle::bundleWithPath(path);
  if (!bundle) return "cannot be reached by the filter's user; use: chmod a+rX on its folders";
  if (!bundle->load()) return bundle->loadFailure();
  if (!isExecutorWanted) return {};
  const Class* executor = bundle->principalClass();
  if (executor == nullptr) return "has no class under NSPrincipalClass in its Info.plist";
  if (executor->conformsToProtocol(ICommandFilterExecutor::kProtocol)) return {};
  return "its class " + std::string(executor->name) + " does not conform to ICommandFilterExecutor";
}

void becomeUser(const FilterUser& user) {
  if (geteuid() != 0 || user.user == 0) return;
  if (setgroups(0, nullptr) != 0 || setgid(user.group) != 0 || setuid(user.user) != 0) _exit(1);
}

// What code of the bundle writes is not for the report.
void silence() {
  const FileDescriptor nowhere(open("/dev/null", O_RDWR | O_CLOEXEC));
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (nowhere) dup2(nowhere.get(), descriptor);
  }
}

[[noreturn]] void runTrial(const FilterUser& user, const std::string& path, bool isExecutorWanted,
                           int report) {
  silence();
  becomeUser(user);
  alarm(kLongestTrial);
  std::string failure;
  try {
    failure = load(path, isExecutorWanted);
  } catch (const std::exception& exception) {
    failure = exception.what();
  }
  failure.push_back('\n');
  const bool isWritten =
      write(report, failure.data(), failure.size()) == static_cast<ssize_t>(failure.size());
  _exit(isWritten ? 0 : 1);
}

}  // namespace

std::string loadFailureAs(const FilterUser& user, const std::string& bundle,
                          bool isExecutorWanted) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw ToolError(ExitStatus::Scheduler, std::string("no pipe: ") + std::strerror(errno));
  }
  const FileDescriptor answer(ends[0]);
  FileDescriptor report(ends[1]);
  const pid_t child = fork();
  if (child < 0) {
    throw ToolError(ExitStatus::Scheduler, std::string("no process: ") + std::strerror(errno));
  }
  if (child == 0) runTrial(user, bundle, isExecutorWanted, report.get());
  report = FileDescriptor();
  Result<std::string> text = readToEnd(answer.get(), std::numeric_limits<int>::max());
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFSIGNALED(status)) {
    return std::string("ends the process that loads it: ") + strsignal(WTERMSIG(status));
  }
  if (!text || text->empty()) return "ends the process that loads it";
  text->pop_back();
  return std::move(*text);
}

}  // namespace commandfilter::tools
