#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "check/FileLines.h"
#include "check/PropertyListPlaces.h"

namespace commandfilter::testing {
namespace {

using tools::ByteRange;
using tools::KeyPath;
using tools::PropertyListPlaces;

// The bytes of a part of the text under the key "K"; none when it is not known.
std::optional<std::string> partOf(const std::string& content, std::string_view text,
                                  const SourceRange& range) {
  const std::string file =
      "<plist><dict><key>K</key><string>" + content + "</string></dict></plist>";
  const KeyPath path{nullptr, "K"};
  const auto place = PropertyListPlaces(file).ofText(path, text, range);
  if (!place) return std::nullopt;
  return file.substr(place->begin, place->end - place->begin);
}

TEST(PropertyListPlaces, FindPartsOfPlainTexts) {
  EXPECT_EQ(partOf("abc def", "abc def", {4, 7}), "def");
  EXPECT_EQ(partOf("abc", "abc", {3, 3}), "");
  EXPECT_EQ(partOf("abc", "abc", {0, 3}), "abc");
}

TEST(PropertyListPlaces, SeeWhatStandsForACharacter) {
  EXPECT_EQ(partOf("a &lt; b", "a < b", {2, 3}), "&lt;");
  EXPECT_EQ(partOf("a &lt; b", "a < b", {4, 5}), "b");
  EXPECT_EQ(partOf("&#65;&#x42;c", "ABc", {1, 2}), "&#x42;");
  EXPECT_EQ(partOf("a<![CDATA[<b>]]>c", "a<b>c", {1, 4}), "<b>]]>");
  EXPECT_EQ(partOf("a<!-- b -->c", "ac", {1, 2}), "c");
}

TEST(PropertyListPlaces, CountUnitsOfSixteenBits) {
  EXPECT_EQ(partOf("\xC3\xA9\xF0\x9D\x84\x9E x", "\xC3\xA9\xF0\x9D\x84\x9E x", {4, 5}), "x");
}

TEST(PropertyListPlaces, TakeLineEndsOfOtherSystemsForOneCharacter) {
  EXPECT_EQ(partOf("a\r\nb\r\nc", "a\nb\nc", {4, 5}), "c");
}

TEST(PropertyListPlaces, PointAtTheBeginningForAnotherText) {
  EXPECT_EQ(partOf("abc", "something else", {4, 7}), "");
}

TEST(PropertyListPlaces, KnowNothingOfWhatIsNoXML) {
  const KeyPath path{nullptr, "K"};
  EXPECT_EQ(PropertyListPlaces("bplist00").ofKey(path), std::nullopt);
  EXPECT_EQ(PropertyListPlaces("<plist><dict><key>K</key>").ofKey(path), std::nullopt);
  EXPECT_EQ(PropertyListPlaces("<plist><dict/></plist>").ofKey(path), std::nullopt);
  EXPECT_EQ(PropertyListPlaces("").ofKey(path), std::nullopt);
}

TEST(PropertyListPlaces, FindKeysInsideOfOthers) {
  const std::string file =
      "<dict><key>A</key><dict><key>B</key><string>x</string></dict><key>B</key><true/></dict>";
  const PropertyListPlaces places(file);
  const KeyPath a{nullptr, "A"};
  const KeyPath inner{&a, "B"};
  const KeyPath outer{nullptr, "B"};
  EXPECT_EQ(places.ofKey(inner)->begin, file.find('B'));
  EXPECT_EQ(places.ofKey(outer)->begin, file.rfind('B'));
  EXPECT_TRUE(places.duplicates().empty());
}

TEST(PropertyListPlaces, TellOfKeysThatStandTwice) {
  const std::string file = "<dict><key>A</key><true/><key>A</key><false/></dict>";
  const PropertyListPlaces places(file);
  ASSERT_EQ(places.duplicates().size(), 1U);
  EXPECT_EQ(places.duplicates()[0].place.begin, file.find('A'));
  EXPECT_THAT(places.duplicates()[0].keys, ::testing::ElementsAre("A"));
}

TEST(FileLines, CountLinesAndCharactersFromOne) {
  const std::string text = "ab\n\xC3\xA9x\r\ny\rz";
  tools::FileLines lines(text);
  const auto place = [&](char c) {
    const tools::LineAndColumn found = lines.placeOf(text.find(c));
    return std::to_string(found.line) + ":" + std::to_string(found.column);
  };
  EXPECT_EQ(place('b'), "1:2");
  EXPECT_EQ(place('x'), "2:2");
  EXPECT_EQ(place('y'), "3:1");
  EXPECT_EQ(place('z'), "4:1");
  EXPECT_EQ(place('a'), "1:1");
}

TEST(FileLines, MarkThePlaceInItsLine) {
  const std::string text = "first\n\t  a bad\x01 word\nlast";
  const std::size_t at = text.find("bad");
  EXPECT_EQ(tools::FileLines(text).excerpt({at, at + 3}, "  "), "  a bad? word\n    ^^^\n");
  EXPECT_EQ(tools::FileLines(text).excerpt({at, at + 100}, ""), "a bad? word\n  ^^^^^^^^^\n");
  EXPECT_EQ(tools::FileLines(text).excerpt({at, at}, ""), "a bad? word\n  ^\n");
}

}  // namespace
}  // namespace commandfilter::testing
