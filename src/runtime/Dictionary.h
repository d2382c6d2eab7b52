// Immutable dictionaries that keep the order in which their keys were added.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "runtime/DictionaryEntries.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Values by key. Keys are values of any kind but nil, compared by value; entries are listed in
/// the order of adding. Equal when the same keys have equal values, in any order.
class COMMANDFILTER_EXPORT Dictionary final : public Object {
 public:
  static const Class kClass;
  static constexpr ObjectKind kObjectKind = ObjectKind::Dictionary;
  using KindClass = Dictionary;

  /// An empty dictionary; others come from DictionaryBuilder.
  [[nodiscard]] static Ref<Dictionary> create();
  /// A dictionary of keys, none of which is nil, and their values by turns, which are nil
  /// afterwards. The last value of a key counts.
  /// @throws Exception for an object that cannot be a key.
  [[nodiscard]] static Ref<Dictionary> ofKeysAndValues(std::span<Value> keysAndValues);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool isEqual(const Value& other) const override;
  [[nodiscard]] std::size_t hash() const override { return entries_.count(); }
  void appendDescription(std::string& text, int level) const override;

  [[nodiscard]] std::size_t count() const noexcept { return entries_.count(); }
  /// The value, borrowed; nil when the key is absent.
  [[nodiscard]] const Value& objectForKey(const Value& key) const {
    return entries_.objectForKey(key);
  }
  /// The same for a key that is a string.
  [[nodiscard]] const Value& objectForKey(std::string_view key) const noexcept {
    return entries_.objectForKey(key);
  }
  /// Says that whoever asks holds the only reference to the dictionary.
  class OnlyReference {
    friend Ref<Dictionary> dictionaryExtendedBy(Value left, Value key, Value value);
    OnlyReference() = default;
  };
  /// Sets the value for a key in place; see DictionaryBuilder.
  void set(Value key, Value value, OnlyReference /*proof*/) {
    entries_.set(std::move(key), std::move(value));
  }

  [[nodiscard]] auto begin() const noexcept { return entries_.begin(); }
  [[nodiscard]] auto end() const noexcept { return entries_.end(); }

 private:
  friend class DictionaryBuilder;
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit Dictionary(DictionaryEntries entries) noexcept
      : Object(ObjectKind::Dictionary), entries_(std::move(entries)) {}
  ~Dictionary() override = default;

  DictionaryEntries entries_;
};

/// Collects the entries of a new dictionary.
class COMMANDFILTER_EXPORT DictionaryBuilder {
 public:
  DictionaryBuilder() = default;
  /// Starts with the entries of another dictionary.
  explicit DictionaryBuilder(const Dictionary& other) : entries_(other.entries_) {}

  /// Makes room for so many entries.
  void reserve(std::size_t count) { entries_.reserve(count); }
  /// Sets the value for a key. A key that is there already keeps its place. Neither may be nil.
  /// @throws Exception for an object that cannot be a key.
  void set(Value key, Value value) { entries_.set(std::move(key), std::move(value)); }
  /// Adds a value under the key of another dictionary's entry, which is not there yet: nothing has
  /// to be looked for. The value may not be nil.
  void add(const DictionaryEntry& entry, Value value) { entries_.add(entry.key, std::move(value)); }
  /// Sets the value for a string key.
  void set(std::string_view key, Value value);
  /// The value set for a key, borrowed until the next change; nil when there is none.
  [[nodiscard]] const Value& objectForKey(const Value& key) const {
    return entries_.objectForKey(key);
  }
  [[nodiscard]] std::size_t count() const noexcept { return entries_.count(); }
  [[nodiscard]] auto begin() const noexcept { return entries_.begin(); }
  [[nodiscard]] auto end() const noexcept { return entries_.end(); }
  /// Removes all entries.
  void clear() noexcept { entries_.clear(); }

  /// The dictionary; the builder is empty afterwards.
  [[nodiscard]] Ref<Dictionary> build();

 private:
  DictionaryEntries entries_;
};

/// The dictionary with the value set for the key. A dictionary that nobody else holds is extended
/// in place.
[[nodiscard]] COMMANDFILTER_EXPORT Ref<Dictionary> dictionaryExtendedBy(Value left, Value key,
                                                                        Value value);

}  // namespace commandfilter
