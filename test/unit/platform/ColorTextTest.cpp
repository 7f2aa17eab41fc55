// Colours given as texts.

#include <gtest/gtest.h>

#include "platform/ColorText.h"

namespace {

TEST(ColorText, ThreeDecimalNumbersAreRedGreenAndBlue) {
  EXPECT_EQ(ParseColorText("1,2,3"), 0x010203u);
  EXPECT_EQ(ParseColorText("18,52,86"), 0x123456u);
  EXPECT_EQ(ParseColorText("255,254,128"), 0xFFFE80u);
  EXPECT_EQ(ParseColorText("0,0,0"), 0u);
}

TEST(ColorText, HexadecimalAndDecimalGiveTheSame) {
  EXPECT_EQ(ParseColorText("0xFF,0XfF,255"), 0xFFFFFFu);
  EXPECT_EQ(ParseColorText("0x12,0x34,0x56"), 0x123456u);
}

TEST(ColorText, LettersAreReadAsHexadecimal) { EXPECT_EQ(ParseColorText("A,b,Cd"), 0x0A0BCDu); }

TEST(ColorText, AChannelKeepsItsLowEightBits) {
  EXPECT_EQ(ParseColorText("256,257,511"), 0x0001FFu);
  EXPECT_EQ(ParseColorText("0x1FE,1,1"), 0xFE0101u);
}

TEST(ColorText, BlanksAndZerosInFrontAreSkipped) {
  EXPECT_EQ(ParseColorText(" 7, 008,\t09"), 0x070809u);
}

TEST(ColorText, ReadingANumberStopsAtTheFirstNonDigit) {
  EXPECT_EQ(ParseColorText("12px,3 4,5.9"), 0x0C0305u);
}

TEST(ColorText, AnEmptyPartIsZero) { EXPECT_EQ(ParseColorText("1,,3"), 0x010003u); }

TEST(ColorText, AnAbsentPartIsFullyOn) {
  EXPECT_EQ(ParseColorText("1,2"), 0x0102FFu);
  EXPECT_EQ(ParseColorText("1"), 0x01FFFFu);
  EXPECT_EQ(ParseColorText(""), 0x00FFFFu);
}

TEST(ColorText, AThirdCommaEndsTheBlueNumber) { EXPECT_EQ(ParseColorText("1,2,3,4"), 0x010203u); }

TEST(ColorText, ANumberTooLargeForTheProcessorIsFullyOn) {
  // 19 digits are below 2^64, 20 nines are not; the field has no room for more after them.
  EXPECT_EQ(ParseColorText("99999999999999999999"), 0xFFFFFFu);
}

TEST(ColorText, AHexadecimalNumberTooLargeForTheProcessorIsFullyOn) {
  EXPECT_EQ(ParseColorText("0x1FFFFFFFFFFFFFFFF"), 0xFFFFFFu);
}

TEST(ColorText, OnlyTheFirstTwentyBytesCount) {
  // The field is full of blanks up to the last digit, and what follows is not part of it.
  EXPECT_EQ(ParseColorText("1,2,               3999"), 0x010203u);
  const char field[21] = {'1', ',', '2', ',', '0', '0', '0', '0', '0', '0', '0',
                          '0', '0', '0', '0', '0', '0', '0', '0', '5', '9'};
  EXPECT_EQ(ParseColorText(field), 0x010205u);
}

TEST(ColorText, CommasBehindTheTwentiethByteDoNotCount) {
  EXPECT_EQ(ParseColorText("00000000000000000001,2,3"), 0x01FFFFu);
}

}  // namespace
