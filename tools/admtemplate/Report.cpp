#include "Report.h"

#include <string_view>

#include "PropertyListText.h"
#include "SourceExcerpt.h"
#include "ValueJSON.h"
#include "runtime/Description.h"
#include "runtime/Number.h"

namespace commandfilter::tools {

namespace {

std::string_view descriptionOf(const TemplateError& error) {
  static const Ref<String> none =
      String::create(std::string(TemplateError::kNoProcessorDescription));
  return error.error ? error.error->errorDescription()->view() : none->view();
}

Ref<Dictionary> recordOf(const TemplateError& error) {
  DictionaryBuilder record;
  record.set("category", Number::integer(error.category()));
  record.set("description", String::create(std::string(descriptionOf(error))));
  return record.build();
}

// The object that JSON and property lists show.
Ref<Dictionary> reportOf(const Outcome& outcome, bool isSingle) {
  DictionaryBuilder report;
  if (isSingle) {
    for (const Answer& answer : outcome.answers) {
      if (!answer.value.isNil()) report.set("value", answer.value);
    }
    for (const TemplateError& error : outcome.errors) report.set("error", recordOf(error));
    return report.build();
  }
  DictionaryBuilder values;
  for (const Answer& answer : outcome.answers) {
    if (!answer.value.isNil()) values.set(Value(answer.key), answer.value);
  }
  DictionaryBuilder errors;
  for (const TemplateError& error : outcome.errors) errors.set(Value(error.key), recordOf(error));
  report.set("values", values.build());
  report.set("errors", errors.build());
  return report.build();
}

void appendError(std::string& text, const TemplateError& error, std::string_view what) {
  text.append(what);
  if (!error.key->isEmpty()) text.append(error.key->view()).append(": ");
  text.append("Error ").append(std::to_string(error.category())).append(": ");
  text.append(descriptionOf(error)).append("\n");
  if (!error.error || !error.error->expression()) return;
  const std::string_view expression = error.error->expression()->view();
  if (expression.empty()) {
    text.append("    (the expression is empty)\n");
    return;
  }
  const SourceRange nowhere{expression.size(), expression.size()};
  text.append(sourceExcerpt(expression, error.error->sourceRange().value_or(nowhere), "    "));
}

}  // namespace

std::string plainReport(const Outcome& outcome) {
  std::string text;
  for (const Answer& answer : outcome.answers) {
    if (answer.key) text.append(answer.key->view()).append(" = ");
    text.append(answer.value.isNil() ? "nil" : commandfilter::descriptionOf(answer.value));
    text.append("\n");
  }
  for (const Answer& answer : outcome.answers) {
    if (answer.exception.empty()) continue;
    if (answer.key) text.append(answer.key->view()).append(": ");
    text.append("broken off: ").append(answer.exception).append("\n");
  }
  for (const TemplateError& error : outcome.errors) appendError(text, error, "");
  for (const TemplateError& error : outcome.constantErrors) appendError(text, error, "constant ");
  return text;
}

std::string jsonReport(const Outcome& outcome, bool isSingle) {
  return toJSON(reportOf(outcome, isSingle)).dump(2) + "\n";
}

std::string propertyListReport(const Outcome& outcome, bool isSingle) {
  return propertyListText(reportOf(outcome, isSingle));
}

}  // namespace commandfilter::tools
