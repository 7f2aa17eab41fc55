#include "test/firmware/GraphicsOutput.h"

#include <cstdio>
#include <cstring>

#include "test/firmware/Call.h"
#include "test/firmware/FakeFirmware.h"

namespace fake {

namespace {

EFI_GRAPHICS_OUTPUT_MODE_INFORMATION Describe(const VideoMode &mode) {
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION info{};
  info.Version = 0;
  info.HorizontalResolution = mode.Width;
  info.VerticalResolution = mode.Height;
  info.PixelFormat = mode.Format;
  if (mode.Format == PixelBitMask) {
    info.PixelInformation = mode.Masks;
  }
  info.PixelsPerScanLine = std::max(mode.Stride, mode.Width);
  return info;
}

std::string OperationText(EFI_GRAPHICS_OUTPUT_BLT_OPERATION operation) {
  constexpr const char *kNames[] = {"VideoFill", "VideoToBltBuffer", "BufferToVideo",
                                    "VideoToVideo"};
  auto number = static_cast<size_t>(operation);
  return number < std::size(kNames) ? kNames[number] : std::to_string(number);
}

}  // namespace

std::vector<VideoMode> UsualModes() {
  return {{1920, 1080}, {1024, 768}, {800, 600}, {1280, 1024}, {2560, 1440}, {3840, 2160}};
}

GraphicsOutput::GraphicsOutput(std::string name, std::vector<VideoMode> modes, UINT32 current)
    : name_(std::move(name)),
      thunk_{{&QueryModeThunk, &SetModeThunk, &BltThunk, nullptr}, this},
      modes_(std::move(modes)) {
  thunk_.Protocol.Mode = &mode_;
  mode_.MaxMode = static_cast<UINT32>(modes_.size());
  mode_.Info = &info_;
  mode_.SizeOfInfo = sizeof info_;
  Enter(current);
}

GraphicsOutput *GraphicsOutput::From(EFI_GRAPHICS_OUTPUT_PROTOCOL *protocol) {
  GraphicsOutput *self = reinterpret_cast<Thunk *>(protocol)->Self;
  if (self->Removed) {
    Firmware::Current().Problem(self->name_ + " was used after its removal");
  }
  return self;
}

void GraphicsOutput::Enter(UINT32 number) {
  mode_.Mode = number;
  info_ = Describe(modes_[number]);
  frame_.assign(size_t{info_.PixelsPerScanLine} * info_.VerticalResolution, 0);
  bool hidden = info_.PixelFormat == PixelBltOnly;
  mode_.FrameBufferBase = hidden ? 0 : reinterpret_cast<EFI_PHYSICAL_ADDRESS>(frame_.data());
  mode_.FrameBufferSize = hidden ? 0 : frame_.size() * sizeof(UINT32);
}

void GraphicsOutput::SetModes(std::vector<VideoMode> modes) {
  modes_ = std::move(modes);
  mode_.MaxMode = static_cast<UINT32>(modes_.size());
}

EFI_STATUS GraphicsOutput::QueryMode(UINT32 number, UINTN *size,
                                     EFI_GRAPHICS_OUTPUT_MODE_INFORMATION **info) {
  if (number >= modes_.size() || size == nullptr || info == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (EFI_ERROR(modes_[number].QueryStatus)) {
    return modes_[number].QueryStatus;
  }
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION answer = Describe(modes_[number]);
  VOID *copy = Firmware::Current().Pool.Duplicate(&answer, sizeof answer);
  if (copy == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }
  *size = sizeof answer;
  *info = static_cast<EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *>(copy);
  return EFI_SUCCESS;
}

EFI_STATUS GraphicsOutput::SetMode(UINT32 number) {
  if (number >= modes_.size()) {
    return EFI_UNSUPPORTED;
  }
  if (EFI_ERROR(modes_[number].SetStatus)) {
    return modes_[number].SetStatus;
  }
  Enter(number);
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI GraphicsOutput::QueryModeThunk(EFI_GRAPHICS_OUTPUT_PROTOCOL *protocol,
                                                 UINT32 number, UINTN *size,
                                                 EFI_GRAPHICS_OUTPUT_MODE_INFORMATION **info) {
  GraphicsOutput *self = From(protocol);
  Call call(Service::GopQueryMode, self, self->name_, number);
  return call.Run(
      [&] { return self->Removed ? EFI_DEVICE_ERROR : self->QueryMode(number, size, info); });
}

EFI_STATUS EFIAPI GraphicsOutput::SetModeThunk(EFI_GRAPHICS_OUTPUT_PROTOCOL *protocol,
                                               UINT32 number) {
  GraphicsOutput *self = From(protocol);
  Call call(Service::GopSetMode, self, self->name_, number);
  return call.Run([&] { return self->Removed ? EFI_DEVICE_ERROR : self->SetMode(number); });
}

EFI_STATUS EFIAPI GraphicsOutput::BltThunk(EFI_GRAPHICS_OUTPUT_PROTOCOL *protocol,
                                           EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer,
                                           EFI_GRAPHICS_OUTPUT_BLT_OPERATION operation,
                                           UINTN sourceX, UINTN sourceY, UINTN destinationX,
                                           UINTN destinationY, UINTN width, UINTN height,
                                           UINTN delta) {
  GraphicsOutput *self = From(protocol);
  Call call(Service::GopBlt, self, self->name_, OperationText(operation), sourceX, sourceY,
            destinationX, destinationY, width, height, delta);
  Transfer transfer{operation, sourceX, sourceY, destinationX, destinationY, width, height, delta};
  return call.Run([&] { return self->Removed ? EFI_DEVICE_ERROR : self->Blt(buffer, transfer); });
}

UINT32 GraphicsOutput::Pixel(UINT32 x, UINT32 y) const { return Decode(Row(y)[x]) & 0xFFFFFF; }

// Failure loops take and paint thousands of screens, so the usual format goes by the row.
std::vector<UINT32> GraphicsOutput::Picture() const {
  std::vector<UINT32> picture(size_t{Width()} * Height());
  bool coded = info_.PixelFormat == PixelRedGreenBlueReserved8BitPerColor ||
               info_.PixelFormat == PixelBitMask;
  for (UINT32 y = 0; y < Height(); y++) {
    UINT32 *line = picture.data() + size_t{y} * Width();
    std::memcpy(line, Row(y), Width() * sizeof *line);
    for (UINT32 x = 0; x < Width(); x++) {
      line[x] = (coded ? Decode(line[x]) : line[x]) & 0xFFFFFF;
    }
  }
  return picture;
}

void GraphicsOutput::Paint(const std::function<UINT32(UINT32 x, UINT32 y)> &colour) {
  for (UINT32 y = 0; y < Height(); y++) {
    UINT32 *line = Row(y);
    for (UINT32 x = 0; x < Width(); x++) {
      line[x] = Encode(colour(x, y));
    }
  }
}

bool GraphicsOutput::SavePpm(const std::string &path) const {
  std::FILE *file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) {
    return false;
  }
  std::fprintf(file, "P6\n%u %u\n255\n", Width(), Height());
  for (UINT32 pixel : Picture()) {
    const uint8_t rgb[] = {static_cast<uint8_t>(pixel >> 16), static_cast<uint8_t>(pixel >> 8),
                           static_cast<uint8_t>(pixel)};
    std::fwrite(rgb, 1, sizeof rgb, file);
  }
  return std::fclose(file) == 0;
}

}  // namespace fake
