// Pointing devices with queues of reports, as the console-input handle carries them.

#pragma once

#include "test/firmware/Edk2.h"

namespace fake {

class SimplePointer {
 public:
  SimplePointer(UINT64 resolutionX, UINT64 resolutionY);
  SimplePointer(const SimplePointer &) = delete;
  SimplePointer &operator=(const SimplePointer &) = delete;

  EFI_SIMPLE_POINTER_PROTOCOL *Protocol() { return &thunk_.Protocol; }
  EFI_SIMPLE_POINTER_MODE Mode;

  /// Appends one report; GetState hands them out in order and answers EFI_NOT_READY when none
  /// is left.
  void Move(INT32 x, INT32 y, bool left = false, bool right = false);
  void Push(const EFI_SIMPLE_POINTER_STATE &state) { reports_.push_back(state); }
  size_t Waiting() const { return reports_.size(); }

 private:
  struct Thunk {
    EFI_SIMPLE_POINTER_PROTOCOL Protocol;
    SimplePointer *Self;
  };
  static EFI_STATUS EFIAPI ResetThunk(EFI_SIMPLE_POINTER_PROTOCOL *self, BOOLEAN extended);
  static EFI_STATUS EFIAPI GetStateThunk(EFI_SIMPLE_POINTER_PROTOCOL *self,
                                         EFI_SIMPLE_POINTER_STATE *state);

  Thunk thunk_;
  std::deque<EFI_SIMPLE_POINTER_STATE> reports_;
};

class AbsolutePointer {
 public:
  /// Minimum and maximum of the two axes; any values, also reversed or empty ranges.
  struct Range {
    UINT64 MinX = 0, MinY = 0, MaxX = 32767, MaxY = 32767;
  };
  explicit AbsolutePointer(const Range &range);
  AbsolutePointer(const AbsolutePointer &) = delete;
  AbsolutePointer &operator=(const AbsolutePointer &) = delete;

  EFI_ABSOLUTE_POINTER_PROTOCOL *Protocol() { return &thunk_.Protocol; }
  EFI_ABSOLUTE_POINTER_MODE Mode{};

  /// Appends one report, as SimplePointer::Move does.
  void MoveTo(UINT64 x, UINT64 y, UINT32 buttons = 0);
  void Push(const EFI_ABSOLUTE_POINTER_STATE &state) { reports_.push_back(state); }
  size_t Waiting() const { return reports_.size(); }

 private:
  struct Thunk {
    EFI_ABSOLUTE_POINTER_PROTOCOL Protocol;
    AbsolutePointer *Self;
  };
  static EFI_STATUS EFIAPI ResetThunk(EFI_ABSOLUTE_POINTER_PROTOCOL *self, BOOLEAN extended);
  static EFI_STATUS EFIAPI GetStateThunk(EFI_ABSOLUTE_POINTER_PROTOCOL *self,
                                         EFI_ABSOLUTE_POINTER_STATE *state);

  Thunk thunk_;
  std::deque<EFI_ABSOLUTE_POINTER_STATE> reports_;
};

}  // namespace fake
