#include "device_model/BackendTransport.h"

#include <algorithm>
#include <chrono>

namespace commandfilter {

namespace {

using Clock = std::chrono::steady_clock;

class Deadline {
 public:
  explicit Deadline(double seconds)
      : end_(Clock::now() +
             std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds))) {}
  [[nodiscard]] double secondsLeft() const {
    return std::chrono::duration<double>(end_ - Clock::now()).count();
  }

 private:
  Clock::time_point end_;
};

}  // namespace

std::optional<std::string> BackendTransport::request(BackendCommand command, std::string_view data,
                                                     double timeout) {
  const Deadline deadline(timeout);
  if (!messages_->send(command, data, timeout)) return std::nullopt;
  // Answers to requests that were given up come first; each of them was for another command.
  constexpr int kMostLateAnswers = 64;
  for (int i = 0; i < kMostLateAnswers; ++i) {
    const double left = deadline.secondsLeft();
    if (left <= 0) return std::nullopt;
    std::optional<BackendMessages::Answer> answer = messages_->receive(left);
    if (!answer) return std::nullopt;
    if (answer->command != static_cast<int>(command)) continue;
    if (answer->status != BackendMessages::kOK) return std::nullopt;
    return std::move(answer->data);
  }
  return std::nullopt;
}

std::optional<std::string> BackendTransport::deviceID() {
  if (!deviceID_) {
    deviceID_ = request(BackendCommand::GetDeviceID, {}, kDeviceIDSeconds);
    if (*deviceID_ && (*deviceID_)->empty()) deviceID_->reset();
  }
  return *deviceID_;
}

std::optional<SNMPEntry> BackendTransport::snmpRequest(BackendCommand command,
                                                       const ObjectID& object, double timeout) {
  if (snmpFailed_) return std::nullopt;
  const auto answersIt = [&](const SNMPEntry& entry) {
    return command == BackendCommand::SNMPGet ? entry.identifier == object
                                              : entry.identifier > object;
  };
  // The identifier goes with its final NUL.
  const std::string text = textOfObjectID(object);
  const Deadline deadline(timeout);
  bool hasAnswered = false;
  // A backend sends the agent one packet, and one of the two on the way may be lost; an answer that
  // came too late for the backend is there when it is asked the next time.
  constexpr int kAttempts = 3;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const double left = attempt == 0 ? timeout : deadline.secondsLeft();
    if (left <= 0) break;
    const std::optional<std::string> data =
        request(command, std::string_view(text.c_str(), text.size() + 1), left);
    std::optional<SNMPEntry> entry = data ? parseSNMPAnswer(*data) : std::nullopt;
    if (entry && answersIt(*entry)) {
      hasAgent_ = true;
      return entry;
    }
    hasAnswered = hasAnswered || entry;
    // Behind its last object the agent names the one that was asked for, without a value.
    if (entry && entry->identifier == object && entry->value.empty()) break;
    // A device that has never answered may have no agent, and would let each attempt wait.
    if (!hasAgent_ && !entry) break;
  }
  if (!hasAnswered) snmpFailed_ = true;
  return std::nullopt;
}

std::optional<std::string> BackendTransport::snmpValue(const ObjectID& object) {
  std::optional<SNMPEntry> entry = snmpRequest(BackendCommand::SNMPGet, object, kRequestSeconds);
  // A missing object has an empty value.
  if (!entry || entry->value.empty()) return std::nullopt;
  return std::move(entry->value);
}

std::vector<SNMPEntry> BackendTransport::snmpTable(const ObjectID& root) {
  const Deadline deadline(tableSeconds_);
  std::vector<SNMPEntry> entries;
  std::size_t bytes = 0;
  while (entries.size() < kMostEntries && bytes < kMostBytes) {
    const ObjectID& last = entries.empty() ? root : entries.back().identifier;
    const double left = deadline.secondsLeft();
    if (left <= 0) {
      snmpFailed_ = true;
      break;
    }
    std::optional<SNMPEntry> entry =
        snmpRequest(BackendCommand::SNMPGetNext, last, std::min(left, kRequestSeconds));
    if (!entry || !isBelow(entry->identifier, root)) break;
    bytes += entry->value.size();
    entries.push_back(std::move(*entry));
  }
  return entries;
}

}  // namespace commandfilter
