#include "BackendScript.h"

#include <cups/sidechannel.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <utility>

namespace commandfilter::testing {

namespace {

constexpr std::array<std::string_view, 11> kEvents = {
    "SOFT_RESET",    "DRAIN_OUTPUT",  "GET_BIDI", "GET_DEVICE_ID", "GET_STATE", "SNMP_GET",
    "SNMP_GET_NEXT", "GET_CONNECTED", "START",    "DATA",          "END"};

constexpr std::array<std::pair<std::string_view, cups_sc_status_t>, 8> kStatuses = {{
    {"NONE", CUPS_SC_STATUS_NONE},
    {"OK", CUPS_SC_STATUS_OK},
    {"IO_ERROR", CUPS_SC_STATUS_IO_ERROR},
    {"TIMEOUT", CUPS_SC_STATUS_TIMEOUT},
    {"NO_RESPONSE", CUPS_SC_STATUS_NO_RESPONSE},
    {"BAD_MESSAGE", CUPS_SC_STATUS_BAD_MESSAGE},
    {"TOO_BIG", CUPS_SC_STATUS_TOO_BIG},
    {"NOT_IMPLEMENTED", CUPS_SC_STATUS_NOT_IMPLEMENTED},
}};

/// Takes the next word off the line, and the blanks around it.
std::string_view takeWord(std::string_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  const std::string_view word = line.substr(0, line.find_first_of(" \t"));
  line.remove_prefix(word.size());
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  return word;
}

template <typename Number>
std::optional<Number> numberOf(std::string_view text, int base = 10) {
  Number number{};
  const char* end = text.data() + text.size();
  const auto [stop, error] = [&] {
    if constexpr (std::is_floating_point_v<Number>) {
      return std::from_chars(text.data(), end, number);
    } else {
      return std::from_chars(text.data(), end, number, base);
    }
  }();
  if (error != std::errc{} || stop != end) return std::nullopt;
  return number;
}

std::optional<std::string> unescaped(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      bytes += text[i];
      continue;
    }
    const char kind = ++i < text.size() ? text[i] : '\0';
    if (kind == 'n') {
      bytes += '\n';
    } else if (kind == '\\') {
      bytes += '\\';
    } else if (kind == 'x') {
      const std::optional<unsigned char> byte = numberOf<unsigned char>(text.substr(i + 1, 2), 16);
      if (!byte || text.size() < i + 3) return std::nullopt;
      bytes += static_cast<char>(*byte);
      i += 2;
    } else {
      return std::nullopt;
    }
  }
  return bytes;
}

std::optional<int> statusOf(std::string_view word) {
  for (const auto& [name, status] : kStatuses) {
    if (name == word) return status;
  }
  const std::optional<int> number = numberOf<int>(word);
  if (number && *number >= 0 && *number <= 255) return number;
  return std::nullopt;
}

/// A step from what follows its event; nothing when it is none.
std::optional<BackendScript::Step> stepOf(std::string_view line, bool isRequest) {
  BackendScript::Step step;
  std::optional<std::size_t> size;
  std::string_view word = takeWord(line);
  for (; word.find('=') != std::string_view::npos; word = takeWord(line)) {
    const std::string_view name = word.substr(0, word.find('='));
    const std::string_view value = word.substr(name.size() + 1);
    if (name == "after") {
      const std::optional<double> seconds = numberOf<double>(value);
      if (!seconds || *seconds < 0) return std::nullopt;
      step.after = std::chrono::milliseconds(static_cast<long>(*seconds * 1000));
    } else if (name == "size") {
      size = numberOf<std::size_t>(value);
      if (!size || *size > 65535) return std::nullopt;
    } else {
      return std::nullopt;
    }
  }
  if (word == "exit" || word == "kill") {
    step.action = word == "exit" ? BackendScript::Action::Exit : BackendScript::Action::Kill;
    const std::optional<int> number = numberOf<int>(line);
    if (!number || *number < 0) return std::nullopt;
    step.number = *number;
    return step;
  }
  if (!isRequest) return std::nullopt;
  if (word == "silence") return line.empty() ? std::optional(step) : std::nullopt;
  const std::optional<int> status = statusOf(word);
  std::optional<std::string> text = unescaped(line);
  if (!status || !text) return std::nullopt;
  step.action = BackendScript::Action::Answer;
  step.number = *status;
  step.text = std::move(*text);
  if (size) step.text.resize(*size, 'x');
  return step;
}

}  // namespace

BackendScript::BackendScript(const std::filesystem::path& file) {
  if (!std::filesystem::exists(file)) return;
  std::ifstream stream(file);
  if (!stream) throw std::runtime_error(file.string() + ": cannot be read");
  std::string text;
  for (int number = 1; std::getline(stream, text); ++number) {
    std::string_view line = text;
    const std::string_view event = takeWord(line);
    if (event.empty() || event.front() == '#') continue;
    const auto* known = std::find(kEvents.begin(), kEvents.end(), event.substr(0, event.find(':')));
    const bool isRequest = known < kEvents.end() - 3;
    std::optional<Step> step;
    if (known != kEvents.end()) step = stepOf(line, isRequest);
    if (!step) {
      throw std::runtime_error(file.string() + ":" + std::to_string(number) +
                               ": not a line of a script: " + text);
    }
    events_[std::string(event)].steps.push_back(std::move(*step));
  }
}

const BackendScript::Step* BackendScript::next(std::string_view event, std::string_view data) {
  auto found = events_.end();
  // The data of a request for a name may end with a NUL.
  data = data.substr(0, data.find('\0'));
  if (!data.empty()) found = events_.find(std::string(event) + ":" + std::string(data));
  if (found == events_.end()) found = events_.find(event);
  if (found == events_.end()) return nullptr;
  Steps& steps = found->second;
  const Step& step = steps.steps[steps.used];
  if (steps.used + 1 < steps.steps.size()) ++steps.used;
  return &step;
}

}  // namespace commandfilter::testing
