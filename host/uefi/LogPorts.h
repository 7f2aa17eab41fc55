/** @file
  Where the log goes: QEMU's debug console and one serial port.
**/

#pragma once

#include "host/uefi/DriverFirmware.h"

namespace obv_host {

/// The ports found at start; a port of 0 is absent or was given up.
struct LogPorts {
  UINT16 DebugConsole;
  UINT16 Serial;
};

/// Looks for the ports and sets the serial port to 115200 8N1. The third serial
/// port is preferred, because firmware consoles use the first two: with one
/// there, a log file holds the host's lines and nothing else. Otherwise the
/// first port is shared with the firmware's console.
void OpenLogPorts(LogPorts *ports);

/// Writes the bytes as they are to both ports. A serial port that stops taking
/// bytes is given up for good: waiting again for every byte would bring the
/// machine to a crawl.
void WriteLogPorts(LogPorts *ports, const CHAR8 *bytes, UINTN size);

}  // namespace obv_host
