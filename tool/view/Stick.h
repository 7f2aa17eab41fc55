/** @file
  A folder that stands for a USB stick.
**/

#pragma once

#include <set>
#include <string>

#include "test/firmware/FakeFirmware.h"

namespace board_view {

/// A volume of the fake firmware, whose files go to the folder.
class Stick {
 public:
  Stick(fake::Firmware &machine, std::string folder);

  /// Copies the files that are complete and not in the folder yet, makes the folder if there are
  /// any, and tells of each on the standard output. To be called in each turn.
  void Save();

 private:
  fake::Firmware &machine_;
  fake::Volume &volume_;
  std::string folder_;
  std::set<std::u16string> saved_;
};

}  // namespace board_view
