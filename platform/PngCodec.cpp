#include "platform/PngCodec.h"

#include "app/base/MemoryPool.h"
#include "platform/LvglGuard.h"

#define LODEPNG_NO_COMPILE_CPP
extern "C" {
#include "src/extra/libs/png/lodepng.h"
}

namespace {

/// lodepng's own error numbers end far below.
constexpr unsigned kTooLarge = 1000;

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

/// Bytes of a picture's rows as a PNG file compresses them: each with the byte of its filter.
UINTN RawSize(UINTN width, UINTN height, UINTN bitsPerPixel) {
  return width == 0 ? 0 : height * (1 + (width * bitsPerPixel + 7) / 8);
}

/// What the header says that decompression must give. The PNG specification's interlacing sends a
/// picture in seven passes, each of every so many columns and rows.
UINTN RawSize(const LodePNGInfo &info, UINTN width, UINTN height) {
  struct Pass {
    UINT8 FirstX, FirstY, StepX, StepY;
  };
  constexpr Pass kPasses[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                              {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
  UINTN bitsPerPixel = lodepng_get_bpp(&info.color);
  if (info.interlace_method == 0) {
    return RawSize(width, height, bitsPerPixel);
  }
  UINTN size = 0;
  for (const Pass &pass : kPasses) {
    size += RawSize((width + pass.StepX - 1 - pass.FirstX) / pass.StepX,
                    (height + pass.StepY - 1 - pass.FirstY) / pass.StepY, bitsPerPixel);
  }
  return size;
}

/// lodepng_decode32, but for a limit: a small file may claim a small picture and decompress to
/// more than there is memory.
unsigned DecodeBounded(LodePNGState *state, Decoding *decoding) {
  PngPixels &pixels = decoding->Pixels;
  unsigned error =
      lodepng_inspect(&pixels.Width, &pixels.Height, state, decoding->File, decoding->Size);
  if (error != 0) {
    return error;
  }
  if (pixels.Width > OBV_MAX_PICTURE_SIZE || pixels.Height > OBV_MAX_PICTURE_SIZE) {
    return kTooLarge;
  }
  state->decoder.zlibsettings.max_output_size =
      RawSize(state->info_png, pixels.Width, pixels.Height);
  return lodepng_decode(&pixels.Data, &pixels.Width, &pixels.Height, state, decoding->File,
                        decoding->Size);
}

void Decode(void *context) {
  auto *decoding = static_cast<Decoding *>(context);
  LodePNGState state;
  lodepng_state_init(&state);
  state.info_raw.colortype = LCT_RGBA;
  state.info_raw.bitdepth = 8;
  state.decoder.read_text_chunks = 0;
  state.decoder.remember_unknown_chunks = 0;
  decoding->Error = DecodeBounded(&state, decoding);
  lodepng_state_cleanup(&state);
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
  if (!RunWhileMemoryLasts(Encode, &encoding)) {
    return {};
  }
  if (encoding.Error != 0) {
    // An encoder that failed hands out what it has so far.
    free(encoding.Data);
    return {};
  }
  return {.Data = encoding.Data, .Size = encoding.Size};
}
