#include "StatusReport.h"

#include <pwd.h>

#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace commandfilter::tools {

namespace {

using JSON = nlohmann::ordered_json;

JSON faultJSON(const Distrust& distrust) {
  JSON fault{{"path", distrust.path}};
  if (distrust.reason != Distrust::Reason::Unknown) {
    const passwd* owner = getpwuid(distrust.owner);
    std::array<char, 8> mode{};
    std::snprintf(mode.data(), mode.size(), "%04o", static_cast<unsigned>(distrust.mode));
    fault["owner"] = owner != nullptr ? owner->pw_name : std::to_string(distrust.owner);
    fault["mode"] = mode.data();
  }
  fault["explanation"] = distrust.description();
  return fault;
}

JSON plugInJSON(const PlugIn& plugIn) {
  JSON result{{"path", plugIn.path}, {"loaded", plugIn.refusal.empty()}};
  if (plugIn.refusal.empty()) {
    result["commands"] = plugIn.commands;
  } else {
    result["refusal"] = plugIn.refusal;
  }
  if (plugIn.distrust) result["fault"] = faultJSON(*plugIn.distrust);
  return result;
}

JSON queueJSON(const QueueStatus& queue) {
  JSON commands = JSON::array();
  for (const ListedCommand& command : queue.commands) {
    JSON entry{{"name", command.word}};
    entry["plugIn"] = command.plugIn.empty() ? JSON() : JSON(command.plugIn);
    commands.push_back(std::move(entry));
  }
  JSON result{{"name", queue.facts.name}, {"attached", queue.lines.isAttached}};
  if (queue.refusal.empty()) {
    result["writtenByThisProgram"] = queue.lines.isMarked;
    result["handledBy"] = queue.lines.filters;
    result["commands"] = std::move(commands);
  } else {
    result["refusal"] = queue.refusal;
  }
  result["device"] = {{"uri", queue.facts.deviceURI},
                      {"backend", queue.backend.scheme},
                      {"canBeAsked", nameOf(queue.backend.askable)},
                      {"explanation", queue.backend.explanation}};
  result["stateReasons"] = queue.facts.stateReasons;
  return result;
}

std::string joined(const std::vector<std::string>& words, std::string_view separator) {
  std::string text;
  for (const std::string& word : words) {
    if (!text.empty()) text.append(separator);
    text.append(word);
  }
  return text;
}

void appendQueue(std::string& text, const QueueStatus& queue) {
  text.append(queue.facts.name).append(": ");
  if (!queue.refusal.empty()) {
    text.append("not attached, and cannot be\n  ")
        .append(queue.refusal.substr(queue.facts.name.size() + 2));
  } else {
    text.append(queue.lines.isAttached ? "attached" : "not attached");
    if (queue.lines.isAttached && !queue.lines.isMarked) text.append(" (by a line of its PPD)");
    text.append("\n  commands go to:   ");
    text.append(queue.lines.filters.empty() ? "nobody; the scheduler refuses them"
                                            : joined(queue.lines.filters, " "));
    if (queue.lines.isImplied) text.append(" (as for every PostScript printer)");
  }
  if (queue.lines.isAttached) {
    for (const ListedCommand& command : queue.commands) {
      text.append("\n  ").append(command.word).append(": ");
      text.append(command.plugIn.empty() ? "no plug-in carries it out" : command.plugIn);
    }
  }
  text.append("\n  device:           ").append(queue.facts.deviceURI);
  text.append("\n  can be asked:     ").append(nameOf(queue.backend.askable));
  text.append("; ").append(queue.backend.explanation).append("\n");
  for (const std::string& reason : queue.facts.stateReasons) {
    if (reason.starts_with("cups-")) text.append("  the scheduler says: ").append(reason) += '\n';
  }
}

void appendPlugIn(std::string& text, const PlugIn& plugIn) {
  text.append("  ").append(plugIn.path).append("\n    ");
  if (!plugIn.refusal.empty()) {
    text.append("passed over: ").append(plugIn.refusal);
  } else {
    text.append(plugIn.commands.empty() ? "carries out nothing" : joined(plugIn.commands, ", "));
  }
  text.append("\n");
}

}  // namespace

std::string plainReport(const StatusReport& report) {
  std::string text;
  for (const QueueStatus& queue : report.queues) appendQueue(text, queue);
  if (report.queues.empty()) text.append("There are no queues.\n");
  const Installation& installation = report.installation;
  text.append("\nPlug-ins, in the order in which they are searched:\n");
  for (const PlugIn& plugIn : installation.plugIns) appendPlugIn(text, plugIn);
  if (installation.plugIns.empty()) text.append("  none\n");
  text.append("Searched folders:\n");
  if (installation.distrust) {
    text.append("  the list of folders is passed over: ")
        .append(installation.distrust->description())
        .append("\n");
  }
  for (const PlugInFolder& folder : installation.folders) {
    text.append("  ").append(folder.path);
    if (!folder.exists) text.append(" (is not there)");
    if (folder.distrust) text.append("\n    passed over: ").append(folder.distrust->description());
    text.append("\n");
  }
  text.append("Device model: ");
  if (!installation.deviceModel) {
    text.append("not installed; no device is asked, and nothing is sent to it\n");
  } else {
    text.append(installation.deviceModel->path).append("\n");
    if (!installation.deviceModel->refusal.empty()) {
      text.append("    passed over: ").append(installation.deviceModel->refusal).append("\n");
    }
  }
  return text;
}

std::string jsonReport(const StatusReport& report) {
  JSON folders = JSON::array();
  for (const PlugInFolder& folder : report.installation.folders) {
    JSON entry{{"path", folder.path}, {"exists", folder.exists}};
    if (folder.distrust) entry["fault"] = faultJSON(*folder.distrust);
    folders.push_back(std::move(entry));
  }
  JSON plugIns = JSON::array();
  for (const PlugIn& plugIn : report.installation.plugIns) plugIns.push_back(plugInJSON(plugIn));
  JSON queues = JSON::array();
  for (const QueueStatus& queue : report.queues) queues.push_back(queueJSON(queue));
  JSON result{{"application", report.installation.application}};
  if (report.installation.distrust) result["fault"] = faultJSON(*report.installation.distrust);
  result["folders"] = std::move(folders);
  result["plugIns"] = std::move(plugIns);
  result["deviceModel"] =
      report.installation.deviceModel ? plugInJSON(*report.installation.deviceModel) : JSON();
  result["queues"] = std::move(queues);
  return result.dump(2, ' ', false, JSON::error_handler_t::replace) + "\n";
}

}  // namespace commandfilter::tools
