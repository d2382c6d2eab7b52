// Values of a configuration template, by key.
#pragma once

#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Answers questions about the device from one template.
class COMMANDFILTER_EXPORT ICommandFilterTemplateEngine : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The value for the key, nil when there is none or its computation failed. May wait for the
  /// device.
  virtual Value templateValueForKey(const String* key) = 0;
  /// The errors so far: a dictionary from value key to a dictionary with "category" (integer) and
  /// "description" (string); nil when there are none.
  virtual Value errorInfo() = 0;

 protected:
  ~ICommandFilterTemplateEngine() = default;
};

}  // namespace commandfilter
