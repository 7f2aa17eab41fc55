#include "app/base/HostClient.h"
#include "hostcheck/Checks.h"
#include "hostcheck/Intake.h"
#include "resources/ComponentIntake.h"

namespace hostcheck {
namespace {

/// What no host writes as a number of lines.
constexpr UINT64 kUnwritten = MAX_UINT64;
/// The first answer may read a device; of these the fastest counts.
constexpr UINTN kTimedQueries = 3;
/// A millisecond is promised, and the clock counts whole ones.
constexpr UINT64 kMostMilliseconds = 1;

void CheckLine(Report *report, UINTN index, UINTN line) {
  const OBV_COMPONENT_INFO &info = ComponentAt(index).Info[line];
  UINT32 number = static_cast<UINT32>(line);
  if (StrnLenS(info.Label, OBV_INFO_LABEL_LENGTH) == OBV_INFO_LABEL_LENGTH ||
      StrnLenS(info.Value, OBV_INFO_VALUE_LENGTH) == OBV_INFO_VALUE_LENGTH) {
    Complain(report, "%a line %d: label or value has no end in its field. Terminate both.",
             NameOf(index).Text, number);
  } else if (info.Kind > OBV_INFO_SIDE_LIST) {
    Warn(report, "%a line %d is of kind %d, which is not shown. Write OBV_INFO_*.",
         NameOf(index).Text, number, info.Kind);
  }
}

void CheckRest(Report *report, UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  UINTN count = InfoCountOf(component);
  UINTN rest = (OBV_INFO_CAPACITY - count) * sizeof(OBV_COMPONENT_INFO);
  if (rest != 0 && !IsZeroBuffer(&component.Info[count], rest)) {
    Complain(report,
             "%a has %d lines, and something behind them. Leave the other entries zeroed: the view "
             "adds a line of its own there.",
             NameOf(index).Text, static_cast<UINT32>(count));
  }
}

void CheckAnswer(Report *report, UINTN index) {
  OBV_COMPONENT &component = ComponentAt(index);
  component.InfoCount = kUnwritten;
  RefreshComponentStatus(index);
  if (component.InfoCount == kUnwritten) {
    component.InfoCount = 0;
    Complain(report,
             "QueryComponentStatus for %a writes no InfoCount. Write the number of lines with "
             "every answer.",
             NameOf(index).Text);
    return;
  }
  if (component.InfoCount > OBV_INFO_CAPACITY) {
    Complain(report, "%a has an InfoCount of %ld. Write 20 lines at most.", NameOf(index).Text,
             component.InfoCount);
    return;
  }
  for (UINTN line = 0; line < InfoCountOf(component); ++line) {
    CheckLine(report, index, line);
  }
  CheckRest(report, index);
}

void TimeAnswer(Report *report, UINTN index) {
  UINT64 fastest = MAX_UINT64;
  for (UINTN i = 0; i < kTimedQueries; ++i) {
    UINT64 start = HostTime();
    RefreshComponentStatus(index);
    UINT64 taken = HostTime() - start;
    fastest = MIN(fastest, taken);
  }
  if (fastest > kMostMilliseconds) {
    Warn(report,
         "QueryComponentStatus takes %ld ms for %a and the pointer stops meanwhile. Remember what "
         "a device has answered, and answer within 1 ms.",
         fastest, NameOf(index).Text);
  }
}

}  // namespace

void CheckStatus(Report *report) {
  EFI_STATUS status = ParseFor(kDesignView);
  for (UINTN i = 0; !EFI_ERROR(status) && i < RecordCount(); ++i) {
    if (LooksLikeRecord(ComponentAt(i))) {
      CheckAnswer(report, i);
      TimeAnswer(report, i);
    }
  }
  if (!EFI_ERROR(status)) {
    status = gHost.Protocol->FinishParse(gHost.Protocol);
  }
  if (EFI_ERROR(status)) {
    Complain(report, "the host answers %r to a second intake. Let every view start.", status);
  }
}

}  // namespace hostcheck
