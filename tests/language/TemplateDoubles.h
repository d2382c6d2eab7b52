// The objects of a template that expressions reach: its constants and its other values.
#pragma once

#include <string>
#include <utility>

#include "language/CallLog.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter::testing {

/// Stands under "TemplateConstants" and answers `valueOfConstant:`.
class ConstantsDouble final : public Object {
 public:
  static const Class kClass;

  /// The log must outlive the object.
  [[nodiscard]] static Ref<ConstantsDouble> create(Ref<Dictionary> values, CallLog& log) {
    return make<ConstantsDouble>(std::move(values), log);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value valueOfConstant(const String* name);

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  ConstantsDouble(Ref<Dictionary> values, CallLog& log) : values_(std::move(values)), log_(log) {}
  ~ConstantsDouble() override = default;

  Ref<Dictionary> values_;
  CallLog& log_;
};

/// Stands under "EntireTemplateProcessor" and answers `valueForKey:`.
class TemplateDouble final : public Object {
 public:
  static const Class kClass;

  /// The log must outlive the object.
  [[nodiscard]] static Ref<TemplateDouble> create(Ref<Dictionary> values, CallLog& log) {
    return make<TemplateDouble>(std::move(values), log);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value valueForKey(const String* name);

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  TemplateDouble(Ref<Dictionary> values, CallLog& log) : values_(std::move(values)), log_(log) {}
  ~TemplateDouble() override = default;

  Ref<Dictionary> values_;
  CallLog& log_;
};

}  // namespace commandfilter::testing
