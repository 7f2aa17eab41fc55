#include "view/InfoPanel.h"

#include "app/base/Firmware.h"

#include "view/FixedLook.h"
#include "view/Layout.h"
#include "view/Look.h"
#include "view/ViewState.h"

namespace {

constexpr UINTN kHeadingLimit = 40;
constexpr CHAR8 kBlank[] = " ";
// LVGL's mark for a text that has room without dots.
constexpr UINT32 kNoDots = MAX_UINT32;

struct LabelLook {
  const CHAR8 *Color;
  const OBV_FONT_CHOICE &Font;
  bool Recolor;
};

double PanelHeight() { return FirstFilterButtonY() - ThreeTwentiethsHeight() - kPanelFilterGap; }

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

/// Whether this is the label's whole text. LVGL puts dots and their terminator into its copy of a
/// text that is too long. It keeps the bytes from under them aside, and leaves those behind alone.
bool HasText(lv_obj_t *label, const CHAR8 *text) {
  const auto *state = reinterpret_cast<const lv_label_t *>(label);
  if (state->dot_end == kNoDots) {
    return AsciiStrCmp(state->text, text) == 0;
  }
  constexpr UINTN kCovered = LV_LABEL_DOT_NUM + 1;
  const CHAR8 *covered = state->dot_tmp_alloc ? state->dot.tmp_ptr : state->dot.tmp;
  UINTN shown = AsciiStrLen(state->text) - LV_LABEL_DOT_NUM;
  if (AsciiStrnCmp(state->text, text, shown) != 0 ||
      AsciiStrnCmp(covered, text + shown, kCovered) != 0) {
    return false;
  }
  bool endsCovered = covered[LV_LABEL_DOT_NUM] == 0;
  return endsCovered || AsciiStrCmp(state->text + shown + kCovered, text + shown + kCovered) == 0;
}

void SetText(lv_obj_t *label, const CHAR8 *text) {
  // LVGL would draw the same text anew, with each refresh of the status.
  if (!HasText(label, text)) {
    lv_label_set_text(label, text);
  }
}

}  // namespace

void SetPanelHeading(const CHAR8 *text) {
  if (text == nullptr || AsciiStrLen(text) >= kHeadingLimit) {
    return;
  }
  if (gView.Heading == nullptr) {
    gView.Heading = CreateLabel({Look().Heading.Color, Look().Heading.Font, false});
  }
  SetText(gView.Heading, text);
}

void SetInfoText(const CHAR8 *text) {
  if (gView.InfoText == nullptr) {
    gView.InfoText = CreateLabel({Look().InfoText.Color, Look().InfoLabel.Font, true});
  }
  SetText(gView.InfoText, text);
  if (AsciiStrCmp(text, kBlank) == 0) {
    SetPanelHeading(kBlank);
  }
}

void SetSideList(const CHAR8 *text) {
  if (gView.SideList == nullptr) {
    gView.SideList = CreateLabel({Look().SideText.Color, Look().SideLabel.Font, true});
  }
  // Without an info text there is nothing to stand under.
  if (text[0] != 0 && gView.InfoText != nullptr) {
    lv_obj_update_layout(gView.InfoText);
    lv_coord_t below = static_cast<lv_coord_t>(lv_obj_get_y(gView.InfoText) +
                                               lv_obj_get_self_height(gView.InfoText));
    lv_obj_set_pos(gView.SideList, lv_obj_get_x(gView.InfoText),
                   static_cast<lv_coord_t>(below + kSideListGap));
  }
  SetText(gView.SideList, text);
}
