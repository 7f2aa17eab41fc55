#include "view/SystemSummary.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/HostFormat.h"
#include "platform/ColorText.h"
#include "platform/TextTrim.h"
#include "resources/ComponentIntake.h"
#include "view/FixedLook.h"
#include "view/InfoLine.h"
#include "view/InfoPanel.h"
#include "view/Layout.h"
#include "view/Look.h"

SystemSummaryState gSystemSummary;

namespace {

enum Row : UINTN { kProcessorRow, kMemoryRow, kGpuRow, kFirstBootRow, kSpareRow, kRowCount };

// Places of the host's texts in OBV_SHARED_STATE.SystemInfo.
enum SystemText : UINTN { kFirstBootText, kGpuText, kInfoBufferText, kFirstOverride };

/// Rows are laid out like information lines.
using Rows = OBV_COMPONENT_INFO[kRowCount];

const CHAR16 *TextOf(UINTN index) { return gHost.SharedState->SystemInfo[index]; }

void SetRow(OBV_COMPONENT_INFO *row, const CHAR16 *label, const CHAR16 *value) {
  (void)StrCpyS(row->Label, OBV_INFO_LABEL_LENGTH, label);
  (void)StrCpyS(row->Value, OBV_INFO_VALUE_LENGTH, value);
}

/// Appends the values of the component's lines that carry either label.
void CollectValues(const OBV_COMPONENT &component, const CHAR16 *first, const CHAR16 *second,
                   OBV_COMPONENT_INFO *row) {
  (void)StrCpyS(row->Label, OBV_INFO_LABEL_LENGTH, component.Name);
  for (UINTN i = 0; i < InfoCountOf(component); ++i) {
    const OBV_COMPONENT_INFO &line = component.Info[i];
    if (StrCmp(line.Label, first) != 0 && StrCmp(line.Label, second) != 0) {
      continue;
    }
    (void)StrCatS(row->Value, OBV_INFO_VALUE_LENGTH, line.Value);
    TrimTrailingWhitespace(row->Value);
    (void)StrCatS(row->Value, OBV_INFO_VALUE_LENGTH, Ucs2(u" "));
  }
}

void CollectFromComponents(Rows &rows) {
  for (UINTN i = 0; i < ComponentCount(); ++i) {
    const OBV_COMPONENT &component = ComponentAt(i);
    if (component.Type == OBV_TYPE_PROCESSOR) {
      CollectValues(component, Ucs2(u"Brand"), Ucs2(u"Speed"), &rows[kProcessorRow]);
    } else if (component.Type == OBV_TYPE_MEMORY) {
      CollectValues(component, Ucs2(u"Total Memory"), Ucs2(u"Frequency"), &rows[kMemoryRow]);
    }
  }
}

/// The host's text is itself the format, so that it may hold directives.
void PublishInfoBuffer() {
  if (TextOf(kInfoBufferText)[0] == 0) {
    return;
  }
  PrintHostFormat(gSystemSummary.InfoBuffer, kInfoBufferSize, TextOf(kInfoBufferText));
  gHost.SharedState->InfoBuffer = gSystemSummary.InfoBuffer;
}

/// The host's last four texts take the place of the first four rows' values.
void ApplyOverrides(Rows &rows) {
  for (UINTN row = kProcessorRow; row <= kFirstBootRow; ++row) {
    const CHAR16 *text = TextOf(kFirstOverride + row);
    if (text[0] != 0) {
      (void)StrCpyS(rows[row].Value, OBV_INFO_VALUE_LENGTH, text);
    }
  }
}

void AppendRow(OBV_COMPONENT_INFO *row, UINT32 labelColor) {
  if (row->Label[0] == 0 || row->Value[0] == 0) {
    return;
  }
  TrimTrailingWhitespace(row->Label);
  TrimTrailingWhitespace(row->Value);
  AppendInfoLine(gSystemSummary.Text, kSummarySize, *row, labelColor);
}

/// Height of the whole text at the label's width.
lv_coord_t NeededHeight(const lv_obj_t *label) {
  lv_point_t size = {};
  lv_txt_get_size(&size, gSystemSummary.Text, lv_obj_get_style_text_font(label, kMainPart),
                  lv_obj_get_style_text_letter_space(label, kMainPart),
                  lv_obj_get_style_text_line_space(label, kMainPart),
                  lv_obj_get_content_width(label), LV_TEXT_FLAG_RECOLOR);
  return size.y;
}

/// Gives the text the height that it needs, above the lower rule, and the lower half of the screen
/// at most; the panels make room.
void GrowUpwards(lv_obj_t *label) {
  lv_obj_update_layout(label);
  lv_coord_t height = NeededHeight(label);
  if (height <= lv_obj_get_height(label)) {
    return;
  }
  lv_coord_t rule = Pixels(LowerRuleY());
  lv_coord_t middle = static_cast<lv_coord_t>(gGeometry.ViewHeight / 2);
  lv_coord_t top = rule - height < middle ? middle : static_cast<lv_coord_t>(rule - height);
  lv_obj_set_pos(label, Pixels(PanelLeft()), top);
  lv_obj_set_height(label, static_cast<lv_coord_t>(rule - top));
  RaisePanelFoot(top);
}

}  // namespace

void ComposeSystemSummary() {
  Rows rows = {};
  CollectFromComponents(rows);
  SetRow(&rows[kGpuRow], Ucs2(u"GPU"), TextOf(kGpuText));
  SetRow(&rows[kFirstBootRow], Ucs2(u"First Boot"), TextOf(kFirstBootText));
  PublishInfoBuffer();
  ApplyOverrides(rows);
  UINT32 labelColor = ParseColorText(Look().InfoLabel.Color);
  for (OBV_COMPONENT_INFO &row : rows) {
    AppendRow(&row, labelColor);
  }
}

void ShowSystemSummary() {
  lv_obj_t *label = lv_label_create(Screen());
  lv_label_set_long_mode(label, LV_LABEL_LONG_DOT);
  lv_label_set_recolor(label, true);
  lv_obj_set_style_text_color(label, ColorOf(Look().InfoText.Color), kMainPart);
  lv_obj_set_style_text_font(label, FontOf(Look().InfoLabel.Font), kMainPart);
  lv_obj_set_pos(label, Pixels(PanelLeft()), Pixels(FirstFilterButtonY()));
  lv_obj_set_size(label, Pixels(FilterButtonLeft() - PanelLeft() - kSummaryFilterGap),
                  Pixels(LowerRuleY() - FirstFilterButtonY()));
  if (TextRoomGrows()) {
    GrowUpwards(label);
  }
  lv_label_set_text(label, gSystemSummary.Text);
}
