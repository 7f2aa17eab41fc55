/** @file
  From the desktop's keys to the firmware's.
**/

#pragma once

#include <SDL2/SDL.h>
#include <optional>

#include "tool/view/Wire.h"

namespace board_view {

/// The stroke that a firmware would report; nothing for a key that it has none for.
std::optional<Input> KeyStroke(SDL_Keycode key);

}  // namespace board_view
