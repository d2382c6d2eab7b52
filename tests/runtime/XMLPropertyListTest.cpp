#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Counts.h"
#include "ReadBothWays.h"
#include "TestValues.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Description.h"
#include "runtime/Dictionary.h"
#include "runtime/PropertyList.h"
#include "runtime/String.h"

// Lists in XML, as they are read by whoever asks for a property list.
namespace commandfilter {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using ::testing::HasSubstr;
using testing::kMillion;
using testing::list;
using testing::parsed;
using testing::readBothWays;

std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  result.reserve(text.size() * count);
  for (; count != 0; --count) result += text;
  return result;
}

// Why the bytes are refused; empty when they are a list.
std::string objectionTo(std::string_view bytes) { return readBothWays(bytes).reason(); }

Value scalar(std::string_view element, std::string_view text) {
  const std::string name(element);
  return parsed(list("<" + name + ">" + std::string(text) + "</" + name + ">"));
}

// The same without the place, which is in the first line.
std::string objectionToScalar(std::string_view element, std::string_view text) {
  const std::string name(element);
  const std::string reason =
      objectionTo(list("<" + name + ">" + std::string(text) + "</" + name + ">"));
  EXPECT_EQ(reason.find("line 1, column "), 0U) << reason << " " << text;
  return reason.substr(std::min(reason.find(": "), reason.size() - 2) + 2);
}

TEST(XMLPropertyList, ReadsIntegersAsTheyAreWritten) {
  EXPECT_EQ(scalar("integer", " \n5\t").number(), Number::integer(5));
  EXPECT_EQ(scalar("integer", "+5").number().longValue(), 5);
  EXPECT_EQ(scalar("integer", "-0x10").number().longValue(), -16);
  EXPECT_EQ(scalar("integer", "0XfF").number().longValue(), 255);
  EXPECT_EQ(scalar("integer", "0xFFFFFFFFFFFFFFFF").number(),
            Number::integer(std::numeric_limits<std::uint64_t>::max()));
  EXPECT_EQ(scalar("integer", "-0x8000000000000000").number(),
            Number::integer(std::numeric_limits<std::int64_t>::min()));
  // A zero in front is no sign of octal digits.
  EXPECT_EQ(scalar("integer", "010").number().longValue(), 10);
  EXPECT_EQ(scalar("integer", "5<!-- and -->6&#55;<![CDATA[8]]>").number().longValue(), 5678);
}

TEST(XMLPropertyList, RefusesWhatIsNoInteger) {
  for (const std::string_view text :
       {"", " ", "5x", "x", "5.0", "1e3", "- 5", "--5", "+-5", "-+5", "0x", "0x-1", "-", "5 6",
        "18446744073709551616", "-9223372036854775809", "0x10000000000000000"}) {
    EXPECT_EQ(objectionToScalar("integer", text), "an <integer> must be a whole number of 64 bits")
        << text;
  }
}

TEST(XMLPropertyList, ReadsReals) {
  EXPECT_EQ(scalar("real", " 1.5 ").number(), Number::real(1.5));
  EXPECT_EQ(scalar("real", "1").number().encoding(), 'd');
  EXPECT_EQ(scalar("real", "+.5e-1").number().doubleValue(), 0.05);
  EXPECT_EQ(scalar("real", "-5.").number().doubleValue(), -5);
  EXPECT_EQ(scalar("real", "0.1").number().doubleValue(), 0.1);
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(scalar("real", "+infinity").number().doubleValue(), infinity);
  EXPECT_EQ(scalar("real", "-inf").number().doubleValue(), -infinity);
  EXPECT_EQ(descriptionOf(scalar("real", "nan")), "nan");
}

TEST(XMLPropertyList, RefusesWhatIsNoReal) {
  for (const std::string_view text :
       {"", "x", "1,5", "1.5x", "+-1", "--1", "0x1p3", "1e", "1e400"}) {
    EXPECT_EQ(objectionToScalar("real", text),
              "a <real> must be a number such as 1.5, within the range of reals")
        << text;
  }
}

TEST(XMLPropertyList, ReadsDates) {
  const auto seconds = [](std::string_view text) {
    const Value value = scalar("date", text);
    const auto* date = castTo<Date>(value);
    return date != nullptr ? date->secondsSince1970() : -1;
  };
  EXPECT_EQ(seconds("1970-01-01T00:00:00Z"), 0);
  EXPECT_EQ(seconds(" 2020-02-29T23:59:59Z\n"), 1583020799);
  EXPECT_EQ(seconds("2020-01-31T12:00:00.25Z"), 1580472000.25);
  EXPECT_EQ(seconds("2016-12-31T23:59:60Z"), 1483228800);
  EXPECT_EQ(seconds("0001-01-01T00:00:00Z"), -62135596800);
  EXPECT_EQ(seconds("9999-12-31T23:59:59Z"), 253402300799);
}

TEST(XMLPropertyList, RefusesWhatIsNoDate) {
  for (const std::string_view text : {"",
                                      "x",
                                      "2020-01-31",
                                      "2020-01-31T12:00:00",
                                      "2020-01-31T12:00:00+01:00",
                                      "2020-01-31 12:00:00Z",
                                      "2020-1-1T1:2:3Z",
                                      "2021-02-29T00:00:00Z",
                                      "2020-13-01T00:00:00Z",
                                      "2020-00-01T00:00:00Z",
                                      "2020-01-00T00:00:00Z",
                                      "2020-01-01T24:00:00Z",
                                      "2020-01-01T00:60:00Z",
                                      "2020-01-01T00:00:61Z",
                                      "2020-01-01T00:00:00.Z",
                                      "2020-01-01T00:00:00.5",
                                      "20200-01-01T00:00:00Z",
                                      "-2020-01-01T00:00:00Z",
                                      "2020-01-01T00:00:00ZZ",
                                      "2020-01-01T+1:00:00Z"}) {
    EXPECT_EQ(objectionToScalar("date", text), "a <date> must be written as 2020-01-31T12:00:00Z")
        << text;
  }
}

TEST(XMLPropertyList, ReadsData) {
  const auto bytes = [](std::string_view text) {
    const Value value = scalar("data", text);
    const auto* data = castTo<Data>(value);
    return data != nullptr ? data->bytes() : "none";
  };
  EXPECT_EQ(bytes(""), "");
  EXPECT_EQ(bytes("\n\tAA EC\n\t/w=\n=\n"), "\x00\x01\x02\xFF"sv);
  EXPECT_EQ(bytes("YWJj"), "abc");
  EXPECT_EQ(bytes("YWI="), "ab");
  EXPECT_EQ(bytes("+/+/"), "\xFB\xFF\xBF");
}

TEST(XMLPropertyList, RefusesWhatIsNoBase64) {
  for (const std::string_view text : {"A", "AA", "AAA", "AA*A", "AA=A", "=",
                                      "AA===", "A===", "====", "AA==AA==", "AA==A", "-_-_"}) {
    EXPECT_EQ(objectionToScalar("data", text), "<data> must be in base64, filled up with = signs")
        << text;
  }
}

TEST(XMLPropertyList, ReadsWhatXMLAllowsBesideTheValues) {
  EXPECT_EQ(descriptionOf(parsed("<?xml version='1.0' encoding='ISO-8859-1' standalone='yes'?>\n"
                                 "<!-- a --><!DOCTYPE plist SYSTEM \"x\"><?a b?>\n"
                                 "<plist a=\"b\" xmlns='c'><!-- <dict> -->\n<dict d=\"e\" >\n"
                                 "<key>k</key><!-- - --><true></true ><?pi <dict>?></dict >"
                                 "</plist >\n<!-- end -->\n")),
            "{\n    k = 1;\n}");
  EXPECT_EQ(descriptionOf(parsed("<array><string/><array/><dict/></array>")),
            "(\n    \"\",\n    (\n    ),\n    {\n    }\n)");
  EXPECT_EQ(descriptionOf(parsed(list("<dict><key/><true/></dict>"))), "{\n    \"\" = 1;\n}");
  // A reference to an object, as archives have them, is a dictionary like others.
  EXPECT_EQ(descriptionOf(parsed(list("<dict><key>CF$UID</key><integer>7</integer></dict>"))),
            "{\n    CF$UID = 7;\n}");
  EXPECT_EQ(descriptionOf(scalar("string", "a\r\nb\rc&#13;&#xA;")), "a\nb\nc\r\n");
}

TEST(XMLPropertyList, SaysWhereItIsBroken) {
  EXPECT_EQ(objectionTo("<plist>\n</list>"), "line 2, column 3: mismatched tag");
  EXPECT_EQ(objectionTo("<plist>\n<string>x"), "line 2, column 10: no element found");
  EXPECT_EQ(objectionTo(list("\r\n\u00E4\r\n")),
            "line 2, column 1: text outside of an element that may hold it");
  EXPECT_EQ(objectionTo(list("<dict>\n<key>k</key></dict>")),
            "line 2, column 13: a <key> without a value");
  EXPECT_EQ(objectionTo(list("\n<array>\n<integer>\n</integer></array>")),
            "line 4, column 1: an <integer> must be a whole number of 64 bits");
}

TEST(XMLPropertyList, RefusesWhatNoListHas) {
  const std::vector<std::pair<std::string, std::string_view>> cases{
      {list(""), "a property list without a value"},
      {"<plist/>", "a property list without a value"},
      {list("<true/><true/>"), "a second value beside the first"},
      {list("<plist><true/></plist>"), "<plist> where a value must stand"},
      {list("<array><plist/></array>"), "<plist> where a value must stand"},
      {list("<key>k</key>"), "<key> where a value must stand"},
      {list("<array><key>k</key></array>"), "<key> where a value must stand"},
      {list("<dict><key>a</key><key>b</key></dict>"), "<key> where a value must stand"},
      {list("<dict><true/></dict>"), "<true> where a <key> must stand"},
      {list("<dict><key>a</key><true/><false/></dict>"), "<false> where a <key> must stand"},
      {list("<string>a<true/></string>"), "<true> inside of a value"},
      {list("<dict><key>a<key>b</key></key></dict>"), "<key> inside of a value"},
      {list("<true><false/></true>"), "<false> inside of a value"},
      {list("<true>yes</true>"), "text outside of an element that may hold it"},
      {list("<dict>a<key>k</key><true/></dict>"), "text outside of an element that may hold it"},
      {list("<array>a</array>"), "text outside of an element that may hold it"},
      {list("<array><![CDATA[a]]></array>"), "text outside of an element that may hold it"},
      {list("<array>&#33;</array>"), "text outside of an element that may hold it"},
      {list("<null/>"), "no property list has <null>"},
      {list("<String>a</String>"), "no property list has <String>"},
      {"<p:plist xmlns:p='x'/>", "no property list has <p:plist>"},
      {list("<" + repeated("n", 1000) + "/>"), "an element that no property list has"},
      {list("<string>&nbsp;</string>"), "undefined entity; only &amp; &lt;"},
      {"<!DOCTYPE plist SYSTEM 'x'>" + list("<string>&nbsp;</string>"),
       "undefined entity; only &amp; &lt;"},
      {"<!DOCTYPE plist [ ]>" + list("<true/>"), "declarations in the document type"},
  };
  for (const auto& [text, reason] : cases) {
    EXPECT_THAT(objectionTo(text), HasSubstr(": " + std::string(reason))) << text;
  }
}

TEST(XMLPropertyList, RefusesWhatIsNotWellFormed) {
  for (const std::string& text :
       {list("<string>a & b</string>"), list("<string>a < b</string>"),
        list("<string>\x01</string>"), list("<string>&#0;</string>"),
        list("<string>&#xD800;</string>"), list("<string>&#x110000;</string>"),
        list("<string>a]]>b</string>"), list("<!-- a -- b --><true/>"), list("<true a='b' a='c'/>"),
        list("<true a=b/>"), list("<true/>") + "<true/>", list("<true/>") + "x",
        "\n<?xml version='1.0'?>" + list("<true/>"), list("<string>\0</string>"s),
        list("<string>\xEF\xBF\xBF</string>")}) {
    EXPECT_THAT(objectionTo(text), HasSubstr("line ")) << text;
  }
}

TEST(XMLPropertyList, ExpandsNoEntitiesOfItsOwn) {
  std::string laughs = "<!DOCTYPE plist [<!ENTITY a0 'ha'>";
  for (int i = 1; i < 30; ++i) {
    const std::string before = "&a" + std::to_string(i - 1) + ";";
    laughs += "<!ENTITY a" + std::to_string(i) + " '" + repeated(before, 10) + "'>";
  }
  EXPECT_EQ(objectionTo(laughs + "]>" + list("<string>&a29;</string>")),
            "line 1, column 17: declarations in the document type");
  EXPECT_EQ(objectionTo("<!DOCTYPE plist [<!ENTITY f SYSTEM '/etc/passwd'>]>" +
                        list("<string>&f;</string>")),
            "line 1, column 17: declarations in the document type");
}

TEST(XMLPropertyList, SharesKeysThatOccurAgain) {
  const Value value = parsed(list(
      "<array><dict><key>Name</key><true/></dict><dict><key>Name</key><true/></dict></array>"));
  const auto* array = castTo<Array>(value);
  ASSERT_NE(array, nullptr);
  const auto keyOf = [array](std::size_t i) {
    return castTo<Dictionary>((*array)[i])->begin()->key.object();
  };
  EXPECT_EQ(keyOf(0), keyOf(1));
}

TEST(XMLPropertyList, TakesKeysApartThatLookAlike) {
  std::string content;
  constexpr std::size_t kKeys = 1000;
  for (std::size_t i = 0; i < kKeys; ++i) {
    content += "<key>" + std::to_string(i) + "</key><integer>" + std::to_string(i) + "</integer>";
  }
  const Value value = parsed(list("<dict>" + content + "</dict>"));
  const auto* dictionary = castTo<Dictionary>(value);
  ASSERT_NE(dictionary, nullptr);
  ASSERT_EQ(dictionary->count(), kKeys);
  for (const DictionaryEntry& entry : *dictionary) {
    EXPECT_EQ(descriptionOf(entry.key), descriptionOf(entry.value));
  }
}

TEST(XMLPropertyList, IsNestedAsDeepAsTheLimitAndNoDeeper) {
  const auto arrays = [](std::size_t depth) {
    return list(repeated("<array>", depth) + repeated("</array>", depth));
  };
  const auto dictionaries = [](std::size_t depth) {
    return list(repeated("<dict><key>k</key>", depth) + "<true/>" + repeated("</dict>", depth));
  };
  EXPECT_EQ(objectionTo(arrays(512)), "");
  EXPECT_EQ(objectionTo(dictionaries(512)), "");
  // One that has no content is as deep as one that could.
  for (const std::string_view empty : {"<array/>", "<dict/>", "<dict></dict>"}) {
    const auto inside = [empty](std::size_t depth) {
      return list(repeated("<array>", depth) + std::string(empty) + repeated("</array>", depth));
    };
    EXPECT_EQ(objectionTo(inside(511)), "");
    EXPECT_THAT(objectionTo(inside(512)), HasSubstr("its collections are nested too deeply"));
  }
  for (const std::size_t depth : {std::size_t{513}, kMillion}) {
    EXPECT_THAT(objectionTo(arrays(depth)), HasSubstr("its collections are nested too deeply"));
    EXPECT_THAT(objectionTo(dictionaries(depth)), HasSubstr("nested too deeply"));
    EXPECT_THAT(objectionTo(repeated("<array>", depth)), HasSubstr("nested too deeply"));
  }
}

TEST(XMLPropertyList, CountsDepthOnlyWhereItIs) {
  EXPECT_EQ(
      objectionTo(list("<array>" + repeated("<array></array><dict/><array/>", 1000) +
                       repeated("<string>&lt;array&gt;</string>", 1000) +
                       repeated("<!-- <array><dict> -->", 1000) +
                       repeated("<string><![CDATA[<array><dict>]]></string>", 1000) + "</array>")),
      "");
}

TEST(XMLPropertyList, IsNotDeceivedByMarkupInsideOfOtherMarkup) {
  const std::string closing = repeated("</array>", kMillion);
  const std::string opening = repeated("<array>", kMillion);
  const auto joined = [](std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) text.append(part);
    return text;
  };
  for (const std::string& text :
       {joined({"<!DOCTYPE plist [", closing, "]><plist>", opening}),
        joined({"<?xml \"?>", closing, "\"?><plist>", opening}),
        joined({"<plist><!-->", closing, "--><plist>", opening}),
        joined({"<plist a=\">", closing, "\">", opening}), joined({"<plist a=\"<!--\">", opening}),
        joined({"<plist><array a=\"<?\">", opening}),
        joined({"<plist>", repeated("<array a=\"&lt;/array>\">", kMillion)})}) {
    EXPECT_NE(objectionTo(text), "") << text.substr(0, 50);
  }
}

TEST(XMLPropertyList, HoldsAsManyValuesAsTheLimitAndNoMore) {
  // The array is one of them.
  EXPECT_EQ(
      objectionTo(list("<array>" + repeated("<true/>", kPropertyListValues - 1) + "</array>")), "");
  EXPECT_THAT(objectionTo(list("<array>" + repeated("<true/>", kPropertyListValues) + "</array>")),
              HasSubstr(": it holds too many values"));
}

// Each of these takes a time that grows with its size only.
TEST(XMLPropertyList, ReadsWhatIsLongOrRepeated) {
  const Value references = scalar("string", repeated("&amp;&#228;", kMillion));
  ASSERT_NE(castTo<String>(references), nullptr);
  EXPECT_EQ(castTo<String>(references)->view(), repeated("&\u00E4", kMillion));
  const Value lines = scalar("string", repeated("a\n", kMillion));
  EXPECT_EQ(castTo<String>(lines)->view().size(), 2 * kMillion);
  std::string attributes = "<true";
  for (std::size_t i = 0; i < kMillion / 10; ++i) attributes += " a" + std::to_string(i) + "=''";
  EXPECT_EQ(objectionTo(list(attributes + "/>")), "");
  EXPECT_EQ(objectionTo(list("<!-- " + repeated("<", 2 * kMillion) + " --><true/>")), "");
  EXPECT_EQ(objectionTo("<?xml version='1.0'?>" + repeated("<!-- -->\n", kMillion) +
                        list(repeated("\n", kMillion) + "<true/>")),
            "");
}

TEST(XMLPropertyList, RefusesMarkupWithoutEnd) {
  for (const std::string_view end : {"<!-- "sv, "<![CDATA["sv, "<?xml "sv, "<array"sv, "<"sv}) {
    EXPECT_THAT(objectionTo("<plist><string>x</string>" + std::string(end)), HasSubstr("line 1"))
        << end;
  }
  EXPECT_NE(objectionTo(repeated("<dict", kMillion * 2) + "/>"), "");
  EXPECT_NE(objectionTo(repeated("<!--", kMillion * 2)), "");
}

// What an observer is told, each part with what stands in the file there.
class Record final : public PropertyListObserver {
 public:
  explicit Record(std::string_view file) : file_(file) {}

  void begin(Part part, std::size_t place) override {
    text += part == Part::Collection ? "[" : part == Part::Key ? "key(" : "(";
    open_.push_back({part, place});
  }
  void append(std::string_view piece, std::size_t place) override {
    text += std::string(piece) + "@" + std::string(file_.substr(place, 1)) + " ";
  }
  void end(std::size_t place) override {
    const auto [part, begin] = open_.back();
    open_.pop_back();
    text += part == Part::Collection ? "]" : std::string(file_.substr(begin, place - begin)) + ")";
  }

  std::string text;

 private:
  std::string_view file_;
  std::vector<std::pair<Part, std::size_t>> open_;
};

TEST(XMLPropertyList, TellsAnObserverWhereItsPartsStand) {
  const std::string file = "\xEF\xBB\xBF" + list(
                                                "<dict><key>k</key><array><string>a&lt;b</string>"
                                                "<integer>5</integer><true/></array></dict>");
  Record record(file);
  EXPECT_TRUE(parsePropertyList(file, &record));
  EXPECT_EQ(record.text, "[key(k@k k)[(a@a <@& b@b a&lt;b)(5@5 5)()]]");
  Record none("");
  EXPECT_FALSE(parsePropertyList("bplist00", &none));
  EXPECT_EQ(none.text, "");
}

}  // namespace
}  // namespace commandfilter
