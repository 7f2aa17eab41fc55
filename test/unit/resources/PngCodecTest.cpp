// Kinds of PNG files that decode to red, green, blue, alpha at eight bits each.

#include <random>

#include "test/unit/stage/ResourceStage.h"

#include "platform/PngCodec.h"

#define LODEPNG_NO_COMPILE_CPP
extern "C" {
#include "src/extra/libs/png/lodepng.h"
}

namespace {

using Bytes = std::vector<UINT8>;

class PngCodec : public ResourceStage {
 protected:
  static Bytes Encode(const Bytes &raw, unsigned width, unsigned height, LodePNGColorType type,
                      unsigned depth) {
    UINT8 *file = nullptr;
    size_t size = 0;
    EXPECT_EQ(lodepng_encode_memory(&file, &size, raw.data(), width, height, type, depth), 0u);
    return Bytes(file, file + size);
  }
  static Bytes Decode(const Bytes &file, UINT32 width, UINT32 height) {
    PngPixels pixels = DecodePng(file.data(), file.size());
    EXPECT_EQ(pixels.Width, width);
    EXPECT_EQ(pixels.Height, height);
    return pixels.Data == nullptr ? Bytes() : Bytes(pixels.Data, pixels.Data + width * height * 4);
  }
};

/// A picture's file whose compressed rows are `rows` zero bytes, whatever its header announces.
Bytes WithRowsOf(const Bytes &picture, size_t rows) {
  constexpr size_t kHeaderEnd = 33;  // The signature and the IHDR chunk.
  Bytes raw(rows);
  UINT8 *data = nullptr;
  size_t size = 0;
  LodePNGCompressSettings settings;
  lodepng_compress_settings_init(&settings);
  EXPECT_EQ(lodepng_zlib_compress(&data, &size, raw.data(), raw.size(), &settings), 0u);
  UINT8 *file = static_cast<UINT8 *>(gLvglMemory.Allocate(kHeaderEnd));
  std::copy(picture.begin(), picture.begin() + kHeaderEnd, file);
  size_t fileSize = kHeaderEnd;
  EXPECT_EQ(lodepng_chunk_create(&file, &fileSize, size, "IDAT", data), 0u);
  EXPECT_EQ(lodepng_chunk_create(&file, &fileSize, 0, "IEND", nullptr), 0u);
  Bytes bytes(file, file + fileSize);
  BoardscopeFree(data);
  BoardscopeFree(file);
  return bytes;
}

TEST_F(PngCodec, NoMoreIsDecompressedThanTheHeaderAnnounces) {
  constexpr size_t kPicture = 64 * (1 + 64 * 4);
  // Of so many colours that the encoder keeps four bytes a pixel.
  Bytes noise(64 * 64 * 4);
  for (size_t i = 0; i < noise.size(); ++i) {
    noise[i] = static_cast<UINT8>(i * i / 7 + i * 31);
  }
  Bytes picture = Encode(noise, 64, 64, LCT_RGBA, 8);
  Bytes whole = WithRowsOf(picture, kPicture);
  EXPECT_NE(DecodePng(whole.data(), whole.size()).Data, nullptr);
  Bytes longer = WithRowsOf(picture, kPicture + 1);
  EXPECT_EQ(DecodePng(longer.data(), longer.size()).Data, nullptr);
  Bytes bomb = WithRowsOf(picture, 16 << 20);
  Machine.Pool.ResetPeak();
  uint64_t before = Machine.Pool.PeakBytes();
  EXPECT_EQ(DecodePng(bomb.data(), bomb.size()).Data, nullptr);
  EXPECT_LT(Machine.Pool.PeakBytes() - before, 1u << 20);
}

TEST_F(PngCodec, InterlacedPicturesFitTheirLimit) {
  for (unsigned width : {1u, 2u, 5u, 8u, 33u}) {
    for (unsigned height : {1u, 3u, 4u, 9u, 40u}) {
      Bytes raw(width * height * 4, 0x5D);
      LodePNGState state;
      lodepng_state_init(&state);
      state.info_png.interlace_method = 1;
      UINT8 *file = nullptr;
      size_t size = 0;
      EXPECT_EQ(lodepng_encode(&file, &size, raw.data(), width, height, &state), 0u);
      lodepng_state_cleanup(&state);
      EXPECT_EQ(Decode(Bytes(file, file + size), width, height), raw) << width << " x " << height;
      BoardscopeFree(file);
    }
  }
}

TEST_F(PngCodec, PicturesBeyondTheContractsSizeAreRefused) {
  EXPECT_EQ(Decode(Encode(Bytes(4095), 4095, 1, LCT_GREY, 8), 4095, 1).size(), 4095u * 4);
  EXPECT_TRUE(Decode(Encode(Bytes(4096), 4096, 1, LCT_GREY, 8), 0, 0).empty());
  EXPECT_TRUE(Decode(Encode(Bytes(4096), 1, 4096, LCT_GREY, 8), 0, 0).empty());
}

TEST_F(PngCodec, GreyPicturesBecomeOpaque) {
  EXPECT_EQ(Decode(Encode({0, 7, 255, 128}, 2, 2, LCT_GREY, 8), 2, 2),
            (Bytes{0, 0, 0, 255, 7, 7, 7, 255, 255, 255, 255, 255, 128, 128, 128, 255}));
}

TEST_F(PngCodec, ColourPicturesBecomeOpaque) {
  EXPECT_EQ(Decode(Encode({1, 2, 3, 250, 251, 252}, 2, 1, LCT_RGB, 8), 2, 1),
            (Bytes{1, 2, 3, 255, 250, 251, 252, 255}));
}

TEST_F(PngCodec, SixteenBitSamplesKeepTheirHighByte) {
  EXPECT_EQ(Decode(Encode({1, 99, 2, 98, 3, 97, 4, 96}, 1, 1, LCT_RGBA, 16), 1, 1),
            (Bytes{1, 2, 3, 4}));
}

TEST_F(PngCodec, DamagedFileGivesNothingAndLeavesNothing) {
  Bytes file = Encode(Bytes(64, 9), 4, 4, LCT_RGBA, 8);
  UINT64 blocks = Machine.Pool.LiveBlocks();
  // The checksum behind the header.
  file[29] ^= 0x55;
  PngPixels pixels = DecodePng(file.data(), file.size());
  EXPECT_EQ(pixels.Data, nullptr);
  EXPECT_EQ(pixels.Width, 0u);
  EXPECT_EQ(pixels.Height, 0u);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), blocks);
}

TEST_F(PngCodec, EncodedPictureDecodesToItself) {
  Bytes raw;
  for (int i = 0; i < 15 * 11 * 4; i++) {
    raw.push_back(static_cast<UINT8>(i * 37));
  }
  PngFile file = EncodePng({raw.data(), 15, 11});
  ASSERT_NE(file.Data, nullptr);
  EXPECT_EQ(Decode(Bytes(file.Data, file.Data + file.Size), 15, 11), raw);
}

// lodepng's encoder writes through the null of some failed allocations, and makes a damaged file
// after others.
TEST_F(PngCodec, EncoderIsLeftAtAnyAllocationThatFails) {
  Bytes raw(8 * 8 * 4);
  std::mt19937 random(1);
  std::generate(raw.begin(), raw.end(), [&] { return static_cast<UINT8>(random() % 16); });
  uint64_t blocks = Machine.Pool.LiveBlocks();
  PngFile file = {};
  uint64_t failed = 0;
  while (file.Data == nullptr) {
    Machine.FailCall(fake::Service::AllocatePool, failed + 1, EFI_OUT_OF_RESOURCES);
    file = EncodePng({raw.data(), 8, 8});
    Machine.Faults.Clear();
    failed += file.Data == nullptr ? 1 : 0;
    ASSERT_EQ(Machine.Pool.LiveBlocks(), blocks + (file.Data == nullptr ? 0 : 1));
  }
  EXPECT_GT(failed, 40u);
  EXPECT_EQ(Decode(Bytes(file.Data, file.Data + file.Size), 8, 8), raw);
}

}  // namespace
