// The view for a board's author shows what the application shows, to the pixel.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "test/picture/PictureFile.h"
#include "test/picture/TestBoard.h"
#include "tool/view/View.h"

namespace picture {
namespace {

class BoardView : public testing::Test {
 protected:
  BoardView() {
    std::filesystem::create_directories(folder_);
    std::vector<uint8_t> board = TestBoard();
    Wanted.Board = folder_ + "/board.bin";
    std::ofstream(Wanted.Board, std::ios::binary)
        .write(reinterpret_cast<const char *>(board.data()),
               static_cast<std::streamsize>(board.size()));
    Wanted.Shot = folder_ + "/shot.png";
  }

  Screen Shot() {
    nlohmann::json answer = board_view::View(Wanted);
    EXPECT_EQ(answer, nlohmann::json({{"shot", Wanted.Shot}}));
    std::ifstream file(Wanted.Shot, std::ios::binary);
    Screen screen;
    std::vector<uint8_t> samples =
        DecodeSamples({std::istreambuf_iterator<char>(file), {}}, &screen.Width, &screen.Height);
    for (size_t i = 0; i < samples.size(); i += 4) {
      screen.Pixels.push_back(static_cast<uint32_t>(samples[i]) << 16 |
                              static_cast<uint32_t>(samples[i + 1]) << 8 | samples[i + 2]);
    }
    return screen;
  }

  board_view::Request Wanted;

 private:
  // Tests run side by side.
  std::string folder_ = std::string(BOARDSCOPE_BINARY_DIR "/picture/") +
                        testing::UnitTest::GetInstance()->current_test_info()->name();
};

TEST_F(BoardView, ShowsTheReferences) {
  // At 3840 x 2160 a component is in the middle, which would get the focus.
  for (const char *size : {"1024x768", "1920x1080", "1920x1200", "2560x1440"}) {
    board_view::SetResolution(&Wanted, size);
    // Where the application's arrow stands before a hand has moved it.
    Wanted.Pointer = {Wanted.Width / 2, Wanted.Height / 2};
    ExpectReference(std::string("view-") + size, Shot());
  }
}

TEST_F(BoardView, ShowsTheReferenceOfAComponentUnderThePointer) {
  Wanted.Pointer = {kProcessorSpot.X, kProcessorSpot.Y};
  ExpectReference("focus-1920x1080", Shot());
}

}  // namespace
}  // namespace picture
