/** @file
  On ComponentStage: what the right-hand column tells.
**/

#pragma once

#include "test/unit/stage/ComponentStage.h"

/// EDK2's print library ends a line so.
inline const std::string kLineEnd = "\r\n";

/// An information line whose label has the colour of the test host's record, 180,180,180.
inline std::string InfoLineText(const std::string &label, const std::string &value) {
  return "#B4B4B4 " + label + ": #" + value + kLineEnd;
}

class PanelStage : public ComponentStage {
 protected:
  static std::string PanelHeading() { return WholeText(gView.Heading); }
  static std::string PanelText() { return WholeText(gView.InfoText); }
  static std::string PanelList() { return WholeText(gView.SideList); }
};
