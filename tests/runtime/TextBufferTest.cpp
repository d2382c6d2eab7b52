#include "runtime/TextBuffer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
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

void append(TextBuffer& buffer, std::string_view text) {
  TextBuffer::copy(text, buffer.extend(buffer.view().size() + text.size()));
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

TEST(TextBuffer, IsWrittenPieceByPiece) {
  for (const std::size_t first : {0U, 1U, 2U, 4U, 7U, 8U, 15U, 16U, 17U, 100U}) {
    for (const std::size_t second : {0U, 1U, 2U, 4U, 7U, 8U, 15U, 16U, 17U, 100U}) {
      TextBuffer buffer(first + second);
      char* behind = TextBuffer::copy(textOfSize(first), buffer.begin());
      EXPECT_EQ(TextBuffer::copy(textOfSize(second), behind), buffer.begin() + first + second);
      EXPECT_EQ(buffer.view(), textOfSize(first) + textOfSize(second));
      EXPECT_EQ(std::strlen(buffer.data()), first + second);
      append(buffer, "end");
      EXPECT_EQ(buffer.view(), textOfSize(first) + textOfSize(second) + "end");
    }
  }
}

TEST(TextBuffer, ComparesShortTexts) {
  for (std::size_t size = 0; size <= 20; ++size) {
    TextBuffer grown("");
    for (std::size_t i = 0; i < size; ++i) append(grown, "a");
    const TextBuffer whole(std::string(size, 'a'));
    EXPECT_EQ(whole.isShort(), size < 16);
    EXPECT_EQ(grown.isShort(), size < 16);
    if (!whole.isShort()) continue;
    EXPECT_TRUE(whole.isSameShortText(grown));
    EXPECT_FALSE(whole.isSameShortText(TextBuffer(std::string(size + 1, 'a'))));
    EXPECT_FALSE(whole.isSameShortText(TextBuffer(std::string(size, 'a') + '\0')));
    if (size == 0) continue;
    EXPECT_FALSE(whole.isSameShortText(TextBuffer(std::string(size - 1, 'a') + 'b')));
  }
}

TEST(TextBuffer, GivesEightBytesAtOnceWhereTheyAre) {
  const auto bytes = [](std::string_view text) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data(), text.size());
    return word;
  };
  EXPECT_EQ(TextBuffer("abc").wordAt(0), bytes("abc"));
  EXPECT_EQ(TextBuffer("abc").wordAt(3), 0U);
  EXPECT_EQ(TextBuffer("abcdefghijklmno").wordAt(8), bytes("ijklmno"));
  EXPECT_EQ(TextBuffer("abcdefghijklmno").wordAt(9), std::nullopt);
  EXPECT_EQ(TextBuffer("abcdefghijklmnopqrst").wordAt(12), bytes("mnopqrst"));
  EXPECT_EQ(TextBuffer("abcdefghijklmnopqrst").wordAt(13), std::nullopt);
}

TEST(TextBuffer, GrowsAtItsEnd) {
  for (const std::size_t step : {1U, 3U, 15U, 16U, 17U, 1000U}) {
    TextBuffer buffer("");
    std::string expected;
    while (expected.size() < 3000) {
      const std::string piece = textOfSize(step);
      append(buffer, piece);
      expected += piece;
      ASSERT_EQ(buffer.view(), expected);
      ASSERT_EQ(buffer.data()[expected.size()], '\0');
    }
    append(buffer, "");
    EXPECT_EQ(buffer.view(), expected);
  }
}

}  // namespace
}  // namespace commandfilter
