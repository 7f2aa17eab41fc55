/** @file
  Keys and movements as they come.
**/

#pragma once

#include <deque>

#include "test/firmware/FakeFirmware.h"
#include "tool/view/Wire.h"

namespace board_view {

/// Hands what a pipe brings to the fake keyboard and the fake tablet.
class LiveInput {
 public:
  LiveInput(fake::Firmware &machine, int file) : machine_(machine), file_(file) {}

  /// Waits for news at most so long, and takes all that have come. False when the application is to
  /// leave, or nobody is there any more.
  bool Wait(int milliseconds);

 private:
  void Take(const Input &input);

  fake::Firmware &machine_;
  int file_;
  /// The application reads one report a turn; movements come faster.
  std::deque<Input> movements_;
  bool left_ = false;
};

}  // namespace board_view
