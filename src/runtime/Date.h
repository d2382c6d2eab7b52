// Points in time.
#pragma once

#include <compare>
#include <cstddef>
#include <string>

#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"

namespace commandfilter {

/// A point in time, in seconds since 1970-01-01 00:00:00 UTC. Equal when the points are.
class COMMANDFILTER_EXPORT Date final : public Object {
 public:
  static const Class kClass;
  static constexpr ObjectKind kObjectKind = ObjectKind::Date;
  using KindClass = Date;

  [[nodiscard]] static Ref<Date> create(double secondsSince1970);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool isEqual(const Value& other) const override;
  [[nodiscard]] std::size_t hash() const override;
  /// In UTC, whole seconds: `2020-01-31 12:00:00 +0000`.
  void appendDescription(std::string& text, int level) const override;

  [[nodiscard]] double secondsSince1970() const noexcept { return seconds_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit Date(double seconds) noexcept
      : Object(ObjectKind::Date, Holding::NoChain), seconds_(seconds) {}
  ~Date() override = default;

  double seconds_;
};

}  // namespace commandfilter
