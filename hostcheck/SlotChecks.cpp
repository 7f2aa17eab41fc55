#include "app/base/HostClient.h"
#include "hostcheck/Checks.h"
#include "hostcheck/Readable.h"

namespace hostcheck {
namespace {

struct Slot {
  const CHAR8 *Name;
  UINTN Offset;
};

#define SLOT(Name) \
  { #Name, OFFSET_OF(OBV_PROTOCOL, Name) }

constexpr Slot kNeeded[] = {
    SLOT(GetTime),     SLOT(ParseComponents), SLOT(FinishParse),          SLOT(GetResourceData),
    SLOT(GetFontData), SLOT(GetGop),          SLOT(QueryComponentStatus),
};

constexpr Slot kOptional[] = {
    SLOT(DebugPrint),
    SLOT(FindBiosOption),
    SLOT(AfterAppLife),
    SLOT(UnsupportedResolution),
};

constexpr UINTN kMicroseconds = 1000;  // of a millisecond
/// A clock of whole seconds shows as too slow, not as one that stands still.
constexpr UINTN kStandstill = 1200;
constexpr UINTN kMeasured = 100;
/// Stall itself may be wrong by as much, on an emulator above all.
constexpr UINTN kTolerance = 5;

/// Waits for the clock to change; false when it does not.
bool Ticks() {
  UINT64 start = HostTime();
  for (UINTN i = 0; i < kStandstill; ++i) {
    (void)gBS->Stall(kMicroseconds);
    if (HostTime() != start) {
      return true;
    }
  }
  return false;
}

const VOID *FunctionIn(const Slot &slot) {
  auto *bytes = reinterpret_cast<const UINT8 *>(gHost.Protocol);
  return *reinterpret_cast<VOID *const *>(bytes + slot.Offset);
}

void CheckFunction(Report *report, const Slot &slot) {
  const VOID *function = FunctionIn(slot);
  if (function != nullptr && !IsReadable(function, 1)) {
    Complain(report, "%a (offset 0x%02x) is %p, where there is no memory. Put your function there.",
             slot.Name, slot.Offset, function);
  }
}

void CheckRecord(Report *report) {
  if (gHost.SharedState == nullptr) {
    Complain(report,
             "SharedState (offset 0x78) is NULL. No view starts: point it to your "
             "OBV_SHARED_STATE before you install the protocol.");
  } else if (!IsReadable(gHost.SharedState, sizeof(OBV_SHARED_STATE))) {
    Complain(report,
             "SharedState (offset 0x78) is %p, where there is no memory. Point it to your "
             "OBV_SHARED_STATE.",
             gHost.SharedState);
  }
}

bool HasMode(const EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
  return IsReadable(gop, sizeof(*gop)) && IsReadable(gop->Mode, sizeof(*gop->Mode)) &&
         IsReadable(gop->Mode->Info, sizeof(*gop->Mode->Info));
}

}  // namespace

void CheckSlots(Report *report) {
  for (const Slot &slot : kNeeded) {
    if (FunctionIn(slot) == nullptr) {
      Complain(report,
               "%a (offset 0x%02x) is NULL. The application calls it unasked, and hangs: put your "
               "function there.",
               slot.Name, slot.Offset);
    }
    CheckFunction(report, slot);
  }
  for (const Slot &slot : kOptional) {
    CheckFunction(report, slot);
  }
  CheckRecord(report);
}

void CheckClock(Report *report) {
  if (!Ticks()) {
    Block(report,
          "GetTime stands still at %ld. A view would end after ten seconds of it: return the "
          "milliseconds of a free-running clock.",
          HostTime());
    return;
  }
  UINT64 start = HostTime();
  (void)gBS->Stall(kMeasured * kMicroseconds);
  UINT64 end = HostTime();
  if (end < start) {
    Complain(report, "GetTime went back from %ld to %ld. Return a clock that never does.", start,
             end);
  } else if (end - start > kMeasured * kTolerance || end - start < kMeasured / kTolerance) {
    Complain(report, "GetTime counted %ld in %d ms. Return milliseconds.", end - start,
             static_cast<UINT32>(kMeasured));
  }
}

void CheckOutput(Report *report) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = gHost.SharedState->Gop;
  if (gop == nullptr) {
    EFI_STATUS status = gHost.Protocol->GetGop(gHost.Protocol, &gop);
    if (EFI_ERROR(status)) {
      Complain(report,
               "GetGop answers %r. No view starts: name the output to draw on there, or in Gop of "
               "the shared state.",
               status);
      return;
    }
  }
  if (gop == nullptr) {
    Complain(report, "GetGop answers Success without an output. Store one, or return an error.");
  } else if (!HasMode(gop)) {
    Complain(report, "the output to draw on has no Mode or no Mode->Info. Choose one that is set.");
  }
}

}  // namespace hostcheck
