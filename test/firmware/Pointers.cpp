#include "test/firmware/Pointers.h"

#include "test/firmware/Call.h"

namespace fake {

namespace {

// Takes the oldest report off a queue, with the statuses of both GetState functions.
template <typename State>
EFI_STATUS Take(std::deque<State> *reports, State *state) {
  if (state == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (reports->empty()) {
    return EFI_NOT_READY;
  }
  *state = reports->front();
  reports->pop_front();
  return EFI_SUCCESS;
}

}  // namespace

SimplePointer::SimplePointer(UINT64 resolutionX, UINT64 resolutionY)
    : Mode{resolutionX, resolutionY, 0, TRUE, TRUE},
      thunk_{{&ResetThunk, &GetStateThunk, nullptr, &Mode}, this} {}

void SimplePointer::Move(INT32 x, INT32 y, bool left, bool right) {
  Push({x, y, 0, static_cast<BOOLEAN>(left), static_cast<BOOLEAN>(right)});
}

EFI_STATUS EFIAPI SimplePointer::ResetThunk(EFI_SIMPLE_POINTER_PROTOCOL *protocol,
                                            BOOLEAN extended) {
  SimplePointer *self = reinterpret_cast<Thunk *>(protocol)->Self;
  Call call(Service::PointerReset, self, extended);
  return call.Run([&] {
    self->reports_.clear();
    return EFI_SUCCESS;
  });
}

EFI_STATUS EFIAPI SimplePointer::GetStateThunk(EFI_SIMPLE_POINTER_PROTOCOL *protocol,
                                               EFI_SIMPLE_POINTER_STATE *state) {
  SimplePointer *self = reinterpret_cast<Thunk *>(protocol)->Self;
  Call call(Service::PointerGetState, self);
  return call.Run([&] { return Take(&self->reports_, state); });
}

AbsolutePointer::AbsolutePointer(const Range &range)
    : thunk_{{&ResetThunk, &GetStateThunk, nullptr, &Mode}, this} {
  Mode.AbsoluteMinX = range.MinX;
  Mode.AbsoluteMinY = range.MinY;
  Mode.AbsoluteMaxX = range.MaxX;
  Mode.AbsoluteMaxY = range.MaxY;
  Mode.Attributes = EFI_ABSP_SupportsAltActive;
}

void AbsolutePointer::MoveTo(UINT64 x, UINT64 y, UINT32 buttons) { Push({x, y, 0, buttons}); }

EFI_STATUS EFIAPI AbsolutePointer::ResetThunk(EFI_ABSOLUTE_POINTER_PROTOCOL *protocol,
                                              BOOLEAN extended) {
  AbsolutePointer *self = reinterpret_cast<Thunk *>(protocol)->Self;
  Call call(Service::AbsoluteReset, self, extended);
  return call.Run([&] {
    self->reports_.clear();
    return EFI_SUCCESS;
  });
}

EFI_STATUS EFIAPI AbsolutePointer::GetStateThunk(EFI_ABSOLUTE_POINTER_PROTOCOL *protocol,
                                                 EFI_ABSOLUTE_POINTER_STATE *state) {
  AbsolutePointer *self = reinterpret_cast<Thunk *>(protocol)->Self;
  Call call(Service::AbsoluteGetState, self);
  return call.Run([&] { return Take(&self->reports_, state); });
}

}  // namespace fake
