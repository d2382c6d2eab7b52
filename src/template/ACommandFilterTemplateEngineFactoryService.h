// The service named "TemplateEngineFactory".
#pragma once

#include <utility>

#include "filter/protocols/ICommandFilterServiceInfoProvider.h"
#include "filter/protocols/ICommandFilterTemplateEngineFactory.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Makes template engines for the device of the job. The context finds it by its name.
class COMMANDFILTER_EXPORT ACommandFilterTemplateEngineFactoryService final
    : public Implements<Object, ICommandFilterTemplateEngineFactory> {
 public:
  static const Class kClass;

  /// True when the device-model framework is there.
  [[nodiscard]] static bool serviceCanBeLoaded();
  /// nil when the service cannot be loaded. Without a provider there is no device.
  [[nodiscard]] static RefPtr<ACommandFilterTemplateEngineFactoryService>
  initWithServiceInfoProvider(ICommandFilterServiceInfoProvider* provider);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// A new engine, which reads the device afresh; nil for a nil template. Asks the provider for the
  /// device, which may wait for it.
  RefPtr<ICommandFilterTemplateEngine> templateEngineForTemplate_inputParameters(
      const Dictionary* configurationTemplate, const Dictionary* inputParameters) override;
  /// An engine for the dictionary under "CommandFilterTemplate" in the table; nil when a name is
  /// nil, the table cannot be registered, or it has no such dictionary for the device.
  RefPtr<ICommandFilterTemplateEngine>
  templateEngineForDatabaseName_databaseLocation_inputParameters(
      const String* databaseName, const String* databaseLocation,
      const Dictionary* inputParameters) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ACommandFilterTemplateEngineFactoryService(
      RefPtr<ICommandFilterServiceInfoProvider> provider)
      : serviceInfoProvider_(std::move(provider)) {}
  ~ACommandFilterTemplateEngineFactoryService() override = default;

  [[nodiscard]] Value serviceInfo() const;

  RefPtr<ICommandFilterServiceInfoProvider> serviceInfoProvider_;
};

}  // namespace commandfilter
