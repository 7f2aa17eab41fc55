// The box that reports an outcome.

#include "test/unit/stage/BoxLooks.h"
#include "test/unit/stage/RunScript.h"
#include "test/unit/stage/ViewStage.h"

#include "capture/MessageBox.h"

namespace {

class ResultBox : public ViewStage {
 protected:
  void BuildAndShow(UINT32 width = 1920, UINT32 height = 1080) {
    Build(width, height);
    ShowResultBox("Title", "Text", 0xFF112233, 0xFF445566);
    lv_obj_update_layout(lv_layer_top());
  }
};

TEST_F(ResultBox, ShowsItsTextsInTheirColoursWithOneButton) {
  BuildAndShow();
  EXPECT_EQ(BoxTitle(), "Title");
  EXPECT_EQ(BoxText(), "Text");
  EXPECT_EQ(ButtonMap(), std::vector<std::string>{"OK"});
  EXPECT_EQ(TextColorOf(lv_msgbox_get_title(gMessageBox.Box)), 0x112233u);
  EXPECT_EQ(TextColorOf(lv_msgbox_get_text(gMessageBox.Box)), 0x445566u);
  EXPECT_EQ(FontOf(lv_msgbox_get_title(gMessageBox.Box)), "DroidSans 20");
  EXPECT_EQ(FontOf(lv_msgbox_get_text(gMessageBox.Box)), "DroidSans 18");
  EXPECT_EQ(FontOf(BoxButtons()), "DroidSans 18");
  EXPECT_EQ(lv_msgbox_get_close_btn(gMessageBox.Box), nullptr);
}

TEST_F(ResultBox, SizesAt1920By1080) {
  BuildAndShow();
  EXPECT_EQ(PlaceOf(gMessageBox.Box), (Place{0, 270, 1920, 540}));
  EXPECT_EQ(PlaceOf(BoxButtons()).Width, 100);
  EXPECT_EQ(PlaceOf(BoxButtons()).Height, 30);
  EXPECT_EQ(lv_obj_get_style_pad_left(gMessageBox.Box, LV_PART_MAIN), 480);
  EXPECT_EQ(lv_obj_get_style_pad_right(gMessageBox.Box, LV_PART_MAIN), 480);
  EXPECT_EQ(Rgb(lv_obj_get_style_bg_color(gMessageBox.Box, LV_PART_MAIN)), 0x2C2C2Cu);
  EXPECT_EQ(lv_obj_get_style_radius(gMessageBox.Box, LV_PART_MAIN), 0);
  EXPECT_EQ(lv_obj_get_style_border_width(gMessageBox.Box, LV_PART_MAIN), 0);
}

TEST_F(ResultBox, SizesAt1024By768) {
  BuildAndShow(1024, 768);
  EXPECT_EQ(PlaceOf(gMessageBox.Box), (Place{0, 192, 1024, 384}));
  EXPECT_EQ(PlaceOf(BoxButtons()).Width, 70);
  EXPECT_EQ(PlaceOf(BoxButtons()).Height, 24);
  EXPECT_EQ(FontOf(lv_msgbox_get_title(gMessageBox.Box)), "DroidSans 16");
  EXPECT_EQ(FontOf(BoxButtons()), "DroidSans 14");
}

TEST_F(ResultBox, TakesAndReturnsTheFocus) {
  Build();
  lv_group_focus_obj(gView.FilterButtons[4]);
  ShowResultBox("Title", "Text", kBoxTitleColor, kBoxTextColor);
  EXPECT_TRUE(gMessageBox.ModalMessageBoxOpen);
  EXPECT_EQ(Focused(), BoxButtons());
  EXPECT_EQ(SelectedButton(), 0);
  lv_event_send(gMessageBox.Box, LV_EVENT_VALUE_CHANGED, nullptr);
  EXPECT_FALSE(gMessageBox.ModalMessageBoxOpen);
  EXPECT_EQ(Focused(), gView.FilterButtons[4]);
  EXPECT_EQ(lv_obj_get_child_cnt(lv_layer_top()), 0u);
}

TEST_F(ResultBox, EmptyTextsAreShownAsNothing) {
  Build();
  ShowResultBox("", "", kBoxTitleColor, kBoxTextColor);
  EXPECT_EQ(lv_msgbox_get_title(gMessageBox.Box), nullptr);
  EXPECT_EQ(lv_msgbox_get_text(gMessageBox.Box), nullptr);
  EXPECT_EQ(ButtonMap(), std::vector<std::string>{"OK"});
}

class ResultBoxWithoutItsButton : public RunScript {
 protected:
  ResultBoxWithoutItsButton() {
    LeaveFontsOut();
    Host.Strings["en-US"][15] = u"";
    Then([] {
      ShowResultBox("Title", "Text", kBoxTitleColor, kBoxTextColor);
      EXPECT_EQ(ButtonMap(), std::vector<std::string>{});
      EXPECT_EQ(Focused(), BoxButtons());
    });
  }
};

TEST_F(ResultBoxWithoutItsButton, ClosesOnEsc) {
  ThenScan(SCAN_ESC);
  Then([] { EXPECT_FALSE(BoxIsOpen()); });
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(ResultBoxWithoutItsButton, ClosesOnEnter) {
  ThenEnter();
  Then([] { EXPECT_FALSE(BoxIsOpen()); });
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

}  // namespace
