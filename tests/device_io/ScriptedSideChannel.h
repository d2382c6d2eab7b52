// A side channel that follows a script.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "device_io/SideChannel.h"

namespace commandfilter::testing {

/// One answer.
struct ScriptedAnswer {
  SideChannelStatus status = SideChannelStatus::OK;
  std::string bytes{};
  /// Added to the length that is reported.
  int lie = 0;
};

struct RecordedRequest {
  SideChannelCommand command;
  int room;
  double timeout;
  /// True when the room, and the byte behind it, were zero.
  bool cleared;

  friend bool operator==(const RecordedRequest&, const RecordedRequest&) = default;
};

/// What was asked, and what is answered; outlives the channel. When no answer is left, the backend
/// is silent.
struct SideChannelScript {
  std::vector<ScriptedAnswer> answers;
  std::vector<RecordedRequest> requests;

  /// Room and timeout of each request.
  [[nodiscard]] std::vector<std::pair<int, double>> schedule() const {
    std::vector<std::pair<int, double>> all;
    for (const RecordedRequest& request : requests) all.emplace_back(request.room, request.timeout);
    return all;
  }
};

class ScriptedSideChannel final : public SideChannel {
 public:
  explicit ScriptedSideChannel(SideChannelScript& script) : script_(script) {}

  SideChannelStatus doRequest(SideChannelCommand command, char* buffer, int& length,
                              double timeout) override {
    const std::size_t index = script_.requests.size();
    // Looking at all of a very long buffer would take long.
    const int looked = std::min(length, 1 << 16);
    const bool cleared = std::all_of(buffer, buffer + looked, [](char c) { return c == '\0'; }) &&
                         buffer[length] == '\0';
    script_.requests.push_back({command, length, timeout, cleared});
    if (index >= script_.answers.size()) return SideChannelStatus::Timeout;
    const ScriptedAnswer& answer = script_.answers[index];
    const std::size_t size = std::min(answer.bytes.size(), static_cast<std::size_t>(length));
    std::memcpy(buffer, answer.bytes.data(), size);
    length = static_cast<int>(size) + answer.lie;
    return answer.status;
  }

 private:
  SideChannelScript& script_;
};

}  // namespace commandfilter::testing
