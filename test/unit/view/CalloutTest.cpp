// The callouts: text, marks, styles, states.

#include "test/unit/stage/ViewStage.h"

#include "app/base/Run.h"
#include "view/Jump.h"

namespace {

class Callout : public ViewStage {
 protected:
  Callout() {
    Host.ScaleComponents = false;
    Host.Components.clear();
    fake::CopyText(Host.DefaultStyle.MarkColor, "18,52,86");
    fake::CopyText(Host.FocusStyle.MarkColor, "101,67,33");
  }

  /// A component with a setup option that answers its status query with `status`.
  OBV_COMPONENT &Add(std::u16string_view name, UINT16 tokenId = 1,
                     EFI_STATUS status = EFI_SUCCESS) {
    Host.Answers[std::u16string(name)].Status = status;
    return Host.AddComponent(name, OBV_TYPE_USB, tokenId, 400, 400);
  }
  static std::string Text(size_t index = 0) { return Caption(gView.Components[index].Callout); }
  static lv_obj_t *Label(size_t index = 0) {
    return lv_obj_get_child(gView.Components[index].Callout, 0);
  }
};

TEST_F(Callout, ComponentWithNeitherMarkGetsThePlainName) {
  Add(u"PCIE_16X");
  Build();
  EXPECT_EQ(Text(), "PCIE_16X");
  EXPECT_STREQ(gView.Components[0].Name, "PCIE_16X");
  EXPECT_STREQ(gView.Components[0].DefaultText, "PCIE_16X");
  EXPECT_STREQ(gView.Components[0].FocusText, "PCIE_16X");
  EXPECT_TRUE(lv_label_get_recolor(Label()));
}

TEST_F(Callout, NotReadyComponentGetsOneStar) {
  Add(u"M2_1", 1, EFI_NOT_READY);
  Build();
  EXPECT_STREQ(gView.Components[0].Name, "M2_1 *");
  EXPECT_EQ(Text(), "M2_1#123456  *#");
  EXPECT_STREQ(gView.Components[0].DefaultText, "M2_1#123456  *#");
  EXPECT_STREQ(gView.Components[0].FocusText, "M2_1#654321  *#");
}

TEST_F(Callout, ComponentWithoutASetupOptionGetsTwoStars) {
  Add(u"M2_1", 0);
  Build();
  EXPECT_STREQ(gView.Components[0].Name, "M2_1 **");
  EXPECT_EQ(Text(), "M2_1#123456  **#");
  EXPECT_STREQ(gView.Components[0].FocusText, "M2_1#654321  **#");
}

TEST_F(Callout, NotReadyComponentWithoutASetupOptionGetsBothMarksInOrder) {
  Add(u"M2_1", 0, EFI_NOT_READY);
  Build();
  EXPECT_STREQ(gView.Components[0].Name, "M2_1 * **");
  EXPECT_EQ(Text(), "M2_1#123456  * **#");
  EXPECT_STREQ(gView.Components[0].FocusText, "M2_1#654321  * **#");
}

TEST_F(Callout, MarkTakesNoRoomForItsRecolourCommand) {
  Add(u"M2_1", 0);
  Add(u"M2_1 **");
  Build();
  EXPECT_EQ(PlaceOf(Label(0)).Width, PlaceOf(Label(1)).Width);
}

TEST_F(Callout, NameOf19CharactersIsShownWhole) {
  Add(u"NINETEEN_CHARACTERS");
  Build();
  EXPECT_EQ(Text(), "NINETEEN_CHARACTERS");
}

TEST_F(Callout, NameBeyondAsciiKeepsItsLowBytes) {
  Add(u"\u0141\u4E42C");
  Build();
  EXPECT_STREQ(gView.Components[0].Name, "ABC");
}

TEST_F(Callout, NameOf20CharactersIsRefusedAndLeavesTheCalloutEmpty) {
  Add(u"TWENTY_CHARACTERS_20");
  Build();
  EXPECT_EQ(Text(), "");
  EXPECT_STREQ(gView.Components[0].Name, "");
  Place label = PlaceOf(Label());
  Place callout = PlaceOf(gView.Components[0].Callout);
  EXPECT_EQ(label.Width, 0);
  EXPECT_EQ(callout.Width, 4);
  EXPECT_EQ(callout.Height, label.Height + 4);
}

TEST_F(Callout, LongNameKeepsItsMarks) {
  Add(std::u16string(59, u'L'), 0);
  Build();
  EXPECT_EQ(Text(), "#123456  **#");
  EXPECT_STREQ(gView.Components[0].Name, " **");
}

TEST_F(Callout, NameWithoutATerminatorIsRefused) {
  OBV_COMPONENT &component = Add(u"X");
  std::fill(std::begin(component.Name), std::end(component.Name), u'N');
  Host.OnQueryComponentStatus = [](CHAR16 *, UINT32, UINTN, UINT64 *, OBV_COMPONENT_INFO *) {
    return EFI_SUCCESS;
  };
  Build();
  EXPECT_EQ(Text(), "");
}

TEST_F(Callout, MarksOfALongNameStayInsideTheBuffers) {
  Add(u"NINETEEN_CHARACTERS", 0, EFI_NOT_READY);
  Build();
  EXPECT_STREQ(gView.Components[0].Name, "NINETEEN_CHARACTERS");
  EXPECT_EQ(Text(), "NINETEEN_CHARACTERS#123456  * **#");
  EXPECT_EQ(gView.Components[1].Name[0], 0);
}

TEST_F(Callout, EmptyNameIsAnEmptyCallout) {
  Add(u"");
  Build();
  EXPECT_EQ(Text(), "");
}

// Styles.

struct CalloutLook {
  int Radius, Opacity;
  UINT32 Background, Text, Border;
  int BorderWidth, BorderOpacity;
  std::string Font;
  bool operator==(const CalloutLook &) const = default;
};

CalloutLook LookOf(lv_obj_t *callout) {
  return {lv_obj_get_style_radius(callout, LV_PART_MAIN),
          lv_obj_get_style_bg_opa(callout, LV_PART_MAIN),
          Rgb(lv_obj_get_style_bg_color(callout, LV_PART_MAIN)),
          TextColorOf(callout),
          Rgb(lv_obj_get_style_border_color(callout, LV_PART_MAIN)),
          lv_obj_get_style_border_width(callout, LV_PART_MAIN),
          lv_obj_get_style_border_opa(callout, LV_PART_MAIN),
          FontOf(callout)};
}

OBV_COMPONENT_STYLE StyleOf(UINT8 base, UINT8 border, UINT8 radius) {
  OBV_COMPONENT_STYLE style{};
  auto text = [](int n) { return std::to_string(n) + ",0," + std::to_string(n); };
  fake::CopyText(style.TextColor, text(base));
  fake::CopyText(style.BackgroundColor, text(base + 1));
  fake::CopyText(style.MarkColor, text(base + 2));
  fake::CopyText(style.BorderColor, text(base + 3));
  style.BorderWidth = border;
  style.CornerRadius = radius;
  return style;
}

TEST_F(Callout, EachComponentHasItsOwnTwoStyles) {
  fake::CopyText(Host.Config.CalloutFont.Name, "DejaVuSansBold");
  Host.Config.CalloutFont.Size = 17;
  OBV_COMPONENT_STYLE styles[] = {StyleOf(16, 2, 3), StyleOf(32, 4, 5), StyleOf(48, 6, 7),
                                  StyleOf(64, 8, 9)};
  for (int i = 0; i < 2; i++) {
    OBV_COMPONENT &component = Add(i == 0 ? u"A" : u"B");
    component.DefaultStyle = &styles[i * 2];
    component.FocusStyle = &styles[i * 2 + 1];
  }
  Build();
  for (UINT32 i = 0; i < 2; i++) {
    UINT32 c = i * 0x200020 + 0x100010;
    int n = static_cast<int>(i) * 4;
    CalloutLook normal = {3 + n, 255, c + 0x10001, c, c + 0x30003, 2 + n, 204, "DejaVuSansBold 17"};
    EXPECT_EQ(LookOf(gView.Components[i].Callout), normal) << i;
    lv_obj_add_state(gView.Components[i].Callout, LV_STATE_FOCUSED);
    c += 0x100010;
    CalloutLook focus = {5 + n, 255, c + 0x10001, c, c + 0x30003, 4 + n, 204, "DejaVuSansBold 17"};
    EXPECT_EQ(LookOf(gView.Components[i].Callout), focus) << i;
  }
}

TEST_F(Callout, BorderWidth0MeansNoBorder) {
  Host.DefaultStyle.BorderWidth = 0;
  Add(u"A");
  Build();
  EXPECT_EQ(lv_obj_get_style_border_width(gView.Components[0].Callout, LV_PART_MAIN), 0);
  lv_obj_add_state(gView.Components[0].Callout, LV_STATE_FOCUSED);
  EXPECT_EQ(lv_obj_get_style_border_width(gView.Components[0].Callout, LV_PART_MAIN), 1);
}

TEST_F(Callout, FontFollowsTheVerticalScale) {
  Add(u"A");
  Build(1024, 768);
  EXPECT_EQ(LookOf(gView.Components[0].Callout).Font, "DroidSans 11");
}

TEST_F(Callout, NullStylesAreHarmless) {
  OBV_COMPONENT &component = Add(u"A", 0);
  component.DefaultStyle = nullptr;
  component.FocusStyle = nullptr;
  Build();
  EXPECT_EQ(gView.Components[0].DefaultText[0], 'A');
  EXPECT_EQ(lv_obj_get_style_border_width(gView.Components[0].Callout, LV_PART_MAIN), 0);
  lv_obj_add_state(gView.Components[0].Callout, LV_STATE_FOCUSED);
  lv_timer_handler();
}

// States and handlers.

TEST_F(Callout, SelectableCalloutJumps) {
  Add(u"A", 0x77);
  Build();
  EXPECT_FALSE(lv_obj_has_state(gView.Components[0].Callout, LV_STATE_DISABLED));
  EXPECT_TRUE(lv_obj_has_flag(gView.Components[0].Callout, LV_OBJ_FLAG_CLICKABLE));
  EXPECT_TRUE(lv_obj_has_flag(gView.Components[0].Callout, LV_OBJ_FLAG_CLICK_FOCUSABLE));
  EXPECT_FALSE(IsHidden(gView.Components[0].Callout));
  lv_event_send(gView.Components[0].Callout, LV_EVENT_CLICKED, nullptr);
  EXPECT_EQ(Host.State.JumpRequested, 1);
  EXPECT_EQ(Host.State.JumpSearchTokenId, 0x77);
}

TEST_F(Callout, NotSelectableCalloutIsDisabledAndClickingItDoesNothing) {
  Add(u"A").NotSelectable = 1;
  Add(u"B").NotSelectable = 255;
  Build();
  for (int i = 0; i < 2; i++) {
    EXPECT_TRUE(lv_obj_has_state(gView.Components[i].Callout, LV_STATE_DISABLED)) << i;
    lv_event_send(gView.Components[i].Callout, LV_EVENT_CLICKED, nullptr);
    lv_event_send(gView.Components[i].Callout, LV_EVENT_FOCUSED, nullptr);
    EXPECT_TRUE(IsHidden(gView.Components[i].Hotspot)) << i;
  }
  EXPECT_EQ(Host.State.JumpRequested, 0);
  EXPECT_FALSE(gRun.ExitRequested);
}

TEST_F(Callout, EachHandlerKnowsItsOwnComponent) {
  for (int i = 0; i < 99; i++) {
    Add(u"PART", static_cast<UINT16>(0x1000 + i));
  }
  Build();
  for (UINT16 i = 0; i < 99; i++) {
    lv_event_send(gView.Components[i].Callout, LV_EVENT_CLICKED, nullptr);
    EXPECT_EQ(Host.State.JumpComponentIndex, i);
    EXPECT_EQ(Host.State.JumpSearchTokenId, 0x1000 + i);
  }
}

TEST_F(Callout, UnknownAlignmentIsLoggedAndTheBuildGoesOn) {
  const INT32 alignments[] = {3, -1, 0x7FFFFFFF, 0, 1, 2};
  for (INT32 align : alignments) {
    Add(u"A").TextAlign = align;
  }
  Build();
  std::vector<std::string> errors = Host.LogTexts(OBV_LOG_ERROR);
  EXPECT_EQ(std::count(errors.begin(), errors.end(), "error: Unknown alignment\n"), 3);
  EXPECT_NE(gView.Components[5].Callout, nullptr);
}

TEST_F(Callout, UnknownAlignmentIsSilentWithoutALog) {
  Add(u"A").TextAlign = 9;
  Host.Protocol().DebugPrint = nullptr;
  Build();
  EXPECT_EQ(Text(), "A");
  EXPECT_TRUE(Host.Log.empty());
}

TEST_F(Callout, LabelsEndUpCentredWhateverTheRecordSays) {
  for (INT32 align : {0, 1, 2, 3}) {
    Add(u"A").TextAlign = align;
  }
  Build();
  for (size_t i = 0; i < 4; i++) {
    EXPECT_EQ(lv_obj_get_style_align(Label(i), LV_PART_MAIN), LV_ALIGN_CENTER);
    Place outer = PlaceOf(gView.Components[i].Callout);
    Place inner = PlaceOf(Label(i));
    EXPECT_EQ(inner, (Place{outer.X + 2, outer.Y + 2, outer.Width - 4, outer.Height - 4})) << i;
  }
}

// Counts beyond the view's tables.

TEST_F(Callout, ViewShowsAtMostAHundredComponents) {
  for (int i = 0; i < 150; i++) {
    Add(u"PART");
  }
  Build();
  EXPECT_EQ(ViewComponentCount(), 100u);
  EXPECT_NE(gView.Components[99].Callout, nullptr);
  EXPECT_NE(gView.Components[99].SecondMarker, nullptr);
  int callouts = 0;
  for (lv_obj_t *object : Objects()) {
    callouts += lv_obj_check_type(object, &lv_btn_class);
  }
  EXPECT_EQ(callouts, 100 + 7);
  lv_timer_handler();
}

}  // namespace
