#include "platform/HotPlug.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/Run.h"
#include "lvgl.h"
#include "platform/GraphicsOutput.h"

HotPlugState gHotPlug;

namespace {

constexpr CHAR8 kOperation[] = "InstallDisplayPortHotPlugDetector";

UINT32 FindViewMode(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
  return FindGopMode(gop, gGeometry.ViewHeight, gGeometry.ViewWidth);
}

/// The output in use when it can show the view, else the last one that can:
/// a monitor that was just plugged in comes last. NULL when none can.
EFI_GRAPHICS_OUTPUT_PROTOCOL *ChooseOutput(const GopList &list) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *candidate = nullptr;
  bool inUseWorks = false;
  ForEachOutput(list, [&](EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
    if (inUseWorks || FindViewMode(gop) == kNoGopMode) {
      return;
    }
    candidate = gop;
    if (gop == gHost.Gop) {
      LogError("Current Gop still work\n");
      inUseWorks = true;
    }
  });
  return candidate;
}

/// Looks its handle up while it is there: without one, its removal would go unnoticed.
void Watch(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
  gHotPlug.WatchedGop = gop;
  gHotPlug.WatchedHandle = FindGopHandle(gop);
}

void InvalidateView() { lv_obj_invalidate(lv_disp_get_scr_act(lv_disp_get_default())); }

void ShowViewOn(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
  // It may be gone again before anything is drawn on it.
  Watch(gop);
  UINT32 mode = FindViewMode(gop);
  if (mode != gop->Mode->Mode) {
    (void)gop->SetMode(gop, mode);
  }
  InvalidateView();
  gHotPlug.RedrawDue = true;
}

/// Keeps the view on an output that can show it, or ends the application.
void MoveView() {
  // Logged by the operation; the enumeration below decides.
  (void)ClearAllScreen();
  GopList list = {};
  if (EFI_ERROR(GetAllGopPrrotocol(&list))) {
    LogError("Get Gop Protocol failed!\n");
    gRun.ExitRequested = true;
    return;
  }
  EFI_GRAPHICS_OUTPUT_PROTOCOL *chosen = ChooseOutput(list);
  gHost.Gop = chosen;
  if (chosen != nullptr) {
    ShowViewOn(chosen);
    return;
  }
  LogError("No Gop support current resolution!\nNow app exit...\n");
  gRun.ExitRequested = true;
}

}  // namespace

EFI_STATUS InstallDisplayPortHotPlugDetector() {
  EFI_STATUS status = gBS->CreateEvent(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, DisplayHotPlugNotify,
                                       nullptr, &gHotPlug.Event);
  if (EFI_ERROR(status)) {
    LogOperationError(kOperation, status);
    return status;
  }
  // The key is not needed: each notification enumerates all outputs.
  VOID *registration = nullptr;
  status =
      gBS->RegisterProtocolNotify(&gEfiGraphicsOutputProtocolGuid, gHotPlug.Event, &registration);
  if (EFI_ERROR(status)) {
    LogOperationError(kOperation, status);
  }
  return status;
}

void RedrawAfterHotPlug() {
  if (gHotPlug.RedrawDue) {
    gHotPlug.RedrawDue = false;
    InvalidateView();
  }
}

void CloseHotPlugDetector() {
  (void)gBS->CloseEvent(gHotPlug.Event);
  (void)gBS->CloseEvent(gHotPlug.SecondEvent);
}

VOID EFIAPI DisplayHotPlugNotify(EFI_EVENT, VOID *) {
  LogError("New monitor interface detected!\n");
  MoveView();
}

bool IsOutputThere() {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = gHost.Gop;
  if (gop != gHotPlug.WatchedGop) {
    Watch(gop);
  }
  if (gHotPlug.WatchedHandle == nullptr) {
    return true;
  }
  VOID *interface = nullptr;
  EFI_STATUS status =
      gBS->HandleProtocol(gHotPlug.WatchedHandle, &gEfiGraphicsOutputProtocolGuid, &interface);
  return !EFI_ERROR(status) && interface == gop;
}

void LeaveLostOutput() {
  LogError("[OBV] The output in use is gone.\n");
  // Also when no other is found it must not be called any more.
  gHost.Gop = nullptr;
  MoveView();
}
