// What is kept for the next visit.

#include "test/unit/stage/ViewStage.h"
#include "test/unit/stage/WholeRun.h"

#include "app/UiState.h"
#include "app/base/Geometry.h"
#include "platform/Pointer.h"

namespace {

class SaveUiStateStage : public ViewStage {
 protected:
  SaveUiStateStage() { LeaveFontsOut(); }
  UINT16 SavedFocus(lv_obj_t *object) {
    lv_group_focus_obj(object);
    SaveUiState();
    return Host.State.FocusIndex;
  }
  UINT32 SavedCategory(UINT32 filter) {
    gView.CategoryFilter = filter;
    SaveUiState();
    return Host.State.SelectedCategory;
  }
};

using SavedUiState = SaveUiStateStage;

TEST_F(SavedUiState, ACalloutsFocusIsItsIndexPlus1) {
  Build();
  for (UINT16 i = 0; i < Host.Components.size(); i++) {
    EXPECT_EQ(SavedFocus(gView.Components[i].Callout), i + 1);
  }
}

TEST_F(SavedUiState, ACategoryButtonsFocusIsItsNumberPlus101) {
  Build();
  for (UINT16 i = 0; i < kCategoryCount; i++) {
    EXPECT_EQ(SavedFocus(gView.FilterButtons[i]), 101 + i);
  }
}

TEST_F(SavedUiState, AnyOtherFocusIsNone) {
  Build();
  Host.State.FocusIndex = 9;
  EXPECT_EQ(SavedFocus(gView.CloseButton), 0);
  lv_group_remove_all_objs(gLvglPort.Group);
  Host.State.FocusIndex = 9;
  SaveUiState();
  EXPECT_EQ(Host.State.FocusIndex, 0);
}

TEST_F(SavedUiState, CalloutsAreLookedForUpToTheHostsCount) {
  Build();
  Host.State.ComponentCount = 2;
  EXPECT_EQ(SavedFocus(gView.Components[1].Callout), 2);
  EXPECT_EQ(SavedFocus(gView.Components[2].Callout), 0);
}

TEST_F(SavedUiState, OnlyTheSixCategoriesAreKept) {
  Build();
  for (UINT32 code : {0, 1, 2, 3, 4, 8}) {
    EXPECT_EQ(SavedCategory(code), code);
  }
  for (UINT32 code : {5, 6, 7, 9, 254, 0x10001}) {
    EXPECT_EQ(SavedCategory(code), 0u) << code;
  }
}

TEST_F(SavedUiState, ThePointerIsKeptInTheSetupsCoordinates) {
  Build();
  gGeometry.PreviousWidth = 1280;
  gGeometry.PreviousHeight = 1024;
  gPointer.X = 1917;
  gPointer.Y = 541;
  SaveUiState();
  EXPECT_EQ(Host.State.PointerX, 1917 * 1280 / 1920);
  EXPECT_EQ(Host.State.PointerY, 541 * 1024 / 1080);
  EXPECT_EQ(Host.State.UiStateSaved, 1);
}

TEST_F(SavedUiState, LargeScreensDoNotOverflow) {
  Build();
  gGeometry.PreviousWidth = gGeometry.ViewWidth = 7680;
  gGeometry.PreviousHeight = gGeometry.ViewHeight = 4320;
  gPointer.X = 7677;
  gPointer.Y = 4317;
  SaveUiState();
  EXPECT_EQ(Host.State.PointerX, 7677);
  EXPECT_EQ(Host.State.PointerY, 4317);
}

class SavedVisit : public WholeRun {};

TEST_F(SavedVisit, AWholeRunSavesWhatItShowed) {
  LeaveFontsOut();
  Install({{1280, 1024}, {1024, 768}});
  fake::RunOptions options;
  options.At(3, [this] { Machine.Mouse()->Move(0, 0); });
  options.At(30, [this] {
    lv_event_send(gView.FilterButtons[4], LV_EVENT_CLICKED, nullptr);
    lv_group_focus_obj(gView.Components[5].Callout);
  });
  EXPECT_EQ(Run(options).Status, EFI_SUCCESS);
  EXPECT_EQ(Host.State.UiStateSaved, 1);
  EXPECT_EQ(Host.State.FocusIndex, 6);
  EXPECT_EQ(Host.State.SelectedCategory, UINT32{OBV_TYPE_PCIE});
  EXPECT_EQ(Host.State.PointerX, 512 * 1280 / 1024);
  EXPECT_EQ(Host.State.PointerY, 384 * 1024 / 768);
}

TEST_F(SavedVisit, ARunWithoutAViewSavesNothing) {
  Install({{800, 600}});
  Host.State.FocusIndex = 7;
  Run();
  EXPECT_EQ(Host.State.UiStateSaved, 0);
  EXPECT_EQ(Host.State.FocusIndex, 7);
}

}  // namespace
