// Block transfers of a graphics output, with the bounds that the UEFI specification sets.

#include <bit>

#include "test/firmware/GraphicsOutput.h"

namespace fake {

namespace {

UINT32 Scale8(UINT32 channel, UINT32 mask) {
  if (mask == 0) {
    return 0;
  }
  int width = std::popcount(mask);
  UINT32 value = width >= 8 ? channel << (width - 8) : channel >> (8 - width);
  return value << std::countr_zero(mask);
}

UINT32 Unscale8(UINT32 raw, UINT32 mask) {
  if (mask == 0) {
    return 0;
  }
  int width = std::popcount(mask);
  UINT32 value = (raw & mask) >> std::countr_zero(mask);
  return (width >= 8 ? value >> (width - 8) : value << (8 - width)) & 0xFF;
}

// Rows of a caller's buffer; Delta is in bytes and 0 stands for packed rows.
size_t RowBytes(const GraphicsOutput::Transfer &transfer) {
  return transfer.Delta == 0 ? transfer.Width * sizeof(UINT32) : transfer.Delta;
}

bool ValidOperation(EFI_GRAPHICS_OUTPUT_BLT_OPERATION operation) {
  return static_cast<UINT32>(operation) < EfiGraphicsOutputBltOperationMax;
}

}  // namespace

// Pixels of callers are blue, green, red, reserved in memory: 0xRRGGBB as a number.
UINT32 GraphicsOutput::Encode(UINT32 pixel) const {
  switch (info_.PixelFormat) {
    case PixelRedGreenBlueReserved8BitPerColor:
      return (pixel & 0xFF00FF00) | (pixel >> 16 & 0xFF) | (pixel & 0xFF) << 16;
    case PixelBitMask:
      return Scale8(pixel >> 16 & 0xFF, info_.PixelInformation.RedMask) |
             Scale8(pixel >> 8 & 0xFF, info_.PixelInformation.GreenMask) |
             Scale8(pixel & 0xFF, info_.PixelInformation.BlueMask);
    default:
      return pixel;
  }
}

UINT32 GraphicsOutput::Decode(UINT32 raw) const {
  switch (info_.PixelFormat) {
    case PixelRedGreenBlueReserved8BitPerColor:
      return (raw & 0xFF00FF00) | (raw >> 16 & 0xFF) | (raw & 0xFF) << 16;
    case PixelBitMask:
      return Unscale8(raw, info_.PixelInformation.RedMask) << 16 |
             Unscale8(raw, info_.PixelInformation.GreenMask) << 8 |
             Unscale8(raw, info_.PixelInformation.BlueMask);
    default:
      return raw;
  }
}

bool GraphicsOutput::FitsScreen(UINTN x, UINTN y, UINTN width, UINTN height) const {
  return x <= Width() && width <= Width() - x && y <= Height() && height <= Height() - y;
}

EFI_STATUS GraphicsOutput::Blt(EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer, const Transfer &transfer) {
  const Transfer &t = transfer;
  if (!ValidOperation(t.Operation) || t.Width == 0 || t.Height == 0) {
    return EFI_INVALID_PARAMETER;
  }
  if (buffer == nullptr && t.Operation != EfiBltVideoToVideo) {
    return EFI_INVALID_PARAMETER;
  }
  bool readsScreen = t.Operation == EfiBltVideoToBltBuffer || t.Operation == EfiBltVideoToVideo;
  bool writesScreen = t.Operation != EfiBltVideoToBltBuffer;
  if ((readsScreen && !FitsScreen(t.SourceX, t.SourceY, t.Width, t.Height)) ||
      (writesScreen && !FitsScreen(t.DestinationX, t.DestinationY, t.Width, t.Height))) {
    return EFI_INVALID_PARAMETER;
  }
  switch (t.Operation) {
    case EfiBltVideoFill: {
      UINT32 pixel;
      std::memcpy(&pixel, buffer, sizeof pixel);
      Fill(pixel, t);
      break;
    }
    case EfiBltVideoToBltBuffer:
      Read(reinterpret_cast<uint8_t *>(buffer), t);
      break;
    case EfiBltBufferToVideo:
      Write(reinterpret_cast<const uint8_t *>(buffer), t);
      break;
    default:
      Move(t);
      break;
  }
  return EFI_SUCCESS;
}

void GraphicsOutput::Fill(UINT32 pixel, const Transfer &t) {
  for (UINTN row = 0; row < t.Height; row++) {
    UINT32 *to = Row(t.DestinationY + row) + t.DestinationX;
    std::fill(to, to + t.Width, Encode(pixel));
  }
}

void GraphicsOutput::Read(uint8_t *buffer, const Transfer &t) const {
  bool direct = info_.PixelFormat == PixelBlueGreenRedReserved8BitPerColor ||
                info_.PixelFormat == PixelBltOnly;
  for (UINTN row = 0; row < t.Height; row++) {
    uint8_t *to = buffer + (t.DestinationY + row) * RowBytes(t) + t.DestinationX * sizeof(UINT32);
    const UINT32 *from = Row(t.SourceY + row) + t.SourceX;
    if (direct) {
      std::memcpy(to, from, t.Width * sizeof(UINT32));
      continue;
    }
    for (UINTN x = 0; x < t.Width; x++) {
      UINT32 pixel = Decode(from[x]);
      std::memcpy(to + x * sizeof pixel, &pixel, sizeof pixel);
    }
  }
}

void GraphicsOutput::Write(const uint8_t *buffer, const Transfer &t) {
  bool direct = info_.PixelFormat == PixelBlueGreenRedReserved8BitPerColor ||
                info_.PixelFormat == PixelBltOnly;
  for (UINTN row = 0; row < t.Height; row++) {
    const uint8_t *from = buffer + (t.SourceY + row) * RowBytes(t) + t.SourceX * sizeof(UINT32);
    UINT32 *to = Row(t.DestinationY + row) + t.DestinationX;
    if (direct) {
      std::memcpy(to, from, t.Width * sizeof(UINT32));
      continue;
    }
    for (UINTN x = 0; x < t.Width; x++) {
      UINT32 pixel;
      std::memcpy(&pixel, from + x * sizeof pixel, sizeof pixel);
      to[x] = Encode(pixel);
    }
  }
}

void GraphicsOutput::Move(const Transfer &t) {
  bool downwards = t.DestinationY > t.SourceY;
  for (UINTN i = 0; i < t.Height; i++) {
    UINTN row = downwards ? t.Height - 1 - i : i;
    std::memmove(Row(t.DestinationY + row) + t.DestinationX, Row(t.SourceY + row) + t.SourceX,
                 t.Width * sizeof(UINT32));
  }
}

}  // namespace fake
