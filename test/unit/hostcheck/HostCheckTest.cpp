// The check as a whole: a host without a mistake, none at all, what stands in each other's way, and
// what is given back.

#include "test/unit/hostcheck/HostCheckStage.h"

namespace hostcheck {
namespace {

class HostCheck : public HostCheckStage {};

TEST_F(HostCheck, FindsNothingInAHostWithoutAMistake) {
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Warnings(), Lines{});
  EXPECT_EQ(Printed(),
            (Lines{"ok   slots", "ok   clock", "ok   output", "ok   picture", "ok   texts",
                   "ok   components", "ok   shared state", "ok   appearance", "ok   font files",
                   "ok   font choices", "ok   places", "ok   status", "ok   second parse", "",
                   "0 mistakes, 0 warnings"}));
}

TEST_F(HostCheck, SaysThatThereIsNoHost) {
  EXPECT_EQ(CheckAsItIs(), EFI_NOT_FOUND);
  ASSERT_EQ(Mistakes().size(), 1u);
  EXPECT_TRUE(Mistakes()[0].starts_with("host: no driver has installed OBV_PROTOCOL: Not Found."));
}

TEST_F(HostCheck, DrawsNothingAndChangesNoMode) {
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::GopBlt), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::GopSetMode), 0u);
}

TEST_F(HostCheck, LeavesTheSharedStateAsItWas) {
  Host.State.FocusIndex = 3;
  Host.State.UiStateSaved = 1;
  Host.State.PointerX = 77;
  Host.Install();
  Host.State.ComponentCount = static_cast<UINT16>(Host.Components.size());
  OBV_SHARED_STATE before = Host.State;
  EXPECT_EQ(CheckAsItIs(), EFI_SUCCESS);
  EXPECT_EQ(std::memcmp(&before, &Host.State, sizeof before), 0);
}

TEST_F(HostCheck, EndsEachIntakeAsTheApplicationDoes) {
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostFinishParse),
            Machine.Calls.CountOf(fake::Service::HostParseComponents));
}

TEST_F(HostCheck, CallsNeitherTheSearchNorTheHooks) {
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostFindBiosOption), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostAfterAppLife), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::HostUnsupportedResolution), 0u);
}

TEST_F(HostCheck, HostThatMayHaveEmptySlotsHasNoMistake) {
  Host.Protocol().DebugPrint = nullptr;
  Host.Protocol().FindBiosOption = nullptr;
  Host.Protocol().AfterAppLife = nullptr;
  Host.Protocol().UnsupportedResolution = nullptr;
  Host.Protocol().Unused6 = nullptr;
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Warnings(), Lines{});
}

TEST_F(HostCheck, WhatBuildsOnAMistakeIsLeftOutAndNamesIt) {
  Host.OnGetResourceData = [](VOID **, UINTN *) -> EFI_STATUS { return EFI_NOT_FOUND; };
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_EQ(Result().Mistakes, 1u);
  EXPECT_EQ(Findings(Verdict::kLeftOut, "components"),
            Lines{"components: not looked at until \"picture\" is right."});
  EXPECT_EQ(Findings(Verdict::kLeftOut, "places"),
            Lines{"places: not looked at until \"picture\" is right."});
  EXPECT_EQ(GradeOf("second parse"), Verdict::kLeftOut);
  EXPECT_EQ(GradeOf("texts"), Verdict::kGood);
  EXPECT_EQ(GradeOf("font choices"), Verdict::kGood);
}

TEST_F(HostCheck, PrintsWhatItLeavesOut) {
  Host.Protocol().GetFontData = nullptr;
  EXPECT_EQ(Check(), EFI_ABORTED);
  Lines printed = Printed();
  EXPECT_EQ(std::count(printed.begin(), printed.end(), "skip font files"), 1);
  EXPECT_EQ(std::count(printed.begin(), printed.end(),
                       "skip font choices: not looked at until \"slots\" is right."),
            1);
}

TEST_F(HostCheck, PrintsWordsThatAreTooLongForALineInPieces) {
  auto report = std::make_unique<Report>();
  BeginPoint(report.get(), "point");
  Warn(report.get(), "%a", std::string(200, 'x').c_str());
  Lines lines;
  WriteReport(
      *report,
      [](void *context, const CHAR8 *line) { static_cast<Lines *>(context)->push_back(line); },
      &lines);
  EXPECT_EQ(lines, (Lines{"warn point", "", "warn point:", "     " + std::string(74, 'x'),
                          "     " + std::string(74, 'x'), "     " + std::string(52, 'x'),
                          "0 mistakes, 1 warning"}));
}

TEST_F(HostCheck, PrintsWhatIsWrongBelowThePointsInLinesThatFit) {
  Host.Config.Logo = 3;
  Host.Components[0].Type = 12;
  EXPECT_EQ(Check(), EFI_ABORTED);
  Lines printed = Printed();
  for (const std::string &line : printed) {
    EXPECT_LE(line.size(), 79u);
  }
  printed.erase(printed.begin(), std::find(printed.begin(), printed.end(), ""));
  EXPECT_EQ(
      printed,
      (Lines{"", "BAD  components: component 0, \"CPU\", has type 12, which no filter shows. Write",
             "     OBV_TYPE_*, 0 to 9.",
             "warn appearance: Logo of Config is 3, which shows logo A. Write OBV_LOGO_*.",
             "1 mistake, 1 warning"}));
}

}  // namespace
}  // namespace hostcheck
