#include "app/Entry.h"

#include "app/ChooseGeometry.h"
#include "app/HandBack.h"
#include "app/Input.h"
#include "app/MainLoop.h"
#include "app/UiState.h"
#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/LocateHost.h"
#include "app/base/MemoryPool.h"
#include "app/base/Run.h"
#include "app/base/StackGuard.h"
#include "lvgl.h"
#include "platform/GraphicsOutput.h"
#include "platform/HotPlug.h"
#include "platform/LvglGuard.h"
#include "platform/LvglPort.h"
#include "resources/ComponentIntake.h"
#include "view/BoardView.h"
#include "view/StatusRefresh.h"
#include "view/SystemSummary.h"

namespace {

constexpr UINT32 kRefreshPeriod = 2000;       // ms
constexpr UINT32 kSlowRefreshPeriod = 10000;  // ms

void SwitchToViewMode() {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = gHost.Gop;
  UINT32 mode = static_cast<UINT32>(gGeometry.ModeNumber);
  if (mode != gop->Mode->Mode) {
    // An output that refuses the mode keeps its own; the view is drawn anyway.
    (void)gop->SetMode(gop, mode);
  }
}

void BuildView() {
  ConnectInput();
  InitializeLvglPort();
  BuildBoardView();
  ReStoreUIState();
  UINT32 period = gHost.SharedState->SlowRefresh != 0 ? kSlowRefreshPeriod : kRefreshPeriod;
  lv_timer_create(RefreshStatusTimer, period, nullptr);
  // Without detection the view runs on the outputs present at the start.
  (void)InstallDisplayPortHotPlugDetector();
}

/// Everything that runs inside LVGL; left early when LVGL cannot go on.
void ShowView(void *stood) {
  BuildView();
  *static_cast<bool *>(stood) = true;
  gRun.LastTime = HostTime();
  LogInfo("[%a] Preparation cost: %dms\n", kEntryName, Elapsed(gRun.StartTime, gRun.LastTime));
  RunMainLoop();
}

void RunView() {
  gRun.ResultStatus = GetComponentData();
  if (EFI_ERROR(gRun.ResultStatus)) {
    LogError("[%a] Parse resources error: %r.\n", kEntryName, gRun.ResultStatus);
    return;
  }
  ComposeSystemSummary();
  // Logged by the operation. After a failed transfer the setup redraws its screen. But where there
  // is no memory for it, there is none for the view's two buffers either: the screen, which is
  // still whole, is left alone.
  (void)BackupScreenShots(gHost.Gop, &gRun.ScreenBackup);
  if (gRun.ScreenBackup == nullptr) {
    gRun.ResultStatus = EFI_OUT_OF_RESOURCES;
    return;
  }
  SwitchToViewMode();
  (void)ClearAllScreen();
  bool stood = false;
  if (!RunGuardedFromLvgl(ShowView, &stood)) {
    gRun.ResultStatus = EFI_OUT_OF_RESOURCES;
  }
  HandBack(stood);
}

}  // namespace

// Not guarded, nor part of a caller that is: the guard's value changes under it.
__attribute__((no_stack_protector, noinline)) EFI_STATUS EFIAPI
VeltBoardscopeAppEntryPoint(EFI_HANDLE, EFI_SYSTEM_TABLE *) {
  SeedStackGuard();
  gRun.ResultStatus = InitializeObvProtocol();
  if (EFI_ERROR(gRun.ResultStatus)) {
    LogError("[%a] Init error: %r.\n", kEntryName, gRun.ResultStatus);
    return gRun.ResultStatus;
  }
  gRun.StartTime = HostTime();
  EFI_STATUS verdict = ChooseViewGeometry();
  if (!EFI_ERROR(verdict)) {
    LogInfo("current resolution: %d %d\n", gGeometry.ViewWidth, gGeometry.ViewHeight);
    RunView();
  }
  EndLife(verdict);
  // Without a usable mode this is deliberately success: the host learns of it
  // through its UnsupportedResolution hook alone.
  return gRun.ResultStatus;
}
