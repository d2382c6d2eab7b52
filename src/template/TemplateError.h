// An error of a template, with all that a report can show.
#pragma once

#include <cstdint>
#include <string_view>

#include "evaluation/protocol/ADMEvaluationError.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// What went wrong with one value or one constant.
struct TemplateError {
  /// The category of a value whose description cannot be used; expressions have those below it.
  static constexpr std::int32_t kNoProcessor = 3;
  static constexpr std::string_view kNoProcessorDescription = "Failed to create processor";

  /// The value's key, or the constant's name.
  Ref<String> key;
  /// What the expression recorded, with the expression's text and the place in it; nil for a value
  /// whose description cannot be used.
  RefPtr<ADMEvaluationError> error;

  /// The category as the number that reports show.
  [[nodiscard]] std::int32_t category() const noexcept {
    return error ? error->errorCategory() : kNoProcessor;
  }
};

}  // namespace commandfilter
