#include "view/CalloutTexts.h"

#include "app/base/Firmware.h"
#include "app/base/LowBytes.h"
#include "platform/ColorText.h"
#include "resources/ComponentIntake.h"
#include "view/ViewState.h"

namespace {

constexpr UINTN kRecolorCommandSize = 20;

/// For a record whose host forgot its style.
constexpr OBV_COMPONENT_STYLE kNoStyle = {};

void AppendRecolorCommand(CHAR8 *text, const CHAR8 *colorText) {
  CHAR8 command[kRecolorCommandSize];
  AsciiSPrint(command, sizeof(command), "#%.6x ", ParseColorText(colorText));
  (void)AsciiStrCatS(text, kCalloutTextSize, command);
}

/// Marks that do not fit the name are left out whole.
void AppendMark(ComponentWidgets *widgets, const CHAR8 *mark) {
  (void)AsciiStrCatS(widgets->Name, kNameSize, mark);
  (void)AsciiStrCatS(widgets->DefaultText, kCalloutTextSize, mark);
  (void)AsciiStrCatS(widgets->FocusText, kCalloutTextSize, mark);
}

void AppendMarks(const OBV_COMPONENT &component, ComponentWidgets *widgets) {
  AppendRecolorCommand(widgets->DefaultText, CalloutStyleOf(component.DefaultStyle).MarkColor);
  AppendRecolorCommand(widgets->FocusText, CalloutStyleOf(component.FocusStyle).MarkColor);
  if (component.NotReady != 0) {
    AppendMark(widgets, " *");
  }
  if (component.SearchTokenId == 0) {
    AppendMark(widgets, " **");
  }
  (void)AsciiStrCatS(widgets->DefaultText, kCalloutTextSize, "#");
  (void)AsciiStrCatS(widgets->FocusText, kCalloutTextSize, "#");
}

}  // namespace

const OBV_COMPONENT_STYLE &CalloutStyleOf(const OBV_COMPONENT_STYLE *style) {
  return style != nullptr ? *style : kNoStyle;
}

bool HasMarks(const OBV_COMPONENT &component) {
  return component.NotReady != 0 || component.SearchTokenId == 0;
}

void ComposeCalloutTexts(UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  ComponentWidgets *widgets = &gView.Components[index];
  // A name that is too long is refused whole and leaves the callout empty.
  CopyLowBytes(component.Name, widgets->Name, kNameSize);
  (void)AsciiStrCpyS(widgets->DefaultText, kCalloutTextSize, widgets->Name);
  (void)AsciiStrCpyS(widgets->FocusText, kCalloutTextSize, widgets->Name);
  if (HasMarks(component)) {
    AppendMarks(component, widgets);
  }
}
