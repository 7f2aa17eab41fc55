/** @file
  The I/O ports that the reference host's driver logs to, in memory. They stand behind EDK2's
  IoRead8 and IoWrite8 in the unit tests.
**/

#pragma once

#include <cstdint>
#include <set>
#include <string>

namespace obv_host {

struct Ports {
  /// Whether QEMU's debug console answers at 0x402.
  bool DebugConsole = true;
  /// Base ports of the serial ports that exist.
  std::set<uint16_t> Serials = {0x3F8, 0x3E8};
  /// A stuck serial port never becomes ready for a byte.
  bool Stuck = false;
  /// Reads of any register of the serial ports that exist.
  uint64_t SerialReads = 0;

  std::string DebugOutput;
  /// What went out of the serial port at this base.
  std::string Sent(uint16_t base) const;
  /// Baud rate divisor that was set at this base; 0 for none.
  uint16_t Divisor(uint16_t base) const;

  uint8_t Read(uint16_t port);
  void Write(uint16_t port, uint8_t value);

 private:
  struct Serial {
    uint8_t Registers[8] = {};
    uint8_t DivisorBytes[2] = {};
    std::string Sent;
  };
  Serial *Find(uint16_t port);

  Serial serial1_;
  Serial serial3_;
};

extern Ports gPorts;

}  // namespace obv_host
