#include "test/picture/ReferenceRun.h"

namespace picture {

ReferenceRun::ReferenceRun() {
  // gtest shows it with a failure.
  OnLog = [](std::string_view line) { std::fwrite(line.data(), 1, line.size(), stdout); };
}

ReferenceRun::~ReferenceRun() { EXPECT_EQ(Machine.ProblemsText(), ""); }

void ReferenceRun::AddPointers() {
  Machine.AddSimplePointer();
  Machine.AddAbsolutePointer({0, 0, 1920, 1080});
}

void ReferenceRun::MoveTo(fake::RunOptions *options, int turn, uint32_t x, uint32_t y,
                          bool pressed) {
  options->At(turn, [=, this] { Machine.Tablet()->MoveTo(x, y, pressed ? 1 : 0); });
}

Screen ReferenceRun::Show(std::vector<fake::VideoMode> modes, const std::vector<uint8_t> &board,
                          fake::RunOptions options, int turns) {
  board_ = board;
  EXPECT_EQ(obv_host::UseBoard(&Host, "the test", board_.data(), board_.size()), EFI_SUCCESS);
  fake::GraphicsOutput &output = Machine.AddOutput(std::move(modes));
  Screen screen;
  options.At(turns, [&] { screen = board_view::ScreenOf(output); });
  options.EscapeAtTurn = turns + 1;
  EXPECT_EQ(fake::RunApplication(Machine, options).Status, EFI_SUCCESS);
  return screen;
}

}  // namespace picture
