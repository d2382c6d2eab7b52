#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ReadBothWays.h"
#include "TestValues.h"
#include "runtime/Cast.h"
#include "runtime/PropertyList.h"
#include "runtime/String.h"

// The forms in which lists are written. Some are read without the XML parser, which must not be
// seen but in the time that it takes.
namespace commandfilter {
namespace {

using testing::list;
using testing::readBothWays;

std::string text(std::string_view written) {
  Result<Value> result = readBothWays(list("<string>" + std::string(written) + "</string>"));
  if (!result) return "refused: " + result.reason();
  return std::string(textOf(castTo<String>(*result)));
}

TEST(PlainPropertyList, BeginsAsProgramsBeginIt) {
  constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
  constexpr std::string_view kType =
      "<!DOCTYPE plist PUBLIC \"-//Somebody//DTD PLIST 1.0//EN\" \"http://a.example/b-1.0.dtd\">";
  for (const std::string& head :
       {std::string(), std::string(kDeclaration), std::string(kDeclaration) + "\n",
        std::string(kDeclaration) + std::string(kType), std::string(kType) + " \r\n",
        std::string(kDeclaration) + "\r\n" + std::string(kType) + "\n\t"}) {
    const Result<Value> read = readBothWays(head + "<plist version=\"1.0\"><true/></plist>\n\n");
    EXPECT_TRUE(read) << head << ": " << read.reason();
    EXPECT_TRUE(readBothWays(head + "<plist>\n<true/>\n</plist>")) << head;
    for (const std::string_view wrong :
         {"x", "<", "<?xml?>", "<!DOCTYPE", "<!DOCTYPE plist PUBLIC \"",
          "<!DOCTYPE plist PUBLIC \"a\" \"b", "<!--", "&amp;"}) {
      EXPECT_FALSE(readBothWays(head + std::string(wrong) + list("<true/>"))) << head << wrong;
    }
  }
  // White space before the declaration is none before anything else.
  EXPECT_FALSE(readBothWays("\n" + std::string(kDeclaration) + list("<true/>")));
  EXPECT_TRUE(readBothWays("\n" + list("<true/>")));
  // Names with characters that no name has.
  EXPECT_FALSE(readBothWays("<!DOCTYPE plist PUBLIC \"a{b\" \"c\">" + list("<true/>")));
  EXPECT_TRUE(readBothWays("<!DOCTYPE plist PUBLIC \"a\" \"c{<>d\">" + list("<true/>")));
}

TEST(PlainPropertyList, HasCommentsBetweenItsElements) {
  for (const std::string_view right :
       {"", "-", "- -", "<dict>&nbsp;]]>", "\r\n\t", "\xC3\xA4", "->", "a<!-b"}) {
    const std::string comment = "<!--" + std::string(right) + " -->";
    EXPECT_TRUE(readBothWays(comment + " " + comment + "<plist>" + comment + "<dict>" + comment +
                             "<key>a</key>" + comment + "<true/>\n" + comment + "</dict>" +
                             comment + "</plist>" + comment))
        << comment;
  }
  for (const std::string_view wrong :
       {"<!---->x", "<!--->", "<!-->", "<!--", "<!-- -- -->", "<!-- --->", "<!-- \x01 -->",
        "<!-- \xC3 -->", "<!-- \xEF\xBF\xBE -->", "<!- - -->", "<! -- -->"}) {
    for (const std::string& text :
         {std::string(wrong) + list("<true/>"), list(std::string(wrong) + "<true/>"),
          list("<array>" + std::string(wrong) + "</array>"),
          list("<true/>") + std::string(wrong)}) {
      EXPECT_FALSE(readBothWays(text)) << text;
    }
  }
  EXPECT_FALSE(readBothWays(list("<!--" + std::string(1, '\0') + "--><true/>")));
}

TEST(PlainPropertyList, EndsWithItsElement) {
  for (const std::string_view behind : {"", "\n", " \t\r\n", "<!-- end -->"}) {
    EXPECT_TRUE(readBothWays(list("<true/>") + std::string(behind))) << behind;
  }
  for (const std::string_view behind : {"x", "<true/>", "</plist>", "\x01", "&amp;"}) {
    EXPECT_FALSE(readBothWays(list("<true/>") + std::string(behind))) << behind;
  }
  EXPECT_FALSE(readBothWays(list("<true/>") + std::string(1, '\0')));
}

// One character of each kind at every place of a text, long enough that eight are read at once.
TEST(PlainPropertyList, HasTextOfEveryCharacter) {
  struct Case {
    std::string_view written;
    std::string_view read;
  };
  const std::vector<Case> cases{
      {"x", "x"},
      {"\t", "\t"},
      {"\n", "\n"},
      {"\r", "\n"},
      {"\r\n", "\n"},
      {"\x7F", "\x7F"},
      {">", ">"},
      {"]", "]"},
      {"]]", "]]"},
      {"]]&gt;", "]]>"},
      {"&amp;", "&"},
      {"&lt;&gt;", "<>"},
      {"&quot;", "\""},
      {"&apos;", "'"},
      {"&amp;lt;", "&lt;"},
      {"&#65;", "A"},
      {"&#x1F600;", "\xF0\x9F\x98\x80"},
      {"\xC2\x80", "\xC2\x80"},
      {"\xEF\xBF\xBD", "\xEF\xBF\xBD"},
      {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
      {"<!-- c -->", ""},
      {"<![CDATA[<&>]]>", "<&>"},
  };
  for (const Case& one : cases) {
    for (std::size_t place = 0; place <= 17; ++place) {
      const std::string before(place, 'a');
      const std::string behind(17 - place, 'b');
      EXPECT_EQ(text(before + std::string(one.written) + behind),
                before + std::string(one.read) + behind);
    }
  }
}

TEST(PlainPropertyList, HasNoOtherCharacters) {
  for (const std::string_view wrong :
       {std::string_view("\x01"), std::string_view("\x1F"), std::string_view("\0", 1),
        std::string_view("&"), std::string_view("&;"), std::string_view("&amp"),
        std::string_view("&AMP;"), std::string_view("&nbsp;"), std::string_view("]]>"),
        std::string_view("<"), std::string_view("\x80"), std::string_view("\xC3"),
        std::string_view("\xC0\x80"), std::string_view("\xED\xA0\x80"),
        std::string_view("\xEF\xBF\xBE"), std::string_view("\xEF\xBF\xBF"),
        std::string_view("\xF4\x90\x80\x80")}) {
    for (std::size_t place = 0; place <= 17; ++place) {
      const std::string written =
          std::string(place, 'a') + std::string(wrong) + std::string(17 - place, 'b');
      EXPECT_EQ(text(written).substr(0, 9), "refused: ") << written;
    }
  }
}

// Every byte as a character of the text, between elements, and in a tag.
TEST(PlainPropertyList, TakesEveryByteForWhatItIs) {
  for (int i = 0; i < 256; ++i) {
    const std::string byte(1, static_cast<char>(i));
    static_cast<void>(readBothWays(list("<string>" + byte + "</string>")));
    static_cast<void>(readBothWays(list("<string>12345678" + byte + "</string>")));
    static_cast<void>(readBothWays(list(byte + "<true/>" + byte)));
    static_cast<void>(readBothWays(list("<true" + byte + "/>")));
    static_cast<void>(readBothWays(list("<dict><key>a</key" + byte + "><true/></dict>")));
    static_cast<void>(readBothWays(byte + list("<true/>")));
  }
}

TEST(PlainPropertyList, HasEachElementInItsPlace) {
  const std::vector<std::string_view> elements{"<key>k</key>",
                                               "<string>s</string>",
                                               "<string/>",
                                               "<integer>1</integer>",
                                               "<real>1</real>",
                                               "<true/>",
                                               "<false/>",
                                               "<date>2020-01-31T12:00:00Z</date>",
                                               "<data>AAAA</data>",
                                               "<array>",
                                               "<array/>",
                                               "</array>",
                                               "<dict>",
                                               "<dict/>",
                                               "</dict>",
                                               "<integer></integer>",
                                               "<real>x</real>",
                                               "<date/>",
                                               "<data>A</data>",
                                               "<key/>",
                                               "</plist>",
                                               "<plist>",
                                               "<true></true>",
                                               "<array></dict>"};
  // All sequences of three, alone and in collections.
  for (const std::string_view first : elements) {
    for (const std::string_view second : elements) {
      for (const std::string_view third : elements) {
        const std::string content = std::string(first) + std::string(second) + std::string(third);
        static_cast<void>(readBothWays(list(content)));
        static_cast<void>(readBothWays(list("<array>" + content + "</array>")));
        static_cast<void>(readBothWays(list("<dict>" + content + "</dict>")));
      }
    }
  }
}

// Indentations repeat, so a gap is compared with those before it.
TEST(PlainPropertyList, HasAnyBlanksBetweenItsElements) {
  const std::vector<std::string> gaps{"",          " ",           "\n",       "\n\t",
                                      "\n  ",      "\r\n",        "\n      ", "\n\t\t\t\t\t\t",
                                      "\n       ", "\n          "};
  for (const std::string& outer : gaps) {
    for (const std::string& inner : gaps) {
      const std::string start = "<plist>" + outer + "<array>" + inner + "<true/>" + inner;
      const std::string end = inner + "<false/>" + outer + "</array>" + outer + "</plist>" + outer;
      for (const std::string_view between :
           {"<string>a</string>", "<!-- <true/> -->", "<!--", "<!", "x", "<", "</array>"}) {
        static_cast<void>(readBothWays(start + std::string(between) + end));
      }
      EXPECT_TRUE(readBothWays(start + inner + "<true/>" + outer + "<!-- a -->" + end));
      EXPECT_FALSE(readBothWays(start + std::string(1, '\0') + inner + "<true/>" + end));
      EXPECT_FALSE(readBothWays(start + "\v" + inner + "<true/>" + end));
      for (std::size_t size = 0; size < start.size(); ++size) {
        EXPECT_FALSE(readBothWays(start.substr(0, size)));
      }
    }
  }
}

}  // namespace
}  // namespace commandfilter
