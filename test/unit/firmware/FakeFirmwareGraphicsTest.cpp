#include <gtest/gtest.h>

#include "test/firmware/FakeFirmware.h"

namespace fake {
namespace {

using Pixel = EFI_GRAPHICS_OUTPUT_BLT_PIXEL;

class FakeFirmwareGraphics : public testing::Test {
 protected:
  EFI_STATUS Blt(Pixel *buffer, EFI_GRAPHICS_OUTPUT_BLT_OPERATION operation, UINTN sx, UINTN sy,
                 UINTN dx, UINTN dy, UINTN w, UINTN h, UINTN delta = 0) {
    return Gop->Blt(Gop, buffer, operation, sx, sy, dx, dy, w, h, delta);
  }
  Firmware Machine;
  EFI_BOOT_SERVICES &Services = Machine.BootServices;
  GraphicsOutput &Output = Machine.AddOutput({{8, 4}, {16, 8, PixelBltOnly}, {8, 4}});
  EFI_GRAPHICS_OUTPUT_PROTOCOL *Gop = Output.Protocol();
  Pixel Red = {0, 0, 255, 0};
};

TEST_F(FakeFirmwareGraphics, QueryModeAllocatesForTheCaller) {
  UINTN size = 0;
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *info = nullptr;
  ASSERT_EQ(Gop->QueryMode(Gop, 1, &size, &info), EFI_SUCCESS);
  EXPECT_EQ(size, sizeof *info);
  EXPECT_EQ(info->HorizontalResolution, 16u);
  EXPECT_EQ(info->VerticalResolution, 8u);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 1u);
  EXPECT_EQ(Services.FreePool(info), EFI_SUCCESS);
  EXPECT_EQ(Gop->QueryMode(Gop, 3, &size, &info), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Gop->QueryMode(Gop, 0, nullptr, &info), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Gop->QueryMode(Gop, 0, &size, nullptr), EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareGraphics, SetModeChangesSizeAndClears) {
  Output.Paint([](UINT32, UINT32) { return 0xFFFFFF; });
  EXPECT_EQ(Gop->SetMode(Gop, 1), EFI_SUCCESS);
  EXPECT_EQ(Gop->Mode->Mode, 1u);
  EXPECT_EQ(Gop->Mode->Info->HorizontalResolution, 16u);
  EXPECT_EQ(Gop->Mode->FrameBufferBase, 0u) << "a Blt-only mode shows no frame buffer";
  EXPECT_EQ(Output.Pixel(3, 3), 0u);
  EXPECT_EQ(Gop->SetMode(Gop, 3), EFI_UNSUPPORTED);
  EXPECT_EQ(Gop->SetMode(Gop, 0), EFI_SUCCESS);
  EXPECT_NE(Gop->Mode->FrameBufferBase, 0u);
}

TEST_F(FakeFirmwareGraphics, ModesCanRefuse) {
  Output.SetModes({{8, 4},
                   {.Width = 16, .Height = 8, .QueryStatus = EFI_DEVICE_ERROR},
                   {.Width = 4, .Height = 2, .SetStatus = EFI_UNSUPPORTED}});
  UINTN size = 0;
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *info = nullptr;
  EXPECT_EQ(Gop->QueryMode(Gop, 1, &size, &info), EFI_DEVICE_ERROR);
  EXPECT_EQ(info, nullptr);
  EXPECT_EQ(Gop->SetMode(Gop, 2), EFI_UNSUPPORTED);
  EXPECT_EQ(Gop->Mode->MaxMode, 3u);
}

TEST_F(FakeFirmwareGraphics, FillStaysInsideItsRectangle) {
  EXPECT_EQ(Blt(&Red, EfiBltVideoFill, 0, 0, 2, 1, 3, 2), EFI_SUCCESS);
  EXPECT_EQ(Output.Pixel(2, 1), 0xFF0000u);
  EXPECT_EQ(Output.Pixel(4, 2), 0xFF0000u);
  EXPECT_EQ(Output.Pixel(5, 2), 0u);
  EXPECT_EQ(Output.Pixel(4, 3), 0u);
}

TEST_F(FakeFirmwareGraphics, BoundsAreInvalidParameters) {
  Pixel buffer[64];
  EXPECT_EQ(Blt(&Red, EfiBltVideoFill, 0, 0, 1, 0, 8, 1), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Blt(&Red, EfiBltVideoFill, 0, 0, 0, 4, 1, 1), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Blt(&Red, EfiBltVideoFill, 0, 0, 0, 0, 0, 1), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Blt(&Red, EfiBltVideoFill, 0, 0, 0, 0, 1, 0), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Blt(&Red, EfiBltVideoFill, 0, 0, ~UINTN{0}, 0, 2, 1), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Blt(nullptr, EfiBltVideoFill, 0, 0, 0, 0, 1, 1), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Blt(buffer, EfiBltVideoToBltBuffer, 7, 0, 0, 0, 2, 1), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Blt(buffer, EfiBltBufferToVideo, 0, 0, 0, 3, 1, 2), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Blt(nullptr, EfiBltVideoToVideo, 0, 0, 7, 0, 2, 1), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Blt(nullptr, EfiBltVideoToVideo, 7, 0, 0, 0, 2, 1), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Blt(buffer, EfiGraphicsOutputBltOperationMax, 0, 0, 0, 0, 1, 1), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Output.Picture(), std::vector<UINT32>(32, 0));
}

TEST_F(FakeFirmwareGraphics, BufferTransfersRespectDelta) {
  Pixel buffer[12];
  for (UINT8 i = 0; i < 12; i++) {
    buffer[i] = {i, 0, 0, 0};
  }
  // A 2 x 2 cut from (1, 1) of a buffer that is 4 pixels wide.
  EXPECT_EQ(Blt(buffer, EfiBltBufferToVideo, 1, 1, 0, 0, 2, 2, 4 * sizeof(Pixel)), EFI_SUCCESS);
  EXPECT_EQ(Output.Pixel(0, 0), 5u);
  EXPECT_EQ(Output.Pixel(1, 1), 10u);
  Pixel back[12] = {};
  EXPECT_EQ(Blt(back, EfiBltVideoToBltBuffer, 0, 0, 2, 1, 2, 2, 4 * sizeof(Pixel)), EFI_SUCCESS);
  EXPECT_EQ(back[6].Blue, 5);
  EXPECT_EQ(back[11].Blue, 10);
  EXPECT_EQ(back[2].Blue, 0);
  EXPECT_EQ(Blt(back, EfiBltVideoToBltBuffer, 0, 0, 0, 0, 2, 2), EFI_SUCCESS);
  EXPECT_EQ(back[2].Blue, 9) << "rows are packed when Delta is 0";
}

TEST_F(FakeFirmwareGraphics, MovesOverlappingRectangles) {
  Output.Paint([](UINT32 x, UINT32 y) { return y * 16 + x; });
  EXPECT_EQ(Blt(nullptr, EfiBltVideoToVideo, 0, 0, 1, 1, 4, 3), EFI_SUCCESS);
  EXPECT_EQ(Output.Pixel(1, 1), 0u);
  EXPECT_EQ(Output.Pixel(4, 3), 2u * 16 + 3);
  EXPECT_EQ(Output.Pixel(5, 3), 3u * 16 + 5);
}

TEST_F(FakeFirmwareGraphics, PixelFormatsStoreTheSameColours) {
  constexpr EFI_PIXEL_BITMASK k565 = {0xF800, 0x07E0, 0x001F, 0};
  GraphicsOutput &other = Machine.AddOutput(
      {{4, 2, PixelRedGreenBlueReserved8BitPerColor, 6}, {4, 2, PixelBitMask, 4, k565}});
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = other.Protocol();
  Pixel colour = {0x10, 0x80, 0xF8, 0};
  gop->Blt(gop, &colour, EfiBltVideoFill, 0, 0, 0, 0, 4, 2, 0);
  const auto *frame = reinterpret_cast<const UINT32 *>(gop->Mode->FrameBufferBase);
  EXPECT_EQ(frame[6] & 0xFFFFFF, 0x1080F8u) << "red comes first, and lines are six pixels apart";
  EXPECT_EQ(other.Pixel(0, 1), 0xF88010u);
  gop->SetMode(gop, 1);
  gop->Blt(gop, &colour, EfiBltVideoFill, 0, 0, 0, 0, 4, 2, 0);
  frame = reinterpret_cast<const UINT32 *>(gop->Mode->FrameBufferBase);
  EXPECT_EQ(frame[0], 0xFC02u);
  EXPECT_EQ(other.Pixel(0, 0), 0xF88010u);
}

TEST_F(FakeFirmwareGraphics, OutputsComeAndGo) {
  GraphicsOutput &second = Machine.AddOutput();
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_GUID guid = kGraphicsOutputGuid;
  Services.LocateHandleBuffer(ByProtocol, &guid, nullptr, &count, &handles);
  EXPECT_EQ(count, 2u);
  EXPECT_EQ(handles[1], second.Handle);
  Services.FreePool(handles);
  Machine.RemoveOutput(second);
  Services.LocateHandleBuffer(ByProtocol, &guid, nullptr, &count, &handles);
  EXPECT_EQ(count, 1u);
  Services.FreePool(handles);
  EXPECT_EQ(Machine.ProblemsText(), "");
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gone = second.Protocol();
  EXPECT_EQ(gone->SetMode(gone, 1), EFI_DEVICE_ERROR);
  EXPECT_EQ(Machine.ProblemsText(), "gop1 was used after its removal\n");
}

TEST_F(FakeFirmwareGraphics, CallsAreRecordedWithTheirOutput) {
  Gop->SetMode(Gop, 1);
  Blt(&Red, EfiBltVideoFill, 0, 0, 15, 0, 2, 1);
  EXPECT_EQ(Machine.Calls.Lines(),
            (std::vector<std::string>{
                "Gop.SetMode(gop0, 1) = Success",
                "Gop.Blt(gop0, VideoFill, 0, 0, 15, 0, 2, 1, 0) = Invalid Parameter"}));
}

}  // namespace
}  // namespace fake
