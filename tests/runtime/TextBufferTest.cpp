#include "runtime/TextBuffer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace commandfilter {
namespace {

using namespace std::string_view_literals;

std::string textOfSize(std::size_t size) {
  std::string text(size, ' ');
  for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char>('a' + i % 26);
  return text;
}

TEST(TextBuffer, KeepsATextOfAnySize) {
  for (std::size_t size = 0; size < 600; ++size) {
    const std::string text = textOfSize(size);
    const TextBuffer buffer(text);
    EXPECT_EQ(buffer.view(), text);
    EXPECT_EQ(std::strlen(buffer.data()), size);
  }
}

TEST(TextBuffer, KeepsNUL) {
  const TextBuffer buffer("a\0b"sv);
  EXPECT_EQ(buffer.view(), "a\0b"sv);
  EXPECT_EQ(buffer.data()[3], '\0');
}

TEST(TextBuffer, JoinsTwoTexts) {
  for (const std::size_t first : {0U, 1U, 7U, 8U, 15U, 16U, 100U}) {
    for (const std::size_t second : {0U, 1U, 7U, 8U, 15U, 16U, 100U}) {
      for (const std::size_t spare : {0U, 32U, 1000U}) {
        TextBuffer buffer(textOfSize(first), textOfSize(second), spare);
        EXPECT_EQ(buffer.view(), textOfSize(first) + textOfSize(second));
        buffer.append("end");
        EXPECT_EQ(buffer.view(), textOfSize(first) + textOfSize(second) + "end");
      }
    }
  }
}

TEST(TextBuffer, GrowsAtItsEnd) {
  for (const std::size_t step : {1U, 3U, 15U, 16U, 17U, 1000U}) {
    TextBuffer buffer("");
    std::string expected;
    while (expected.size() < 3000) {
      const std::string piece = textOfSize(step);
      buffer.append(piece);
      expected += piece;
      ASSERT_EQ(buffer.view(), expected);
      ASSERT_EQ(buffer.data()[expected.size()], '\0');
    }
    buffer.append("");
    EXPECT_EQ(buffer.view(), expected);
  }
}

}  // namespace
}  // namespace commandfilter
