#include "app/base/HostClient.h"
#include "hostcheck/Checks.h"
#include "hostcheck/ColorCheck.h"
#include "hostcheck/FormatDirectives.h"
#include "hostcheck/Quote.h"
#include "hostcheck/Readable.h"

namespace hostcheck {
namespace {

constexpr UINTN kPrintedText = 2;  ///< Of SystemInfo: the one behind InfoBuffer.
constexpr UINT16 kLastCallout = OBV_MAX_COMPONENTS;
constexpr UINT16 kFirstButton = 101;
constexpr UINT16 kLastButton = 106;

struct ColorField {
  const CHAR8 *Name;
  UINTN Offset;
  UINTN WidthOffset;  ///< Of the border that has this colour; 0 for other colours.
};

#define COLOR(Field) \
  { #Field, OFFSET_OF(OBV_CONFIG, Field), 0 }
#define BORDER(Field, Width) \
  { #Field, OFFSET_OF(OBV_CONFIG, Field), OFFSET_OF(OBV_CONFIG, Width) }

constexpr ColorField kColors[] = {
    COLOR(TitleColor),
    COLOR(KeyHelpKeyColor),
    COLOR(KeyHelpColor),
    COLOR(FooterColor),
    COLOR(LeaderColor),
    COLOR(FocusLeaderColor),
    COLOR(HotspotColor),
    COLOR(Filter.TextColor),
    COLOR(Filter.BackgroundColor),
    BORDER(Filter.BorderColor, Filter.BorderWidth),
    COLOR(FocusFilter.TextColor),
    COLOR(FocusFilter.BackgroundColor),
    BORDER(FocusFilter.BorderColor, FocusFilter.BorderWidth),
    COLOR(Heading.Color),
    COLOR(InfoLabel.Color),
    COLOR(InfoText.Color),
    COLOR(SideLabel.Color),
    COLOR(SideText.Color),
};

void CheckChoices(Report *report, const OBV_CONFIG &config) {
  if (config.Logo > OBV_LOGO_C && config.Logo != OBV_LOGO_NONE) {
    Warn(report, "Logo of Config is %d, which shows logo A. Write OBV_LOGO_*.",
         static_cast<UINT32>(config.Logo));
  }
  if (config.MarkerTheme > OBV_MARKER_AMBER) {
    Complain(report,
             "MarkerTheme of Config is %d, with which no component shows that it is present. Write "
             "OBV_MARKER_*.",
             static_cast<UINT32>(config.MarkerTheme));
  }
}

void CheckRecoloring(Report *report, const OBV_SHARED_STATE &shared) {
  if (shared.RecolorEnabled == 0) {
    return;
  }
  if (shared.RecolorMode != OBV_RECOLOR_ALL_CHANNELS_INSIDE &&
      shared.RecolorMode != OBV_RECOLOR_ANY_CHANNEL_INSIDE) {
    Warn(report, "RecolorMode is %d, which recolours nothing. Write OBV_RECOLOR_*.",
         static_cast<UINT32>(shared.RecolorMode));
  }
  CheckColor(report, shared.RecolorLowText, "RecolorLowText", "the shared state");
  CheckColor(report, shared.RecolorHighText, "RecolorHighText", "the shared state");
  CheckColor(report, shared.RecolorNewText, "RecolorNewText", "the shared state");
}

void CheckSystemTexts(Report *report, const OBV_SHARED_STATE &shared) {
  bool end = true;
  for (UINTN i = 0; i < OBV_SYSTEM_INFO_COUNT; ++i) {
    bool ends =
        StrnLenS(shared.SystemInfo[i], OBV_SYSTEM_INFO_TEXT_LENGTH) < OBV_SYSTEM_INFO_TEXT_LENGTH;
    end = end && ends;
    if (!ends) {
      Complain(report, "SystemInfo[%d] has no end in its 128 characters. Terminate it.",
               static_cast<UINT32>(i));
    }
  }
  CHAR8 printed[OBV_SYSTEM_INFO_TEXT_LENGTH] = {};
  for (UINTN i = 0; end && shared.SystemInfo[kPrintedText][i] != 0; ++i) {
    printed[i] = static_cast<CHAR8>(shared.SystemInfo[kPrintedText][i]);
  }
  UINTN directives = ReadDirectives(printed, nullptr, 0);
  if (directives != 0) {
    Complain(report,
             "SystemInfo[2] is a print format without arguments, and has %d directives that take "
             "one. Write %%%% for a percent sign.",
             static_cast<UINT32>(directives));
  }
}

void CheckSavedState(Report *report, const OBV_SHARED_STATE &shared) {
  UINT16 focus = shared.FocusIndex;
  if (focus > kLastButton || (focus > kLastCallout && focus < kFirstButton)) {
    Complain(report, "FocusIndex is %d, which is neither 1 to 99 nor 101 to 106. Zero the record.",
             static_cast<UINT32>(focus));
  }
  if (shared.JumpRequested != 0) {
    Complain(report,
             "JumpRequested is %d before a view has run, and FindBiosOption would be called after "
             "it. Zero the record.",
             static_cast<UINT32>(shared.JumpRequested));
  }
}

}  // namespace

void CheckSharedState(Report *report) {
  const OBV_SHARED_STATE &shared = *gHost.SharedState;
  if (shared.ViewColorText == nullptr) {
    Complain(report,
             "ViewColorText is NULL, and the close button turns white under the keyboard. Point it "
             "to a colour text.");
  } else if (!IsReadable(shared.ViewColorText, 1)) {
    Complain(report, "ViewColorText is %p, where there is no memory. Point it to a colour text.",
             shared.ViewColorText);
  } else {
    CheckColor(report, shared.ViewColorText, "ViewColorText", "the shared state");
  }
  CheckRecoloring(report, shared);
  CheckSystemTexts(report, shared);
  CheckSavedState(report, shared);
}

void CheckAppearance(Report *report) {
  const OBV_CONFIG *config = gHost.SharedState->Config;
  if (config == nullptr) {
    Complain(report,
             "Config is NULL: no colours, and the built-in font for everything. Point it to your "
             "OBV_CONFIG.");
    return;
  }
  if (!IsReadable(config, sizeof(*config))) {
    Block(report, "Config is %p, where there is no memory. Point it to your OBV_CONFIG.", config);
    return;
  }
  auto *bytes = reinterpret_cast<const CHAR8 *>(config);
  for (const ColorField &color : kColors) {
    if (color.WidthOffset == 0 || bytes[color.WidthOffset] != 0) {
      CheckColor(report, bytes + color.Offset, color.Name, "Config");
    }
  }
  CheckChoices(report, *config);
}

}  // namespace hostcheck
