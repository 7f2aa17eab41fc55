#include "test/contract/Contract.h"

namespace contract {

namespace {

using Pixel = EFI_GRAPHICS_OUTPUT_BLT_PIXEL;

constexpr Pixel kRed = {0, 0, 200, 0};
constexpr Pixel kGreen = {0, 150, 0, 0};

EFI_GRAPHICS_OUTPUT_PROTOCOL *FirstOutput() {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  if (EFI_ERROR(gBS->LocateHandleBuffer(ByProtocol, &gEfiGraphicsOutputProtocolGuid, nullptr,
                                        &count, &handles))) {
    return nullptr;
  }
  void *gop = nullptr;
  (void)gBS->HandleProtocol(handles[0], &gEfiGraphicsOutputProtocolGuid, &gop);
  gBS->FreePool(handles);
  return static_cast<EFI_GRAPHICS_OUTPUT_PROTOCOL *>(gop);
}

/// The screen's pixel, in the order red, green, blue.
UINT64 PixelAt(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop, UINTN x, UINTN y) {
  Pixel pixel = {1, 2, 3, 0};
  (void)gop->Blt(gop, &pixel, EfiBltVideoToBltBuffer, x, y, 0, 0, 1, 1, 0);
  return static_cast<UINT64>(pixel.Red) << 16 | static_cast<UINT64>(pixel.Green) << 8 | pixel.Blue;
}

EFI_STATUS Fill(EFI_GRAPHICS_OUTPUT_PROTOCOL *gop, Pixel pixel, UINTN x, UINTN y, UINTN size) {
  return gop->Blt(gop, &pixel, EfiBltVideoFill, 0, 0, x, y, size, size, 0);
}

void AskForRefusals(const Report &report, EFI_GRAPHICS_OUTPUT_PROTOCOL *gop) {
  UINTN width = gop->Mode->Info->HorizontalResolution;
  Pixel pixel = kRed;
  auto blt = [&](EFI_GRAPHICS_OUTPUT_BLT_OPERATION operation, UINTN x, UINTN size) {
    return gop->Blt(gop, &pixel, operation, x, 0, x, 0, size, 1, 0);
  };
  Say(report, "transfer of nothing", blt(EfiBltBufferToVideo, 0, 0));
  Say(report, "transfer of an unknown kind", blt(EfiGraphicsOutputBltOperationMax, 0, 1));
  Say(report, "fill beyond the screen", blt(EfiBltVideoFill, width, 1));
  Say(report, "fill that leaves the screen", blt(EfiBltVideoFill, width - 1, 2));
  Say(report, "read beyond the screen", blt(EfiBltVideoToBltBuffer, width, 1));
  Say(report, "write beyond the screen", blt(EfiBltBufferToVideo, width, 1));
  Say(report, "move beyond the screen", blt(EfiBltVideoToVideo, width, 1));
}

}  // namespace

void AskAboutOutput(const Report &report) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = FirstOutput();
  UINT32 modes = gop->Mode->MaxMode;
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *info = nullptr;
  UINTN size = 0;
  Say(report, "query the current mode", gop->QueryMode(gop, gop->Mode->Mode, &size, &info));
  SayNumber(report, "size of its information", size);
  SayNumber(report, "it is the current one",
            info->HorizontalResolution == gop->Mode->Info->HorizontalResolution &&
                info->VerticalResolution == gop->Mode->Info->VerticalResolution);
  Say(report, "free it", gBS->FreePool(info));
  Say(report, "query a mode beyond the last", gop->QueryMode(gop, modes, &size, &info));
  Say(report, "query to nowhere", gop->QueryMode(gop, 0, &size, nullptr));
  Say(report, "set a mode beyond the last", gop->SetMode(gop, modes));
  Fill(gop, kRed, 0, 0, 8);
  Say(report, "set the current mode", gop->SetMode(gop, gop->Mode->Mode));
  SayNumber(report, "a pixel of the screen after that", PixelAt(gop, 1, 1));
}

void AskAboutTransfers(const Report &report) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = FirstOutput();
  AskForRefusals(report, gop);
  Say(report, "fill a square", Fill(gop, kRed, 8, 8, 4));
  SayNumber(report, "a pixel in it", PixelAt(gop, 11, 11));
  SayNumber(report, "a pixel beside it", PixelAt(gop, 12, 11));

  Pixel block[4] = {kGreen, kGreen, kRed, kRed};
  Say(report, "write the second column of a block",
      gop->Blt(gop, block, EfiBltBufferToVideo, 1, 0, 20, 20, 1, 2, 2 * sizeof(Pixel)));
  SayNumber(report, "upper pixel", PixelAt(gop, 20, 20));
  SayNumber(report, "lower pixel", PixelAt(gop, 20, 21));

  Say(report, "move a square onto itself",
      gop->Blt(gop, nullptr, EfiBltVideoToVideo, 8, 8, 9, 9, 4, 4, 0));
  SayNumber(report, "its new corner", PixelAt(gop, 12, 12));

  Pixel read[6] = {};
  Say(report, "read into the middle of a block",
      gop->Blt(gop, read, EfiBltVideoToBltBuffer, 20, 20, 1, 1, 1, 1, 3 * sizeof(Pixel)));
  SayNumber(report, "the pixel read", read[4].Green);
  SayNumber(report, "the pixel before it", read[3].Green);
}

}  // namespace contract
