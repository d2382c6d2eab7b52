#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <map>
#include <string>

#include "CheckCommand.h"
#include "EvalCommand.h"
#include "UsageError.h"
#include "template/LibraryClasses.h"

namespace {

using namespace commandfilter::tools;  // NOLINT(google-build-using-namespace): the program's own

constexpr int kUnusable = 2;

void addEval(CLI::App& app, EvalArguments& arguments) {
  CLI::App* eval = app.add_subcommand("eval", "Compute values of a template, or one expression");
  eval->add_option("TEMPLATE", arguments.configurationTemplate, "The template, a property list");
  eval->add_option("KEY", arguments.keys, "The values to compute; all when none is named");
  eval->add_option("--template", arguments.configurationTemplate,
                   "The template, for an --expression that uses its constants, macros and values");
  eval->add_option("--expression", arguments.expression, "Compute this instead of a key's value");
  eval->add_option("--service", arguments.service, "The status service that the expression asks");
  eval->add_option("--device", arguments.device,
                   "A device description or a device URI; without one there is no device");
  eval->add_option("--input", arguments.input, "Input parameters, a property list");
  eval->add_option("--plugin", arguments.plugIns, "A plug-in bundle to load; may be repeated")
      ->allow_extra_args(false);
  const std::map<std::string, ReportFormat> formats{{"text", ReportFormat::Text},
                                                    {"json", ReportFormat::JSON},
                                                    {"plist", ReportFormat::PropertyList}};
  eval->add_option("--format", arguments.format, "text, json or plist")
      ->transform(CLI::CheckedTransformer(formats, CLI::ignore_case).description("FORMAT"));
  eval->add_flag("--strict", arguments.strict, "Exit with status 1 when a value has an error");
}

CLI::App* addCheck(CLI::App& app, CheckArguments& arguments) {
  CLI::App* check =
      app.add_subcommand("check", "Find what is wrong with templates, without a device");
  check->add_option("TEMPLATE", arguments.templates, "The templates, property lists")->required();
  check->add_option("--input", arguments.input,
                    "Input parameters, a property list; without it any name is one");
  check->add_option("--plugin", arguments.plugIns, "A plug-in bundle to load; may be repeated")
      ->allow_extra_args(false);
  check
      ->add_option("--key", arguments.keys,
                   "A value that somebody asks for; may be repeated. Values that none of them "
                   "uses are reported")
      ->allow_extra_args(false);
  const std::map<std::string, CheckFormat> formats{{"text", CheckFormat::Text},
                                                   {"json", CheckFormat::JSON}};
  check->add_option("--format", arguments.format, "text or json")
      ->transform(CLI::CheckedTransformer(formats, CLI::ignore_case).description("FORMAT"));
  return check;
}

int run(int argc, char** argv) {
  CLI::App app(
      "Evaluates and checks templates of the command filter, with a printer or without one.",
      "admtemplate");
  app.require_subcommand(1);
  EvalArguments arguments;
  addEval(app, arguments);
  CheckArguments checkArguments;
  const CLI::App* check = addCheck(app, checkArguments);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kUnusable;
  }
  commandfilter::registerLibraryClasses();
  if (check->parsed()) return runCheck(checkArguments, std::cout, std::cerr);
  return runEval(arguments, std::cout, std::cerr);
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
