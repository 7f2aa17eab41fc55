// A visit that lasts hours on the machine's clock, with somebody at it all the time: the pool is at
// the end of each round as it was at the end of the first, to the byte. BOARDSCOPE_HOURS says how
// long; script/soak stays for a day.

#include <cstdlib>
#include <iostream>

#include "test/unit/stage/ObjectLooks.h"
#include "test/unit/stage/WholeRun.h"

#include "app/base/Run.h"
#include "capture/MessageBox.h"
#include "view/ViewState.h"

namespace {

// The view refreshes every 2 s; between two refreshes little happens, in few turns.
constexpr uint64_t kTurnMilliseconds = 250;
constexpr int kTurnsPerRefresh = 8;
constexpr int kRoundsPerHour = 20;
constexpr int kRefreshesPerRound = 3600 / 2 / kRoundsPerHour;
constexpr int kTurnsPerRound = kRefreshesPerRound * kTurnsPerRefresh;
// Keys of the first 200 ms are dropped.
constexpr int kFirstTurn = 10;

int Hours() {
  const char *text = std::getenv("BOARDSCOPE_HOURS");
  return text != nullptr ? std::atoi(text) : 1;
}

class LongVisit : public WholeRun {
 protected:
  /// What happens in one turn of a round; nothing in most.
  void Act(int turn) {
    int refresh = turn / kTurnsPerRefresh;
    if (turn % kTurnsPerRefresh != 0) {
      return;
    }
    if (refresh < kHovers) {
      Hover(refresh);
    } else if (refresh < kHovers + kCategories) {
      Machine.Keyboard.Scan(SCAN_INSERT);
    } else {
      Plug(refresh - kHovers - kCategories);
    }
  }
  void Check(int round) {
    // Later than everything that is allocated at its first use.
    constexpr int kFirst = 1;
    uint64_t bytes = Machine.Pool.LiveBytes();
    if (round == kFirst) {
      first_ = bytes;
    } else if (round > kFirst && bytes != first_) {
      ADD_FAILURE() << "round " << round << " ends with " << bytes << " bytes, not " << first_;
      gRun.ExitRequested = true;
    }
  }

  uint64_t Saved = 0, Hovers = 0, Plugs = 0;

 private:
  static constexpr int kHovers = 30;
  // Through all filters and back to none.
  static constexpr int kCategories = kCategoryCount;

  // The last one has the same place in every round.
  void Hover(int number) {
    size_t component = static_cast<size_t>(number) % Host.Components.size();
    Place place = PlaceOf(gView.Components[component].Callout);
    Machine.Tablet()->MoveTo(static_cast<UINT64>(place.X + place.Width / 2),
                             static_cast<UINT64>(place.Y + place.Height / 2), 0);
    Hovers++;
  }
  void Plug(int step) {
    switch (step) {
      case 0:
        stick_ = &Machine.AddVolume();
        Plugs++;
        break;
      case 2:
        Machine.Keyboard.Scan(SCAN_F12);
        break;
      // The stick, then what the box tells.
      case 4:
      case 6:
        EXPECT_TRUE(gMessageBox.ModalMessageBoxOpen);
        Machine.Keyboard.Character(u'\r');
        break;
      case 8:
        EXPECT_FALSE(gMessageBox.ModalMessageBoxOpen);
        Saved += stick_->RootNames().size();
        Machine.RemoveVolume(*stick_);
        // It stays with the machine, to be looked at.
        stick_->Root().Entries.clear();
        Plugs++;
        break;
      case 10:
        ComeBack(Machine.Output(1));
        break;
      case 12:
        Machine.RemoveOutput(Machine.Output(1));
        Plugs++;
        break;
      default:
        break;
    }
  }
  void ComeBack(fake::GraphicsOutput &output) {
    if (output.Removed) {
      output.Removed = false;
      output.Handle = Machine.Install(fake::kDevicePathGuid, output.Path.Get());
      Machine.Install(fake::kGraphicsOutputGuid, output.Protocol(), output.Handle);
      Plugs++;
    }
  }

  fake::Volume *stick_ = nullptr;
  uint64_t first_ = 0;
};

TEST_F(LongVisit, KeepsThePoolAsItIs) {
  int rounds = Hours() * kRoundsPerHour;
  AddSetupScreen({{1024, 768}});
  AddSetupScreen({{1024, 768}});
  Machine.AddSimplePointer();
  Machine.AddAbsolutePointer({0, 0, 1023, 767});
  Host.Install();
  Machine.Calls.RecordAll(false);
  fake::RunOptions options;
  options.EscapeAtTurn = 0;
  options.StepPerTurn = kTurnMilliseconds;
  options.MostTurns = kFirstTurn + rounds * kTurnsPerRound;
  options.EveryTurn = [&](int turn) {
    int now = turn - kFirstTurn;
    if (now > 0 && now % kTurnsPerRound == 0) {
      Check(now / kTurnsPerRound - 1);
      Host.Log.clear();
    }
    if (now == rounds * kTurnsPerRound) {
      gRun.ExitRequested = true;
    } else if (now >= 0) {
      Act(now % kTurnsPerRound);
    }
  };
  uint64_t before = Machine.Pool.LiveBytes();
  fake::RunResult result = Run(options);
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_EQ(result.Turns, options.MostTurns);
  EXPECT_EQ(Saved, static_cast<uint64_t>(rounds));
  EXPECT_EQ(Machine.Pool.LiveBytes(), before);
  EXPECT_TRUE(SetupScreenIsBack());
  std::cout << rounds * kRefreshesPerRound << " refreshes, " << Hovers << " hovers, " << Saved
            << " screenshots, " << Plugs << " plugs and unplugs\n";
}

}  // namespace
