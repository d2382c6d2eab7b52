#include "Actions.h"

#include <algorithm>
#include <ostream>

#include "CommandLines.h"
#include "PlugIns.h"
#include "QueuePPD.h"
#include "Scheduler.h"
#include "StatusReport.h"
#include "ToolError.h"

namespace commandfilter::tools {

namespace {

Installation installationOf(const Arguments& arguments) {
  return inspectInstallation(
      arguments.application ? *arguments.application : installedApplication(),
      filterUser(arguments.filterUser));
}

std::string joined(const std::vector<std::string>& words, const char* otherwise) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : " ").append(word);
  return text.empty() ? otherwise : text;
}

// The words by which clients know what the plug-ins carry out.
std::vector<std::string> offeredWords(const Installation& installation) {
  std::vector<std::string> words;
  for (const PlugIn& plugIn : installation.plugIns) {
    for (const std::string& line : plugIn.commands) words.push_back(listedWord(line));
  }
  return unitedWords({}, words);
}

void setPPD(Scheduler& scheduler, const QueueFacts& queue, const std::string& ppd) {
  const std::string fault = ppdFault(ppd);
  if (!fault.empty()) {
    throw ToolError(ExitStatus::Refused, queue.name + ": its PPD would not be readable any more (" +
                                             fault + "); it is left as it is");
  }
  scheduler.setPPD(queue.name, ppd);
}

// What the scheduler finds wrong with the filter only shows in the queue's state.
void noteFilterTrouble(const QueueFacts& queue, const std::string& application,
                       std::ostream& messages) {
  for (const std::string& reason : queue.stateReasons) {
    if (!reason.starts_with("cups-missing-filter") && !reason.starts_with("cups-insecure-filter")) {
      continue;
    }
    messages << "commandfilter-queue: " << queue.name << ": the scheduler reports " << reason
             << "; its filter folder (ServerBin in cups-files.conf, mostly /usr/lib/cups) must "
                "hold filter/commandfilter, a link to "
             << application << "/Contents/Linux/commandfilter, and only root may write to either\n";
  }
}

void attachOne(Scheduler& scheduler, const std::string& name, const Installation& installation,
               std::ostream& report, std::ostream& messages) {
  const QueueFacts queue = scheduler.queue(name);
  const std::string before = changeablePPD(scheduler, queue);
  const std::string after = attachCommands(before, offeredWords(installation));
  const CommandLines then = commandLinesOf(PPDText(before));
  const CommandLines now = commandLinesOf(PPDText(after));
  if (after == before) {
    report << name << ": attached already, nothing is changed\n";
  } else {
    setPPD(scheduler, queue, after);
    report << name
           << (then.isAttached ? ": attached already, its commands are brought up to date\n"
                               : ": attached\n");
    if (!then.isAttached) {
      report << "  commands went to: " << joined(then.filters, "nobody") << "\n";
    }
    report << "  commands go to:   " << joined(now.filters, "nobody") << "\n"
           << "  commands listed:  " << joined(now.commands, "none") << "\n";
  }
  noteFilterTrouble(scheduler.queue(name), installation.application, messages);
}

void detachOne(Scheduler& scheduler, const std::string& name, std::ostream& report) {
  const QueueFacts queue = scheduler.queue(name);
  const std::string before = changeablePPD(scheduler, queue);
  const CommandLines then = commandLinesOf(PPDText(before));
  const std::string after = detachCommands(before);
  if (after == before) {
    report << name << ": not attached, nothing is changed\n";
    return;
  }
  setPPD(scheduler, queue, after);
  const CommandLines now = commandLinesOf(PPDText(after));
  report << name << ": detached\n"
         << "  commands go to:   " << joined(now.filters, "nobody") << "\n"
         << "  commands listed:  " << joined(now.commands, "none") << "\n";
  if (then.isAttached && !then.isMarked) {
    report << "  the line was not written by this program; the list of commands stays\n";
  }
}

bool isAttached(Scheduler& scheduler, const std::string& queue) {
  const std::optional<std::string> ppd = scheduler.ppd(queue);
  if (!ppd) return false;
  const CommandLines lines = commandLinesOf(PPDText(*ppd));
  return lines.isAttached || lines.isMarked;
}

// Does it with each queue; what is wrong with one is told and does not end the rest.
template <typename Action>
ExitStatus forEach(const std::vector<std::string>& queues, std::ostream& messages,
                   const Action& action) {
  ExitStatus status = ExitStatus::Done;
  for (const std::string& queue : queues) {
    try {
      action(queue);
    } catch (const ToolError& error) {
      messages << "commandfilter-queue: " << error.what() << '\n';
      if (status == ExitStatus::Done) status = error.status();
    }
  }
  return status;
}

QueueStatus statusOf(Scheduler& scheduler, const std::string& name,
                     const Installation& installation) {
  QueueStatus result;
  result.facts = scheduler.queue(name);
  result.backend = backendOf(result.facts.deviceURI);
  try {
    result.lines = commandLinesOf(PPDText(changeablePPD(scheduler, result.facts)));
  } catch (const ToolError& error) {
    if (error.status() != ExitStatus::Refused) throw;
    result.refusal = error.what();
  }
  for (const std::string& word : result.lines.commands) {
    const PlugIn* plugIn = plugInFor(installation, word);
    result.commands.push_back({word, plugIn != nullptr ? plugIn->path : std::string()});
  }
  return result;
}

}  // namespace

ExitStatus attach(const Arguments& arguments, std::ostream& report, std::ostream& messages) {
  const Installation installation = installationOf(arguments);
  Scheduler scheduler(arguments.server, arguments.user);
  if (offeredWords(installation).empty()) {
    messages << "commandfilter-queue: the filter finds no plug-in, so it will carry nothing out; "
                "commandfilter-queue status says why\n";
  }
  return forEach(arguments.queues, messages, [&](const std::string& queue) {
    attachOne(scheduler, queue, installation, report, messages);
  });
}

ExitStatus detach(const Arguments& arguments, std::ostream& report, std::ostream& messages) {
  Scheduler scheduler(arguments.server, arguments.user);
  std::vector<std::string> queues = arguments.queues;
  if (arguments.all) {
    queues = scheduler.queues();
    std::erase_if(queues, [&scheduler](const auto& name) { return !isAttached(scheduler, name); });
  }
  return forEach(queues, messages,
                 [&](const std::string& queue) { detachOne(scheduler, queue, report); });
}

void status(const Arguments& arguments, std::ostream& report) {
  StatusReport result;
  result.installation = installationOf(arguments);
  Scheduler scheduler(arguments.server, arguments.user);
  const std::vector<std::string> queues =
      arguments.queues.empty() ? scheduler.queues() : arguments.queues;
  for (const std::string& queue : queues) {
    result.queues.push_back(statusOf(scheduler, queue, result.installation));
  }
  report << (arguments.json ? jsonReport(result) : plainReport(result));
}

}  // namespace commandfilter::tools
