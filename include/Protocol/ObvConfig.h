/** @file
  The appearance record: colours, fonts and themes of the board view.

  Owned by the host and read by the application while it builds the view.
  Colour texts are three comma-separated numbers (red, green, blue); a font is
  a face name and its size in pixels on a screen of 1080 lines. Plain C.
**/

#ifndef BOARDSCOPE_OBV_CONFIG_H_
#define BOARDSCOPE_OBV_CONFIG_H_

#include <Uefi.h>

#include <Protocol/ObvLayout.h>

#define OBV_LOGO_A     0
#define OBV_LOGO_B     1
#define OBV_LOGO_C     2
#define OBV_LOGO_NONE  0xFF

#define OBV_MARKER_GREEN  0
#define OBV_MARKER_RED    1
#define OBV_MARKER_AMBER  2

/// Room for OBV_CONFIG.TextRoom.
#define OBV_ROOM_SIZE  16
/// With exactly this text there, the room of title, key help, footer and summary grows with their
/// fonts, for sizes well above the usual. With anything else it is fixed: the bytes are no field of
/// older hosts, which may have left anything there.
#define OBV_ROOM_GROWS  "room that grows"

typedef struct {
  CHAR8    Name[OBV_FONT_NAME_SIZE];
  UINT8    Size;
} OBV_FONT_CHOICE;

/// Look of a filter button in one state.
typedef struct {
  CHAR8              TextColor[OBV_COLOR_TEXT_SIZE];
  CHAR8              BackgroundColor[OBV_COLOR_TEXT_SIZE];
  CHAR8              BorderColor[OBV_COLOR_TEXT_SIZE];
  UINT8              BorderWidth;    ///< Pixels; 0 for no border.
  UINT8              CornerRadius;   ///< Pixels.
  OBV_FONT_CHOICE    Font;
} OBV_FILTER_BUTTON_LOOK;

/// One colour and one font of the information panels.
typedef struct {
  CHAR8              Color[OBV_COLOR_TEXT_SIZE];
  OBV_FONT_CHOICE    Font;
  UINT8              Spare;
} OBV_PANEL_LOOK;

typedef struct {
  UINT8                     Logo;                                   ///< OBV_LOGO_*; other values show logo A.
  CHAR8                     TitleColor[OBV_COLOR_TEXT_SIZE];
  OBV_FONT_CHOICE           TitleFont;
  CHAR8                     KeyHelpKeyColor[OBV_COLOR_TEXT_SIZE];   ///< Colour of the keys in the key-help line.
  CHAR8                     KeyHelpColor[OBV_COLOR_TEXT_SIZE];
  OBV_FONT_CHOICE           KeyHelpFont;
  CHAR8                     FooterColor[OBV_COLOR_TEXT_SIZE];
  OBV_FONT_CHOICE           FooterFont;
  CHAR8                     LeaderColor[OBV_COLOR_TEXT_SIZE];
  CHAR8                     FocusLeaderColor[OBV_COLOR_TEXT_SIZE];
  CHAR8                     HotspotColor[OBV_COLOR_TEXT_SIZE];
  UINT8                     MarkerTheme;                            ///< OBV_MARKER_*.
  CHAR8                     TextRoom[OBV_ROOM_SIZE];           ///< OBV_ROOM_GROWS, or anything.
  UINT8                     Reserved0DD[66];
  OBV_FONT_CHOICE           CalloutFont;                            ///< Callouts and the close button.
  UINT8                     Reserved134[82];
  OBV_FONT_CHOICE           CloseFocusFont;                         ///< Close button with keyboard focus.
  OBV_FILTER_BUTTON_LOOK    Filter;
  OBV_FILTER_BUTTON_LOOK    FocusFilter;
  UINT8                     Reserved241[127];
  OBV_PANEL_LOOK            Heading;                                ///< Panel heading: colour and font.
  OBV_PANEL_LOOK            InfoLabel;                              ///< Labels in the info text; font of the info text.
  OBV_PANEL_LOOK            InfoText;                               ///< Info text colour; font not used.
  OBV_PANEL_LOOK            SideLabel;                              ///< Labels in the side list; font of the side list.
  OBV_PANEL_LOOK            SideText;                               ///< Side list colour; font not used.
} OBV_CONFIG;

OBV_ASSERT_OFFSET (OBV_CONFIG, TitleColor, 0x001);
OBV_ASSERT_OFFSET (OBV_CONFIG, TitleFont, 0x015);
OBV_ASSERT_OFFSET (OBV_CONFIG, TitleFont.Size, 0x029);
OBV_ASSERT_OFFSET (OBV_CONFIG, KeyHelpKeyColor, 0x02A);
OBV_ASSERT_OFFSET (OBV_CONFIG, KeyHelpColor, 0x03E);
OBV_ASSERT_OFFSET (OBV_CONFIG, KeyHelpFont, 0x052);
OBV_ASSERT_OFFSET (OBV_CONFIG, KeyHelpFont.Size, 0x066);
OBV_ASSERT_OFFSET (OBV_CONFIG, FooterColor, 0x067);
OBV_ASSERT_OFFSET (OBV_CONFIG, FooterFont, 0x07B);
OBV_ASSERT_OFFSET (OBV_CONFIG, FooterFont.Size, 0x08F);
OBV_ASSERT_OFFSET (OBV_CONFIG, LeaderColor, 0x090);
OBV_ASSERT_OFFSET (OBV_CONFIG, FocusLeaderColor, 0x0A4);
OBV_ASSERT_OFFSET (OBV_CONFIG, HotspotColor, 0x0B8);
OBV_ASSERT_OFFSET (OBV_CONFIG, MarkerTheme, 0x0CC);
OBV_ASSERT_OFFSET (OBV_CONFIG, TextRoom, 0x0CD);
OBV_ASSERT_OFFSET (OBV_CONFIG, CalloutFont, 0x11F);
OBV_ASSERT_OFFSET (OBV_CONFIG, CalloutFont.Size, 0x133);
OBV_ASSERT_OFFSET (OBV_CONFIG, CloseFocusFont, 0x186);
OBV_ASSERT_OFFSET (OBV_CONFIG, CloseFocusFont.Size, 0x19A);
OBV_ASSERT_OFFSET (OBV_CONFIG, Filter.TextColor, 0x19B);
OBV_ASSERT_OFFSET (OBV_CONFIG, Filter.BackgroundColor, 0x1AF);
OBV_ASSERT_OFFSET (OBV_CONFIG, Filter.BorderColor, 0x1C3);
OBV_ASSERT_OFFSET (OBV_CONFIG, Filter.BorderWidth, 0x1D7);
OBV_ASSERT_OFFSET (OBV_CONFIG, Filter.CornerRadius, 0x1D8);
OBV_ASSERT_OFFSET (OBV_CONFIG, Filter.Font, 0x1D9);
OBV_ASSERT_OFFSET (OBV_CONFIG, Filter.Font.Size, 0x1ED);
OBV_ASSERT_OFFSET (OBV_CONFIG, FocusFilter.TextColor, 0x1EE);
OBV_ASSERT_OFFSET (OBV_CONFIG, FocusFilter.BackgroundColor, 0x202);
OBV_ASSERT_OFFSET (OBV_CONFIG, FocusFilter.BorderColor, 0x216);
OBV_ASSERT_OFFSET (OBV_CONFIG, FocusFilter.BorderWidth, 0x22A);
OBV_ASSERT_OFFSET (OBV_CONFIG, FocusFilter.CornerRadius, 0x22B);
OBV_ASSERT_OFFSET (OBV_CONFIG, FocusFilter.Font, 0x22C);
OBV_ASSERT_OFFSET (OBV_CONFIG, FocusFilter.Font.Size, 0x240);
OBV_ASSERT_OFFSET (OBV_CONFIG, Heading, 0x2C0);
OBV_ASSERT_OFFSET (OBV_CONFIG, Heading.Font, 0x2D4);
OBV_ASSERT_OFFSET (OBV_CONFIG, Heading.Font.Size, 0x2E8);
OBV_ASSERT_OFFSET (OBV_CONFIG, InfoLabel, 0x2EA);
OBV_ASSERT_OFFSET (OBV_CONFIG, InfoLabel.Font, 0x2FE);
OBV_ASSERT_OFFSET (OBV_CONFIG, InfoLabel.Font.Size, 0x312);
OBV_ASSERT_OFFSET (OBV_CONFIG, InfoText, 0x314);
OBV_ASSERT_OFFSET (OBV_CONFIG, SideLabel, 0x33E);
OBV_ASSERT_OFFSET (OBV_CONFIG, SideText, 0x368);
OBV_ASSERT_SIZE (OBV_CONFIG, 0x392);

#endif
