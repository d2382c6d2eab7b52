#include "runtime/DictionaryEntries.h"

#include <algorithm>
#include <bit>
#include <cassert>

#include "runtime/Comparison.h"
#include "runtime/String.h"
#include "runtime/TextEquality.h"
#include "runtime/TextHash.h"

namespace commandfilter {

namespace {

// Up to this many entries a scan is faster than a table, and takes no memory.
constexpr std::size_t kScanned = 8;
constexpr std::size_t kFirstRoom = 2;
constexpr std::uint32_t kFree = UINT32_MAX;
constexpr Value kNil;

const String& textIn(const Value& text) noexcept {
  return static_cast<const String&>(*text.object());
}

// A key against one that is no text, or written otherwise. Apart from the look-up of what is usual,
// which would otherwise make room for it whenever it begins. The hashes come first: they tell long
// keys apart.
[[gnu::cold, gnu::noinline]] bool isEqualToOther(const Value& candidate, const Value& key,
                                                 std::size_t hash) {
  return candidate.isIdenticalTo(key) || (hashOf(candidate) == hash && equal(candidate, key));
}

bool isShortText(const Value& key) noexcept {
  return key.isKind(ObjectKind::String) && textIn(key).isShort();
}

// Compares a short text with keys, without a call.
class ShortTextSearch {
 public:
  explicit ShortTextSearch(const Value& key) noexcept : text_(textIn(key)) {}

  bool operator()(const Value& candidate) noexcept {
    if (candidate.isKind(ObjectKind::String)) return text_.isSameShortText(textIn(candidate));
    metOnlyTexts_ = false;
    return false;
  }
  // Otherwise one of them, of another class, may equal the text all the same.
  [[nodiscard]] bool metOnlyTexts() const noexcept { return metOnlyTexts_; }

 private:
  const String& text_;
  bool metOnlyTexts_ = true;
};

}  // namespace

template <typename Matches>
const DictionaryEntry* DictionaryEntries::scan(Matches&& matches) const {
  for (const DictionaryEntry& entry : entries_) {
    if (matches(entry.key)) return &entry;
  }
  return nullptr;
}

// Along the probe sequence of the hash.
template <typename Matches>
const DictionaryEntry* DictionaryEntries::probe(std::uint32_t tag, Matches&& matches) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = tag & mask;; at = (at + 1) & mask) {
    const Slot slot = slots_[at];
    if (slot.place == kFree) return nullptr;
    if (slot.tag != tag) continue;
    const DictionaryEntry& entry = entries_[slot.place];
    if (matches(entry.key)) return &entry;
  }
}

// At once for a text among texts, which is what nearly every key is.
const DictionaryEntry* DictionaryEntries::findText(const Value& key) const {
  const String& text = textIn(key);
  const auto matches = [&](const Value& candidate) {
    if (candidate.object() == &text) return true;
    return candidate.isKind(ObjectKind::String) ? sameText(textIn(candidate).view(), text.view())
                                                : isEqualToOther(candidate, key, text.hash());
  };
  return slots_.empty() ? scan(matches) : probe(tableHash(text.hash()), matches);
}

const DictionaryEntry* DictionaryEntries::findNumber(const Value& key) const {
  const Number number = key.number();
  const auto matches = [&](const Value& candidate) {
    return candidate.isNumber() ? candidate.number() == number
                                : isEqualToOther(candidate, key, number.hash());
  };
  return slots_.empty() ? scan(matches) : probe(tableHash(number.hash()), matches);
}

const DictionaryEntry* DictionaryEntries::findOther(const Value& key) const {
  const std::size_t hash = hashOf(key);
  const auto matches = [&](const Value& candidate) { return isEqualToOther(candidate, key, hash); };
  return slots_.empty() ? scan(matches) : probe(tableHash(hash), matches);
}

// What is not a short text among texts.
[[gnu::noinline]] const Value& DictionaryEntries::lookUp(const Value& key) const {
  if (entries_.empty() || key.isNil()) return kNil;
  const DictionaryEntry* entry = key.isKind(ObjectKind::String) ? findText(key)
                                 : key.isNumber()               ? findNumber(key)
                                                                : findOther(key);
  return entry != nullptr ? entry->value : kNil;
}

const Value& DictionaryEntries::objectForKey(const Value& key) const {
  if (!isShortText(key)) return lookUp(key);
  ShortTextSearch search(key);
  const DictionaryEntry* entry =
      slots_.empty() ? scan(search) : probe(tableHash(textIn(key).hash()), search);
  if (entry != nullptr) return entry->value;
  return search.metOnlyTexts() ? kNil : lookUp(key);
}

const Value& DictionaryEntries::objectForKey(std::string_view key) const noexcept {
  const auto matches = [key](const Value& candidate) {
    return candidate.isKind(ObjectKind::String) && sameText(textIn(candidate).view(), key);
  };
  const DictionaryEntry* entry =
      slots_.empty() ? scan(matches) : probe(tableHash(hashOfText(key)), matches);
  return entry != nullptr ? entry->value : kNil;
}

void DictionaryEntries::reserve(std::size_t count) {
  entries_.reserve(count);
  if (count > kScanned && count * 2 > slots_.size()) makeSlots(count * 2);
}

void DictionaryEntries::set(Value&& key, Value&& value) {
  assert(!key.isNil() && !value.isNil());
  const bool isText = key.isKind(ObjectKind::String);
  // A text is kept as it is.
  if (!isText && key.isObject()) {
    key = key.object()->dictionaryKey();
    // What has no hash is no key of a few entries either: every look-up would fail.
    static_cast<void>(hashOf(key));
  }
  const DictionaryEntry* entry = isText           ? findText(key)
                                 : key.isNumber() ? findNumber(key)
                                                  : findOther(key);
  if (entry != nullptr) {
    entries_[static_cast<std::size_t>(entry - entries_.data())].value = std::move(value);
    return;
  }
  append(std::move(key), std::move(value));
}

void DictionaryEntries::setAll(std::span<Value> keysAndValues) {
  for (; keysAndValues.size() > 1; keysAndValues = keysAndValues.subspan(2)) {
    Value& key = keysAndValues[0];
    Value& value = keysAndValues[1];
    if (slots_.empty() && entries_.size() < kScanned && isShortText(key)) {
      ShortTextSearch search(key);
      if (scan(search) == nullptr && search.metOnlyTexts()) {
        entries_.emplace_back(std::move(key), std::move(value));
        continue;
      }
    }
    set(std::move(key), std::move(value));
  }
}

void DictionaryEntries::add(const Value& key, Value&& value) {
  assert(!key.isNil() && !value.isNil() && objectForKey(key).isNil());
  append(Value(key), std::move(value));
}

void DictionaryEntries::clear() noexcept {
  if (entries_.empty()) return;
  // What goes may ask for something in its turn, and finds nothing.
  auto before = std::exchange(entries_, {});
  // What fills up again soon keeps its table, unless emptying it would take longer than that.
  constexpr std::size_t kKept = 4096;
  if (slots_.size() <= kKept) {
    std::ranges::fill(slots_, Slot{0, kFree});
  } else {
    slots_.clear();
  }
  before.clear();
  if (entries_.capacity() == 0) entries_ = std::move(before);
}

// In the first free slot along the probe sequence.
void DictionaryEntries::enter(Slots& slots, Slot slot) noexcept {
  const std::size_t mask = slots.size() - 1;
  std::size_t at = slot.tag & mask;
  while (slots[at].place != kFree) at = (at + 1) & mask;
  slots[at] = slot;
}

void DictionaryEntries::makeSlots(std::size_t least) {
  Slots slots(std::bit_ceil(least), Slot{0, kFree});
  for (const Slot slot : slots_) {
    if (slot.place != kFree) enter(slots, slot);
  }
  if (slots_.empty()) {
    for (std::size_t place = 0; place < entries_.size(); ++place) {
      enter(slots, {tableHash(hashOf(entries_[place].key)), static_cast<std::uint32_t>(place)});
    }
  }
  slots_ = std::move(slots);
}

void DictionaryEntries::append(Value&& key, Value&& value) {
  const std::size_t place = entries_.size();
  // Growing one by one at first would take as long as all else.
  if (place == entries_.capacity()) entries_.reserve(std::max(kFirstRoom, place * 2));
  if (slots_.empty() && place < kScanned) {
    entries_.emplace_back(std::move(key), std::move(value));
    return;
  }
  // Whatever may throw comes first: the hash may be that of a plug-in's object.
  const std::uint32_t tag = tableHash(hashOf(key));
  if ((place + 1) * 2 > slots_.size()) makeSlots((place + 1) * 4);
  entries_.emplace_back(std::move(key), std::move(value));
  enter(slots_, {tag, static_cast<std::uint32_t>(place)});
}

}  // namespace commandfilter
