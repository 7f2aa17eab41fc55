/** @file
  A hostile board file all the way: through the reference host, its picture and its components into
  the view.
**/

#include "test/fuzz/LateFork.h"
#include "test/fuzz/Repair.h"

#include "test/firmware/Run.h"

#include "host/portable/Host.h"
#include "host/portable/HostSlots.h"
#include "host/portable/Texts.h"

namespace {

constexpr UINT64 kTurnMilliseconds = 60;
constexpr int kFirstTurn = 5;  // Keys are dropped before.
constexpr int kLastTurn = 16;

UINT64 ReadClock(void *) { return fake::Firmware::Current().LookAtClock(); }
void WriteLog(void *, const CHAR8 *, UINTN) {}
EFI_STATUS FindGop(void *, EFI_GRAPHICS_OUTPUT_PROTOCOL **gop) {
  *gop = fake::Firmware::Current().Output().Protocol();
  return EFI_SUCCESS;
}
void *Allocate(void *, UINTN size) { return std::malloc(size); }
void Free(void *, void *memory) { std::free(memory); }

/// Lives as long as the process.
struct Board {
  obv_host::Host Host = {};
  fuzz::LateFork *Fork = nullptr;
  std::vector<UINT8> Bytes;
};
Board gBoard;

/// The first call that needs the board. One that is refused leaves the host without.
EFI_STATUS EFIAPI TakeBoard(OBV_PROTOCOL *This, VOID **data, UINTN *size) {
  fuzz::Reader input = gBoard.Fork->Input();
  gBoard.Bytes = input.Bytes(input.Left());
  std::size_t picture = 0;
  if (gBoard.Bytes.size() >= sizeof(obv_host::BoardHeader)) {
    obv_host::BoardHeader header;
    std::memcpy(&header, gBoard.Bytes.data(), sizeof header);
    picture = gBoard.Bytes.size() - std::min<std::size_t>(header.PictureSize, gBoard.Bytes.size());
  }
  fuzz::RepairChunks(&gBoard.Bytes, picture);
  fuzz::RepairBoard(&gBoard.Bytes);
  (void)obv_host::UseBoard(&gBoard.Host, "fuzzed board", gBoard.Bytes.data(), gBoard.Bytes.size());
  gBoard.Host.Protocol.GetResourceData = obv_host::HostGetResourceData;
  return obv_host::HostGetResourceData(This, data, size);
}

void InstallHost(fake::Firmware *machine) {
  const obv_host::HostServices services = {
      nullptr, ReadClock, WriteLog, FindGop, Allocate, Free, nullptr, nullptr,
  };
  const obv_host::FontFile fonts[obv_host::kFaceCount] = {};
  obv_host::InitializeHost(&gBoard.Host, services, fonts);
  gBoard.Host.Protocol.GetResourceData = TakeBoard;
  fake::StringTable texts;
  for (UINTN i = 0; i < OBV_STRING_COUNT; i++) {
    const obv_host::LanguageTexts &first = obv_host::kLanguages[0];
    texts[first.Code][obv_host::TextId(i)] = obv_host::TextAt(first, i);
  }
  machine->Hii.AddStrings(fake::kObvStringListGuid, texts);
  machine->Install(fake::kObvProtocolGuid, &gBoard.Host.Protocol);
}

void Run(fuzz::LateFork *fork) {
  gBoard.Fork = fork;
  fake::Firmware machine;
  fuzz::Hasten(&machine);
  // A picture with a large size in its header would take most of the time to make room for.
  machine.Pool.Capacity = UINT64{96} << 20;
  machine.AddOutput({{1024, 768}});
  machine.AddAbsolutePointer({0, 0, 1023, 767});
  InstallHost(&machine);
  fake::RunOptions options;
  options.StepPerTurn = kTurnMilliseconds;
  options.EscapeAtTurn = kLastTurn;
  options.MostTurns = 10 * kLastTurn;
  options.EveryTurn = [&machine](int turn) {
    if (turn >= kFirstTurn && turn % 2 == 0) {
      machine.Keyboard.Character(u'\t');
    }
    auto step = static_cast<UINT64>(turn);
    machine.Tablet()->MoveTo(step * 61, step * 43);
  };
  // What it returns tells whether the board was good.
  (void)fake::RunApplication(machine, options);
  fuzz::Require(machine.Leftovers().empty(), machine.Leftovers().c_str());
  fuzz::LateFork::End();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static fuzz::LateFork fork(Run);
  fork.Try(data, size);
  return 0;
}
