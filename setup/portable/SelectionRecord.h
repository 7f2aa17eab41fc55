/** @file
  The setup's event handler: where the board view is to start, when the user
  came from a component's page.
**/

#pragma once

#include "setup/portable/SetupPages.h"

namespace obv_setup {

/// One record for the whole setup: the handler's functions get no This.
struct SelectionRecord {
  VELT_SETUP_EVENT_HANDLER_PROTOCOL Handler;
  VELT_SELECTION Selection;
  bool IsSet;
  bool WasRead;
};
extern SelectionRecord gSelectionRecord;

/// Clears the record and fills in the handler's functions. Handler is what is
/// to be published.
void InitializeSelectionRecord();

/// The next view starts on this component, with its category shown.
void SelectComponent(const ViewEntry &entry);

/// The next view starts as the last one was left.
void ClearSelection();

}  // namespace obv_setup
