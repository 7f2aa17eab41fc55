#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "hostcheck/Checks.h"
#include "hostcheck/Intake.h"
#include "hostcheck/Quote.h"
#include "platform/FontTable.h"
#include "view/FixedLook.h"
#include "view/Look.h"

namespace hostcheck {
namespace {

struct Choice {
  const CHAR8 *Name;
  UINTN Offset;
  bool FixedRoom;  ///< Stands in a line whose height does not follow the font.
};

#define CHOICE(Field) \
  { #Field, OFFSET_OF(OBV_CONFIG, Field), false }
#define CHOICE_IN_A_LINE(Field) \
  { #Field, OFFSET_OF(OBV_CONFIG, Field), true }

constexpr Choice kChoices[] = {
    CHOICE_IN_A_LINE(TitleFont), CHOICE_IN_A_LINE(KeyHelpFont), CHOICE_IN_A_LINE(FooterFont),
    CHOICE(CalloutFont),         CHOICE(CloseFocusFont),        CHOICE(Filter.Font),
    CHOICE(FocusFilter.Font),    CHOICE(Heading.Font),          CHOICE(InfoLabel.Font),
    CHOICE(SideLabel.Font),
};

/// What those lines have room for.
constexpr UINT8 kMostInALine = 18;

bool IsFaceOf(const CHAR8 *name, const lv_ft_info_t &font) {
  return font.font != nullptr && AsciiStrCmp(font.name, name) == 0;
}

bool IsFace(const CHAR8 *name) {
  for (const lv_ft_info_t &font : gFontTable.Fonts) {
    if (IsFaceOf(name, font)) {
      return true;
    }
  }
  return false;
}

/// Of the faces as the host names them; "" where there is none.
Quoted FaceName(UINTN face) {
  const lv_ft_info_t &font = gFontTable.Fonts[face];
  return Quote(font.font != nullptr ? font.name : "", OBV_FONT_NAME_SIZE);
}

void CheckSizes(Report *report, const Choice &choice, const OBV_FONT_CHOICE &font) {
  for (const ViewSize &view : kViewSizes) {
    SetViewSize(view.Width, view.Height);
    INT16 pixels = ScaledFontSize(font.Size);
    if (pixels < kFontSizeFirst || pixels > kFontSizeLast) {
      Complain(report,
               "%a of Config has size %d, which is %d pixels at %d x %d: the built-in font stands "
               "in. Choose a size that stays within 8 to 60 pixels.",
               choice.Name, static_cast<UINT32>(font.Size), static_cast<UINT32>(pixels),
               static_cast<UINT32>(view.Width), static_cast<UINT32>(view.Height));
      return;
    }
  }
}

void CheckChoice(Report *report, const Choice &choice, const OBV_FONT_CHOICE &font) {
  CHAR8 name[OBV_FONT_NAME_SIZE + 1] = {};
  CopyMem(name, font.Name, OBV_FONT_NAME_SIZE);
  if (!IsFace(name)) {
    Complain(report,
             "%a of Config asks for %a, and the faces are %a, %a and %a: the built-in font stands "
             "in. Ask for a name that GetFontData hands over, letter by letter.",
             choice.Name, Quote(name, OBV_FONT_NAME_SIZE).Text, FaceName(0).Text, FaceName(1).Text,
             FaceName(2).Text);
  }
  CheckSizes(report, choice, font);
  if (choice.FixedRoom && font.Size > kMostInALine && !TextRoomGrows()) {
    Warn(report,
         "%a of Config has size %d, and its line has room for 18. Write OBV_ROOM_GROWS to "
         "TextRoom, or choose a smaller size.",
         choice.Name, static_cast<UINT32>(font.Size));
  }
}

}  // namespace

void CheckFontChoices(Report *report) {
  const OBV_CONFIG *config = gHost.SharedState->Config;
  if (config == nullptr) {
    LeaveOut(report, "not looked at until \"appearance\" is right.");
    return;
  }
  auto *bytes = reinterpret_cast<const UINT8 *>(config);
  for (const Choice &choice : kChoices) {
    CheckChoice(report, choice, *reinterpret_cast<const OBV_FONT_CHOICE *>(bytes + choice.Offset));
  }
  if (!IsFace(kStandardFace)) {
    Warn(report,
         "no face has the name %a, so the message boxes take the built-in font, which has ASCII "
         "alone. Give one face that name.",
         kStandardFace);
  }
}

}  // namespace hostcheck
