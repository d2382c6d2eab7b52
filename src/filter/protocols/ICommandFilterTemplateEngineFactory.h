// Template engines for executors.
#pragma once

#include "filter/protocols/ICommandFilterService.h"
#include "filter/protocols/ICommandFilterTemplateEngine.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// Makes template engines; the service named "TemplateEngineFactory".
class COMMANDFILTER_EXPORT ICommandFilterTemplateEngineFactory : public ICommandFilterService {
 public:
  static const Protocol kProtocol;

  /// An engine for a template that the executor brings; nil for a nil template. The input
  /// parameters may be nil.
  virtual RefPtr<ICommandFilterTemplateEngine> templateEngineForTemplate_inputParameters(
      const Dictionary* configurationTemplate, const Dictionary* inputParameters) = 0;
  /// An engine for the template that the model database holds for the device; nil when a name is
  /// nil or there is no such template.
  virtual RefPtr<ICommandFilterTemplateEngine>
  templateEngineForDatabaseName_databaseLocation_inputParameters(
      const String* databaseName, const String* databaseLocation,
      const Dictionary* inputParameters) = 0;

 protected:
  ~ICommandFilterTemplateEngineFactory() = default;
};

}  // namespace commandfilter
