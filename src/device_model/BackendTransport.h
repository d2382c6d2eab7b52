// Asking the device through the backend.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "device_model/BackendMessages.h"
#include "device_model/SNMPAnswer.h"

namespace commandfilter {

/// The questions that the backend beside this process can be asked. A device ID is asked for once
/// in the life of the process. An SNMP request that fails, or a table that takes too long, ends all
/// of them: a device without an agent would let each of them wait. Of a device that has answered
/// one before, a request fails with its third attempt.
class BackendTransport {
 public:
  /// How long a backend may take for the device ID: one that asks a device by SNMP needs five
  /// seconds when it does not answer.
  static constexpr double kDeviceIDSeconds = 20;
  /// How long it may take for one SNMP request, and for a whole table.
  static constexpr double kRequestSeconds = 10;
  static constexpr double kTableSeconds = 20;
  /// How many entries a table may have, and how many bytes their values; an agent may lie without
  /// end.
  static constexpr std::size_t kMostEntries = 4096;
  static constexpr std::size_t kMostBytes = std::size_t{1} << 20U;

  /// `tableSeconds` is for tests.
  explicit BackendTransport(std::unique_ptr<BackendMessages> messages,
                            double tableSeconds = kTableSeconds)
      : messages_(std::move(messages)), tableSeconds_(tableSeconds) {}

  /// Forgets what the backend has answered, and that it has failed: another one may be there now.
  void forgetAnswers() noexcept {
    deviceID_.reset();
    snmpFailed_ = false;
    hasAgent_ = false;
  }

  /// The device ID as the device sent it; none when there is none.
  [[nodiscard]] std::optional<std::string> deviceID();
  /// The value of an object of the device's agent; none when it has none.
  [[nodiscard]] std::optional<std::string> snmpValue(const ObjectID& object);
  /// All objects below the root, in their order; empty when there is none.
  [[nodiscard]] std::vector<SNMPEntry> snmpTable(const ObjectID& root);

 private:
  /// The data of the answer to this request, which alone is taken for it; none when it fails.
  [[nodiscard]] std::optional<std::string> request(BackendCommand command, std::string_view data,
                                                   double timeout);
  /// The object, or the next one; none when it fails or the agent, at its end or in a circle, does
  /// not go on.
  [[nodiscard]] std::optional<SNMPEntry> snmpRequest(BackendCommand command, const ObjectID& object,
                                                     double timeout);

  std::unique_ptr<BackendMessages> messages_;
  double tableSeconds_;
  std::optional<std::optional<std::string>> deviceID_;
  bool snmpFailed_ = false;
  /// An SNMP request has been answered.
  bool hasAgent_ = false;
};

}  // namespace commandfilter
