#include "platform/LvglPort.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "platform/FontTable.h"
#include "platform/HotPlug.h"
#include "platform/Keypad.h"
#include "platform/LvglFailure.h"
#include "platform/LvglStart.h"
#include "platform/Pointer.h"

LvglPortState gLvglPort;

static_assert(sizeof(lv_color_t) == sizeof(EFI_GRAPHICS_OUTPUT_BLT_PIXEL),
              "the flush copies pixels without conversion");

namespace {

void ChooseInputGroup() {
  gLvglPort.Group = lv_group_get_default();
  if (gLvglPort.Group == nullptr) {
    gLvglPort.Group = lv_group_create();
    lv_group_set_default(gLvglPort.Group);
  }
}

void RegisterDisplay() {
  UINT32 pixels = static_cast<UINT32>(gGeometry.ViewWidth) * gGeometry.ViewHeight;
  void *first = malloc(static_cast<UINTN>(pixels) * sizeof(lv_color_t));
  void *second = malloc(static_cast<UINTN>(pixels) * sizeof(lv_color_t));
  if (first == nullptr) {
    BoardscopeLvglFailure(__FILE_NAME__, __LINE__);
  }
  lv_disp_draw_buf_init(&gLvglPort.DrawBuffer, first, second, pixels);

  lv_disp_drv_init(&gLvglPort.DisplayDriver);
  gLvglPort.DisplayDriver.hor_res = static_cast<lv_coord_t>(gGeometry.ViewWidth);
  gLvglPort.DisplayDriver.ver_res = static_cast<lv_coord_t>(gGeometry.ViewHeight);
  gLvglPort.DisplayDriver.flush_cb = DisplayFlush;
  gLvglPort.DisplayDriver.draw_buf = &gLvglPort.DrawBuffer;
  lv_disp_drv_register(&gLvglPort.DisplayDriver);
}

}  // namespace

void InitializeLvglPort() {
  StartLvgl();
  ChooseInputGroup();
  RegisterDisplay();
  StartPointer();
  StartKeypad(gLvglPort.Group);
  LoadFonts();
}

void DisplayFlush(lv_disp_drv_t *driver, const lv_area_t *area, lv_color_t *pixels) {
  if (!IsOutputThere()) {
    LeaveLostOutput();
  }
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = gHost.Gop;
  if (gop != nullptr) {
    // The corners may come in either order; the destination is the first one.
    UINTN width = static_cast<UINTN>(MAX(area->x1, area->x2) - MIN(area->x1, area->x2) + 1);
    UINTN height = static_cast<UINTN>(MAX(area->y1, area->y2) - MIN(area->y1, area->y2) + 1);
    (void)gop->Blt(gop, reinterpret_cast<EFI_GRAPHICS_OUTPUT_BLT_PIXEL *>(pixels),
                   EfiBltBufferToVideo, 0, 0, static_cast<UINTN>(area->x1),
                   static_cast<UINTN>(area->y1), width, height, 0);
  }
  lv_disp_flush_ready(driver);
}
