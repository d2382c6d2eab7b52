// Dictionaries that change.
#pragma once

#include <cstddef>
#include <utility>

#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A store of values by key that is shared while it is filled: a cache. It is no `Dictionary`, so
/// expressions never see it change.
class COMMANDFILTER_EXPORT MutableDictionary final : public Object {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<MutableDictionary> create();

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  [[nodiscard]] std::size_t count() const noexcept { return entries_.count(); }
  /// The value, borrowed until the next change; nil when the key is absent.
  [[nodiscard]] const Value& objectForKey(const Value& key) const {
    return entries_.objectForKey(key);
  }
  /// Neither may be nil.
  void setObject_forKey(Value object, Value key) {
    entries_.set(std::move(key), std::move(object));
  }
  void removeAllObjects() noexcept { entries_.clear(); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  MutableDictionary() = default;
  ~MutableDictionary() override = default;

  DictionaryBuilder entries_;
};

}  // namespace commandfilter
