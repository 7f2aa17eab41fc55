// Which objects the board view consists of, and their drawing order.

#include "test/unit/stage/ViewStage.h"
#include "view/EmbeddedImages.h"

namespace {

std::string KindOf(const lv_obj_t *object) {
  if (lv_obj_check_type(object, &lv_line_class)) {
    return "line";
  }
  if (lv_obj_check_type(object, &lv_img_class)) {
    return "image";
  }
  if (lv_obj_check_type(object, &lv_label_class)) {
    return "label";
  }
  return lv_obj_check_type(object, &lv_btn_class) ? "button" : "other";
}

class BoardViewOrder : public ViewStage {
 protected:
  BoardViewOrder() { LeaveFontsOut(); }
  static std::vector<std::string> Kinds() {
    std::vector<std::string> kinds;
    for (lv_obj_t *object : Objects()) {
      kinds.push_back(KindOf(object));
    }
    return kinds;
  }
  void KeepComponents(size_t count) { Host.Components.resize(count); }
};

TEST_F(BoardViewOrder, ObjectsLieOnTopOfEachOtherInCreationOrder) {
  KeepComponents(2);
  Build();
  std::vector<std::string> frame = {"line",  "line",  "image",  "image", "label",
                                    "label", "label", "button", "label"};
  std::vector<std::string> hotspots = {"image", "image"};
  std::vector<std::string> callouts = {"button", "button"};
  std::vector<std::string> leaders = {"line", "line", "line", "line"};
  std::vector<std::string> markers = {"image", "image", "image", "image"};
  std::vector<std::string> filters(6, "button");
  std::vector<std::string> expected;
  for (const auto &part : {frame, hotspots, callouts, leaders, markers, filters}) {
    expected.insert(expected.end(), part.begin(), part.end());
  }
  std::vector<std::string> kinds = Kinds();
  ASSERT_GE(kinds.size(), expected.size());
  kinds.resize(expected.size());
  EXPECT_EQ(kinds, expected);
}

TEST_F(BoardViewOrder, ComponentObjectsStandInIndexOrder) {
  KeepComponents(2);
  Build();
  std::vector<lv_obj_t *> objects = Objects();
  std::vector<lv_obj_t *> expected = {
      gView.CloseButton,
      gView.InfoText,
      gView.Components[0].Hotspot,
      gView.Components[1].Hotspot,
      gView.Components[0].Callout,
      gView.Components[1].Callout,
      gView.Components[0].Leader,
      gView.Components[1].Leader,
      gView.Components[0].FocusLeader,
      gView.Components[1].FocusLeader,
      gView.Components[0].FirstMarker,
      gView.Components[0].SecondMarker,
      gView.Components[1].FirstMarker,
      gView.Components[1].SecondMarker,
      gView.FilterButtons[0],
      gView.FilterButtons[1],
      gView.FilterButtons[2],
      gView.FilterButtons[3],
      gView.FilterButtons[4],
      gView.FilterButtons[5],
  };
  ASSERT_GE(objects.size(), 7 + expected.size());
  auto first = objects.begin() + 7;
  EXPECT_EQ(std::vector<lv_obj_t *>(first, first + static_cast<ptrdiff_t>(expected.size())),
            expected);
}

TEST_F(BoardViewOrder, LabelsAreTitleThenFooterThenKeyHelp) {
  Build();
  std::vector<lv_obj_t *> objects = Objects();
  EXPECT_EQ(LabelText(objects[4]), "Board view");
  EXPECT_EQ(LabelText(objects[5]), "Footer of the test host");
  EXPECT_EQ(LabelText(objects[6]).substr(0, 9), "#FFC800 T");
}

TEST_F(BoardViewOrder, ViewWithoutComponentsHasOnlyItsFrame) {
  KeepComponents(0);
  Build();
  std::vector<lv_obj_t *> objects = Objects();
  ASSERT_GE(objects.size(), 15u);
  EXPECT_EQ(objects[8], gView.InfoText);
  EXPECT_EQ(objects[9], gView.FilterButtons[0]);
  EXPECT_EQ(gView.Components[0].Callout, nullptr);
}

TEST_F(BoardViewOrder, NoLogoMeansNoLogoObject) {
  KeepComponents(0);
  Host.Config.Logo = OBV_LOGO_NONE;
  Build();
  std::vector<std::string> kinds = Kinds();
  kinds.resize(8);
  EXPECT_EQ(kinds, (std::vector<std::string>{"line", "line", "image", "label", "label", "label",
                                             "button", "label"}));
}

TEST_F(BoardViewOrder, BlankCloseHintAlsoCreatesABlankHeading) {
  KeepComponents(0);
  Host.Strings["en-US"][5] = u" ";
  Build();
  EXPECT_EQ(Objects()[8], gView.InfoText);
  EXPECT_EQ(LabelText(gView.InfoText), " ");
  ASSERT_NE(gView.Heading, nullptr);
  EXPECT_EQ(Objects()[9], gView.Heading);
  EXPECT_EQ(LabelText(gView.Heading), " ");
}

TEST_F(BoardViewOrder, OtherCloseHintCreatesNoHeading) {
  KeepComponents(0);
  Host.Strings["en-US"][5] = u"  ";
  Build();
  EXPECT_EQ(LabelText(gView.InfoText), "  ");
  EXPECT_EQ(gView.Heading, nullptr);
}

class BoardViewLogo : public BoardViewOrder {
 protected:
  const lv_img_dsc_t *ShownFor(UINT8 selector) {
    Host.Config.Logo = selector;
    Build();
    return Source(Objects()[3]);
  }
};

TEST_F(BoardViewLogo, Selector0ShowsLogoA) { EXPECT_EQ(ShownFor(0), &kLogoA); }
TEST_F(BoardViewLogo, Selector1ShowsLogoB) { EXPECT_EQ(ShownFor(1), &kLogoB); }
TEST_F(BoardViewLogo, Selector2ShowsLogoC) { EXPECT_EQ(ShownFor(2), &kLogoC); }
TEST_F(BoardViewLogo, Selector3FallsBackToLogoA) { EXPECT_EQ(ShownFor(3), &kLogoA); }
TEST_F(BoardViewLogo, Selector254FallsBackToLogoA) { EXPECT_EQ(ShownFor(254), &kLogoA); }

class BoardViewPicture : public BoardViewOrder {
 protected:
  /// The host has a picture for the intake and none for the view.
  void LosePictureAfterIntake(EFI_STATUS status) {
    Host.OnGetResourceData = [this, status](VOID **data, UINTN *size) -> EFI_STATUS {
      if (asked_++ > 0) {
        return status;
      }
      *data = Host.Picture.data();
      *size = Host.Picture.size();
      return EFI_SUCCESS;
    };
  }

 private:
  int asked_ = 0;
};

TEST_F(BoardViewPicture, ViewIsBuiltWithoutAPictureThatTheHostLost) {
  LosePictureAfterIntake(EFI_NOT_FOUND);
  Build();
  EXPECT_EQ(Source(Objects()[2]), nullptr);
  EXPECT_EQ(PlaceOf(Objects()[2]).Y, 135);
  EXPECT_TRUE(Host.Logged("[GetPngFromFv] Error occurs: Not Found\n"));
  EXPECT_NE(gView.FilterButtons[5], nullptr);
}

TEST_F(BoardViewPicture, ViewIsBuiltWithoutAPictureThatIsNull) {
  LosePictureAfterIntake(EFI_SUCCESS);
  Build();
  EXPECT_EQ(Source(Objects()[2]), nullptr);
  EXPECT_TRUE(Host.Logged("error ScaleImage 372\n"));
  EXPECT_TRUE(Host.Logged("[GetPngFromFv] Error occurs: Invalid Parameter\n"));
  EXPECT_NE(gView.FilterButtons[5], nullptr);
}

TEST_F(BoardViewPicture, ScreenIsDrawnWithoutAPicture) {
  LosePictureAfterIntake(EFI_NOT_FOUND);
  Build(1024, 768);
  lv_timer_handler();
  EXPECT_EQ(Machine.Output().Pixel(400, 300), 0x2C2C2Cu);
}

}  // namespace
