// The stick is pulled out, or the power goes, while a picture of the screen is being saved to it.

#include <gtest/gtest.h>

#include "test/unit/run/SaveCases.h"

namespace {

using fake::Service;

constexpr Service kTouchingTheStick[] = {Service::LocateHandleBuffer, Service::HandleProtocol,
                                         Service::FsOpenVolume,       Service::FileOpen,
                                         Service::FileGetInfo,        Service::FileWrite,
                                         Service::FileFlush,          Service::FileClose};

class LostStick : public SaveCases {
 protected:
  /// What a driver does about a stick that is gone.
  struct Driver {
    bool HandleLeaves;
    EFI_STATUS Status;
  };
  static constexpr Driver kDrivers[] = {{true, EFI_NO_MEDIA}, {false, EFI_DEVICE_ERROR}};

  static void Pull(SaveRun &run, fake::Firmware &machine, const Driver &driver) {
    run.Stick().RemovedStatus = driver.Status;
    if (driver.HandleLeaves) {
      machine.RemoveVolume(run.Stick());
    } else {
      run.Stick().Removed = true;
    }
  }
  uint64_t Blocks() const {
    return (Expected->Size + SaveRun::kBlockSize - 1) / SaveRun::kBlockSize;
  }
};

TEST_F(LostStick, BeforeAnyCallIsToldAsItIs) {
  struct Case {
    Service What;
    uint64_t Number;
    Driver How;
  };
  std::vector<Case> cases;
  for (Service service : kTouchingTheStick) {
    for (uint64_t n = 1; n <= CallsOf(service); n++) {
      for (const Driver &driver : kDrivers) {
        cases.push_back({service, n, driver});
      }
    }
  }
  TryEach(
      cases.size(),
      [&](SaveRun &run, fake::Firmware &machine, size_t i) {
        run.ExpectPulledStick();
        machine.At(cases[i].What, cases[i].Number, [&, i] { Pull(run, machine, cases[i].How); });
      },
      [&](size_t i) {
        return std::string("gone at ") + ServiceName(cases[i].What) + " call " +
               std::to_string(cases[i].Number);
      });
}

TEST_F(LostStick, AfterAnyBlockIsToldAsItIs) {
  ASSERT_GT(Blocks(), 3u);
  TryEach(
      2 * Blocks(),
      [&](SaveRun &run, fake::Firmware &machine, size_t i) {
        run.ExpectPulledStick();
        run.Stick().OnBlock = [&run, &machine, i, block = size_t{0}]() mutable {
          if (block++ == i / 2) {
            Pull(run, machine, kDrivers[i % 2]);
          }
        };
      },
      [&](size_t i) { return "gone after block " + std::to_string(i / 2 + 1); });
}

// What a power cut leaves is the stick as it is at that moment.
TEST_F(LostStick, APowerCutAfterAnyBlockHarmsNoOtherFile) {
  fake::Firmware machine;
  SaveRun run(machine, Expected);
  uint64_t blocks = 0;
  uint64_t sound = 0;
  run.Stick().OnBlock = [&] {
    blocks++;
    sound += run.StickIsSound() ? 1 : 0;
  };
  uint64_t calls = 0;
  for (Service service : kTouchingTheStick) {
    machine.Faults.AtEvery(service, [&] {
      calls++;
      sound += run.StickIsSound() ? 1 : 0;
    });
  }
  EXPECT_EQ(run.RunAndCheck(), 0);
  EXPECT_EQ(blocks, Blocks());
  EXPECT_EQ(sound, blocks + calls);
}

}  // namespace
