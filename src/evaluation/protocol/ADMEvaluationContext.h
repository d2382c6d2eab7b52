// What an expression is evaluated against.
#pragma once

#include <span>
#include <string_view>
#include <utility>

#include "evaluation/protocol/ADMEvaluationError.h"
#include "evaluation/protocol/ADMNamedValues.h"
#include "evaluation/protocol/EvaluationName.h"
#include "runtime/Array.h"
#include "runtime/ArrayExtension.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/Format.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/TextConcatenation.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Answers the questions of an expression's items: names, feature paths, procedures, and where to
/// leave an error. A failing operation records an error and answers nil; nil without an error means
/// that there is no value. Nothing here throws on its own account, but what plug-ins and services
/// raise passes through.
class COMMANDFILTER_EXPORT ADMEvaluationContext : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The dictionary that all contexts of one template share; nil when there is none. Borrowed.
  [[nodiscard]] virtual const Dictionary* globalConfiguration() const = 0;
  /// The default status service; nil when there is none.
  [[nodiscard]] virtual Value statusService() const = 0;
  /// Forgets what procedures have kept for the computation.
  virtual void resetEvaluations() = 0;
  /// The value of a bare name.
  virtual Value processSelector(const EvaluationName& name) = 0;
  /// The result of a procedure call. The arguments are unevaluated items; nil when there are none.
  virtual Value executeProcedure_withArguments(const EvaluationName& name,
                                               const Array* arguments) = 0;
  /// The value at a feature path; the components are strings.
  virtual Value valueForFeaturePathComponents(const Array* components) = 0;
  /// The error set last; nil when there is none. Borrowed.
  [[nodiscard]] virtual ADMEvaluationError* lastError() const = 0;
  /// The error that was recorded last through this context, wherever it is kept; nil when there is
  /// none. Borrowed.
  [[nodiscard]] virtual ADMEvaluationError* recordedError() const { return lastError(); }
  /// Replaces the error; nil clears it.
  virtual void setLastError(RefPtr<ADMEvaluationError> error) = 0;
  /// Records an error of category 2; a nil format (no data) reads "Unknown error".
  virtual void setRuntimeErrorWithArguments(std::string_view format,
                                            std::span<const FormatArgument> arguments) = 0;
  virtual void clearErrors() = 0;

  /// Who answers the names of the template's constants, when it can be asked at once; with nullptr,
  /// which the base answers, the object in the configuration is sent a message for each. Borrowed.
  [[nodiscard]] virtual ADMNamedValues* constants() { return nullptr; }
  /// What `ADMNamedValues::permanence` answers for the constants; nullptr when they cannot be asked
  /// at once. Borrowed.
  [[nodiscard]] virtual Object* permanenceOfConstants() { return nullptr; }
  /// The same as `constants` for the template's values.
  [[nodiscard]] virtual ADMNamedValues* templateValues() { return nullptr; }

  /// A text and those that follow it as one string. A context that holds the left text itself may
  /// extend it in place.
  /// @throws Exception "a value is too large" when together they would be larger than a text may
  /// be.
  virtual Ref<String> concatenate(Ref<String> left, std::span<const String* const> others) {
    return concatenateTexts(std::move(left), others);
  }
  /// The elements of the left array followed by those of the right one, or by the right value. A
  /// context that holds the left array itself may extend it in place.
  virtual Ref<Array> extendArray(Value left, const Value& right) {
    return arrayExtendedBy(std::move(left), right);
  }
  /// The left dictionary with the value set for the key. A context that holds it itself may extend
  /// it in place.
  virtual Ref<Dictionary> extendDictionary(Value left, Value key, Value value) {
    return dictionaryExtendedBy(std::move(left), std::move(key), std::move(value));
  }

  /// `setRuntimeError:` with the arguments written out.
  template <typename... Arguments>
  void setRuntimeError(std::string_view format, const Arguments&... arguments) {
    if constexpr (sizeof...(Arguments) == 0) {
      setRuntimeErrorWithArguments(format, {});
    } else {
      const FormatArgument list[] = {FormatArgument(arguments)...};
      setRuntimeErrorWithArguments(format, list);
    }
  }

 protected:
  ~ADMEvaluationContext() = default;
};

}  // namespace commandfilter
