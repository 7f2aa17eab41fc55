#include "view/BoardView.h"

#include "resources/ComponentIntake.h"
#include "view/Callouts.h"
#include "view/FilterButtons.h"
#include "view/Frame.h"
#include "view/Hotspots.h"
#include "view/Leaders.h"
#include "view/Markers.h"
#include "view/SystemSummary.h"

BoardViewState gView;

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

UINTN ViewComponentCount() { return MIN(static_cast<UINTN>(ComponentCount()), kMaxViewComponents); }

bool HasMarks(const OBV_COMPONENT &component) {
  return component.NotReady != 0 || component.SearchTokenId == 0;
}
