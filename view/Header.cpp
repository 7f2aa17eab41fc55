#include "view/Header.h"

#include "app/base/HostFormat.h"
#include "app/base/LocalizedStrings.h"
#include "platform/ColorText.h"
#include "view/EmbeddedImages.h"
#include "view/FixedLook.h"
#include "view/Layout.h"
#include "view/Look.h"

namespace {

constexpr UINTN kKeyHelpSize = 300;

struct Extent {
  lv_coord_t Width;
  lv_coord_t Height;
};

const lv_img_dsc_t &ChosenLogo() {
  switch (Look().Logo) {
    case OBV_LOGO_B:
      return kLogoB;
    case OBV_LOGO_C:
      return kLogoC;
    default:
      return kLogoA;
  }
}

/// Both sizes are scaled by the horizontal factor on purpose: a logo is not
/// distorted. Zero without a logo.
Extent BuildLogo() {
  if (Look().Logo == OBV_LOGO_NONE) {
    return {0, 0};
  }
  const lv_img_dsc_t &image = ChosenLogo();
  Extent shown = {.Width = Pixels(image.header.w * kLogoZoom * gGeometry.ScaleX),
                  .Height = Pixels(image.header.h * kLogoZoom * gGeometry.ScaleX)};
  lv_obj_t *logo = lv_img_create(Screen());
  lv_img_set_src(logo, &image);
  lv_img_set_pivot(logo, 0, 0);
  lv_img_set_zoom(logo, static_cast<UINT16>(kLogoZoom * gGeometry.ScaleX * LV_IMG_ZOOM_NONE));
  lv_obj_set_pos(logo, Pixels(SideMargin()),
                 Pixels(UpperRuleY() - ScaledY(kLogoRuleGap) - shown.Height));
  return shown;
}

void SetTextLook(lv_obj_t *label, const OBV_FONT_CHOICE &font, const CHAR8 *color) {
  lv_obj_set_style_text_font(label, FontOf(font), kMainPart);
  lv_obj_set_style_text_color(label, ColorOf(color), kMainPart);
}

/// Height of a line of text; with room that grows, what its font needs if that is more.
double LineHeight(const OBV_FONT_CHOICE &font) {
  double height = ScaledY(kTextLineHeight);
  double needed = lv_font_get_line_height(FontOf(font));
  return TextRoomGrows() && needed > height ? needed : height;
}

/// The bottom edge of the title's box lines up with the logo's.
void FillTitle(lv_obj_t *title, Extent logo) {
  SetTextLook(title, Look().TitleFont, Look().TitleColor);
  lv_obj_set_size(title, Pixels(ScaledX(kTitleWidth)), Pixels(LineHeight(Look().TitleFont)));
  lv_obj_set_pos(title, Pixels(SideMargin() + logo.Width + ScaledX(kTitleGap)),
                 Pixels(UpperRuleY() - ScaledY(kLogoRuleGap) - logo.Height +
                        (logo.Height - LineHeight(Look().TitleFont)) + 0.0));
  lv_label_set_text(title, LocalizedText(TextId::Title));
}

/// A line of text across the screen.
void PlaceCentredLine(lv_obj_t *label, double y, double height) {
  lv_obj_set_size(label, static_cast<lv_coord_t>(gGeometry.ViewWidth), Pixels(height));
  lv_obj_set_pos(label, 0, Pixels(y));
  lv_obj_set_style_text_align(label, LV_TEXT_ALIGN_CENTER, kMainPart);
}

/// The footer and the key help above it move up when they would not fit otherwise.
double FooterY() {
  double y = gGeometry.ViewHeight - ScaledY(kFooterHeight);
  double lowest = gGeometry.ViewHeight - LineHeight(Look().FooterFont);
  return TextRoomGrows() && lowest < y ? lowest : y;
}

double KeyHelpY() {
  double y = LowerRuleY() + kKeyHelpGap;
  double lowest = FooterY() - LineHeight(Look().KeyHelpFont);
  return TextRoomGrows() && lowest < y ? lowest : y;
}

void FillFooter(lv_obj_t *footer) {
  SetTextLook(footer, Look().FooterFont, Look().FooterColor);
  PlaceCentredLine(footer, FooterY(), LineHeight(Look().FooterFont));
  lv_label_set_text(footer, LocalizedText(TextId::Footer));
}

void FillKeyHelp(lv_obj_t *keyHelp) {
  lv_label_set_recolor(keyHelp, true);
  SetTextLook(keyHelp, Look().KeyHelpFont, Look().KeyHelpColor);
  PlaceCentredLine(keyHelp, KeyHelpY(), LineHeight(Look().KeyHelpFont));
  UINT32 color = ParseColorText(Look().KeyHelpKeyColor);
  CHAR8 text[kKeyHelpSize] = {};
  PrintHostFormat(text, sizeof(text), LocalizedText(TextId::KeyHelp), color, color, color, color,
                  color);
  lv_label_set_text(keyHelp, text);
}

}  // namespace

void BuildHeaderAndFooter() {
  Extent logo = BuildLogo();
  lv_obj_t *title = lv_label_create(Screen());
  lv_obj_t *footer = lv_label_create(Screen());
  lv_obj_t *keyHelp = lv_label_create(Screen());
  FillTitle(title, logo);
  FillFooter(footer);
  FillKeyHelp(keyHelp);
}
