// Flat lists of unevaluated items.
#pragma once

#include <string>

#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

/// The value of a comma list and the arguments of a procedure: items, and the null object where an
/// element was nil. Lists never nest.
class COMMANDFILTER_EXPORT ADMItemsList final : public Object {
 public:
  static const Class kClass;
  static constexpr ObjectKind kObjectKind = ObjectKind::ItemsList;
  using KindClass = ADMItemsList;

  /// A list of the one item; of an items list, its items.
  [[nodiscard]] static Ref<ADMItemsList> listWithItem(const Value& item);
  /// A list to which nothing has been appended yet.
  [[nodiscard]] static Ref<ADMItemsList> create();

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// The description of its array; empty when nothing was ever appended.
  void appendDescription(std::string& text, int level) const override;

  /// A copy, because lists grow: it equals no other list, so nothing is found under it.
  [[nodiscard]] Value dictionaryKey() const override { return copyWithZone(); }

  /// The items as an array; nil when nothing was ever appended.
  [[nodiscard]] RefPtr<Array> items() const;
  /// Appends an item; nil becomes the null object, an items list is merged in.
  void appendItem(const Value& item);
  /// A new list of the same items.
  [[nodiscard]] Ref<ADMItemsList> copyWithZone() const;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMItemsList() noexcept : Object(ObjectKind::ItemsList) {}
  ~ADMItemsList() override = default;

  ValueVector list_;
  bool appended_ = false;
};

}  // namespace commandfilter
