/** @file
  A run of the application on the reference host, which shows a given board: on the machine that
  tool/board view shows boards on.
**/

#pragma once

#include <gtest/gtest.h>

#include "test/picture/PictureFile.h"

namespace picture {

/// One run per process.
class ReferenceRun : public testing::Test, protected board_view::HostedMachine {
 protected:
  ReferenceRun();
  ~ReferenceRun() override;

  /// Adds the output, whose first mode is the setup's, runs and returns what was shown after
  /// `turns` turns.
  Screen Show(std::vector<fake::VideoMode> modes, const std::vector<uint8_t> &board,
              fake::RunOptions options = {}, int turns = 50);

  /// Mouse and tablet; without them the arrow stands in the top left corner.
  void AddPointers();
  /// Plans a move of the tablet to a pixel of the view of 1920 x 1080.
  void MoveTo(fake::RunOptions *options, int turn, uint32_t x, uint32_t y, bool pressed = false);

 private:
  std::vector<uint8_t> board_;
};

}  // namespace picture
