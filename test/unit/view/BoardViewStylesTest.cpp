// The look of the board view's frame: every style property and where it comes from.

#include "test/unit/stage/StyledViewStage.h"

namespace {

class BoardViewStyles : public StyledViewStage {};

TEST_F(BoardViewStyles, ScreenIsOpaqueDarkAndDoesNotScroll) {
  Build();
  EXPECT_EQ(Rgb(lv_obj_get_style_bg_color(Screen(), LV_PART_MAIN)), 0x2C2C2Cu);
  EXPECT_EQ(lv_obj_get_style_bg_opa(Screen(), LV_PART_MAIN), 255);
  EXPECT_FALSE(lv_obj_has_flag(Screen(), LV_OBJ_FLAG_SCROLLABLE));
}

TEST_F(BoardViewStyles, RulesAreGreyAndTwoPixelsWide) {
  Build();
  for (int i : {0, 1}) {
    EXPECT_EQ(lv_obj_get_style_line_width(Objects()[i], LV_PART_MAIN), 2);
    EXPECT_EQ(Rgb(lv_obj_get_style_line_color(Objects()[i], LV_PART_MAIN)), 0x969696u);
  }
}

TEST_F(BoardViewStyles, RulePointsAreEightBytesFromThePool) {
  Build();
  for (int i : {0, 1}) {
    auto *line = reinterpret_cast<lv_line_t *>(Objects()[i]);
    auto *block = reinterpret_cast<const UINT8 *>(line->point_array) - 24;
    EXPECT_EQ(Machine.Pool.SizeOf(block), 24u + 8u) << i;
  }
}

TEST_F(BoardViewStyles, PictureDescriptorIsSixteenBytesFromThePool) {
  Build();
  auto *block = reinterpret_cast<const UINT8 *>(Source(Objects()[2])) - 24;
  EXPECT_EQ(Machine.Pool.SizeOf(block), 24u + 16u);
}

TEST_F(BoardViewStyles, TitleTakesItsLookFromTheRecord) {
  Build();
  lv_obj_t *title = Objects()[4];
  EXPECT_EQ(FontOf(title), "DejaVuSans 21");
  EXPECT_EQ(TextColorOf(title), 0x010101u);
  EXPECT_EQ(LabelText(title), "Board view");
}

TEST_F(BoardViewStyles, FooterIsCentredAndTakesItsLookFromTheRecord) {
  Build();
  lv_obj_t *footer = Objects()[5];
  EXPECT_EQ(FontOf(footer), "DejaVuSans 13");
  EXPECT_EQ(TextColorOf(footer), 0x030303u);
  EXPECT_EQ(lv_obj_get_style_text_align(footer, LV_PART_MAIN), LV_TEXT_ALIGN_CENTER);
}

TEST_F(BoardViewStyles, KeyHelpIsCentredRecolouredAndTakesItsLookFromTheRecord) {
  Build();
  lv_obj_t *keyHelp = Objects()[6];
  EXPECT_EQ(FontOf(keyHelp), "DejaVuSansBold 15");
  EXPECT_EQ(TextColorOf(keyHelp), 0x020202u);
  EXPECT_EQ(lv_obj_get_style_text_align(keyHelp, LV_PART_MAIN), LV_TEXT_ALIGN_CENTER);
  EXPECT_TRUE(lv_label_get_recolor(keyHelp));
}

TEST_F(BoardViewStyles, KeyHelpGetsTheSameColourFiveTimes) {
  Build();
  EXPECT_EQ(LabelText(Objects()[6]),
            "#123456 Tab# Move  #123456 Enter# Jump  #123456 Ins# Filter  #123456 F12# Shot  "
            "#123456 Esc# Leave");
}

TEST_F(BoardViewStyles, KeyHelpEndsAfter299Characters) {
  Host.Strings["en-US"][3] = std::u16string(400, u'k');
  Build();
  EXPECT_EQ(LabelText(Objects()[6]), std::string(299, 'k'));
}

TEST_F(BoardViewStyles, InfoTextTakesItsLookFromTheRecord) {
  Build();
  lv_obj_t *info = gView.InfoText;
  EXPECT_EQ(FontOf(info), "DejaVuSans 27");
  EXPECT_EQ(TextColorOf(info), 0x040404u);
  EXPECT_EQ(lv_label_get_long_mode(info), LV_LABEL_LONG_DOT);
  EXPECT_TRUE(lv_label_get_recolor(info));
  EXPECT_EQ(LabelText(info), "Leave");
}

TEST_F(BoardViewStyles, CloseButtonIsTransparentWithAWhiteBorder) {
  BuildUnfocused();
  ShownLook look = LookOf(gView.CloseButton);
  EXPECT_EQ(look.Radius, 5);
  EXPECT_EQ(look.Opacity, 0);
  EXPECT_EQ(look.Text, 0xFFFFFFu);
  EXPECT_EQ(look.BorderWidth, 1);
  EXPECT_EQ(look.Font, "DejaVuSansBold 17");
  ExpectBorder(gView.CloseButton, 0xFFFFFF, 0xCC);
}

TEST_F(BoardViewStyles, CloseButtonWithKeyboardFocusIsOpaqueInTheViewColour) {
  Build();
  lv_obj_add_state(gView.CloseButton, LV_STATE_FOCUS_KEY);
  ShownLook expected = {5, 255, 0x070809, 0x000000, 1, "DejaVuSans 25"};
  EXPECT_EQ(LookOf(gView.CloseButton), expected);
}

TEST_F(BoardViewStyles, CloseButtonWithPlainFocusKeepsItsLook) {
  BuildUnfocused();
  lv_obj_add_state(gView.CloseButton, LV_STATE_FOCUSED);
  EXPECT_EQ(LookOf(gView.CloseButton).Opacity, 0);
  EXPECT_EQ(LookOf(gView.CloseButton).Text, 0xFFFFFFu);
}

TEST_F(BoardViewStyles, ButtonsHaveNothingOfTheTheme) {
  Build();
  std::vector<lv_obj_t *> buttons(gView.FilterButtons, gView.FilterButtons + 6);
  buttons.insert(buttons.end(), {gView.CloseButton, gView.Components[0].Callout});
  for (lv_obj_t *button : buttons) {
    for (lv_state_t state : {LV_STATE_DEFAULT, LV_STATE_PRESSED, LV_STATE_FOCUS_KEY}) {
      lv_obj_add_state(button, state);
      EXPECT_EQ(lv_obj_get_style_shadow_width(button, LV_PART_MAIN), 0);
      EXPECT_EQ(lv_obj_get_style_outline_width(button, LV_PART_MAIN), 0);
      EXPECT_EQ(lv_obj_get_style_pad_left(button, LV_PART_MAIN), 0);
      EXPECT_EQ(lv_obj_get_style_transform_width(button, LV_PART_MAIN), 0);
      lv_obj_clear_state(button, state);
    }
  }
}

TEST_F(BoardViewStyles, FontSizesFollowTheVerticalScale) {
  BuildUnfocused(3840, 2160);
  EXPECT_EQ(FontOf(Objects()[4]), "DejaVuSans 42");
  EXPECT_EQ(LookOf(Button(1)).Font, "DejaVuSans 38");
  EXPECT_EQ(LookOf(gView.CloseButton).Font, "DejaVuSansBold 34");
}

TEST_F(BoardViewStyles, FontSizesAreCutAtFractions) {
  BuildUnfocused(1024, 768);
  EXPECT_EQ(FontOf(Objects()[4]), "DejaVuSans 16");
  EXPECT_EQ(LookOf(Button(1)).Font, "DejaVuSans 15");
  EXPECT_EQ(LookOf(gView.CloseButton).Font, "DejaVuSansBold 13");
}

TEST_F(BoardViewStyles, HostWithoutALookGetsAViewAllTheSame) {
  Machine.AddOutput({{1920, 1080}});
  Host.Install();
  Host.State.Config = nullptr;
  BuildOnWhatIsThere();
  EXPECT_EQ(Caption(Button(0)), "ALL");
  lv_timer_handler();
}

TEST_F(BoardViewStyles, HostWithoutAViewColourGetsAViewAllTheSame) {
  Machine.AddOutput({{1920, 1080}});
  Host.Install();
  Host.State.ViewColorText = nullptr;
  BuildOnWhatIsThere();
  lv_obj_add_state(gView.CloseButton, LV_STATE_FOCUS_KEY);
  EXPECT_EQ(LookOf(gView.CloseButton).Opacity, 255);
}

}  // namespace
