#include <CLI/CLI.hpp>
#include <array>
#include <exception>
#include <functional>
#include <iostream>
#include <string>
#include <string_view>

#include "CheckCommand.h"
#include "EvalCommand.h"
#include "FormatOption.h"
#include "UsageError.h"
#include "WrongArguments.h"
#include "device/DeviceCommand.h"
#include "repl/ReplCommand.h"
#include "template/LibraryClasses.h"

namespace {

using namespace commandfilter::tools;  // NOLINT(google-build-using-namespace): the program's own

constexpr int kUnusable = 2;

// Positional arguments name themselves.
constexpr const char* kNothingMore = "";

constexpr const char* kDeviceHelp =
    "A device description, a device URI or a queue; without one there is no device";

constexpr const char* kPlugInHelp = "A plug-in bundle to load; may be repeated";

void addSetting(CLI::App& command, SettingArguments& setting) {
  command.add_option("--device", setting.device, kDeviceHelp)->type_name("DEVICE");
  command.add_option("--input", setting.input, "Input parameters, a property list")
      ->type_name("FILE");
  command.add_option("--plugin", setting.plugIns, kPlugInHelp)
      ->type_name("BUNDLE")
      ->allow_extra_args(false);
}

void addEval(CLI::App& eval, EvalArguments& arguments) {
  eval.add_option("TEMPLATE", arguments.setting.configurationTemplate,
                  "The template, a property list")
      ->type_name(kNothingMore);
  eval.add_option("KEY", arguments.keys, "The values to compute; all when none is named")
      ->type_name(kNothingMore);
  eval.add_option(
          "--template", arguments.namedTemplate,
          "The template, named apart from the keys; for an --expression too, which uses its values")
      ->type_name("FILE");
  eval.add_option("--expression", arguments.expression, "Compute this instead of a key's value")
      ->type_name("EXPR");
  eval.add_option("--service", arguments.service, "The status service that the expression asks")
      ->type_name("NAME");
  addSetting(eval, arguments.setting);
  addFormatOption(eval, arguments.format, "text, json or plist",
                  {{"text", ReportFormat::Text},
                   {"json", ReportFormat::JSON},
                   {"plist", ReportFormat::PropertyList}});
  eval.add_flag("--strict", arguments.strict, "Exit with status 1 when a value has an error");
  eval.footer(
      "Examples:\n"
      "  admtemplate eval ink.plist ToOrder --device printer.plist\n"
      "  admtemplate eval --expression '{state}' --service DMFDeviceStatus \\\n"
      "    --device socket://printer.local\n"
      "Exit status: 0 when it was evaluated, 1 with --strict and an error, 2 when an argument or "
      "a\n"
      "file cannot be used.");
}

void addRepl(CLI::App& repl, ReplArguments& arguments) {
  repl.add_option("TEMPLATE", arguments.setting.configurationTemplate,
                  "The template, a property list; without one there are no values and macros")
      ->type_name(kNothingMore);
  repl.add_option("--service", arguments.service, "The status service that expressions ask")
      ->type_name("NAME");
  addSetting(repl, arguments.setting);
  repl.add_flag("--strict", arguments.strict, "Exit with status 1 when a line has an error");
  repl.footer(
      "A line is an expression, or a command such as :trace EXPR; :help lists them. Tab completes\n"
      "names, Ctrl-D ends. When standard input is no terminal, its lines are a script.\n"
      "Examples:\n"
      "  admtemplate repl ink.plist --device printer.plist --service DMFSuppliesStatus\n"
      "  echo ':trace 1 + 2' | admtemplate repl\n"
      "Exit status: 0 at the end, 1 with --strict and an error, 2 when an argument or a file "
      "cannot\n"
      "be used.");
}

void addDevice(CLI::App& device, DeviceArguments& arguments) {
  device
      .add_option("DEVICE", arguments.device,
                  "A device description, a device URI or a queue; without one, what there is is "
                  "listed")
      ->type_name(kNothingMore);
  addFormatOption(device, arguments.format,
                  "text, or plist for a device description that --device takes",
                  {{"text", DeviceFormat::Text}, {"plist", DeviceFormat::PropertyList}});
  device.footer(
      "A real device is asked through the backend that CUPS has for its URI. Nothing is printed.\n"
      "Examples:\n"
      "  admtemplate device\n"
      "  admtemplate device socket://printer.local --format plist > device.plist\n"
      "Exit status: 0, 1 when a real device does not answer, 2 when there is no such device.");
}

void addCheck(CLI::App& check, CheckArguments& arguments) {
  check.add_option("TEMPLATE", arguments.templates, "The templates, property lists")
      ->type_name(kNothingMore)
      ->required();
  check
      .add_option("--input", arguments.input,
                  "Input parameters, a property list; without it any name is one")
      ->type_name("FILE");
  check.add_option("--plugin", arguments.plugIns, kPlugInHelp)
      ->type_name("BUNDLE")
      ->allow_extra_args(false);
  check
      .add_option("--key", arguments.keys,
                  "A value that somebody asks for; may be repeated. Values that none of them uses "
                  "are reported")
      ->type_name("KEY")
      ->allow_extra_args(false);
  addFormatOption(check, arguments.format, "text or json",
                  {{"text", CheckFormat::Text}, {"json", CheckFormat::JSON}});
  check.footer(
      "Examples:\n"
      "  admtemplate check ink.plist\n"
      "  admtemplate check *.plist --format json\n"
      "Exit status: 0 when nothing was found, 1 when something was, 2 when an argument or a file\n"
      "cannot be used.");
}

// A subcommand. Only the one that is called is set up: the others would take time, and arguments of
// their names, such as the key of a value, for themselves.
struct Command {
  const char* name;
  const char* help;
  std::function<void(CLI::App&)> addOptions;
  std::function<int()> run;
};

int run(int argc, char** argv) {
  EvalArguments eval;
  CheckArguments check;
  ReplArguments repl;
  DeviceArguments device;
  const std::array commands{
      Command{"eval", "Compute values of a template, or one expression",
              [&eval](CLI::App& app) { addEval(app, eval); },
              [&eval] { return runEval(eval, std::cout, std::cerr); }},
      Command{"check", "Find what is wrong with templates, without a device",
              [&check](CLI::App& app) { addCheck(app, check); },
              [&check] { return runCheck(check, std::cout, std::cerr); }},
      Command{"repl", "Try expressions at a prompt", [&repl](CLI::App& app) { addRepl(app, repl); },
              [&repl] { return runRepl(repl, std::cin, std::cout, std::cerr); }},
      Command{"device", "Show what is known of a device, or which devices there are",
              [&device](CLI::App& app) { addDevice(app, device); },
              [&device] { return runDevice(device, std::cout, std::cerr); }},
  };
  CLI::App app(
      "Evaluates and checks templates of the command filter, with a printer or without one.",
      "admtemplate");
  app.require_subcommand(1);
  app.footer("\"admtemplate COMMAND --help\" tells about a command.");
  const std::string_view named = argc > 1 ? argv[1] : "";
  const Command* chosen = nullptr;
  for (const Command& command : commands) {
    if (named == command.name) chosen = &command;
  }
  if (chosen != nullptr) {
    chosen->addOptions(*app.add_subcommand(chosen->name, chosen->help));
  } else {
    for (const Command& command : commands) app.add_subcommand(command.name, command.help);
  }
  app.failure_message(explainArguments);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kUnusable;
  }
  commandfilter::registerLibraryClasses();
  return chosen != nullptr ? chosen->run() : kUnusable;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const int status = run(argc, argv);
    std::cout.flush();
    if (std::cout) return status;
    std::cerr << "admtemplate: the report could not be written\n";
  } catch (const std::exception& error) {
    std::cerr << "admtemplate: " << error.what() << '\n';
  }
  return kUnusable;
}
