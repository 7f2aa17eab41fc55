// Which resolution and scale factors the view gets on which setup screen.

#include "test/unit/stage/ConnectedHost.h"

#include "app/ChooseGeometry.h"
#include "app/base/Geometry.h"

namespace {

using fake::Service;
using fake::VideoMode;

struct Geometry {
  UINT16 Width, Height;
  double ScaleX, ScaleY;
  INT32 Mode;
  bool operator==(const Geometry &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Geometry &geometry) {
  return out << geometry.Width << "x" << geometry.Height << " scaled " << geometry.ScaleX << ", "
             << geometry.ScaleY << " in mode " << geometry.Mode;
}

class ViewGeometry : public ConnectedHost {
 protected:
  /// The choice on a setup screen in the output's first mode.
  EFI_STATUS Choose(std::vector<VideoMode> modes) {
    fake::GraphicsOutput &output = Machine.AddOutput(modes);
    gHost.Gop = output.Protocol();
    gGeometry.PreviousWidth = static_cast<UINT16>(modes[0].Width);
    gGeometry.PreviousHeight = static_cast<UINT16>(modes[0].Height);
    return ChooseViewGeometry();
  }
  static Geometry Chosen() {
    return {gGeometry.ViewWidth, gGeometry.ViewHeight, gGeometry.ScaleX, gGeometry.ScaleY,
            gGeometry.ModeNumber};
  }
  static std::string Unsupported(const std::string &size) {
    return "[VeltBoardscopeAppEntryPoint] " + size + " unsupported by GOP.\n";
  }
};

TEST_F(ViewGeometry, A2560x1440ScreenKeepsItsMode) {
  EXPECT_EQ(Choose({{2560, 1440}, {1920, 1080}}), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{2560, 1440, 2560 / 1920.0, 1440 / 1080.0, 0}));
  EXPECT_EQ(Log(), LogLines{});
}

TEST_F(ViewGeometry, A1920x1200ScreenKeepsItsMode) {
  EXPECT_EQ(Choose({{1920, 1200}, {1920, 1080}}), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{1920, 1200, 1.0, 1200 / 1080.0, 0}));
}

TEST_F(ViewGeometry, A1920x1080ScreenKeepsItsMode) {
  EXPECT_EQ(Choose({{1920, 1080}}), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{1920, 1080, 1.0, 1.0, 0}));
}

TEST_F(ViewGeometry, A3840x1000ScreenIsReplacedBy1920x1080) {
  EXPECT_EQ(Choose({{3840, 1000}, {1920, 1080}}), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{1920, 1080, 1.0, 1.0, 1}));
}

TEST_F(ViewGeometry, OneColumnTooFewIsReplacedBy1920x1080) {
  EXPECT_EQ(Choose({{1919, 1200}, {1024, 768}, {1920, 1080}}), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{1920, 1080, 1.0, 1.0, 2}));
}

TEST_F(ViewGeometry, OneLineTooFewIsReplacedBy1920x1080) {
  EXPECT_EQ(Choose({{1920, 1079}, {1920, 1080}}), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{1920, 1080, 1.0, 1.0, 1}));
}

TEST_F(ViewGeometry, A1280x1024ScreenIsReplacedBy1920x1080) {
  EXPECT_EQ(Choose({{1280, 1024}, {1024, 768}, {1920, 1080}}), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{1920, 1080, 1.0, 1.0, 2}));
}

TEST_F(ViewGeometry, A1280x1024ScreenIsElseReplacedBy1024x768) {
  EXPECT_EQ(Choose({{1280, 1024}, {1024, 768}}), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{1024, 768, 0.7, 0.8, 1}));
  EXPECT_EQ(Log(), LogLines{Info(Unsupported("1920*1080"))});
}

TEST_F(ViewGeometry, A1024x768ScreenKeepsItsModeWithoutTryingALargerOne) {
  EXPECT_EQ(Choose({{1024, 768}, {1920, 1080}}), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{1024, 768, 0.7, 0.8, 0}));
  EXPECT_EQ(Machine.Calls.CountOf(Service::GopQueryMode), 1u);
  EXPECT_EQ(Log(), LogLines{});
}

TEST_F(ViewGeometry, A1024x600ScreenIsReplacedBy1024x768) {
  EXPECT_EQ(Choose({{1024, 600}, {1024, 768}}), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{1024, 768, 0.7, 0.8, 1}));
}

TEST_F(ViewGeometry, NeitherSizeIsUnsupported) {
  EXPECT_EQ(Choose({{800, 600}, {1280, 1024}}), EFI_UNSUPPORTED);
  EXPECT_EQ(gGeometry.ModeNumber, -1);
  EXPECT_EQ(Log(), (LogLines{Info(Unsupported("1920*1080")), Info(Unsupported("1024*768"))}));
}

TEST_F(ViewGeometry, WidthAndHeightAreNotMistakenForOneAnother) {
  EXPECT_EQ(Choose({{1080, 1920}, {768, 1024}}), EFI_UNSUPPORTED);
}

TEST_F(ViewGeometry, ALargeScreenIsKeptEvenWhenItsModeIsNotListed) {
  fake::GraphicsOutput &output = Machine.AddOutput({{2560, 1440}});
  output.SetModes({{1920, 1080}});
  gHost.Gop = output.Protocol();
  gGeometry.PreviousWidth = 2560;
  gGeometry.PreviousHeight = 1440;
  EXPECT_EQ(ChooseViewGeometry(), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{2560, 1440, 2560 / 1920.0, 1440 / 1080.0, -1}));
}

TEST_F(ViewGeometry, ASmallScreenIsKeptEvenWhenItsModeIsNotListed) {
  fake::GraphicsOutput &output = Machine.AddOutput({{1024, 768}});
  output.SetModes({{1920, 1080}});
  gHost.Gop = output.Protocol();
  gGeometry.PreviousWidth = 1024;
  gGeometry.PreviousHeight = 768;
  EXPECT_EQ(ChooseViewGeometry(), EFI_SUCCESS);
  EXPECT_EQ(Chosen(), (Geometry{1024, 768, 0.7, 0.8, -1}));
}

TEST_F(ViewGeometry, NothingIsDrawnOrSwitched) {
  EXPECT_EQ(Choose({{1280, 1024}, {1024, 768}}), EFI_SUCCESS);
  EXPECT_EQ(Machine.Calls.CountOf(Service::GopSetMode), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::GopBlt), 0u);
}

}  // namespace
