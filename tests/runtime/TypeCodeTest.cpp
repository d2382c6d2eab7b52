#include "runtime/TypeCode.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

#include "TestObjects.h"
#include "TestValues.h"

namespace commandfilter {
namespace {

template <typename T>
constexpr char kCode = detail::PassingOf<T>::kCode;

static_assert(kCode<void> == 'v');
static_assert(kCode<bool> == 'c');
static_assert(kCode<std::int8_t> == 'c');
static_assert(kCode<std::uint8_t> == 'C');
static_assert(kCode<std::int16_t> == 's');
static_assert(kCode<std::uint16_t> == 'S');
static_assert(kCode<std::int32_t> == 'i');
static_assert(kCode<std::uint32_t> == 'I');
static_assert(kCode<std::int64_t> == 'q');
static_assert(kCode<long long> == 'q');
static_assert(kCode<std::uint64_t> == 'Q');
static_assert(kCode<unsigned long long> == 'Q');
static_assert(kCode<float> == 'f');
static_assert(kCode<double> == 'd');
static_assert(kCode<const char*> == '*');
static_assert(kCode<Value> == '@');
static_assert(kCode<const Value&> == '@');
static_assert(kCode<String*> == '@');
static_assert(kCode<const String*> == '@');
static_assert(kCode<testing::INamed*> == '@');
static_assert(kCode<RefPtr<String>> == '@');
static_assert(kCode<const RefPtr<String>&> == '@');
static_assert(kCode<Ref<String>> == '@');

TEST(TypeCode, SpellsEveryCode) {
  for (const char& code : std::string_view("cCsSiIqQfd@v")) {
    EXPECT_EQ(typeCodeSpelling(code), std::string_view(&code, 1));
  }
  EXPECT_EQ(typeCodeSpelling('*'), "r*");
  EXPECT_EQ(typeCodeSpelling('x'), "");
  EXPECT_EQ(typeCodeSpelling('\0'), "");
}

TEST(TypeCode, TurnsTextIntoStringsAndBack) {
  EXPECT_EQ(descriptionOf(detail::valueOfCString("\u00E4")), "\u00E4");
  EXPECT_TRUE(detail::valueOfCString(nullptr).isNil());
  EXPECT_TRUE(detail::valueOfCString("\xFF").isNil());
  const Value string = testing::stringOf("text");
  EXPECT_STREQ(detail::cStringOfValue(string), "text");
  EXPECT_EQ(detail::cStringOfValue(Value()), nullptr);
  EXPECT_EQ(detail::cStringOfValue(Number::integer(1)), nullptr);
  EXPECT_EQ(detail::cStringOfValue(testing::arrayOf({})), nullptr);
}

TEST(TypeCode, GivesNilResultsAsNil) {
  EXPECT_TRUE(detail::Passing<String*>::result(nullptr).isNil());
  EXPECT_TRUE(detail::Passing<RefPtr<String>>::result(nullptr).isNil());
  EXPECT_TRUE(detail::Passing<const char*>::result(nullptr).isNil());
  EXPECT_TRUE(detail::Passing<Value>::result(Value()).isNil());
}

TEST(TypeCode, SharesAPointerThatIsAResult) {
  const Ref<String> string = String::create("text");
  const Value result = detail::Passing<String*>::result(string.get());
  EXPECT_EQ(string->referenceCount(), 2U);
}

TEST(TypeCode, HoldsAnArgumentThatIsAnOwningPointer) {
  const Value string = testing::stringOf("text");
  const RefPtr<String> argument = detail::Passing<RefPtr<String>>::argument(string);
  EXPECT_EQ(argument->referenceCount(), 2U);
  EXPECT_FALSE(detail::Passing<RefPtr<Array>>::argument(string));
}

}  // namespace
}  // namespace commandfilter
