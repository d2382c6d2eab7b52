#include "runtime/PropertyListShape.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "BinaryList.h"
#include "TestValues.h"
#include "runtime/Cast.h"
#include "runtime/PropertyList.h"

// The shape is looked at before anything is parsed, so parsing shows what was found.
namespace commandfilter {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using testing::BinaryList;

constexpr auto kTooDeep = "its collections are nested too deeply"sv;
constexpr auto kTooMany = "it holds too many values"sv;
constexpr auto kBroken = "it is broken"sv;
constexpr std::size_t kMillion = 1'000'000;

std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  result.reserve(text.size() * count);
  for (; count != 0; --count) result += text;
  return result;
}

// Why the bytes are refused; empty when they are a list.
std::string objectionTo(std::string_view bytes) { return parsePropertyList(bytes).reason(); }

std::string arraysInXML(std::size_t depth) {
  return "<plist>" + repeated("<array>", depth) + repeated("</array>", depth) + "</plist>";
}

std::string dictionariesInXML(std::size_t depth) {
  return "<plist>" + repeated("<dict><key>k</key>", depth) + "<true/>" +
         repeated("</dict>", depth) + "</plist>";
}

// Arrays in arrays, the last one empty.
std::string arraysInBinary(std::size_t depth) {
  BinaryList list;
  for (std::size_t i = 1; i < depth; ++i) list.addArray({i});
  return list.addArray({}).bytes();
}

std::size_t depthOf(const Value& value) {
  std::size_t depth = 0;
  Value at = value;
  while (true) {
    if (const auto* array = castTo<Array>(at)) {
      ++depth;
      at = array->isEmpty() ? Value() : Value((*array)[0]);
    } else if (const auto* dictionary = castTo<Dictionary>(at)) {
      ++depth;
      at = Value(dictionary->objectForKey("k"));
    } else {
      return depth;
    }
  }
}

TEST(PropertyListShape, LetsTheDeepestAllowedListsPass) {
  for (const std::size_t depth : {std::size_t{1}, std::size_t{50}, std::size_t{512}}) {
    for (const std::string& list :
         {arraysInXML(depth), dictionariesInXML(depth), arraysInBinary(depth)}) {
      Result<Value> value = parsePropertyList(list);
      ASSERT_TRUE(value) << depth << value.reason();
      EXPECT_EQ(depthOf(*value), depth);
    }
  }
}

TEST(PropertyListShape, RefusesDeeperLists) {
  for (const std::size_t depth : {std::size_t{513}, std::size_t{100'000}}) {
    EXPECT_EQ(objectionTo(arraysInXML(depth)), kTooDeep) << depth;
    EXPECT_EQ(objectionTo(dictionariesInXML(depth)), kTooDeep) << depth;
    EXPECT_EQ(objectionTo(arraysInBinary(depth)), kTooDeep) << depth;
    EXPECT_EQ(objectionTo("<plist>" + repeated("<array>", depth)), kTooDeep) << depth;
  }
}

TEST(PropertyListShape, CountsDepthOnlyWhereItIs) {
  const std::string flat =
      "<plist><array>" + repeated("<array></array><dict/><array/>", 1000) +
      repeated("<string>&lt;array&gt;</string>", 1000) + repeated("<!-- <array> --><![CDATA[", 0) +
      repeated("<!-- <array><dict> -->", 1000) +
      repeated("<string><![CDATA[<array><dict>]]></string>", 1000) + "</array></plist>";
  EXPECT_EQ(objectionTo(flat), "");
}

TEST(PropertyListShape, IsNotDeceivedByClosingTagsThatTheParserSkips) {
  const std::string closing = repeated("</array>", kMillion);
  const std::string opening = repeated("<array>", kMillion);
  for (const std::string& list :
       {"<!DOCTYPE plist [" + closing + "]><plist>" + opening,
        "<?xml \"?>" + closing + "\"?><plist>" + opening,
        "<plist><!-->" + closing + "--><plist>" + opening,
        "<plist><!--->" + closing + "--><plist>" + opening,
        "<plist a=\">" + closing + "\">" + opening, "<plist a=\"<!--\">" + opening,
        "<plist a=\"<![CDATA[\">" + opening, "<plist><array a=\"<?\">" + opening,
        "<plist>" + repeated("<array a=\"></array>\">", kMillion)}) {
    const std::string objection = objectionTo(list);
    EXPECT_TRUE(objection == kBroken || objection == kTooDeep) << objection << list.substr(0, 50);
  }
}

TEST(PropertyListShape, RefusesMarkupWithoutEnd) {
  for (const std::string_view end : {"<!-- "sv, "<![CDATA["sv, "<?xml "sv, "<array"sv, "<"sv}) {
    EXPECT_EQ(objectionTo("<plist><string>x</string>" + std::string(end)), kBroken) << end;
  }
  // Each tag would be searched for its end through all of the text.
  EXPECT_EQ(objectionTo(repeated("<dict", kMillion * 2) + "/>"), kBroken);
  EXPECT_EQ(objectionTo(repeated("<!--", kMillion * 2)), kBroken);
}

TEST(PropertyListShape, AcceptsAttributesAndPlainDeclarations) {
  EXPECT_EQ(objectionTo("<?xml version='1.0'?><!DOCTYPE plist><plist a=\"b\" c='d'>"
                        "<array e=\"f\" ><true g=\"h\"/></array ></plist >"),
            "");
}

TEST(PropertyListShape, RefusesMoreValuesThanAListMayHold) {
  EXPECT_EQ(
      objectionTo("<plist><array>" + repeated("<true/>", kPropertyListValues) + "</array></plist>"),
      kTooMany);
}

TEST(PropertyListShape, RefusesAListThatContainsItself) {
  EXPECT_EQ(objectionTo(BinaryList().addArray({0}).bytes()), "it contains itself");
  EXPECT_EQ(objectionTo(BinaryList().addArray({1}).addArray({2}).addArray({1}).bytes()),
            "it contains itself");
  EXPECT_EQ(objectionTo(BinaryList().addDictionary({1}, {0}).addString("k").bytes()),
            "it contains itself");
}

TEST(PropertyListShape, AllowsSharedParts) {
  BinaryList list;
  list.addArray({1, 1, 2}).addArray({2, 2}).addString("x");
  Result<Value> value = parsePropertyList(list.bytes());
  ASSERT_TRUE(value);
  EXPECT_EQ(
      descriptionOf(*value),
      "(\n    (\n        x,\n        x\n    ),\n    (\n        x,\n        x\n    ),\n    x\n)");
}

// Ten times ten times ten ... values, and twice twice twice ... arrays.
TEST(PropertyListShape, RefusesSharedPartsThatMultiply) {
  for (const std::size_t levels : {std::size_t{8}, std::size_t{16}, std::size_t{400}}) {
    for (const std::size_t times : {std::size_t{2}, std::size_t{10}}) {
      if (levels == 8 && times == 2) continue;
      BinaryList list;
      for (std::size_t i = 1; i <= levels; ++i) list.addArray(std::vector<std::size_t>(times, i));
      list.addString("laugh");
      const std::string objection = objectionTo(list.bytes());
      EXPECT_EQ(objection, levels == 16 && times == 2 ? "" : kTooMany) << levels << " " << times;
    }
  }
}

TEST(PropertyListShape, RefusesALargeTextThatIsSharedOften) {
  BinaryList list;
  list.addArray(std::vector<std::size_t>(2000, 1)).addString(std::string(kMillion, 'x'));
  EXPECT_EQ(objectionTo(list.bytes()), "its shared parts make it too large");
}

TEST(PropertyListShape, MeasuresDepthThroughSharedParts) {
  // The deep part is known already when it is met again farther down.
  constexpr std::size_t kDepth = 300;
  BinaryList list;
  list.addArray({1, kDepth + 1});
  for (std::size_t i = 1; i < kDepth; ++i) list.addArray({i + 1});
  list.addArray({});
  for (std::size_t i = kDepth + 1; i < 2 * kDepth; ++i) list.addArray({i + 1});
  list.addArray({1});
  EXPECT_EQ(objectionTo(list.bytes()), kTooDeep);
}

TEST(PropertyListShape, RefusesReferencesToNothing) {
  EXPECT_EQ(objectionTo(BinaryList().addArray({1}).bytes()), kBroken);
  EXPECT_EQ(objectionTo(BinaryList().addArray({UINT32_MAX}).bytes()), kBroken);
}

TEST(PropertyListShape, RefusesKeysThatWouldEndTheProcess) {
  // A NUL is cut off from other texts, but not from one of 16-bit units.
  const std::string unitsWithNUL = "\x63\x00\x61\x00\x00\x00\x62"s;
  EXPECT_EQ(objectionTo(BinaryList().addDictionary({1}, {1}).add(unitsWithNUL).bytes()), kBroken);
  Result<Value> ascii =
      parsePropertyList(BinaryList().addDictionary({1}, {1}).addString("a\0b"sv).bytes());
  EXPECT_TRUE(ascii);
  Result<Value> inXML = parsePropertyList("<plist><dict><key>a\0b</key><true/></dict></plist>"sv);
  EXPECT_EQ(static_cast<bool>(inXML), inXML.reason().empty());
}

TEST(PropertyListShape, RefusesCountsLargerThanTheFile) {
  for (const std::string_view object :
       {"\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv, "\xDF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv,
        "\xAF\x12\x00\xFF\xFF\xFF"sv, "\xAF\x20"sv, "\xAF"sv,
        "\x5F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv, "\x6F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv,
        "\xA5"sv}) {
    EXPECT_EQ(objectionTo(BinaryList().add(object).bytes()), kBroken);
  }
}

TEST(PropertyListShape, RefusesBrokenTrailers) {
  const std::string objects = "bplist00\x09\x08";
  const auto with = [&objects](std::size_t offsetSize, std::size_t referenceSize,
                               std::uint64_t count, std::uint64_t root, std::uint64_t table) {
    return objectionTo(objects +
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

TEST(PropertyListShape, RefusesMoreObjectsThanAListMayHold) {
  const std::size_t count = kPropertyListValues + 1;
  EXPECT_EQ(objectionTo("bplist00\x09" + std::string(count, '\x08') +
                        BinaryList::trailer(1, 1, count, 0, 9)),
            kTooMany);
}

TEST(PropertyListShape, DividesTextsWithManyCharacterReferences) {
  // One after the other, the parser would move the rest of the text for each of them.
  for (const std::size_t count : {std::size_t{63}, std::size_t{64}, std::size_t{65}, kMillion}) {
    const std::string content = repeated("&amp;", count);
    Result<Value> value = parsePropertyList("<plist><string>" + content + "</string></plist>");
    ASSERT_TRUE(value) << value.reason();
    EXPECT_EQ(castTo<String>(*value)->view(), std::string(count, '&'));
  }
  Result<Value> keys =
      parsePropertyList("<plist><dict><key>" + repeated("a&#228;&lt;", 100) + "</key><string>" +
                        repeated("&gt;b", 200) + "<![CDATA[&amp;]]></string></dict></plist>");
  ASSERT_TRUE(keys) << keys.reason();
  const Value& text = castTo<Dictionary>(*keys)->objectForKey(repeated("a\u00E4<", 100));
  ASSERT_NE(castTo<String>(text), nullptr);
  EXPECT_EQ(castTo<String>(text)->view(), repeated(">b", 200) + "&amp;");
}

}  // namespace
}  // namespace commandfilter
