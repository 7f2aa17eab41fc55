/** @file
  Starts Boardscope.efi from its own disk on the present screen, stands between it and the firmware
  while it is used, and logs what each thing took, as "[Bench] NAME TICKS". The last line is
  "[Bench] ended" or "[Bench] failed: REASON".
**/

#include "BenchFirmware.h"
#include "Course.h"
#include "Disks.h"
#include "Hands.h"
#include "HostStandIn.h"
#include "Meter.h"
#include "Outputs.h"
#include "StartUp.h"

namespace {

constexpr char16_t kApplication[] = u"Boardscope.efi";

/// Indexed by Phase.
constexpr const CHAR8 *kPhaseNames[] = {"rest",     "intake",  "fonts", "decode",
                                        "resample", "widgets", "frame"};
static_assert(ARRAY_SIZE(kPhaseNames) == kPhases);

OBV_PROTOCOL *FindHost() {
  EFI_GUID guid = OBV_PROTOCOL_GUID;
  VOID *host = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&guid, nullptr, &host);
  return EFI_ERROR(status) ? nullptr : static_cast<OBV_PROTOCOL *>(host);
}

EFI_STATUS LoadApplication(EFI_HANDLE self, EFI_HANDLE *application) {
  VOID *found = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(self, &gEfiLoadedImageProtocolGuid, &found);
  if (EFI_ERROR(status)) {
    return status;
  }
  EFI_HANDLE disk = static_cast<EFI_LOADED_IMAGE_PROTOCOL *>(found)->DeviceHandle;
  EFI_DEVICE_PATH_PROTOCOL *path =
      FileDevicePath(disk, reinterpret_cast<const CHAR16 *>(kApplication));
  if (path == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }
  status = gBS->LoadImage(FALSE, self, path, nullptr, 0, application);
  gBS->FreePool(path);
  return status;
}

/// Without the timer's ticks, in which the firmware's drivers look after their devices: how many of
/// them there are in a run, and in which of its parts, is chance.
EFI_STATUS StartWithoutTicks(EFI_HANDLE application) {
  VOID *found = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&gEfiTimerArchProtocolGuid, nullptr, &found);
  if (EFI_ERROR(status)) {
    return status;
  }
  auto *timer = static_cast<EFI_TIMER_ARCH_PROTOCOL *>(found);
  UINT64 period = 0;
  status = timer->GetTimerPeriod(timer, &period);
  if (EFI_ERROR(status)) {
    return status;
  }
  status = timer->SetTimerPeriod(timer, 0);
  if (EFI_ERROR(status)) {
    return status;
  }
  BeginStartUp();
  status = gBS->StartImage(application, nullptr, nullptr);
  (void)timer->SetTimerPeriod(timer, period);  // What can be set to 0 can be set to this, too.
  return status;
}

EFI_STATUS RunWatched(OBV_PROTOCOL *host, EFI_HANDLE application) {
  EFI_STATUS status = WatchOutputs();
  if (EFI_ERROR(status)) {
    return status;
  }
  status = WatchDisks();
  if (!EFI_ERROR(status)) {
    StandInForHost(host);
    status = StartWithoutTicks(application);
    LeaveHost();
    LeaveDisks();
  }
  LeaveOutputs();
  return status;
}

EFI_STATUS Run(OBV_PROTOCOL *host, EFI_HANDLE application) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *output = nullptr;
  EFI_STATUS status = host->GetGop(host, &output);
  if (EFI_ERROR(status)) {
    return status;
  }
  const EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *mode = output->Mode->Info;
  status = TakeInput(mode->HorizontalResolution, mode->VerticalResolution);
  if (EFI_ERROR(status)) {
    return status;
  }
  status = RunWatched(host, application);
  GiveInputBack();
  return status;
}

const CHAR8 *FindFault(EFI_STATUS status, const OBV_PROTOCOL *host) {
  if (EFI_ERROR(status)) {
    return "the application did not run, or ended with an error";
  }
  const CHAR8 *fault = FaultOfCourse(*host->SharedState);
  if (fault == nullptr && !StartUpIsWhole()) {
    fault = "the parts of the start were not recognised";
  }
  if (fault == nullptr && !ScreenshotIsSaved()) {
    fault = "the screenshot was not saved";
  }
  return fault;
}

void Report(OBV_PROTOCOL *host, EFI_STATUS status) {
  const CHAR8 *fault = FindFault(status, host);
  if (fault != nullptr) {
    host->DebugPrint(OBV_LOG_ERROR, "[Bench] failed: %a\n", fault);
    return;
  }
  LogFigure("million", TicksOfMillion());
  for (UINTN i = 0; i < kPhases; i++) {
    LogFigure(kPhaseNames[i], TicksOfPhase(i));
  }
  LogCourse();
  host->DebugPrint(OBV_LOG_INFO, "[Bench] ended\n");
}

}  // namespace

extern "C" EFI_STATUS EFIAPI FirmwareBenchEntryPoint(EFI_HANDLE image, EFI_SYSTEM_TABLE *) {
  OBV_PROTOCOL *host = FindHost();
  if (host == nullptr) {
    return EFI_NOT_STARTED;
  }
  EFI_HANDLE application = nullptr;
  EFI_STATUS status = LoadApplication(image, &application);
  if (!EFI_ERROR(status)) {
    status = Run(host, application);
  }
  Report(host, status);
  return status;
}
