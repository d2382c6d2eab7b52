// What every service of a device answers.
#pragma once

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The base of the status protocols. Each method has an answer, nil or NO, for what a service has
/// no source for; a service overrides what it knows. Answers may wait for the device.
///
/// The status protocols are reached by sending messages by name. A class that conforms to one
/// therefore lists `kMethods` of it and of all that it refines under its groups, and a conformance
/// row for each.
class COMMANDFILTER_EXPORT ADMInterface : public ProtocolBase {
 public:
  static const Protocol kProtocol;
  /// The rows of the messages below.
  static const MethodGroup kMethods;

  /// The service info that the service was made for.
  virtual Value serviceInfo() { return {}; }
  /// Sets what the service is to go by, a dictionary or nil.
  virtual void setParameters(const Value& /*parameters*/) {}
  /// What was set last; nil at first.
  virtual Value parameters() { return {}; }
  /// YES when the device answers. May wait for it.
  virtual bool isAvailable() { return false; }
  /// Why the last answer was nil, as an object whose description is one sentence; nil when nothing
  /// went wrong.
  virtual Value lastError() { return {}; }

 protected:
  ~ADMInterface() = default;
};

}  // namespace commandfilter
