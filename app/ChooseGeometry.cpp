#include "app/ChooseGeometry.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/Run.h"
#include "platform/GraphicsOutput.h"

namespace {

void UseSize(UINT16 width, UINT16 height) {
  SetViewSize(width, height);
  gGeometry.ModeNumber = static_cast<INT32>(FindGopMode(gHost.Gop, height, width));
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
    UseSize(gGeometry.PreviousWidth, gGeometry.PreviousHeight);
    return EFI_SUCCESS;
  }
  if (gGeometry.PreviousWidth == kSmallWidth && gGeometry.PreviousHeight == kSmallHeight) {
    UseSize(kSmallWidth, kSmallHeight);
    return EFI_SUCCESS;
  }

  UseSize(kDesignWidth, kDesignHeight);
  if (ModeFound()) {
    return EFI_SUCCESS;
  }
  UseSize(kSmallWidth, kSmallHeight);
  return ModeFound() ? EFI_SUCCESS : EFI_UNSUPPORTED;
}
