#include "view/InfoPanel.h"

#include "app/base/Firmware.h"
#include "view/FixedLook.h"
#include "view/Layout.h"
#include "view/Look.h"
#include "view/ViewState.h"

InfoPanelState gInfoPanel;

namespace {

constexpr UINTN kHeadingLimit = 40;
constexpr CHAR8 kBlank[] = " ";

struct LabelLook {
  const CHAR8 *Color;
  const OBV_FONT_CHOICE &Font;
  bool Recolor;
};

double PanelHeight() {
  double foot = gInfoPanel.Foot != 0 ? gInfoPanel.Foot : FirstFilterButtonY();
  return foot - ThreeTwentiethsHeight() - kPanelFilterGap;
}

lv_obj_t *CreateLabel(const LabelLook &look) {
  lv_obj_t *label = lv_label_create(Screen());
  lv_label_set_long_mode(label, LV_LABEL_LONG_DOT);
  lv_obj_set_style_text_color(label, ColorOf(look.Color), kMainPart);
  lv_obj_set_style_text_font(label, FontOf(look.Font), kMainPart);
  lv_label_set_recolor(label, look.Recolor);
  lv_obj_set_size(label, Pixels(gGeometry.ViewWidth - PanelLeft() - SideMargin()),
                  Pixels(PanelHeight()));
  lv_obj_set_pos(label, Pixels(PanelLeft()), static_cast<lv_coord_t>(ThreeTwentiethsHeight()));
  return label;
}

void SetText(lv_obj_t *label, LastText *last, const CHAR8 *text) {
  // LVGL would draw the same text anew, with each refresh of the status.
  if (last->Kept && AsciiStrCmp(last->Text, text) == 0) {
    return;
  }
  lv_label_set_text(label, text);
  UINTN size = AsciiStrSize(text);
  last->Kept = size <= sizeof(last->Text);
  if (last->Kept) {
    CopyMem(last->Text, text, size);
  }
}

}  // namespace

void RaisePanelFoot(INT16 foot) {
  gInfoPanel.Foot = foot;
  lv_obj_t *const labels[] = {gView.Heading, gView.InfoText, gView.SideList};
  for (lv_obj_t *label : labels) {
    if (label != nullptr) {
      lv_obj_set_height(label, Pixels(PanelHeight()));
    }
  }
}

void SetPanelHeading(const CHAR8 *text) {
  if (text == nullptr || AsciiStrLen(text) >= kHeadingLimit) {
    return;
  }
  if (gView.Heading == nullptr) {
    gView.Heading =
        CreateLabel({.Color = Look().Heading.Color, .Font = Look().Heading.Font, .Recolor = false});
  }
  SetText(gView.Heading, &gInfoPanel.Heading, text);
}

void SetInfoText(const CHAR8 *text) {
  if (gView.InfoText == nullptr) {
    gView.InfoText = CreateLabel(
        {.Color = Look().InfoText.Color, .Font = Look().InfoLabel.Font, .Recolor = true});
  }
  SetText(gView.InfoText, &gInfoPanel.InfoText, text);
  if (AsciiStrCmp(text, kBlank) == 0) {
    SetPanelHeading(kBlank);
  }
}

void SetSideList(const CHAR8 *text) {
  if (gView.SideList == nullptr) {
    gView.SideList = CreateLabel(
        {.Color = Look().SideText.Color, .Font = Look().SideLabel.Font, .Recolor = true});
  }
  // Without an info text there is nothing to stand under.
  if (text[0] != 0 && gView.InfoText != nullptr) {
    lv_obj_update_layout(gView.InfoText);
    lv_coord_t below = static_cast<lv_coord_t>(lv_obj_get_y(gView.InfoText) +
                                               lv_obj_get_self_height(gView.InfoText));
    lv_obj_set_pos(gView.SideList, lv_obj_get_x(gView.InfoText),
                   static_cast<lv_coord_t>(below + kSideListGap));
  }
  SetText(gView.SideList, &gInfoPanel.SideList, text);
}
