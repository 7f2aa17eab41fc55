/** @file
  On ViewStage: sticks, and the box in which the user picks one of them.
**/

#pragma once

#include "test/unit/stage/BoxLooks.h"
#include "test/unit/stage/ViewStage.h"

#include "capture/Screenshot.h"

/// The view is built, but its main loop does not run.
class VolumeBox : public ViewStage {
 protected:
  fake::Volume &AddStick(std::u16string_view label = u"STICK", UINT64 capacity = UINT64{64} << 20) {
    fake::VolumeOptions options;
    options.Label = label;
    options.Capacity = capacity;
    Sticks.push_back(&Machine.AddVolume(options));
    return *Sticks.back();
  }
  void AddSticks(int count) {
    for (int i = 0; i < count; i++) {
      AddStick();
    }
  }
  void BuildAndOpen(UINT32 width = 1920, UINT32 height = 1080) {
    Build(width, height);
    Host.Log.clear();
    ASSERT_EQ(F12ScreenShots(), EFI_SUCCESS);
    lv_obj_update_layout(lv_layer_top());
  }
  static std::string Stick(int number) {
    return "FS" + std::to_string(number) + ":\\ [USB STICK 64MB]";
  }
  size_t OpenCount() const {
    size_t count = 0;
    for (const fake::Volume *stick : Sticks) {
      count += stick->OpenCount();
    }
    return count;
  }

  std::vector<fake::Volume *> Sticks;
};
