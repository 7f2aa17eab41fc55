#include "app/ViewGeometry.h"

#include "app/HostClient.h"
#include "app/Lifecycle.h"
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
  gApp.ModeNumber = static_cast<INT32>(FindGopMode(gHost.Gop, gApp.ViewHeight, gApp.ViewWidth));
}

void UseScaled(UINT16 width, UINT16 height) {
  gApp.ViewWidth = width;
  gApp.ViewHeight = height;
  gApp.ScaleY = height / static_cast<double>(kDesignHeight);
  gApp.ScaleX = width / static_cast<double>(kDesignWidth);
  LookUpMode();
}

void UseSmall() {
  gApp.ViewWidth = kSmallWidth;
  gApp.ViewHeight = kSmallHeight;
  gApp.ScaleY = kSmallScaleY;
  gApp.ScaleX = kSmallScaleX;
  LookUpMode();
}

bool ModeFound() {
  if (gApp.ModeNumber != -1) {
    return true;
  }
  LogInfo("[%a] %d*%d unsupported by GOP.\n", kEntryName, gApp.ViewWidth, gApp.ViewHeight);
  return false;
}

}  // namespace

EFI_STATUS ChooseViewGeometry() {
  // A screen that suits the view is kept whether or not its mode is listed.
  if (gApp.PreviousHeight >= kDesignHeight && gApp.PreviousWidth >= kDesignWidth) {
    UseScaled(gApp.PreviousWidth, gApp.PreviousHeight);
    return EFI_SUCCESS;
  }
  if (gApp.PreviousWidth == kSmallWidth && gApp.PreviousHeight == kSmallHeight) {
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
