#include "setup/portable/SelectionRecord.h"

namespace obv_setup {

SelectionRecord gSelectionRecord;

namespace {

constexpr CHAR8 kKey[VELT_EVENT_KEY_SIZE] = VELT_SELECTION_KEY;

/// The reserved bytes are there for later keys; this one has none.
EFI_STATUS EFIAPI GetEventData(CHAR8 key[VELT_EVENT_KEY_SIZE], UINT8[VELT_EVENT_KEY_SIZE],
                               UINT32 *type, UINT32 *dataSize, VOID *data) {
  if (key == nullptr || type == nullptr || dataSize == nullptr || data == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (!gSelectionRecord.IsSet || CompareMem(key, kKey, sizeof(kKey)) != 0) {
    return EFI_NOT_FOUND;
  }
  *type = VELT_SELECTION_TYPE;
  *dataSize = VELT_SELECTION_DATA_SIZE;
  CopyMem(data, &gSelectionRecord.Selection, VELT_SELECTION_DATA_SIZE);
  gSelectionRecord.WasRead = true;
  return EFI_SUCCESS;
}

/// Forgets a record that was read: it counts for one view.
EFI_STATUS EFIAPI EndEventData() {
  if (!gSelectionRecord.WasRead) {
    return EFI_NOT_READY;
  }
  ClearSelection();
  return EFI_SUCCESS;
}

}  // namespace

void InitializeSelectionRecord() {
  ZeroMem(&gSelectionRecord, sizeof(gSelectionRecord));
  gSelectionRecord.Handler.GetEventData = GetEventData;
  gSelectionRecord.Handler.EndEventData = EndEventData;
}

void SelectComponent(const ViewEntry &entry) {
  ClearSelection();
  gSelectionRecord.Selection.Category = entry.Category;
  for (UINTN i = 0; i < VELT_SELECTION_NAME_LENGTH && entry.Name[i] != 0; ++i) {
    gSelectionRecord.Selection.ComponentName[i] = static_cast<CHAR16>(entry.Name[i]);
  }
  gSelectionRecord.IsSet = true;
}

void ClearSelection() {
  ZeroMem(&gSelectionRecord.Selection, sizeof(gSelectionRecord.Selection));
  gSelectionRecord.IsSet = false;
  gSelectionRecord.WasRead = false;
}

}  // namespace obv_setup
