#include "hostcheck/HostCheck.h"

#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "hostcheck/Checks.h"
#include "hostcheck/Readable.h"
#include "platform/LvglGuard.h"
#include "platform/LvglStart.h"

namespace hostcheck {
namespace {

/// Numbers of the points on which others build, by their place in the table.
enum Point : UINT8 {
  kSlots,
  kClock,
  kOutput,
  kPicture,
  kTexts,
  kComponents,
  kSharedState,
  kAppearance,
  kFontFiles,
  kPointsBuiltOn
};

constexpr UINT32 Bit(UINTN number) { return 1U << number; }

constexpr UINT32 SlotBit(UINTN offset) { return Bit(offset / sizeof(VOID *)); }
#define SLOT(Name) SlotBit(OFFSET_OF(OBV_PROTOCOL, Name))

constexpr UINT32 kSharedSlot = SLOT(SharedState);
constexpr UINT32 kIntakeSlots = kSharedSlot | SLOT(GetResourceData) | SLOT(ParseComponents) |
                                SLOT(FinishParse) | SLOT(QueryComponentStatus);

struct Check {
  const CHAR8 *Name;
  void (*Run)(Report *report);
  UINT32 Slots;   ///< Those that it calls.
  UINT32 Points;  ///< Those that must not block it.
};

constexpr UINT32 kRecords = Bit(kPicture) | Bit(kComponents);
constexpr UINT32 kFonts = Bit(kAppearance) | Bit(kFontFiles);

// In the order in which the application meets them. Appearance record and system texts are read
// after the intake only, and may be filled by it.
constexpr Check kChecks[] = {
    {"slots", CheckSlots, 0, 0},
    {"clock", CheckClock, SLOT(GetTime), 0},
    {"output", CheckOutput, kSharedSlot | SLOT(GetGop), 0},
    {"picture", CheckPicture, SLOT(GetResourceData), 0},
    {"texts", CheckTexts, kSharedSlot, 0},
    {"components", CheckComponents, kIntakeSlots, Bit(kPicture)},
    {"shared state", CheckSharedState, kSharedSlot, 0},
    {"appearance", CheckAppearance, kSharedSlot, 0},
    {"font files", CheckFontFiles, SLOT(GetFontData), 0},
    {"font choices", CheckFontChoices, kSharedSlot | SLOT(GetFontData), kFonts},
    {"places", CheckPlaces, kIntakeSlots, kRecords | Bit(kAppearance)},
    {"status", CheckStatus, kIntakeSlots | SLOT(GetTime), kRecords | Bit(kClock)},
    {"second parse", CheckSecondParse, kIntakeSlots, kRecords},
};
static_assert(ARRAY_SIZE(kChecks) <= kMostPoints);

/// Slots that cannot be called. The log is called by the application's code wherever there is one.
UINT32 UnusableSlots() {
  auto *slots = reinterpret_cast<VOID *const *>(gHost.Protocol);
  UINT32 unusable = 0;
  for (UINTN i = 0; i < sizeof(OBV_PROTOCOL) / sizeof(VOID *); ++i) {
    unusable |= IsReadable(slots[i], 1) ? 0 : Bit(i);
  }
  bool logs = gHost.Protocol->DebugPrint != nullptr;
  return logs ? unusable : unusable & ~SLOT(DebugPrint);
}

/// The point that must be right before this one can be looked at; NULL for none.
const CHAR8 *Obstacle(const Report &report, const Check &check) {
  if (((check.Slots | SLOT(DebugPrint)) & UnusableSlots()) != 0) {
    return kChecks[kSlots].Name;
  }
  for (UINTN i = 0; i < kPointsBuiltOn; ++i) {
    Verdict grade = report.Points[i].Grade;
    bool blocks = grade == Verdict::kBlocking || grade == Verdict::kLeftOut;
    if (blocks && (check.Points & Bit(i)) != 0) {
      return kChecks[i].Name;
    }
  }
  return nullptr;
}

void RunChecks(void *context) {
  auto *report = static_cast<Report *>(context);
  // For its fonts and its PNG decoder, which take their memory from it.
  StartLvgl();
  for (const Check &check : kChecks) {
    const CHAR8 *obstacle = check.Run == CheckSlots ? nullptr : Obstacle(*report, check);
    BeginPoint(report, check.Name);
    if (obstacle == nullptr) {
      check.Run(report);
    } else {
      LeaveOut(report, "not looked at until \"%a\" is right.", obstacle);
    }
  }
}

EFI_STATUS Locate(Report *report) {
  EFI_GUID guid = OBV_PROTOCOL_GUID;
  VOID *interface = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&guid, nullptr, &interface);
  if (EFI_ERROR(status)) {
    BeginPoint(report, "host");
    Complain(report,
             "no driver has installed OBV_PROTOCOL: %r. Load the host before this program, and "
             "install the protocol under OBV_PROTOCOL_GUID.",
             status);
    return EFI_NOT_FOUND;
  }
  gHost.Protocol = static_cast<OBV_PROTOCOL *>(interface);
  gHost.SharedState = gHost.Protocol->SharedState;
  return EFI_SUCCESS;
}

/// LVGL and FreeType live in this memory, so nothing of them may be used any more.
void GiveBack() {
  ReleaseMemoryBut(nullptr);
  gHost = {};
}

}  // namespace

EFI_STATUS CheckHost(Report *report) {
  EFI_STATUS status = Locate(report);
  if (EFI_ERROR(status)) {
    return status;
  }
  bool finished = RunGuardedFromLvgl(RunChecks, report);
  GiveBack();
  if (!finished) {
    BeginPoint(report, "memory");
    LeaveOut(report, "the firmware has none left for what is not listed above.");
  }
  if (report->Mistakes != 0) {
    return EFI_ABORTED;
  }
  return finished ? EFI_SUCCESS : EFI_OUT_OF_RESOURCES;
}

}  // namespace hostcheck
