#include "repl/ReplCommand.h"

#include <unistd.h>

#include <memory>
#include <ostream>
#include <utility>

#include "repl/EditLibrary.h"
#include "repl/HistoryFile.h"
#include "repl/Prompt.h"
#include "repl/StreamReader.h"
#include "repl/TerminalReader.h"

namespace commandfilter::tools {

namespace {

std::unique_ptr<LineReader> readerFor(const Prompt& prompt, std::istream& input,
                                      std::ostream& messages) {
  if (isatty(STDIN_FILENO) == 0) return std::make_unique<StreamReader>(input);
  const auto library = EditLibrary::load();
  if (!library) {
    messages << "admtemplate: without history and completion; the package libedit2 has them\n";
    return std::make_unique<StreamReader>(input);
  }
  return std::make_unique<TerminalReader>(
      *library, historyFile(),
      [&prompt](std::string_view text) { return prompt.completionsOf(text); });
}

}  // namespace

int runRepl(const ReplArguments& arguments, std::istream& input, std::ostream& output,
            std::ostream& messages) {
  Prompt prompt(arguments.setting, arguments.service.value_or(""), output);
  prompt.noteComplaints(messages);
  const std::unique_ptr<LineReader> reader = readerFor(prompt, input, messages);
  while (const auto line = reader->nextLine()) {
    const bool goesOn = prompt.perform(*line);
    output.flush();
    if (!goesOn) break;
  }
  return arguments.strict && prompt.hasFailed() ? 1 : 0;
}

}  // namespace commandfilter::tools
