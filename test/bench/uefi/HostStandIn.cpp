#include "HostStandIn.h"

#include "Course.h"
#include "Meter.h"
#include "Outputs.h"
#include "StartUp.h"

namespace {

constexpr UINTN kLineSize = 512;
constexpr CHAR8 kPictureLine[] = "%d %d %d %d\n";
constexpr CHAR8 kPreparedLine[] = "[%a] Preparation cost: %dms\n";
constexpr CHAR8 kSavedLine[] = "F12ScreenShots Success\n";

struct HostStandIn {
  OBV_PROTOCOL *Host;
  OBV_PROTOCOL Real;
  EFI_FREE_POOL FreePool;
  HostedView View;
  UINT64 Clock;  ///< ms
  bool InLoop;
  UINT64 TurnBegan;
  UINT64 PixelsBefore;
  bool Parsed;
  bool Saved;
};
HostStandIn gStandIn;

void BeginTurn() {
  gStandIn.TurnBegan = CountedTicks();
  gStandIn.PixelsBefore = DrawnPixels();
}

UINT64 EFIAPI GetTime(OBV_PROTOCOL *) {
  Uncounted uncounted;
  if (gStandIn.InLoop) {
    UINT64 pixels = DrawnPixels() - gStandIn.PixelsBefore;
    if (CurrentPhase() == Phase::Frame && pixels > 0) {
      EnterPhase(Phase::Over);
    }
    EndTurn(CountedTicks() - gStandIn.TurnBegan, pixels);
    BeginTurn();
  }
  gStandIn.Clock += ClockStep();
  return gStandIn.Clock;
}

bool Is(const CHAR8 *format, const CHAR8 *line) { return AsciiStrCmp(format, line) == 0; }

void Notice(const CHAR8 *format) {
  if (Is(format, kPictureLine) && CurrentPhase() == Phase::Decode) {
    EnterPhase(Phase::Resample);
  } else if (Is(format, kPreparedLine)) {
    EnterPhase(Phase::Frame);
    BeginCourse();
    gStandIn.InLoop = true;
    BeginTurn();
  } else if (Is(format, kSavedLine)) {
    gStandIn.Saved = true;
  }
}

VOID EFIAPI DebugPrint(UINTN level, const CHAR8 *format, ...) {
  Uncounted uncounted;
  CHAR8 line[kLineSize];
  VA_LIST arguments;
  VA_START(arguments, format);
  AsciiVSPrint(line, sizeof(line), format, arguments);
  VA_END(arguments);
  gStandIn.Real.DebugPrint(level, "%a", line);
  Notice(format);
}

EFI_STATUS EFIAPI ParseComponents(OBV_PROTOCOL *host, OBV_COMPONENT **components,
                                  UINT16 pictureHeight, UINT16 pictureWidth, UINT16 viewHeight,
                                  UINT16 viewWidth, double pictureShare, double scaleX,
                                  double scaleY) {
  EFI_STATUS status =
      gStandIn.Real.ParseComponents(host, components, pictureHeight, pictureWidth, viewHeight,
                                    viewWidth, pictureShare, scaleX, scaleY);
  gStandIn.View = {.Components = *components,
                   .Count = host->SharedState->ComponentCount,
                   .Width = viewWidth,
                   .Height = viewHeight,
                   .ScaleX = scaleX,
                   .ScaleY = scaleY};
  return status;
}

EFI_STATUS EFIAPI FinishParse(OBV_PROTOCOL *host) {
  EFI_STATUS status = gStandIn.Real.FinishParse(host);
  gStandIn.Parsed = true;
  EnterPhase(Phase::Rest);
  return status;
}

EFI_STATUS EFIAPI GetResourceData(OBV_PROTOCOL *host, VOID **data, UINTN *size) {
  EnterPhase(gStandIn.Parsed ? Phase::Decode : Phase::Intake);
  return gStandIn.Real.GetResourceData(host, data, size);
}

EFI_STATUS EFIAPI GetFontData(OBV_PROTOCOL *host, UINT8 index, CHAR8 **name, VOID **data,
                              UINTN *size) {
  if (CurrentPhase() == Phase::Rest) {
    EnterPhase(Phase::Fonts);
  }
  return gStandIn.Real.GetFontData(host, index, name, data, size);
}

EFI_STATUS EFIAPI FreePool(VOID *buffer) {
  if (CurrentPhase() == Phase::Resample) {
    EnterPhase(Phase::Widgets);
  }
  return gStandIn.FreePool(buffer);
}

}  // namespace

void StandInForHost(OBV_PROTOCOL *host) {
  gStandIn.Host = host;
  gStandIn.Real = *host;
  host->GetTime = GetTime;
  host->DebugPrint = DebugPrint;
  host->ParseComponents = ParseComponents;
  host->FinishParse = FinishParse;
  host->GetResourceData = GetResourceData;
  host->GetFontData = GetFontData;
  gStandIn.FreePool = gBS->FreePool;
  gBS->FreePool = FreePool;
}

void LeaveHost() {
  *gStandIn.Host = gStandIn.Real;
  gBS->FreePool = gStandIn.FreePool;
}

void LogFigure(const CHAR8 *name, UINT64 value) {
  gStandIn.Real.DebugPrint(OBV_LOG_INFO, "[Bench] %a %lu\n", name, value);
}

const HostedView &ViewOfHost() { return gStandIn.View; }

bool ScreenshotIsSaved() { return gStandIn.Saved; }
