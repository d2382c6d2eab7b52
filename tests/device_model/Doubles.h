// A backend, a queue and a delegate that follow a script and note what they are asked.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "device_model/BackendMessages.h"
#include "device_model/BackendTransport.h"
#include "device_model/LiveServiceInfo.h"
#include "device_model/QueueFacts.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "runtime/device_model/ADMServiceInfo.h"

namespace commandfilter::testing {

/// What a backend does; shared with the transport that owns the messages.
struct BackendScript {
  using Objects = std::map<std::string, std::string>;

  /// Whether there is a backend at all.
  bool present = true;
  /// Its device ID; none for one that refuses.
  std::optional<std::string> deviceID;
  /// Objects of the agent by identifier with its leading full stop; none for a device without an
  /// agent, which fails every request.
  std::optional<Objects> objects;
  /// Answers that come before that to the next request.
  std::deque<BackendMessages::Answer> late;
  /// The requests that fail, by how many came before them.
  std::set<std::size_t> lost;
  /// True for a backend that never answers.
  bool silent = false;
  /// The requests so far: the command's number and its data up to the NUL.
  std::vector<std::string> requests;
  /// The timeouts of the requests.
  std::vector<double> timeouts;
};

/// The messages of the script.
class ScriptedMessages final : public BackendMessages {
 public:
  explicit ScriptedMessages(BackendScript& script) : script_(script) {}

  bool send(BackendCommand command, std::string_view data, double timeout) override;
  std::optional<Answer> receive(double timeout) override;

 private:
  BackendScript& script_;
  std::optional<Answer> answer_;
};

/// A queue of given facts.
class ScriptedQueue final : public QueueFacts {
 public:
  [[nodiscard]] std::string ppdAttribute(const char* name) override {
    calls.push_back(std::string("PPD ") + name);
    return ppd[name];
  }
  [[nodiscard]] std::vector<InstallableOption> installableOptions() override { return options; }
  [[nodiscard]] const QueueAttributes& attributes() override {
    calls.emplace_back("attributes");
    return ipp;
  }
  [[nodiscard]] URIParts partsOfURI(const std::string& /*uri*/) override { return parts; }

  std::map<std::string, std::string> ppd;
  std::vector<InstallableOption> options;
  QueueAttributes ipp;
  URIParts parts;
  std::vector<std::string> calls;
};

/// A backend and a queue, and devices on them.
struct ScriptedDevice {
  BackendScript backend;
  ScriptedQueue queue;
  BackendTransport transport{std::make_unique<ScriptedMessages>(backend)};

  /// A resolved device without an I/O provider.
  [[nodiscard]] Ref<LiveServiceInfo> resolved(const std::string& uri = "socket://printer",
                                              ADMIOProvider* provider = nullptr);
};

/// Notes how a resolution ends.
class RecordingDelegate final : public Implements<Object, ADMServiceInfoDelegate> {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  void serviceInfoDidResolve(ADMServiceInfo& serviceInfo) override;
  void serviceInfo_didNotResolve(ADMServiceInfo& serviceInfo, const Value& error) override;

  /// "resolved", or the error's description.
  std::vector<std::string> calls;
  /// Called after each of them.
  std::function<void(ADMServiceInfo&)> then;
};

/// The value of a property list, given as what stands inside of <plist>.
[[nodiscard]] Value plist(const std::string& xml);

/// Sends the message.
Value ask(const Value& receiver, std::string_view selector,
          std::initializer_list<Value> arguments = {});

}  // namespace commandfilter::testing
