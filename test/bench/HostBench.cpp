#include "test/bench/HostBench.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "test/bench/Report.h"
#include "test/bench/Timing.h"
#include "test/firmware/Run.h"

#include "host/portable/Blobs.h"
#include "host/portable/StatusSource.h"
#include "host/sources/Knowledge.h"

namespace bench {

namespace {

constexpr int kRounds = 50;
constexpr int kQuestionsEach = 100;

obv_host::Knowledge gKnowledge;

EFI_STATUS AskHardware(void *, UINTN component, obv_host::Facts *facts) {
  return obv_host::AskKnowledge(&gKnowledge, component, facts);
}

obv_host::HostServices Services(bool hardware) {
  return {
      .Context = nullptr,
      .ReadClock = [](void *) -> UINT64 { return fake::Firmware::Current().Clock.Milliseconds(); },
      .WriteLog = [](void *, const CHAR8 *, UINTN) {},
      .FindGop = nullptr,
      .Allocate = [](void *, UINTN size) { return std::malloc(size); },
      .Free = [](void *, void *memory) { std::free(memory); },
      .MeetHardware = nullptr,
      .AskHardware = hardware ? AskHardware : nullptr,
  };
}

/// Asks for every component of the default board.
void AskForAll(obv_host::Host *host) {
  static OBV_COMPONENT_INFO infos[OBV_INFO_CAPACITY];
  UINT64 count = 0;
  for (UINTN i = 0; i < host->ActiveBoard.Header.ComponentCount; i++) {
    obv_host::BoardComponent component = obv_host::ComponentAt(host->ActiveBoard, i);
    CHAR16 name[obv_host::kBoardNameLength];
    std::memcpy(name, component.Name, sizeof(name));
    (void)obv_host::QueryStatus(host, name, component.Type, OBV_INFO_CAPACITY, &count, infos);
  }
}

bool SetUp(obv_host::Host *host, bool hardware) {
  const obv_host::FontFile fonts[obv_host::kFaceCount] = {};
  obv_host::InitializeHost(host, Services(hardware), fonts);
  obv_host::EmbeddedFile file = obv_host::EmbeddedBoard();
  return !EFI_ERROR(obv_host::UseBoard(host, "embedded board", file.Data, file.Size));
}

}  // namespace

bool RunHostBench() {
  static obv_host::Host asks;
  static obv_host::Host describes;
  fake::Firmware firmware;
  firmware.Calls.RecordAll(false);
  fake::RunLibraryConstructors(firmware);
  if (!SetUp(&describes, false) || !SetUp(&asks, true) ||
      EFI_ERROR(obv_host::StartKnowledge(asks.Services, asks.ActiveBoard, &gKnowledge))) {
    std::printf("The default board cannot be used\n");
    return false;
  }
  obv_host::ReadHardwareAtStart(&gKnowledge);
  auto askOften = [](obv_host::Host *host) {
    for (int i = 0; i < kQuestionsEach; i++) {
      AskForAll(host);
    }
  };
  std::vector<double> seconds = Medians(
      {{"hardware", [&] { askOften(&asks); }}, {"description", [&] { askOften(&describes); }}},
      kRounds);
  double questions = kQuestionsEach * static_cast<double>(asks.ActiveBoard.Header.ComponentCount);
  ReportGroup("Host: a question for a component's state, once everything was read");
  Report("default board, each question", seconds[0] / questions, "description alone",
         seconds[1] / questions);
  obv_host::StopKnowledge(&gKnowledge);
  obv_host::ReleaseHost(&asks);
  obv_host::ReleaseHost(&describes);
  return true;
}

}  // namespace bench
