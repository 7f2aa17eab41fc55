#include "resources/BoardImage.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "platform/ColorText.h"
#include "platform/PngCodec.h"
#include "resources/Recolor.h"
#include "resources/Resampler.h"

namespace {

constexpr CHAR8 kGetPng[] = "GetPngFromFv";
constexpr CHAR8 kGetSize[] = "GetPngHeightAndWidth";
constexpr CHAR8 kScale[] = "ScaleImage";

// These name places in the log.
constexpr UINT32 kGetSizeLocation = 252;
constexpr UINT32 kScaleLocation = 372;

constexpr UINTN kBytesPerPixel = 4;

// A PNG file begins with its signature and the IHDR chunk; the PNG
// specification puts width and height here, big-endian.
constexpr UINTN kPngWidthOffset = 16;
constexpr UINTN kPngHeightOffset = 20;
constexpr UINTN kPngSizeEnd = 24;

// The one view in which the picture may be recoloured.
constexpr UINT16 kRecolorWidth = 1024;
constexpr UINT16 kRecolorHeight = 768;

constexpr UINT16 kHeaderSizeMask = 0xFFF;

static_assert(sizeof(lv_img_dsc_t) == 16 && sizeof(lv_img_header_t) == 4);

/// Whether LVGL's image header holds sizes up to 4095, as our copy of it must.
constexpr bool HeaderHoldsTwelveBits() {
  lv_img_header_t header = {};
  header.w = kHeaderSizeMask;
  header.h = kHeaderSizeMask;
  return header.w == kHeaderSizeMask && header.h == kHeaderSizeMask;
}
static_assert(HeaderHoldsTwelveBits());

UINT32 ReadBigEndian32(const UINT8 *bytes) {
  return SwapBytes32(ReadUnaligned32(reinterpret_cast<const UINT32 *>(bytes)));
}

void RecolorPicture(UINT8 *pixels, UINTN count) {
  const OBV_SHARED_STATE *shared = gHost.SharedState;
  if (shared->RecolorEnabled == 0 || gGeometry.ViewWidth != kRecolorWidth ||
      gGeometry.ViewHeight != kRecolorHeight) {
    return;
  }
  RecolorBand band = {};
  band.New = ParseColorText(shared->RecolorNewText);
  band.Low = ParseColorText(shared->RecolorLowText);
  band.High = ParseColorText(shared->RecolorHighText);
  RecolorPixels(pixels, count, band, shared->RecolorMode);
}

/// Resamples a decoded picture, and frees it. An undecodable one is empty, and
/// the target may be NULL: any failure shows as the resampler's.
EFI_STATUS ResampleInto(const PngPixels &source, UINT8 *target, UINT32 targetWidth,
                        UINT32 targetHeight) {
  // At the error level so that the sizes are always recorded.
  LogError("%d %d %d %d\n", source.Width, source.Height, targetWidth, targetHeight);
  EFI_STATUS status =
      ResampleBilinear(source.Data, source.Width, source.Height, target, targetWidth, targetHeight);
  free(source.Data);
  return status;
}

}  // namespace

EFI_STATUS GetPngFromFv(lv_img_dsc_t *descriptor, UINT16 width, UINT16 height) {
  VOID *data = nullptr;
  UINTN size = 0;
  EFI_STATUS status = gHost.Protocol->GetResourceData(gHost.Protocol, &data, &size);
  if (EFI_ERROR(status)) {
    LogOperationError(kGetPng, status);
    return status;
  }
  VOID *pixels = nullptr;
  UINTN pixelsSize = 0;
  UINT8 hasAlpha = 0;
  status = ScaleImage(data, size, width, height, &pixels, &pixelsSize, &hasAlpha);
  if (EFI_ERROR(status)) {
    LogOperationError(kGetPng, status);
    return status;
  }
  lv_img_header_t header = {};
  header.cf = LV_IMG_CF_TRUE_COLOR + (hasAlpha != 0 ? 1 : 0);
  header.w = width & kHeaderSizeMask;
  header.h = height & kHeaderSizeMask;
  descriptor->header = header;
  descriptor->data_size = static_cast<UINT32>(pixelsSize);
  descriptor->data = static_cast<const UINT8 *>(pixels);
  return EFI_SUCCESS;
}

EFI_STATUS GetPngHeightAndWidth(const VOID *data, UINTN size, UINT32 *height, UINT32 *width) {
  if (data == nullptr || size < kPngSizeEnd || height == nullptr || width == nullptr) {
    LogError("%a %d\n", kGetSize, kGetSizeLocation);
    return EFI_INVALID_PARAMETER;
  }
  auto *bytes = static_cast<const UINT8 *>(data);
  *width = ReadBigEndian32(bytes + kPngWidthOffset);
  *height = ReadBigEndian32(bytes + kPngHeightOffset);
  return EFI_SUCCESS;
}

EFI_STATUS ScaleImage(const VOID *data, UINTN size, UINT32 targetWidth, UINT32 targetHeight,
                      VOID **buffer, UINTN *bufferSize, UINT8 *hasAlpha) {
  if (data == nullptr || size == 0 || buffer == nullptr || bufferSize == nullptr ||
      targetWidth == 0 || targetHeight == 0 || hasAlpha == nullptr) {
    LogError("error %a %d\n", kScale, kScaleLocation);
    return EFI_INVALID_PARAMETER;
  }
  *hasAlpha = 1;
  UINTN targetPixels = static_cast<UINTN>(targetWidth) * targetHeight;
  UINTN targetSize = targetPixels * kBytesPerPixel;
  PngPixels source = DecodePng(data, size);
  auto *target = static_cast<UINT8 *>(malloc(targetSize));
  EFI_STATUS status = ResampleInto(source, target, targetWidth, targetHeight);
  if (EFI_ERROR(status)) {
    // The target stays for the leak report.
    LogOperationError(kScale, status);
    return status;
  }
  *buffer = target;
  *bufferSize = targetSize;
  RecolorPicture(target, targetPixels);
  return EFI_SUCCESS;
}
