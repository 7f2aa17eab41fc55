#include "test/firmware/ConsoleInput.h"

#include "test/firmware/Call.h"

namespace fake {

ConsoleInput::ConsoleInput() : thunk_{{&ResetThunk, &ReadThunk, nullptr}, this} {}

EFI_STATUS EFIAPI ConsoleInput::ResetThunk(EFI_SIMPLE_TEXT_INPUT_PROTOCOL *protocol,
                                           BOOLEAN extended) {
  ConsoleInput *self = reinterpret_cast<Thunk *>(protocol)->Self;
  Call call(Service::ConInReset, self, extended);
  return call.Run([&] {
    self->keys_.clear();
    return EFI_SUCCESS;
  });
}

EFI_STATUS EFIAPI ConsoleInput::ReadThunk(EFI_SIMPLE_TEXT_INPUT_PROTOCOL *protocol,
                                          EFI_INPUT_KEY *key) {
  ConsoleInput *self = reinterpret_cast<Thunk *>(protocol)->Self;
  Call call(Service::ConInReadKeyStroke, self);
  return call.Run([&]() -> EFI_STATUS {
    if (key == nullptr) {
      return EFI_INVALID_PARAMETER;
    }
    if (self->keys_.empty()) {
      return EFI_NOT_READY;
    }
    *key = self->keys_.front();
    self->keys_.pop_front();
    return EFI_SUCCESS;
  });
}

}  // namespace fake
