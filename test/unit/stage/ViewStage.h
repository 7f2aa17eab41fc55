/** @file
  On ConnectedHost: the board view as start-up builds it, before the main loop runs.
**/

#pragma once

#include "test/unit/stage/ConnectedHost.h"
#include "test/unit/stage/ObjectLooks.h"

#include "app/ChooseGeometry.h"
#include "app/Input.h"
#include "app/base/LocateHost.h"
#include "platform/LvglPort.h"
#include "resources/ComponentIntake.h"
#include "view/BoardView.h"
#include "view/SystemSummary.h"
#include "view/ViewState.h"

/// A test changes Host, then builds. Once per process, like the application itself.
class ViewStage : public ConnectedHost {
 protected:
  /// Start-up of the application on a setup screen of this size, up to the built view.
  void Build(UINT32 width = 1920, UINT32 height = 1080) {
    Machine.AddOutput({{width, height}});
    Host.Install();
    BuildOnWhatIsThere();
  }

  /// The same after a test has added outputs and installed the host itself.
  void BuildOnWhatIsThere() {
    ASSERT_EQ(InitializeObvProtocol(), EFI_SUCCESS);
    ASSERT_EQ(ChooseViewGeometry(), EFI_SUCCESS);
    ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
    ComposeSystemSummary();
    ConnectInput();
    InitializeLvglPort();
    BuildBoardView();
    lv_obj_update_layout(Screen());
  }

  static lv_obj_t *Screen() { return lv_disp_get_scr_act(lv_disp_get_default()); }

  /// Objects of the screen in drawing order.
  static std::vector<lv_obj_t *> Objects() { return ChildrenOf(Screen()); }
};
