// What is cut off the end of the host's texts.

#include <gtest/gtest.h>

#include "test/firmware/Text.h"

#include "platform/TextTrim.h"

namespace {

std::u16string Trimmed(std::u16string_view text) {
  std::vector<CHAR16> buffer = fake::ToFirmware(text);
  EXPECT_EQ(TrimTrailingWhitespace(buffer.data()), buffer.data());
  return fake::ToU16(buffer.data());
}

TEST(TextTrim, NullStaysNull) { EXPECT_EQ(TrimTrailingWhitespace(nullptr), nullptr); }

TEST(TextTrim, BlanksAndLineFeedsAtTheEndAreCut) {
  EXPECT_EQ(Trimmed(u"text  "), u"text");
  EXPECT_EQ(Trimmed(u"text\n\n"), u"text");
  EXPECT_EQ(Trimmed(u"text \n \n"), u"text");
}

TEST(TextTrim, CarriageReturnsAndTabsStay) {
  EXPECT_EQ(Trimmed(u"text\r"), u"text\r");
  EXPECT_EQ(Trimmed(u"text\t"), u"text\t");
  EXPECT_EQ(Trimmed(u"text \r\n"), u"text \r");
  EXPECT_EQ(Trimmed(u"text\x00A0"), u"text\x00A0");
}

TEST(TextTrim, TheStartAndTheMiddleStay) { EXPECT_EQ(Trimmed(u" \na b\nc "), u" \na b\nc"); }

TEST(TextTrim, NothingIsLeftOfBlanksAlone) {
  EXPECT_EQ(Trimmed(u" \n "), u"");
  EXPECT_EQ(Trimmed(u""), u"");
}

TEST(TextTrim, CharactersThatOnlyLookAlikeInTheirLowByteStay) {
  EXPECT_EQ(Trimmed(u"text\x0120"), u"text\x0120");
  EXPECT_EQ(Trimmed(u"text\x010A"), u"text\x010A");
}

}  // namespace
