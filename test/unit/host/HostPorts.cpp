#include "test/unit/host/HostPorts.h"

extern "C" {
#include <Uefi.h>

#include <Library/IoLib.h>
}

namespace obv_host {

Ports gPorts;

namespace {

constexpr uint16_t kDebugConsole = 0x402;
constexpr uint16_t kSerial1 = 0x3F8;
constexpr uint16_t kSerial3 = 0x3E8;
constexpr unsigned kLineControl = 3;
constexpr unsigned kLineStatus = 5;
constexpr uint8_t kDivisorLatch = 0x80;
constexpr uint8_t kTransmitterEmpty = 0x20;
constexpr uint8_t kNobody = 0xFF;

}  // namespace

Ports::Serial *Ports::Find(uint16_t port) {
  uint16_t base = static_cast<uint16_t>(port & ~7U);
  if (Serials.count(base) == 0) {
    return nullptr;
  }
  return base == kSerial1 ? &serial1_ : &serial3_;
}

std::string Ports::Sent(uint16_t base) const {
  return base == kSerial1 ? serial1_.Sent : serial3_.Sent;
}

uint16_t Ports::Divisor(uint16_t base) const {
  const Serial &serial = base == kSerial3 ? serial3_ : serial1_;
  return static_cast<uint16_t>(serial.DivisorBytes[0] | serial.DivisorBytes[1] << 8);
}

uint8_t Ports::Read(uint16_t port) {
  if (port == kDebugConsole) {
    return DebugConsole ? 0xE9 : kNobody;
  }
  const Serial *serial = Find(port);
  if (serial == nullptr) {
    return kNobody;
  }
  SerialReads++;
  if (port % 8 == kLineStatus) {
    return Stuck ? 0 : kTransmitterEmpty;
  }
  return serial->Registers[port % 8];
}

void Ports::Write(uint16_t port, uint8_t value) {
  if (port == kDebugConsole && DebugConsole) {
    DebugOutput += static_cast<char>(value);
    return;
  }
  Serial *serial = Find(port);
  if (serial == nullptr) {
    return;
  }
  unsigned number = port % 8;
  if (number < 2 && (serial->Registers[kLineControl] & kDivisorLatch) != 0) {
    serial->DivisorBytes[number] = value;
  } else if (number == 0) {
    serial->Sent += static_cast<char>(value);
  } else {
    serial->Registers[number] = value;
  }
}

}  // namespace obv_host

extern "C" UINT8 EFIAPI IoRead8(UINTN port) {
  return obv_host::gPorts.Read(static_cast<UINT16>(port));
}

extern "C" UINT8 EFIAPI IoWrite8(UINTN port, UINT8 value) {
  obv_host::gPorts.Write(static_cast<UINT16>(port), value);
  return value;
}
