#include "platform/HotPlug.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/Run.h"
#include "lvgl.h"
#include "platform/GraphicsOutput.h"

HotPlugState gHotPlug;

namespace {

constexpr CHAR8 kOperation[] = "InstallDisplayPortHotPlugDetector";
constexpr CHAR8 kOutputGone[] = "[OBV] The output in use is gone.\n";

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

/// NULL when none has a mode of the setup's size.
EFI_GRAPHICS_OUTPUT_PROTOCOL *LastOutputForSetup(const GopList &list) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *last = nullptr;
  ForEachOutput(list, [&](EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
    if (FindGopMode(gop, gGeometry.PreviousHeight, gGeometry.PreviousWidth) != kNoGopMode) {
      last = gop;
    }
  });
  return last;
}

/// Remembers the handle of the output in use.
void WatchOutput(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
  gHotPlug.WatchedGop = gop;
  gHotPlug.WatchedHandle = gop != nullptr ? FindGopHandle(gop) : nullptr;
}

void InvalidateView() { lv_obj_invalidate(lv_disp_get_scr_act(lv_disp_get_default())); }

void ShowViewOn(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
  UINT32 mode = FindViewMode(gop);
  if (mode != gop->Mode->Mode) {
    (void)gop->SetMode(gop, mode);
  }
  InvalidateView();
  gHotPlug.RedrawDue = true;
}

/// Keeps the view on an output that can show it, or ends the application. False when there is no
/// output at all.
bool MoveView() {
  // Logged by the operation; the enumeration below decides.
  (void)ClearAllScreen();
  GopList list = {};
  if (EFI_ERROR(GetAllGopPrrotocol(&list))) {
    LogError("Get Gop Protocol failed!\n");
    gRun.ExitRequested = true;
    return false;
  }
  EFI_GRAPHICS_OUTPUT_PROTOCOL *chosen = ChooseOutput(list);
  gHost.Gop = chosen;
  // Also when it is the one from before: a driver that starts anew puts it on another handle, often
  // at the same address.
  WatchOutput(chosen);
  if (chosen != nullptr) {
    gHotPlug.Lost = false;
    ShowViewOn(chosen);
    return true;
  }
  LogError("No Gop support current resolution!\nNow app exit...\n");
  gRun.ExitRequested = true;
  return true;
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
  (void)MoveView();
}

bool IsOutputThere() {
  // The notification may move the view at any moment.
  EFI_TPL tpl = gBS->RaiseTPL(TPL_CALLBACK);
  if (gHost.Gop != gHotPlug.WatchedGop) {
    WatchOutput(gHost.Gop);
  }
  VOID *interface = gHost.Gop;
  EFI_STATUS status = EFI_SUCCESS;
  if (gHotPlug.WatchedHandle != nullptr) {
    status =
        gBS->HandleProtocol(gHotPlug.WatchedHandle, &gEfiGraphicsOutputProtocolGuid, &interface);
  }
  bool there = !EFI_ERROR(status) && interface == gHost.Gop;
  gBS->RestoreTPL(tpl);
  return there;
}

void LeaveLostOutput() {
  EFI_TPL tpl = gBS->RaiseTPL(TPL_CALLBACK);
  LogError(kOutputGone);
  // Also when no other is found it must not be called any more.
  gHost.Gop = nullptr;
  gHotPlug.Lost = MoveView() && gHost.Gop == nullptr;
  gBS->RestoreTPL(tpl);
}

void ReplaceLostOutput() {
  if (!IsOutputThere()) {
    LogError(kOutputGone);
  } else if (!gHotPlug.Lost) {
    return;
  }
  GopList list = {};
  gHost.Gop = EFI_ERROR(GetAllGopPrrotocol(&list)) ? nullptr : LastOutputForSetup(list);
}
