/** @file
  Does at once what the test asks for, even while the application runs.
**/

#include "Adapter.h"
#include "LateOutput.h"
#include "OtherOutputs.h"

namespace {

// A register of the host log's serial port that stores a byte and does nothing
// else: the test writes a command there from outside the machine.
constexpr UINT16 kMailbox = 0x3E8 + 7;
constexpr UINT8 kNoCommand = 0;
constexpr UINT64 kPeriod = 500000;  // 50 ms in units of 100 ns

OBV_PROTOCOL *FindHost() {
  EFI_GUID guid = OBV_PROTOCOL_GUID;
  VOID *host = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&guid, nullptr, &host);
  return EFI_ERROR(status) ? nullptr : static_cast<OBV_PROTOCOL *>(host);
}

EFI_STATUS InstallInsteadOfOthers(Modes modes) {
  EFI_STATUS status = TakeModes();
  return EFI_ERROR(status) ? status : InstallLateOutput(modes);
}

EFI_STATUS Execute(UINT8 command) {
  switch (command) {
    case 'v':
      return InstallLateOutput(Modes::SmallAndView);
    case 's':
      return InstallLateOutput(Modes::SmallOnly);
    case 'V':
      return InstallInsteadOfOthers(Modes::SmallAndView);
    case 'S':
      return InstallInsteadOfOthers(Modes::SmallOnly);
    case 'x':
      return StopAdapter();
    case 'c':
      return StartAdapter();
    case 'r':
      RemoveLateOutput();
      GiveModesBack();
      return EFI_SUCCESS;
    default:
      return EFI_INVALID_PARAMETER;
  }
}

VOID EFIAPI OnTimer(EFI_EVENT, VOID *context) {
  UINT8 command = IoRead8(kMailbox);
  if (command == kNoCommand) {
    return;
  }
  IoWrite8(kMailbox, kNoCommand);
  EFI_STATUS status = Execute(command);
  auto *host = static_cast<OBV_PROTOCOL *>(context);
  host->DebugPrint(OBV_LOG_INFO, "[Late] %c %r\n", static_cast<UINTN>(command), status);
}

}  // namespace

extern "C" EFI_STATUS EFIAPI LateOutputEntryPoint(EFI_HANDLE, EFI_SYSTEM_TABLE *) {
  OBV_PROTOCOL *host = FindHost();
  UINTN screen = MakeLateScreen();
  if (host == nullptr || screen == 0) {
    return EFI_NOT_STARTED;
  }
  IoWrite8(kMailbox, kNoCommand);
  EFI_EVENT timer = nullptr;
  EFI_STATUS status =
      gBS->CreateEvent(EVT_TIMER | EVT_NOTIFY_SIGNAL, TPL_CALLBACK, OnTimer, host, &timer);
  if (EFI_ERROR(status)) {
    return status;
  }
  host->DebugPrint(OBV_LOG_INFO, "[Late] screen at 0x%lx\n", static_cast<UINT64>(screen));
  return gBS->SetTimer(timer, TimerPeriodic, kPeriod);
}
