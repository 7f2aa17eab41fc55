#include "host/sources/Knowledge.h"

namespace obv_host {
namespace {

/// At TPL_CALLBACK: counts, and leaves the looking to the next question.
VOID EFIAPI CountArrival(EFI_EVENT, VOID *context) {
  volatile UINT64 *count = static_cast<volatile UINT64 *>(context);
  *count = *count + 1;
}

/// A watch that cannot be set up is left out: arrivals are then seen after half a
/// minute, or not, but nothing else suffers.
void Watch(const EFI_GUID *protocol, ArrivalWatch *watch) {
  EFI_STATUS status =
      gBS->CreateEvent(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, CountArrival, &watch->Count, &watch->Event);
  if (EFI_ERROR(status)) {
    watch->Event = nullptr;
    return;
  }
  status = gBS->RegisterProtocolNotify(const_cast<EFI_GUID *>(protocol), watch->Event,
                                       &watch->Registration);
  if (EFI_ERROR(status)) {
    gBS->CloseEvent(watch->Event);
    watch->Event = nullptr;
  }
}

UINTN IndexOf(const Source &source) { return static_cast<UINTN>(&source - kSources); }

/// Arrivals of whatever this component's sources wait for.
UINT64 ArrivalsFor(const Knowledge &knowledge, const BoardComponent &component) {
  UINT64 sum = 0;
  for (UINTN i = 0; i < component.HardwareCount; ++i) {
    const Source *source =
        SourceOf(HardwareAt(*knowledge.ActiveBoard, component.FirstHardware + i).Kind);
    if (source != nullptr) {
      sum += *static_cast<const volatile UINT64 *>(&knowledge.Arrivals[IndexOf(*source)].Count);
    }
  }
  return sum;
}

bool IsStillThere(const Presence &where) {
  if (where.Handle == nullptr) {
    return true;
  }
  VOID *current = nullptr;
  EFI_STATUS status =
      gBS->HandleProtocol(where.Handle, const_cast<EFI_GUID *>(where.Protocol), &current);
  return !EFI_ERROR(status) && current == where.Interface;
}

UINT64 Now(const Knowledge &knowledge) {
  return knowledge.Services->ReadClock(knowledge.Services->Context);
}

/// Whether what changes by itself was looked at too long ago.
bool IsOld(const KnownComponent &known, UINT64 now) {
  return known.Ages && now - known.ReadTime >= kFactsAge;
}

bool MeetsConditions(const Board &board, const BoardComponent &component) {
  for (UINTN i = 0; i < component.HardwareCount; ++i) {
    BoardHardware hardware = HardwareAt(board, component.FirstHardware + i);
    if (hardware.Kind == kHardwareNeedsProcessor &&
        !BrandContains(reinterpret_cast<const CHAR8 *>(hardware.Name))) {
      return false;
    }
  }
  return true;
}

/// The first alternative that is present answers.
EFI_STATUS ReadAlternatives(const Board &board, const BoardComponent &component,
                            KnownComponent *known) {
  for (UINTN i = 0; i < component.HardwareCount; ++i) {
    BoardHardware hardware = HardwareAt(board, component.FirstHardware + i);
    const Source *source = SourceOf(hardware.Kind);
    if (source == nullptr) {
      continue;
    }
    ZeroMem(&known->Told, sizeof(known->Told));
    ZeroMem(&known->Where, sizeof(known->Where));
    EFI_STATUS status = source->Read(hardware, &known->Told, &known->Where);
    // What is not there may come without an arrival, as a fan at its sensor.
    known->Ages = known->Ages || source->Ages;
    if (status != EFI_NOT_FOUND) {
      return status;
    }
  }
  return EFI_NOT_FOUND;
}

void ReadComponent(const Knowledge &knowledge, const BoardComponent &component,
                   KnownComponent *known) {
  ZeroMem(known, sizeof(*known));
  known->Read = true;
  // Before the reading: what arrives in the middle of it is looked for again.
  known->Arrivals = ArrivalsFor(knowledge, component);
  known->Status = MeetsConditions(*knowledge.ActiveBoard, component)
                      ? ReadAlternatives(*knowledge.ActiveBoard, component, known)
                      : EFI_NO_MAPPING;
  known->ReadTime = Now(knowledge);
}

bool NamesHardware(const Board &board) { return board.Header.HardwareCount != 0; }

}  // namespace

EFI_STATUS StartKnowledge(const HostServices &services, const Board &board, Knowledge *knowledge) {
  ZeroMem(knowledge, sizeof(*knowledge));
  if (!NamesHardware(board) || board.Header.ComponentCount == 0) {
    return EFI_SUCCESS;
  }
  UINTN size = board.Header.ComponentCount * sizeof(KnownComponent);
  void *components = services.Allocate(services.Context, size);
  if (components == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }
  ZeroMem(components, size);
  knowledge->Services = &services;
  knowledge->ActiveBoard = &board;
  knowledge->Components = static_cast<KnownComponent *>(components);
  for (const Source &source : kSources) {
    if (source.Arrives != nullptr) {
      Watch(source.Arrives, &knowledge->Arrivals[IndexOf(source)]);
    }
  }
  return EFI_SUCCESS;
}

void StopKnowledge(Knowledge *knowledge) {
  for (ArrivalWatch &watch : knowledge->Arrivals) {
    if (watch.Event != nullptr) {
      gBS->CloseEvent(watch.Event);
    }
  }
  if (knowledge->Components != nullptr) {
    knowledge->Services->Free(knowledge->Services->Context, knowledge->Components);
  }
  ZeroMem(knowledge, sizeof(*knowledge));
}

void ReadHardwareAtStart(Knowledge *knowledge) {
  if (knowledge->Components == nullptr) {
    return;
  }
  const Board &board = *knowledge->ActiveBoard;
  UINT64 now = Now(*knowledge);
  for (UINTN i = 0; i < board.Header.ComponentCount; ++i) {
    BoardComponent component = ComponentAt(board, i);
    KnownComponent *known = &knowledge->Components[i];
    if (component.HardwareCount != 0 && (!known->Read || IsOld(*known, now))) {
      ReadComponent(*knowledge, component, known);
    }
  }
}

EFI_STATUS AskKnowledge(Knowledge *knowledge, UINTN component, Facts *facts) {
  if (knowledge->Components == nullptr) {
    return EFI_NOT_FOUND;
  }
  BoardComponent described = ComponentAt(*knowledge->ActiveBoard, component);
  KnownComponent *known = &knowledge->Components[component];
  UINT64 now = Now(*knowledge);
  if (!known->Read || known->Arrivals != ArrivalsFor(*knowledge, described) ||
      !IsStillThere(known->Where)) {
    ReadComponent(*knowledge, described, known);
  } else if (IsOld(*known, now) && now - knowledge->LastForAge >= kAgePause) {
    knowledge->LastForAge = now;
    ReadComponent(*knowledge, described, known);
  }
  CopyMem(facts, &known->Told, sizeof(*facts));
  return known->Status;
}

}  // namespace obv_host
