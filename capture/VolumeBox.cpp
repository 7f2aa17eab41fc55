#include "capture/VolumeBox.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/LocalizedStrings.h"
#include "app/base/MemoryPool.h"
#include "capture/MessageBox.h"
#include "view/Look.h"

namespace {

constexpr UINTN kTextCount = 50;
constexpr UINTN kTextSize = 512;
constexpr UINTN kMaxShownVolumes = 32;
constexpr CHAR8 kRowBreak[] = "\n";
constexpr UINT32 kMegabyteShift = 20;
constexpr lv_coord_t kButtonPadding = 4;
constexpr lv_coord_t kButtonRadius = 2;

struct VolumeBoxState {
  /// The button map; the last entry stays empty and ends it.
  CHAR8 *Texts[kTextCount + 1];
};
VolumeBoxState gVolumeBox;

CHAR8 gNoText[] = "";

/// Allocates the texts at the first use and empties all of them.
EFI_STATUS ClearTexts() {
  gVolumeBox.Texts[kTextCount] = gNoText;
  for (UINTN i = 0; i < kTextCount; ++i) {
    CHAR8 *&text = gVolumeBox.Texts[i];
    if (text == nullptr) {
      text = static_cast<CHAR8 *>(malloc(kTextSize));
    }
    if (text == nullptr) {
      return EFI_OUT_OF_RESOURCES;
    }
    text[0] = 0;
  }
  return EFI_SUCCESS;
}

void SetText(UINTN number, const CHAR8 *text) {
  (void)AsciiStrnCpyS(gVolumeBox.Texts[number], kTextSize, text, kTextSize - 1);
}

bool IsRowBreak(UINTN number) { return AsciiStrCmp(gVolumeBox.Texts[number], kRowBreak) == 0; }

/// Closes what the box has no room for; the number of volumes that stay.
UINTN CutToTable(VolumeList *volumes) {
  UINTN count = 0;
  while (count < kMaxShownVolumes && volumes->Roots[count] != nullptr) {
    ++count;
  }
  CloseVolumes(volumes, count);
  return count;
}

/// Row breaks everywhere; the buttons then take the places between them, two a
/// row. Returns how many places the volumes span.
UINTN LayRowBreaks(const VolumeList &volumes) {
  UINTN places = 0;
  while (places < kTextCount && volumes.Roots[2 * places / 3] != nullptr) {
    SetText(places++, kRowBreak);
  }
  return places;
}

void SetVolumeText(UINTN volume, EFI_FILE_PROTOCOL *root) {
  CHAR8 label[kTextSize];
  UINT64 size = 0;
  DescribeVolume(root, label, sizeof(label), &size);
  CHAR8 text[kTextSize];
  AsciiSPrint(text, sizeof(text), "FS%d:\\ [USB %a %dMB]", static_cast<UINT32>(volume), label,
              static_cast<UINT32>(size >> kMegabyteShift));
  LogInfo("%a\n", text);
  SetText(3 * volume / 2, text);
}

/// Fills the button map; returns the number that its height is computed from.
UINTN FillTexts(const VolumeList &volumes, UINTN count) {
  UINTN places = LayRowBreaks(volumes);
  for (UINTN i = 0; i < count; ++i) {
    SetVolumeText(i, volumes.Roots[i]);
  }
  const CHAR8 *cancel = LocalizedText(TextId::CancelButton);
  SetText(3 * count / 2, cancel);
  // Two row breaks at the end would make an empty row.
  if (places > 1 && IsRowBreak(places - 1) && IsRowBreak(places - 2)) {
    --places;
    SetText(places, cancel);
    SetText(places + 1, "");
  }
  return places;
}

void RoundButtons(lv_event_t *event) {
  lv_obj_draw_part_dsc_t *part = lv_event_get_draw_part_dsc(event);
  if (part->class_p == &lv_btnmatrix_class && part->type == LV_BTNMATRIX_DRAW_PART_BTN) {
    part->rect_dsc->radius = kButtonRadius;
  }
}

void StyleButtons(UINTN places) {
  lv_obj_t *buttons = lv_msgbox_get_btns(gMessageBox.Box);
  lv_obj_set_style_pad_row(buttons, kButtonPadding, kMainPart);
  lv_obj_set_style_pad_column(buttons, kButtonPadding, kMainPart);
  lv_obj_add_event_cb(buttons, RoundButtons, LV_EVENT_DRAW_PART_BEGIN, nullptr);
  lv_coord_t lineHeight = lv_font_get_line_height(BoxTextFont());
  ArrangeBoxButtons(
      static_cast<lv_coord_t>(gGeometry.ViewWidth),
      static_cast<lv_coord_t>((lineHeight + kButtonPadding) * static_cast<lv_coord_t>(places)));
}

}  // namespace

EFI_STATUS OpenVolumeBox(VolumeList *volumes, lv_event_cb_t handler) {
  EFI_STATUS status = ClearTexts();
  if (EFI_ERROR(status)) {
    return status;
  }
  UINTN places = FillTexts(*volumes, CutToTable(volumes));
  OpenMessageBox(LocalizedText(TextId::VolumeTitle), LocalizedText(TextId::VolumeText),
                 const_cast<const CHAR8 **>(gVolumeBox.Texts), kBoxTitleColor, kBoxTextColor,
                 handler, volumes);
  StyleButtons(places);
  return EFI_SUCCESS;
}
