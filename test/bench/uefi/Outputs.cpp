#include "Outputs.h"

#include "Meter.h"

namespace {

constexpr UINTN kMaxOutputs = 8;

struct WatchedOutput {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *Output;
  EFI_GRAPHICS_OUTPUT_PROTOCOL_BLT Blt;
};

struct WatchedOutputs {
  WatchedOutput List[kMaxOutputs];
  UINTN Count;
  UINTN Depth;  ///< An output that stands for others calls theirs.
  UINT64 Pixels;
};
WatchedOutputs gOutputs;

EFI_GRAPHICS_OUTPUT_PROTOCOL_BLT BltOf(const EFI_GRAPHICS_OUTPUT_PROTOCOL *output) {
  UINTN i = 0;
  while (gOutputs.List[i].Output != output) {
    i++;
  }
  return gOutputs.List[i].Blt;
}

EFI_STATUS EFIAPI Blt(EFI_GRAPHICS_OUTPUT_PROTOCOL *output, EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer,
                      EFI_GRAPHICS_OUTPUT_BLT_OPERATION operation, UINTN sourceX, UINTN sourceY,
                      UINTN targetX, UINTN targetY, UINTN width, UINTN height, UINTN delta) {
  Uncounted uncounted;
  if (gOutputs.Depth == 0 && operation == EfiBltBufferToVideo) {
    gOutputs.Pixels += width * height;
  }
  gOutputs.Depth++;
  EFI_STATUS status = BltOf(output)(output, buffer, operation, sourceX, sourceY, targetX, targetY,
                                    width, height, delta);
  gOutputs.Depth--;
  return status;
}

bool IsWatched(const EFI_GRAPHICS_OUTPUT_PROTOCOL *output) { return output->Blt == Blt; }

void Watch(EFI_HANDLE handle) {
  VOID *found = nullptr;
  if (EFI_ERROR(gBS->HandleProtocol(handle, &gEfiGraphicsOutputProtocolGuid, &found))) {
    return;
  }
  auto *output = static_cast<EFI_GRAPHICS_OUTPUT_PROTOCOL *>(found);
  if (IsWatched(output) || gOutputs.Count == kMaxOutputs) {
    return;
  }
  gOutputs.List[gOutputs.Count] = {output, output->Blt};
  gOutputs.Count++;
  output->Blt = Blt;
}

}  // namespace

EFI_STATUS WatchOutputs() {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status = gBS->LocateHandleBuffer(ByProtocol, &gEfiGraphicsOutputProtocolGuid, nullptr,
                                              &count, &handles);
  if (EFI_ERROR(status)) {
    return status;
  }
  for (UINTN i = 0; i < count; i++) {
    Watch(handles[i]);
  }
  return gBS->FreePool(handles);
}

void LeaveOutputs() {
  for (UINTN i = 0; i < gOutputs.Count; i++) {
    gOutputs.List[i].Output->Blt = gOutputs.List[i].Blt;
  }
  gOutputs.Count = 0;
}

UINT64 DrawnPixels() { return gOutputs.Pixels; }
