// The board picture: size probe, decoding, scaling, descriptor.

#include "test/unit/stage/BoardImageStage.h"

namespace {

class BoardImage : public BoardImageStage {};

/// Four samples that differ from pixel to pixel.
uint32_t Pattern(uint32_t x, uint32_t y) {
  return (x * 16 + y) << 24 | (255 - x) << 16 | (y * 31 & 255) << 8 | (x ^ 0x80);
}

Bytes PatternBytes(uint32_t width, uint32_t height) {
  Bytes bytes;
  for (uint32_t y = 0; y < height; y++) {
    for (uint32_t x = 0; x < width; x++) {
      for (int shift : {24, 16, 8, 0}) {
        bytes.push_back(static_cast<uint8_t>(Pattern(x, y) >> shift));
      }
    }
  }
  return bytes;
}

// The size probe.

TEST_F(BoardImage, BlobOfExactly24BytesPassesTheSizeProbeEvenWhenItIsNoPng) {
  Bytes blob(24, 0xEE);
  const Bytes sizes = {0x01, 0x02, 0x03, 0x04, 0xA1, 0xB2, 0xC3, 0xD4};
  std::copy(sizes.begin(), sizes.end(), blob.begin() + 16);
  UINT32 height = 0;
  UINT32 width = 0;
  EXPECT_EQ(GetPngHeightAndWidth(blob.data(), blob.size(), &height, &width), EFI_SUCCESS);
  EXPECT_EQ(width, 0x01020304u);
  EXPECT_EQ(height, 0xA1B2C3D4u);
  EXPECT_EQ(Host.Log.size(), 0u);
}

TEST_F(BoardImage, BlobOf23BytesFailsTheSizeProbe) {
  Bytes blob(23);
  UINT32 height = 5;
  UINT32 width = 6;
  EXPECT_EQ(GetPngHeightAndWidth(blob.data(), blob.size(), &height, &width), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Errors(), (Lines{"GetPngHeightAndWidth 252\n"}));
  EXPECT_EQ(height, 5u);
  EXPECT_EQ(width, 6u);
}

TEST_F(BoardImage, SizeProbeRefusesEachNull) {
  Bytes blob(24);
  UINT32 out = 0;
  EXPECT_EQ(GetPngHeightAndWidth(nullptr, 24, &out, &out), EFI_INVALID_PARAMETER);
  EXPECT_EQ(GetPngHeightAndWidth(blob.data(), 24, nullptr, &out), EFI_INVALID_PARAMETER);
  EXPECT_EQ(GetPngHeightAndWidth(blob.data(), 24, &out, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Errors(), (Lines(3, "GetPngHeightAndWidth 252\n")));
}

TEST_F(BoardImage, FailuresAreSilentWithoutALog) {
  Host.Protocol().DebugPrint = nullptr;
  EXPECT_EQ(GetPngHeightAndWidth(nullptr, 0, nullptr, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ(ScaleImage(nullptr, 0, 0, 0, nullptr, nullptr, nullptr), EFI_INVALID_PARAMETER);
  gHost.Protocol = nullptr;
  EXPECT_EQ(GetPngHeightAndWidth(nullptr, 0, nullptr, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ(ScaleImage(nullptr, 0, 0, 0, nullptr, nullptr, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_TRUE(Host.Log.empty());
}

// The scaler.

TEST_F(BoardImage, EqualSizeKeepsTheDecodedBytesInTheFilesChannelOrder) {
  Scaled scaled = Scale(fake::MakePng(5, 7, Pattern), 5, 7);
  EXPECT_EQ(scaled.Status, EFI_SUCCESS);
  EXPECT_EQ(scaled.Pixels, PatternBytes(5, 7));
  EXPECT_EQ(scaled.HasAlpha, 1);
}

TEST_F(BoardImage, TwoByTwoScaledToFourByFourRepeatsTheRightAndBottomEdges) {
  // Grey 0, 200 over 100, 40; alpha 255.
  Bytes png = fake::MakePng(2, 2, [](uint32_t x, uint32_t y) {
    uint32_t grey = y == 0 ? x * 200 : 100 - x * 60;
    return grey << 24 | grey << 16 | grey << 8 | 255;
  });
  Scaled scaled = Scale(png, 4, 4);
  const Bytes expected = {0, 100, 200, 200, 50, 85, 120, 120, 100, 70, 40, 40, 100, 70, 40, 40};
  ASSERT_EQ(scaled.Pixels.size(), 64u);
  for (size_t i = 0; i < expected.size(); i++) {
    for (int channel = 0; channel < 3; channel++) {
      EXPECT_EQ(scaled.Pixels[i * 4 + channel], expected[i]) << i;
    }
    EXPECT_EQ(scaled.Pixels[i * 4 + 3], 255);
  }
}

TEST_F(BoardImage, SizesAreLoggedAtTheErrorLevelAlthoughNothingIsWrong) {
  Scale(fake::MakePng(3, 2, Pattern), 6, 8);
  EXPECT_EQ(Errors(), (Lines{"3 2 6 8\n"}));
  EXPECT_EQ(Host.Log.size(), 1u);
}

TEST_F(BoardImage, ScalerRefusesEachMissingArgument) {
  Bytes png = fake::MakePng(1, 1, Pattern);
  VOID *buffer = nullptr;
  UINTN size = 0;
  UINT8 alpha = 0;
  auto *data = png.data();
  EXPECT_EQ(ScaleImage(nullptr, 9, 1, 1, &buffer, &size, &alpha), EFI_INVALID_PARAMETER);
  EXPECT_EQ(ScaleImage(data, 0, 1, 1, &buffer, &size, &alpha), EFI_INVALID_PARAMETER);
  EXPECT_EQ(ScaleImage(data, 9, 0, 1, &buffer, &size, &alpha), EFI_INVALID_PARAMETER);
  EXPECT_EQ(ScaleImage(data, 9, 1, 0, &buffer, &size, &alpha), EFI_INVALID_PARAMETER);
  EXPECT_EQ(ScaleImage(data, 9, 1, 1, nullptr, &size, &alpha), EFI_INVALID_PARAMETER);
  EXPECT_EQ(ScaleImage(data, 9, 1, 1, &buffer, nullptr, &alpha), EFI_INVALID_PARAMETER);
  EXPECT_EQ(ScaleImage(data, 9, 1, 1, &buffer, &size, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Errors(), (Lines(7, "error ScaleImage 372\n")));
  EXPECT_EQ(alpha, 0);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(BoardImage, UndecodablePictureFailsAndKeepsTheTargetBuffer) {
  Scaled scaled = Scale(Bytes(100, 0x42), 4, 3);
  EXPECT_EQ(scaled.Status, EFI_INVALID_PARAMETER);
  EXPECT_EQ(scaled.HasAlpha, 1);
  EXPECT_EQ(Errors(), (Lines{"0 0 4 3\n", "[ScaleImage] Error occurs: Invalid Parameter\n"}));
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 1u);
}

TEST_F(BoardImage, EveryCutOfAPictureEndsInAPictureOrAFailure) {
  Bytes whole = fake::MakePng(3, 3, Pattern);
  for (size_t size = 1; size < whole.size(); size++) {
    Scaled scaled = Scale(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)), 2, 2);
    EXPECT_TRUE(scaled.Status == EFI_SUCCESS || scaled.Status == EFI_INVALID_PARAMETER) << size;
  }
  EXPECT_EQ(Scale(whole, 2, 2).Status, EFI_SUCCESS);
}

TEST_F(BoardImage, NoMemoryForTheTargetFails) {
  Machine.Pool.Capacity = 1 << 20;
  EXPECT_EQ(Scale(fake::MakePng(2, 2, Pattern), 1000, 1000).Status, EFI_INVALID_PARAMETER);
  EXPECT_EQ(Errors().back(), "[ScaleImage] Error occurs: Invalid Parameter\n");
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(BoardImage, DecodedPictureIsReleased) {
  Scale(fake::MakePng(20, 20, Pattern), 8, 8);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 1u);
  EXPECT_EQ(Machine.Pool.LiveBytes(), 24u + 8u * 8u * 4u);
}

// The descriptor.

class BoardImageDescriptor : public BoardImageStage {
 protected:
  BoardImageDescriptor() { std::memset(&Descriptor, 0xEE, sizeof Descriptor); }
  UINT32 HeaderWord() const {
    UINT32 word = 0;
    std::memcpy(&word, &Descriptor, sizeof word);
    return word;
  }
  void ExpectUntouched() const {
    auto *bytes = reinterpret_cast<const uint8_t *>(&Descriptor);
    EXPECT_EQ(Bytes(bytes, bytes + sizeof Descriptor), Bytes(16, 0xEE));
  }
  lv_img_dsc_t Descriptor;
};

TEST_F(BoardImageDescriptor, HoldsFormatWidthAndHeightInOneWord) {
  Host.Picture = fake::MakePng(6, 4, Pattern);
  EXPECT_EQ(GetPngFromFv(&Descriptor, 6, 4), EFI_SUCCESS);
  EXPECT_EQ(HeaderWord(), 5u | 6u << 8 | 4u << 20);
  EXPECT_EQ(Descriptor.data_size, 96u);
  EXPECT_EQ(Bytes(Descriptor.data, Descriptor.data + 96), PatternBytes(6, 4));
  EXPECT_EQ(Machine.Pool.SizeOf(Descriptor.data - 24), 24u + 96u);
}

TEST_F(BoardImageDescriptor, AcceptsSizesUpTo4095) {
  Host.Picture = fake::MakePng(2, 2, Pattern);
  EXPECT_EQ(GetPngFromFv(&Descriptor, 4095, 1), EFI_SUCCESS);
  EXPECT_EQ(HeaderWord(), 5u | 4095u << 8 | 1u << 20);
  EXPECT_EQ(GetPngFromFv(&Descriptor, 1, 4095), EFI_SUCCESS);
  EXPECT_EQ(HeaderWord(), 5u | 1u << 8 | 4095u << 20);
}

TEST_F(BoardImageDescriptor, WidthIsMaskedToTwelveBits) {
  Host.Picture = fake::MakePng(2, 2, Pattern);
  EXPECT_EQ(GetPngFromFv(&Descriptor, 4096 + 3, 2), EFI_SUCCESS);
  EXPECT_EQ(HeaderWord(), 5u | 3u << 8 | 2u << 20);
  EXPECT_EQ(Descriptor.data_size, 4099u * 2 * 4);
}

TEST_F(BoardImageDescriptor, HostIsAskedWithNothingInTheOutputs) {
  VOID *data = this;
  UINTN size = 7;
  Host.OnGetResourceData = [&](VOID **askedData, UINTN *askedSize) -> EFI_STATUS {
    data = *askedData;
    size = *askedSize;
    return EFI_NOT_FOUND;
  };
  EXPECT_EQ(GetPngFromFv(&Descriptor, 2, 2), EFI_NOT_FOUND);
  EXPECT_EQ(data, nullptr);
  EXPECT_EQ(size, 0u);
}

TEST_F(BoardImageDescriptor, HostWithoutABlobIsLoggedAndItsStatusReturned) {
  Host.OnGetResourceData = [](VOID **, UINTN *) -> EFI_STATUS { return EFI_DEVICE_ERROR; };
  EXPECT_EQ(GetPngFromFv(&Descriptor, 2, 2), EFI_DEVICE_ERROR);
  EXPECT_EQ(Errors(), (Lines{"[GetPngFromFv] Error occurs: Device Error\n"}));
  ExpectUntouched();
}

TEST_F(BoardImageDescriptor, UndecodablePictureIsLoggedByBothOperations) {
  Host.Picture.resize(40);
  EXPECT_EQ(GetPngFromFv(&Descriptor, 8, 6), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Errors(), (Lines{"0 0 8 6\n", "[ScaleImage] Error occurs: Invalid Parameter\n",
                             "[GetPngFromFv] Error occurs: Invalid Parameter\n"}));
  ExpectUntouched();
}

TEST_F(BoardImageDescriptor, TargetWithoutMemoryIsLoggedByBothOperations) {
  Machine.Pool.Capacity = 1 << 20;
  EXPECT_EQ(GetPngFromFv(&Descriptor, 1000, 1000), EFI_INVALID_PARAMETER);
  Lines lines = Errors();
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[lines.size() - 2], "[ScaleImage] Error occurs: Invalid Parameter\n");
  EXPECT_EQ(lines.back(), "[GetPngFromFv] Error occurs: Invalid Parameter\n");
  ExpectUntouched();
}

TEST_F(BoardImageDescriptor, NullPictureIsABadArgumentOfTheScaler) {
  Host.OnGetResourceData = [](VOID **, UINTN *) -> EFI_STATUS { return EFI_SUCCESS; };
  EXPECT_EQ(GetPngFromFv(&Descriptor, 8, 6), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Errors(),
            (Lines{"error ScaleImage 372\n", "[GetPngFromFv] Error occurs: Invalid Parameter\n"}));
  ExpectUntouched();
}

}  // namespace
