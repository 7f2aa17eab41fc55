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
    std::filesystem::create_directories(Folder);
    std::vector<uint8_t> board = TestBoard();
    std::ofstream(Wanted["board"].get<std::string>(), std::ios::binary)
        .write(reinterpret_cast<const char *>(board.data()),
               static_cast<std::streamsize>(board.size()));
  }

  Screen Shot() {
    nlohmann::json answer = board_view::View(board_view::ReadRequest(Wanted));
    EXPECT_EQ(answer, nlohmann::json({{"shot", Wanted["shot"]}}));
    std::ifstream file(Wanted["shot"].get<std::string>(), std::ios::binary);
    Screen screen;
    std::vector<uint8_t> samples =
        DecodeSamples({std::istreambuf_iterator<char>(file), {}}, &screen.Width, &screen.Height);
    for (size_t i = 0; i < samples.size(); i += 4) {
      screen.Pixels.push_back(static_cast<uint32_t>(samples[i]) << 16 |
                              static_cast<uint32_t>(samples[i + 1]) << 8 | samples[i + 2]);
    }
    return screen;
  }

  // Tests run side by side.
  const std::string Folder = std::string(BOARDSCOPE_BINARY_DIR "/picture/") +
                             testing::UnitTest::GetInstance()->current_test_info()->name();
  nlohmann::json Wanted = {{"board", Folder + "/board.bin"}, {"shot", Folder + "/shot.png"}};
};

TEST_F(BoardView, ShowsTheReferences) {
  // At 3840 x 2160 a component is in the middle, which would get the focus.
  // The pointer is where the application's arrow stands before a hand has moved it.
  for (auto [size, middle] : {std::pair("1024x768", "512,384"),
                              {"1920x1080", "960,540"},
                              {"1920x1200", "960,600"},
                              {"2560x1440", "1280,720"}}) {
    Wanted["resolution"] = size;
    Wanted["pointer"] = middle;
    ExpectReference(std::string("view-") + size, Shot());
  }
}

TEST_F(BoardView, ShowsTheReferenceOfAComponentUnderThePointer) {
  Wanted["pointer"] = std::to_string(kProcessorSpot.X) + "," + std::to_string(kProcessorSpot.Y);
  ExpectReference("focus-1920x1080", Shot());
}

}  // namespace
}  // namespace picture
