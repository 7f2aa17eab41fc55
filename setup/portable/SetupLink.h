/** @file
  The setup's end of the link to the host, which says where the user wants to go
  from the board view.
**/

#pragma once

#include "setup/portable/SetupFirmware.h"

namespace obv_setup {

/// Protocol is the first member: its function gets the link back from This.
struct SetupLink {
  OBV_SETUP_PROTOCOL Protocol;
  OBV_SETUP_OPTION Option;
  bool Waits;        ///< A page waits for the view.
  bool HasOption;    ///< Option is where the user wants to go.
  bool LacksOption;  ///< No page has what the user chose in the latest visit.
};

void InitializeSetupLink(SetupLink *link);

/// The view is about to start; what an earlier one asked for is forgotten.
void BeginVisit(SetupLink *link);

/// The view has ended. True when it asked for an option, which is then copied.
bool EndVisit(SetupLink *link, OBV_SETUP_OPTION *option);

}  // namespace obv_setup
