// What a plug-in's principal class does for the filter.
#pragma once

#include "filter/protocols/ICommandFilterContext.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Carries out one command. Besides conforming, the class has an initialiser row
/// `initWithFilterContext:`, a static function that takes an `ICommandFilterContext*` and returns
/// the new executor, or nil to refuse. One executor is made for each command and destroyed before
/// the next is made.
class COMMANDFILTER_EXPORT ICommandFilterExecutor : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// Carries out the command: the whole line of the command file, arguments included. The
  /// description of the result becomes one line on standard error, "(null)" for nil. An exception
  /// ends this command only.
  virtual Value executeCommand(const String& command) = 0;

 protected:
  ~ICommandFilterExecutor() = default;
};

}  // namespace commandfilter
