#include "app/Entry.h"

#include "app/ChooseGeometry.h"
#include "app/Input.h"
#include "app/UiState.h"
#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/LocateHost.h"
#include "app/base/MemoryPool.h"
#include "app/base/Run.h"
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

/// Difference of two host times as the log's "%d" takes it.
UINT32 Elapsed(UINT64 from, UINT64 to) { return static_cast<UINT32>(to - from); }

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

/// A busy loop on purpose: LVGL's timers are its only pacing.
void RunMainLoop() {
  while (!gRun.ExitRequested) {
    // First, so that what the notification asked for between two turns is drawn once.
    RedrawAfterHotPlug();
    lv_timer_handler();
    UINT64 now = HostTime();
    lv_tick_inc(static_cast<UINT32>(now - gRun.LastTime));
    gRun.LastTime = now;
  }
}

/// Everything that runs inside LVGL; left early when LVGL cannot go on.
void ShowView(void *stood) {
  BuildView();
  *static_cast<bool *>(stood) = true;
  gRun.LastTime = HostTime();
  LogInfo("[%a] Preparation cost: %dms\n", kEntryName, Elapsed(gRun.StartTime, gRun.LastTime));
  RunMainLoop();
}

void FindChosenOption() {
  if (gHost.SharedState->JumpRequested == 0 || gHost.Protocol->FindBiosOption == nullptr) {
    return;
  }
  UINT64 start = HostTime();
  gRun.ResultStatus = gHost.Protocol->FindBiosOption(gHost.Protocol);
  LogInfo("[%a] Find BIOS option cost: %dms\n", kEntryName, Elapsed(start, HostTime()));
  if (EFI_ERROR(gRun.ResultStatus)) {
    LogError("[%a] Find BIOS option error: %r.\n", kEntryName, gRun.ResultStatus);
    gHost.SharedState->JumpRequested = 0;
  }
}

/// Hands screen and choice back to the setup. The LVGL objects stay as they
/// are; the pool's leak report frees them.
void HandBack(bool viewStood) {
  CloseHotPlugDetector();
  if (viewStood) {
    // Else the state of the last visit is kept.
    SaveUiState();
  }
  FindChosenOption();
  // Each output that refuses keeps its mode; there is nobody to tell.
  (void)SetAllGopMode(gGeometry.PreviousHeight, gGeometry.PreviousWidth);
  (void)RecoverScreenContent(gGeometry.PreviousHeight, gGeometry.PreviousWidth);
}

void RunView() {
  gRun.ResultStatus = GetComponentData();
  if (EFI_ERROR(gRun.ResultStatus)) {
    LogError("[%a] Parse resources error: %r.\n", kEntryName, gRun.ResultStatus);
    return;
  }
  ComposeSystemSummary();
  // Logged by the operation; without a backup the setup redraws its screen.
  (void)BackupScreenShots(gHost.Gop, &gRun.ScreenBackup);
  SwitchToViewMode();
  (void)ClearAllScreen();
  bool stood = false;
  if (!RunGuardedFromLvgl(ShowView, &stood)) {
    gRun.ResultStatus = EFI_OUT_OF_RESOURCES;
  }
  HandBack(stood);
}

void EndLife(EFI_STATUS resolutionVerdict) {
  OBV_PROTOCOL *host = gHost.Protocol;
  UINT64 start = HostTime();
  if (host->AfterAppLife != nullptr) {
    (void)host->AfterAppLife(host);
  }
  gHost.SharedState->JumpRequested = 0;
  // At the error level so that it is always recorded.
  LogError("[%a] AfterAppLife cost: %dms\n", kEntryName, Elapsed(start, HostTime()));
  if (resolutionVerdict == EFI_UNSUPPORTED && host->UnsupportedResolution != nullptr) {
    (void)host->UnsupportedResolution(host);
  }
  ReportMemoryLeaks();
  UINT64 seconds = (HostTime() - gRun.StartTime) / 1000;
  LogError("[%a] User used APP for %ds\n", kEntryName, static_cast<UINT32>(seconds));
}

}  // namespace

EFI_STATUS EFIAPI VeltBoardscopeAppEntryPoint(EFI_HANDLE, EFI_SYSTEM_TABLE *) {
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
