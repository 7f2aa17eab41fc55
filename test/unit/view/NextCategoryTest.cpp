// Stepping through the categories, by the function and by the Insert key.

#include "test/unit/stage/PanelStage.h"
#include "test/unit/stage/RunScript.h"

#include "app/UiState.h"
#include "view/CategoryFilter.h"

namespace {

class NextCategory : public PanelStage {
 protected:
  static std::vector<UINT32> Steps(int count) {
    std::vector<UINT32> filters;
    for (int i = 0; i < count; i++) {
      SelectNextCategory();
      filters.push_back(gView.CategoryFilter);
    }
    return filters;
  }
};

TEST_F(NextCategory, WalksTheSixButtonsAndWraps) {
  Build();
  EXPECT_EQ(Steps(8), (std::vector<UINT32>{1, 2, 3, 4, 8, 0, 1, 2}));
}

TEST_F(NextCategory, StartsFromTheFirstButtonWhenNoneCarriesTheFilter) {
  Build();
  for (UINT32 filter : {254u, 5u, 6u, 7u, 9u, 77u}) {
    gView.CategoryFilter = filter;
    EXPECT_EQ(Steps(1), (std::vector<UINT32>{1})) << filter;
  }
}

TEST_F(NextCategory, IsAClickOnTheButton) {
  Build();
  gView.CategoryFilter = 3;
  SelectNextCategory();
  EXPECT_EQ(lv_group_get_focused(lv_group_get_default()), gView.FilterButtons[4]);
  EXPECT_EQ(lv_obj_get_style_radius(gView.FilterButtons[4], LV_PART_MAIN), 4);
  EXPECT_EQ(PanelText(), "Category PCIE");
}

class InsertKey : public RunScript {};

TEST_F(InsertKey, StepsTheFilterOnceAPress) {
  LeaveFontsOut();
  std::vector<UINT32> filters;
  for (int i = 0; i < 7; i++) {
    ThenScan(SCAN_INSERT);
    Then([&] { filters.push_back(gView.CategoryFilter); }, 1);
  }
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_EQ(filters, (std::vector<UINT32>{1, 2, 3, 4, 8, 0, 1}));
  EXPECT_EQ(Host.State.SelectedCategory, 1u);
}

TEST_F(InsertKey, StartsFromTheRestoredFilter) {
  LeaveFontsOut();
  Host.State.UiStateSaved = 1;
  Host.State.SelectedCategory = 4;
  std::vector<UINT32> filters;
  Then([&] { filters.push_back(gView.CategoryFilter); });
  ThenScan(SCAN_INSERT);
  Then([&] { filters.push_back(gView.CategoryFilter); });
  Run();
  EXPECT_EQ(filters, (std::vector<UINT32>{4, 8}));
}

}  // namespace
