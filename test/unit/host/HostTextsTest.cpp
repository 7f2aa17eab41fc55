#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "host/portable/Texts.h"

extern "C" {
#include <Uefi/UefiInternalFormRepresentation.h>
}

namespace obv_host {
namespace {

std::string Utf8(const char16_t *text) {
  std::string result;
  for (; *text != 0; text++) {
    unsigned unit = *text;
    if (unit < 0x80) {
      result += static_cast<char>(unit);
    } else if (unit < 0x800) {
      result += static_cast<char>(0xC0 | unit >> 6);
      result += static_cast<char>(0x80 | (unit & 0x3F));
    } else {
      result += static_cast<char>(0xE0 | unit >> 12);
      result += static_cast<char>(0x80 | (unit >> 6 & 0x3F));
      result += static_cast<char>(0x80 | (unit & 0x3F));
    }
  }
  return result;
}

// Places in OBV_SHARED_STATE.StringIds.
constexpr size_t kKeyHelp = 1;
constexpr size_t kFilterHint = 4;
constexpr size_t kSavedText = 8;

std::vector<std::string> Directives(const std::string &text) {
  std::vector<std::string> found;
  for (size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 1)) {
    found.push_back(text.compare(at, 4, "%.6x") == 0 ? "%.6x" : text.substr(at, 2));
  }
  return found;
}

TEST(HostTexts, OffersTheSixLanguages) {
  std::set<std::string> codes;
  for (const LanguageTexts &language : kLanguages) {
    codes.insert(language.Code);
  }
  EXPECT_EQ(codes, (std::set<std::string>{"en-US", "de-DE", "fr-FR", "es-ES", "zh-Hans", "ja-JP"}));
  EXPECT_STREQ(kLanguages[0].Code, "en-US");
}

TEST(HostTexts, EveryTextIsThere) {
  for (const LanguageTexts &language : kLanguages) {
    for (size_t i = 0; i < OBV_STRING_COUNT; i++) {
      ASSERT_NE(TextAt(language, i), nullptr) << language.Code << " " << i;
      EXPECT_NE(*TextAt(language, i), 0) << language.Code << " " << i;
    }
  }
}

/// By number, as the contract counts them.
TEST(HostTexts, StandInTheOrderOfTheContract) {
  const LanguageTexts &english = kLanguages[0];
  const char16_t *const expected[] = {
      english.Title,        english.KeyHelp,       english.Footer,       english.CloseHint,
      english.FilterHint,   english.VolumeTitle,   english.VolumeText,   english.SavedTitle,
      english.SavedText,    english.FailureTitle,  english.NoVolumeText, english.WriteProtectedText,
      english.NotSavedText, english.ConfirmButton, english.CancelButton,
  };
  EXPECT_EQ(Utf8(TextAt(english, 0)), "Board view");
  EXPECT_EQ(Utf8(TextAt(english, OBV_STRING_COUNT - 1)), "Cancel");
  for (size_t i = 0; i < OBV_STRING_COUNT; i++) {
    EXPECT_EQ(TextAt(english, i), expected[i]) << i;
  }
}

TEST(HostTexts, FormatsTakeWhatTheViewGives) {
  for (const LanguageTexts &language : kLanguages) {
    for (size_t i = 0; i < OBV_STRING_COUNT; i++) {
      std::vector<std::string> expected;
      if (i == kKeyHelp) {
        expected.assign(5, "%.6x");
      } else if (i == kFilterHint) {
        expected.assign(1, "%a");
      } else if (i == kSavedText) {
        expected.assign(2, "%a");
      }
      EXPECT_EQ(Directives(Utf8(TextAt(language, i))), expected) << language.Code << " " << i;
    }
  }
}

/// Each recolour command is "#rrggbb text#".
TEST(HostTexts, KeyHelpColoursFiveKeys) {
  for (const LanguageTexts &language : kLanguages) {
    std::string text = Utf8(language.KeyHelp);
    size_t marks = 0;
    for (size_t at = text.find('#'); at != std::string::npos; at = text.find('#', at + 1)) {
      if (marks % 2 == 0) {
        EXPECT_EQ(text.substr(at, 6), "#%.6x ") << language.Code;
      }
      marks++;
    }
    EXPECT_EQ(marks, 10U) << language.Code;
  }
}

TEST(HostTexts, HintsAreDrawnWithRecolouring) {
  for (const LanguageTexts &language : kLanguages) {
    for (const char16_t *hint : {language.CloseHint, language.FilterHint}) {
      EXPECT_EQ(Utf8(hint).find('#'), std::string::npos) << language.Code;
    }
  }
}

TEST(HostTexts, FormattedTextsFitTheViewsBuffers) {
  for (const LanguageTexts &language : kLanguages) {
    CHAR8 buffer[1000];
    UINTN length = AsciiSPrint(buffer, sizeof(buffer), Utf8(language.KeyHelp).c_str(), 0xFFDB4B,
                               0xFFDB4B, 0xFFDB4B, 0xFFDB4B, 0xFFDB4B);
    EXPECT_LE(length, 299U) << language.Code;
    length = AsciiSPrint(buffer, sizeof(buffer), Utf8(language.FilterHint).c_str(), "SATA");
    EXPECT_LE(length, 99U) << language.Code;
  }
}

/// The texts of a package from *block, which then stands behind the last.
std::vector<std::u16string> ReadStrings(const std::vector<UINT8> &buffer, size_t *block) {
  std::vector<std::u16string> strings;
  while (buffer.at(*block) == EFI_HII_SIBT_STRING_UCS2) {
    ++*block;
    std::u16string text;
    char16_t unit = 0;
    do {
      unit = static_cast<char16_t>(buffer.at(*block) | buffer.at(*block + 1) << 8);
      *block += 2;
      text += unit;
    } while (unit != 0);
    text.pop_back();
    strings.push_back(text);
  }
  return strings;
}

/// Reads the packages back as the HII database does.
TEST(HostTexts, PackagesHoldEveryTextUnderItsIdentifier) {
  std::vector<UINT8> buffer(StringPackagesSize() + 1, 0xCC);
  WriteStringPackages(buffer.data());
  EXPECT_EQ(buffer.back(), 0xCC);
  UINT32 total;
  memcpy(&total, buffer.data(), sizeof(total));
  ASSERT_EQ(total, buffer.size() - 1);
  size_t at = sizeof(total);
  for (const LanguageTexts &language : kLanguages) {
    EFI_HII_STRING_PACKAGE_HDR header;
    memcpy(&header, &buffer[at], sizeof(header));
    EXPECT_EQ(header.Header.Type, EFI_HII_PACKAGE_STRINGS);
    EXPECT_EQ(header.HdrSize, header.StringInfoOffset);
    EXPECT_EQ(header.LanguageName, 1);
    // Windows of a compression that no text here uses.
    for (CHAR16 window : header.LanguageWindow) {
      EXPECT_EQ(window, 0);
    }
    const char *code = reinterpret_cast<const char *>(&buffer[at]) +
                       OFFSET_OF(EFI_HII_STRING_PACKAGE_HDR, Language);
    EXPECT_STREQ(code, language.Code);
    EXPECT_EQ(header.HdrSize, OFFSET_OF(EFI_HII_STRING_PACKAGE_HDR, Language) + strlen(code) + 1);

    size_t block = at + header.StringInfoOffset;
    std::vector<std::u16string> strings = ReadStrings(buffer, &block);
    EXPECT_EQ(buffer.at(block), EFI_HII_SIBT_END);
    EXPECT_EQ(block + 1, at + header.Header.Length);
    ASSERT_EQ(strings.size(), OBV_STRING_COUNT + 1U);
    EXPECT_EQ(strings[0], language.NativeName);
    for (size_t i = 0; i < OBV_STRING_COUNT; i++) {
      EXPECT_EQ(strings[TextId(i) - 1U], TextAt(language, i));
    }
    at += header.Header.Length;
  }
  EXPECT_EQ(at, buffer.size() - 1);
}

}  // namespace
}  // namespace obv_host
