// The keyboard behind the system table's ConIn.

#pragma once

#include "test/firmware/Edk2.h"

namespace fake {

class ConsoleInput {
 public:
  ConsoleInput();
  ConsoleInput(const ConsoleInput &) = delete;
  ConsoleInput &operator=(const ConsoleInput &) = delete;

  EFI_SIMPLE_TEXT_INPUT_PROTOCOL *Protocol() { return &thunk_.Protocol; }

  /// Appends a key stroke: a scan code (SCAN_ESC, SCAN_F12, ...) or a character, not both.
  void Scan(UINT16 scanCode) { keys_.push_back({scanCode, 0}); }
  void Character(char16_t character) { keys_.push_back({0, static_cast<CHAR16>(character)}); }
  void Push(const EFI_INPUT_KEY &key) { keys_.push_back(key); }
  size_t Waiting() const { return keys_.size(); }

 private:
  struct Thunk {
    EFI_SIMPLE_TEXT_INPUT_PROTOCOL Protocol;
    ConsoleInput *Self;
  };
  static EFI_STATUS EFIAPI ResetThunk(EFI_SIMPLE_TEXT_INPUT_PROTOCOL *self, BOOLEAN extended);
  static EFI_STATUS EFIAPI ReadThunk(EFI_SIMPLE_TEXT_INPUT_PROTOCOL *self, EFI_INPUT_KEY *key);

  Thunk thunk_;
  std::deque<EFI_INPUT_KEY> keys_;
};

}  // namespace fake
