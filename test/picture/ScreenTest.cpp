// The whole screen at every size, pixel by pixel.

#include "test/picture/ReferenceRun.h"
#include "test/picture/TestBoard.h"

namespace picture {
namespace {

class ScreenPicture : public ReferenceRun {
 protected:
  void ExpectView(std::vector<fake::VideoMode> modes, const std::string &reference) {
    AddPointers();
    ExpectReference(reference, Show(std::move(modes), TestBoard()));
  }
};

TEST_F(ScreenPicture, At1024x768) { ExpectView({{1024, 768}}, "view-1024x768"); }
TEST_F(ScreenPicture, At1920x1080) { ExpectView({{1920, 1080}}, "view-1920x1080"); }
TEST_F(ScreenPicture, At1920x1200) { ExpectView({{1920, 1200}}, "view-1920x1200"); }
TEST_F(ScreenPicture, At2560x1440) { ExpectView({{2560, 1440}}, "view-2560x1440"); }
TEST_F(ScreenPicture, At3840x2160) { ExpectView({{3840, 2160}}, "view-3840x2160"); }

TEST_F(ScreenPicture, SetupScreenOf1280x1024ShowsTheViewOf1920x1080) {
  ExpectView({{1280, 1024}, {1024, 768}, {1920, 1080}}, "view-1920x1080");
}

TEST_F(ScreenPicture, SetupScreenOf1280x1024WithoutFullHdShowsTheSmallView) {
  ExpectView({{1280, 1024}, {800, 600}, {1024, 768}}, "view-1024x768");
}

// The frame buffer's format must not be seen.
TEST_F(ScreenPicture, RedFirstOutputWithPaddedLinesShowsTheSamePicture) {
  ExpectView({{1920, 1080, PixelRedGreenBlueReserved8BitPerColor, 2048}}, "view-1920x1080");
}

TEST_F(ScreenPicture, FocusOnTheProcessor) {
  AddPointers();
  fake::RunOptions options;
  MoveTo(&options, 30, kProcessorSpot.X, kProcessorSpot.Y);
  ExpectReference("focus-1920x1080", Show({{1920, 1080}}, TestBoard(), options));
}

TEST_F(ScreenPicture, FilterPcie) {
  AddPointers();
  fake::RunOptions options;
  MoveTo(&options, 25, 1840, 952);
  MoveTo(&options, 30, 1840, 952, true);
  MoveTo(&options, 35, 1840, 952);
  ExpectReference("filter-1920x1080", Show({{1920, 1080}}, TestBoard(), options));
}

}  // namespace
}  // namespace picture
