#include "view/Frame.h"

#include "app/base/MemoryPool.h"
#include "resources/BoardImage.h"
#include "view/FixedLook.h"
#include "view/Layout.h"
#include "view/Look.h"

namespace {

struct FrameState {
  lv_style_t ScreenStyle;
};
FrameState gFrame;

void BuildRule(double y) {
  lv_point_t points[] = {{Pixels(SideMargin()), Pixels(y)},
                         {Pixels(gGeometry.ViewWidth - SideMargin()), Pixels(y)}};
  lv_obj_t *rule = lv_line_create(Screen());
  // The line keeps referring to its points.
  auto *kept = static_cast<lv_point_t *>(malloc(sizeof(points)));
  if (kept != nullptr) {
    CopyMem(kept, points, sizeof(points));
    lv_line_set_points(rule, kept, ARRAY_SIZE(points));
  }
  lv_obj_set_style_line_width(rule, kRuleWidth, kMainPart);
  lv_obj_set_style_line_color(rule, lv_color_hex(kRuleColor), kMainPart);
}

}  // namespace

void BuildScreenAndRules() {
  lv_style_init(&gFrame.ScreenStyle);
  lv_style_set_bg_opa(&gFrame.ScreenStyle, LV_OPA_COVER);
  lv_style_set_bg_color(&gFrame.ScreenStyle, lv_color_hex(kScreenColor));
  lv_obj_add_style(Screen(), &gFrame.ScreenStyle, kMainPart);
  lv_obj_clear_flag(Screen(), LV_OBJ_FLAG_SCROLLABLE);
  BuildRule(UpperRuleY());
  BuildRule(LowerRuleY());
}

void BuildBoardPicture() {
  lv_obj_t *picture = lv_img_create(Screen());
  auto *descriptor = static_cast<lv_img_dsc_t *>(malloc(sizeof(lv_img_dsc_t)));
  EFI_STATUS status = EFI_OUT_OF_RESOURCES;
  if (descriptor != nullptr) {
    status = GetPngFromFv(descriptor, static_cast<UINT16>(gGeometry.ViewWidth * kPictureShare),
                          static_cast<UINT16>(gGeometry.ViewHeight * kPictureShare));
  }
  // Logged by the operation; the view stands without its picture.
  if (!EFI_ERROR(status)) {
    lv_img_set_src(picture, descriptor);
  }
  lv_obj_set_pos(picture, 0, Pixels(PictureTop()));
}
