#include "runtime/Dictionary.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <functional>
#include <string>

#include "runtime/Class.h"
#include "runtime/CollectionComparison.h"
#include "runtime/Comparison.h"
#include "runtime/Description.h"
#include "runtime/SizeLimits.h"
#include "runtime/StackGuard.h"
#include "runtime/String.h"
#include "runtime/TextEquality.h"

namespace commandfilter {

namespace {

using Entries = DictionaryEntries;
using Index = DictionaryIndex;

// Up to this many entries a scan is faster than a table, and takes no memory.
constexpr std::size_t kScanned = 8;
constexpr std::uint32_t kFree = UINT32_MAX;
constexpr Value kNil;

// Hashes of numbers and addresses differ in few bits; all of them take part in the choice.
std::size_t firstSlot(std::size_t hash, std::size_t mask) {
  constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;
  return static_cast<std::size_t>(((hash ^ (hash >> 32U)) * kGoldenRatio) >> 32U) & mask;
}

// The entry that `matches`, in the scan or along the table's probe sequence; nullptr when there is
// none.
template <typename Matches>
const DictionaryEntry* find(const Entries& entries, const Index& index, std::size_t hash,
                            Matches&& matches) {
  if (index.empty()) {
    for (const DictionaryEntry& entry : entries) {
      if (entry.hash == hash && matches(entry.key)) return &entry;
    }
    return nullptr;
  }
  const std::size_t mask = index.size() - 1;
  for (std::size_t slot = firstSlot(hash, mask); index[slot] != kFree; slot = (slot + 1) & mask) {
    const DictionaryEntry& entry = entries[index[slot]];
    if (entry.hash == hash && matches(entry.key)) return &entry;
  }
  return nullptr;
}

const DictionaryEntry* find(const Entries& entries, const Index& index, const Value& key,
                            std::size_t hash) {
  return find(entries, index, hash,
              [&key](const Value& candidate) { return equal(candidate, key); });
}

const DictionaryEntry* find(const Entries& entries, const Index& index, std::string_view key) {
  const auto matches = [key](const Value& candidate) {
    return candidate.isKind(ObjectKind::String) &&
           sameText(static_cast<const String*>(candidate.object())->view(), key);
  };
  if (!index.empty()) {
    return find(entries, index, std::hash<std::string_view>{}(key), matches);
  }
  // The hash of the text would cost more than it saves.
  const auto found = std::ranges::find_if(entries, matches, &DictionaryEntry::key);
  return found != entries.end() ? &*found : nullptr;
}

// A key against one that is no text, or written otherwise. Apart from the look-up of what is usual,
// which would otherwise make room for it whenever it begins.
[[gnu::cold, gnu::noinline]] bool isEqualToOther(const Value& candidate, const Value& key) {
  return equal(candidate, key);
}

// The same, at once for a text, which is what nearly every key is.
const DictionaryEntry* findText(const Entries& entries, const Index& index, const Value& key,
                                std::size_t hash) {
  const auto& text = static_cast<const String&>(*key.object());
  return find(entries, index, hash, [&](const Value& candidate) {
    if (candidate.object() == &text) return true;
    return candidate.isKind(ObjectKind::String)
               ? sameText(static_cast<const String&>(*candidate.object()).view(), text.view())
               : isEqualToOther(candidate, key);
  });
}

// The value for a key of any kind; nil when there is none.
[[gnu::noinline]] const Value& valueForKey(const Entries& entries, const Index& index,
                                           const Value& key) {
  if (entries.empty() || key.isNil()) return kNil;
  const DictionaryEntry* entry = find(entries, index, key, hashOf(key));
  return entry != nullptr ? entry->value : kNil;
}

// The same for a number, which is mostly written as the key is.
const DictionaryEntry* findNumber(const Entries& entries, const Index& index, const Value& key) {
  return find(entries, index, key.number().hash(), [&key](const Value& candidate) {
    return candidate.isIdenticalTo(key) || isEqualToOther(candidate, key);
  });
}

[[gnu::noinline]] const Value& lookUp(const Entries& entries, const Index& index,
                                      const Value& key) {
  if (!key.isKind(ObjectKind::String)) {
    if (!key.isNumber()) return valueForKey(entries, index, key);
    const DictionaryEntry* entry = findNumber(entries, index, key);
    return entry != nullptr ? entry->value : kNil;
  }
  const std::size_t hash = static_cast<const String&>(*key.object()).hash();
  const DictionaryEntry* entry = findText(entries, index, key, hash);
  return entry != nullptr ? entry->value : kNil;
}

bool isShortKey(const DictionaryEntry& entry, const String& key, std::size_t hash) noexcept {
  return entry.hash == hash && entry.key.isKind(ObjectKind::String) &&
         key.isSameShortText(static_cast<const String&>(*entry.key.object()));
}

// The value for a short text, as most keys are, found without a call: among a few entries, and in a
// table. nullptr says nothing, since a key of another class may equal a text.
const Value* scanFor(const Entries& entries, const String& key, std::size_t hash) noexcept {
  for (const DictionaryEntry& entry : entries) {
    if (isShortKey(entry, key, hash)) return &entry.value;
  }
  return nullptr;
}
const Value* probeFor(const Entries& entries, const Index& index, const String& key,
                      std::size_t hash) noexcept {
  const std::size_t mask = index.size() - 1;
  for (std::size_t slot = firstSlot(hash, mask); index[slot] != kFree; slot = (slot + 1) & mask) {
    const DictionaryEntry& entry = entries[index[slot]];
    if (isShortKey(entry, key, hash)) return &entry.value;
  }
  return nullptr;
}

[[gnu::always_inline]] inline const Value& valueFor(const Entries& entries, const Index& index,
                                                    const Value& key) {
  if (!key.isKind(ObjectKind::String)) return lookUp(entries, index, key);
  const auto& text = static_cast<const String&>(*key.object());
  const std::size_t hash = text.knownHash();
  if (hash != 0 && text.isShort()) [[likely]] {
    const Value* value =
        index.empty() ? scanFor(entries, text, hash) : probeFor(entries, index, text, hash);
    if (value != nullptr) return *value;
  }
  return lookUp(entries, index, key);
}

// Enters the place of an entry along the probe sequence of its hash.
void enter(Index& index, std::size_t hash, std::size_t place) {
  const std::size_t mask = index.size() - 1;
  std::size_t slot = firstSlot(hash, mask);
  while (index[slot] != kFree) slot = (slot + 1) & mask;
  index[slot] = static_cast<std::uint32_t>(place);
}

// A table with room for twice as many entries; it is at most half full.
void makeIndex(const Entries& entries, Index& index, std::size_t count) {
  std::size_t size = kScanned * 4;
  while (size < count * 4) size *= 2;
  index.assign(size, kFree);
  for (std::size_t place = 0; place < entries.size(); ++place) {
    enter(index, entries[place].hash, place);
  }
}

void indexLastEntry(const Entries& entries, Index& index) {
  if (index.empty() && entries.size() <= kScanned) return;
  if (entries.size() * 2 > index.size()) {
    makeIndex(entries, index, entries.size());
  } else {
    enter(index, entries.back().hash, entries.size() - 1);
  }
}

void setEntry(Entries& entries, Index& index, Value&& key, Value&& value) {
  assert(!key.isNil() && !value.isNil());
  const bool isText = key.isKind(ObjectKind::String);
  // A text is kept as it is.
  if (!isText && key.isObject()) key = key.object()->dictionaryKey();
  const std::size_t hash = isText ? static_cast<const String&>(*key.object()).hash() : hashOf(key);
  if (const DictionaryEntry* entry =
          isText ? findText(entries, index, key, hash) : find(entries, index, key, hash)) {
    entries[static_cast<std::size_t>(entry - entries.data())].value = std::move(value);
    return;
  }
  entries.push_back({std::move(key), std::move(value), hash});
  indexLastEntry(entries, index);
}

std::uint64_t countOf(const Dictionary& receiver) { return receiver.count(); }
Value objectForKey(const Dictionary& receiver, const Value& key) {
  return key.isNil() ? Value() : receiver.objectForKey(key);
}

constexpr std::array kDictionaryMethods{
    method<&countOf>("count"),
    method<&objectForKey>("objectForKey:"),
    method<&objectForKey>("valueForKey:"),
};

}  // namespace

constinit const Class Dictionary::kClass{
    .name = "Dictionary", .base = &Object::kClass, .methods = kDictionaryMethods};

Ref<Dictionary> Dictionary::create() { return make<Dictionary>(Entries(), Index()); }

bool Dictionary::isEqual(const Value& other) const {
  if (other.object() == this) return true;
  if (!other.isKind(ObjectKind::Dictionary)) return false;
  StackGuard::check();
  const auto& dictionary = static_cast<const Dictionary&>(*other.object());
  if (dictionary.count() != count()) return false;
  const CollectionComparison comparison(*this, dictionary);
  if (comparison.isKnownEqual()) return true;
  return comparison.concluded(
      std::ranges::all_of(entries_, [&dictionary](const DictionaryEntry& entry) {
        const DictionaryEntry* same =
            find(dictionary.entries_, dictionary.index_, entry.key, entry.hash);
        return same != nullptr && equal(entry.value, same->value);
      }));
}

void Dictionary::appendDescription(std::string& text, int level) const {
  StackGuard::check();
  checkTextSize(text.size());
  text.append("{\n");
  for (const DictionaryEntry& entry : entries_) {
    appendIndentation(text, level + 1);
    commandfilter::appendDescription(text, entry.key, level + 1);
    text.append(" = ");
    commandfilter::appendDescription(text, entry.value, level + 1);
    text.append(";\n");
  }
  appendIndentation(text, level);
  text.push_back('}');
}

const Value& Dictionary::objectForKey(const Value& key) const {
  return valueFor(entries_, index_, key);
}

const Value& Dictionary::objectForKey(std::string_view key) const noexcept {
  const DictionaryEntry* entry = find(entries_, index_, key);
  return entry != nullptr ? entry->value : kNil;
}

void DictionaryBuilder::reserve(std::size_t count) {
  entries_.reserve(count);
  if (count > kScanned && count * 2 > index_.size()) makeIndex(entries_, index_, count);
}

void DictionaryBuilder::set(Value key, Value value) {
  setEntry(entries_, index_, std::move(key), std::move(value));
}

void DictionaryBuilder::add(const DictionaryEntry& entry, Value value) {
  assert(!value.isNil() && objectForKey(entry.key).isNil());
  entries_.push_back({entry.key, std::move(value), entry.hash});
  indexLastEntry(entries_, index_);
}

void Dictionary::set(Value key, Value value, OnlyReference /*proof*/) {
  setEntry(entries_, index_, std::move(key), std::move(value));
}

Ref<Dictionary> dictionaryExtendedBy(Value left, Value key, Value value) {
  auto& dictionary = static_cast<Dictionary&>(*left.object());
  if (dictionary.referenceCount() == 1) {
    dictionary.set(std::move(key), std::move(value), Dictionary::OnlyReference{});
    return Ref<Dictionary>(dictionary);
  }
  DictionaryBuilder builder(dictionary);
  builder.set(std::move(key), std::move(value));
  return builder.build();
}

void DictionaryBuilder::set(std::string_view key, Value value) {
  set(Value(String::create(key)), std::move(value));
}

const Value& DictionaryBuilder::objectForKey(const Value& key) const {
  return valueFor(entries_, index_, key);
}

void DictionaryBuilder::clear() noexcept {
  entries_.clear();
  // What fills up again soon keeps its table, unless emptying it would take longer than that.
  constexpr std::size_t kKept = 4096;
  if (index_.size() <= kKept) {
    std::ranges::fill(index_, kFree);
  } else {
    index_.clear();
  }
}

Ref<Dictionary> DictionaryBuilder::build() {
  Ref<Dictionary> dictionary = make<Dictionary>(std::move(entries_), std::move(index_));
  entries_.clear();
  index_.clear();
  return dictionary;
}

}  // namespace commandfilter
