#include "app/base/HostClient.h"
#include "hostcheck/Checks.h"
#include "hostcheck/ColorCheck.h"
#include "hostcheck/Intake.h"
#include "hostcheck/Quote.h"
#include "hostcheck/Readable.h"
#include "resources/ComponentIntake.h"
#include "view/ViewState.h"

namespace hostcheck {
namespace {

constexpr UINTN kDrawnVertices = 20;
constexpr UINTN kFewestVertices = 3;

bool IsEmpty(const OBV_COMPONENT &component) {
  return component.Name[0] == 0 && component.HotspotVertexCount == 0 &&
         component.LeaderPointCount == 0 && component.DefaultStyle == nullptr;
}

bool HoldsStrangeCharacters(const CHAR16 *name) {
  for (; *name != 0; ++name) {
    if (*name < 0x20 || *name > 0x7E || *name == '#') {
      return true;
    }
  }
  return false;
}

void CheckName(Report *report, UINTN index) {
  const CHAR16 *name = ComponentAt(index).Name;
  UINTN length = StrnLenS(name, OBV_NAME_LENGTH);
  RecordName record = NameOf(index);
  if (length == 0) {
    Complain(report, "%a has no name. Give it one: it is shown, and asked with.", record.Text);
  } else if (length == OBV_NAME_LENGTH) {
    Complain(report, "the name of %a has no end in its 60 characters. Terminate it.", record.Text);
  } else if (length >= kNameSize) {
    Complain(report, "the name of %a has %d characters, and is not shown at all. Use 19 at most.",
             record.Text, static_cast<UINT32>(length));
  } else if (HoldsStrangeCharacters(name)) {
    Complain(report,
             "the name of %a holds what no callout can show. Use printable ASCII, and no #, which "
             "begins a colour.",
             record.Text);
  }
}

/// The first one with the same name and type, for which the host cannot tell the two apart.
void CheckNameIsOwn(Report *report, UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  for (UINTN i = 0; i < index; ++i) {
    const OBV_COMPONENT &other = ComponentAt(i);
    if (LooksLikeRecord(other) && other.Type == component.Type &&
        StrCmp(other.Name, component.Name) == 0) {
      Warn(report,
           "%a has name and type of component %d, and status and selection go by them. Rename one.",
           NameOf(index).Text, static_cast<UINT32>(i));
      return;
    }
  }
}

void CheckCounts(Report *report, UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  RecordName name = NameOf(index);
  UINT32 vertices = component.HotspotVertexCount;
  UINT32 points = component.LeaderPointCount;
  if (vertices < kFewestVertices || vertices > OBV_VERTEX_CAPACITY) {
    Complain(report, "%a has %d vertices. Outline it with 3 to 20, and with 40 at most.", name.Text,
             vertices);
  } else if (vertices > kDrawnVertices) {
    Warn(report, "%a has %d vertices, of which 20 are drawn. Outline it with 20.", name.Text,
         vertices);
  }
  if (points == 0 || points > OBV_LEADER_POINT_CAPACITY) {
    Complain(report, "%a has %d leader points. Lead to its callout with 1 to 20.", name.Text,
             points);
  }
}

void CheckCodes(Report *report, UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  RecordName name = NameOf(index);
  if (component.Type > OBV_TYPE_AUDIO) {
    Complain(report, "%a has type %d, which no filter shows. Write OBV_TYPE_*, 0 to 9.", name.Text,
             component.Type);
  }
  if (component.CalloutSide < OBV_CALLOUT_KEEP || component.CalloutSide > OBV_CALLOUT_TOP_RIGHT) {
    Warn(report, "%a has callout side %d, which counts as 0. Write OBV_CALLOUT_*.", name.Text,
         component.CalloutSide);
  }
  if (component.TextAlign < OBV_TEXT_LEFT || component.TextAlign > OBV_TEXT_RIGHT) {
    Warn(report, "%a has text alignment %d, which is logged at each start. Write OBV_TEXT_*.",
         name.Text, component.TextAlign);
  }
}

void CheckStyleColors(Report *report, const OBV_COMPONENT_STYLE &style, const CHAR8 *owner) {
  CheckColor(report, style.TextColor, "TextColor", owner);
  CheckColor(report, style.BackgroundColor, "BackgroundColor", owner);
  CheckColor(report, style.MarkColor, "MarkColor", owner);
  if (style.BorderWidth != 0) {
    CheckColor(report, style.BorderColor, "BorderColor", owner);
  }
}

using StyleField = OBV_COMPONENT_STYLE *OBV_COMPONENT::*;

/// Components share their styles: what was looked at before is not looked at again.
bool IsFirstWith(UINTN index, StyleField field) {
  for (UINTN i = 0; i < index; ++i) {
    if (LooksLikeRecord(ComponentAt(i)) && ComponentAt(i).*field == ComponentAt(index).*field) {
      return false;
    }
  }
  return true;
}

void CheckStyle(Report *report, UINTN index, StyleField field, const CHAR8 *fieldName) {
  const OBV_COMPONENT_STYLE *style = ComponentAt(index).*field;
  CHAR8 owner[80];
  AsciiSPrint(owner, sizeof(owner), "%a of %a", fieldName, NameOf(index).Text);
  // Without the comma that the record's name ends with.
  owner[AsciiStrLen(owner) - 1] = 0;
  if (style == nullptr) {
    Complain(report, "%a is NULL, and its callout has no colours. Point it to a style.", owner);
  } else if (!IsReadable(style, sizeof(*style))) {
    Complain(report, "%a is %p, where there is no memory. Point it to a style.", owner, style);
  } else if (IsFirstWith(index, field)) {
    CheckStyleColors(report, *style, owner);
  }
}

void CheckRecord(Report *report, UINTN index) {
  if (IsEmpty(ComponentAt(index))) {
    Complain(report,
             "record %d of %d is empty: no name, no outline, no style. Write the number of records "
             "that you have filled to ComponentCount.",
             static_cast<UINT32>(index + 1), static_cast<UINT32>(ComponentCount()));
    return;
  }
  CheckName(report, index);
  CheckCounts(report, index);
  CheckCodes(report, index);
  if (IsInBounds(ComponentAt(index))) {
    CheckNameIsOwn(report, index);
    CheckStyle(report, index, &OBV_COMPONENT::DefaultStyle, "DefaultStyle");
    CheckStyle(report, index, &OBV_COMPONENT::FocusStyle, "FocusStyle");
  }
}

/// Behind the last record of the count, one that lacks nothing is no accident.
void CheckBehind(Report *report) {
  UINTN count = RecordCount();
  const OBV_COMPONENT *behind = gComponents.Components + count;
  if (count < OBV_MAX_COMPONENTS && IsReadable(behind, sizeof(*behind)) &&
      LooksLikeRecord(*behind) && !HoldsStrangeCharacters(behind->Name) &&
      behind->HotspotVertexCount >= kFewestVertices && behind->LeaderPointCount != 0 &&
      behind->DefaultStyle != nullptr && behind->FocusStyle != nullptr) {
    Complain(report,
             "ComponentCount is %d, and behind these stands another whole record, %a. Count it, or "
             "zero it.",
             static_cast<UINT32>(count), Quote(behind->Name, OBV_NAME_LENGTH).Text);
  }
}

/// False when there is nothing to walk.
bool CheckArray(Report *report) {
  UINT32 count = gHost.SharedState->ComponentCount;
  if (count != 0 && RecordCount() == 0) {
    Block(report,
          "ParseComponents stores %p as its array, and ComponentCount is %d, but there is no such "
          "memory. Store the array's address and the number of its records.",
          gComponents.Components, count);
    return false;
  }
  if (count == 0) {
    Warn(report,
         "there are no components. Write their number to ComponentCount in "
         "ParseComponents.");
    return false;
  }
  if (count > OBV_MAX_COMPONENTS) {
    Complain(report,
             "ComponentCount is %d. Describe 99 components at most: FocusIndex has no numbers for "
             "more.",
             count);
  }
  return true;
}

}  // namespace

void CheckComponents(Report *report) {
  EFI_STATUS status = ParseFor(kDesignView);
  if (EFI_ERROR(status)) {
    Block(report, "ParseComponents answers %r. No view starts: build the records.", status);
    return;
  }
  bool any = CheckArray(report);
  for (UINTN i = 0; any && i < RecordCount(); ++i) {
    CheckRecord(report, i);
  }
  if (any) {
    CheckBehind(report);
  }
  status = AskAndFinish();
  if (EFI_ERROR(status)) {
    Block(report, "FinishParse answers %r. No view starts: return EFI_SUCCESS.", status);
  }
}

}  // namespace hostcheck
