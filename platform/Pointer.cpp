#include "platform/Pointer.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "platform/CursorImage.h"

PointerDeviceState gPointer;

namespace {

constexpr CHAR8 kGetMouse[] = "GetMouseProtocol";
constexpr UINT32 kGetMouseLocation = 325;  // Names this place in the log.

constexpr UINT32 kDrainReads = 11;
constexpr INT64 kSpeed = 14;
constexpr UINT64 kDivisorScale = 10000;
constexpr UINT32 kShiftMask = 31;

// The tip deliberately never reaches the last two columns and rows.
constexpr INT32 kEdgeMargin = 3;

UINT16 ShiftOf(UINT64 resolution) {
  return static_cast<UINT16>(HighBitSet64(resolution));  // -1 for a resolution of 0
}

UINT32 DivisorOf(UINT64 minimum, UINT64 maximum, UINT16 viewSize) {
  UINT32 range = static_cast<UINT32>(maximum) - static_cast<UINT32>(minimum);
  return range * static_cast<UINT32>(kDivisorScale) / viewSize;
}

/// A position that the relative movement may have carried off the screen.
UINT16 MoveRelative(UINT16 position, INT32 movement, UINT16 shift, UINT16 viewSize) {
  INT64 moved = position + ((movement * kSpeed) >> (shift & kShiftMask));
  moved = MAX(moved, 0);
  moved = MIN(moved, viewSize - 1);
  return static_cast<UINT16>(MIN(moved, viewSize - kEdgeMargin));
}

/// A position before the minimum wraps and so ends at the far edge. Without a
/// usable range the position stays.
UINT16 MoveAbsolute(UINT16 position, UINT64 current, UINT64 minimum, UINT32 divisor,
                    UINT16 viewSize) {
  if (divisor == 0) {
    return position;
  }
  UINT64 moved = (current - minimum) * kDivisorScale / divisor;
  return static_cast<UINT16>(MIN(moved, static_cast<UINT64>(viewSize - kEdgeMargin)));
}

bool ReadSimplePointer() {
  EFI_SIMPLE_POINTER_STATE state = {};
  if (gPointer.Simple == nullptr || EFI_ERROR(gPointer.Simple->GetState(gPointer.Simple, &state))) {
    return false;
  }
  gPointer.X =
      MoveRelative(gPointer.X, state.RelativeMovementX, gPointer.ShiftX, gGeometry.ViewWidth);
  gPointer.Y =
      MoveRelative(gPointer.Y, state.RelativeMovementY, gPointer.ShiftY, gGeometry.ViewHeight);
  gPointer.Pressed = state.LeftButton != 0;
  return true;
}

bool ReadAbsolutePointer() {
  EFI_ABSOLUTE_POINTER_STATE state = {};
  if (gPointer.Absolute == nullptr ||
      EFI_ERROR(gPointer.Absolute->GetState(gPointer.Absolute, &state))) {
    return false;
  }
  const EFI_ABSOLUTE_POINTER_MODE *mode = gPointer.Absolute->Mode;
  gPointer.X = MoveAbsolute(gPointer.X, state.CurrentX, mode->AbsoluteMinX, gPointer.DivisorX,
                            gGeometry.ViewWidth);
  gPointer.Y = MoveAbsolute(gPointer.Y, state.CurrentY, mode->AbsoluteMinY, gPointer.DivisorY,
                            gGeometry.ViewHeight);
  gPointer.Pressed = (state.ActiveButtons & 0xFF) != 0;
  return true;
}

/// A saved coordinate of the setup's screen, in the view.
UINT16 ToView(UINT16 saved, UINT16 viewSize, UINT16 previousSize) {
  if (previousSize == 0) {
    return viewSize / 2;
  }
  return static_cast<UINT16>(static_cast<INT32>(saved) * viewSize / previousSize);
}

void ChooseStart(UINT16 *x, UINT16 *y) {
  const OBV_SHARED_STATE *shared = gHost.SharedState;
  if (shared->UiStateSaved == 0 && shared->PointerX == 0 && shared->PointerY == 0) {
    *x = gGeometry.ViewWidth / 2;
    *y = gGeometry.ViewHeight / 2;
    return;
  }
  *x = ToView(shared->PointerX, gGeometry.ViewWidth, gGeometry.PreviousWidth);
  *y = ToView(shared->PointerY, gGeometry.ViewHeight, gGeometry.PreviousHeight);
}

/// Drops movement that accumulated while the setup was running.
void DrainPointer(EFI_SIMPLE_POINTER_PROTOCOL *simple) {
  if (simple == nullptr) {
    return;
  }
  for (UINT32 i = 0; i < kDrainReads; ++i) {
    EFI_SIMPLE_POINTER_STATE dropped;
    (void)simple->GetState(simple, &dropped);
  }
}

void ShowCursor(lv_indev_t *device) {
  lv_obj_t *cursor = lv_img_create(lv_disp_get_scr_act(lv_disp_get_default()));
  lv_img_set_src(cursor, &kCursorImage);
  lv_img_set_zoom(cursor, static_cast<UINT16>(gGeometry.ScaleX * LV_IMG_ZOOM_NONE));
  lv_indev_set_cursor(device, cursor);
}

}  // namespace

void StartPointer() {
  EFI_SIMPLE_POINTER_PROTOCOL *simple = nullptr;
  EFI_ABSOLUTE_POINTER_PROTOCOL *absolute = nullptr;
  EFI_HANDLE handle = nullptr;
  // Without a pointer the keyboard is enough.
  (void)GetMouseProtocol(&simple, &absolute, &handle);
  UINT16 startX = 0;
  UINT16 startY = 0;
  ChooseStart(&startX, &startY);
  PointerInit(simple, absolute, handle, startX, startY);
  DrainPointer(simple);

  lv_indev_drv_init(&gPointer.Driver);
  gPointer.Driver.type = LV_INDEV_TYPE_POINTER;
  gPointer.Driver.read_cb = PointerRead;
  lv_indev_t *device = lv_indev_drv_register(&gPointer.Driver);
  lv_point_t start = {static_cast<lv_coord_t>(startX), static_cast<lv_coord_t>(startY)};
  device->proc.types.pointer.act_point = start;
  // LVGL moves the cursor only when a reading differs from the last one: without devices, which
  // read as the top left corner, it would stay in the middle of the view.
  device->proc.types.pointer.last_point = start;
  ShowCursor(device);
}

EFI_STATUS GetMouseProtocol(EFI_SIMPLE_POINTER_PROTOCOL **simple,
                            EFI_ABSOLUTE_POINTER_PROTOCOL **absolute, EFI_HANDLE *handle) {
  if (simple == nullptr || absolute == nullptr || handle == nullptr) {
    LogError("error %a %d %r\n", kGetMouse, kGetMouseLocation, EFI_INVALID_PARAMETER);
    return EFI_INVALID_PARAMETER;
  }
  EFI_STATUS status = gBS->HandleProtocol(gST->ConsoleInHandle, &gEfiSimplePointerProtocolGuid,
                                          reinterpret_cast<VOID **>(simple));
  if (EFI_ERROR(status)) {
    LogOperationError(kGetMouse, status);
    return status;
  }
  status = gBS->HandleProtocol(gST->ConsoleInHandle, &gEfiAbsolutePointerProtocolGuid,
                               reinterpret_cast<VOID **>(absolute));
  if (EFI_ERROR(status)) {
    LogOperationError(kGetMouse, status);
    return status;
  }
  *handle = gST->ConsoleInHandle;
  return EFI_SUCCESS;
}

void PointerInit(EFI_SIMPLE_POINTER_PROTOCOL *simple, EFI_ABSOLUTE_POINTER_PROTOCOL *absolute,
                 EFI_HANDLE handle, UINT16 startX, UINT16 startY) {
  if ((simple == nullptr && absolute == nullptr) || handle == nullptr) {
    return;
  }
  gPointer.Simple = simple;
  gPointer.Absolute = absolute;
  if (simple != nullptr) {
    gPointer.SimpleMode = simple->Mode;
    gPointer.ShiftX = ShiftOf(simple->Mode->ResolutionX);
    gPointer.ShiftY = ShiftOf(simple->Mode->ResolutionY);
  }
  if (absolute != nullptr) {
    const EFI_ABSOLUTE_POINTER_MODE *mode = absolute->Mode;
    gPointer.DivisorX = DivisorOf(mode->AbsoluteMinX, mode->AbsoluteMaxX, gGeometry.ViewWidth);
    gPointer.DivisorY = DivisorOf(mode->AbsoluteMinY, mode->AbsoluteMaxY, gGeometry.ViewHeight);
  }
  gPointer.X = static_cast<UINT16>(MIN(startX, gGeometry.ViewWidth - kEdgeMargin));
  gPointer.Y = static_cast<UINT16>(MIN(startY, gGeometry.ViewHeight - kEdgeMargin));
}

void PointerRead(lv_indev_drv_t *, lv_indev_data_t *data) {
  bool news = ReadSimplePointer() || ReadAbsolutePointer();
  if (news && gPointer.OnMovement != nullptr) {
    gPointer.OnMovement(gPointer.X, gPointer.Y, gPointer.Pressed);
  }
  data->point.x = static_cast<lv_coord_t>(gPointer.X);
  data->point.y = static_cast<lv_coord_t>(gPointer.Y);
  data->state = gPointer.Pressed ? LV_INDEV_STATE_PRESSED : LV_INDEV_STATE_RELEASED;
}

void PointerGetPosition(UINT16 *x, UINT16 *y) {
  if (x != nullptr && y != nullptr) {
    *x = gPointer.X;
    *y = gPointer.Y;
  }
}
