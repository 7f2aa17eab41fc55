#include "host/portable/StatusSource.h"

namespace obv_host {
namespace {

/// Indexed by BoardStatus.
constexpr EFI_STATUS kDescribedStatus[] = {
    EFI_SUCCESS, EFI_DEVICE_ERROR, EFI_NOT_READY, EFI_NO_MAPPING, EFI_NOT_FOUND,
};
static_assert(ARRAY_SIZE(kDescribedStatus) == kStatusLimit + 1);

/// The lines that an answer is written to.
struct Answer {
  OBV_COMPONENT_INFO *Infos;
  UINTN Capacity;
  UINTN Count;
};

void AddDescribed(const Board &board, const BoardComponent &component, Answer *answer) {
  for (UINTN i = 0; i < component.InfoCount && answer->Count < answer->Capacity; ++i) {
    CopyInfoAt(board, component.FirstInfo + i, &answer->Infos[answer->Count]);
    ++answer->Count;
  }
}

void AddFacts(const Facts &facts, Answer *answer) {
  for (UINTN i = 0; i < facts.Count && answer->Count < answer->Capacity; ++i) {
    CopyMem(&answer->Infos[answer->Count], &facts.Lines[i], sizeof(facts.Lines[i]));
    ++answer->Count;
  }
}

/// Without somebody to ask, the description's status stands.
EFI_STATUS AskHardware(Host *host, UINTN index, const BoardComponent &component, Answer *answer) {
  if (component.HardwareCount == 0 || host->Services.AskHardware == nullptr) {
    return kDescribedStatus[component.Status];
  }
  ZeroMem(&host->Told, sizeof(host->Told));
  EFI_STATUS status = host->Services.AskHardware(host->Services.Context, index, &host->Told);
  AddFacts(host->Told, answer);
  return status;
}

/// The board's name ends within its field, so the walk does too.
bool HasName(const BoardComponent &component, const CHAR16 *name) {
  UINTN i = 0;
  while (component.Name[i] == name[i] && name[i] != 0) {
    ++i;
  }
  return component.Name[i] == name[i];
}

}  // namespace

EFI_STATUS QueryStatus(Host *host, const CHAR16 *name, UINT32 type, UINTN capacity,
                       UINT64 *infoCount, OBV_COMPONENT_INFO *infos) {
  if (name == nullptr || infoCount == nullptr || (infos == nullptr && capacity != 0)) {
    return EFI_INVALID_PARAMETER;
  }
  *infoCount = 0;
  Answer answer = {
      .Infos = infos,
      .Capacity = capacity > OBV_INFO_CAPACITY ? OBV_INFO_CAPACITY : capacity,
      .Count = 0,
  };
  ZeroMem(infos, answer.Capacity * sizeof(*infos));
  const Board &board = host->ActiveBoard;
  for (UINTN i = 0; i < board.Header.ComponentCount; ++i) {
    BoardComponent component = ComponentAt(board, i);
    if (component.Type == type && HasName(component, name)) {
      EFI_STATUS status = AskHardware(host, i, component, &answer);
      AddDescribed(board, component, &answer);
      *infoCount = answer.Count;
      return status;
    }
  }
  return EFI_NOT_FOUND;
}

}  // namespace obv_host
