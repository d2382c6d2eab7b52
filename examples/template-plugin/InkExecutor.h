// Carries out the commands "Ink" and "Order": what they ask the printer stands in templates.
#pragma once

#include <filter/protocols/ICommandFilterExecutor.h>
#include <filter/protocols/ICommandFilterTemplateEngineFactory.h>
#include <runtime/Class.h>

#include <string>
#include <utility>

using namespace commandfilter;

class InkExecutor final : public Implements<Object, ICommandFilterExecutor> {
 public:
  static const Class kClass;

  // The filter makes one executor for each command; nullptr would refuse the command.
  static RefPtr<InkExecutor> initWithFilterContext(ICommandFilterContext* context) {
    if (context == nullptr) return nullptr;
    return make<InkExecutor>(Ref<ICommandFilterContext>(*context));
  }

  explicit InkExecutor(Ref<ICommandFilterContext> context) : context_(std::move(context)) {}

  const Class& classInfo() const noexcept override { return kClass; }

  // The text of the result becomes one line of the job's log.
  Value executeCommand(const String& command) override;

 private:
  RefPtr<ICommandFilterTemplateEngine> templateEngine(const std::string& file);
  void reportErrors(ICommandFilterTemplateEngine& engine);

  Ref<ICommandFilterContext> context_;
};
