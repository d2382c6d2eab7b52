#include "runtime/PropertyList.h"

#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "BinaryList.h"
#include "ReadBothWays.h"
#include "TestFiles.h"
#include "TestValues.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Data.h"
#include "runtime/Date.h"

namespace commandfilter {
namespace {

using namespace std::string_view_literals;
using testing::BinaryList;
using testing::makeFifo;
using testing::makeFile;
using testing::parsed;
using testing::readBothWays;
using testing::TemporaryFolder;

constexpr auto kHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n"sv;

std::string xml(std::string_view content) {
  return std::string(kHeader) + std::string(content) + "\n</plist>\n";
}

// What the bytes say; nil, with a failure of the test, when they are no list.
std::string failureOf(std::string_view bytes) {
  const Result<Value> result = readBothWays(bytes);
  EXPECT_FALSE(result);
  return result.reason();
}

constexpr auto kSample = R"(<dict>
  <key>Text</key><string>Gr&#xFC;&#223;e &amp; &lt;more&gt; &quot;&apos;</string>
  <key>Empty</key><string></string>
  <key>Flags</key><array><true/><false/></array>
  <key>Integer</key><integer>42</integer>
  <key>Real</key><real>-0.25</real>
  <key>Date</key><date>2020-01-31T12:00:00Z</date>
  <key>Data</key><data>AAEC/w==</data>
  <key>Nothing</key><dict/>
</dict>)"sv;

// The same without character references, which only the XML parser reads.
constexpr auto kPlainSample =
    "<dict>\n"
    "  <key>Text</key><string>Gr\u00FC\u00DF"
    "e &amp; &lt;more> &quot;&apos;</string>\n"
    "  <key>Empty</key><string/>\n"
    "  <key>Flags</key><array><true/><false/></array>\n"
    "  <key>Integer</key><integer>42</integer>\n"
    "  <key>Real</key><real>-0.25</real>\n"
    "  <key>Date</key><date>2020-01-31T12:00:00Z</date>\n"
    "  <key>Data</key><data>\n\tAAEC\n\t/w==\n\t</data>\n"
    "  <key>Nothing</key><dict></dict>\n</dict>"sv;

void expectSample(const Value& value) {
  const auto* dictionary = castTo<Dictionary>(value);
  ASSERT_NE(dictionary, nullptr);
  EXPECT_EQ(descriptionOf(dictionary->objectForKey("Text")),
            "Gr\u00FC\u00DF"
            "e & <more> \"'");
  EXPECT_EQ(descriptionOf(dictionary->objectForKey("Empty")), "");
  const auto* flags = castTo<Array>(dictionary->objectForKey("Flags"));
  ASSERT_NE(flags, nullptr);
  ASSERT_EQ(flags->count(), 2U);
  EXPECT_TRUE((*flags)[0].isBoolean() && (*flags)[0].number().boolValue());
  EXPECT_TRUE((*flags)[1].isBoolean() && !(*flags)[1].number().boolValue());
  const Value& integer = dictionary->objectForKey("Integer");
  EXPECT_EQ(integer.number().encoding(), 'q');
  EXPECT_EQ(integer.number().longValue(), 42);
  EXPECT_EQ(dictionary->objectForKey("Real").number().encoding(), 'd');
  EXPECT_EQ(dictionary->objectForKey("Real").number().doubleValue(), -0.25);
  const auto* date = castTo<Date>(dictionary->objectForKey("Date"));
  ASSERT_NE(date, nullptr);
  EXPECT_EQ(date->secondsSince1970(), 1580472000);
  const auto* data = castTo<Data>(dictionary->objectForKey("Data"));
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(data->bytes(), "\x00\x01\x02\xFF"sv);
  EXPECT_EQ(castTo<Dictionary>(dictionary->objectForKey("Nothing"))->count(), 0U);
  std::string keys;
  for (const DictionaryEntry& entry : *dictionary) keys += descriptionOf(entry.key) + " ";
  EXPECT_EQ(keys, "Text Empty Flags Integer Real Date Data Nothing ");
}

// The sample as another writer makes it in binary.
std::string binarySample() {
  const std::string text = xml(kSample);
  plist_t root = nullptr;
  plist_from_xml(text.data(), static_cast<std::uint32_t>(text.size()), &root);
  char* bytes = nullptr;
  std::uint32_t size = 0;
  plist_to_bin(root, &bytes, &size);
  plist_free(root);
  const std::unique_ptr<char, decltype(&std::free)> owner(bytes, &std::free);
  return {bytes, size};
}

TEST(PropertyList, ReadsXML) {
  expectSample(parsed(xml(kSample)));
  expectSample(parsed(xml(kPlainSample)));
}

TEST(PropertyList, ReadsBinary) { expectSample(parsed(binarySample())); }

TEST(PropertyList, ReadsXMLWithoutDeclarations) {
  EXPECT_EQ(descriptionOf(parsed("<plist><string>x</string></plist>")), "x");
  EXPECT_EQ(descriptionOf(parsed("\n<plist>\n\t<!-- note --> <string>x</string></plist>")), "x");
  EXPECT_EQ(descriptionOf(parsed("\xEF\xBB\xBF" + xml("<string>x</string>"))), "x");
}

TEST(PropertyList, ReadsEveryFormOfText) {
  EXPECT_EQ(descriptionOf(parsed(xml("<string>a<![CDATA[<b>&amp;]]>c</string>"))), "a<b>&amp;c");
  EXPECT_EQ(descriptionOf(parsed(xml("<string>a<!-- <b> -->c</string>"))), "ac");
  EXPECT_EQ(descriptionOf(parsed(xml("<string> a\nb </string>"))), " a\nb ");
  EXPECT_EQ(descriptionOf(parsed(xml("<string>&#x1F600;\U0001F600</string>"))),
            "\U0001F600\U0001F600");
}

TEST(PropertyList, ReadsIntegersOfBothSigns) {
  const auto integer = [](std::string_view digits) {
    return parsed(xml("<integer>" + std::string(digits) + "</integer>")).number();
  };
  EXPECT_EQ(integer("-5").longValue(), -5);
  EXPECT_EQ(integer("-5").encoding(), 'q');
  EXPECT_EQ(integer("9223372036854775807").encoding(), 'q');
  EXPECT_EQ(integer("-9223372036854775808"),
            Number::integer(std::numeric_limits<std::int64_t>::min()));
  EXPECT_EQ(integer("9223372036854775808"), Number::integer(std::uint64_t{1} << 63U));
  EXPECT_EQ(integer("9223372036854775808").encoding(), 'Q');
  EXPECT_EQ(integer("18446744073709551615"),
            Number::integer(std::numeric_limits<std::uint64_t>::max()));
  EXPECT_EQ(integer("0xff").longValue(), 255);
}

TEST(PropertyList, ReadsBinaryNumbers) {
  const auto number = [](const std::string& bytes) {
    return parsed(BinaryList().add(bytes).bytes()).number();
  };
  EXPECT_EQ(number("\x10\x05").longValue(), 5);
  EXPECT_EQ(number("\x10\xFF").longValue(), 255);
  EXPECT_EQ(number("\x13" + BinaryList::number(static_cast<std::uint64_t>(-5), 8)).longValue(), -5);
  const Number large =
      number("\x14" + BinaryList::number(0, 8) + BinaryList::number(~std::uint64_t{4}, 8));
  EXPECT_EQ(large.encoding(), 'Q');
  EXPECT_EQ(large.unsignedLongValue(), ~std::uint64_t{4});
  EXPECT_EQ(number("\x22" + BinaryList::number(0x3FC00000, 4)).doubleValue(), 1.5);
  EXPECT_EQ(number("\x23" + BinaryList::number(0x3FF8000000000000, 8)).doubleValue(), 1.5);
  EXPECT_EQ(number("\x80\x07").longValue(), 7);
}

TEST(PropertyList, ReadsDatesOfEveryAge) {
  const auto date = [](std::string_view text) {
    return descriptionOf(parsed(xml("<date>" + std::string(text) + "</date>")));
  };
  EXPECT_EQ(date("1900-03-01T00:00:01Z"), "1900-03-01 00:00:01 +0000");
  EXPECT_EQ(date("1970-01-01T00:00:00Z"), "1970-01-01 00:00:00 +0000");
  EXPECT_EQ(date("2100-12-31T23:59:59Z"), "2100-12-31 23:59:59 +0000");
  EXPECT_EQ(date("4001-01-01T00:00:00Z"), "4001-01-01 00:00:00 +0000");
  // Half a second before 2001 began.
  const Value binary =
      parsed(BinaryList().add("\x33" + BinaryList::number(0xBFE0000000000000, 8)).bytes());
  ASSERT_NE(castTo<Date>(binary), nullptr);
  EXPECT_EQ(castTo<Date>(binary)->secondsSince1970(), 978307199.5);
}

TEST(PropertyList, ReadsUTF16) {
  EXPECT_EQ(descriptionOf(parsed(BinaryList().add("\x63\x20\xAC\xD8\x3D\xDE\x00"sv).bytes())),
            "\u20AC\U0001F600");
}

TEST(PropertyList, KeepsTheFirstPlaceAndTheLastValueOfARepeatedKey) {
  EXPECT_EQ(
      descriptionOf(parsed(xml("<dict><key>b</key><integer>1</integer><key>a</key>"
                               "<integer>2</integer><key>b</key><integer>3</integer></dict>"))),
      "{\n    b = 3;\n    a = 2;\n}");
  BinaryList list;
  list.addDictionary({1, 2, 1}, {3, 4, 5}).addString("b").addString("a");
  list.addString("1").addString("2").addString("3");
  EXPECT_EQ(descriptionOf(parsed(list.bytes())), "{\n    b = 3;\n    a = 2;\n}");
}

TEST(PropertyList, KeepsTheOrderOfManyKeys) {
  constexpr std::size_t kKeys = 5000;
  std::string content = "<dict>";
  for (std::size_t i = 0; i < kKeys; ++i) {
    content += "<key>key" + std::to_string(i * 7919 % kKeys) + "</key><integer>" +
               std::to_string(i) + "</integer>";
  }
  const Value value = parsed(xml(content + "</dict>"));
  const auto* dictionary = castTo<Dictionary>(value);
  ASSERT_NE(dictionary, nullptr);
  ASSERT_EQ(dictionary->count(), kKeys);
  std::int64_t place = 0;
  for (const DictionaryEntry& entry : *dictionary) {
    ASSERT_EQ(entry.value.number().longValue(), place++);
  }
}

TEST(PropertyList, RefusesWhatIsNone) {
  for (const std::string_view bytes :
       {""sv, "x"sv, "\0"sv, "{ a = b; }"sv, "{\"a\": 1}"sv, "<"sv, "<plist>"sv, "<plist/>"sv,
        "<plist></plist>"sv, "<html></html>"sv, "bplist00"sv, "bplist"sv,
        "<plist><null/></plist>"sv, "<plist><array><string>x</array></string></plist>"sv,
        "<plist><dict><string>x</string></dict></plist>"sv,
        "<plist><string>&unknown;</string></plist>"sv}) {
    EXPECT_FALSE(failureOf(bytes).empty()) << bytes;
  }
}

TEST(PropertyList, RefusesTextThatIsNotUTF8) {
  constexpr auto kInTheMiddle =
      "line 4, column 9: not well-formed (invalid token); it is not UTF-8 text"sv;
  EXPECT_EQ(failureOf(xml("<string>\xE4</string>")), kInTheMiddle);
  EXPECT_EQ(failureOf(xml("<string>\xED\xA0\x80</string>")), kInTheMiddle);
  EXPECT_EQ(failureOf(xml("<!-- \xE4 --><true/>")),
            "line 4, column 6: not well-formed (invalid token); it is not UTF-8 text");
  EXPECT_EQ(failureOf("\xFF\xFE<\0p\0"sv), "it is neither UTF-8 text nor a binary list");
  for (const std::string_view units : {"<\0p\0/\0>\0"sv, "\0<\0p\0/\0>"sv, "\n\0<\0p\0/\0>\0"sv}) {
    EXPECT_EQ(failureOf(units), "it is no property list, neither XML nor binary");
  }
}

TEST(PropertyList, MakesBinaryTextWellFormed) {
  EXPECT_EQ(descriptionOf(parsed(BinaryList().addString("a\xFF").bytes())), "a\uFFFD");
  // Half of a surrogate pair; what becomes of it is for the library to say.
  const Value text = parsed(BinaryList().add("\x62\xD8\x3D\x00\x61"sv).bytes());
  EXPECT_NE(castTo<String>(text), nullptr);
}

TEST(PropertyList, SurvivesXMLThatEndsAtAnyByte) {
  for (const std::string& text : {xml(kSample), xml(kPlainSample)}) {
    const std::size_t content = text.rfind("</plist>") + "</plist>"sv.size();
    for (std::size_t size = 0; size < text.size(); ++size) {
      const Result<Value> result = readBothWays(std::string_view(text).substr(0, size));
      EXPECT_EQ(static_cast<bool>(result), size >= content) << size;
      EXPECT_EQ(static_cast<bool>(result), result.reason().empty()) << size;
    }
  }
}

TEST(PropertyList, SurvivesABinaryListThatEndsAtAnyByte) {
  const std::string bytes = binarySample();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_FALSE(parsePropertyList(std::string_view(bytes).substr(0, size))) << size;
  }
}

TEST(PropertyList, SurvivesAnyChangedByte) {
  for (const std::string& original : {xml(kSample), xml(kPlainSample), binarySample()}) {
    for (std::size_t i = 0; i < original.size(); ++i) {
      for (const unsigned change : {0x01U, 0x10U, 0x80U, 0xFFU}) {
        std::string bytes = original;
        bytes[i] = static_cast<char>(static_cast<unsigned char>(bytes[i]) ^ change);
        Result<Value> result = readBothWays(bytes);
        EXPECT_EQ(static_cast<bool>(result), result.reason().empty());
      }
    }
  }
}

TEST(PropertyList, IsReadFromAFile) {
  const TemporaryFolder folder;
  Result<Value> fromXML = readPropertyList(makeFile(folder, "xml", xml(kSample)));
  Result<Value> fromBinary = readPropertyList(makeFile(folder, "binary", binarySample()));
  ASSERT_TRUE(fromXML);
  ASSERT_TRUE(fromBinary);
  EXPECT_TRUE(equal(*fromXML, *fromBinary));
}

TEST(PropertyList, IsNotReadFromWhatIsNoFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(readPropertyList(makeFifo(folder, "fifo")).reason(), "is not a regular file");
  EXPECT_EQ(readPropertyList(folder.path()).reason(), "is not a regular file");
  EXPECT_EQ(readPropertyList(folder.path() / "none").reason(),
            "cannot be opened: No such file or directory");
  EXPECT_FALSE(readPropertyList(makeFile(folder, "empty", "")));
}

TEST(PropertyList, ReadsTwentyMegabytes) {
  constexpr std::size_t kSize = std::size_t{20} * 1024 * 1024;
  const Value text = parsed(xml("<string>" + std::string(kSize, 'x') + "</string>"));
  ASSERT_NE(castTo<String>(text), nullptr);
  EXPECT_EQ(castTo<String>(text)->text().size(), kSize);
  const std::string element = "<string>" + std::string(2000, 'x') + "</string>\n";
  std::string content;
  while (content.size() < kSize) content += element;
  const Value list = parsed(xml("<array>" + content + "</array>"));
  ASSERT_NE(castTo<Array>(list), nullptr);
  EXPECT_EQ(castTo<Array>(list)->count(), content.size() / element.size());
}

}  // namespace
}  // namespace commandfilter
