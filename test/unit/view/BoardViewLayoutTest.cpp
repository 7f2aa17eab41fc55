// Sizes, positions and drawing order of the board view's frame, at every scale.

#include <cmath>

#include "test/unit/stage/ViewStage.h"
#include "view/EmbeddedImages.h"

namespace {

struct Layout {
  UINT32 Width, Height;
  int RuleLeft, RuleRight, UpperRule, LowerRule;
  Place Picture, Logo, Title, Footer, KeyHelp, Close, Info;
  UINT16 LogoZoom;
  Place FirstFilter;
  int FilterTops[6];
  /// Title without a logo, and with one of 67 x 35.
  Place BareTitle, TallTitle;
  int TallLogoY;
};

// Logo places give the unscaled size of the picture.
constexpr Layout kSmall = {1024,
                           768,
                           21,
                           1003,
                           52,
                           720,
                           {0, 96, 768, 576},
                           {21, 31, 93, 19},
                           {106, 30, 350, 16},
                           {0, 744, 1024, 16},
                           {0, 727, 1024, 16},
                           {982, 78, 21, 28},
                           {768, 115, 235, 446},
                           215,
                           {936, 571, 66, 20},
                           {571, 595, 619, 643, 667, 691},
                           {28, 30, 350, 16},
                           {84, 30, 350, 16},
                           17};
constexpr Layout kDesign = {1920,
                            1080,
                            30,
                            1890,
                            72,
                            1012,
                            {0, 135, 1440, 810},
                            {30, 43, 93, 19},
                            {151, 45, 500, 20},
                            {0, 1050, 1920, 20},
                            {0, 1019, 1920, 20},
                            {1860, 97, 30, 35},
                            {1440, 162, 450, 650},
                            307,
                            {1795, 822, 95, 25},
                            {822, 852, 882, 912, 942, 972},
                            {40, 45, 500, 20},
                            {120, 45, 500, 20},
                            23};
constexpr Layout kTall = {1920,
                          1200,
                          30,
                          1890,
                          80,
                          1125,
                          {0, 150, 1440, 900},
                          {30, 50, 93, 19},
                          {151, 50, 500, 22},
                          {0, 1166, 1920, 22},
                          {0, 1132, 1920, 22},
                          {1860, 105, 30, 38},
                          {1440, 180, 450, 723},
                          307,
                          {1795, 913, 95, 27},
                          {913, 946, 979, 1013, 1046, 1080},
                          {40, 50, 500, 22},
                          {120, 50, 500, 22},
                          30};
constexpr Layout kLarge = {2560,
                           1440,
                           40,
                           2520,
                           96,
                           1350,
                           {0, 180, 1920, 1080},
                           {40, 57, 93, 19},
                           {201, 60, 666, 26},
                           {0, 1400, 2560, 26},
                           {0, 1357, 2560, 26},
                           {2480, 120, 40, 46},
                           {1920, 216, 600, 870},
                           409,
                           {2393, 1096, 126, 33},
                           {1096, 1136, 1176, 1216, 1256, 1296},
                           {53, 60, 666, 26},
                           {160, 60, 666, 26},
                           31};
constexpr Layout kHuge = {3840,
                          2160,
                          60,
                          3780,
                          145,
                          2025,
                          {0, 270, 2880, 1620},
                          {60, 86, 93, 19},
                          {303, 91, 1000, 40},
                          {0, 2100, 3840, 40},
                          {0, 2032, 3840, 40},
                          {3720, 165, 60, 70},
                          {2880, 324, 900, 1310},
                          614,
                          {3590, 1644, 190, 50},
                          {1644, 1704, 1764, 1824, 1884, 1944},
                          {80, 91, 1000, 40},
                          {240, 91, 1000, 40},
                          47};

// Objects of the screen by their place in the drawing order.
enum FrameObject {
  kUpperRule,
  kLowerRule,
  kPicture,
  kLogo,
  kTitle,
  kFooter,
  kKeyHelp,
  kClose,
  kInfo
};

class BoardViewLayout : public ViewStage, public testing::WithParamInterface<Layout> {
 protected:
  void BuildFrame(UINT8 logo = OBV_LOGO_A) {
    Host.Config.Logo = logo;
    LeaveFontsOut();
    Build(GetParam().Width, GetParam().Height);
  }
  /// The object of the frame; with logo false the view has none.
  static lv_obj_t *Frame(FrameObject object, bool logo = true) {
    return Objects()[object - (!logo && object > kLogo ? 1 : 0)];
  }
};

void ExpectRule(lv_obj_t *object, int left, int right, int y) {
  ASSERT_TRUE(lv_obj_check_type(object, &lv_line_class));
  auto *line = reinterpret_cast<lv_line_t *>(object);
  ASSERT_EQ(line->point_num, 2);
  EXPECT_EQ(line->point_array[0].x, left);
  EXPECT_EQ(line->point_array[0].y, y);
  EXPECT_EQ(line->point_array[1].x, right);
  EXPECT_EQ(line->point_array[1].y, y);
}

TEST_P(BoardViewLayout, RulesSpanTheScreenBetweenItsMargins) {
  BuildFrame();
  const Layout &layout = GetParam();
  ExpectRule(Frame(kUpperRule), layout.RuleLeft, layout.RuleRight, layout.UpperRule);
  ExpectRule(Frame(kLowerRule), layout.RuleLeft, layout.RuleRight, layout.LowerRule);
}

TEST_P(BoardViewLayout, PictureCoversThreeQuartersOfBothDirections) {
  BuildFrame();
  EXPECT_EQ(PlaceOf(Frame(kPicture)), GetParam().Picture);
  const lv_img_dsc_t *source = Source(Frame(kPicture));
  EXPECT_EQ(source->header.cf, LV_IMG_CF_TRUE_COLOR_ALPHA);
  EXPECT_EQ(static_cast<int>(source->header.w), GetParam().Picture.Width);
  EXPECT_EQ(static_cast<int>(source->header.h), GetParam().Picture.Height);
}

TEST_P(BoardViewLayout, LogoStandsOnTheUpperRule) {
  BuildFrame();
  lv_obj_t *logo = Frame(kLogo);
  EXPECT_EQ(PlaceOf(logo), GetParam().Logo);
  EXPECT_EQ(lv_img_get_zoom(logo), GetParam().LogoZoom);
  lv_point_t pivot = {1, 1};
  lv_img_get_pivot(logo, &pivot);
  EXPECT_EQ(pivot.x, 0);
  EXPECT_EQ(pivot.y, 0);
  EXPECT_EQ(Source(logo), &kLogoA);
}

TEST_P(BoardViewLayout, TitleFollowsTheLogo) {
  BuildFrame();
  EXPECT_EQ(PlaceOf(Frame(kTitle)), GetParam().Title);
}

TEST_P(BoardViewLayout, TitleFollowsATallerLogo) {
  BuildFrame(OBV_LOGO_B);
  Place logo = PlaceOf(Frame(kLogo));
  EXPECT_EQ(logo, (Place{GetParam().Logo.X, GetParam().TallLogoY, 67, 35}));
  EXPECT_EQ(PlaceOf(Frame(kTitle)), GetParam().TallTitle);
}

TEST_P(BoardViewLayout, TitleWithoutALogoStartsFortyUnitsFromTheSide) {
  BuildFrame(OBV_LOGO_NONE);
  EXPECT_EQ(PlaceOf(Frame(kTitle, false)), GetParam().BareTitle);
}

TEST_P(BoardViewLayout, FooterAndKeyHelpSpanTheScreen) {
  BuildFrame();
  EXPECT_EQ(PlaceOf(Frame(kFooter)), GetParam().Footer);
  EXPECT_EQ(PlaceOf(Frame(kKeyHelp)), GetParam().KeyHelp);
}

TEST_P(BoardViewLayout, KeyHelpLineIsSevenPixelsBelowTheLowerRuleAtEveryScale) {
  BuildFrame();
  EXPECT_EQ(PlaceOf(Frame(kKeyHelp)).Y, GetParam().LowerRule + 7);
}

TEST_P(BoardViewLayout, CloseButtonsTopGapIsNotScaled) {
  BuildFrame();
  EXPECT_EQ(PlaceOf(gView.CloseButton), GetParam().Close);
  EXPECT_EQ(PlaceOf(gView.CloseButton).Y, static_cast<int>(GetParam().Height / 16.0 + 30));
}

TEST_P(BoardViewLayout, InfoTextReachesDownToTheFilterButtons) {
  BuildFrame();
  EXPECT_EQ(PlaceOf(gView.InfoText), GetParam().Info);
}

TEST_P(BoardViewLayout, FilterButtonsFormAColumn) {
  BuildFrame();
  for (int row = 0; row < 6; row++) {
    Place expected = GetParam().FirstFilter;
    expected.Y = GetParam().FilterTops[row];
    EXPECT_EQ(PlaceOf(gView.FilterButtons[row]), expected) << row;
  }
}

TEST_P(BoardViewLayout, CaptionsAreCentredInTheirButtons) {
  BuildFrame();
  std::vector<lv_obj_t *> buttons(gView.FilterButtons, gView.FilterButtons + 6);
  buttons.push_back(gView.CloseButton);
  for (lv_obj_t *button : buttons) {
    Place outer = PlaceOf(button);
    Place inner = PlaceOf(lv_obj_get_child(button, 0));
    EXPECT_LE(std::abs(2 * inner.X + inner.Width - 2 * outer.X - outer.Width), 2)
        << Caption(button);
    EXPECT_LE(std::abs(2 * inner.Y + inner.Height - 2 * outer.Y - outer.Height), 2)
        << Caption(button);
    EXPECT_EQ(lv_obj_get_style_align(lv_obj_get_child(button, 0), LV_PART_MAIN), LV_ALIGN_CENTER);
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, BoardViewLayout,
                         testing::Values(kSmall, kDesign, kTall, kLarge, kHuge),
                         [](const testing::TestParamInfo<Layout> &info) {
                           return std::to_string(info.param.Width) + "x" +
                                  std::to_string(info.param.Height);
                         });

// A setup screen that is no view size gets the view of another mode.
class BoardViewOnOddScreens : public ViewStage {
 protected:
  void BuildOn(std::vector<fake::VideoMode> modes) {
    LeaveFontsOut();
    Machine.AddOutput(std::move(modes));
    Host.State.Gop = Machine.Output().Protocol();
    Host.Install();
    BuildOnWhatIsThere();
  }
};

TEST_F(BoardViewOnOddScreens, SetupScreenOf1280x1024GetsTheDesignLayout) {
  BuildOn({{1280, 1024}, {1024, 768}, {1920, 1080}});
  EXPECT_EQ(PlaceOf(gView.CloseButton), kDesign.Close);
  EXPECT_EQ(PlaceOf(gView.FilterButtons[5]), (Place{1795, 972, 95, 25}));
}

TEST_F(BoardViewOnOddScreens, SetupScreenOf1280x1024WithoutFullHdGetsTheSmallLayout) {
  BuildOn({{1280, 1024}, {1024, 768}});
  EXPECT_EQ(PlaceOf(gView.CloseButton), kSmall.Close);
  EXPECT_EQ(PlaceOf(gView.FilterButtons[5]), (Place{936, 691, 66, 20}));
}

}  // namespace
