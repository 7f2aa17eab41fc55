/** @file
  What goes between the window and the application, which runs in a process of its own: the screen
  and the state in shared memory, keys and movements through a pipe.
**/

#pragma once

#include <atomic>
#include <cstdint>

namespace board_view {

/// What of a view the next one takes over.
struct UiState {
  bool Saved;
  /// The component with the focus; empty if another object has it, which Focus is then.
  char Component[64];
  uint16_t Focus;
  uint32_t Category;
  /// Of the screen's width and height.
  double PointerX, PointerY;
};

/// The beginning of the shared memory; the screen's pixels, rows of 0x00RRGGBB, follow.
struct Sight {
  /// Grows with each transfer to the screen.
  std::atomic<uint32_t> Transfers;
  /// The first picture is complete.
  std::atomic<bool> Stands;
  UiState State;
  /// The user has chosen a component, and not to leave.
  bool Jumped;
  /// Why there is no view; empty if all went well.
  char Trouble[1024];

  uint32_t *Pixels() { return reinterpret_cast<uint32_t *>(this + 1); }
};

inline size_t SightSize(uint32_t width, uint32_t height) {
  return sizeof(Sight) + size_t{width} * height * sizeof(uint32_t);
}

/// Something that the user does.
struct Input {
  enum Kind : uint32_t { kMovement, kKey, kLeave };
  Kind What;
  /// A movement: the pointer's place and whether it is pressed.
  uint32_t X, Y, Pressed;
  /// A key: one of the two.
  uint16_t ScanCode, Character;
};

/// Where a process of the application finds its ends.
constexpr int kInputFile = 3;
constexpr int kSightFile = 4;

}  // namespace board_view
