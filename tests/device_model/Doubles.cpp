#include "Doubles.h"

#include <array>

#include "runtime/Description.h"
#include "runtime/PropertyList.h"
#include "runtime/Send.h"

namespace commandfilter::testing {

namespace {

constexpr auto kProtocols = conformances<RecordingDelegate, ADMServiceInfoDelegate>();
constexpr int kIOError = 2;

}  // namespace

constinit const Class RecordingDelegate::kClass{
    .name = "RecordingDelegate", .base = &Object::kClass, .protocols = kProtocols};

bool ScriptedMessages::send(BackendCommand command, std::string_view data, double timeout) {
  const std::string object(data.substr(0, data.find('\0')));
  script_.requests.push_back(std::to_string(static_cast<int>(command)) +
                             (object.empty() ? "" : " " + object));
  script_.timeouts.push_back(timeout);
  answer_.reset();
  if (!script_.present) return false;
  if (script_.silent) return true;
  const int number = static_cast<int>(command);
  answer_ = Answer{number, kIOError, {}};
  if (command == BackendCommand::GetDeviceID) {
    if (script_.deviceID) answer_ = Answer{number, kOK, *script_.deviceID};
    return true;
  }
  if (!script_.objects || script_.lost.contains(script_.requests.size() - 1)) return true;
  std::string name = object;
  std::string value;
  if (command == BackendCommand::SNMPGet) {
    const auto found = script_.objects->find(object);
    if (found != script_.objects->end()) value = found->second;
  } else {
    const ObjectID asked = *parseObjectID(object);
    std::optional<ObjectID> next;
    for (const auto& [each, content] : *script_.objects) {
      const ObjectID identifier = *parseObjectID(each);
      if (identifier > asked && (!next || identifier < *next)) {
        next = identifier;
        name = each;
        value = content;
      }
    }
  }
  answer_ = Answer{number, kOK, name + '\0' + value};
  return true;
}

std::optional<BackendMessages::Answer> ScriptedMessages::receive(double /*timeout*/) {
  if (!script_.late.empty()) {
    Answer late = std::move(script_.late.front());
    script_.late.pop_front();
    return late;
  }
  return std::exchange(answer_, std::nullopt);
}

Ref<LiveServiceInfo> ScriptedDevice::resolved(const std::string& uri, ADMIOProvider* provider) {
  const Ref<String> text = String::create(uri);
  Ref<LiveServiceInfo> info = LiveServiceInfo::create(*text, provider, {transport, queue});
  info->resolveWithTimeout(1);
  return info;
}

void RecordingDelegate::serviceInfoDidResolve(ADMServiceInfo& serviceInfo) {
  calls.emplace_back("resolved");
  if (then) then(serviceInfo);
}

void RecordingDelegate::serviceInfo_didNotResolve(ADMServiceInfo& serviceInfo, const Value& error) {
  calls.push_back(descriptionOf(error));
  if (then) then(serviceInfo);
}

Value plist(const std::string& xml) {
  Result<Value> list = parsePropertyList("<plist version=\"1.0\">" + xml + "</plist>");
  return list ? *list : Value();
}

Value ask(const Value& receiver, std::string_view selector,
          std::initializer_list<Value> arguments) {
  return send(receiver, Selector(selector), arguments);
}

}  // namespace commandfilter::testing
