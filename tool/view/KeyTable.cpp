// Before EDK2's headers, which would hide the functions.
#include "tool/view/KeyTable.h"

#include "test/firmware/Edk2.h"

namespace board_view {

namespace {

struct Row {
  SDL_Keycode Key;
  UINT16 ScanCode;
  UINT16 Character;
};

constexpr Row kRows[] = {
    {SDLK_UP, SCAN_UP, 0},
    {SDLK_DOWN, SCAN_DOWN, 0},
    {SDLK_RIGHT, SCAN_RIGHT, 0},
    {SDLK_LEFT, SCAN_LEFT, 0},
    {SDLK_HOME, SCAN_HOME, 0},
    {SDLK_END, SCAN_END, 0},
    {SDLK_INSERT, SCAN_INSERT, 0},
    {SDLK_DELETE, SCAN_DELETE, 0},
    {SDLK_PAGEUP, SCAN_PAGE_UP, 0},
    {SDLK_PAGEDOWN, SCAN_PAGE_DOWN, 0},
    {SDLK_F12, SCAN_F12, 0},
    {SDLK_ESCAPE, SCAN_ESC, 0},
    {SDLK_RETURN, 0, CHAR_CARRIAGE_RETURN},
    {SDLK_KP_ENTER, 0, CHAR_CARRIAGE_RETURN},
    {SDLK_TAB, 0, CHAR_TAB},
    {SDLK_BACKSPACE, 0, CHAR_BACKSPACE},
};

Input Stroke(UINT16 scanCode, UINT16 character) {
  Input input = {};
  input.What = Input::kKey;
  input.ScanCode = scanCode;
  input.Character = character;
  return input;
}

}  // namespace

std::optional<Input> KeyStroke(SDL_Keycode key) {
  for (const Row &row : kRows) {
    if (row.Key == key) {
      return Stroke(row.ScanCode, row.Character);
    }
  }
  if (key >= ' ' && key <= '~') {
    return Stroke(0, static_cast<UINT16>(key));
  }
  return std::nullopt;
}

}  // namespace board_view
