#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "host/portable/Appearance.h"

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

TEST(HostAppearance, LogoAndMarkerAreTheBoards) {
  OBV_CONFIG config;
  FillAppearance(OBV_LOGO_NONE, OBV_MARKER_RED, &config);
  EXPECT_EQ(config.Logo, OBV_LOGO_NONE);
  EXPECT_EQ(config.MarkerTheme, OBV_MARKER_RED);
}

}  // namespace
}  // namespace obv_host
