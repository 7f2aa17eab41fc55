#include "Places.h"

#include "HostStandIn.h"

namespace {

// The view's layout, in pixels of a 1920 x 1080 screen.
constexpr double kSideMargin = 30;
constexpr double kButtonWidth = 95;
constexpr double kButtonHeight = 25;
constexpr double kButtonDistance = 30;
constexpr double kButtonsAboveFoot = 150;
constexpr double kFoot = 0.9;  ///< Of the view's height.

}  // namespace

Place OnFilterButton(UINTN row) {
  const HostedView &view = ViewOfHost();
  double x = view.Width - (kSideMargin + kButtonWidth / 2) * view.ScaleX;
  double down = static_cast<double>(row) * kButtonDistance + kButtonHeight / 2 - kButtonsAboveFoot;
  double y = view.Height * kFoot + down * view.ScaleY;
  return {static_cast<UINT64>(x), static_cast<UINT64>(y)};
}

Place OnCallout(const OBV_COMPONENT &component) {
  INTN x = component.CalloutX + component.CalloutWidth / 2;
  INTN y = component.CalloutY + component.CalloutHeight / 2;
  return {static_cast<UINT64>(x), static_cast<UINT64>(y)};
}
