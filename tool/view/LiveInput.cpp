// Before EDK2's headers, which would hide the functions.
#include <poll.h>
#include <unistd.h>

#include "tool/view/LiveInput.h"

namespace board_view {

bool LiveInput::Wait(int milliseconds) {
  pollfd news = {file_, POLLIN, 0};
  for (int wait = milliseconds; !left_ && poll(&news, 1, wait) > 0; wait = 0) {
    Input input = {};
    // Each is written in one piece.
    left_ = read(file_, &input, sizeof input) != static_cast<ssize_t>(sizeof input);
    if (!left_) {
      Take(input);
    }
  }
  if (!movements_.empty() && machine_.Tablet()->Waiting() == 0) {
    const Input &next = movements_.front();
    machine_.Tablet()->MoveTo(next.X, next.Y, next.Pressed);
    movements_.pop_front();
  }
  return !left_;
}

void LiveInput::Take(const Input &input) {
  switch (input.What) {
    case Input::kMovement:
      // Of a way only the end counts, of a click both halves.
      if (!movements_.empty() && movements_.back().Pressed == input.Pressed) {
        movements_.pop_back();
      }
      movements_.push_back(input);
      break;
    case Input::kKey:
      machine_.Keyboard.Push({input.ScanCode, input.Character});
      break;
    case Input::kLeave:
      left_ = true;
      break;
  }
}

}  // namespace board_view
