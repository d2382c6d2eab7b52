#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <map>
#include <string>

#include "Actions.h"
#include "ToolError.h"

namespace {

using namespace commandfilter::tools;  // NOLINT(google-build-using-namespace): the program's own

constexpr const char* kEnd =
    "Exit status: 0 done, 1 the queue cannot be attached or detached, 2 wrong arguments,\n"
    "3 the scheduler does not answer or failed, 4 the scheduler does not permit it.";

void addInstallation(CLI::App* command, Arguments& arguments) {
  command->add_option("--application", arguments.application,
                      "CommandFilter.app; the installed one when it is not named");
  command->add_option("--user", arguments.filterUser,
                      "The user as whom the scheduler runs filters (default: lp)");
}

int run(int argc, char** argv) {
  CLI::App app("Lets print queues use the command filter.", "commandfilter-queue");
  app.set_help_flag("--help", "Print this and exit");
  app.footer(kEnd);
  app.require_subcommand(1);
  Arguments arguments;
  app.add_option("-h", arguments.server, "The scheduler: HOST, HOST:PORT or the path of a socket");
  app.add_option("-U", arguments.user, "The user to be known as");
  CLI::App* attachCommand = app.add_subcommand("attach", "Send command files through the filter");
  attachCommand->add_option("QUEUE", arguments.queues, "The queues")->required();
  addInstallation(attachCommand, arguments);
  CLI::App* detachCommand = app.add_subcommand("detach", "Take that back");
  auto* named = detachCommand->add_option("QUEUE", arguments.queues, "The queues");
  detachCommand->add_flag("--all", arguments.all, "Each queue that is attached")->excludes(named);
  CLI::App* statusCommand = app.add_subcommand("status", "Tell how things are");
  statusCommand->add_option("QUEUE", arguments.queues, "The queues; all when none is named");
  addInstallation(statusCommand, arguments);
  const std::map<std::string, bool> formats{{"text", false}, {"json", true}};
  statusCommand->add_option("--format", arguments.json, "text or json")
      ->transform(CLI::CheckedTransformer(formats, CLI::ignore_case).description("FORMAT"));
  for (CLI::App* command : {attachCommand, detachCommand, statusCommand}) command->fallthrough();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : static_cast<int>(ExitStatus::Usage);
  }
  if (detachCommand->parsed() && arguments.queues.empty() && !arguments.all) {
    throw ToolError(ExitStatus::Usage, "detach: name a queue, or say --all");
  }
  if (attachCommand->parsed()) return static_cast<int>(attach(arguments, std::cout, std::cerr));
  if (detachCommand->parsed()) return static_cast<int>(detach(arguments, std::cout, std::cerr));
  status(arguments, std::cout);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  ExitStatus status = ExitStatus::Scheduler;
  try {
    const int result = run(argc, argv);
    std::cout.flush();
    if (std::cout) return result;
    std::cerr << "commandfilter-queue: the report could not be written\n";
  } catch (const ToolError& error) {
    std::cout.flush();
    std::cerr << "commandfilter-queue: " << error.what() << '\n';
    status = error.status();
  } catch (const std::exception& error) {
    std::cerr << "commandfilter-queue: " << error.what() << '\n';
  }
  return static_cast<int>(status);
}
