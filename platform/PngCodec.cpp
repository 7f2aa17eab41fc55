#include "platform/PngCodec.h"

#include "app/base/MemoryPool.h"
#include "platform/LvglGuard.h"

#define LODEPNG_NO_COMPILE_CPP
extern "C" {
#include "src/extra/libs/png/lodepng.h"
}

namespace {

struct Decoding {
  const UINT8 *File;
  UINTN Size;
  PngPixels Pixels;
  unsigned Error;
};

struct Encoding {
  const PngPixels *Pixels;
  UINT8 *Data;
  size_t Size;
  unsigned Error;
};

void Decode(void *context) {
  auto *decoding = static_cast<Decoding *>(context);
  decoding->Error = lodepng_decode32(&decoding->Pixels.Data, &decoding->Pixels.Width,
                                     &decoding->Pixels.Height, decoding->File, decoding->Size);
}

void Encode(void *context) {
  auto *encoding = static_cast<Encoding *>(context);
  encoding->Error = lodepng_encode32(&encoding->Data, &encoding->Size, encoding->Pixels->Data,
                                     encoding->Pixels->Width, encoding->Pixels->Height);
}

}  // namespace

PngPixels DecodePng(const VOID *file, UINTN size) {
  Decoding decoding = {
      .File = static_cast<const UINT8 *>(file), .Size = size, .Pixels = {}, .Error = 0};
  if (!RunTestingAllocations(Decode, &decoding)) {
    return {};
  }
  if (decoding.Error != 0) {
    // A decoder that failed may leave the header's size, and pixels of another
    // format.
    free(decoding.Pixels.Data);
    return {};
  }
  return decoding.Pixels;
}

PngFile EncodePng(const PngPixels &pixels) {
  Encoding encoding = {.Pixels = &pixels, .Data = nullptr, .Size = 0, .Error = 0};
  if (!RunTestingAllocations(Encode, &encoding)) {
    return {};
  }
  if (encoding.Error != 0) {
    // An encoder that failed hands out what it has so far.
    free(encoding.Data);
    return {};
  }
  return {.Data = encoding.Data, .Size = encoding.Size};
}
