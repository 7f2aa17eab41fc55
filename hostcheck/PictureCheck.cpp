#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "hostcheck/Checks.h"
#include "hostcheck/Readable.h"
#include "platform/PngCodec.h"
#include "resources/BoardImage.h"

namespace hostcheck {
namespace {

constexpr UINT8 kPngSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

void Decode(Report *report, const VOID *data, UINTN size, UINT32 width, UINT32 height) {
  PngPixels pixels = DecodePng(data, size);
  if (pixels.Data == nullptr) {
    Complain(report,
             "the picture's header says %d x %d pixels, but its %ld bytes do not decode to that: "
             "they are cut or damaged, or there is no memory for them. Hand over the whole file "
             "with its true size.",
             width, height, static_cast<UINT64>(size));
  }
  free(pixels.Data);
}

}  // namespace

void CheckPicture(Report *report) {
  VOID *data = nullptr;
  UINTN size = 0;
  UINT32 width = 0;
  UINT32 height = 0;
  EFI_STATUS status = gHost.Protocol->GetResourceData(gHost.Protocol, &data, &size);
  if (EFI_ERROR(status)) {
    Block(report, "GetResourceData answers %r. No view starts: return the board picture.", status);
  } else if (size != 0 && data != nullptr && !IsReadable(data, size)) {
    Block(report,
          "GetResourceData answers %ld bytes at %p, where there is not as much memory. Return the "
          "file's own size.",
          static_cast<UINT64>(size), data);
  } else if (EFI_ERROR(GetPngHeightAndWidth(data, size, &height, &width))) {
    Block(report,
          "GetResourceData answers Success with %ld bytes at %p. Return a PNG file and its size.",
          static_cast<UINT64>(size), data);
  } else if (CompareMem(data, kPngSignature, sizeof(kPngSignature)) != 0) {
    Block(report, "the picture's %ld bytes are no PNG file. tool/board build makes one.",
          static_cast<UINT64>(size));
  } else if (width == 0 || height == 0 || width > OBV_MAX_PICTURE_SIZE ||
             height > OBV_MAX_PICTURE_SIZE) {
    Block(report, "the picture has %d x %d pixels. Make it 1 to 4095 in each direction.", width,
          height);
  } else {
    Decode(report, data, size, width, height);
  }
}

}  // namespace hostcheck
