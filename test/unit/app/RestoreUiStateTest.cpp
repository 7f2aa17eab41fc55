// Bringing back what the user looked at: from the shared record, then from the setup.

#include "test/firmware/SetupEventHandler.h"
#include "test/unit/stage/ComponentStage.h"

#include "app/UiState.h"

namespace {

using fake::LogLine;

class RestoreUiState : public ComponentStage {
 protected:
  RestoreUiState() {
    Host.AddComponent(u"CPU", OBV_TYPE_PROCESSOR, 1, 300, 300);
    Host.AddComponent(u"USB_1", OBV_TYPE_USB, 1, 500, 300);
    Host.AddComponent(u"USB_2", OBV_TYPE_USB, 1, 700, 300);
    Host.AddComponent(u"OTHER", 5, 1, 900, 300);
  }
  /// Builds, counts the clicks on each filter button from then on, and restores.
  void Restore() {
    Build();
    for (size_t i = 0; i < kCategoryCount; i++) {
      lv_obj_add_event_cb(
          gView.FilterButtons[i],
          [](lv_event_t *event) { ++*static_cast<int *>(event->user_data); }, LV_EVENT_CLICKED,
          &Clicks[i]);
    }
    lv_group_focus_obj(gView.CloseButton);
    Host.Log.clear();
    ReStoreUIState();
  }
  using ClickCounts = std::array<int, kCategoryCount>;
  /// The components of which this object is shown.
  static std::vector<int> Shown(lv_obj_t *ComponentWidgets::*object = &ComponentWidgets::Callout) {
    std::vector<int> shown;
    for (int i = 0; i < 4; i++) {
      if (!IsHidden(gView.Components[i].*object)) {
        shown.push_back(i);
      }
    }
    return shown;
  }

  ClickCounts Clicks{};
  fake::SetupEventHandler Setup{Machine};
};

TEST_F(RestoreUiState, FocusIndex0FocusesTheDefaultObject) {
  // Its button takes the focus when it is clicked.
  Host.State.SelectedCategory = OBV_TYPE_USB;
  Restore();
  EXPECT_EQ(Clicks, (ClickCounts{0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(Focused(), gView.CloseButton);
}

TEST_F(RestoreUiState, FocusIndexesBelow100AreCallouts) {
  Host.State.FocusIndex = 3;
  Restore();
  EXPECT_EQ(Focused(), gView.Components[2].Callout);
}

TEST_F(RestoreUiState, FocusIndexesFrom101AreCategoryButtons) {
  Host.State.FocusIndex = 101;
  Restore();
  for (UINT16 i = 0; i < kCategoryCount; i++) {
    Host.State.FocusIndex = static_cast<UINT16>(101 + i);
    ReStoreUIState();
    EXPECT_EQ(Focused(), gView.FilterButtons[i]) << i;
  }
}

TEST_F(RestoreUiState, FocusIndexesOfNoObjectChangeNothing) {
  // No button is clicked that would take the focus.
  Host.State.SelectedCategory = 5;
  Restore();
  for (UINT16 index : {99, 100, 107, 65535}) {
    Host.State.FocusIndex = index;
    lv_group_focus_obj(gView.CloseButton);
    ReStoreUIState();
    EXPECT_EQ(Focused(), gView.CloseButton) << index;
  }
}

TEST_F(RestoreUiState, FocusIndex99IsTheNinetyNinthCallout) {
  while (Host.Components.size() < 99) {
    Host.AddComponent(u"MORE", OBV_TYPE_FAN, 1, 300, 600);
  }
  Host.State.FocusIndex = 99;
  Restore();
  ASSERT_NE(gView.Components[98].Callout, nullptr);
  EXPECT_EQ(Focused(), gView.Components[98].Callout);
  SaveUiState();
  EXPECT_EQ(Host.State.FocusIndex, 99);
}

// The encoding has no room for the hundredth component.
TEST_F(RestoreUiState, FocusIndex100IsNotTheHundredthCallout) {
  while (Host.Components.size() < 100) {
    Host.AddComponent(u"MORE", OBV_TYPE_FAN, 1, 300, 600);
  }
  Host.State.SelectedCategory = 5;
  Host.State.FocusIndex = 100;
  Restore();
  ASSERT_NE(gView.Components[99].Callout, nullptr);
  EXPECT_EQ(Focused(), gView.CloseButton);
}

TEST_F(RestoreUiState, ASavedCategoryClicksItsButton) {
  Host.State.SelectedCategory = OBV_TYPE_USB;
  Restore();
  EXPECT_EQ(Clicks, (ClickCounts{0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(gView.CategoryFilter, UINT32{OBV_TYPE_USB});
  EXPECT_EQ(Shown(), (std::vector{1, 2}));
}

TEST_F(RestoreUiState, ARecordsCategoryWithoutAButtonClicksNone) {
  Host.State.SelectedCategory = 5;
  Restore();
  EXPECT_EQ(Clicks, ClickCounts{});
  EXPECT_EQ(gView.CategoryFilter, 0u);
  EXPECT_EQ(Shown(), (std::vector{0, 1, 2, 3}));
}

TEST_F(RestoreUiState, WithoutAnEventHandlerTheRecordStands) {
  Host.State.SelectedCategory = OBV_TYPE_USB;
  Restore();
  EXPECT_EQ(Host.Log,
            std::vector{(LogLine{OBV_LOG_INFO,
                                 "LocateProtocol gVeltSetupEventHandlerProtocolGuid Status = "
                                 "Not Found\n"})});
  EXPECT_EQ(gView.CategoryFilter, UINT32{OBV_TYPE_USB});
}

TEST_F(RestoreUiState, ANullEventHandlerIsNone) {
  Setup.InstallNull();
  Restore();
  EXPECT_EQ(Host.Log,
            std::vector{(LogLine{OBV_LOG_INFO,
                                 "LocateProtocol gVeltSetupEventHandlerProtocolGuid Status = "
                                 "Success\n"})});
}

TEST_F(RestoreUiState, TheEventHandlerIsAskedForTheSavedSelection) {
  Setup.Install();
  Restore();
  ASSERT_EQ(Setup.Requests.size(), 1u);
  EXPECT_EQ(Setup.Requests[0].Key, "Cairnledger" + std::string(13, '\0'));
  EXPECT_EQ(Setup.Requests[0].Reserved, std::string(24, '\0'));
  EXPECT_EQ(Setup.Requests[0].Type, 0u);
  EXPECT_EQ(Setup.Requests[0].DataSize, 0u);
  EXPECT_TRUE(Setup.Requests[0].DataWasZero);
  EXPECT_EQ(Setup.EndCount, 1u);
  EXPECT_EQ(Host.Log, std::vector<LogLine>{});
}

TEST_F(RestoreUiState, AFailedReadIsLoggedAndTheRecordStands) {
  Setup.Install();
  Setup.Status = EFI_DEVICE_ERROR;
  Setup.Select(OBV_TYPE_USB, u"USB_1");
  Restore();
  EXPECT_EQ(Host.Log, std::vector{(LogLine{OBV_LOG_INFO, "ReStoreUIState 1552 Device Error\n"})});
  EXPECT_EQ(Setup.EndCount, 0u);
  EXPECT_EQ(gView.CategoryFilter, 0u);
  EXPECT_EQ(Focused(), gView.CloseButton);
}

TEST_F(RestoreUiState, AnAnswerOfTheWrongSizeIsIgnoredEntirely) {
  Setup.Install();
  Setup.DataSize = 40;
  Setup.Select(OBV_TYPE_USB, u"USB_1");
  Restore();
  EXPECT_EQ(Setup.EndCount, 1u);
  EXPECT_EQ(gView.CategoryFilter, 0u);
  EXPECT_EQ(Focused(), gView.CloseButton);
  EXPECT_EQ(Shown(), (std::vector{0, 1, 2, 3}));
}

TEST_F(RestoreUiState, AnAnswerOfTheWrongTypeIsIgnoredEntirely) {
  Setup.Install();
  Setup.Type = 6;
  Setup.Select(OBV_TYPE_USB, u"USB_1");
  Restore();
  EXPECT_EQ(Setup.EndCount, 1u);
  EXPECT_EQ(gView.CategoryFilter, 0u);
  EXPECT_EQ(Focused(), gView.CloseButton);
}

TEST_F(RestoreUiState, TheSetupsSelectionOverridesTheRecords) {
  Host.State.SelectedCategory = OBV_TYPE_SATA;
  Host.State.FocusIndex = 1;
  Setup.Install();
  Setup.Select(OBV_TYPE_USB, u"USB_2");
  Restore();
  EXPECT_EQ(Clicks, (ClickCounts{0, 1, 1, 0, 0, 0}));
  EXPECT_EQ(gView.CategoryFilter, UINT32{OBV_TYPE_USB});
  EXPECT_EQ(Focused(), gView.Components[2].Callout);
  EXPECT_EQ(Shown(), (std::vector{1, 2}));
}

TEST_F(RestoreUiState, ACategoryWithoutAButtonFiltersTheCallouts) {
  // Of its two components one shows its first marker until then, the other its second.
  Host.Components[2].Type = 5;
  Host.Answers[u"OTHER"].Status = EFI_DEVICE_ERROR;
  Setup.Install();
  Setup.Select(5, u"");
  Restore();
  // The one click is the record's, before the setup's selection.
  EXPECT_EQ(Clicks, (ClickCounts{1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(gView.CategoryFilter, 5u);
  EXPECT_EQ(Shown(), (std::vector{2, 3}));
  EXPECT_EQ(Shown(&ComponentWidgets::Leader), (std::vector{2, 3}));
  EXPECT_EQ(Shown(&ComponentWidgets::FirstMarker), std::vector<int>{});
  EXPECT_EQ(Shown(&ComponentWidgets::SecondMarker), std::vector<int>{});
}

TEST_F(RestoreUiState, AComponentOfACategoryWithoutAButtonIsFocused) {
  Setup.Install();
  Setup.Select(5, u"OTHER");
  Restore();
  EXPECT_EQ(Focused(), gView.Components[3].Callout);
}

TEST_F(RestoreUiState, AComponentOfAnotherCategoryIsNotFocused) {
  Setup.Install();
  Setup.Select(OBV_TYPE_USB, u"CPU");
  Restore();
  EXPECT_EQ(Focused(), gView.FilterButtons[1]);
}

TEST_F(RestoreUiState, WithCategory0AComponentOfAnyCategoryIsFocused) {
  Setup.Install();
  Setup.Select(0, u"CPU");
  Restore();
  EXPECT_EQ(Focused(), gView.Components[0].Callout);
}

TEST_F(RestoreUiState, NamesAreComparedExactly) {
  Setup.Install();
  for (const char16_t *name : {u"cpu", u"CP", u"CPUX", u"CPU "}) {
    Setup.Select(0, name);
    if (gView.CloseButton == nullptr) {
      Restore();
    } else {
      ReStoreUIState();
    }
    EXPECT_EQ(Focused(), gView.FilterButtons[0]) << fake::ToAscii(name);
  }
}

TEST_F(RestoreUiState, OfEqualNamesTheFirstOfTheCategoryIsFocused) {
  fake::CopyText(Host.Components[0].Name, u"TWIN");
  fake::CopyText(Host.Components[1].Name, u"TWIN");
  fake::CopyText(Host.Components[2].Name, u"TWIN");
  Setup.Install();
  Setup.Select(OBV_TYPE_USB, u"TWIN");
  Restore();
  EXPECT_EQ(Focused(), gView.Components[1].Callout);
}

TEST_F(RestoreUiState, ANameThatFillsItsFieldIsRead) {
  fake::CopyText(Host.Components[2].Name, u"TWENTY_LETTERS_LONG_");
  Setup.Install();
  Setup.Select(0, u"TWENTY_LETTERS_LONG_");
  Restore();
  EXPECT_EQ(Focused(), gView.Components[2].Callout);
}

TEST_F(RestoreUiState, AnEmptyNameLeavesTheFocusToTheButton) {
  Setup.Install();
  Setup.Select(OBV_TYPE_FAN, u"");
  Restore();
  EXPECT_EQ(Focused(), gView.FilterButtons[5]);
}

TEST_F(RestoreUiState, TheProtocolHasTheContractsGuid) {
  const UINT8 bytes[] = {0xF9, 0x3E, 0x29, 0x68, 0xDE, 0x8E, 0x8C, 0x4B,
                         0xB4, 0x29, 0x86, 0x35, 0xA1, 0x9D, 0x24, 0x6D};
  EXPECT_EQ(std::memcmp(&gVeltSetupEventHandlerProtocolGuid, bytes, sizeof bytes), 0);
}

}  // namespace
