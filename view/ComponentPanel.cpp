#include "view/ComponentPanel.h"

#include "app/base/Firmware.h"

#include "platform/ColorText.h"
#include "platform/TextTrim.h"
#include "resources/ComponentIntake.h"
#include "view/InfoLine.h"
#include "view/InfoPanel.h"
#include "view/Look.h"
#include "view/ViewState.h"

namespace {

constexpr UINTN kHeadingSize = 40;

/// One of the panel's two texts.
struct PanelText {
  CHAR8 Text[kPanelTextSize];
  UINT32 LabelColor;
};

/// Whether an information line has the label and, when one is given, the value.
bool HasLine(const OBV_COMPONENT &component, const CHAR16 *label, const CHAR16 *value) {
  for (UINTN i = 0; i < InfoCountOf(component); ++i) {
    const OBV_COMPONENT_INFO &line = component.Info[i];
    if (StrCmp(line.Label, label) == 0 && (value == nullptr || StrCmp(line.Value, value) == 0)) {
      return true;
    }
  }
  return false;
}

/// The new line's kind is deliberately left as the slot has it.
void AddLine(OBV_COMPONENT *component, const CHAR16 *label, const CHAR16 *value) {
  if (component->InfoCount >= OBV_INFO_CAPACITY) {
    return;
  }
  OBV_COMPONENT_INFO &line = component->Info[component->InfoCount];
  (void)StrCpyS(line.Label, OBV_INFO_LABEL_LENGTH, label);
  (void)StrCpyS(line.Value, OBV_INFO_VALUE_LENGTH, value);
  component->InfoCount += 1;
}

void AddStatusLine(OBV_COMPONENT *component) {
  const CHAR16 *note = Ucs2(u"Note");
  const CHAR16 *device = Ucs2(u"Device");
  const CHAR16 *notPresent = Ucs2(u"Not Present");
  if (component->NoMapping != 0) {
    if (!HasLine(*component, note, nullptr)) {
      AddLine(component, note, Ucs2(u"Unavailable for this CPU"));
    }
    return;
  }
  bool hasState =
      component->NotReady != 0 || component->Available != 0 || component->DeviceError != 0;
  if (!hasState && !HasLine(*component, device, notPresent)) {
    AddLine(component, device, notPresent);
  }
}

void SetHeadingTo(const CHAR8 *name) {
  CHAR8 heading[kHeadingSize];
  AsciiSPrint(heading, sizeof(heading), "%a", name);
  SetPanelHeading(heading);
}

}  // namespace

void FillComponentPanel(UINTN index) {
  if (index >= ViewComponentCount()) {
    return;
  }
  OBV_COMPONENT &component = ComponentAt(index);
  AddStatusLine(&component);
  SetHeadingTo(gView.Components[index].Name);

  // The description begins under the heading, which stands at the same place.
  PanelText description = {.Text = "\n\n", .LabelColor = ParseColorText(Look().InfoLabel.Color)};
  PanelText sideList = {.Text = "", .LabelColor = ParseColorText(Look().SideLabel.Color)};
  for (UINTN i = 0; i < InfoCountOf(component); ++i) {
    OBV_COMPONENT_INFO &line = component.Info[i];
    TrimTrailingWhitespace(line.Label);
    TrimTrailingWhitespace(line.Value);
    if (line.Kind == OBV_INFO_DESCRIPTION) {
      AppendInfoLine(description.Text, kPanelTextSize, line, description.LabelColor);
    } else if (line.Kind == OBV_INFO_SIDE_LIST) {
      AppendInfoLine(sideList.Text, kPanelTextSize, line, sideList.LabelColor);
    }
  }
  SetInfoText(description.Text);
  SetSideList(sideList.Text);
}
