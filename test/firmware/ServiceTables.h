// The C tables whose functions bounce into the living Firmware.

#pragma once

#include "test/firmware/Call.h"
#include "test/firmware/FakeFirmware.h"

namespace fake {

void FillBootServices(EFI_BOOT_SERVICES *table);
void FillRuntimeServices(EFI_RUNTIME_SERVICES *table);
/// Parts of the boot services table, one a source file.
void FillMemoryServices(EFI_BOOT_SERVICES *table);
void FillEventServices(EFI_BOOT_SERVICES *table);
void FillProtocolServices(EFI_BOOT_SERVICES *table);
void FillLocateServices(EFI_BOOT_SERVICES *table);

/// A text output without a screen.
EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL *ConsoleOutput();

/// Fills a slot with a function that answers EFI_UNSUPPORTED and reports a problem: the fake has
/// no such service, and nobody may rely on it.
template <Service service, typename... Args>
EFI_STATUS EFIAPI Unprovided(Args...) {
  Call call(service, nullptr);
  return call.Run([] {
    Firmware::Current().Problem(std::string(ServiceName(service)) +
                                " was called; the fake does not provide it");
    return EFI_UNSUPPORTED;
  });
}

template <Service service, typename... Args>
void Unprovide(EFI_STATUS(EFIAPI *&slot)(Args...)) {
  slot = &Unprovided<service, Args...>;
}

}  // namespace fake
