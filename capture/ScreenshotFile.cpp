#include "capture/ScreenshotFile.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "platform/PngCodec.h"

namespace {

// These name places in the log.
constexpr UINT32 kOpenLocation = 1183;
constexpr UINT32 kWriteLocation = 1209;
constexpr UINT32 kFlushLocation = 1215;

constexpr UINT64 kOpenMode = EFI_FILE_MODE_CREATE | EFI_FILE_MODE_READ | EFI_FILE_MODE_WRITE;

EFI_STATUS LogFailure(UINT32 location, EFI_STATUS status) {
  LogError("%a %d %r\n", "UserSelectedPartitionMessageBoxHandler", location, status);
  return status;
}

void MakeName(ScreenshotName *name) {
  EFI_TIME now = {};
  // Without a clock the name is all zeros; the picture is saved all the same.
  (void)gRT->GetTime(&now, nullptr);
  UnicodeSPrint(name->Ucs2, sizeof(name->Ucs2), Ucs2(u"%04d-%02d-%02d-%02d-%02d-%02d%a"), now.Year,
                now.Month, now.Day, now.Hour, now.Minute, now.Second, ".png");
  (void)UnicodeStrToAsciiStrS(name->Ucs2, name->Ascii, sizeof(name->Ascii));
}

/// From the frame buffer's order to the PNG file's: opaque red, green, blue.
void ConvertToRgba(EFI_GRAPHICS_OUTPUT_BLT_PIXEL *pixels, UINTN count) {
  constexpr UINT8 kOpaque = 0xFF;
  for (UINTN i = 0; i < count; ++i) {
    UINT8 blue = pixels[i].Blue;
    pixels[i].Blue = pixels[i].Red;
    pixels[i].Red = blue;
    pixels[i].Reserved = kOpaque;
  }
}

EFI_STATUS WriteAll(EFI_FILE_PROTOCOL *file, const PngFile &png) {
  UINTN size = png.Size;
  EFI_STATUS status = file->Write(file, &size, png.Data);
  if (EFI_ERROR(status)) {
    return LogFailure(kWriteLocation, status);
  }
  status = file->Flush(file);
  return EFI_ERROR(status) ? LogFailure(kFlushLocation, status) : EFI_SUCCESS;
}

/// Nothing was written: a file that this save has made is deleted, one that an earlier save within
/// the same second has filled stays.
void DropUnwritten(EFI_FILE_PROTOCOL *file) {
  constexpr UINT64 kEnd = MAX_UINT64;
  UINT64 size = 0;
  if (EFI_ERROR(file->SetPosition(file, kEnd)) || EFI_ERROR(file->GetPosition(file, &size)) ||
      size != 0) {
    (void)file->Close(file);
    return;
  }
  // Closes the file in any case.
  (void)file->Delete(file);
}

}  // namespace

EFI_STATUS SaveScreenshot(EFI_FILE_PROTOCOL *root, EFI_GRAPHICS_OUTPUT_BLT_PIXEL *pixels,
                          ScreenshotName *name) {
  MakeName(name);
  EFI_FILE_PROTOCOL *file = nullptr;
  EFI_STATUS status = root->Open(root, &file, name->Ucs2, kOpenMode, 0);
  if (EFI_ERROR(status)) {
    return LogFailure(kOpenLocation, status);
  }
  ConvertToRgba(pixels, static_cast<UINTN>(gGeometry.ViewWidth) * gGeometry.ViewHeight);
  PngFile png = EncodePng({.Data = reinterpret_cast<UINT8 *>(pixels),
                           .Width = gGeometry.ViewWidth,
                           .Height = gGeometry.ViewHeight});
  if (png.Data == nullptr) {
    // The encoder fails for want of memory only.
    status = LogFailure(kWriteLocation, EFI_OUT_OF_RESOURCES);
    DropUnwritten(file);
    return status;
  }
  status = WriteAll(file, png);
  if (EFI_ERROR(status)) {
    // File and block are deliberately left: a device that failed to write is
    // not asked again, and the leak report frees the block.
    return status;
  }
  free(png.Data);
  (void)file->Close(file);
  LogInfo("F12ScreenShots Success\n");
  return EFI_SUCCESS;
}
