#include "OtherOutputs.h"

namespace {

constexpr UINTN kMaxOutputs = 8;

struct OtherOutputs {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *Outputs[kMaxOutputs];
  UINT32 ModeCounts[kMaxOutputs];
  UINTN Count;
};
OtherOutputs gOthers;

void TakeFrom(EFI_HANDLE handle) {
  VOID *found = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(handle, &gEfiGraphicsOutputProtocolGuid, &found);
  if (EFI_ERROR(status) || gOthers.Count == kMaxOutputs) {
    return;
  }
  auto *gop = static_cast<EFI_GRAPHICS_OUTPUT_PROTOCOL *>(found);
  gOthers.Outputs[gOthers.Count] = gop;
  gOthers.ModeCounts[gOthers.Count] = gop->Mode->MaxMode;
  gOthers.Count++;
  gop->Mode->MaxMode = 0;
}

}  // namespace

EFI_STATUS TakeModes() {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status = gBS->LocateHandleBuffer(ByProtocol, &gEfiGraphicsOutputProtocolGuid, nullptr,
                                              &count, &handles);
  if (EFI_ERROR(status)) {
    return status;
  }
  for (UINTN i = 0; i < count; i++) {
    TakeFrom(handles[i]);
  }
  gBS->FreePool(handles);
  return EFI_SUCCESS;
}

void GiveModesBack() {
  for (UINTN i = 0; i < gOthers.Count; i++) {
    gOthers.Outputs[i]->Mode->MaxMode = gOthers.ModeCounts[i];
  }
  gOthers.Count = 0;
}
