#include <gtest/gtest.h>

#include <string>

#include "host/portable/Facts.h"

namespace obv_host {
namespace {

class HostFacts : public testing::Test {
 protected:
  std::string Label(UINTN index) const { return TextOf(Told.Lines[index].Label); }
  std::string Value(UINTN index) const { return TextOf(Told.Lines[index].Value); }

  /// The value that a field of exactly these bytes is told as; "nothing" without a line.
  static std::string Field(const std::string &bytes) {
    Facts facts = {};
    // Exactly as large as the field, so that the address sanitizer sees what is read beyond it.
    std::vector<char> exact(bytes.begin(), bytes.end());
    TellField(&facts, OBV_INFO_DESCRIPTION, "Label", exact.data(), exact.size());
    return facts.Count == 0 ? "nothing" : TextOf(facts.Lines[0].Value);
  }

  Facts Told = {};

 private:
  template <size_t kSize>
  static std::string TextOf(const CHAR16 (&text)[kSize]) {
    std::string result;
    for (size_t i = 0; i < kSize && text[i] != 0; i++) {
      result += text[i] < 0x80 ? static_cast<char>(text[i]) : '!';
    }
    return result;
  }
};

TEST_F(HostFacts, FactIsALineOfItsKind) {
  TellFact(&Told, OBV_INFO_SIDE_LIST, "Speed", "%d MT/s, %a", 3200, "dual");
  ASSERT_EQ(Told.Count, 1U);
  EXPECT_EQ(Told.Lines[0].Kind, static_cast<UINT32>(OBV_INFO_SIDE_LIST));
  EXPECT_EQ(Label(0), "Speed");
  EXPECT_EQ(Value(0), "3200 MT/s, dual");
}

TEST_F(HostFacts, FactsKeepTheirOrder) {
  TellFact(&Told, OBV_INFO_DESCRIPTION, "One", "1");
  TellFact(&Told, OBV_INFO_DESCRIPTION, "Two", "2");
  ASSERT_EQ(Told.Count, 2U);
  EXPECT_EQ(Label(0) + Label(1), "OneTwo");
}

TEST_F(HostFacts, FieldEndsAtItsTerminatorOrItsSize) {
  EXPECT_EQ(Field("ABC"), "ABC");
  EXPECT_EQ(Field(std::string("ABC\0DEF", 7)), "ABC");
}

TEST_F(HostFacts, BlanksAtEitherEndAreLeftOut) {
  EXPECT_EQ(Field("  A  B \t "), "A  B");
  EXPECT_EQ(Field("\tX"), "X");
}

TEST_F(HostFacts, EmptyTextsAreNoLines) {
  EXPECT_EQ(Field(""), "nothing");
  EXPECT_EQ(Field("   \t"), "nothing");
  EXPECT_EQ(Field(std::string("\0ABC", 4)), "nothing");
  TellFact(&Told, OBV_INFO_DESCRIPTION, "Label", "%a", "");
  EXPECT_EQ(Told.Count, 0U);
}

TEST_F(HostFacts, WhatCannotBeDrawnIsAQuestionMark) {
  EXPECT_EQ(Field("A\x01\x7F\x80\xFFZ"), "A????Z");
  EXPECT_EQ(Field("~ !"), "~ !");
}

TEST_F(HostFacts, NumberSignsAreDoubled) { EXPECT_EQ(Field("#1 #2"), "##1 ##2"); }

TEST_F(HostFacts, LongTextsAreCut) {
  EXPECT_EQ(Field(std::string(400, 'x')), std::string(255, 'x'));
  EXPECT_EQ(Field(std::string(254, 'x') + "yz"), std::string(254, 'x') + "y");
}

TEST_F(HostFacts, CutLeavesNoHalfOfADoubledSign) {
  EXPECT_EQ(Field(std::string(254, 'x') + "#"), std::string(254, 'x'));
  EXPECT_EQ(Field(std::string(253, 'x') + "#"), std::string(253, 'x') + "##");
  EXPECT_EQ(Field(std::string(200, '#')), std::string(254, '#'));
}

TEST_F(HostFacts, LongLabelsAreCut) {
  TellFact(&Told, OBV_INFO_DESCRIPTION, std::string(40, 'L').c_str(), "value");
  EXPECT_EQ(Label(0), std::string(31, 'L'));
}

TEST_F(HostFacts, LinesBeyondTheLastAreLeftOut) {
  for (int i = 0; i < 25; i++) {
    TellFact(&Told, OBV_INFO_DESCRIPTION, "Line", "%d", i);
  }
  ASSERT_EQ(Told.Count, static_cast<UINTN>(OBV_INFO_CAPACITY));
  EXPECT_EQ(Value(OBV_INFO_CAPACITY - 1), "19");
}

}  // namespace
}  // namespace obv_host
