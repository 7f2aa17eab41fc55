// The pointer's arrow: what LVGL shows of it, and the rest of its block of pixels.

#include "test/unit/stage/PortStage.h"

#include "platform/CursorImage.h"

namespace {

/// Over a grey screen black is '#', white 'o', the screen itself '.'; a soft edge is '+'
/// where it is darker than the screen, else '-'. A frame of the screen stands around the arrow.
constexpr char kSmallArrow[] = R"(
..........
.#+.......
.##+......
.#-#+.....
.#o-#+....
.#oo-#+...
.#ooo-#+..
.#oooo-#+.
.#ooooo-#.
.#ooo+###.
.#o-o-#+..
.#-#-o++..
.##++o-#..
.+++#-o#+.
....++-#+.
....+##++.
.....++...
..........
)";

/// Without the rows that hold the small one.
constexpr char kLargeArrow[] = R"(
#oooooooooooooooooooooooooooo+#+
#oooooooooooooooooooooooooo-##+.
#ooooooooooooooooooooooooo-#++..
#oooooooooooooooooooooooo+#+....
#oooooooooooooooooooooo-#++.....
#ooooooooooooooooooooo-#+.......
#oooooooooooooooooooooo+#+......
#ooooooooooooooooooooooo+#+.....
#oooooooooooooooooooooooo+#+....
#ooooooooooooooooooooooooo#+....
#ooooooooooooooooooooooooo-#+...
#oooooooooooooooooooooooooo-#+..
#ooooooooooooooooooooooooooo-#+.
#oooooooooooooooooooooooooooo+#+
#ooooooooooooooooooooooooooooo##
#oooooooooooooooooooooooooooo-#+
#ooooooooooooooooooooooooooo-#+.
#oooooooooooooooooooooooooo-#+..
#oooooooo-oooooooooooooooo-#+...
#ooooooo-#+oooooooooooooo-#+....
#ooooooo#+#+oooooooooooo-#+.....
#oooooo++.+#+oooooooooo-#+......
#ooooo-#+..+##-ooooooo-#+.......
#oooo-#+....++#-ooooo-#+........
#oooo++.......+#-ooo-#+.........
#ooo+#+........+#+o-#+..........
#oo-#+..........+###+...........
####+............+#+............
)";

constexpr UINT32 kGround = 0x80;

char Letter(UINT32 grey) {
  if (grey == kGround) {
    return '.';
  }
  if (grey < 0x30) {
    return '#';
  }
  if (grey > 0xD0) {
    return 'o';
  }
  return grey < kGround ? '+' : '-';
}

class CursorImage : public PortStage {
 protected:
  static constexpr UINT32 kBlockSize = 32;

  CursorImage() { LeaveFontsOut(); }

  /// Starts the port on a grey screen, with the pointer in its middle.
  void Show() {
    Machine.AddSimplePointer();
    Machine.AddAbsolutePointer();
    InitializeLvglPort();
    lv_color_t ground = lv_color_make(kGround, kGround, kGround);
    lv_obj_set_style_bg_color(lv_scr_act(), ground, LV_PART_MAIN);
    lv_refr_now(nullptr);
  }

  /// A part of the screen; all of it must be grey.
  std::string Seen(UINT32 left, UINT32 top, UINT32 width, UINT32 height) const {
    std::string drawing = "\n";
    for (UINT32 y = top; y < top + height; y++) {
      for (UINT32 x = left; x < left + width; x++) {
        UINT32 color = Output.Pixel(x, y);
        EXPECT_EQ(color, (color & 0xFF) * 0x010101) << x << ", " << y;
        drawing += Letter(color & 0xFF);
      }
      drawing += '\n';
    }
    return drawing;
  }

  static const UINT8 *Pixel(UINT32 index) { return kCursorImage.data + index * 4; }

  /// Black that lets a part of what is below it through.
  static bool IsSoft(UINT32 index) {
    const UINT8 *pixel = Pixel(index);
    return pixel[0] + pixel[1] + pixel[2] == 0 && pixel[3] > 0 && pixel[3] < 0xFF;
  }

  /// The block from a row on, each pixel laid over the ground; all of them must be grey.
  static std::string BlockFrom(UINT32 row) {
    std::string drawing = "\n";
    for (UINT32 i = row * kBlockSize; i < kBlockSize * kBlockSize; i++) {
      const UINT8 *pixel = Pixel(i);
      EXPECT_TRUE(pixel[0] == pixel[1] && pixel[1] == pixel[2]) << i;
      drawing += Letter((pixel[0] * pixel[3] + kGround * (0xFFu - pixel[3])) / 0xFFu);
      drawing += i % kBlockSize == kBlockSize - 1 ? "\n" : "";
    }
    return drawing;
  }
};

TEST_F(CursorImage, DeclaresLessThanItHolds) {
  EXPECT_EQ(kCursorImage.header.cf, LV_IMG_CF_TRUE_COLOR_ALPHA);
  EXPECT_EQ(kCursorImage.header.w, 8u);
  EXPECT_EQ(kCursorImage.header.h, 16u);
  EXPECT_EQ(kCursorImage.data_size, 4096u);
}

TEST_F(CursorImage, ShowsASmallArrowWithItsTipAtThePointer) {
  Show();
  EXPECT_EQ(Seen(32 - 1, 24 - 1, 8 + 2, 16 + 2), kSmallArrow);
}

TEST_F(CursorImage, HoldsALargeArrowInTheRowsThatAreNotShown) {
  EXPECT_EQ(BlockFrom(4), kLargeArrow);
}

TEST_F(CursorImage, SlantedEdgesLetTheScreenThrough) {
  for (UINT32 y = 0; y < 7; y++) {
    EXPECT_TRUE(IsSoft(y * 8 + y + 1)) << y;
  }
  for (UINT32 row = 4; row < kBlockSize; row++) {
    UINT32 last = row * kBlockSize + kBlockSize - 1;
    while (Pixel(last)[3] == 0) {
      last--;
    }
    EXPECT_TRUE(IsSoft(last)) << row;
  }
}

}  // namespace
