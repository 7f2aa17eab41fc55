/** @file
  On RunScript: runs that take screenshots, and the pictures that they save.
**/

#pragma once

#include "test/unit/stage/BoxLooks.h"
#include "test/unit/stage/RunScript.h"

#include "app/base/Geometry.h"
#include "capture/Screenshot.h"
#include "platform/PngCodec.h"

// The application's free, by the name that it has in native builds.
extern "C" void BoardscopeFree(void *pointer);

/// A PNG file's pixels in rows of 0xRRGGBB; nothing for a file that cannot be decoded, or with a
/// pixel that is not opaque.
struct Picture {
  UINT32 Width = 0, Height = 0;
  std::vector<UINT32> Pixels;
};

inline Picture Decode(const std::vector<uint8_t> &file) {
  PngPixels png = DecodePng(file.data(), file.size());
  Picture picture{png.Width, png.Height, {}};
  bool opaque = true;
  for (size_t i = 0; i < size_t{png.Width} * png.Height; ++i) {
    const UINT8 *pixel = png.Data + 4 * i;
    opaque = opaque && pixel[3] == 0xFF;
    picture.Pixels.push_back(static_cast<UINT32>(pixel[0] << 16 | pixel[1] << 8 | pixel[2]));
  }
  BoardscopeFree(png.Data);
  return opaque ? picture : Picture{};
}

/// What a box showed when it was looked at.
struct SeenBox {
  std::string Title, Text;
  std::vector<std::string> Buttons;
  bool operator==(const SeenBox &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const SeenBox &box) {
  out << "\"" << box.Title << "\": \"" << box.Text << "\"";
  for (const std::string &button : box.Buttons) {
    out << " [" << button << "]";
  }
  return out;
}

class ScreenshotStage : public RunScript {
 protected:
  static constexpr char16_t kName[] = u"2023-07-04-13-05-09.png";

  fake::Volume &AddStick(fake::VolumeOptions options = {}) { return Machine.AddVolume(options); }

  /// F12, and the screen as it is when the look for volumes begins.
  void ThenF12() {
    Then([this] {
      Before = Machine.Output().Picture();
      Machine.At(fake::Service::LocateHandleBuffer, 1,
                 [this] { AtF12 = Machine.Output().Picture(); });
      Machine.Keyboard.Scan(SCAN_F12);
    });
  }
  /// Looks at the box that must be open now, into Box.
  void ThenLook() {
    Then([this] {
      ASSERT_TRUE(BoxIsOpen());
      Box = {BoxTitle(), BoxText(), ButtonTexts()};
    });
  }
  /// F12, Enter on the first volume, a look at the outcome, Enter.
  void ThenSave() {
    ThenF12();
    ThenEnter();
    ThenLook();
    ThenEnter();
  }
  /// The saved picture must be the screen at F12.
  void ExpectPictureOfF12(const std::vector<uint8_t> &file) const {
    Picture picture = Decode(file);
    EXPECT_EQ(picture.Width, gGeometry.ViewWidth);
    EXPECT_EQ(picture.Height, gGeometry.ViewHeight);
    EXPECT_TRUE(picture.Pixels == AtF12);
    EXPECT_TRUE(Before == AtF12);
  }
  /// Log lines from the first that starts so on, to the line before "Button OK was clicked".
  std::vector<fake::LogLine> LogFrom(std::string_view start) const {
    std::vector<fake::LogLine> lines;
    for (const fake::LogLine &line : Host.Log) {
      if (line.Text == "0 Button OK was clicked\n") {
        break;
      }
      if (!lines.empty() || line.Text.starts_with(start)) {
        lines.push_back(line);
      }
    }
    return lines;
  }

  std::vector<UINT32> Before, AtF12;
  SeenBox Box;
};
