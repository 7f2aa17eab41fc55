#include "ProbeScreens.h"

namespace {

constexpr UINTN kNoMode = ~static_cast<UINTN>(0);

struct Outputs {
  EFI_HANDLE *Handles;
  UINTN Count;
};

EFI_STATUS FindOutputs(Outputs *outputs) {
  return gBS->LocateHandleBuffer(ByProtocol, &gEfiGraphicsOutputProtocolGuid, nullptr,
                                 &outputs->Count, &outputs->Handles);
}

EFI_GRAPHICS_OUTPUT_PROTOCOL *OutputAt(const Outputs &outputs, UINTN index) {
  void *gop = nullptr;
  EFI_STATUS status =
      gBS->HandleProtocol(outputs.Handles[index], &gEfiGraphicsOutputProtocolGuid, &gop);
  return EFI_ERROR(status) ? nullptr : static_cast<EFI_GRAPHICS_OUTPUT_PROTOCOL *>(gop);
}

UINTN FindMode(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop, UINTN width, UINTN height) {
  for (UINT32 mode = 0; mode < gop->Mode->MaxMode; mode++) {
    EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *info = nullptr;
    UINTN size = 0;
    if (EFI_ERROR(gop->QueryMode(gop, mode, &size, &info))) {
      continue;
    }
    bool same = info->HorizontalResolution == width && info->VerticalResolution == height;
    gBS->FreePool(info);
    if (same) {
      return mode;
    }
  }
  return kNoMode;
}

EFI_STATUS SwitchTo(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop, UINTN width, UINTN height) {
  UINTN mode = gop == nullptr ? kNoMode : FindMode(gop, width, height);
  if (mode == kNoMode) {
    return EFI_UNSUPPORTED;
  }
  return mode == gop->Mode->Mode ? EFI_SUCCESS : gop->SetMode(gop, static_cast<UINT32>(mode));
}

/// A row in which every pixel differs from its neighbours and from those of
/// other rows, so that a shifted copy is seen.
void FillRow(EFI_GRAPHICS_OUTPUT_BLT_PIXEL *row, UINTN width, UINTN y) {
  for (UINTN x = 0; x < width; x++) {
    row[x].Blue = static_cast<UINT8>(x + y * 3);
    row[x].Green = static_cast<UINT8>((x >> 3) ^ y);
    row[x].Red = static_cast<UINT8>(x * y >> 8);
    row[x].Reserved = 0;
  }
}

EFI_STATUS Paint(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
  UINTN width = gop->Mode->Info->HorizontalResolution;
  UINTN height = gop->Mode->Info->VerticalResolution;
  void *row = nullptr;
  EFI_STATUS status =
      gBS->AllocatePool(EfiBootServicesData, width * sizeof(EFI_GRAPHICS_OUTPUT_BLT_PIXEL), &row);
  if (EFI_ERROR(status)) {
    return status;
  }
  auto *pixels = static_cast<EFI_GRAPHICS_OUTPUT_BLT_PIXEL *>(row);
  for (UINTN y = 0; y < height && !EFI_ERROR(status); y++) {
    FillRow(pixels, width, y);
    status = gop->Blt(gop, pixels, EfiBltBufferToVideo, 0, 0, 0, y, width, 1, 0);
  }
  gBS->FreePool(row);
  return status;
}

void PrintOutput(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop, UINTN index) {
  Print(Ucs2(u"output %d: %dx%d of"), index, gop->Mode->Info->HorizontalResolution,
        gop->Mode->Info->VerticalResolution);
  for (UINT32 mode = 0; mode < gop->Mode->MaxMode; mode++) {
    EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *info = nullptr;
    UINTN size = 0;
    if (!EFI_ERROR(gop->QueryMode(gop, mode, &size, &info))) {
      Print(Ucs2(u" %dx%d"), info->HorizontalResolution, info->VerticalResolution);
      gBS->FreePool(info);
    }
  }
  Print(Ucs2(u"\n"));
}

}  // namespace

EFI_STATUS ShowSetupScreen(UINTN width, UINTN height) {
  Outputs outputs = {};
  EFI_STATUS status = FindOutputs(&outputs);
  if (EFI_ERROR(status)) {
    return status;
  }
  // All modes first: one of the outputs stands for all others, and switching it clears them.
  for (UINTN i = 0; i < outputs.Count && !EFI_ERROR(status); i++) {
    status = SwitchTo(OutputAt(outputs, i), width, height);
  }
  for (UINTN i = 0; i < outputs.Count && !EFI_ERROR(status); i++) {
    status = Paint(OutputAt(outputs, i));
  }
  gBS->FreePool(outputs.Handles);
  return status;
}

EFI_STATUS ListOutputs() {
  Outputs outputs = {};
  EFI_STATUS status = FindOutputs(&outputs);
  if (EFI_ERROR(status)) {
    return status;
  }
  for (UINTN i = 0; i < outputs.Count; i++) {
    EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = OutputAt(outputs, i);
    if (gop != nullptr) {
      PrintOutput(gop, i);
    }
  }
  gBS->FreePool(outputs.Handles);
  return EFI_SUCCESS;
}
