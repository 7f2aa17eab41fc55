// A function that finds the stack damaged when it returns: the run ends there, and the setup gets
// its screen back.

#include <algorithm>

#include "test/unit/stage/WholeRun.h"

// The compiler's own: what guarded functions compare with.
extern "C" UINTN __stack_chk_guard;

namespace {

using fake::Service;

constexpr char kDamaged[] = "[OBV] The stack is damaged\n";

class DamagedStack : public WholeRun {
 protected:
  DamagedStack() { LeaveFontsOut(); }

  /// As if what stands on the stack had changed: every function that is under way and guarded finds
  /// another value than it put there.
  static void Damage() { __stack_chk_guard ^= 0x100; }

  size_t DamageReports() const {
    Lines errors = Errors();
    return static_cast<size_t>(std::count(errors.begin(), errors.end(), kDamaged));
  }
  void ExpectAnOrderlyEnd(EFI_STATUS status) {
    EXPECT_EQ(status, EFI_COMPROMISED_DATA);
    EXPECT_EQ(DamageReports(), 1u);
    EXPECT_TRUE(SetupScreenIsBack());
    EXPECT_EQ(Machine.Calls.CountOf(Service::Exit), 1u);
    EXPECT_EQ(Machine.Calls.CountOf(Service::HostAfterAppLife), 1u);
    EXPECT_EQ(Machine.Leftovers(), "");
  }
};

TEST_F(DamagedStack, EndsTheRunWithTheSetupScreenBack) {
  Install({{1280, 1024}, {1920, 1080}});
  fake::RunOptions options;
  options.At(5, [this] {
    // Asked in each refresh, by functions with texts on their stack.
    Host.OnQueryComponentStatus = [damaged = false](auto &&...) mutable {
      // A second time would undo it.
      if (!damaged) {
        Damage();
      }
      damaged = true;
      return EFI_SUCCESS;
    };
    Machine.Clock.Advance(3000);
  });
  fake::RunResult result = Run(options);
  EXPECT_GE(result.Turns, 5);
  ExpectAnOrderlyEnd(result.Status);
}

TEST_F(DamagedStack, BeforeTheScreenIsTouchedLeavesItAlone) {
  Install({{1280, 1024}, {1920, 1080}});
  Host.OnParseComponents = [](auto &&...) {
    Damage();
    return EFI_SUCCESS;
  };
  ExpectAnOrderlyEnd(Run().Status);
  EXPECT_EQ(Machine.Calls.CountOf(Service::GopSetMode), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::GopBlt), 0u);
}

TEST_F(DamagedStack, AJumpThatWasAskedForIsNotMade) {
  Install({{1280, 1024}, {1920, 1080}});
  fake::RunOptions options;
  options.At(5, [this] {
    Host.State.JumpRequested = 1;
    Damage();
    gRun.ExitRequested = true;
  });
  ExpectAnOrderlyEnd(Run(options).Status);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostFindBiosOption), 0u);
  EXPECT_EQ(Host.State.JumpRequested, 0);
}

TEST_F(DamagedStack, EachRunHasAValueOfItsOwn) {
  UINTN initial = __stack_chk_guard;
  Install();
  Run(OneTurn());
  EXPECT_NE(__stack_chk_guard, initial);
  EXPECT_EQ(__stack_chk_guard & 0xFF, 0u) << "a text could bring the value along";
}

}  // namespace
