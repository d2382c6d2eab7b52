#include <CLI/CLI.hpp>
#include <array>
#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <string_view>

#include "CheckCommand.h"
#include "EvalCommand.h"
#include "UsageError.h"
#include "device/DeviceCommand.h"
#include "repl/ReplCommand.h"
#include "template/LibraryClasses.h"

namespace {

using namespace commandfilter::tools;  // NOLINT(google-build-using-namespace): the program's own

constexpr int kUnusable = 2;

// Takes a name of the map, and says which there are when it is another.
template <typename Format>
CLI::Validator oneOf(const std::map<std::string, Format>& formats) {
  return CLI::Validator(
      [formats](std::string& text) -> std::string {
        const auto found = formats.find(CLI::detail::to_lower(text));
        if (found != formats.end()) {
          text = std::to_string(static_cast<int>(found->second));
          return {};
        }
        std::string problem = "there is no format " + text + "; take one of";
        for (const auto& [name, format] : formats) problem += ' ' + name;
        return problem;
      },
      "FORMAT");
}

constexpr const char* kDeviceHelp =
    "A device description, a device URI or a queue; without one there is no device";

constexpr const char* kPlugInHelp = "A plug-in bundle to load; may be repeated";

void addSetting(CLI::App& command, SettingArguments& setting) {
  command.add_option("--device", setting.device, kDeviceHelp);
  command.add_option("--input", setting.input, "Input parameters, a property list");
  command.add_option("--plugin", setting.plugIns, kPlugInHelp)->allow_extra_args(false);
}

void addEval(CLI::App& eval, EvalArguments& arguments) {
  eval.add_option("TEMPLATE", arguments.setting.configurationTemplate,
                  "The template, a property list");
  eval.add_option("KEY", arguments.keys, "The values to compute; all when none is named");
  eval.add_option("--template", arguments.setting.configurationTemplate,
                  "The template, for an --expression that uses its constants, macros and values");
  eval.add_option("--expression", arguments.expression, "Compute this instead of a key's value");
  eval.add_option("--service", arguments.service, "The status service that the expression asks");
  addSetting(eval, arguments.setting);
  const std::map<std::string, ReportFormat> formats{{"text", ReportFormat::Text},
                                                    {"json", ReportFormat::JSON},
                                                    {"plist", ReportFormat::PropertyList}};
  eval.add_option("--format", arguments.format, "text, json or plist")->transform(oneOf(formats));
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
                  "The template, a property list; without one there are no values and macros");
  repl.add_option("--service", arguments.service, "The status service that expressions ask");
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
  device.add_option("DEVICE", arguments.device,
                    "A device description, a device URI or a queue; without one, what there is is "
                    "listed");
  const std::map<std::string, DeviceFormat> formats{{"text", DeviceFormat::Text},
                                                    {"plist", DeviceFormat::PropertyList}};
  device
      .add_option("--format", arguments.format,
                  "text, or plist for a device description that --device takes")
      ->transform(oneOf(formats));
  device.footer(
      "A real device is asked through the backend that CUPS has for its URI. Nothing is printed.\n"
      "Examples:\n"
      "  admtemplate device\n"
      "  admtemplate device socket://printer.local --format plist > device.plist\n"
      "Exit status: 0, 1 when a real device does not answer, 2 when there is no such device.");
}

void addCheck(CLI::App& check, CheckArguments& arguments) {
  check.add_option("TEMPLATE", arguments.templates, "The templates, property lists")->required();
  check.add_option("--input", arguments.input,
                   "Input parameters, a property list; without it any name is one");
  check.add_option("--plugin", arguments.plugIns, kPlugInHelp)->allow_extra_args(false);
  check
      .add_option("--key", arguments.keys,
                  "A value that somebody asks for; may be repeated. Values that none of them uses "
                  "are reported")
      ->allow_extra_args(false);
  const std::map<std::string, CheckFormat> formats{{"text", CheckFormat::Text},
                                                   {"json", CheckFormat::JSON}};
  check.add_option("--format", arguments.format, "text or json")->transform(oneOf(formats));
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
  if (chosen == nullptr && !named.empty() && !named.starts_with('-')) {
    std::cerr << "admtemplate: there is no command " << named << "; take one of";
    for (const Command& command : commands) std::cerr << ' ' << command.name;
    std::cerr << '\n';
    return kUnusable;
  }
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
