// What the filter buttons do.

#include "test/unit/stage/PanelStage.h"
#include "test/unit/stage/RunScript.h"
#include "view/CategoryFilter.h"

namespace {

constexpr UINT32 kTypes[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
constexpr UINT32 kCodes[] = {0, 1, 2, 3, 4, 8};

// One component of each type; index and type are the same. All have both dots.
class CategoryFilter : public PanelStage {
 protected:
  CategoryFilter() {
    for (UINT32 type : kTypes) {
      std::u16string name = u"T" + fake::FromAscii(std::to_string(type));
      auto place = static_cast<INT16>(100 + 60 * static_cast<int>(type));
      Host.AddComponent(name, type, 1, place, place);
      Host.Answers[name].Lines = {{u"L" + name, u"v"}};
    }
  }
  void BuildWithBothFlags() {
    Build();
    for (OBV_COMPONENT &component : Host.Components) {
      component.Available = 1;
      component.DeviceError = 1;
    }
  }

  static void Click(size_t button) {
    lv_event_send(gView.FilterButtons[button], LV_EVENT_CLICKED, nullptr);
  }
  /// A click on a button with a code of the test's own.
  void ClickCode(UINT32 code) {
    code_ = code;
    if (own_ == nullptr) {
      own_ = lv_btn_create(Screen());
      lv_label_create(own_);
      lv_obj_add_event_cb(own_, CategoryFilterHandler, LV_EVENT_ALL, &code_);
    }
    lv_event_send(own_, LV_EVENT_CLICKED, nullptr);
  }

  /// The components of which this object is shown.
  std::vector<UINT32> Shown(lv_obj_t *ComponentWidgets::*object) const {
    std::vector<UINT32> shown;
    for (UINT32 i = 0; i < Host.Components.size(); i++) {
      if (!IsHidden(gView.Components[i].*object)) {
        shown.push_back(i);
      }
    }
    return shown;
  }
  void ExpectShown(const std::vector<UINT32> &callouts, const std::vector<UINT32> &dots) const {
    EXPECT_EQ(Shown(&ComponentWidgets::Callout), callouts);
    EXPECT_EQ(Shown(&ComponentWidgets::Leader), callouts);
    EXPECT_EQ(Shown(&ComponentWidgets::FirstMarker), dots);
    EXPECT_EQ(Shown(&ComponentWidgets::SecondMarker), dots);
  }

 private:
  UINT32 code_ = 0;
  lv_obj_t *own_ = nullptr;
};

TEST_F(CategoryFilter, EachButtonShowsItsTypeAlone) {
  BuildWithBothFlags();
  for (size_t button = 1; button < 6; button++) {
    Click(button);
    EXPECT_EQ(gView.CategoryFilter, kCodes[button]);
    ExpectShown({kCodes[button]}, {kCodes[button]});
  }
}

TEST_F(CategoryFilter, AllShowsEverythingButTheDotsOfUncategorisedComponents) {
  BuildWithBothFlags();
  Click(3);
  Click(0);
  EXPECT_EQ(gView.CategoryFilter, 0u);
  ExpectShown({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, {1, 2, 3, 4, 5, 6, 7, 8, 9});
}

TEST_F(CategoryFilter, SpecialGroupShowsItsMembersOfAnyType) {
  BuildWithBothFlags();
  Host.Components[0].InSpecialGroup = 1;
  Host.Components[4].InSpecialGroup = 1;
  Host.Components[7].InSpecialGroup = 0xFF;
  ClickCode(254);
  EXPECT_EQ(gView.CategoryFilter, 254u);
  ExpectShown({0, 4, 7}, {4, 7});
}

TEST_F(CategoryFilter, ATypeOfTheSpecialGroupsNumberKeepsItsCalloutAndLosesItsDots) {
  BuildWithBothFlags();
  Host.Components[3].Type = 254;
  ClickCode(254);
  ExpectShown({3}, {});
}

TEST_F(CategoryFilter, ComponentThatCameAfterTheViewIsPassedOver) {
  Host.Components.reserve(Host.Components.size() + 1);
  BuildWithBothFlags();
  Host.AddComponent(u"LATE", 1, 1, 400, 400);
  Host.State.ComponentCount++;
  Click(1);
  EXPECT_EQ(gView.Components[std::size(kTypes)].Callout, nullptr);
  EXPECT_FALSE(IsHidden(gView.Components[1].Callout));
  EXPECT_TRUE(IsHidden(gView.Components[2].Callout));
}

TEST_F(CategoryFilter, SpecialGroupMembersAreHiddenUnderAnotherFilter) {
  BuildWithBothFlags();
  Host.Components[4].InSpecialGroup = 1;
  Click(1);
  ExpectShown({1}, {1});
}

TEST_F(CategoryFilter, CodeOfNoComponentHidesAll) {
  BuildWithBothFlags();
  ClickCode(77);
  ExpectShown({}, {});
}

TEST_F(CategoryFilter, DotsFollowTheFlags) {
  Build();
  for (UINT32 i : kTypes) {
    Host.Components[i].Available = i % 2 == 0;
    Host.Components[i].DeviceError = i % 3 == 0;
  }
  Click(0);
  EXPECT_EQ(Shown(&ComponentWidgets::FirstMarker), (std::vector<UINT32>{2, 4, 6, 8}));
  EXPECT_EQ(Shown(&ComponentWidgets::SecondMarker), (std::vector<UINT32>{3, 6, 9}));
}

TEST_F(CategoryFilter, SecondLeadersAndHotspotsAreLeftAlone) {
  BuildWithBothFlags();
  Click(0);
  Click(1);
  EXPECT_EQ(Shown(&ComponentWidgets::FocusLeader), std::vector<UINT32>{});
  EXPECT_EQ(Shown(&ComponentWidgets::Hotspot), std::vector<UINT32>{});
}

TEST_F(CategoryFilter, ClickedButtonGetsTheFocusAndExplainsItself) {
  Build();
  Click(2);
  EXPECT_EQ(lv_group_get_focused(lv_group_get_default()), gView.FilterButtons[2]);
  EXPECT_EQ(PanelText(), "Category SATA");
}

TEST_F(CategoryFilter, ClickedButtonAloneLooksSelected) {
  Build();
  for (size_t clicked : {3, 1, 1, 5, 0}) {
    Click(clicked);
    lv_group_focus_obj(gView.CloseButton);
    for (size_t button = 0; button < 6; button++) {
      lv_opa_t opacity = lv_obj_get_style_bg_opa(gView.FilterButtons[button], LV_PART_MAIN);
      EXPECT_EQ(opacity, button == clicked ? 0 : 255) << button << " after " << clicked;
    }
  }
}

TEST_F(CategoryFilter, RestylingKeepsTheFocusLookOfEveryButton) {
  Build();
  Click(4);
  lv_group_focus_obj(gView.CloseButton);
  for (lv_obj_t *button : gView.FilterButtons) {
    for (lv_state_t state : {LV_STATE_FOCUSED, LV_STATE_FOCUS_KEY}) {
      lv_obj_add_state(button, state);
      EXPECT_EQ(Rgb(lv_obj_get_style_bg_color(button, LV_PART_MAIN)), 0xFFC800u);
      EXPECT_EQ(lv_obj_get_style_bg_opa(button, LV_PART_MAIN), 255);
      lv_obj_clear_state(button, state);
    }
  }
}

TEST_F(CategoryFilter, ManyClicksDoNotPileUpStyles) {
  Build();
  Click(1);
  uint32_t before = gView.FilterButtons[1]->style_cnt;
  for (int i = 0; i < 20; i++) {
    Click(1);
  }
  EXPECT_EQ(gView.FilterButtons[1]->style_cnt, before);
}

// A frozen group does not give the focus to the button.
TEST_F(CategoryFilter, ComponentThatKeepsTheFocusIsShownInThePanel) {
  Build();
  lv_group_focus_obj(gView.Components[1].Callout);
  lv_group_focus_freeze(lv_group_get_default(), true);
  fake::CopyText(Host.Components[1].Info[0].Value, u"changed");
  Click(2);
  EXPECT_EQ(PanelText(), "\n\n" + InfoLineText("LT1", "v"));
  Click(1);
  EXPECT_EQ(PanelText(), "\n\n" + InfoLineText("LT1", "changed"));
}

TEST_F(CategoryFilter, FocusShowsTheHintAndItsLossBlanksTheText) {
  Build();
  const char *captions[] = {"ALL", "USB", "SATA", "M.2", "PCIE", "FAN"};
  for (size_t button = 0; button < 6; button++) {
    lv_event_send(gView.FilterButtons[button], LV_EVENT_FOCUSED, nullptr);
    EXPECT_EQ(PanelText(), std::string("Category ") + captions[button]);
    lv_event_send(gView.FilterButtons[button], LV_EVENT_DEFOCUSED, nullptr);
    EXPECT_EQ(PanelText(), " ");
    EXPECT_EQ(PanelHeading(), " ");
  }
  EXPECT_EQ(gView.CategoryFilter, 0u);
}

TEST_F(CategoryFilter, OtherEventsAreIgnored) {
  BuildWithBothFlags();
  lv_label_set_text(gView.InfoText, "untouched");
  for (lv_event_code_t code : {LV_EVENT_PRESSED, LV_EVENT_RELEASED, LV_EVENT_SHORT_CLICKED,
                               LV_EVENT_LONG_PRESSED, LV_EVENT_VALUE_CHANGED, LV_EVENT_CANCEL}) {
    lv_event_send(gView.FilterButtons[2], code, nullptr);
  }
  EXPECT_EQ(gView.CategoryFilter, 0u);
  EXPECT_EQ(PanelText(), "untouched");
  EXPECT_EQ(Shown(&ComponentWidgets::Callout).size(), 10u);
}

class FilterHint : public CategoryFilter {
 protected:
  /// The hint when its text is a number of letters and then the caption, "SATA".
  std::string HintAfter(size_t letters) {
    Host.Strings["en-US"][6] = std::u16string(letters, u'h') + u"%a";
    Build();
    lv_event_send(gView.FilterButtons[2], LV_EVENT_FOCUSED, nullptr);
    return PanelText();
  }
};

TEST_F(FilterHint, Of99BytesIsWhole) { EXPECT_EQ(HintAfter(95), std::string(95, 'h') + "SATA"); }

TEST_F(FilterHint, Of100BytesIsCutByOne) { EXPECT_EQ(HintAfter(96), std::string(96, 'h') + "SAT"); }

TEST_F(FilterHint, MuchTooLongIsCutTo99Bytes) { EXPECT_EQ(HintAfter(500), std::string(99, 'h')); }

}  // namespace
