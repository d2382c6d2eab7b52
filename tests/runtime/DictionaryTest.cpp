#include "runtime/Dictionary.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "TestValues.h"
#include "runtime/Comparison.h"
#include "runtime/Date.h"
#include "runtime/Exception.h"
#include "runtime/Selector.h"
#include "runtime/Send.h"
#include "runtime/ValueVector.h"

namespace commandfilter {
namespace {

using testing::arrayOf;
using testing::dictionaryOf;
using testing::stringOf;

constexpr std::size_t kManyKeys = 100'000;

std::vector<std::string> keysOf(const Dictionary& dictionary) {
  std::vector<std::string> keys;
  for (const DictionaryEntry& entry : dictionary) keys.push_back(descriptionOf(entry.key));
  return keys;
}

// "key0" to "key<count - 1>", each with its number.
Ref<Dictionary> numbered(std::size_t count) {
  DictionaryBuilder builder;
  builder.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    builder.set("key" + std::to_string(i), Number::integer(i));
  }
  return builder.build();
}

TEST(Dictionary, IsEmptyWhenItIsCreated) {
  const Ref<Dictionary> dictionary = Dictionary::create();
  EXPECT_EQ(dictionary->count(), 0U);
  EXPECT_TRUE(dictionary->objectForKey("key").isNil());
  EXPECT_TRUE(dictionary->objectForKey(stringOf("key")).isNil());
  EXPECT_EQ(dictionary->begin(), dictionary->end());
}

TEST(Dictionary, FindsValuesByKeysOfEveryKind) {
  const ValueVector keys{stringOf("text"),         Value::null(),
                         Number::real(0.5),        Value::boolean(true),
                         arrayOf({stringOf("a")}), dictionaryOf({{stringOf("a"), stringOf("b")}}),
                         Date::create(5)};
  DictionaryBuilder builder;
  for (std::size_t i = 0; i < keys.size(); ++i) builder.set(keys[i], Number::integer(i));
  const Ref<Dictionary> dictionary = builder.build();
  for (std::size_t i = 0; i < keys.size(); ++i) {
    EXPECT_TRUE(equal(dictionary->objectForKey(keys[i]), Number::integer(i))) << i;
  }
  EXPECT_TRUE(equal(dictionary->objectForKey(arrayOf({stringOf("a")})), Number::integer(4)));
  EXPECT_TRUE(dictionary->objectForKey(arrayOf({stringOf("b")})).isNil());
  EXPECT_TRUE(dictionary->objectForKey(Value()).isNil());
}

TEST(Dictionary, KeepsTheOrderOfAdding) {
  DictionaryBuilder builder;
  for (const char* key : {"z", "a", "m", "b"}) builder.set(key, Number::integer(1));
  EXPECT_EQ(builder.count(), 4U);
  EXPECT_EQ(keysOf(*builder.build()), (std::vector<std::string>{"z", "a", "m", "b"}));
}

TEST(Dictionary, LeavesAReplacedKeyInItsPlace) {
  DictionaryBuilder builder;
  for (const char* key : {"z", "a", "z", "b", "a"}) {
    builder.set(key, Number::integer(builder.count()));
  }
  const Ref<Dictionary> dictionary = builder.build();
  EXPECT_EQ(keysOf(*dictionary), (std::vector<std::string>{"z", "a", "b"}));
  EXPECT_EQ(dictionary->objectForKey("z").number().longValue(), 2);
  EXPECT_EQ(dictionary->objectForKey("a").number().longValue(), 3);
}

TEST(Dictionary, ReplacesAndKeepsOrderAlsoWhenItIsLarge) {
  DictionaryBuilder builder(*numbered(100));
  for (std::size_t i = 0; i < 100; i += 2) {
    builder.set("key" + std::to_string(i), stringOf("replaced"));
  }
  builder.set("new", stringOf("new"));
  const Ref<Dictionary> dictionary = builder.build();
  ASSERT_EQ(dictionary->count(), 101U);
  std::size_t place = 0;
  for (const DictionaryEntry& entry : *dictionary) {
    EXPECT_EQ(descriptionOf(entry.key), place < 100 ? "key" + std::to_string(place) : "new");
    EXPECT_EQ(entry.value.isNumber(), place < 100 && place % 2 == 1);
    ++place;
  }
}

TEST(Dictionary, FindsEveryKeyAtEverySize) {
  for (std::size_t size = 0; size <= 70; ++size) {
    const Ref<Dictionary> dictionary = numbered(size);
    ASSERT_EQ(dictionary->count(), size);
    for (std::size_t i = 0; i < size; ++i) {
      const std::string key = "key" + std::to_string(i);
      EXPECT_TRUE(equal(dictionary->objectForKey(key), Number::integer(i))) << size;
      EXPECT_TRUE(equal(dictionary->objectForKey(stringOf(key)), Number::integer(i))) << size;
    }
    EXPECT_TRUE(dictionary->objectForKey("key" + std::to_string(size)).isNil()) << size;
  }
}

// A key that is asked for again knows its hash, and a short one is compared at once.
TEST(Dictionary, FindsTheSameKeyAgain) {
  for (const std::size_t others : {0U, 20U}) {
    for (const std::size_t length : {0U, 1U, 8U, 15U, 16U, 40U}) {
      DictionaryBuilder builder;
      for (std::size_t i = 0; i < others; ++i)
        builder.set("key" + std::to_string(i), Value::null());
      builder.set(std::string(length, 'a'), Number::integer(1));
      const Ref<Dictionary> dictionary = builder.build();
      const Value key = stringOf(std::string(length, 'a'));
      const Value other = stringOf(std::string(length + 1, 'a'));
      for (int round = 0; round < 3; ++round) {
        EXPECT_TRUE(equal(dictionary->objectForKey(key), Number::integer(1))) << length;
        EXPECT_TRUE(dictionary->objectForKey(other).isNil()) << length;
      }
    }
  }
}

TEST(Dictionary, TakesEntriesOfAnotherInItsOrder) {
  const Ref<Dictionary> from = numbered(20);
  DictionaryBuilder builder;
  for (const DictionaryEntry& entry : *from) builder.add(entry, Value::null());
  const Ref<Dictionary> dictionary = builder.build();
  ASSERT_EQ(dictionary->count(), 20U);
  EXPECT_EQ(descriptionOf(std::next(dictionary->begin(), 19)->key), "key19");
  EXPECT_TRUE(dictionary->objectForKey("key7").isNull());
}

TEST(Dictionary, FindsNumberKeysAcrossEncodings) {
  for (const int others : {0, 20}) {
    DictionaryBuilder builder;
    builder.set(Number::integer(1), stringOf("one"));
    builder.set(Number::real(2.5), stringOf("more"));
    for (int i = 0; i < others; ++i) builder.set(Number::integer(100 + i), Value::null());
    builder.set(Value::boolean(true), stringOf("replaced"));
    const Ref<Dictionary> dictionary = builder.build();
    EXPECT_EQ(dictionary->count(), static_cast<std::size_t>(2 + others));
    EXPECT_EQ(descriptionOf(dictionary->objectForKey(Number::real(1.0))), "replaced");
    EXPECT_EQ(descriptionOf(dictionary->objectForKey(Number::integer(1U))), "replaced");
    EXPECT_EQ(descriptionOf(dictionary->objectForKey(Number::real(2.5F))), "more");
    EXPECT_TRUE(dictionary->objectForKey(Number::integer(2)).isNil());
    EXPECT_TRUE(dictionary->objectForKey("1").isNil());
    EXPECT_EQ(dictionary->begin()->key.number().encoding(), 'i');
  }
}

TEST(Dictionary, HoldsManyKeys) {
  const Ref<Dictionary> dictionary = numbered(kManyKeys);
  ASSERT_EQ(dictionary->count(), kManyKeys);
  for (std::size_t i = 0; i < kManyKeys; ++i) {
    ASSERT_TRUE(equal(dictionary->objectForKey("key" + std::to_string(i)), Number::integer(i)));
  }
  EXPECT_TRUE(dictionary->objectForKey("key").isNil());
}

// Without mixing their bits, such keys all begin their search at the same place: the time would
// grow with the square of their number, to minutes here.
TEST(Dictionary, HoldsManyNumbersThatDifferInFewBits) {
  for (const unsigned shift : {0U, 20U, 45U}) {
    DictionaryBuilder builder;
    for (std::uint64_t i = 0; i < kManyKeys; ++i) {
      builder.set(Number::integer(i << shift), Number::integer(i));
    }
    const Ref<Dictionary> dictionary = builder.build();
    ASSERT_EQ(dictionary->count(), kManyKeys);
    for (std::uint64_t i = 0; i < kManyKeys; ++i) {
      const Value& found = dictionary->objectForKey(Number::integer(i << shift));
      ASSERT_EQ(found.number().unsignedLongValue(), i);
    }
  }
}

TEST(Dictionary, EqualsTheSameEntriesInAnyOrder) {
  const auto make = [](std::initializer_list<const char*> keys) {
    DictionaryBuilder builder;
    for (const char* key : keys) builder.set(key, stringOf(key));
    return Value(builder.build());
  };
  EXPECT_TRUE(equal(make({"a", "b", "c"}), make({"c", "a", "b"})));
  EXPECT_EQ(hashOf(make({"a", "b"})), hashOf(make({"b", "a"})));
  EXPECT_FALSE(equal(make({"a", "b"}), make({"a", "c"})));
  EXPECT_FALSE(equal(make({"a", "b"}), make({"a"})));
  EXPECT_FALSE(equal(make({"a"}), make({"a", "b"})));
  EXPECT_TRUE(equal(make({}), make({})));
  EXPECT_FALSE(equal(make({}), arrayOf({})));
  EXPECT_FALSE(equal(dictionaryOf({{stringOf("a"), stringOf("x")}}), make({"a"})));
  EXPECT_TRUE(equal(Value(numbered(50)), Value(numbered(50))));
  EXPECT_FALSE(equal(Value(numbered(50)), Value(numbered(51))));
}

TEST(Dictionary, IsNotChangedByTheBuilderThatStartsWithIt) {
  const Ref<Dictionary> first = numbered(20);
  DictionaryBuilder builder(*first);
  EXPECT_EQ(builder.count(), 20U);
  builder.set("key5", stringOf("changed"));
  builder.set("more", stringOf("more"));
  const Ref<Dictionary> second = builder.build();
  EXPECT_EQ(first->count(), 20U);
  EXPECT_EQ(first->objectForKey("key5").number().longValue(), 5);
  EXPECT_EQ(second->count(), 21U);
  EXPECT_EQ(descriptionOf(second->objectForKey("key5")), "changed");
}

TEST(Dictionary, LeavesItsBuilderEmpty) {
  DictionaryBuilder builder(*numbered(20));
  static_cast<void>(builder.build());
  EXPECT_EQ(builder.count(), 0U);
  builder.set("key1", stringOf("again"));
  const Ref<Dictionary> dictionary = builder.build();
  EXPECT_EQ(dictionary->count(), 1U);
  EXPECT_EQ(descriptionOf(dictionary->objectForKey("key1")), "again");
  EXPECT_TRUE(dictionary->objectForKey("key2").isNil());
}

TEST(Dictionary, AnswersMessages) {
  const Value dictionary = dictionaryOf({{stringOf("a"), stringOf("x")}});
  EXPECT_EQ(send(dictionary, Selector("count")).number().longValue(), 1);
  for (const char* name : {"objectForKey:", "valueForKey:"}) {
    const Selector selector(name);
    EXPECT_EQ(descriptionOf(send(dictionary, selector, {stringOf("a")})), "x");
    EXPECT_TRUE(send(dictionary, selector, {stringOf("b")}).isNil());
    EXPECT_TRUE(send(dictionary, selector, {Value()}).isNil());
  }
}

// A word equals a text of the same letters, which knows nothing of words.
class Word final : public Object {
 public:
  explicit Word(std::string_view letters) : letters_(String::create(letters)) {}

  [[nodiscard]] bool isEqual(const Value& other) const override { return letters_->isEqual(other); }
  [[nodiscard]] std::size_t hash() const override {
    if (letters_->isEmpty()) throw Exception("no letters");
    return letters_->hash();
  }

 private:
  Ref<String> letters_;
};

// Few entries and many, by texts that fit inside their string and by longer ones.
constexpr std::array<std::size_t, 4> kSizes{0, 3, 8, 40};
constexpr std::array<std::string_view, 2> kTexts{"short", "a text that is longer than most keys"};

TEST(Dictionary, FindsTheObjectThatEqualsAText) {
  for (const std::size_t size : kSizes) {
    for (const std::string_view text : kTexts) {
      DictionaryBuilder builder(*numbered(size));
      builder.set(make<Word>(text), Value::boolean(true));
      builder.set(make<Word>("other"), Value::boolean(false));
      EXPECT_TRUE(builder.objectForKey(stringOf(text)).isBoolean()) << size;
      EXPECT_TRUE(builder.objectForKey(stringOf("key")).isNil()) << size;
      // The entry is the word's.
      builder.set(text, Number::integer(7));
      EXPECT_EQ(builder.count(), size + 2);
      EXPECT_EQ(builder.objectForKey(stringOf(text)).number().intValue(), 7) << size;
    }
  }
}

TEST(Dictionary, StaysAsItIsWhenAKeyHasNoHash) {
  for (const std::size_t size : {0U, 3U, 8U, 9U, 16U, 40U}) {
    DictionaryBuilder builder(*numbered(size));
    EXPECT_THROW(builder.set(make<Word>(""), Value::boolean(true)), Exception);
    EXPECT_EQ(builder.count(), size);
    builder.set("next", Value::boolean(true));
    const Ref<Dictionary> dictionary = builder.build();
    EXPECT_TRUE(dictionary->objectForKey("next").isBoolean());
    EXPECT_TRUE(dictionary->objectForKey(Number::integer(4)).isNil());
    for (std::size_t i = 0; i < size; ++i) {
      EXPECT_EQ(dictionary->objectForKey("key" + std::to_string(i)).number().longValue(),
                static_cast<int>(i));
    }
  }
}

TEST(Dictionary, IsMadeOfKeysAndValuesByTurns) {
  for (const std::size_t size : {std::size_t{1}, std::size_t{8}, std::size_t{9}, std::size_t{40}}) {
    ValueVector all;
    for (std::size_t i = 0; i < size; ++i) {
      all.emplace_back(i % 3 == 0 ? Value(Number::integer(i)) : stringOf("k" + std::to_string(i)));
      all.emplace_back(Number::integer(i));
    }
    // The first key again.
    all.emplace_back(Number::real(0.0));
    all.emplace_back(stringOf("last"));
    const Ref<Dictionary> dictionary = Dictionary::ofKeysAndValues(all);
    EXPECT_EQ(dictionary->count(), size);
    EXPECT_EQ(descriptionOf(dictionary->objectForKey(Number::integer(0))), "last");
    EXPECT_EQ(dictionary->begin()->key.number().intValue(), 0);
    for (std::size_t i = 1; i < size; ++i) {
      const Value key = i % 3 == 0 ? Value(Number::integer(i)) : stringOf("k" + std::to_string(i));
      EXPECT_EQ(dictionary->objectForKey(key).number().longValue(), static_cast<int>(i));
    }
    EXPECT_TRUE(all[1].isNil());
  }
  EXPECT_EQ(Dictionary::ofKeysAndValues({})->count(), 0U);
}

}  // namespace
}  // namespace commandfilter
