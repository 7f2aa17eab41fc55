// The shared state and the appearance record: what is NULL, and what is no colour.

#include "test/unit/hostcheck/HostCheckStage.h"

namespace hostcheck {
namespace {

class SharedStateCheck : public HostCheckStage {
 protected:
  EFI_STATUS CheckAfter(const std::function<void()> &spoil) {
    Host.Install();
    spoil();
    return CheckAsItIs();
  }
};

TEST_F(SharedStateCheck, FocusColourThatIsNullIsNamed) {
  EXPECT_EQ(CheckAfter([this] { Host.State.ViewColorText = nullptr; }), EFI_ABORTED);
  ASSERT_EQ(Mistakes().size(), 1u);
  EXPECT_TRUE(Mistakes()[0].starts_with("shared state: ViewColorText is NULL"));
}

TEST_F(SharedStateCheck, FocusColourThatPointsNowhereIsNamed) {
  auto *nowhere = reinterpret_cast<const CHAR8 *>(UINTN{0xAFAFAFAFAFAFAFAF});
  EXPECT_EQ(CheckAfter([&] { Host.State.ViewColorText = nowhere; }), EFI_ABORTED);
  ASSERT_EQ(Mistakes().size(), 1u);
  EXPECT_TRUE(Mistakes()[0].starts_with("shared state: ViewColorText is AFAFAFAFAFAFAFAF, where"));
}

TEST_F(SharedStateCheck, FocusColourThatIsNoneIsNamed) {
  Host.ViewColor = "amber";
  ExpectTheMistake(
      "shared state: ViewColorText of the shared state is \"amber\", which shows as "
      "#0AFFFF.");
}

TEST_F(SharedStateCheck, ColoursOfTheBandCountWhereItIsOn) {
  fake::CopyText(Host.State.RecolorHighText, "16,16");
  EXPECT_EQ(Check(), EFI_SUCCESS);
  Host.Uninstall();
}

TEST_F(SharedStateCheck, ColourOfTheBandThatIsNoneIsNamed) {
  Host.State.RecolorEnabled = 1;
  Host.State.RecolorMode = OBV_RECOLOR_ANY_CHANNEL_INSIDE;
  fake::CopyText(Host.State.RecolorHighText, "16,16");
  ExpectTheMistake("shared state: RecolorHighText of the shared state is \"16,16\"");
}

TEST_F(SharedStateCheck, UnknownModeOfRecolouringIsAWarning) {
  Host.State.RecolorEnabled = 1;
  Host.State.RecolorMode = 3;
  ExpectTheWarning("shared state: RecolorMode is 3, which recolours nothing.");
}

TEST_F(SharedStateCheck, SystemTextWithoutAnEndIsNamed) {
  std::fill_n(Host.State.SystemInfo[4], OBV_SYSTEM_INFO_TEXT_LENGTH, u'x');
  ExpectTheMistake("shared state: SystemInfo[4] has no end in its 128 characters.");
}

TEST_F(SharedStateCheck, SystemTextThatAsksForAnArgumentIsNamed) {
  fake::CopyText(Host.State.SystemInfo[2], u"100 %d");
  ExpectTheMistake(
      "shared state: SystemInfo[2] is a print format without arguments, and has 1 "
      "directives");
}

TEST_F(SharedStateCheck, SystemTextWithAPercentSignIsNot) {
  fake::CopyText(Host.State.SystemInfo[2], u"100 %%");
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

TEST_F(SharedStateCheck, FocusThatNothingHasIsNamed) {
  Host.State.FocusIndex = 100;
  ExpectTheMistake("shared state: FocusIndex is 100");
}

TEST_F(SharedStateCheck, FocusBeyondTheLastButtonIsNamed) {
  Host.State.FocusIndex = 107;
  ExpectTheMistake("shared state: FocusIndex is 107");
}

TEST_F(SharedStateCheck, FocusOnTheLastButtonIsRight) {
  Host.State.FocusIndex = 106;
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

TEST_F(SharedStateCheck, JumpThatNobodyAskedForIsNamed) {
  Host.State.JumpRequested = 1;
  ExpectTheMistake("shared state: JumpRequested is 1 before a view has run");
}

class AppearanceCheck : public HostCheckStage {};

TEST_F(AppearanceCheck, ConfigThatIsNullIsNamed) {
  Host.Install();
  Host.State.Config = nullptr;
  EXPECT_EQ(CheckAsItIs(), EFI_ABORTED);
  ASSERT_EQ(Mistakes().size(), 1u);
  EXPECT_TRUE(Mistakes()[0].starts_with("appearance: Config is NULL"));
  EXPECT_EQ(GradeOf("font choices"), Verdict::kLeftOut);
}

TEST_F(AppearanceCheck, ConfigThatPointsNowhereIsNamedAndNotRead) {
  Host.Install();
  Host.State.Config = reinterpret_cast<OBV_CONFIG *>(UINTN{0xAFAFAFAFAFAFAFAF});
  EXPECT_EQ(CheckAsItIs(), EFI_ABORTED);
  ASSERT_EQ(Mistakes().size(), 1u);
  EXPECT_TRUE(Mistakes()[0].starts_with("appearance: Config is AFAFAFAFAFAFAFAF, where"));
  EXPECT_EQ(GradeOf("font choices"), Verdict::kLeftOut);
  EXPECT_EQ(GradeOf("places"), Verdict::kLeftOut);
}

TEST_F(AppearanceCheck, ColourOfRubbishIsNamed) {
  fake::CopyText(Host.Config.TitleColor, "\x01rubbish");
  ExpectTheMistake("appearance: TitleColor of Config is \"?rubbish\", which shows as #");
}

TEST_F(AppearanceCheck, ColourOutOfRangeIsNamedWithWhatItShowsAs) {
  fake::CopyText(Host.Config.HotspotColor, "256,0,999");
  ExpectTheMistake(
      "appearance: HotspotColor of Config is \"256,0,999\", which shows as #0000E7. Write three");
}

TEST_F(AppearanceCheck, ColourOfTwoNumbersIsNamed) {
  fake::CopyText(Host.Config.SideText.Color, "1,2");
  ExpectTheMistake("appearance: SideText.Color of Config is \"1,2\", which shows as #0102FF.");
}

TEST_F(AppearanceCheck, ColourOfFourNumbersIsNamed) {
  fake::CopyText(Host.Config.FooterColor, "1,2,3,4");
  ExpectTheMistake("appearance: FooterColor of Config is \"1,2,3,4\"");
}

TEST_F(AppearanceCheck, ColourWithoutAnEndIsNamed) {
  std::fill_n(Host.Config.LeaderColor, sizeof Host.Config.LeaderColor, '1');
  ExpectTheMistake("appearance: LeaderColor of Config is \"11111111111111111111\"");
}

TEST_F(AppearanceCheck, ColourThatIsEmptyIsNamed) {
  Host.Config.Heading.Color[0] = 0;
  ExpectTheMistake("appearance: Heading.Color of Config is \"\"");
}

TEST_F(AppearanceCheck, ColoursThatTheApplicationReadsAreRight) {
  fake::CopyText(Host.Config.TitleColor, "0xff,0,255");
  fake::CopyText(Host.Config.FooterColor, " 1, 02 ,3 ");
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

TEST_F(AppearanceCheck, HexadecimalColourOutOfRangeIsNamed) {
  fake::CopyText(Host.Config.TitleColor, "0x100,0,0");
  ExpectTheMistake("appearance: TitleColor of Config is \"0x100,0,0\"");
}

TEST_F(AppearanceCheck, BorderThatIsNotDrawnNeedsNoColour) {
  Host.Config.Filter.BorderWidth = 0;
  Host.Config.Filter.BorderColor[0] = 0;
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

TEST_F(AppearanceCheck, BorderThatIsDrawnNeedsAColour) {
  Host.Config.FocusFilter.BorderColor[0] = 0;
  ExpectTheMistake("appearance: FocusFilter.BorderColor of Config is \"\"");
}

TEST_F(AppearanceCheck, UnknownLogoIsAWarning) {
  Host.Config.Logo = 3;
  ExpectTheWarning("appearance: Logo of Config is 3, which shows logo A.");
}

TEST_F(AppearanceCheck, HostWithoutALogoIsRight) {
  Host.Config.Logo = OBV_LOGO_NONE;
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Warnings(), Lines{});
}

TEST_F(AppearanceCheck, UnknownMarkerIsNamed) {
  Host.Config.MarkerTheme = 3;
  ExpectTheMistake("appearance: MarkerTheme of Config is 3");
}

// The reference host fills it anew for each view, with what the user chose.
TEST_F(AppearanceCheck, RecordThatTheIntakeFillsIsLookedAtAfterIt) {
  OBV_CONFIG filled = Host.Config;
  Host.Config = {};
  Host.OnFinishParse = [this, filled]() -> EFI_STATUS {
    Host.Config = filled;
    return EFI_SUCCESS;
  };
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

}  // namespace
}  // namespace hostcheck
