// A text output that swallows everything, so that whoever prints does not crash.

#include "test/firmware/ServiceTables.h"

namespace fake {

namespace {

template <typename... Args>
EFI_STATUS EFIAPI Accept(Args...) {
  Call call(Service::ConOutCall, nullptr);
  return call.Run([]() -> EFI_STATUS { return EFI_SUCCESS; });
}

template <typename... Args>
void FillSlot(EFI_STATUS(EFIAPI *&slot)(Args...)) {
  slot = &Accept<Args...>;
}

EFI_STATUS EFIAPI QueryTextMode(EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *, UINTN mode, UINTN *columns,
                                UINTN *rows) {
  Call call(Service::ConOutCall, nullptr, "QueryMode", mode);
  return call.Run([&]() -> EFI_STATUS {
    if (mode != 0) {
      return EFI_UNSUPPORTED;
    }
    *columns = 80;
    *rows = 25;
    return EFI_SUCCESS;
  });
}

struct TextOutput {
  EFI_SIMPLE_TEXT_OUTPUT_MODE Mode{1, 0, 7, 0, 0, FALSE};
  EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL Protocol{};

  TextOutput() {
    FillSlot(Protocol.Reset);
    FillSlot(Protocol.OutputString);
    FillSlot(Protocol.TestString);
    Protocol.QueryMode = &QueryTextMode;
    FillSlot(Protocol.SetMode);
    FillSlot(Protocol.SetAttribute);
    FillSlot(Protocol.ClearScreen);
    FillSlot(Protocol.SetCursorPosition);
    FillSlot(Protocol.EnableCursor);
    Protocol.Mode = &Mode;
  }
};

}  // namespace

EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *ConsoleOutput() {
  static TextOutput output;
  return &output.Protocol;
}

}  // namespace fake
