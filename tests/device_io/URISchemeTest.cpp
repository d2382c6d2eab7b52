#include "device_io/URIScheme.h"

#include <gtest/gtest.h>

#include <string>

namespace commandfilter {
namespace {

std::string schemeOf(std::string_view uri) {
  return std::string(schemeOfURI(uri).value_or("none"));
}

TEST(URIScheme, EndsAtTheFirstColon) {
  EXPECT_EQ(schemeOf("socket://printer:9100/"), "socket");
  EXPECT_EQ(schemeOf("usb:"), "usb");
  EXPECT_EQ(schemeOf("urn:isbn:1"), "urn");
}

TEST(URIScheme, KeepsItsCase) { EXPECT_EQ(schemeOf("DNSsd://Acme"), "DNSsd"); }

TEST(URIScheme, HoldsLettersDigitsAndThreeSigns) {
  EXPECT_EQ(schemeOf("a1+-.z:x"), "a1+-.z");
  for (const char* uri : {"1a:x", "+a:x", "-a:x", ".a:x", ":x", "a_b:x", "a b:x", "a/b:x", "a%41:x",
                          "\xC3\xA9:x", " usb:x"}) {
    EXPECT_EQ(schemeOf(uri), "none") << uri;
  }
}

TEST(URIScheme, IsMissingWithoutAColon) {
  for (const char* uri : {"", "usb", "/usb/printer", "//usb"}) EXPECT_EQ(schemeOf(uri), "none");
}

TEST(URIScheme, IsMissingWhereTheRestCannotBeAURI) {
  for (const std::string& rest :
       {std::string("a b"), std::string("a\"b"), std::string("<>"), std::string("a\\b"),
        std::string("a^b"), std::string("`"), std::string("{}"), std::string("|"),
        std::string("\xC3\xA9"), std::string("a\nb"), std::string("a\0b", 3), std::string("\x7F"),
        std::string("%"), std::string("%4"), std::string("%4g"), std::string("%zz")}) {
    EXPECT_EQ(schemeOf("usb:" + rest), "none") << rest;
  }
  EXPECT_EQ(schemeOf(std::string_view("usb:%41").substr(0, 6)), "none") << "cut off";
}

TEST(URIScheme, IsThereWhateverElseTheURIHolds) {
  for (const char* rest : {"", "//", "///path", "//user:word@host:1/p;a=1?b=2&c=[x]#d",
                           "%20%C3%A9%fF", "-._~!$'()*+,="}) {
    EXPECT_EQ(schemeOf(std::string("usb:") + rest), "usb") << rest;
  }
}

}  // namespace
}  // namespace commandfilter
