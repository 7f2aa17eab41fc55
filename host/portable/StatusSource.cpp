#include "host/portable/StatusSource.h"

namespace obv_host {
namespace {

/// Indexed by BoardStatus.
constexpr EFI_STATUS kDescribedStatus[] = {
    EFI_SUCCESS, EFI_DEVICE_ERROR, EFI_NOT_READY, EFI_NO_MAPPING, EFI_NOT_FOUND,
};
static_assert(ARRAY_SIZE(kDescribedStatus) == kStatusLimit + 1);

EFI_STATUS FromDescription(const Board &board, const BoardComponent &component, UINTN capacity,
                           UINT64 *infoCount, OBV_COMPONENT_INFO *infos) {
  UINTN count = component.InfoCount < capacity ? component.InfoCount : capacity;
  for (UINTN i = 0; i < count; ++i) {
    CopyInfoAt(board, component.FirstInfo + i, &infos[i]);
  }
  *infoCount = count;
  return kDescribedStatus[component.Status];
}

/// Indexed by BoardComponent.StatusSource; the reader refuses other numbers.
constexpr StatusSource kSources[] = {FromDescription};
static_assert(ARRAY_SIZE(kSources) == kStatusFromDescription + 1);

/// The board's name ends within its field, so the walk does too.
bool HasName(const BoardComponent &component, const CHAR16 *name) {
  UINTN i = 0;
  while (component.Name[i] == name[i] && name[i] != 0) {
    ++i;
  }
  return component.Name[i] == name[i];
}

}  // namespace

EFI_STATUS QueryStatus(const Board &board, const CHAR16 *name, UINT32 type, UINTN capacity,
                       UINT64 *infoCount, OBV_COMPONENT_INFO *infos) {
  if (name == nullptr || infoCount == nullptr || (infos == nullptr && capacity != 0)) {
    return EFI_INVALID_PARAMETER;
  }
  *infoCount = 0;
  if (capacity > OBV_INFO_CAPACITY) {
    capacity = OBV_INFO_CAPACITY;
  }
  ZeroMem(infos, capacity * sizeof(*infos));
  for (UINTN i = 0; i < board.Header.ComponentCount; ++i) {
    BoardComponent component = ComponentAt(board, i);
    if (component.Type == type && HasName(component, name)) {
      return kSources[component.StatusSource](board, component, capacity, infoCount, infos);
    }
  }
  return EFI_NOT_FOUND;
}

}  // namespace obv_host
