// What the box looks like in which the user picks a USB volume.

#include "test/unit/stage/VolumeBoxStage.h"

#include "capture/MessageBox.h"
#include "platform/LvglPort.h"

namespace {

TEST_F(VolumeBox, StandsOnTheTopLayerWithTitleAndText) {
  AddSticks(1);
  BuildAndOpen();
  EXPECT_EQ(lv_obj_get_screen(gMessageBox.Box), lv_layer_top());
  EXPECT_EQ(BoxTitle(), "Choose a volume");
  EXPECT_EQ(BoxText(), "Where shall the picture go?");
  EXPECT_EQ(lv_msgbox_get_close_btn(gMessageBox.Box), nullptr);
  EXPECT_TRUE(gMessageBox.ModalMessageBoxOpen);
}

TEST_F(VolumeBox, CoversTheMiddleHalfOfTheScreen) {
  AddSticks(1);
  BuildAndOpen();
  lv_obj_t *box = gMessageBox.Box;
  EXPECT_EQ(PlaceOf(box), (Place{0, 270, 1920, 540}));
  EXPECT_EQ(Rgb(lv_obj_get_style_bg_color(box, LV_PART_MAIN)), 0x2C2C2Cu);
  EXPECT_EQ(lv_obj_get_style_radius(box, LV_PART_MAIN), 0);
  EXPECT_EQ(lv_obj_get_style_border_width(box, LV_PART_MAIN), 0);
  EXPECT_EQ(lv_obj_get_style_pad_left(box, LV_PART_MAIN), 480);
  EXPECT_EQ(lv_obj_get_style_pad_right(box, LV_PART_MAIN), 480);
}

TEST_F(VolumeBox, FontsAndColoursOfItsTexts) {
  AddSticks(1);
  BuildAndOpen();
  EXPECT_EQ(FontOf(lv_msgbox_get_title(gMessageBox.Box)), "DroidSans 20");
  EXPECT_EQ(TextColorOf(lv_msgbox_get_title(gMessageBox.Box)), 0xFFFFFFu);
  EXPECT_EQ(FontOf(lv_msgbox_get_text(gMessageBox.Box)), "DroidSans 18");
  EXPECT_EQ(TextColorOf(lv_msgbox_get_text(gMessageBox.Box)), 0xD0D0D0u);
  EXPECT_EQ(FontOf(BoxButtons()), "DroidSans 18");
}

TEST_F(VolumeBox, At1024By768SizesAreScaledAndCut) {
  AddSticks(1);
  BuildAndOpen(1024, 768);
  EXPECT_EQ(PlaceOf(gMessageBox.Box), (Place{0, 192, 1024, 384}));
  EXPECT_EQ(lv_obj_get_style_pad_left(gMessageBox.Box, LV_PART_MAIN), 256);
  EXPECT_EQ(FontOf(lv_msgbox_get_title(gMessageBox.Box)), "DroidSans 16");
  EXPECT_EQ(FontOf(lv_msgbox_get_text(gMessageBox.Box)), "DroidSans 14");
  EXPECT_EQ(FontOf(BoxButtons()), "DroidSans 14");
}

TEST_F(VolumeBox, ButtonMatrixIsAsHighAsItsMapIsLong) {
  const struct {
    int Sticks, Places;
  } kCases[] = {{1, 2}, {1, 3}, {1, 5}, {1, 6}, {28, 48}};  // 1, 2, 3, 4 and 32 sticks
  bool built = false;
  for (const auto &[sticks, places] : kCases) {
    AddSticks(sticks);
    if (!std::exchange(built, true)) {
      Build();
    }
    ASSERT_EQ(F12ScreenShots(), EFI_SUCCESS);
    int line = lv_font_get_line_height(lv_obj_get_style_text_font(BoxButtons(), LV_PART_MAIN));
    EXPECT_EQ(lv_obj_get_style_height(BoxButtons(), LV_PART_MAIN), (line + 4) * places);
    EXPECT_EQ(lv_obj_get_style_width(BoxButtons(), LV_PART_MAIN), 1920);
    EXPECT_EQ(lv_obj_get_style_align(BoxButtons(), LV_PART_MAIN), LV_ALIGN_CENTER);
    lv_msgbox_close(gMessageBox.Box);
  }
}

TEST_F(VolumeBox, FirstButtonIsSelectedAndTheMatrixFocused) {
  AddSticks(2);
  Build();
  lv_group_focus_obj(gView.Components[2].Callout);
  ASSERT_EQ(F12ScreenShots(), EFI_SUCCESS);
  EXPECT_EQ(Focused(), BoxButtons());
  EXPECT_EQ(SelectedButton(), 0);
  EXPECT_EQ(gMessageBox.PreviousFocus, gView.Components[2].Callout);
  EXPECT_EQ(lv_obj_get_style_pad_row(BoxButtons(), LV_PART_MAIN), 4);
  EXPECT_EQ(lv_obj_get_style_pad_column(BoxButtons(), LV_PART_MAIN), 4);
}

TEST_F(VolumeBox, ButtonsAreDrawnWithARadiusOfTwoAndNothingElseChanges) {
  AddSticks(1);
  BuildAndOpen();
  auto radiusOf = [](const lv_obj_class_t *kind, uint32_t type) {
    lv_draw_rect_dsc_t rectangle;
    lv_draw_rect_dsc_init(&rectangle);
    rectangle.radius = 33;
    lv_draw_rect_dsc_t before = rectangle;
    lv_obj_draw_part_dsc_t part{};
    part.class_p = kind;
    part.type = type;
    part.rect_dsc = &rectangle;
    lv_event_send(BoxButtons(), LV_EVENT_DRAW_PART_BEGIN, &part);
    int radius = std::exchange(rectangle.radius, before.radius);
    EXPECT_EQ(memcmp(&rectangle, &before, sizeof before), 0);
    return radius;
  };
  EXPECT_EQ(radiusOf(&lv_btnmatrix_class, LV_BTNMATRIX_DRAW_PART_BTN), 2);
  EXPECT_EQ(radiusOf(&lv_btnmatrix_class, 1), 33);
  EXPECT_EQ(radiusOf(&lv_obj_class, LV_BTNMATRIX_DRAW_PART_BTN), 33);
}

}  // namespace
