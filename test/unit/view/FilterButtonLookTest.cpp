// The three looks of the filter buttons and where they come from.

#include "test/firmware/SetupEventHandler.h"
#include "test/unit/stage/StyledViewStage.h"

#include "app/UiState.h"

namespace {

const ShownLook kDefaultLook = {6, 255, 0x0A0001, 0x0A0000, 3, "DejaVuSans 19"};

class FilterButtonLook : public StyledViewStage {};

TEST_F(FilterButtonLook, FilterButtonsTakeTheirLookFromTheRecord) {
  Build();
  for (int row = 1; row < 6; row++) {
    EXPECT_EQ(LookOf(Button(row)), kDefaultLook) << row;
    ExpectBorder(Button(row), 0x0A0002, 204);
  }
}

TEST_F(FilterButtonLook, FocusedFilterButtonsTakeTheActiveLook) {
  Build();
  ShownLook expected = {7, 255, 0x140001, 0x140000, 4, "DejaVuSansBold 23"};
  for (lv_state_t state : {LV_STATE_FOCUSED, LV_STATE_FOCUS_KEY}) {
    for (int row = 0; row < 6; row++) {
      lv_obj_add_state(Button(row), state);
      EXPECT_EQ(LookOf(Button(row)), expected) << row << " in state " << state;
      ExpectBorder(Button(row), 0x140002, 204);
      lv_obj_clear_state(Button(row), state);
    }
  }
}

// At the real start: the state of a first visit is brought back, too.
TEST_F(FilterButtonLook, OnlyTheAllButtonStartsOutSelected) {
  Build();
  ReStoreUIState();
  EXPECT_EQ(lv_obj_get_style_radius(Button(0), LV_PART_MAIN), 8);
  EXPECT_EQ(lv_obj_get_style_bg_opa(Button(0), LV_PART_MAIN), 0);
  EXPECT_EQ(TextColorOf(Button(0)), 0x140001u);
  EXPECT_EQ(lv_obj_get_style_border_width(Button(0), LV_PART_MAIN), 3);
  EXPECT_EQ(FontOf(Button(0)), "DejaVuSans 19");
  ExpectBorder(Button(0), 0x0A0002, 204);
  for (int row = 1; row < 6; ++row) {
    EXPECT_EQ(LookOf(Button(row)), kDefaultLook) << row;
  }
}

TEST_F(FilterButtonLook, ACategoryWithoutAButtonLeavesEveryButtonUnpressed) {
  fake::SetupEventHandler setup{Machine};
  setup.Install();
  setup.Select(5, u"");
  Host.State.SelectedCategory = OBV_TYPE_SATA;
  Build();
  ReStoreUIState();
  for (int row = 0; row < 6; ++row) {
    EXPECT_EQ(LookOf(Button(row)), kDefaultLook) << row;
    ExpectBorder(Button(row), 0x0A0002, 204);
  }
}

TEST_F(FilterButtonLook, BorderWidth0MeansNoBorder) {
  Host.Config.Filter.BorderWidth = 0;
  Host.Config.FocusFilter.BorderWidth = 0;
  Build();
  for (int row = 0; row < 6; row++) {
    EXPECT_EQ(lv_obj_get_style_border_width(Button(row), LV_PART_MAIN), 0) << row;
    lv_obj_add_state(Button(row), LV_STATE_FOCUSED);
    EXPECT_EQ(lv_obj_get_style_border_width(Button(row), LV_PART_MAIN), 0) << row;
    lv_obj_clear_state(Button(row), LV_STATE_FOCUSED);
  }
}

TEST_F(FilterButtonLook, SelectedAndFocusedBordersComeFromDifferentFields) {
  Host.Config.Filter.BorderWidth = 0;
  Build();
  EXPECT_EQ(lv_obj_get_style_border_width(Button(0), LV_PART_MAIN), 0);
  lv_obj_add_state(Button(0), LV_STATE_FOCUSED);
  EXPECT_EQ(lv_obj_get_style_border_width(Button(0), LV_PART_MAIN), 4);
}

TEST_F(FilterButtonLook, FilterCaptionsAndCodes) {
  Build();
  const char *captions[] = {"ALL", "USB", "SATA", "M.2", "PCIE", "FAN"};
  const UINT32 codes[] = {0, 1, 2, 3, 4, 8};
  for (int row = 0; row < 6; row++) {
    EXPECT_EQ(Caption(Button(row)), captions[row]);
    EXPECT_TRUE(lv_obj_has_flag(Button(row), LV_OBJ_FLAG_CLICKABLE));
    EXPECT_TRUE(lv_obj_has_flag(Button(row), LV_OBJ_FLAG_CLICK_FOCUSABLE));
    lv_event_send(Button(row), LV_EVENT_CLICKED, nullptr);
    EXPECT_EQ(gView.CategoryFilter, codes[row]) << captions[row];
  }
}

}  // namespace
