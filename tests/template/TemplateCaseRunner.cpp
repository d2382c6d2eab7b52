#include "template/TemplateCaseRunner.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "expression/CodeUnits.h"
#include "language/CallLog.h"
#include "language/CaseText.h"
#include "runtime/Array.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Dictionary.h"
#include "runtime/Exception.h"
#include "template/ADMTemplateProcessor.h"
#include "template/LibraryClasses.h"
#include "template/ServiceCreatorDouble.h"

namespace commandfilter::testing {

namespace {

using Kind = TemplateStep::Kind;

RefPtr<Dictionary> dictionaryOf(const TemplateCase::Names& names) {
  if (names.empty()) return nullptr;
  DictionaryBuilder builder;
  for (const auto& [name, value] : names) builder.set(name, value.value());
  return builder.build();
}

Ref<Dictionary> templateOf(const TemplateCase& tested) {
  DictionaryBuilder sections;
  const auto add = [&sections](std::string_view name, const TemplateCase::Names& names) {
    if (RefPtr<Dictionary> section = dictionaryOf(names)) sections.set(name, std::move(section));
  };
  add("TemplateValues", tested.values);
  add("TemplateConstants", tested.constants);
  add("TemplateMacroses", tested.macros);
  for (const auto& [name, value] : tested.sections) sections.set(name, value.value());
  return sections.build();
}

const TemplateError* errorOf(const std::vector<TemplateError>& errors, std::string_view key) {
  const auto found = std::ranges::find_if(
      errors, [key](const TemplateError& error) { return error.key->view() == key; });
  return found != errors.end() ? &*found : nullptr;
}

std::string descriptionOf(const TemplateError* error) {
  if (error == nullptr) return "none";
  return "Error " + std::to_string(error->category()) + ": " +
         (error->error ? error->error->errorDescription()->text()
                       : std::string(TemplateError::kNoProcessorDescription));
}

// The part of the expression that an error points at.
std::string placeOf(const TemplateError* error) {
  if (error == nullptr || !error->error || !error->error->sourceRange() ||
      !error->error->expression()) {
    return "unknown";
  }
  const CodeUnits units(error->error->expression()->view());
  const auto [begin, end] = *error->error->sourceRange();
  return begin >= units.length() ? "end" : units.substring(begin, end);
}

class Run {
 public:
  explicit Run(const TemplateCase& tested) : tested_(tested) {
    for (const auto& [name, facts] : *tested.devices) {
      creator_->services.emplace(name, DeviceDouble::create(facts, log_));
    }
    creator_->available = tested.servicesAvailable;
    processor_ = ADMTemplateProcessor::initWithServiceCreator_configurationTemplate_inputParameters(
        creator_.get(), templateOf(tested).get(), dictionaryOf(tested.input).get());
  }

  std::vector<TemplateDifference> differences() {
    for (const TemplateStep& step : tested_.steps) {
      line_ = step.line;
      log_.clear();
      carryOut(step);
      if (step.calls) compare("calls", *step.calls, lineOf(log_));
    }
    return std::move(differences_);
  }

 private:
  void carryOut(const TemplateStep& step) {
    if (step.kind == Kind::Session || step.kind == Kind::SessionWithServices) {
      processor_->startNewSession(step.kind == Kind::SessionWithServices);
      return;
    }
    checkValue(step);
    if (step.kind != Kind::Ask) return;
    const std::vector<TemplateError> errors = processor_->errors();
    const TemplateError* error = errorOf(errors, step.key);
    compare("error", step.error.value_or("none"), descriptionOf(error));
    if (step.where) compare("place of the error", *step.where, placeOf(error));
  }

  [[nodiscard]] Value valueOf(const TemplateStep& step) {
    switch (step.kind) {
      case Kind::Errors:
        return processor_->errorInfo();
      case Kind::All:
        return processor_->entireInfo();
      case Kind::ConstantErrors: {
        ValueVector names;
        for (const TemplateError& error : processor_->constantErrors())
          names.emplace_back(error.key);
        return Array::create(std::move(names));
      }
      default:
        return processor_->valueForKey(String::create(step.key).get());
    }
  }

  void checkValue(const TemplateStep& step) {
    std::string got;
    bool matches = false;
    try {
      const Value value = valueOf(step);
      matches = step.value.matches(value);
      got = notationOf(value);
    } catch (const Exception& exception) {
      matches = step.value.kind == Notation::Kind::Raises &&
                withoutEscapes(step.value.text) == exception.reason();
      got = "raises " + inQuotes(exception.reason());
    }
    if (!matches) complain("value expected " + step.value.print() + "\n      got " + got);
  }

  void compare(std::string_view what, std::string_view expected, std::string_view got) {
    if (expected == got) return;
    complain(std::string(what) + " expected " + shortened(expected) + "\n      got " +
             shortened(got));
  }
  void complain(std::string what) { differences_.push_back({line_, std::move(what)}); }

  const TemplateCase& tested_;
  // Descriptions may name contexts.
  ClassRegistry::Registration classes_ = ClassRegistry::shared().add(templateClasses());
  CallLog log_;
  Ref<ServiceCreatorDouble> creator_ = ServiceCreatorDouble::create();
  RefPtr<ADMTemplateProcessor> processor_;
  std::size_t line_ = 0;
  std::vector<TemplateDifference> differences_;
};

}  // namespace

std::vector<TemplateDifference> differencesOf(const TemplateCase& tested) {
  if (!tested.problem.empty()) return {{tested.line, "cannot be read:\n" + tested.problem}};
  return Run(tested).differences();
}

}  // namespace commandfilter::testing
