#include "host/portable/Appearance.h"

namespace obv_host {

const CHAR8 *const kFaceNames[kFaceCount] = {"DroidSans", "DroidSansFallback", "DroidSansBold"};

const CHAR8 kCloseFocusColor[] = "255,219,75";

namespace {

constexpr const CHAR8 *kText = "DroidSans";
constexpr const CHAR8 *kBold = "DroidSansBold";

constexpr const CHAR8 *kWhite = "255,255,255";
constexpr const CHAR8 *kBlack = "0,0,0";
constexpr const CHAR8 *kSoftWhite = "208,208,208";
constexpr const CHAR8 *kGrey = "150,150,150";
constexpr const CHAR8 *kDark = "60,60,60";
constexpr const CHAR8 *kAmber = "255,219,75";
constexpr const CHAR8 *kYellow = "255,255,0";
constexpr const CHAR8 *kBlue = "120,190,255";

template <UINTN Size>
void SetText(CHAR8 (&field)[Size], const CHAR8 *text) {
  AsciiStrCpyS(field, Size, text);
}

void SetFont(OBV_FONT_CHOICE *font, const CHAR8 *name, UINT8 size) {
  SetText(font->Name, name);
  font->Size = size;
}

void SetPanel(OBV_PANEL_LOOK *panel, const CHAR8 *color, const CHAR8 *font, UINT8 size) {
  SetText(panel->Color, color);
  SetFont(&panel->Font, font, size);
}

void SetHeaderAndFooter(OBV_CONFIG *config) {
  SetText(config->TitleColor, kWhite);
  SetFont(&config->TitleFont, kText, 18);
  SetText(config->KeyHelpKeyColor, kAmber);
  SetText(config->KeyHelpColor, kSoftWhite);
  SetFont(&config->KeyHelpFont, kText, 15);
  SetText(config->FooterColor, kGrey);
  SetFont(&config->FooterFont, kText, 13);
}

void SetComponents(OBV_CONFIG *config) {
  SetText(config->LeaderColor, kGrey);
  SetText(config->FocusLeaderColor, kAmber);
  SetText(config->HotspotColor, kAmber);
  SetFont(&config->CalloutFont, kText, 14);
  SetFont(&config->CloseFocusFont, kText, 14);
}

void SetFilters(OBV_CONFIG *config) {
  SetText(config->Filter.TextColor, kSoftWhite);
  SetText(config->Filter.BackgroundColor, kDark);
  SetText(config->Filter.BorderColor, kGrey);
  config->Filter.BorderWidth = 1;
  config->Filter.CornerRadius = 4;
  SetFont(&config->Filter.Font, kText, 15);
  SetText(config->FocusFilter.TextColor, kBlack);
  SetText(config->FocusFilter.BackgroundColor, kAmber);
  SetText(config->FocusFilter.BorderColor, kWhite);
  config->FocusFilter.BorderWidth = 1;
  config->FocusFilter.CornerRadius = 4;
  SetFont(&config->FocusFilter.Font, kText, 15);
}

void SetPanels(OBV_CONFIG *config) {
  SetPanel(&config->Heading, kAmber, kBold, 20);
  SetPanel(&config->InfoLabel, kBlue, kText, 16);
  SetPanel(&config->InfoText, kSoftWhite, kText, 16);
  SetPanel(&config->SideLabel, kBlue, kText, 15);
  SetPanel(&config->SideText, kSoftWhite, kText, 15);
}

void RaiseContrast(OBV_CONFIG *config) {
  SetText(config->KeyHelpColor, kWhite);
  SetText(config->KeyHelpKeyColor, kYellow);
  SetText(config->FooterColor, kWhite);
  SetText(config->LeaderColor, kWhite);
  SetText(config->FocusLeaderColor, kYellow);
  SetText(config->HotspotColor, kYellow);
  SetText(config->Filter.TextColor, kWhite);
  SetText(config->Filter.BackgroundColor, kBlack);
  SetText(config->Filter.BorderColor, kWhite);
  SetText(config->FocusFilter.BackgroundColor, kYellow);
  SetText(config->Heading.Color, kYellow);
  SetText(config->InfoLabel.Color, kYellow);
  SetText(config->InfoText.Color, kWhite);
  SetText(config->SideLabel.Color, kYellow);
  SetText(config->SideText.Color, kWhite);
}

void Enlarge(OBV_FONT_CHOICE *font) { font->Size = static_cast<UINT8>(font->Size * 3 / 2); }

void EnlargeText(OBV_CONFIG *config) {
  SetText(config->TextRoom, OBV_ROOM_GROWS);
  Enlarge(&config->TitleFont);
  Enlarge(&config->KeyHelpFont);
  Enlarge(&config->FooterFont);
  Enlarge(&config->CalloutFont);
  Enlarge(&config->CloseFocusFont);
  Enlarge(&config->Filter.Font);
  Enlarge(&config->FocusFilter.Font);
  Enlarge(&config->Heading.Font);
  Enlarge(&config->InfoLabel.Font);
  Enlarge(&config->InfoText.Font);
  Enlarge(&config->SideLabel.Font);
  Enlarge(&config->SideText.Font);
}

void SetCallout(OBV_COMPONENT_STYLE *style, const CHAR8 *text, const CHAR8 *background,
                const CHAR8 *border) {
  SetText(style->TextColor, text);
  SetText(style->MarkColor, text);
  SetText(style->BackgroundColor, background);
  SetText(style->BorderColor, border);
}

}  // namespace

LookChoice ParseLookChoice(const void *data, UINTN size) {
  OBV_SETUP_LOOK look;
  if (data == nullptr || size < sizeof(look) || size > OBV_SETUP_VARIABLE_LIMIT) {
    return {};
  }
  CopyMem(&look, data, sizeof(look));
  return {.HighContrast = look.Contrast == OBV_CONTRAST_HIGH,
          .LargeText = look.TextSize == OBV_LETTERS_LARGE};
}

void AdaptAppearance(const LookChoice &choice, OBV_CONFIG *config) {
  if (choice.HighContrast) {
    RaiseContrast(config);
  }
  if (choice.LargeText) {
    EnlargeText(config);
  }
}

void AdaptStyle(const LookChoice &choice, BoardStyle *style) {
  if (choice.HighContrast) {
    SetCallout(&style->Default, kWhite, kBlack, kWhite);
    SetCallout(&style->Focus, kBlack, kYellow, kWhite);
  }
}

void FillAppearance(UINT8 logo, UINT8 markerTheme, OBV_CONFIG *config) {
  ZeroMem(config, sizeof(*config));
  config->Logo = logo;
  config->MarkerTheme = markerTheme;
  SetHeaderAndFooter(config);
  SetComponents(config);
  SetFilters(config);
  SetPanels(config);
}

}  // namespace obv_host
