// The two leader lines of every component.

#include "test/unit/stage/ViewStage.h"

namespace {

class LeaderLine : public ViewStage {
 protected:
  LeaderLine() {
    LeaveFontsOut();
    Host.ScaleComponents = false;
    Host.Components.resize(2);
    fake::CopyText(Host.Config.LeaderColor, "1,2,3");
    fake::CopyText(Host.Config.FocusLeaderColor, "4,5,6");
  }
  static const lv_line_t *Line(lv_obj_t *object) {
    return reinterpret_cast<const lv_line_t *>(object);
  }
};

TEST_F(LeaderLine, NormalAndEmphasisedLinesDifferInColourOnly) {
  Build();
  for (int i = 0; i < 2; i++) {
    EXPECT_EQ(Rgb(lv_obj_get_style_line_color(gView.Components[i].Leader, LV_PART_MAIN)),
              0x010203u);
    EXPECT_EQ(Rgb(lv_obj_get_style_line_color(gView.Components[i].FocusLeader, LV_PART_MAIN)),
              0x040506u);
    for (lv_obj_t *line : {gView.Components[i].Leader, gView.Components[i].FocusLeader}) {
      EXPECT_EQ(lv_obj_get_style_line_width(line, LV_PART_MAIN), 1);
      EXPECT_TRUE(IsHidden(line));
    }
  }
}

TEST_F(LeaderLine, ReferToTheRecordsOwnPoints) {
  Host.Components[1].LeaderPointCount = 3;
  Build();
  for (lv_obj_t *line : {gView.Components[1].Leader, gView.Components[1].FocusLeader}) {
    EXPECT_EQ(static_cast<const void *>(Line(line)->point_array), Host.Components[1].LeaderPoints);
    EXPECT_EQ(Line(line)->point_num, 3);
  }
  EXPECT_EQ(Line(gView.Components[0].Leader)->point_num, 2);
}

TEST_F(LeaderLine, LiesOnTheScreenWhereItsPointsAre) {
  OBV_COMPONENT &component = Host.Components[0];
  component.LeaderPoints[0] = {700, 200};
  component.LeaderPoints[1] = {700, 150};
  Build();
  lv_obj_clear_flag(gView.Components[0].FocusLeader, LV_OBJ_FLAG_HIDDEN);
  lv_timer_handler();
  int onLine = 0;
  for (UINT32 y = 152; y < 199; y++) {
    onLine +=
        Machine.Output().Pixel(700, y) == 0x040506 || Machine.Output().Pixel(699, y) == 0x040506;
  }
  EXPECT_EQ(onLine, 47);
}

TEST_F(LeaderLine, PointCountBeyondTheTableUsesItsTwenty) {
  Host.Components[0].LeaderPointCount = 21;
  Host.Components[1].LeaderPointCount = 65535;
  Build();
  for (int i = 0; i < 2; i++) {
    EXPECT_EQ(Line(gView.Components[i].Leader)->point_num, 20) << i;
    EXPECT_EQ(Line(gView.Components[i].FocusLeader)->point_num, 20) << i;
    lv_obj_clear_flag(gView.Components[i].Leader, LV_OBJ_FLAG_HIDDEN);
  }
  lv_timer_handler();
}

TEST_F(LeaderLine, LineWithoutPointsDrawsNothing) {
  Host.Components[0].LeaderPointCount = 0;
  Build();
  EXPECT_EQ(Line(gView.Components[0].Leader)->point_num, 0);
  lv_obj_clear_flag(gView.Components[0].Leader, LV_OBJ_FLAG_HIDDEN);
  lv_obj_clear_flag(gView.Components[0].FocusLeader, LV_OBJ_FLAG_HIDDEN);
  lv_timer_handler();
}

}  // namespace
