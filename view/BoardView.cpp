#include "view/BoardView.h"

#include "view/Callouts.h"
#include "view/CloseButton.h"
#include "view/FilterButtonLook.h"
#include "view/FilterButtons.h"
#include "view/Frame.h"
#include "view/Header.h"
#include "view/Hotspots.h"
#include "view/Leaders.h"
#include "view/Markers.h"
#include "view/SystemSummary.h"

// The order is the drawing order: what comes later lies on top.
void BuildBoardView() {
  InitializeCloseFocusColor();
  InitializeCalloutStyles();
  InitializeFilterStyles();
  BuildScreenAndRules();
  BuildBoardPicture();
  BuildHeaderAndFooter();
  BuildCloseButtonAndInfoText();
  BuildHotspots();
  BuildCallouts();
  BuildLeaderLines();
  BuildMarkers();
  BuildFilterButtons();
  ShowSystemSummary();
}
