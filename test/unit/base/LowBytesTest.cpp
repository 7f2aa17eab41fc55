// The copy that keeps each character's low byte.

#include <gtest/gtest.h>

#include "app/base/LowBytes.h"

namespace {

/// Five bytes of output after a copy with room for `size` of them.
std::string Copied(std::u16string_view text, UINTN size) {
  std::vector<CHAR16> units(text.begin(), text.end());
  units.push_back(0);
  std::string output = "-----";
  CopyLowBytes(units.data(), output.data(), size);
  return output;
}

TEST(LowBytes, AreCopiedWithTheirEnd) {
  EXPECT_EQ(Copied(u"A\u00FF\u0142", 5), std::string("A\xFF\x42\0-", 5));
  EXPECT_EQ(Copied(u"", 1), std::string("\0----", 5));
}

TEST(LowBytes, TextThatDoesNotFitIsRefusedWhole) {
  EXPECT_EQ(Copied(u"ABCD", 5), std::string("ABCD\0", 5));
  EXPECT_EQ(Copied(u"ABCD", 4), "-----");
  EXPECT_EQ(Copied(u"", 0), "-----");
}

// Neither is the end of the text looked for beyond the output's size.
TEST(LowBytes, TextWithoutAnEndIsReadUpToTheSizeAlone) {
  std::vector<CHAR16> units(4, u'x');
  std::string output = "-----";
  CopyLowBytes(units.data(), output.data(), units.size());
  EXPECT_EQ(output, "-----");
}

}  // namespace
