// Dictionaries that change.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "runtime/Class.h"
#include "runtime/DictionaryEntries.h"
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
  [[nodiscard]] auto begin() const noexcept { return entries_.begin(); }
  [[nodiscard]] auto end() const noexcept { return entries_.end(); }
  /// How often a value was replaced or all were removed. What was found here is still found as long
  /// as the number is the same.
  [[nodiscard]] std::uint64_t losses() const noexcept { return losses_; }
  /// Makes room for so many entries.
  void reserve(std::size_t count) { entries_.reserve(count); }
  /// Neither may be nil.
  void setObject_forKey(Value object, Value key) {
    const std::size_t before = count();
    entries_.set(std::move(key), std::move(object));
    if (count() == before) ++losses_;
  }
  /// The same for a key that is not there yet: nothing has to be looked for.
  void addObject_forKey(Value object, const Value& key) { entries_.add(key, std::move(object)); }
  void removeAllObjects() noexcept {
    entries_.clear();
    ++losses_;
  }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  MutableDictionary() = default;
  ~MutableDictionary() override = default;

  DictionaryEntries entries_;
  std::uint64_t losses_ = 0;
};

}  // namespace commandfilter
