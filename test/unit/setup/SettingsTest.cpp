#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "setup/portable/Settings.h"

namespace obv_setup {
namespace {

Settings Defaults() {
  Settings settings;
  SetDefaults(&settings);
  return settings;
}

bool AreDefaults(const Settings &settings) {
  Settings defaults = Defaults();
  return std::memcmp(&settings, &defaults, sizeof(settings)) == 0;
}

Settings Read(const std::vector<UINT8> &bytes) {
  Settings settings;
  ReadSettings(bytes.data(), bytes.size(), &settings);
  return settings;
}

std::vector<UINT8> BytesOf(const Settings &settings) {
  const auto *first = reinterpret_cast<const UINT8 *>(&settings);
  return {first, first + sizeof(settings)};
}

TEST(Settings, DefaultsAreValid) {
  EXPECT_TRUE(AreValid(Defaults()));
  EXPECT_EQ(Defaults().Look.Contrast, OBV_CONTRAST_STANDARD);
  EXPECT_EQ(Defaults().Look.TextSize, OBV_LETTERS_STANDARD);
}

TEST(Settings, DefaultsAreWithinTheirLimits) {
  for (const OptionRule &rule : kOptionRules) {
    EXPECT_LE(rule.Default, rule.Limit) << rule.Question;
    EXPECT_GT(rule.Limit, 0) << rule.Question;
  }
}

TEST(Settings, WithoutAVariableAllIsDefault) {
  Settings settings;
  ReadSettings(nullptr, 0, &settings);
  EXPECT_TRUE(AreDefaults(settings));
}

TEST(Settings, SavedValuesComeBack) {
  Settings saved = Defaults();
  saved.Look.Contrast = OBV_CONTRAST_HIGH;
  saved.Look.TextSize = OBV_LETTERS_LARGE;
  for (UINTN i = 0; i < kOptionCount; i++) {
    saved.Options[i] = kOptionRules[i].Limit;
  }
  EXPECT_TRUE(AreValid(saved));
  EXPECT_EQ(BytesOf(Read(BytesOf(saved))), BytesOf(saved));
}

TEST(Settings, EveryValueBeyondItsLimitIsTheDefaultAlone) {
  for (UINTN i = 0; i < kOptionCount; i++) {
    Settings saved = Defaults();
    saved.Options[i] = static_cast<UINT8>(kOptionRules[i].Limit + 1);
    UINTN other = (i + 1) % kOptionCount;
    saved.Options[other] = kOptionRules[other].Limit;
    EXPECT_FALSE(AreValid(saved));
    Settings read = Read(BytesOf(saved));
    EXPECT_EQ(read.Options[i], kOptionRules[i].Default);
    EXPECT_EQ(read.Options[other], kOptionRules[other].Limit);
  }
}

TEST(Settings, LooksThatDoNotExistAreTheUsualOne) {
  Settings saved = Defaults();
  saved.Look.Contrast = 2;
  saved.Look.TextSize = 255;
  EXPECT_FALSE(AreValid(saved));
  EXPECT_TRUE(AreDefaults(Read(BytesOf(saved))));
}

TEST(Settings, AnotherLayoutKeepsTheLookAlone) {
  Settings saved = Defaults();
  saved.Look.Layout = static_cast<UINT16>(kLayout + 1);
  saved.Look.TextSize = OBV_LETTERS_LARGE;
  saved.Options[0] = static_cast<UINT8>(1 - kOptionRules[0].Default);
  EXPECT_FALSE(AreValid(saved));
  Settings read = Read(BytesOf(saved));
  EXPECT_EQ(read.Look.Layout, kLayout);
  EXPECT_EQ(read.Look.TextSize, OBV_LETTERS_LARGE);
  EXPECT_EQ(read.Options[0], kOptionRules[0].Default);
}

TEST(Settings, AnySizeAndContentGivesValidSettings) {
  std::mt19937 random(1);
  for (size_t size = 0; size <= OBV_SETUP_VARIABLE_LIMIT + 8; size++) {
    std::vector<UINT8> bytes(size);
    for (UINT8 &byte : bytes) {
      byte = static_cast<UINT8>(random());
    }
    if (size >= 2) {
      std::memcpy(bytes.data(), &kLayout, sizeof(kLayout));
    }
    EXPECT_TRUE(AreValid(Read(bytes))) << size;
  }
}

TEST(Settings, ALargerVariableIsNotTheSetups) {
  std::vector<UINT8> bytes(OBV_SETUP_VARIABLE_LIMIT + 1, 1);
  EXPECT_TRUE(AreDefaults(Read(bytes)));
}

}  // namespace
}  // namespace obv_setup
