// Slots that are empty, clocks that are none, outputs that are not there.

#include "test/unit/hostcheck/HostCheckStage.h"

namespace hostcheck {
namespace {

using fake::Service;

class SlotCheck : public HostCheckStage {};

TEST_F(SlotCheck, EmptyGetTimeIsNamedAndNotCalled) {
  Host.Protocol().GetTime = nullptr;
  ExpectTheMistake("slots: GetTime (offset 0x00) is NULL.");
  EXPECT_EQ(GradeOf("clock"), Verdict::kLeftOut);
  EXPECT_EQ(GradeOf("status"), Verdict::kLeftOut);
  EXPECT_EQ(GradeOf("components"), Verdict::kGood);
}

TEST_F(SlotCheck, EmptyQueryComponentStatusIsNamedAndNotCalled) {
  Host.Protocol().QueryComponentStatus = nullptr;
  ExpectTheMistake("slots: QueryComponentStatus (offset 0x38) is NULL.");
  EXPECT_EQ(GradeOf("components"), Verdict::kLeftOut);
  EXPECT_EQ(GradeOf("font choices"), Verdict::kGood);
}

TEST_F(SlotCheck, EmptyGetGopIsNamedThoughAnOutputIsThere) {
  Host.Protocol().GetGop = nullptr;
  ExpectTheMistake("slots: GetGop (offset 0x28) is NULL.");
}

TEST_F(SlotCheck, EmptyGetFontDataIsNamedAndNotCalled) {
  Host.Protocol().GetFontData = nullptr;
  ExpectTheMistake("slots: GetFontData (offset 0x20) is NULL.");
  EXPECT_EQ(GradeOf("font files"), Verdict::kLeftOut);
  EXPECT_EQ(GradeOf("font choices"), Verdict::kLeftOut);
  EXPECT_EQ(GradeOf("places"), Verdict::kGood);
}

TEST_F(SlotCheck, EmptySlotsOfTheIntakeAreNamedAndNotCalled) {
  Host.Protocol().ParseComponents = nullptr;
  Host.Protocol().FinishParse = nullptr;
  Host.Protocol().GetResourceData = nullptr;
  EXPECT_EQ(Check(), EFI_ABORTED);
  ASSERT_EQ(Mistakes("slots").size(), 3u);
  EXPECT_TRUE(Mistakes("slots")[0].starts_with("slots: ParseComponents (offset 0x08) is NULL."));
  EXPECT_TRUE(Mistakes("slots")[1].starts_with("slots: FinishParse (offset 0x10) is NULL."));
  EXPECT_TRUE(Mistakes("slots")[2].starts_with("slots: GetResourceData (offset 0x18) is NULL."));
}

TEST_F(SlotCheck, HostWithoutSharedStateIsNamed) {
  Host.Protocol().SharedState = nullptr;
  ExpectTheMistake("slots: SharedState (offset 0x78) is NULL.");
  EXPECT_EQ(GradeOf("texts"), Verdict::kLeftOut);
  EXPECT_EQ(GradeOf("shared state"), Verdict::kLeftOut);
  EXPECT_EQ(GradeOf("picture"), Verdict::kGood);
  EXPECT_EQ(GradeOf("font files"), Verdict::kGood);
}

/// Where no memory can be.
template <typename Pointer>
Pointer Nowhere() {
  return reinterpret_cast<Pointer>(UINTN{0xAFAFAFAFAFAFAFAF});
}

TEST_F(SlotCheck, SlotThatPointsNowhereIsNamedAndNotCalled) {
  Host.Protocol().FinishParse = Nowhere<OBV_FINISH_PARSE>();
  ExpectTheMistake(
      "slots: FinishParse (offset 0x10) is AFAFAFAFAFAFAFAF, where there is no memory.");
  EXPECT_EQ(GradeOf("components"), Verdict::kLeftOut);
}

TEST_F(SlotCheck, LogThatPointsNowhereIsNamedAndStopsTheCheck) {
  Host.Protocol().DebugPrint = Nowhere<OBV_DEBUG_PRINT>();
  ExpectTheMistake(
      "slots: DebugPrint (offset 0x48) is AFAFAFAFAFAFAFAF, where there is no memory.");
  EXPECT_EQ(GradeOf("clock"), Verdict::kLeftOut);
  EXPECT_EQ(GradeOf("second parse"), Verdict::kLeftOut);
}

TEST_F(SlotCheck, SharedStateThatPointsNowhereIsNamed) {
  Host.Protocol().SharedState = Nowhere<OBV_SHARED_STATE *>();
  ExpectTheMistake(
      "slots: SharedState (offset 0x78) is AFAFAFAFAFAFAFAF, where there is no memory.");
  EXPECT_EQ(GradeOf("texts"), Verdict::kLeftOut);
}

class ClockCheck : public HostCheckStage {
 protected:
  /// A clock that counts so many steps in a millisecond.
  void Count(double steps) {
    Host.OnGetTime = [this, steps] {
      return static_cast<UINT64>(static_cast<double>(Machine.Clock.Milliseconds()) * steps);
    };
  }
};

TEST_F(ClockCheck, ClockThatStandsStillIsNamedAfterLittleMoreThanASecond) {
  Host.OnGetTime = [] { return UINT64{4711}; };
  uint64_t start = Machine.Clock.Milliseconds();
  ExpectTheMistake("clock: GetTime stands still at 4711.");
  EXPECT_LT(Machine.Clock.Milliseconds() - start, 2000u);
  EXPECT_EQ(GradeOf("status"), Verdict::kLeftOut);
}

TEST_F(ClockCheck, ClockOfSecondsIsNamed) {
  Count(0.001);
  ExpectTheMistake("clock: GetTime counted 0 in 100 ms. Return milliseconds.");
}

TEST_F(ClockCheck, ClockOfMicrosecondsIsNamed) {
  Count(1000);
  ExpectTheMistake("clock: GetTime counted 100000 in 100 ms. Return milliseconds.");
}

TEST_F(ClockCheck, ClockThatGoesBackIsNamed) {
  Host.OnGetTime = [this] { return 1000000 - Machine.Clock.Milliseconds(); };
  ExpectTheMistake("clock: GetTime went back from ");
}

// Emulators stall for longer than they are told.
TEST_F(ClockCheck, ClockThatIsSomewhatFastOrSlowIsNot) {
  Count(4.9);
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

class OutputCheck : public HostCheckStage {};

TEST_F(OutputCheck, GetGopIsAskedWhereTheSharedStateNamesNone) {
  Host.Install();
  Host.State.Gop = nullptr;
  EXPECT_EQ(CheckAsItIs(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostGetGop), 1u);
}

TEST_F(OutputCheck, GetGopThatFailsIsNamed) {
  Host.OnGetGop = [](EFI_GRAPHICS_OUTPUT_PROTOCOL **) -> EFI_STATUS { return EFI_UNSUPPORTED; };
  Host.Install();
  Host.State.Gop = nullptr;
  EXPECT_EQ(CheckAsItIs(), EFI_ABORTED);
  ASSERT_EQ(Mistakes().size(), 1u);
  EXPECT_TRUE(Mistakes()[0].starts_with("output: GetGop answers Unsupported."));
}

TEST_F(OutputCheck, GetGopWithoutAnOutputIsNamed) {
  Host.OnGetGop = [](EFI_GRAPHICS_OUTPUT_PROTOCOL **) -> EFI_STATUS { return EFI_SUCCESS; };
  Host.Install();
  Host.State.Gop = nullptr;
  EXPECT_EQ(CheckAsItIs(), EFI_ABORTED);
  ASSERT_EQ(Mistakes().size(), 1u);
  EXPECT_TRUE(Mistakes()[0].starts_with("output: GetGop answers Success without an output."));
}

TEST_F(OutputCheck, OutputWithoutAModeIsNamed) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL blind = {};
  Host.State.Gop = &blind;
  ExpectTheMistake("output: the output to draw on has no Mode");
}

TEST_F(OutputCheck, OutputThatPointsNowhereIsNamed) {
  Host.State.Gop = Nowhere<EFI_GRAPHICS_OUTPUT_PROTOCOL *>();
  ExpectTheMistake("output: the output to draw on has no Mode");
}

TEST_F(OutputCheck, OutputWithoutAModesInformationIsNamed) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL_MODE mode = {};
  EFI_GRAPHICS_OUTPUT_PROTOCOL blind = {};
  blind.Mode = &mode;
  Host.State.Gop = &blind;
  ExpectTheMistake("output: the output to draw on has no Mode");
}

}  // namespace
}  // namespace hostcheck
