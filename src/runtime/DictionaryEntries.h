// The entries of a dictionary.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/Export.h"
#include "runtime/ObjectMemory.h"
#include "runtime/Value.h"

namespace commandfilter {

/// One entry of a dictionary.
struct DictionaryEntry {
  DictionaryEntry(Value&& itsKey, Value&& itsValue) noexcept
      : key(std::move(itsKey)), value(std::move(itsValue)) {}

  Value key;
  Value value;
};

/// Entries in the order in which their keys were added, and for many of them the table by which
/// they are found. Neither a key nor a value is nil.
class COMMANDFILTER_EXPORT DictionaryEntries {
 public:
  DictionaryEntries() noexcept = default;
  DictionaryEntries(const DictionaryEntries&) = default;
  /// The other one is empty afterwards.
  DictionaryEntries(DictionaryEntries&& other) noexcept = default;
  DictionaryEntries& operator=(const DictionaryEntries&) = delete;
  DictionaryEntries& operator=(DictionaryEntries&&) noexcept = default;
  ~DictionaryEntries() = default;

  [[nodiscard]] std::size_t count() const noexcept { return entries_.size(); }
  [[nodiscard]] auto begin() const noexcept { return entries_.begin(); }
  [[nodiscard]] auto end() const noexcept { return entries_.end(); }

  /// The value, borrowed until the next change; nil when the key is absent or nil.
  [[nodiscard]] const Value& objectForKey(const Value& key) const;
  /// The same for a key that is a string.
  [[nodiscard]] const Value& objectForKey(std::string_view key) const noexcept;

  /// Makes room for so many entries.
  void reserve(std::size_t count);
  /// Sets the value for a key. A key that is there already keeps its place.
  /// @throws Exception for an object that cannot be a key.
  void set(Value&& key, Value&& value);
  /// Sets the values for keys that stand before them by turns. All are nil afterwards.
  /// @throws Exception for an object that cannot be a key.
  void setAll(std::span<Value> keysAndValues);
  /// Adds a key that is not there yet, and is what a dictionary keeps of it: nothing has to be
  /// looked for.
  void add(const Value& key, Value&& value);
  /// Removes all entries.
  void clear() noexcept;

 private:
  // What a slot of the table knows of an entry: a part of its key's hash, which says no for nearly
  // every other key, and its place.
  struct Slot {
    std::uint32_t tag;
    std::uint32_t place;
  };
  using Slots = std::vector<Slot, ObjectAllocator<Slot>>;

  template <typename Matches>
  [[nodiscard]] const DictionaryEntry* scan(Matches&& matches) const;
  template <typename Matches>
  [[nodiscard]] const DictionaryEntry* probe(std::uint32_t tag, Matches&& matches) const;
  [[nodiscard]] const DictionaryEntry* findText(const Value& key) const;
  [[nodiscard]] const DictionaryEntry* findNumber(const Value& key) const;
  [[nodiscard]] const DictionaryEntry* findOther(const Value& key) const;
  [[nodiscard]] const Value& lookUp(const Value& key) const;
  static void enter(Slots& slots, Slot slot) noexcept;
  /// Makes a table of at least so many slots, half of which stay free.
  void makeSlots(std::size_t least);
  void append(Value&& key, Value&& value);

  std::vector<DictionaryEntry, ObjectAllocator<DictionaryEntry>> entries_;
  // Empty for few entries.
  Slots slots_;
};

}  // namespace commandfilter
