// Random walks through the whole application. Their seeds are fixed, so that a commit passes or
// fails each time; script/soak walks from new ones. BOARDSCOPE_SEED and BOARDSCOPE_STEPS say where
// else to walk from and how far.

#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>

#include "test/unit/run/RandomWalk.h"

#include "app/base/Run.h"

namespace {

constexpr uint64_t kUsualSteps = 25000;
// Several walks, so that they run side by side; 100,000 events together. A test has the name of
// its seed.
constexpr uint64_t kSeeds[] = {0, 1, 2, 3};

uint64_t FromEnvironment(const char *name, uint64_t otherwise) {
  const char *text = std::getenv(name);
  return text != nullptr ? std::strtoull(text, nullptr, 0) : otherwise;
}

// Ends the process when the turn that begins now does not end. It counts processor time: a busy
// machine does not matter.
void LimitTurn() {
  constexpr time_t kSeconds = 60;
  std::signal(SIGVTALRM, [](int) {
    constexpr char kText[] = "A turn of the main loop does not end.\n";
    ssize_t written = write(STDERR_FILENO, kText, sizeof kText - 1);
    _exit(written > 0 ? 1 : 2);
  });
  itimerval limit = {{0, 0}, {kSeconds, 0}};
  setitimer(ITIMER_VIRTUAL, &limit, nullptr);
}

// A component that cannot be selected, and one that lies under another.
void AddOddComponents(fake::TestHost &host) {
  host.AddComponent(u"FIXED", OBV_TYPE_USB, 0x109, 300, 300).NotSelectable = 1;
  host.AddComponent(u"UNDER", OBV_TYPE_USB, 0x10A, 510, 310);
  host.AddComponent(u"FAN_2", OBV_TYPE_FAN, 0x10B, 800, 200);
}

class RandomWalks : public testing::TestWithParam<uint64_t> {};

TEST_P(RandomWalks, KeepTheRules) {
  uint64_t seed = FromEnvironment("BOARDSCOPE_SEED", GetParam());
  uint64_t steps = FromEnvironment("BOARDSCOPE_STEPS", kUsualSteps);
  std::cout << "BOARDSCOPE_SEED=" << seed << " BOARDSCOPE_STEPS=" << steps << std::endl;
  RecordProperty("seed", std::to_string(seed));

  fake::Firmware machine;
  machine.AddOutput({{1024, 768}});
  machine.AddSimplePointer();
  machine.AddAbsolutePointer({0, 0, 1023, 767});
  machine.Calls.RecordAll(false);
  fake::TestHost host(machine);
  AddOddComponents(host);
  host.Install();

  RandomWalk walk(machine, host, seed);
  fake::RunOptions options;
  options.EscapeAtTurn = 0;
  options.MostTurns = static_cast<int>(5 * steps + 1000);
  options.EveryTurn = [&](int turn) {
    LimitTurn();
    // Keys are dropped before.
    if (turn > 30) {
      walk.Turn();
    }
    if (walk.Steps() >= steps || !walk.Violation().empty()) {
      gRun.ExitRequested = true;
    }
  };
  fake::RunResult result = fake::RunApplication(machine, options);
  std::cout << walk.Statistics() << "  " << result.Turns << " turns\n";
  EXPECT_EQ(walk.Violation(), "") << walk.History();
  bool whole = walk.Violation().empty();
  if (whole) {
    EXPECT_EQ(walk.Steps(), steps);
  }
  if (whole && steps >= kUsualSteps) {
    EXPECT_EQ(walk.MissingOutcomes(), "");
  }
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_EQ(machine.Pool.LiveBlocks(), 0u);
  EXPECT_EQ(machine.ProblemsText(), "");
}

INSTANTIATE_TEST_SUITE_P(, RandomWalks, testing::ValuesIn(kSeeds));

}  // namespace
