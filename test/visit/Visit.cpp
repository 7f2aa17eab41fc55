// One whole visit to the view: hovering, panels, the filter, a screenshot, the end. A program of
// its own, for builds without sanitizers: script/test valgrind runs it under memcheck, and here the
// stack has the very size that firmware promises.

#include <cstdio>

#include "test/firmware/Run.h"
#include "test/firmware/Stack.h"
#include "test/firmware/TestHost.h"

#include "capture/MessageBox.h"
#include "view/ViewState.h"

namespace {

bool failed = false;

void Check(bool good, const char *complaint) {
  if (!good) {
    std::printf("%s\n", complaint);
    failed = true;
  }
}

/// A turn for each thing that the user does, and some for the view to answer.
class User {
 public:
  explicit User(fake::Firmware &machine) : machine_(machine) { options_.EscapeAtTurn = 0; }

  void Then(std::function<void()> action) {
    constexpr int kTurns = 6;
    options_.At(turn_, std::move(action));
    turn_ += kTurns;
  }
  void ThenScan(UINT16 key) {
    Then([this, key] { machine_.Keyboard.Scan(key); });
  }
  void ThenEnter() {
    Then([this] { machine_.Keyboard.Character(u'\r'); });
  }
  void ThenPoint(UINT64 x, UINT64 y, UINT32 buttons = 0) {
    Then([=, this] { machine_.Tablet()->MoveTo(x, y, buttons); });
  }
  const fake::RunOptions &Options() const { return options_; }

 private:
  fake::Firmware &machine_;
  fake::RunOptions options_;
  // Keys of the first 200 ms are dropped.
  int turn_ = 30;
};

void PlanVisit(User &user, fake::Firmware &machine) {
  for (UINT64 x = 100; x < 1024; x += 150) {
    user.ThenPoint(x, 400);
  }
  user.Then([] { lv_group_focus_obj(gView.Components[0].Callout); });
  for (int category = 0; category < 7; category++) {
    user.ThenScan(SCAN_INSERT);
  }
  user.ThenScan(SCAN_PAGE_DOWN);
  user.Then([&machine] { machine.Clock.Advance(2000); });
  user.Then([&machine] { machine.AddOutput({{1024, 768}}); });
  user.ThenScan(SCAN_F12);
  user.Then([] { Check(gMessageBox.ModalMessageBoxOpen, "F12 opens no box"); });
  user.ThenEnter();
  user.Then([] { Check(gMessageBox.ModalMessageBoxOpen, "the outcome is not told"); });
  user.ThenEnter();
  user.ThenPoint(1000, 20, 1);
  user.ThenPoint(1000, 700, 0);
  user.ThenScan(SCAN_ESC);
}

}  // namespace

int main() {
  fake::Firmware machine;
  // Memory that is not written must count as such.
  machine.Pool.Poison = false;
  fake::GraphicsOutput &output = machine.AddOutput({{1024, 768}});
  output.Paint([](UINT32 x, UINT32 y) { return (x * 77 + y * 1311) & 0xFFFFFF; });
  std::vector<UINT32> setup = output.Picture();
  machine.AddSimplePointer();
  machine.AddAbsolutePointer({0, 0, 1023, 767});
  fake::Volume &stick = machine.AddVolume();
  fake::TestHost host(machine);
  host.Install();

  User user(machine);
  PlanVisit(user, machine);
  fake::RunResult result = fake::RunApplication(machine, user.Options());
  std::printf("%zu of %zu bytes of stack used, %llu bytes of pool at most, in %d turns\n",
              result.StackUsed, fake::kStackSize,
              static_cast<unsigned long long>(machine.Pool.PeakBytes()), result.Turns);
  Check(result.Status == EFI_SUCCESS, "the visit fails");
  Check(stick.RootNames().size() == 1, "no screenshot was saved");
  Check(output.Picture() == setup, "the setup screen is not back");
  std::string leftovers = machine.Leftovers();
  Check(leftovers.empty(), leftovers.c_str());
  return failed ? 1 : 0;
}
