#include "host/uefi/LogPorts.h"

namespace obv_host {
namespace {

constexpr UINT16 kDebugConsole = 0x402;
constexpr UINT8 kDebugConsoleAnswer = 0xE9;

constexpr UINT16 kSerial1 = 0x3F8;
constexpr UINT16 kSerial3 = 0x3E8;

/// Registers of a 16550, as offsets from its port.
constexpr UINT16 kData = 0;
constexpr UINT16 kInterruptEnable = 1;
constexpr UINT16 kFifoControl = 2;
constexpr UINT16 kLineControl = 3;
constexpr UINT16 kModemControl = 4;
constexpr UINT16 kLineStatus = 5;
constexpr UINT16 kScratch = 7;

constexpr UINT8 kDivisorLatch = 0x80;
constexpr UINT8 kEightBits = 0x03;
constexpr UINT8 kClearFifos = 0x07;
constexpr UINT8 kTerminalReady = 0x03;
constexpr UINT8 kTransmitterEmpty = 0x20;

/// Reads of the line status before the port is given up; some tens of
/// milliseconds on hardware.
constexpr UINTN kPatience = 100000;

bool KeepsScratch(UINT16 port, UINT8 pattern) {
  IoWrite8(port + kScratch, pattern);
  return IoRead8(port + kScratch) == pattern;
}

/// A 16550 has a scratch register; an empty bus keeps nothing.
bool IsSerialPort(UINT16 port) { return KeepsScratch(port, 0x5A) && KeepsScratch(port, 0xA5); }

void SetUpSerial(UINT16 port) {
  IoWrite8(port + kInterruptEnable, 0);
  IoWrite8(port + kLineControl, kDivisorLatch | kEightBits);
  IoWrite8(port + kData, 1);
  IoWrite8(port + kInterruptEnable, 0);
  IoWrite8(port + kLineControl, kEightBits);
  IoWrite8(port + kFifoControl, kClearFifos);
  IoWrite8(port + kModemControl, kTerminalReady);
}

/// False when the port did not become ready for the byte.
bool WriteSerial(UINT16 port, UINT8 byte) {
  for (UINTN i = 0; i < kPatience; ++i) {
    if ((IoRead8(port + kLineStatus) & kTransmitterEmpty) != 0) {
      IoWrite8(port + kData, byte);
      return true;
    }
  }
  return false;
}

}  // namespace

void OpenLogPorts(LogPorts *ports) {
  *ports = {};
  if (IoRead8(kDebugConsole) == kDebugConsoleAnswer) {
    ports->DebugConsole = kDebugConsole;
  }
  if (IsSerialPort(kSerial3)) {
    ports->Serial = kSerial3;
    SetUpSerial(kSerial3);
  } else if (IsSerialPort(kSerial1)) {
    // Set up by the firmware, whose console goes on using it.
    ports->Serial = kSerial1;
  }
}

void WriteLogPorts(LogPorts *ports, const CHAR8 *bytes, UINTN size) {
  for (UINTN i = 0; i < size; ++i) {
    const UINT8 byte = static_cast<UINT8>(bytes[i]);
    if (ports->DebugConsole != 0) {
      IoWrite8(ports->DebugConsole, byte);
    }
    if (ports->Serial != 0 && !WriteSerial(ports->Serial, byte)) {
      ports->Serial = 0;
    }
  }
}

}  // namespace obv_host
