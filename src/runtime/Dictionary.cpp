#include "runtime/Dictionary.h"

#include <algorithm>
#include <array>
#include <string>

#include "runtime/Class.h"
#include "runtime/CollectionComparison.h"
#include "runtime/Comparison.h"
#include "runtime/Description.h"
#include "runtime/SizeLimits.h"
#include "runtime/StackGuard.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

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

Ref<Dictionary> Dictionary::create() { return make<Dictionary>(DictionaryEntries()); }

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
        const Value& value = dictionary.objectForKey(entry.key);
        return !value.isNil() && equal(entry.value, value);
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

Ref<Dictionary> Dictionary::ofKeysAndValues(std::span<Value> keysAndValues) {
  DictionaryEntries entries;
  entries.reserve(keysAndValues.size() / 2);
  entries.setAll(keysAndValues);
  return make<Dictionary>(std::move(entries));
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

Ref<Dictionary> DictionaryBuilder::build() { return make<Dictionary>(std::move(entries_)); }

}  // namespace commandfilter
