// The board picture on the screen, against an independent resampler.

#include "test/picture/ReferenceRun.h"
#include "test/picture/TestBoard.h"

#include "host/portable/Blobs.h"
#include "host/portable/BoardReader.h"

namespace picture {
namespace {

using Bytes = std::vector<uint8_t>;

struct Size {
  uint32_t Width, Height;
};

/// One byte of one pixel of the scaled picture, from the definition: 8.8 fixed point, aligned at
/// the top left, edges repeated, truncated.
uint32_t Sample(const Bytes &source, Size from, Size to, uint32_t column, uint32_t row, int byte) {
  uint64_t x = uint64_t{column} * (from.Width * 256 / to.Width);
  uint64_t y = uint64_t{row} * (from.Height * 256 / to.Height);
  uint64_t sx = x >> 8;
  uint64_t sy = y >> 8;
  int64_t fx = static_cast<int64_t>(x & 255);
  int64_t fy = static_cast<int64_t>(y & 255);
  auto at = [&](uint64_t px, uint64_t py) -> int64_t {
    px = std::min<uint64_t>(px, from.Width - 1);
    py = std::min<uint64_t>(py, from.Height - 1);
    return source[(py * from.Width + px) * 4 + static_cast<uint64_t>(byte)];
  };
  int64_t top = at(sx, sy) * 256 + (at(sx + 1, sy) - at(sx, sy)) * fx;
  int64_t bottom = at(sx, sy + 1) * 256 + (at(sx + 1, sy + 1) - at(sx, sy + 1)) * fx;
  return static_cast<uint32_t>((top * 256 + (bottom - top) * fy) >> 16);
}

/// The default board's picture alone, at this size of the screen.
class BoardPixels : public ReferenceRun {
 protected:
  static Bytes DefaultPicture() {
    obv_host::EmbeddedFile file = obv_host::EmbeddedBoard();
    obv_host::Board board{};
    obv_host::BoardFault fault{};
    EXPECT_EQ(obv_host::OpenBoard(file.Data, file.Size, &board, &fault), EFI_SUCCESS) << fault.Text;
    return {board.Picture, board.Picture + board.Header.PictureSize};
  }

  void ExpectExact(Size view, Size shown, uint32_t top) {
    Bytes png = DefaultPicture();
    Screen screen = Show({{view.Width, view.Height}}, BareBoard(png));
    ASSERT_EQ(screen.Width, view.Width);
    Size from;
    Bytes source = DecodeSamples(png, &from.Width, &from.Height);
    for (uint32_t row = 0; row < shown.Height; row++) {
      for (uint32_t column = 0; column < shown.Width; column++) {
        ASSERT_EQ(Sample(source, from, shown, column, row, 3), 255u) << "not opaque";
        // The file's samples stand in the order of the frame buffer.
        uint32_t wanted = Sample(source, from, shown, column, row, 2) << 16 |
                          Sample(source, from, shown, column, row, 1) << 8 |
                          Sample(source, from, shown, column, row, 0);
        uint32_t seen = screen.Pixels[size_t{top + row} * screen.Width + column];
        ASSERT_EQ(seen, wanted) << "column " << column << ", row " << row;
      }
    }
  }
};

TEST_F(BoardPixels, ExactAt1024x768) { ExpectExact({1024, 768}, {768, 576}, 96); }
TEST_F(BoardPixels, ExactAt1920x1080) { ExpectExact({1920, 1080}, {1440, 810}, 135); }
TEST_F(BoardPixels, ExactAt1920x1200) { ExpectExact({1920, 1200}, {1440, 900}, 150); }
TEST_F(BoardPixels, ExactAt2560x1440) { ExpectExact({2560, 1440}, {1920, 1080}, 180); }
TEST_F(BoardPixels, ExactAt3840x2160) { ExpectExact({3840, 2160}, {2880, 1620}, 270); }

}  // namespace
}  // namespace picture
