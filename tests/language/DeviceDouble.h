// A device whose answers are given by a case file.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "language/CallLog.h"
#include "language/CaseNotation.h"
#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Invocation.h"
#include "runtime/MethodSignature.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/Selector.h"
#include "runtime/String.h"
#include "template/status/ADMFeaturePathSource.h"

namespace commandfilter::testing {

/// What a device answers. A message with one argument has a dictionary from the argument's text to
/// the answer; any other message answers its value. A feature path that is not listed is nil. Paths
/// can also be asked for with `valueForFeature:` and the messages with a property and an identifier
/// more, as proxies do.
struct DeviceFacts {
  std::string name;
  std::map<std::string, Notation> messages;
  std::vector<std::pair<Notation, Notation>> features;
};

/// A status service that answers the messages and feature paths of the facts, and notes what it is
/// asked. Its class has no methods: whether it answers a message is found out by asking it.
class DeviceDouble final : public Implements<Object, ADMFeaturePathSource> {
 public:
  static const Class kClass;

  /// Facts and log must outlive the device.
  [[nodiscard]] static Ref<DeviceDouble> create(const DeviceFacts& facts, CallLog& log) {
    return make<DeviceDouble>(facts, log);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const std::string& name() const noexcept { return facts_.name; }

  [[nodiscard]] bool respondsToSelector(const Selector& selector) const override;
  [[nodiscard]] MethodSignature methodSignatureForSelector(const Selector& selector) const override;
  void forwardInvocation(Invocation& invocation) override;
  Value valueForFeaturePathComponents_errorInfo(const Array& components,
                                                RefPtr<String>& errorInfo) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  DeviceDouble(const DeviceFacts& facts, CallLog& log) : facts_(facts), log_(log) {}
  ~DeviceDouble() override = default;

  const DeviceFacts& facts_;
  CallLog& log_;
};

}  // namespace commandfilter::testing
