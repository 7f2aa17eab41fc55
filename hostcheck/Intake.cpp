#include "hostcheck/Intake.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "hostcheck/Quote.h"
#include "hostcheck/Readable.h"
#include "resources/ComponentIntake.h"

namespace hostcheck {
namespace {

constexpr UINTN kQuotedName = 24;

/// The view does without a style.
bool IsUsable(const OBV_COMPONENT_STYLE *style) {
  return style == nullptr || IsReadable(style, sizeof(*style));
}

}  // namespace

EFI_STATUS ParseFor(const ViewSize &view) {
  SetViewSize(view.Width, view.Height);
  gComponents.Components = nullptr;
  return ParseComponents();
}

EFI_STATUS AskAndFinish() {
  for (UINTN i = 0; i < RecordCount(); ++i) {
    if (LooksLikeRecord(ComponentAt(i))) {
      RefreshComponentStatus(i);
    }
  }
  return gHost.Protocol->FinishParse(gHost.Protocol);
}

UINTN RecordCount() {
  UINTN count = MIN(ComponentCount(), OBV_MAX_COMPONENTS);
  return IsReadable(gComponents.Components, count * sizeof(OBV_COMPONENT)) ? count : 0;
}

bool IsInBounds(const OBV_COMPONENT &component) {
  UINTN length = StrnLenS(component.Name, OBV_NAME_LENGTH);
  return length != 0 && length < OBV_NAME_LENGTH && component.Type <= OBV_TYPE_AUDIO &&
         component.HotspotVertexCount <= OBV_VERTEX_CAPACITY &&
         component.LeaderPointCount <= OBV_LEADER_POINT_CAPACITY;
}

bool LooksLikeRecord(const OBV_COMPONENT &component) {
  return IsInBounds(component) && IsUsable(component.DefaultStyle) &&
         IsUsable(component.FocusStyle);
}

RecordName NameOf(UINTN index) {
  RecordName name;
  AsciiSPrint(name.Text, sizeof(name.Text), "component %d, %a,", static_cast<UINT32>(index),
              Quote(ComponentAt(index).Name, kQuotedName).Text);
  return name;
}

}  // namespace hostcheck
