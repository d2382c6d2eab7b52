// Procedures that plug-ins add to expressions.
#pragma once

#include "evaluation/protocol/ADMEvaluationContext.h"
#include "runtime/Array.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Value.h"

namespace commandfilter {

/// What `_External("Name", argument, ...)` calls: an instance of the class named "AName" +
/// "ExternalProcedure", made with the class's initialiser "init" for the one call. A class that
/// does not conform serves too, when it has methods named `wantsEvaluateArguments` and
/// `execute:context:`.
class COMMANDFILTER_EXPORT ADMExternalProcedure : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// YES to get the arguments as items that are not evaluated yet, and to evaluate those that are
  /// needed against the context with `evaluateItem`; NO to get their values. Asked once a call, and
  /// not for a call without arguments.
  virtual bool wantsEvaluateArguments() = 0;
  /// The result of the call, which may be nil. `arguments` is nil for a call without any; an
  /// argument without a value is the null object. The context, never nil, is the one that the
  /// expression is evaluated against; an error is left there with `setRuntimeError`.
  virtual Value execute_context(const Array* arguments, ADMEvaluationContext* context) = 0;

 protected:
  ~ADMExternalProcedure() = default;
};

}  // namespace commandfilter
