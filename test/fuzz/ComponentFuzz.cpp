/** @file
  A whole run with component records, information lines and looks that are valid in their
  pointers alone.
**/

#include "test/fuzz/LateFork.h"

#include "test/fuzz/ComponentMutation.h"

#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"

#include "resources/ComponentIntake.h"

// The symbols that the linker puts in the function's place.
void BuildHotspotsOfInput() asm("__wrap__Z13BuildHotspotsv");
void RealBuildHotspots() asm("__real__Z13BuildHotspotsv");

namespace {

using fuzz::ComponentInput;

constexpr UINT64 kTurnMilliseconds = 100;  // Few turns, and in each one LVGL's timers have work.
constexpr int kFirstTurn = 3;              // Keys are dropped before.
constexpr int kLastTurn = 16;

/// Where the input comes in: at the first record that is drawn, or, for a look of the host's own,
/// with the records, before anything is.
enum class Place { kIntake, kHotspots };

struct Session {
  fuzz::LateFork *Fork;
  fake::TestHost *Host;
  Place Where;
};
Session gSession;

template <size_t kUnits>
void CopyText(CHAR16 (&field)[kUnits], const ComponentInput::Text &text) {
  std::copy(text.begin(), text.end(), field);
}

void UseComponent(const ComponentInput::Component &from, fake::TestHost *host) {
  OBV_COMPONENT &component = host->Components.emplace_back();
  std::memcpy(static_cast<void *>(&component), from.Head.data(), from.Head.size());
  CopyText(component.Name, from.Name);
  std::copy(from.Vertices.begin(), from.Vertices.end(),
            reinterpret_cast<UINT8 *>(component.HotspotVertices));
  std::copy(from.Points.begin(), from.Points.end(),
            reinterpret_cast<UINT8 *>(component.LeaderPoints));
  component.DefaultStyle = &host->DefaultStyle;
  component.FocusStyle = &host->FocusStyle;
}

/// The same lines for every component; their number may be any.
void UseLines(const ComponentInput &input, fake::TestHost *host) {
  constexpr EFI_STATUS kStatuses[] = {EFI_SUCCESS,    EFI_DEVICE_ERROR, EFI_NOT_READY,
                                      EFI_NO_MAPPING, EFI_NOT_FOUND,    EFI_SUCCESS};
  EFI_STATUS status = kStatuses[input.Status % std::size(kStatuses)];
  std::vector<OBV_COMPONENT_INFO> lines(input.Lines.size());
  for (size_t i = 0; i < lines.size(); i++) {
    lines[i].Kind = input.Lines[i].Kind;
    CopyText(lines[i].Label, input.Lines[i].Label);
    CopyText(lines[i].Value, input.Lines[i].Value);
  }
  host->OnQueryComponentStatus = [=, count = input.LineCount](CHAR16 *, UINT32, UINTN,
                                                              UINT64 *filled,
                                                              OBV_COMPONENT_INFO *info) {
    std::copy(lines.begin(), lines.end(), info);
    *filled = count;
    return status;
  };
}

void UseInput() {
  ComponentInput input = fuzz::ReadComponentInput(gSession.Fork->Input());
  fake::TestHost *host = gSession.Host;
  if (input.HasStyles()) {
    host->DefaultStyle = input.DefaultStyle;
    host->FocusStyle = input.FocusStyle;
  }
  if (input.HasConfig()) {
    host->Config = input.Config;
  }
  UseLines(input, host);
  host->ClearComponents();
  for (const ComponentInput::Component &component : input.Components) {
    UseComponent(component, host);
  }
}

EFI_STATUS Parse(OBV_COMPONENT **components) {
  fake::TestHost *host = gSession.Host;
  if (gSession.Where == Place::kIntake) {
    UseInput();
  }
  *components = host->Components.data();
  host->State.ComponentCount = static_cast<UINT16>(host->Components.size());
  return EFI_SUCCESS;
}

void Run(fuzz::LateFork *fork, Place where) {
  fake::Firmware machine;
  fuzz::Hasten(&machine);
  // Outlines far outside of the view would take most of the time to fill.
  machine.Pool.Capacity = UINT64{64} << 20;
  machine.AddOutput({{1024, 768}});
  machine.AddAbsolutePointer({0, 0, 1023, 767});
  fake::TestHost host(machine);
  gSession = {.Fork = fork, .Host = &host, .Where = where};
  host.LeaveFontsOut();
  host.ClearComponents();
  host.OnParseComponents = [](OBV_COMPONENT **components, const fake::ParseArguments &) {
    return Parse(components);
  };
  host.Install();
  fake::RunOptions options;
  options.StepPerTurn = kTurnMilliseconds;
  options.EscapeAtTurn = kLastTurn;
  options.MostTurns = 10 * kLastTurn;
  options.EveryTurn = [&machine](int turn) {
    if (turn >= kFirstTurn && turn % 2 == 0) {
      machine.Keyboard.Character(u'\t');
    }
    auto step = static_cast<UINT64>(turn);
    machine.Tablet()->MoveTo(step * 61, step * 47);
  };
  EFI_STATUS status = fake::RunApplication(machine, options).Status;
  fuzz::Require(status == EFI_SUCCESS || status == EFI_OUT_OF_RESOURCES,
                "the run succeeds, unless memory runs out");
  host.Uninstall();
  fuzz::Require(machine.Leftovers().empty(), machine.Leftovers().c_str());
  fuzz::LateFork::End();
}

}  // namespace

/// What stands so far is the same for all records, so that they are taken in anew.
void BuildHotspotsOfInput() {
  if (gSession.Fork != nullptr && gSession.Where == Place::kHotspots) {
    UseInput();
    fuzz::Require(GetComponentData() == EFI_SUCCESS, "the records are taken in");
  }
  RealBuildHotspots();
}

extern "C" size_t LLVMFuzzerCustomMutator(std::uint8_t *data, size_t size, size_t maxSize,
                                          unsigned seed) {
  ComponentInput input = fuzz::ReadComponentInput(fuzz::Reader(data, size));
  fuzz::ComponentMutation(seed).Change(&input);
  std::vector<UINT8> bytes = fuzz::ComponentWriter().Write(input);
  std::copy_n(bytes.begin(), std::min(bytes.size(), maxSize), data);
  return std::min(bytes.size(), maxSize);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  if (fuzz::ReadComponentInput(fuzz::Reader(data, size)).HasConfig()) {
    static fuzz::LateFork early([](fuzz::LateFork *fork) { Run(fork, Place::kIntake); });
    early.Try(data, size);
  } else {
    static fuzz::LateFork late([](fuzz::LateFork *fork) { Run(fork, Place::kHotspots); });
    late.Try(data, size);
  }
  return 0;
}
