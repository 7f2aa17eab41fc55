#include "app/ChooseGeometry.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/Run.h"
#include "platform/GraphicsOutput.h"

namespace {

constexpr UINT16 kDesignWidth = 1920;
constexpr UINT16 kDesignHeight = 1080;

// The small layout is deliberately not a pure reduction of the large one.
constexpr UINT16 kSmallWidth = 1024;
constexpr UINT16 kSmallHeight = 768;
constexpr double kSmallScaleX = 0.7;
constexpr double kSmallScaleY = 0.8;

void LookUpMode() {
  gGeometry.ModeNumber =
      static_cast<INT32>(FindGopMode(gHost.Gop, gGeometry.ViewHeight, gGeometry.ViewWidth));
}

void UseScaled(UINT16 width, UINT16 height) {
  gGeometry.ViewWidth = width;
  gGeometry.ViewHeight = height;
  gGeometry.ScaleY = height / static_cast<double>(kDesignHeight);
  gGeometry.ScaleX = width / static_cast<double>(kDesignWidth);
  LookUpMode();
}

void UseSmall() {
  gGeometry.ViewWidth = kSmallWidth;
  gGeometry.ViewHeight = kSmallHeight;
  gGeometry.ScaleY = kSmallScaleY;
  gGeometry.ScaleX = kSmallScaleX;
  LookUpMode();
}

bool ModeFound() {
  if (gGeometry.ModeNumber != -1) {
    return true;
  }
  LogInfo("[%a] %d*%d unsupported by GOP.\n", kEntryName, gGeometry.ViewWidth,
          gGeometry.ViewHeight);
  return false;
}

}  // namespace

EFI_STATUS ChooseViewGeometry() {
  // A screen that suits the view is kept whether or not its mode is listed.
  if (gGeometry.PreviousHeight >= kDesignHeight && gGeometry.PreviousWidth >= kDesignWidth) {
    UseScaled(gGeometry.PreviousWidth, gGeometry.PreviousHeight);
    return EFI_SUCCESS;
  }
  if (gGeometry.PreviousWidth == kSmallWidth && gGeometry.PreviousHeight == kSmallHeight) {
    UseSmall();
    return EFI_SUCCESS;
  }

  UseScaled(kDesignWidth, kDesignHeight);
  if (ModeFound()) {
    return EFI_SUCCESS;
  }
  UseSmall();
  return ModeFound() ? EFI_SUCCESS : EFI_UNSUPPORTED;
}
