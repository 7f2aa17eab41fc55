/** @file
  Outputs that show a setup screen before the application runs, for the question whether it is back
  afterwards.
**/

#pragma once

#include "test/firmware/FakeFirmware.h"

class SetupScreens {
 public:
  explicit SetupScreens(fake::Firmware &machine) : machine_(machine) {}

  /// An output in its first mode, with a picture of its own.
  fake::GraphicsOutput &Add(const std::vector<fake::VideoMode> &modes) {
    fake::GraphicsOutput &output = machine_.AddOutput(modes);
    auto shift = static_cast<UINT32>(machine_.OutputCount());
    output.Paint([=](UINT32 x, UINT32 y) { return (x * 77 + y * 1311 + shift) & 0xFFFFFF; });
    pictures_.push_back(output.Picture());
    return output;
  }

  bool ModeIsBack(size_t index = 0) const { return machine_.Output(index).ModeNumber() == 0; }
  bool PictureIsBack(size_t index = 0) const {
    return machine_.Output(index).Picture() == pictures_[index];
  }

 private:
  fake::Firmware &machine_;
  std::vector<std::vector<UINT32>> pictures_;
};
