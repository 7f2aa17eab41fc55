// A graphics output: mode list, current mode, real frame buffer, and the strict Blt of the UEFI
// specification.

#pragma once

#include "test/firmware/DevicePath.h"
#include "test/firmware/Edk2.h"

namespace fake {

struct VideoMode {
  UINT32 Width;
  UINT32 Height;
  EFI_GRAPHICS_PIXEL_FORMAT Format = PixelBlueGreenRedReserved8BitPerColor;
  /// Pixels per line of the frame buffer; 0 for Width.
  UINT32 Stride = 0;
  EFI_PIXEL_BITMASK Masks = {0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000};
  /// What QueryMode and SetMode answer for this mode number.
  EFI_STATUS QueryStatus = EFI_SUCCESS;
  EFI_STATUS SetStatus = EFI_SUCCESS;
};

class GraphicsOutput {
 public:
  /// For Firmware::AddOutput, which also installs it. The current mode's screen starts black.
  GraphicsOutput(std::string name, std::vector<VideoMode> modes, UINT32 current);
  GraphicsOutput(const GraphicsOutput &) = delete;
  GraphicsOutput &operator=(const GraphicsOutput &) = delete;

  EFI_GRAPHICS_OUTPUT_PROTOCOL *Protocol() { return &thunk_.Protocol; }
  EFI_HANDLE Handle = nullptr;
  DevicePath Path;
  const std::string &Name() const { return name_; }

  UINT32 Width() const { return info_.HorizontalResolution; }
  UINT32 Height() const { return info_.VerticalResolution; }
  UINT32 ModeNumber() const { return mode_.Mode; }
  /// 0x00RRGGBB of a screen pixel.
  UINT32 Pixel(UINT32 x, UINT32 y) const;
  /// The whole screen in rows of 0x00RRGGBB.
  std::vector<UINT32> Picture() const;
  /// Draws without a service call, for example a setup screen before the application starts.
  void Paint(const std::function<UINT32(UINT32 x, UINT32 y)> &colour);
  /// Writes the screen as a binary PPM picture; false when the file cannot be written.
  bool SavePpm(const std::string &path) const;

  /// Replaces the mode list as a monitor change does; the current mode number and screen stay.
  void SetModes(std::vector<VideoMode> modes);
  const std::vector<VideoMode> &Modes() const { return modes_; }
  /// A removed output answers EFI_DEVICE_ERROR and reports the use as a problem.
  bool Removed = false;

  /// The functions of the protocol, without recording and fault plan.
  EFI_STATUS QueryMode(UINT32 number, UINTN *size, EFI_GRAPHICS_OUTPUT_MODE_INFORMATION **info);
  EFI_STATUS SetMode(UINT32 number);
  struct Transfer {
    EFI_GRAPHICS_OUTPUT_BLT_OPERATION Operation;
    UINTN SourceX, SourceY, DestinationX, DestinationY, Width, Height, Delta;
  };
  EFI_STATUS Blt(EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer, const Transfer &transfer);

 private:
  struct Thunk {
    EFI_GRAPHICS_OUTPUT_PROTOCOL Protocol;
    GraphicsOutput *Self;
  };
  static GraphicsOutput *From(EFI_GRAPHICS_OUTPUT_PROTOCOL *protocol);
  static EFI_STATUS EFIAPI QueryModeThunk(EFI_GRAPHICS_OUTPUT_PROTOCOL *self, UINT32 number,
                                          UINTN *size, EFI_GRAPHICS_OUTPUT_MODE_INFORMATION **info);
  static EFI_STATUS EFIAPI SetModeThunk(EFI_GRAPHICS_OUTPUT_PROTOCOL *self, UINT32 number);
  static EFI_STATUS EFIAPI BltThunk(EFI_GRAPHICS_OUTPUT_PROTOCOL *self,
                                    EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer,
                                    EFI_GRAPHICS_OUTPUT_BLT_OPERATION operation, UINTN sourceX,
                                    UINTN sourceY, UINTN destinationX, UINTN destinationY,
                                    UINTN width, UINTN height, UINTN delta);

  void Enter(UINT32 number);
  bool FitsScreen(UINTN x, UINTN y, UINTN width, UINTN height) const;
  UINT32 Encode(UINT32 pixel) const;
  UINT32 Decode(UINT32 raw) const;
  UINT32 *Row(UINTN y) { return frame_.data() + y * info_.PixelsPerScanLine; }
  const UINT32 *Row(UINTN y) const { return frame_.data() + y * info_.PixelsPerScanLine; }
  void Fill(UINT32 pixel, const Transfer &transfer);
  void Read(uint8_t *buffer, const Transfer &transfer) const;
  void Write(const uint8_t *buffer, const Transfer &transfer);
  void Move(const Transfer &transfer);

  std::string name_;
  Thunk thunk_;
  std::vector<VideoMode> modes_;
  EFI_GRAPHICS_OUTPUT_PROTOCOL_MODE mode_{};
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION info_{};
  std::vector<UINT32> frame_;
};

/// The mode list of an ordinary monitor: 1920 x 1080 (mode 0), 1024 x 768, 800 x 600, 1280 x 1024,
/// 2560 x 1440, 3840 x 2160.
std::vector<VideoMode> UsualModes();

}  // namespace fake
