/** @file
  A whole run with component records, information lines and looks that are valid in their
  pointers alone.
**/

#include "test/fuzz/Fuzz.h"

#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"

namespace {

constexpr size_t kMostComponents = 6;
constexpr int kFirstTurn = 25;  // Keys are dropped before.
constexpr int kLastTurn = 60;

template <size_t kUnits>
void CopyText(CHAR16 (&field)[kUnits], const std::vector<CHAR16> &text) {
  std::copy(text.begin(), text.end(), field);
}

void ReadLooks(fuzz::Reader &input, fake::TestHost *host) {
  UINT8 what = input.Byte();
  if (what % 2 != 0) {
    input.Fill(&host->DefaultStyle, sizeof host->DefaultStyle);
    input.Fill(&host->FocusStyle, sizeof host->FocusStyle);
  }
  if (what % 16 == 7) {
    input.Fill(&host->Config, sizeof host->Config);
  }
}

void ReadComponent(fuzz::Reader &input, fake::TestHost *host) {
  OBV_COMPONENT &component = host->Components.emplace_back();
  // Flags, counts, sizes and places.
  input.Fill(&component, OFFSET_OF(OBV_COMPONENT, InfoCount));
  CopyText(component.Name, input.Text<CHAR16>(OBV_NAME_LENGTH - 1));
  std::vector<UINT8> vertices = input.Bytes(4 * (input.Byte() % (OBV_VERTEX_CAPACITY + 1)));
  std::vector<UINT8> points = input.Bytes(4 * (input.Byte() % (OBV_LEADER_POINT_CAPACITY + 1)));
  std::copy(vertices.begin(), vertices.end(), reinterpret_cast<UINT8 *>(component.HotspotVertices));
  std::copy(points.begin(), points.end(), reinterpret_cast<UINT8 *>(component.LeaderPoints));
  component.DefaultStyle = &host->DefaultStyle;
  component.FocusStyle = &host->FocusStyle;
}

/// The same lines for every component; their number may be any.
void ReadLines(fuzz::Reader &input, fake::TestHost *host) {
  constexpr EFI_STATUS kStatuses[] = {EFI_SUCCESS,    EFI_DEVICE_ERROR, EFI_NOT_READY,
                                      EFI_NO_MAPPING, EFI_NOT_FOUND,    EFI_SUCCESS};
  EFI_STATUS status = kStatuses[input.Byte() % std::size(kStatuses)];
  UINT64 count = input.Byte();
  std::vector<OBV_COMPONENT_INFO> lines(std::min<UINT64>(count, OBV_INFO_CAPACITY));
  for (OBV_COMPONENT_INFO &line : lines) {
    line.Kind = input.Byte();
    CopyText(line.Label, input.Text<CHAR16>(OBV_INFO_LABEL_LENGTH - 1));
    CopyText(line.Value, input.Text<CHAR16>(OBV_INFO_VALUE_LENGTH - 1));
  }
  host->OnQueryComponentStatus = [=](CHAR16 *, UINT32, UINTN, UINT64 *filled,
                                     OBV_COMPONENT_INFO *info) {
    std::copy(lines.begin(), lines.end(), info);
    *filled = count;
    return status;
  };
}

void Run(fuzz::Reader input) {
  fake::Firmware machine;
  // Outlines far outside of the view would take most of the time to fill.
  machine.Pool.Capacity = UINT64{64} << 20;
  machine.AddOutput({{1024, 768}});
  machine.AddAbsolutePointer({0, 0, 1023, 767});
  fake::TestHost host(machine);
  host.LeaveFontsOut();
  host.ScaleComponents = false;
  ReadLooks(input, &host);
  ReadLines(input, &host);
  host.ClearComponents();
  while (input.Left() != 0 && host.Components.size() < kMostComponents) {
    ReadComponent(input, &host);
  }
  host.Install();
  fake::RunOptions options;
  options.EscapeAtTurn = kLastTurn;
  options.MostTurns = 10 * kLastTurn;
  options.EveryTurn = [&machine](int turn) {
    if (turn >= kFirstTurn && turn % 4 == 0) {
      machine.Keyboard.Character(u'\t');
    }
    auto step = static_cast<UINT64>(turn);
    machine.Tablet()->MoveTo(step * 17, step * 13);
  };
  EFI_STATUS status = fake::RunApplication(machine, options).Status;
  fuzz::Require(status == EFI_SUCCESS || status == EFI_OUT_OF_RESOURCES,
                "the run succeeds, unless memory runs out");
  host.Uninstall();
  fuzz::Require(machine.Leftovers().empty(), machine.Leftovers().c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::InChild([=] { Run(fuzz::Reader(data, size)); });
  return 0;
}
