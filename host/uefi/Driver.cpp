#include "host/uefi/Driver.h"

#include "host/portable/Blobs.h"
#include "host/portable/HostLog.h"
#include "host/uefi/BoardFile.h"
#include "host/uefi/DamagedStack.h"
#include "host/uefi/LookChoice.h"
#include "host/uefi/Outputs.h"
#include "host/uefi/SetupOption.h"
#include "host/uefi/StringRegistration.h"

namespace obv_host {

constinit Driver gDriver = {};

namespace {

UINT64 ReadDriverClock(void *) { return ReadMilliseconds(gDriver.Timer); }

void WriteDriverLog(void *, const CHAR8 *line, UINTN size) {
  WriteLogPorts(&gDriver.Ports, line, size);
}

/// What it took stands in the log, because the user waits for it.
void ConnectDriverHardware() {
  const Board &board = gDriver.Contract.ActiveBoard;
  if (board.Header.HardwareCount != 0) {
    UINT64 start = ReadMilliseconds(gDriver.Timer);
    ConnectHardware(board);
    HostDebugPrint(OBV_LOG_INFO, "[Host] Hardware connected in %ld ms\n",
                   ReadMilliseconds(gDriver.Timer) - start);
  }
}

/// The first thing that a view asks for. A display that is connected later could be another output
/// than the one that the view has chosen its mode from.
EFI_STATUS FindDriverGop(void *, EFI_GRAPHICS_OUTPUT_PROTOCOL **gop) {
  ConnectDriverHardware();
  return FindOutput(gop);
}

void *AllocateForDriver(void *, UINTN size) { return AllocatePool(size); }

void FreeForDriver(void *, void *memory) { FreePool(memory); }

void MeetDriverHardware(void *) {
  Board &board = gDriver.Contract.ActiveBoard;
  if (board.Header.HardwareCount == 0) {
    return;
  }
  UINT64 start = ReadMilliseconds(gDriver.Timer);
  ReadHardwareAtStart(&gDriver.Hardware);
  FillSystemTexts(board, &gDriver.Contract.Shared);
  HostDebugPrint(OBV_LOG_INFO, "[Host] Hardware read in %ld ms\n",
                 ReadMilliseconds(gDriver.Timer) - start);
}

EFI_STATUS AskDriverHardware(void *, UINTN component, Facts *facts) {
  return AskKnowledge(&gDriver.Hardware, component, facts);
}

EFI_STATUS FindDriverOption(void *, UINT16 token, OBV_SETUP_OPTION *option) {
  return OpenSetupOption(token, option);
}

LookChoice ReadDriverLook(void *) { return ReadLookChoice(); }

bool AnotherHostIsThere() {
  EFI_GUID protocolGuid = OBV_PROTOCOL_GUID;
  VOID *other = nullptr;
  return !EFI_ERROR(gBS->LocateProtocol(&protocolGuid, nullptr, &other));
}

void StartHost() {
  const HostServices services = {
      .Context = nullptr,
      .ReadClock = ReadDriverClock,
      .WriteLog = WriteDriverLog,
      .FindGop = FindDriverGop,
      .Allocate = AllocateForDriver,
      .Free = FreeForDriver,
      .MeetHardware = MeetDriverHardware,
      .AskHardware = AskDriverHardware,
      .FindOption = FindDriverOption,
      .ReadLook = ReadDriverLook,
  };
  const FontFile fonts[kFaceCount] = {EmbeddedFont(0), EmbeddedFont(1), EmbeddedFont(2)};
  StartClock(&gDriver.Timer);
  OpenLogPorts(&gDriver.Ports);
  InitializeHost(&gDriver.Contract, services, fonts);
}

/// True when the user's board is in use.
bool UseBoardFile(EFI_HANDLE imageHandle) {
  UINTN size = 0;
  EFI_STATUS status = ReadBoardFile(imageHandle, FeaturePcdGet(PcdBoardFileFromAnyVolume),
                                    &gDriver.BoardFile, &size);
  if (status == EFI_NOT_FOUND) {
    return false;
  }
  if (EFI_ERROR(status)) {
    HostDebugPrint(OBV_LOG_ERROR, "[Host] board.bin cannot be read: %r\n", status);
    return false;
  }
  if (!EFI_ERROR(UseBoard(&gDriver.Contract, "board.bin", gDriver.BoardFile, size))) {
    return true;
  }
  FreePool(gDriver.BoardFile);
  gDriver.BoardFile = nullptr;
  return false;
}

EFI_STATUS ChooseBoard(EFI_HANDLE imageHandle) {
  if (UseBoardFile(imageHandle)) {
    return EFI_SUCCESS;
  }
  EmbeddedFile embedded = EmbeddedBoard();
  return UseBoard(&gDriver.Contract, "embedded board", embedded.Data, embedded.Size);
}

EFI_STATUS Publish(EFI_HANDLE imageHandle) {
  EFI_STATUS status = ChooseBoard(imageHandle);
  if (EFI_ERROR(status)) {
    return status;
  }
  status =
      StartKnowledge(gDriver.Contract.Services, gDriver.Contract.ActiveBoard, &gDriver.Hardware);
  if (EFI_ERROR(status)) {
    HostDebugPrint(OBV_LOG_ERROR, "[Host] No memory to know the hardware: %r\n", status);
    return status;
  }
  status = RegisterStrings(imageHandle, &gDriver.Strings);
  if (EFI_ERROR(status)) {
    HostDebugPrint(OBV_LOG_ERROR, "[Host] Texts cannot be registered: %r\n", status);
    return status;
  }
  EFI_GUID protocolGuid = OBV_PROTOCOL_GUID;
  return gBS->InstallProtocolInterface(&gDriver.ProtocolHandle, &protocolGuid, EFI_NATIVE_INTERFACE,
                                       &gDriver.Contract.Protocol);
}

void Withdraw() {
  RemoveStrings(gDriver.Strings);
  StopKnowledge(&gDriver.Hardware);
  ReleaseHost(&gDriver.Contract);
  if (gDriver.BoardFile != nullptr) {
    FreePool(gDriver.BoardFile);
  }
  ZeroMem(&gDriver, sizeof(gDriver));
}

}  // namespace
}  // namespace obv_host

using namespace obv_host;

// Not guarded, nor part of a caller that is: the guard's value changes under it.
extern "C" __attribute__((no_stack_protector, noinline)) EFI_STATUS EFIAPI
ObvHostEntryPoint(EFI_HANDLE imageHandle, EFI_SYSTEM_TABLE *) {
  SeedStackGuard();
  if (AnotherHostIsThere()) {
    return EFI_ALREADY_STARTED;
  }
  StartHost();
  EFI_STATUS status = Publish(imageHandle);
  if (EFI_ERROR(status)) {
    Withdraw();
    return status;
  }
  HostDebugPrint(OBV_LOG_INFO, "[Host] Ready\n");
  return EFI_SUCCESS;
}

extern "C" EFI_STATUS EFIAPI ObvHostUnload(EFI_HANDLE) {
  EFI_GUID protocolGuid = OBV_PROTOCOL_GUID;
  EFI_STATUS status = gBS->UninstallProtocolInterface(gDriver.ProtocolHandle, &protocolGuid,
                                                      &gDriver.Contract.Protocol);
  if (EFI_ERROR(status)) {
    return status;
  }
  Withdraw();
  return EFI_SUCCESS;
}
