/** @file
  The three labels of the right-hand column: heading, info text, side list.

  Each is created at its first use and kept for the run. Texts are UTF-8 and
  are copied.
**/

#pragma once

#include "app/base/Types.h"

/// With its terminator. Longer texts are shown as well, but drawn anew each time that they are set.
inline constexpr UINTN kPanelTextSize = 1280;

/// A label's text as it was set last. LVGL's copy has dots where there was no room.
struct LastText {
  CHAR8 Text[kPanelTextSize];
  /// Clear before the first text, and for one that is too long.
  bool Kept;
};

struct InfoPanelState {
  LastText Heading;
  LastText InfoText;
  LastText SideList;
  /// Where the summary begins that has grown into the panels' room; 0 when it has not.
  INT16 Foot;
};

extern InfoPanelState gInfoPanel;

/// Leaves the room from here on downwards, a position on the screen, to the summary.
void RaisePanelFoot(INT16 foot);

/// Ignored when NULL, or 40 bytes long or longer.
void SetPanelHeading(const CHAR8 *text);

/// A single blank also blanks the heading.
void SetInfoText(const CHAR8 *text);

/// A text that is not empty is placed under the info text as it stands now.
void SetSideList(const CHAR8 *text);
