// Immutable lists.
#pragma once

#include <cstddef>
#include <utility>

#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

/// A list of values; nil cannot be an element, the null object stands for it. Equal when the
/// elements are, in order.
class COMMANDFILTER_EXPORT Array final : public Object {
 public:
  static const Class kClass;
  static constexpr ObjectKind kObjectKind = ObjectKind::Array;
  using KindClass = Array;

  /// An array of the elements; nil elements become the null object.
  [[nodiscard]] static Ref<Array> create(ValueVector elements = {});

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool isEqual(const Value& other) const override;
  [[nodiscard]] std::size_t hash() const override;
  void appendDescription(std::string& text, int level) const override;

  [[nodiscard]] std::size_t count() const noexcept { return elements_.size(); }
  [[nodiscard]] bool isEmpty() const noexcept { return elements_.empty(); }
  /// @throws Exception when the index is out of range.
  [[nodiscard]] const Value& objectAtIndex(std::size_t index) const;
  /// The index must be in range.
  [[nodiscard]] const Value& operator[](std::size_t index) const noexcept {
    return elements_[index];
  }
  [[nodiscard]] bool containsObject(const Value& value) const;
  [[nodiscard]] auto begin() const noexcept { return elements_.begin(); }
  [[nodiscard]] auto end() const noexcept { return elements_.end(); }

  /// Says that whoever asks holds the only reference to the array.
  class OnlyReference {
    friend Ref<Array> arrayExtendedBy(Value left, const Value& right);
    friend Ref<Array> arrayWithElementAt(Ref<Array> array, std::size_t index, Value element);
    OnlyReference() = default;
  };
  /// The elements, to be extended with values that are not nil.
  [[nodiscard]] ValueVector& mutableElements(OnlyReference /*proof*/) noexcept { return elements_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit Array(ValueVector elements) noexcept
      : Object(ObjectKind::Array), elements_(std::move(elements)) {}
  ~Array() override = default;

  ValueVector elements_;
};

}  // namespace commandfilter
