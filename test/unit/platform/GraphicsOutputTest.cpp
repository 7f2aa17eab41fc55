// Listing outputs, finding and setting their modes, blanking them.

#include "test/unit/stage/OutputStage.h"

namespace {

using fake::Service;
using fake::VideoMode;
class GraphicsOutput : public OutputStage {};

TEST_F(GraphicsOutput, OutputsAreListedInHandleOrder) {
  auto *first = Machine.AddOutput({{8, 8}}).Protocol();
  auto *second = Machine.AddOutput({{8, 8}}).Protocol();
  auto *third = Machine.AddOutput({{8, 8}}).Protocol();
  EXPECT_EQ(List(), (std::vector{first, second, third}));
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(GraphicsOutput, AnOutputThatRefusesLeavesNoGap) {
  auto *first = Machine.AddOutput({{8, 8}}).Protocol();
  Machine.AddOutput({{8, 8}});
  auto *third = Machine.AddOutput({{8, 8}}).Protocol();
  Machine.FailCall(Service::HandleProtocol, 2, EFI_UNSUPPORTED);
  EXPECT_EQ(List(), (std::vector{first, third}));
  EXPECT_EQ(Log(), LogLines{});
}

TEST_F(GraphicsOutput, ALastOutputThatRefusesFailsTheEnumerationUnlogged) {
  auto *first = Machine.AddOutput({{8, 8}}).Protocol();
  Machine.AddOutput({{8, 8}});
  RefuseLastOutput();
  EXPECT_EQ(List(EFI_ACCESS_DENIED), std::vector{first});
  EXPECT_EQ(Log(), LogLines{});
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(GraphicsOutput, WithoutOutputsTheSearchFailsAndIsLogged) {
  EXPECT_TRUE(List(EFI_NOT_FOUND).empty());
  EXPECT_EQ(Log(), LogLines{Error(Occurs("GetAllGopPrrotocol", "Not Found"))});
}

TEST_F(GraphicsOutput, Of257OutputsTheFirst256AreHandled) {
  for (int i = 0; i < 257; i++) {
    Machine.AddOutput({{1, 1}, {2, 1}}).Paint([](UINT32, UINT32) { return 0xFFFFFF; });
  }
  EXPECT_EQ(List().size(), 256u);
  EXPECT_EQ(SetAllGopMode(1, 2), EFI_SUCCESS);
  EXPECT_EQ(Machine.Output(255).ModeNumber(), 1u);
  EXPECT_EQ(Machine.Output(256).ModeNumber(), 0u);
  EXPECT_EQ(ClearAllScreen(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Output(255).Pixel(0, 0), 0u);
  EXPECT_EQ(Machine.Output(256).Pixel(0, 0), 0xFFFFFFu);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HandleProtocol), 3u * 257);
}

TEST_F(GraphicsOutput, TheLowerOfTwoModesOfOneSizeIsFound) {
  auto *gop = Machine.AddOutput({{8, 8}, {16, 12}, {16, 12}}).Protocol();
  EXPECT_EQ(FindGopMode(gop, 12, 16), 1u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::GopQueryMode), 2u);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(GraphicsOutput, ASizeWithoutAModeIsNotFound) {
  auto *gop = Machine.AddOutput({{16, 12}, {16, 13}, {17, 12}}).Protocol();
  EXPECT_EQ(FindGopMode(gop, 13, 17), 0xFFFFFFFFu);
  EXPECT_EQ(FindGopMode(gop, 16, 12), 0xFFFFFFFFu);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(GraphicsOutput, SizesAreComparedWithAllTheirBits) {
  auto &output = Machine.AddOutput({{16, 12}});
  output.SetModes({{0x10010, 12}, {16, 0x1000C}});
  EXPECT_EQ(FindGopMode(output.Protocol(), 12, 16), 0xFFFFFFFFu);
}

TEST_F(GraphicsOutput, AModeThatCannotBeQueriedDoesNotMatch) {
  VideoMode broken = {16, 12};
  broken.QueryStatus = EFI_DEVICE_ERROR;
  auto *gop = Machine.AddOutput({{8, 8}, broken, {16, 12}}).Protocol();
  EXPECT_EQ(FindGopMode(gop, 12, 16), 2u);
  auto *other = Machine.AddOutput({{8, 8}, broken}).Protocol();
  EXPECT_EQ(FindGopMode(other, 12, 16), 0xFFFFFFFFu);
}

TEST_F(GraphicsOutput, AModeWithoutInformationDoesNotMatch) {
  auto *gop = Machine.AddOutput({{16, 12}}).Protocol();
  gop->QueryMode = [](EFI_GRAPHICS_OUTPUT_PROTOCOL *, UINT32, UINTN *size,
                      EFI_GRAPHICS_OUTPUT_MODE_INFORMATION **info) EFIAPI -> EFI_STATUS {
    *size = 0;
    *info = nullptr;
    return EFI_SUCCESS;
  };
  EXPECT_EQ(FindGopMode(gop, 12, 16), 0xFFFFFFFFu);
}

TEST_F(GraphicsOutput, OnlyOutputsWithTheModeAreSwitched) {
  auto &lacking = Machine.AddOutput({{8, 8}});
  auto &having = Machine.AddOutput({{8, 8}, {16, 12}});
  EXPECT_EQ(SetAllGopMode(12, 16), EFI_SUCCESS);
  EXPECT_EQ(lacking.ModeNumber(), 0u);
  EXPECT_EQ(having.ModeNumber(), 1u);
  EXPECT_EQ(Calls(), Lines{"Gop.SetMode(gop1, 1) = Success"});
}

TEST_F(GraphicsOutput, AnOutputInTheModeIsNotSwitched) {
  Machine.AddOutput({{8, 8}, {16, 12}}, 1);
  EXPECT_EQ(SetAllGopMode(12, 16), EFI_SUCCESS);
  EXPECT_EQ(Calls(), Lines{});
}

TEST_F(GraphicsOutput, AnOutputThatRefusesItsModeDoesNotStopTheOthers) {
  VideoMode refused = {16, 12};
  refused.SetStatus = EFI_DEVICE_ERROR;
  Machine.AddOutput({{8, 8}, refused});
  auto &second = Machine.AddOutput({{8, 8}, {16, 12}});
  EXPECT_EQ(SetAllGopMode(12, 16), EFI_SUCCESS);
  EXPECT_EQ(second.ModeNumber(), 1u);
  EXPECT_EQ(Log(), LogLines{});
}

TEST_F(GraphicsOutput, WithoutOutputsEachOperationLogsItsNameToo) {
  SaveScreen(8, 8, 0);
  EXPECT_EQ(SetAllGopMode(8, 8), EFI_NOT_FOUND);
  EXPECT_EQ(Log(), NoOutput("SetAllGopMode"));
  Log().clear();
  EXPECT_EQ(ClearAllScreen(), EFI_NOT_FOUND);
  EXPECT_EQ(Log(), NoOutput("ClearAllScreen"));
  Log().clear();
  EXPECT_EQ(RecoverScreenContent(8, 8), EFI_NOT_FOUND);
  EXPECT_EQ(Log(), NoOutput("RecoverScreenContent"));
}

TEST_F(GraphicsOutput, ALastOutputThatRefusesKeepsEachOperationFromActing) {
  gHost.Gop = Machine.AddOutput({{8, 8}, {16, 12}}).Protocol();
  Machine.AddOutput({{8, 8}, {16, 12}});
  SaveScreen(8, 8, 0x123456);
  RefuseLastOutput();
  EXPECT_EQ(SetAllGopMode(12, 16), EFI_ACCESS_DENIED);
  RefuseLastOutput();
  EXPECT_EQ(ClearAllScreen(), EFI_ACCESS_DENIED);
  RefuseLastOutput();
  EXPECT_EQ(RecoverScreenContent(8, 8), EFI_ACCESS_DENIED);
  EXPECT_EQ(Log(), (LogLines{Error(Occurs("SetAllGopMode", "Access Denied")),
                             Error(Occurs("ClearAllScreen", "Access Denied")),
                             Error(Occurs("RecoverScreenContent", "Access Denied"))}));
  EXPECT_EQ(Calls(), Lines{});
}

TEST_F(GraphicsOutput, ClearingBlackensEveryOutputWithOneFill) {
  for (VideoMode mode : {VideoMode{5, 3}, VideoMode{7, 2}}) {
    Machine.AddOutput({mode}).Paint([](UINT32, UINT32) { return 0xFFFFFF; });
  }
  Machine.FailCall(Service::GopBlt, 1, EFI_DEVICE_ERROR);
  EXPECT_EQ(ClearAllScreen(), EFI_SUCCESS);
  EXPECT_EQ(Calls(), (Lines{"Gop.Blt(gop0, VideoFill, 0, 0, 0, 0, 5, 3, 0) = Device Error",
                            "Gop.Blt(gop1, VideoFill, 0, 0, 0, 0, 7, 2, 0) = Success"}));
  EXPECT_TRUE(IsAll(Machine.Output(1), 0));
}

TEST_F(GraphicsOutput, WithoutAHostNothingIsLogged) {
  gHost.Protocol = nullptr;
  EXPECT_EQ(ClearAllScreen(), EFI_NOT_FOUND);
  EXPECT_EQ(SetAllGopMode(1, 1), EFI_NOT_FOUND);
  EXPECT_EQ(Log(), LogLines{});
}

}  // namespace
