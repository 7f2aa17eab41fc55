#include "LateOutput.h"

namespace {

struct Size {
  UINT32 Width;
  UINT32 Height;
};

constexpr Size kSizes[] = {{640, 480}, {1024, 768}};
constexpr UINTN kPixelSize = sizeof(EFI_GRAPHICS_OUTPUT_BLT_PIXEL);
constexpr UINTN kScreenSize = 1024 * 768 * kPixelSize;
constexpr UINT8 kNotBlack = 0x55;

struct LateOutput {
  EFI_HANDLE Handle;
  EFI_GRAPHICS_OUTPUT_PROTOCOL Gop;
  EFI_GRAPHICS_OUTPUT_PROTOCOL_MODE Mode;
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION Info;
  UINT8 *Screen;
};
LateOutput gLate;

void Describe(UINT32 mode, EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *info) {
  *info = {};
  info->HorizontalResolution = kSizes[mode].Width;
  info->VerticalResolution = kSizes[mode].Height;
  info->PixelsPerScanLine = kSizes[mode].Width;
  info->PixelFormat = PixelBlueGreenRedReserved8BitPerColor;
}

EFI_STATUS EFIAPI QueryMode(EFI_GRAPHICS_OUTPUT_PROTOCOL *, UINT32 mode, UINTN *size,
                            EFI_GRAPHICS_OUTPUT_MODE_INFORMATION **info) {
  if (mode >= gLate.Mode.MaxMode) {
    return EFI_INVALID_PARAMETER;
  }
  VOID *memory = nullptr;
  EFI_STATUS status = gBS->AllocatePool(EfiBootServicesData, sizeof(**info), &memory);
  if (EFI_ERROR(status)) {
    return status;
  }
  *size = sizeof(**info);
  *info = static_cast<EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *>(memory);
  Describe(mode, *info);
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI SetMode(EFI_GRAPHICS_OUTPUT_PROTOCOL *, UINT32 mode) {
  if (mode >= gLate.Mode.MaxMode) {
    return EFI_UNSUPPORTED;
  }
  gLate.Mode.Mode = mode;
  Describe(mode, &gLate.Info);
  SetMem(gLate.Screen, kScreenSize, 0);
  return EFI_SUCCESS;
}

bool OnScreen(UINTN x, UINTN y, UINTN width, UINTN height) {
  return x + width <= gLate.Info.HorizontalResolution &&
         y + height <= gLate.Info.VerticalResolution;
}

UINT8 *PixelAt(UINTN x, UINTN y) {
  return gLate.Screen + (y * gLate.Info.HorizontalResolution + x) * kPixelSize;
}

/// One rectangle to copy between the screen and a buffer whose rows have a pitch in bytes.
struct Rectangle {
  UINTN X;
  UINTN Y;
  UINTN Width;
  UINTN Height;
  UINT8 *Buffer;
  UINTN Pitch;
};

void CopyRows(const Rectangle &area, bool toScreen) {
  for (UINTN row = 0; row < area.Height; row++) {
    UINT8 *screen = PixelAt(area.X, area.Y + row);
    UINT8 *buffer = area.Buffer + row * area.Pitch;
    CopyMem(toScreen ? screen : buffer, toScreen ? buffer : screen, area.Width * kPixelSize);
  }
}

void Fill(UINT32 color, UINTN x, UINTN y, UINTN width, UINTN height) {
  for (UINTN row = 0; row < height; row++) {
    SetMem32(PixelAt(x, y + row), width * kPixelSize, color);
  }
}

EFI_STATUS EFIAPI Blt(EFI_GRAPHICS_OUTPUT_PROTOCOL *, EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer,
                      EFI_GRAPHICS_OUTPUT_BLT_OPERATION operation, UINTN fromX, UINTN fromY,
                      UINTN toX, UINTN toY, UINTN width, UINTN height, UINTN delta) {
  UINTN pitch = delta == 0 ? width * kPixelSize : delta;
  UINT8 *bytes = reinterpret_cast<UINT8 *>(buffer);
  bool fromScreen = operation == EfiBltVideoToBltBuffer;
  if (!OnScreen(fromScreen ? fromX : toX, fromScreen ? fromY : toY, width, height)) {
    return EFI_INVALID_PARAMETER;
  }
  switch (operation) {
    case EfiBltVideoFill:
      Fill(*reinterpret_cast<UINT32 *>(buffer), toX, toY, width, height);
      return EFI_SUCCESS;
    case EfiBltVideoToBltBuffer:
      CopyRows({fromX, fromY, width, height, bytes + toY * pitch + toX * kPixelSize, pitch}, false);
      return EFI_SUCCESS;
    case EfiBltBufferToVideo:
      CopyRows({toX, toY, width, height, bytes + fromY * pitch + fromX * kPixelSize, pitch}, true);
      return EFI_SUCCESS;
    default:
      return EFI_UNSUPPORTED;
  }
}

}  // namespace

UINTN MakeLateScreen() {
  EFI_PHYSICAL_ADDRESS address = 0;
  EFI_STATUS status = gBS->AllocatePages(AllocateAnyPages, EfiBootServicesData,
                                         EFI_SIZE_TO_PAGES(kScreenSize), &address);
  gLate.Screen = EFI_ERROR(status) ? nullptr : reinterpret_cast<UINT8 *>(address);
  return reinterpret_cast<UINTN>(gLate.Screen);
}

EFI_STATUS InstallLateOutput(Modes modes) {
  if (gLate.Handle != nullptr) {
    return EFI_ALREADY_STARTED;
  }
  gLate.Mode.MaxMode = static_cast<UINT32>(modes);
  gLate.Mode.Mode = 0;
  gLate.Mode.Info = &gLate.Info;
  gLate.Mode.SizeOfInfo = sizeof(gLate.Info);
  gLate.Mode.FrameBufferBase = reinterpret_cast<UINTN>(gLate.Screen);
  gLate.Mode.FrameBufferSize = kScreenSize;
  Describe(0, &gLate.Info);
  SetMem(gLate.Screen, kScreenSize, kNotBlack);
  gLate.Gop = {QueryMode, SetMode, Blt, &gLate.Mode};
  return gBS->InstallProtocolInterface(&gLate.Handle, &gEfiGraphicsOutputProtocolGuid,
                                       EFI_NATIVE_INTERFACE, &gLate.Gop);
}

void RemoveLateOutput() {
  if (gLate.Handle != nullptr) {
    (void)gBS->UninstallProtocolInterface(gLate.Handle, &gEfiGraphicsOutputProtocolGuid,
                                          &gLate.Gop);
    gLate.Handle = nullptr;
  }
}
