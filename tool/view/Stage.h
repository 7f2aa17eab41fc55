/** @file
  The window's side of a running application.
**/

#pragma once

#include <sys/types.h>
#include <nlohmann/json.hpp>

#include "tool/view/Wire.h"

namespace board_view {

/// A process that runs the application; one view.
class Stage {
 public:
  /// Starts it. The state is that of the view before; Saved says whether there was one.
  Stage(const nlohmann::json &wanted, uint32_t width, uint32_t height, const UiState &state);
  ~Stage();
  Stage(const Stage &) = delete;
  Stage &operator=(const Stage &) = delete;

  uint32_t Width() const { return width_; }
  uint32_t Height() const { return height_; }
  const Sight &Seen() const { return *sight_; }
  /// The screen, once it stands and if it has changed since the last call; else null.
  const uint32_t *News();
  void Send(const Input &input);
  /// Whether it has ended by itself; then what Seen tells is final.
  bool Ended();
  /// Asks it to leave, waits, and returns its state.
  UiState Leave();

 private:
  void Reap(int status);

  uint32_t width_, height_;
  Sight *sight_;
  int input_ = -1;
  pid_t process_ = -1;
  uint32_t shown_ = 0;
};

}  // namespace board_view
