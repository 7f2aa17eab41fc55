/** @file
  What an earlier visit left behind: the selection that the setup keeps, and the focus and the
  category in the host's record. The run goes on from where the view is restored.
**/

#include "test/fuzz/LateFork.h"

#include "test/firmware/Run.h"
#include "test/firmware/SetupEventHandler.h"
#include "test/firmware/TestHost.h"

#include "app/UiState.h"
#include "view/Categories.h"

// The symbols that the linker puts in the function's place.
void RestoreWithInput() asm("__wrap__Z14ReStoreUIStatev");
void RealRestore() asm("__real__Z14ReStoreUIStatev");

namespace {

constexpr int kLastTurn = 12;

fuzz::LateFork *gFork = nullptr;
fake::TestHost *gTestHost = nullptr;
fake::SetupEventHandler *gSetup = nullptr;

void TakeInput() {
  constexpr EFI_STATUS kStatuses[] = {EFI_SUCCESS, EFI_SUCCESS, EFI_SUCCESS, EFI_NOT_FOUND};
  fuzz::Reader input = gFork->Input();
  gTestHost->State.FocusIndex = input.Take<UINT16>();
  gTestHost->State.SelectedCategory = input.Take<UINT32>();
  UINT8 what = input.Byte();
  gSetup->Status = kStatuses[what % 4];
  // Most records have the form that is expected; the others say what they like.
  if (what / 4 % 8 == 7) {
    gSetup->Type = input.Take<UINT32>();
    gSetup->DataSize = input.Take<UINT32>();
  }
  gSetup->Data = input.Bytes(VELT_EVENT_DATA_SIZE);
}

bool IsCategory(UINT32 code) {
  return std::any_of(std::begin(kCategories), std::end(kCategories),
                     [=](const Category &category) { return category.Code == code; });
}

void Run(fuzz::LateFork *fork) {
  fake::Firmware machine;
  fuzz::Hasten(&machine);
  machine.AddOutput({{1024, 768}});
  machine.AddAbsolutePointer();
  fake::TestHost host(machine);
  fake::SetupEventHandler setup(machine);
  gFork = fork;
  gTestHost = &host;
  gSetup = &setup;
  host.LeaveFontsOut();
  host.Install();
  setup.Install();
  fake::RunOptions options;
  options.StepPerTurn = 60;
  options.EscapeAtTurn = kLastTurn;
  options.At(5, [&] { machine.Keyboard.Character(u'\t'); }).At(8, [&] {
    machine.Keyboard.Scan(SCAN_INSERT);
  });
  fuzz::Require(fake::RunApplication(machine, options).Status == EFI_SUCCESS, "the run succeeds");
  fuzz::Require(IsCategory(host.State.SelectedCategory), "the category that is kept exists");
  UINT16 focus = host.State.FocusIndex;
  fuzz::Require(
      focus <= host.State.ComponentCount || (focus > 100 && focus <= 100 + kCategoryCount),
      "the focus that is kept is on something");
  host.Uninstall();
  fuzz::Require(machine.Leftovers().empty(), machine.Leftovers().c_str());
  fuzz::LateFork::End();
}

}  // namespace

void RestoreWithInput() {
  if (gFork != nullptr) {
    TakeInput();
  }
  RealRestore();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static fuzz::LateFork fork(Run);
  fork.Try(data, size);
  return 0;
}
