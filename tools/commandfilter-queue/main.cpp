#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>

#include "Actions.h"
#include "FormatOption.h"
#include "ToolError.h"
#include "WrongArguments.h"

namespace {

using namespace commandfilter::tools;  // NOLINT(google-build-using-namespace): the program's own

constexpr const char* kEnd =
    "Exit status: 0 done, 1 the queue cannot be attached or detached, 2 wrong arguments,\n"
    "3 the scheduler does not answer or failed, 4 the scheduler does not permit it.";

void addInstallation(CLI::App* command, Arguments& arguments) {
  command
      ->add_option("--application", arguments.application,
                   "CommandFilter.app; the installed one when it is not named")
      ->type_name("FOLDER");
  command
      ->add_option("--user", arguments.filterUser,
                   "The user as whom the scheduler runs filters (default: lp)")
      ->type_name("USER");
}

int run(int argc, char** argv) {
  CLI::App app("Lets print queues use the command filter.", "commandfilter-queue");
  app.set_help_flag("--help", "Print this and exit");
  app.footer(kEnd);
  app.require_subcommand(1);
  app.failure_message(explainArguments);
  Arguments arguments;
  app.add_option("-h", arguments.server, "The scheduler: HOST, HOST:PORT or the path of a socket")
      ->type_name("SERVER");
  app.add_option("-U", arguments.user, "The user to be known as")->type_name("USER");
  CLI::App* attachCommand = app.add_subcommand("attach", "Send command files through the filter");
  attachCommand->add_option("QUEUE", arguments.queues, "The queues")->type_name("")->required();
  addInstallation(attachCommand, arguments);
  CLI::App* detachCommand = app.add_subcommand("detach", "Take that back");
  auto* named = detachCommand->add_option("QUEUE", arguments.queues, "The queues")->type_name("");
  detachCommand->add_flag("--all", arguments.all, "Each queue that is attached")->excludes(named);
  CLI::App* statusCommand = app.add_subcommand("status", "Tell how things are");
  statusCommand->add_option("QUEUE", arguments.queues, "The queues; all when none is named")
      ->type_name("");
  addInstallation(statusCommand, arguments);
  addFormatOption(*statusCommand, arguments.json, "text or json",
                  {{"text", false}, {"json", true}});
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
