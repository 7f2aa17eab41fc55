/** @file
  The volumes that a run leaves open: a volume box that Esc closes does not close its roots.
**/

#pragma once

#include <algorithm>
#include <utility>

#include "capture/MessageBox.h"
#include "capture/Screenshot.h"

/// To be asked once in each turn of the main loop.
class AbandonedVolumes {
 public:
  /// How many roots may be open now: those of the box, and all that Esc has left.
  [[nodiscard]] size_t Accounted() {
    const auto &roots = gScreenshot.Volumes.Roots;
    auto listed = static_cast<size_t>(std::find(std::begin(roots), std::end(roots), nullptr) -
                                      std::begin(roots));
    if (gMessageBox.ModalMessageBoxOpen) {
      // The list is the new box's; what Esc had left in it is gone from it.
      abandoned_ += std::exchange(leftInList_, 0);
    } else {
      leftInList_ = listed;
    }
    return abandoned_ + listed;
  }

 private:
  size_t leftInList_ = 0;
  size_t abandoned_ = 0;
};
