#include "app/HandBack.h"

#include "app/UiState.h"
#include "app/base/Firmware.h"
#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "app/base/Run.h"
#include "platform/GraphicsOutput.h"
#include "platform/HotPlug.h"

namespace {

/// The firmware allocates to list its outputs and modes. When it has nothing left, the application
/// gives back first what it holds, all but the saved screen; the objects of the view are of no use
/// any more.
void MakeRoomForTheWayBack() {
  constexpr UINTN kEnough = 64 * 1024;
  VOID *room = nullptr;
  if (EFI_ERROR(gBS->AllocatePool(EfiBootServicesData, kEnough, &room))) {
    ReleaseMemoryBut(gRun.ScreenBackup);
    return;
  }
  (void)gBS->FreePool(room);
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

}  // namespace

void HandBack(bool viewStood) {
  CloseHotPlugDetector();
  if (viewStood) {
    // Else the state of the last visit is kept.
    SaveUiState();
  }
  MakeRoomForTheWayBack();
  FindChosenOption();
  // Nothing may have been drawn since it went.
  ReplaceLostOutput();
  // Each output that refuses keeps its mode; there is nobody to tell.
  (void)SetAllGopMode(gGeometry.PreviousHeight, gGeometry.PreviousWidth);
  (void)RecoverScreenContent(gGeometry.PreviousHeight, gGeometry.PreviousWidth);
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
