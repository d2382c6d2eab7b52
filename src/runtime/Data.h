// Immutable bytes.
#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"

namespace commandfilter {

/// A run of bytes. Equal when the bytes are.
class COMMANDFILTER_EXPORT Data final : public Object {
 public:
  static const Class kClass;
  static constexpr ObjectKind kObjectKind = ObjectKind::Data;
  using KindClass = Data;

  [[nodiscard]] static Ref<Data> create(std::string bytes);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool isEqual(const Value& other) const override;
  [[nodiscard]] std::size_t hash() const override;
  /// The bytes in hexadecimal, four to a group, between angle brackets: `<00ff10aa 0b>`.
  void appendDescription(std::string& text, int level) const override;

  [[nodiscard]] const std::string& bytes() const noexcept { return bytes_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit Data(std::string bytes) noexcept
      : Object(ObjectKind::Data, Holding::NoChain), bytes_(std::move(bytes)) {}
  ~Data() override = default;

  std::string bytes_;
};

}  // namespace commandfilter
