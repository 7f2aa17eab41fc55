// How EDK2's libraries print and append at the ends of the application's buffers.

#include <gtest/gtest.h>

#include "test/firmware/Text.h"

extern "C" {
#include <Library/BaseLib.h>
#include <Library/PrintLib.h>
}

namespace {

// A buffer with guard bytes behind it.
class Guarded {
 public:
  explicit Guarded(size_t size) : size_(size), bytes_(size + kGuardBytes, kGuard) { bytes_[0] = 0; }
  CHAR8 *Text() { return bytes_.data(); }
  std::string String() const { return bytes_.data(); }
  bool GuardIsWhole() const {
    return std::all_of(bytes_.begin() + static_cast<ptrdiff_t>(size_), bytes_.end(),
                       [](CHAR8 byte) { return byte == kGuard; });
  }

 private:
  static constexpr CHAR8 kGuard = 0x5A;
  static constexpr size_t kGuardBytes = 16;
  size_t size_;
  std::vector<CHAR8> bytes_;
};

// The sizes of names, headings, the host's text, hints, lines, box texts, and panel texts.
class BoundedText : public testing::TestWithParam<size_t> {};
INSTANTIATE_TEST_SUITE_P(Sizes, BoundedText,
                         testing::Values(size_t{20}, size_t{40}, size_t{50}, size_t{100},
                                         size_t{290}, size_t{512}, size_t{1280}),
                         [](const auto &info) { return std::to_string(info.param) + "Bytes"; });

TEST_P(BoundedText, PrintCutsAndTerminates) {
  size_t size = GetParam();
  for (size_t length : {size - 2, size - 1, size, size + 1, 3 * size}) {
    Guarded buffer(size);
    std::vector<CHAR16> text = fake::ToFirmware(std::u16string(length, u'x'));
    std::vector<CHAR16> format = fake::ToFirmware(u"%S");
    UINTN printed = AsciiSPrintUnicodeFormat(buffer.Text(), size, format.data(), text.data());
    size_t expected = std::min(length, size - 1);
    EXPECT_EQ(printed, expected) << length;
    EXPECT_EQ(buffer.String(), std::string(expected, 'x')) << length;
    EXPECT_TRUE(buffer.GuardIsWhole()) << length;
  }
}

TEST_P(BoundedText, PrintedLineEndTakesTwoBytes) {
  size_t size = GetParam();
  for (size_t length : {size - 4, size - 3, size - 2, size - 1}) {
    Guarded buffer(size);
    std::vector<CHAR16> text = fake::ToFirmware(std::u16string(length, u'x'));
    std::vector<CHAR16> format = fake::ToFirmware(u"%S\n");
    AsciiSPrintUnicodeFormat(buffer.Text(), size, format.data(), text.data());
    EXPECT_EQ(buffer.String(), (std::string(length, 'x') + "\r\n").substr(0, size - 1)) << length;
    EXPECT_TRUE(buffer.GuardIsWhole()) << length;
  }
}

TEST_P(BoundedText, LineFeedOfAnArgumentStaysAlone) {
  Guarded buffer(GetParam());
  std::vector<CHAR16> format = fake::ToFirmware(u"%S");
  std::vector<CHAR16> text = fake::ToFirmware(u"a\nb");
  AsciiSPrintUnicodeFormat(buffer.Text(), GetParam(), format.data(), text.data());
  EXPECT_EQ(buffer.String(), "a\nb");
}

TEST_P(BoundedText, AppendIsAllOrNothing) {
  size_t size = GetParam();
  for (size_t before : {size_t{0}, size_t{1}, size / 2, size - 2, size - 1}) {
    for (size_t length : {size_t{0}, size_t{1}, size - 2 - before, size - 1 - before, size - before,
                          size - before + 1, size}) {
      if (length > size) {
        continue;  // size - 2 - before, wrapped
      }
      Guarded buffer(size);
      std::string old(before, 'o');
      ASSERT_EQ(AsciiStrCpyS(buffer.Text(), size, old.c_str()), RETURN_SUCCESS);
      std::string added(length, 'a');
      RETURN_STATUS status = AsciiStrCatS(buffer.Text(), size, added.c_str());
      bool fits = before + length < size;
      EXPECT_EQ(!RETURN_ERROR(status), fits) << before << " + " << length;
      EXPECT_EQ(buffer.String(), fits ? old + added : old) << before << " + " << length;
      EXPECT_TRUE(buffer.GuardIsWhole());
    }
  }
}

TEST_P(BoundedText, CopyFromUcs2IsAllOrNothing) {
  size_t size = GetParam();
  for (size_t length : {size - 2, size - 1, size, size + 1}) {
    Guarded buffer(size);
    std::vector<CHAR16> text = fake::ToFirmware(std::u16string(length, u'x'));
    RETURN_STATUS status = UnicodeStrToAsciiStrS(text.data(), buffer.Text(), size);
    bool fits = length < size;
    EXPECT_EQ(!RETURN_ERROR(status), fits) << length;
    EXPECT_EQ(buffer.String(), fits ? std::string(length, 'x') : "") << length;
    EXPECT_TRUE(buffer.GuardIsWhole());
  }
}

TEST(PrintedText, ColourIsPrintedWithSixUpperCaseDigits) {
  CHAR8 buffer[20];
  AsciiSPrint(buffer, sizeof buffer, "#%.6x ", 0x00ABCu);
  EXPECT_STREQ(buffer, "#000ABC ");
  AsciiSPrint(buffer, sizeof buffer, "#%.6x ", 0xFFFFFFu);
  EXPECT_STREQ(buffer, "#FFFFFF ");
}

// Of a copied text, at most a number of characters is taken.
TEST(PrintedText, CountedCopyTakesTheBeginning) {
  CHAR8 buffer[512];
  EXPECT_EQ(AsciiStrnCpyS(buffer, sizeof buffer, std::string(600, 'x').c_str(), 511),
            RETURN_SUCCESS);
  EXPECT_EQ(std::string(buffer), std::string(511, 'x'));
}

}  // namespace
