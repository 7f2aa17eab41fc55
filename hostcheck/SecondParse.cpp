#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "hostcheck/Checks.h"
#include "hostcheck/Intake.h"
#include "resources/ComponentIntake.h"

namespace hostcheck {
namespace {

struct Field {
  const CHAR8 *Name;
  UINTN Offset;
  UINTN Size;
};

#define FIELD(Name) \
  { #Name, OFFSET_OF(OBV_COMPONENT, Name), sizeof(OBV_COMPONENT::Name) }

/// What Boardscope writes, and what the host has to reset.
constexpr Field kWritten[] = {
    FIELD(NotReady),    FIELD(NoMapping), FIELD(Available),
    FIELD(DeviceError), FIELD(InfoCount), FIELD(Info),
};

/// What the host writes, and what has to be the same for the same view. Styles may move.
constexpr Field kFilled[] = {
    FIELD(NotSelectable),    FIELD(InSpecialGroup), FIELD(SearchTokenId), FIELD(HotspotVertexCount),
    FIELD(LeaderPointCount), FIELD(CalloutHeight),  FIELD(CalloutWidth),  FIELD(Type),
    FIELD(CalloutSide),      FIELD(TextAlign),      FIELD(CalloutX),      FIELD(CalloutY),
    FIELD(MarkerX),          FIELD(MarkerY),        FIELD(Name),          FIELD(HotspotVertices),
    FIELD(LeaderPoints),
};

/// As a run may leave a record.
void LeaveTraces(OBV_COMPONENT *component) {
  component->NotReady = 1;
  component->NoMapping = 1;
  component->Available = 1;
  component->DeviceError = 1;
  component->CalloutX = static_cast<INT16>(component->CalloutX + 1);
  component->CalloutY = static_cast<INT16>(component->CalloutY + 1);
  component->CalloutWidth = static_cast<UINT16>(component->CalloutWidth + 1);
  component->CalloutHeight = static_cast<UINT16>(component->CalloutHeight + 1);
  component->InfoCount = 1;
  component->Info[0].Label[0] = 'X';
}

void CompareRecord(Report *report, UINTN index, const OBV_COMPONENT &before) {
  auto *now = reinterpret_cast<const UINT8 *>(&ComponentAt(index));
  auto *then = reinterpret_cast<const UINT8 *>(&before);
  for (const Field &field : kWritten) {
    if (!IsZeroBuffer(now + field.Offset, field.Size)) {
      Complain(report,
               "%a keeps %a over a second ParseComponents. Zero it there: the next view starts "
               "with what the last one left.",
               NameOf(index).Text, field.Name);
      return;
    }
  }
  for (const Field &field : kFilled) {
    if (CompareMem(now + field.Offset, then + field.Offset, field.Size) != 0) {
      Complain(report,
               "%a has another %a after a second ParseComponents for %d x %d. Build each record "
               "anew from your description.",
               NameOf(index).Text, field.Name, static_cast<UINT32>(gGeometry.ViewWidth),
               static_cast<UINT32>(gGeometry.ViewHeight));
      return;
    }
  }
}

void Compare(Report *report, const OBV_COMPONENT *before, UINTN count) {
  if (RecordCount() != count) {
    Complain(report, "a second ParseComponents gives %d components after %d. Build the same.",
             static_cast<UINT32>(RecordCount()), static_cast<UINT32>(count));
    return;
  }
  for (UINTN i = 0; i < count; ++i) {
    if (LooksLikeRecord(before[i])) {
      CompareRecord(report, i, before[i]);
    }
  }
}

/// Parses twice, with a whole intake between. False when the host refuses.
bool ParseTwice(Report *report, const ViewSize &view) {
  if (EFI_ERROR(ParseFor(view))) {
    return false;
  }
  UINTN count = RecordCount();
  auto *before = static_cast<OBV_COMPONENT *>(malloc(MAX(count, 1U) * sizeof(OBV_COMPONENT)));
  if (before == nullptr) {
    LeaveOut(report, "the firmware has no memory to compare %d records.",
             static_cast<UINT32>(count));
    return true;
  }
  CopyMem(before, gComponents.Components, count * sizeof(OBV_COMPONENT));
  bool parsed = !EFI_ERROR(AskAndFinish());
  for (UINTN i = 0; i < count; ++i) {
    if (LooksLikeRecord(ComponentAt(i))) {
      LeaveTraces(&ComponentAt(i));
    }
  }
  parsed = parsed && !EFI_ERROR(ParseFor(view));
  if (parsed) {
    Compare(report, before, count);
    parsed = !EFI_ERROR(AskAndFinish());
  }
  free(before);
  return parsed;
}

}  // namespace

void CheckSecondParse(Report *report) {
  for (const ViewSize &view : kViewSizes) {
    if (!ParseTwice(report, view)) {
      Complain(report,
               "the host does not build its records twice for %d x %d. Let every view "
               "start.",
               static_cast<UINT32>(view.Width), static_cast<UINT32>(view.Height));
      return;
    }
  }
}

}  // namespace hostcheck
