#include <gtest/gtest.h>

#include <string>

#include "setup/portable/Language.h"

namespace obv_setup {
namespace {

/// The language that the bytes stand for, without a byte to spare behind them.
std::string CodeOf(const std::string &bytes) {
  auto *exact = new CHAR8[bytes.size()];
  bytes.copy(exact, bytes.size());
  UINT8 index = LanguageIndex(exact, bytes.size());
  delete[] exact;
  return index < kLanguageCount ? kLanguageCodes[index] : "none";
}

TEST(Language, EachOneIsFound) {
  for (const CHAR8 *code : kLanguageCodes) {
    EXPECT_EQ(CodeOf(std::string(code) + '\0'), code);
    EXPECT_EQ(CodeOf(code), code) << "without an end";
  }
}

TEST(Language, AnotherRegionIsItsLanguage) {
  EXPECT_EQ(CodeOf("de-AT"), "de-DE");
  EXPECT_EQ(CodeOf("de"), "de-DE");
  EXPECT_EQ(CodeOf("zh-Hant"), "zh-Hans");
}

TEST(Language, WhatIsNotThereIsTheFirst) {
  EXPECT_EQ(CodeOf(""), "en-US");
  EXPECT_EQ(CodeOf("it-IT"), "en-US");
  EXPECT_EQ(CodeOf("d"), "en-US");
  EXPECT_EQ(CodeOf("-"), "en-US");
  EXPECT_EQ(CodeOf("deutsch"), "en-US");
  EXPECT_EQ(CodeOf(std::string("\0de-DE", 6)), "en-US");
  EXPECT_EQ(LanguageIndex(nullptr, 4), 0);
}

}  // namespace
}  // namespace obv_setup
