// A small device for evaluations.
#pragma once

#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "template/status/ADMFeaturePathSource.h"

namespace commandfilter::fuzz {

/// Answers a few feature paths and messages with every kind of value, and any other path with an
/// error that is full of percent signs.
class FuzzDevice final : public Implements<Object, ADMFeaturePathSource> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<FuzzDevice> create();

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value valueForFeaturePathComponents_errorInfo(const Array& components,
                                                RefPtr<String>& errorInfo) override;

  [[nodiscard]] Value deviceState() const;
  [[nodiscard]] Value suppliesIdentifiers() const;
  [[nodiscard]] Value supplyLevelForIdentifier(const Value& identifier) const;
  /// @throws Exception always, as a message that a service cannot answer does.
  [[nodiscard]] Value brokenMessage() const;
};

/// A global configuration with macros that call each other and themselves.
[[nodiscard]] Ref<Dictionary> fuzzConfiguration();

}  // namespace commandfilter::fuzz
