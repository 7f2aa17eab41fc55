#include "tool/view/LiveRun.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <chrono>
#include <climits>
#include <cstdio>

#include "app/base/Run.h"
#include "tool/view/LiveInput.h"
#include "tool/view/PreparedMachine.h"
#include "tool/view/Stick.h"
#include "tool/view/Wire.h"

namespace board_view {

namespace {

using Clock = std::chrono::steady_clock;

/// How long a turn waits for input.
constexpr int kTurnMilliseconds = 4;

/// As in OBV_SHARED_STATE.FocusIndex.
constexpr UINT16 kFirstComponent = 1;
constexpr UINT16 kFirstButton = 101;

/// The protocol's functions are plain ones.
struct Transfers {
  EFI_GRAPHICS_OUTPUT_PROTOCOL_BLT Blt;
  const fake::GraphicsOutput *Output;
  Sight *To;
};
Transfers gTransfers;

EFI_STATUS EFIAPI Transfer(EFI_GRAPHICS_OUTPUT_PROTOCOL *self,
                           EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer,
                           EFI_GRAPHICS_OUTPUT_BLT_OPERATION operation, UINTN sourceX,
                           UINTN sourceY, UINTN x, UINTN y, UINTN width, UINTN height,
                           UINTN delta) {
  EFI_STATUS status =
      gTransfers.Blt(self, buffer, operation, sourceX, sourceY, x, y, width, height, delta);
  // The setup's screen, which comes back at the end, is nobody's business.
  if (EFI_ERROR(status) || operation == EfiBltVideoToBltBuffer || gRun.ExitRequested) {
    return status;
  }
  const fake::GraphicsOutput &output = *gTransfers.Output;
  for (UINTN row = y; row < y + height; row++) {
    uint32_t *pixels = gTransfers.To->Pixels() + row * output.Width();
    for (UINTN column = x; column < x + width; column++) {
      pixels[column] = output.Pixel(static_cast<UINT32>(column), static_cast<UINT32>(row));
    }
  }
  gTransfers.To->Transfers++;
  return status;
}

class LiveMachine : public PreparedMachine {
 public:
  LiveMachine(const Request &request, const std::string &stick, Sight *sight)
      : PreparedMachine(request),
        sight_(sight),
        input_(Machine, kInputFile),
        stick_(Machine, stick) {
    fake::GraphicsOutput &output = Machine.Output();
    gTransfers = {output.Protocol()->Blt, &output, sight};
    output.Protocol()->Blt = Transfer;
    Host.Services.FindOption = FindOption;
    TakeState();
  }

  EFI_STATUS Run() {
    fake::RunOptions options;
    options.StepPerTurn = 0;
    options.EscapeAtTurn = 0;
    options.MostTurns = INT_MAX;
    options.EveryTurn = [this](int) { Turn(); };
    EFI_STATUS status = fake::RunApplication(Machine, options).Status;
    TellState();
    return status;
  }

 private:
  void Turn() {
    if (!sight_->Stands) {
      sight_->Stands = true;
    }
    if (!input_.Wait(kTurnMilliseconds)) {
      gRun.ExitRequested = true;
    }
    stick_.Save();
    auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start_);
    Machine.Clock.SetMilliseconds(kClockStart + static_cast<uint64_t>(passed.count()));
  }

  void TakeState() {
    const UiState &state = sight_->State;
    if (!state.Saved) {
      return;
    }
    std::optional<size_t> index = IndexOf(state.Component);
    OBV_SHARED_STATE &shared = Host.Shared;
    shared.UiStateSaved = 1;
    shared.FocusIndex = index ? static_cast<UINT16>(*index + kFirstComponent) : state.Focus;
    shared.SelectedCategory = state.Category;
    shared.PointerX = static_cast<UINT16>(state.PointerX * Machine.Output().Width());
    shared.PointerY = static_cast<UINT16>(state.PointerY * Machine.Output().Height());
  }

  void TellState() {
    const OBV_SHARED_STATE &shared = Host.Shared;
    UiState &state = sight_->State;
    bool component = shared.FocusIndex >= kFirstComponent && shared.FocusIndex < kFirstButton;
    state.Saved = shared.UiStateSaved != 0;
    state.Component[0] = 0;
    state.Focus = component ? 0 : shared.FocusIndex;
    if (component) {
      fake::CopyText(state.Component, NameAt(shared.FocusIndex - kFirstComponent));
    }
    state.Category = shared.SelectedCategory;
    state.PointerX = shared.PointerX / static_cast<double>(Machine.Output().Width());
    state.PointerY = shared.PointerY / static_cast<double>(Machine.Output().Height());
    sight_->Jumped = gJumped;
  }

  std::string NameAt(size_t index) const {
    return fake::ToAscii(obv_host::ComponentAt(Host.ActiveBoard, index).Name);
  }

  /// There is no setup here, but its user wants to know where a click leads.
  static EFI_STATUS FindOption(void *self, UINT16 token, OBV_SETUP_OPTION *) {
    const auto &machine = *static_cast<LiveMachine *>(static_cast<HostedMachine *>(self));
    std::string name = machine.NameAt(machine.Host.Shared.JumpComponentIndex);
    std::printf("%s: the setup would open option 0x%X\n", name.c_str(), token);
    std::fflush(stdout);
    gJumped = true;
    return EFI_UNSUPPORTED;
  }

  static constexpr uint64_t kClockStart = 1000;
  static inline bool gJumped = false;

  Sight *sight_;
  LiveInput input_;
  Stick stick_;
  Clock::time_point start_ = Clock::now();
};

Sight *MapSight() {
  struct stat file = {};
  if (fstat(kSightFile, &file) != 0) {
    throw std::runtime_error("this process is for the window alone");
  }
  void *memory = mmap(nullptr, static_cast<size_t>(file.st_size), PROT_READ | PROT_WRITE,
                      MAP_SHARED, kSightFile, 0);
  if (memory == MAP_FAILED) {
    throw std::runtime_error("the window's memory cannot be mapped");
  }
  return static_cast<Sight *>(memory);
}

}  // namespace

int RunLive(const nlohmann::json &wanted) {
  Sight *sight = MapSight();
  try {
    nlohmann::json request = wanted;
    std::string stick = request["stick"];
    request.erase("stick");
    LiveMachine machine(ReadRequest(request), stick, sight);
    EFI_STATUS status = machine.Run();
    if (!EFI_ERROR(status) && machine.Machine.Problems().empty()) {
      return 0;
    }
    fake::CopyText(sight->Trouble, "the view ended with status " + std::to_string(status) + "\n" +
                                       machine.Machine.ProblemsText());
  } catch (const std::exception &error) {
    fake::CopyText(sight->Trouble, error.what());
  }
  return 1;
}

}  // namespace board_view
