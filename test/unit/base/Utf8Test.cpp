// UTF-16 to UTF-8: every length, malformed surrogates, and buffers that are too small.

#include <gtest/gtest.h>

#include "test/firmware/Text.h"

#include "app/base/Utf8.h"

namespace {

constexpr UINTN kBufferSize = 64;

/// The first `capacity` bytes after a conversion into zeroed memory; what lies behind must stay.
std::string Converted(std::u16string_view text, UINTN capacity = kBufferSize) {
  std::vector<CHAR16> units(text.begin(), text.end());
  std::string buffer(kBufferSize + 4, '\x77');
  std::fill_n(buffer.begin(), capacity, '\0');
  ConvertUtf16ToUtf8(units.data(), units.size(), buffer.data(), capacity);
  EXPECT_EQ(buffer.find_first_not_of('\x77', capacity), std::string::npos);
  return buffer.substr(0, capacity);
}

/// As a C string reader sees it.
std::string Text(std::u16string_view text) { return Converted(text).c_str(); }

TEST(Utf8, EachLengthAtBothEndsOfItsRange) {
  EXPECT_EQ(Text(u"\x0001\x007F"), "\x01\x7F");
  EXPECT_EQ(Text(u"\x0080\x07FF"), "\xC2\x80\xDF\xBF");
  EXPECT_EQ(Text(u"\x0800\xFFFF"), "\xE0\xA0\x80\xEF\xBF\xBF");
  EXPECT_EQ(Text(u"\xD7FF\xE000"), "\xED\x9F\xBF\xEE\x80\x80");
  EXPECT_EQ(Text(u"\xD800\xDC00"), "\xF0\x90\x80\x80");
  EXPECT_EQ(Text(u"\xDBFF\xDFFF"), "\xF4\x8F\xBF\xBF");
}

TEST(Utf8, ASurrogatePairBecomesFourBytes) {
  EXPECT_EQ(Text(u"\xD83D\xDE00"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(Text(u"a\xD83D\xDE00z"), "a\xF0\x9F\x98\x80z");
}

TEST(Utf8, ALoneLowSurrogateConvertsToTheEmptyText) { EXPECT_EQ(Text(u"\xDC00"), ""); }

TEST(Utf8, ALowSurrogateOnItsOwnEndsTheText) {
  EXPECT_EQ(Text(u"ab\xDC00zz"), "ab");
  EXPECT_EQ(Text(u"ab\xDFFFzz"), "ab");
}

TEST(Utf8, AHighSurrogateWithoutItsPartnerEndsTheText) {
  EXPECT_EQ(Text(u"ab\xD800zz"), "ab");
  EXPECT_EQ(Text(u"ab\xDBFF\xDBFF\xDC00"), "ab");
  EXPECT_EQ(Text(u"ab\xD83D"), "ab");
}

TEST(Utf8, TheEmptyTextIsTerminated) {
  char byte = 'x';
  CHAR16 nothing = 0;
  ConvertUtf16ToUtf8(&nothing, 0, &byte, 1);
  EXPECT_EQ(byte, '\0');
}

TEST(Utf8, ATextThatFitsExactlyHasNoTerminator) {
  EXPECT_EQ(Converted(u"abc", 3), "abc");
  EXPECT_EQ(Converted(u"\x20AC", 3), "\xE2\x82\xAC");
}

TEST(Utf8, ACharacterThatDoesNotFitIsLeftOutWhole) {
  EXPECT_EQ(Converted(u"abcd", 3), "abc");
  EXPECT_EQ(Converted(u"a\x00E9", 2), std::string("a\0", 2));
  EXPECT_EQ(Converted(u"a\x20AC", 3), std::string("a\0\0", 3));
  EXPECT_EQ(Converted(u"\xD83D\xDE00", 3), std::string("\0\0\0", 3));
}

TEST(Utf8, NothingFollowsACharacterThatDidNotFit) {
  EXPECT_EQ(Converted(u"\x20ACz", 2), std::string("\0\0", 2));
}

TEST(Utf8, NothingIsWrittenWithoutCapacity) { EXPECT_EQ(Converted(u"abc", 0), ""); }

TEST(Utf8, ThePartnerMustLieWithinTheText) {
  const CHAR16 text[] = {u'a', 0xD83D, 0xDE00};
  char buffer[8] = {};
  ConvertUtf16ToUtf8(text, 2, buffer, sizeof buffer);
  EXPECT_STREQ(buffer, "a");
}

}  // namespace
