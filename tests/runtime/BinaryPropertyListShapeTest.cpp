#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "BinaryList.h"
#include "Counts.h"
#include "TestValues.h"
#include "runtime/Cast.h"
#include "runtime/PropertyList.h"

// The shape is looked at before anything is parsed, so parsing shows what was found.
namespace commandfilter {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using testing::BinaryList;
using testing::kMillion;

constexpr auto kTooDeep = "its collections are nested too deeply"sv;
constexpr auto kTooMany = "it holds too many values"sv;
constexpr auto kBroken = "it is broken"sv;

// Why the bytes are refused; empty when they are a list.
std::string objectionToShape(std::string_view bytes) { return parsePropertyList(bytes).reason(); }

// Arrays in arrays, the last one empty.
std::string arraysInBinary(std::size_t depth) {
  BinaryList list;
  for (std::size_t i = 1; i < depth; ++i) list.addArray({i});
  return list.addArray({}).bytes();
}

std::size_t depthOf(Value value) {
  std::size_t depth = 0;
  while (const auto* array = castTo<Array>(value)) {
    ++depth;
    value = array->isEmpty() ? Value() : Value((*array)[0]);
  }
  return depth;
}

TEST(BinaryPropertyListShape, LetsTheDeepestAllowedListsPass) {
  for (const std::size_t depth : {std::size_t{1}, std::size_t{50}, std::size_t{512}}) {
    Result<Value> value = parsePropertyList(arraysInBinary(depth));
    ASSERT_TRUE(value) << depth << value.reason();
    EXPECT_EQ(depthOf(*value), depth);
  }
}

TEST(BinaryPropertyListShape, RefusesDeeperLists) {
  for (const std::size_t depth : {std::size_t{513}, std::size_t{100'000}}) {
    EXPECT_EQ(objectionToShape(arraysInBinary(depth)), kTooDeep) << depth;
  }
}

TEST(BinaryPropertyListShape, RefusesAListThatContainsItself) {
  EXPECT_EQ(objectionToShape(BinaryList().addArray({0}).bytes()), "it contains itself");
  EXPECT_EQ(objectionToShape(BinaryList().addArray({1}).addArray({2}).addArray({1}).bytes()),
            "it contains itself");
  EXPECT_EQ(objectionToShape(BinaryList().addDictionary({1}, {0}).addString("k").bytes()),
            "it contains itself");
}

TEST(BinaryPropertyListShape, AllowsSharedParts) {
  BinaryList list;
  list.addArray({1, 1, 2}).addArray({2, 2}).addString("x");
  Result<Value> value = parsePropertyList(list.bytes());
  ASSERT_TRUE(value);
  EXPECT_EQ(
      descriptionOf(*value),
      "(\n    (\n        x,\n        x\n    ),\n    (\n        x,\n        x\n    ),\n    x\n)");
}

// Ten times ten times ten ... values, and twice twice twice ... arrays.
TEST(BinaryPropertyListShape, RefusesSharedPartsThatMultiply) {
  for (const std::size_t levels : {std::size_t{8}, std::size_t{16}, std::size_t{400}}) {
    for (const std::size_t times : {std::size_t{2}, std::size_t{10}}) {
      if (levels == 8 && times == 2) continue;
      BinaryList list;
      for (std::size_t i = 1; i <= levels; ++i) list.addArray(std::vector<std::size_t>(times, i));
      list.addString("laugh");
      const std::string objection = objectionToShape(list.bytes());
      EXPECT_EQ(objection, levels == 16 && times == 2 ? "" : kTooMany) << levels << " " << times;
    }
  }
}

TEST(BinaryPropertyListShape, RefusesALargeTextThatIsSharedOften) {
  BinaryList list;
  list.addArray(std::vector<std::size_t>(2000, 1)).addString(std::string(kMillion, 'x'));
  EXPECT_EQ(objectionToShape(list.bytes()), "its shared parts make it too large");
}

TEST(BinaryPropertyListShape, MeasuresDepthThroughSharedParts) {
  // The deep part is known already when it is met again farther down.
  constexpr std::size_t kDepth = 300;
  BinaryList list;
  list.addArray({1, kDepth + 1});
  for (std::size_t i = 1; i < kDepth; ++i) list.addArray({i + 1});
  list.addArray({});
  for (std::size_t i = kDepth + 1; i < 2 * kDepth; ++i) list.addArray({i + 1});
  list.addArray({1});
  EXPECT_EQ(objectionToShape(list.bytes()), kTooDeep);
}

TEST(BinaryPropertyListShape, RefusesReferencesToNothing) {
  EXPECT_EQ(objectionToShape(BinaryList().addArray({1}).bytes()), kBroken);
  EXPECT_EQ(objectionToShape(BinaryList().addArray({UINT32_MAX}).bytes()), kBroken);
}

TEST(BinaryPropertyListShape, RefusesKeysThatWouldEndTheProcess) {
  // A NUL is cut off from other texts, but not from one of 16-bit units.
  const std::string unitsWithNUL = "\x63\x00\x61\x00\x00\x00\x62"s;
  EXPECT_EQ(objectionToShape(BinaryList().addDictionary({1}, {1}).add(unitsWithNUL).bytes()),
            kBroken);
  Result<Value> ascii =
      parsePropertyList(BinaryList().addDictionary({1}, {1}).addString("a\0b"sv).bytes());
  EXPECT_TRUE(ascii);
}

TEST(BinaryPropertyListShape, RefusesCountsLargerThanTheFile) {
  for (const std::string_view object :
       {"\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv, "\xDF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv,
        "\xAF\x12\x00\xFF\xFF\xFF"sv, "\xAF\x20"sv, "\xAF"sv,
        "\x5F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv, "\x6F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv,
        "\xA5"sv}) {
    EXPECT_EQ(objectionToShape(BinaryList().add(object).bytes()), kBroken);
  }
}

TEST(BinaryPropertyListShape, RefusesBrokenTrailers) {
  const std::string objects = "bplist00\x09\x08";
  const auto with = [&objects](std::size_t offsetSize, std::size_t referenceSize,
                               std::uint64_t count, std::uint64_t root, std::uint64_t table) {
    return objectionToShape(objects +
                            BinaryList::trailer(offsetSize, referenceSize, count, root, table));
  };
  EXPECT_EQ(with(1, 1, 1, 0, 9), "");
  EXPECT_EQ(with(0, 1, 1, 0, 9), kBroken);
  EXPECT_EQ(with(9, 1, 1, 0, 9), kBroken);
  EXPECT_EQ(with(1, 0, 1, 0, 9), kBroken);
  EXPECT_EQ(with(1, 9, 1, 0, 9), kBroken);
  EXPECT_EQ(with(1, 1, 0, 0, 9), kBroken);
  EXPECT_EQ(with(1, 1, 1, 1, 9), kBroken);
  EXPECT_EQ(with(1, 1, 2, 0, 9), kBroken);
  EXPECT_EQ(with(1, 1, UINT64_MAX, 0, 9), kBroken);
  EXPECT_EQ(with(8, 1, UINT64_MAX / 8 + 1, 0, 9), kBroken);
  EXPECT_EQ(with(1, 1, 1, 0, 11), kBroken);
  EXPECT_EQ(with(1, 1, 1, 0, UINT64_MAX), kBroken);
}

TEST(BinaryPropertyListShape, RefusesMoreObjectsThanAListMayHold) {
  const std::size_t count = kPropertyListValues + 1;
  EXPECT_EQ(objectionToShape("bplist00\x09" + std::string(count, '\x08') +
                             BinaryList::trailer(1, 1, count, 0, 9)),
            kTooMany);
}

}  // namespace
}  // namespace commandfilter
