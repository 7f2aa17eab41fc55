/** @file
  The resident driver: everything that lives from load to unload.
**/

#pragma once

#include "host/portable/Host.h"
#include "host/sources/Knowledge.h"
#include "host/uefi/Clock.h"
#include "host/uefi/DriverFirmware.h"
#include "host/uefi/LogPorts.h"

namespace obv_host {

struct Driver {
  Host Contract;
  Clock Timer;
  LogPorts Ports;
  EFI_HII_HANDLE Strings;
  VOID *BoardFile;            ///< Pool block of the user's board, if one is in use.
  Knowledge Hardware;
  EFI_HANDLE ProtocolHandle;  ///< Carries OBV_PROTOCOL once it is installed.
};

extern Driver gDriver;

}  // namespace obv_host

/// Publishes the protocol and stays resident. EFI_ALREADY_STARTED when another
/// host is there.
extern "C" EFI_STATUS EFIAPI ObvHostEntryPoint(EFI_HANDLE imageHandle,
                                               EFI_SYSTEM_TABLE *systemTable);

/// Withdraws everything. The application must not be running.
extern "C" EFI_STATUS EFIAPI ObvHostUnload(EFI_HANDLE imageHandle);
