#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "host/portable/Appearance.h"
#include "host/portable/Blobs.h"
#include "host/portable/BoardReader.h"

namespace obv_host {
namespace {

void ExpectColor(const CHAR8 *text) {
  unsigned red = 256;
  unsigned green = 256;
  unsigned blue = 256;
  int end = 0;
  EXPECT_EQ(std::sscanf(text, "%3u,%3u,%3u%n", &red, &green, &blue, &end), 3) << text;
  EXPECT_EQ(text[end], '\0') << text;
  EXPECT_LE(std::max({red, green, blue}), 255U) << text;
}

void ExpectFont(const OBV_FONT_CHOICE &font, UINT8 low) {
  bool known = false;
  for (const CHAR8 *name : kFaceNames) {
    known = known || std::string(name) == font.Name;
  }
  EXPECT_TRUE(known) << font.Name;
  // At 4320 lines a size may become four times as large, and fonts end at 60.
  EXPECT_GE(font.Size, low);
  EXPECT_LE(font.Size, 30);
}

TEST(HostAppearance, EveryColourIsAColour) {
  OBV_CONFIG config;
  FillAppearance(OBV_LOGO_A, OBV_MARKER_GREEN, &config);
  for (const CHAR8 *text :
       {config.TitleColor, config.KeyHelpKeyColor, config.KeyHelpColor, config.FooterColor,
        config.LeaderColor, config.FocusLeaderColor, config.HotspotColor, config.Filter.TextColor,
        config.Filter.BackgroundColor, config.Filter.BorderColor, config.FocusFilter.TextColor,
        config.FocusFilter.BackgroundColor, config.FocusFilter.BorderColor, config.Heading.Color,
        config.InfoLabel.Color, config.InfoText.Color, config.SideLabel.Color,
        config.SideText.Color}) {
    ExpectColor(text);
  }
  ExpectColor(kCloseFocusColor);
}

TEST(HostAppearance, EveryFontExistsAtEverySupportedScale) {
  OBV_CONFIG config;
  FillAppearance(OBV_LOGO_A, OBV_MARKER_GREEN, &config);
  // Sizes below 8 do not exist; the smallest scale is 0.8.
  for (const OBV_FONT_CHOICE *font :
       {&config.TitleFont, &config.KeyHelpFont, &config.FooterFont, &config.CalloutFont,
        &config.CloseFocusFont, &config.Filter.Font, &config.FocusFilter.Font, &config.Heading.Font,
        &config.InfoLabel.Font, &config.InfoText.Font, &config.SideLabel.Font,
        &config.SideText.Font}) {
    ExpectFont(*font, 10);
  }
}

struct Color {
  double Red;
  double Green;
  double Blue;
};

Color ParseColor(const CHAR8 *text) {
  Color color = {};
  EXPECT_EQ(std::sscanf(text, "%lf,%lf,%lf", &color.Red, &color.Green, &color.Blue), 3) << text;
  return color;
}

double Linear(double channel) {
  double share = channel / 255;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double Luminance(const CHAR8 *text) {
  Color color = ParseColor(text);
  return 0.2126 * Linear(color.Red) + 0.7152 * Linear(color.Green) + 0.0722 * Linear(color.Blue);
}

/// Contrast of two colours as the web's guidelines for accessibility define it, 1 to 21.
double Contrast(const CHAR8 *first, const CHAR8 *second) {
  double one = Luminance(first);
  double other = Luminance(second);
  return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

/// The view's screen, kScreenColor of the application.
constexpr CHAR8 kScreen[] = "44,44,44";

/// A text and what it stands on.
struct Pair {
  const CHAR8 *Text;
  const CHAR8 *Ground;
};

std::vector<Pair> PairsOf(const OBV_CONFIG &config) {
  return {
      {config.TitleColor, kScreen},
      {config.KeyHelpKeyColor, kScreen},
      {config.KeyHelpColor, kScreen},
      {config.FooterColor, kScreen},
      {config.Heading.Color, kScreen},
      {config.InfoLabel.Color, kScreen},
      {config.InfoText.Color, kScreen},
      {config.SideLabel.Color, kScreen},
      {config.SideText.Color, kScreen},
      {config.Filter.TextColor, config.Filter.BackgroundColor},
      {config.FocusFilter.TextColor, config.FocusFilter.BackgroundColor},
      // The selected button has the screen behind its text.
      {config.FocusFilter.BackgroundColor, kScreen},
      // The close button, at rest and with the focus.
      {"255,255,255", kScreen},
      {"0,0,0", kCloseFocusColor},
  };
}

std::vector<Pair> PairsOf(const BoardStyle &style) {
  return {
      {style.Default.TextColor, style.Default.BackgroundColor},
      {style.Default.MarkColor, style.Default.BackgroundColor},
      {style.Focus.TextColor, style.Focus.BackgroundColor},
      {style.Focus.MarkColor, style.Focus.BackgroundColor},
  };
}

void ExpectContrast(const std::vector<Pair> &pairs, double least) {
  for (const Pair &pair : pairs) {
    EXPECT_GE(Contrast(pair.Text, pair.Ground), least) << pair.Text << " on " << pair.Ground;
  }
}

/// The looks of the callouts of the board that the host embeds.
std::vector<BoardStyle> EmbeddedStyles() {
  EmbeddedFile file = EmbeddedBoard();
  Board board;
  BoardFault fault;
  EXPECT_EQ(OpenBoard(file.Data, file.Size, &board, &fault), EFI_SUCCESS) << fault.Text;
  std::vector<BoardStyle> styles;
  for (UINTN i = 0; i < board.Header.StyleCount; i++) {
    styles.push_back(StyleAt(board, i));
  }
  return styles;
}

TEST(HostAppearance, ContrastOfBlackAndWhiteIsTheLargest) {
  EXPECT_NEAR(Contrast("0,0,0", "255,255,255"), 21, 0.001);
  EXPECT_NEAR(Contrast("119,119,119", "255,255,255"), 4.48, 0.01);
}

TEST(HostAppearance, EveryTextIsLegible) {
  OBV_CONFIG config;
  FillAppearance(OBV_LOGO_A, OBV_MARKER_GREEN, &config);
  ExpectContrast(PairsOf(config), 4.5);
  for (const BoardStyle &style : EmbeddedStyles()) {
    ExpectContrast(PairsOf(style), 4.5);
  }
}

TEST(HostAppearance, HighContrastIsHighForEveryText) {
  const LookChoice choice = {.HighContrast = true, .LargeText = false};
  OBV_CONFIG config;
  FillAppearance(OBV_LOGO_A, OBV_MARKER_GREEN, &config);
  AdaptAppearance(choice, &config);
  ExpectContrast(PairsOf(config), 7);
  // Whatever the board says.
  BoardStyle style = {};
  AdaptStyle(choice, &style);
  ExpectContrast(PairsOf(style), 7);
}

TEST(HostAppearance, HighContrastHasNothingBetweenWhiteBlackAndYellow) {
  OBV_CONFIG config;
  FillAppearance(OBV_LOGO_A, OBV_MARKER_GREEN, &config);
  AdaptAppearance({.HighContrast = true, .LargeText = false}, &config);
  std::vector<std::string> colors = {
      config.TitleColor,  config.KeyHelpKeyColor,  config.KeyHelpColor, config.FooterColor,
      config.LeaderColor, config.FocusLeaderColor, config.HotspotColor};
  for (const OBV_FILTER_BUTTON_LOOK *look : {&config.Filter, &config.FocusFilter}) {
    colors.insert(colors.end(), {look->TextColor, look->BackgroundColor, look->BorderColor});
  }
  for (const OBV_PANEL_LOOK *look : {&config.Heading, &config.InfoLabel, &config.InfoText,
                                     &config.SideLabel, &config.SideText}) {
    colors.emplace_back(look->Color);
  }
  EXPECT_THAT(colors, testing::Each(testing::AnyOf("255,255,255", "0,0,0", "255,255,0")));
}

TEST(HostAppearance, TheUsualLookIsLeftAlone) {
  OBV_CONFIG config;
  OBV_CONFIG adapted;
  FillAppearance(OBV_LOGO_A, OBV_MARKER_GREEN, &config);
  FillAppearance(OBV_LOGO_A, OBV_MARKER_GREEN, &adapted);
  AdaptAppearance({}, &adapted);
  EXPECT_EQ(CompareMem(&config, &adapted, sizeof(config)), 0);
  const BoardStyle style = EmbeddedStyles().front();
  BoardStyle kept = style;
  AdaptStyle({.HighContrast = false, .LargeText = true}, &kept);
  EXPECT_EQ(CompareMem(&style, &kept, sizeof(style)), 0);
}

const std::vector<OBV_FONT_CHOICE OBV_CONFIG::*> kPlainFonts = {
    &OBV_CONFIG::TitleFont, &OBV_CONFIG::KeyHelpFont, &OBV_CONFIG::FooterFont,
    &OBV_CONFIG::CalloutFont, &OBV_CONFIG::CloseFocusFont};
const std::vector<OBV_PANEL_LOOK OBV_CONFIG::*> kPanels = {
    &OBV_CONFIG::Heading, &OBV_CONFIG::InfoLabel, &OBV_CONFIG::InfoText, &OBV_CONFIG::SideLabel,
    &OBV_CONFIG::SideText};

std::vector<int> Sizes(const OBV_CONFIG &config) {
  std::vector<int> sizes = {config.Filter.Font.Size, config.FocusFilter.Font.Size};
  for (auto font : kPlainFonts) {
    sizes.push_back((config.*font).Size);
  }
  for (auto panel : kPanels) {
    sizes.push_back((config.*panel).Font.Size);
  }
  return sizes;
}

TEST(HostAppearance, LargeTextIsAHalfLarger) {
  OBV_CONFIG config;
  FillAppearance(OBV_LOGO_A, OBV_MARKER_GREEN, &config);
  std::vector<int> usual = Sizes(config);
  AdaptAppearance({.HighContrast = false, .LargeText = true}, &config);
  std::vector<int> large = Sizes(config);
  for (size_t i = 0; i < usual.size(); i++) {
    // Sizes are whole pixels.
    EXPECT_NEAR(large[i], usual[i] * 1.5, 0.5);
    // At twice the lines they still exist.
    EXPECT_LE(large[i], 30);
  }
}

TEST(HostAppearance, AnyVariableIsALook) {
  EXPECT_FALSE(ParseLookChoice(nullptr, 0).HighContrast);
  const UINT8 chosen[] = {9, 9, OBV_CONTRAST_HIGH, OBV_LETTERS_LARGE, 77};
  for (UINTN size = 0; size < 4; size++) {
    LookChoice cut = ParseLookChoice(chosen, size);
    EXPECT_FALSE(cut.HighContrast || cut.LargeText) << size;
  }
  for (UINTN size : {4, 5}) {
    LookChoice choice = ParseLookChoice(chosen, size);
    EXPECT_TRUE(choice.HighContrast && choice.LargeText) << size;
  }
  const UINT8 unknown[] = {9, 9, 2, 255};
  LookChoice usual = ParseLookChoice(unknown, sizeof(unknown));
  EXPECT_FALSE(usual.HighContrast || usual.LargeText);
  const std::vector<UINT8> large(OBV_SETUP_VARIABLE_LIMIT + 1, 1);
  LookChoice other = ParseLookChoice(large.data(), large.size());
  EXPECT_FALSE(other.HighContrast || other.LargeText);
}

TEST(HostAppearance, LogoAndMarkerAreTheBoards) {
  OBV_CONFIG config;
  FillAppearance(OBV_LOGO_NONE, OBV_MARKER_RED, &config);
  EXPECT_EQ(config.Logo, OBV_LOGO_NONE);
  EXPECT_EQ(config.MarkerTheme, OBV_MARKER_RED);
}

}  // namespace
}  // namespace obv_host
