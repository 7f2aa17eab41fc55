// Before EDK2's headers, which would hide the function.
#include <setjmp.h>

#include "test/firmware/Run.h"

#include <unistd.h>
#include <cstdio>

#include "test/firmware/Stack.h"

// The image's own entry and what EDK2 generates for it.
extern "C" {
EFI_STATUS EFIAPI _ModuleEntryPoint(EFI_HANDLE image, EFI_SYSTEM_TABLE *table);
VOID EFIAPI ProcessLibraryConstructorList(EFI_HANDLE image, EFI_SYSTEM_TABLE *table);
}

namespace fake {

namespace {

// Counts main-loop turns by the looks at the host's clock. The loop begins after the hot-plug
// event was created and ends when it is closed; the first look in between is the end of the
// start-up, all others are turns.
class TurnCounter {
 public:
  TurnCounter(Firmware &firmware, const RunOptions &options)
      : firmware_(firmware),
        options_(options),
        created_(Created()),
        closed_(firmware.Calls.CountOf(Service::CloseEvent)) {}

  void Look() {
    bool inLoop = Created() > created_ && firmware_.Calls.CountOf(Service::CloseEvent) == closed_;
    if (inLoop && started_) {
      Turn();
    }
    started_ = inLoop;
  }
  int Turns() const { return turns_; }

 private:
  uint64_t Created() const { return firmware_.Calls.CountOf(Service::CreateEvent); }

  void Turn() {
    turns_++;
    auto found = options_.AtTurn.find(turns_);
    if (found != options_.AtTurn.end()) {
      for (const std::function<void()> &action : found->second) {
        action();
      }
    }
    if (options_.EveryTurn) {
      options_.EveryTurn(turns_);
    }
    if (turns_ == options_.EscapeAtTurn) {
      firmware_.Keyboard.Scan(SCAN_ESC);
    }
    if (turns_ > options_.MostTurns) {
      std::fprintf(stderr, "The application did not end within %d turns\n", options_.MostTurns);
      std::fflush(nullptr);
      _exit(kRunawayExit);
    }
  }

  Firmware &firmware_;
  const RunOptions &options_;
  uint64_t created_;
  uint64_t closed_;
  bool started_ = false;
  int turns_ = 0;
};

/// Where Exit goes.
struct WayOut {
  bool Open;
  jmp_buf Place;
  EFI_STATUS Status;
};
WayOut gWayOut;

EFI_STATUS RunImage(Firmware &firmware) {
  if (setjmp(gWayOut.Place) == 0) {
    gWayOut.Open = true;
    gWayOut.Status = _ModuleEntryPoint(firmware.ImageHandle, &firmware.SystemTable);
  }
  gWayOut.Open = false;
  return gWayOut.Status;
}

}  // namespace

void RunLibraryConstructors(Firmware &firmware) {
  ProcessLibraryConstructorList(firmware.ImageHandle, &firmware.SystemTable);
}

RunResult RunApplication(Firmware &firmware, const RunOptions &options) {
  firmware.Clock.StepPerLook = options.StepPerTurn;
  TurnCounter counter(firmware, options);
  firmware.Faults.AtEvery(Service::HostGetTime, [&counter] { counter.Look(); });
  EFI_STATUS status = EFI_SUCCESS;
  size_t used = CallOnStack([&] { status = RunImage(firmware); });
  firmware.Faults.StopEvery(Service::HostGetTime);
  return {status, counter.Turns(), used};
}

void LeaveApplication(EFI_STATUS status) {
  if (!gWayOut.Open) {
    Firmware::Current().Problem("Exit was called outside of a run");
    return;
  }
  gWayOut.Status = status;
  longjmp(gWayOut.Place, 1);
}

}  // namespace fake
