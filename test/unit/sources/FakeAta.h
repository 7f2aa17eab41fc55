// A SATA controller with one device: its answers to the IDENTIFY commands, as words, and to SMART.

#pragma once

#include "test/unit/sources/FakeDevice.h"

extern "C" {
#include <IndustryStandard/Atapi.h>
#include <Protocol/AtaPassThru.h>
}

namespace obv_host {

class FakeAta : public FakeDevice {
 public:
  enum class Kind { Disk, Optical, Nothing };

  /// A solid-state disk of 512 GB that is well, at port 2.
  FakeAta() {
    Text(27, 20, "CT512MX500SSD1");
    Text(10, 10, "2034E2A5F00C");
    Text(23, 4, "M3CR032");
    Words[60] = 0xFFFF;
    Words[61] = 0x0FFF;
    Words[76] = 0x000E;
    Words[77] = 0x0006;
    Words[82] = Words[85] = 0x0001;
    Words[83] = 0x4400;
    UINT64 sectors = 1'000'215'216;
    std::memcpy(&Words[100], &sectors, sizeof sectors);
    Words[217] = 1;
    mode_.IoAlign = 16;
    io_.Owner = this;
    io_.Protocol = {&mode_,  PassThru, GetNextPort, GetNextDevice,
                    nullptr, nullptr,  nullptr,     nullptr};
  }

  FakeAta &At(fake::Firmware &machine, fake::DevicePath path) {
    Place(machine, gEfiAtaPassThruProtocolGuid, &io_.Protocol, std::move(path));
    return *this;
  }
  /// With a path that may be none.
  FakeAta &AtRaw(fake::Firmware &machine, VOID *path) {
    PlaceRaw(machine, gEfiAtaPassThruProtocolGuid, &io_.Protocol, path);
    return *this;
  }

  void Text(size_t word, size_t count, const std::string &text) {
    for (size_t i = 0; i < 2 * count; i++) {
      UINT16 character = i < text.size() ? static_cast<UINT8>(text[i]) : ' ';
      UINT16 kept = i % 2 == 0 ? 0 : Words[word + i / 2];
      Words[word + i / 2] =
          i % 2 == 0 ? static_cast<UINT16>(character << 8) : static_cast<UINT16>(kept | character);
    }
  }

  void SetAlignment(UINT32 alignment) { mode_.IoAlign = alignment; }
  void DropMode() { io_.Protocol.Mode = nullptr; }
  bool IsBetweenDevices() const { return lastMultiplier_ == 0xFFFF; }

  Kind Device = Kind::Disk;
  UINT16 Port = 2;
  /// Behind which the device hangs; all ones without one.
  UINT16 Multiplier = 0xFFFF;
  std::array<UINT16, 256> Words = {};
  /// Of every command.
  EFI_STATUS Failure = EFI_SUCCESS;
  EFI_STATUS SmartFailure = EFI_SUCCESS;
  UINT8 SmartLow = 0x4F;
  UINT8 SmartHigh = 0xC2;
  UINT8 SmartStatus = 0x50;
  bool CountsInCircles = false;
  int SmartCommands = 0;

 private:
  struct Io {
    EFI_ATA_PASS_THRU_PROTOCOL Protocol;
    FakeAta *Owner;
  };

  static FakeAta *Of(EFI_ATA_PASS_THRU_PROTOCOL *self) {
    return reinterpret_cast<Io *>(self)->Owner;
  }

  bool IsAligned(const VOID *buffer) const {
    return reinterpret_cast<UINTN>(buffer) % std::max(mode_.IoAlign, 1U) == 0;
  }

  EFI_STATUS Identify(EFI_ATA_PASS_THRU_COMMAND_PACKET *packet, Kind kind) {
    if (packet->Protocol != EFI_ATA_PASS_THRU_PROTOCOL_PIO_DATA_IN ||
        packet->InTransferLength != 512 || packet->InDataBuffer == nullptr) {
      fake::Firmware::Current().Problem("IDENTIFY without room for its answer");
      return EFI_INVALID_PARAMETER;
    }
    if (Device != kind) {
      return EFI_DEVICE_ERROR;
    }
    std::memcpy(packet->InDataBuffer, Words.data(), 512);
    return EFI_SUCCESS;
  }

  EFI_STATUS Smart(EFI_ATA_PASS_THRU_COMMAND_PACKET *packet) {
    ++SmartCommands;
    const EFI_ATA_COMMAND_BLOCK &block = *packet->Acb;
    if (packet->Protocol != EFI_ATA_PASS_THRU_PROTOCOL_ATA_NON_DATA || block.AtaFeatures != 0xDA ||
        block.AtaCylinderLow != 0x4F || block.AtaCylinderHigh != 0xC2) {
      fake::Firmware::Current().Problem("no SMART RETURN STATUS");
      return EFI_INVALID_PARAMETER;
    }
    packet->Asb->AtaStatus = SmartStatus;
    packet->Asb->AtaCylinderLow = SmartLow;
    packet->Asb->AtaCylinderHigh = SmartHigh;
    return SmartFailure;
  }

  EFI_STATUS Answer(EFI_ATA_PASS_THRU_COMMAND_PACKET *packet) {
    switch (packet->Acb->AtaCommand) {
      case 0xEC:
        return Identify(packet, Kind::Disk);
      case 0xA1:
        return Identify(packet, Kind::Optical);
      case 0xB0:
        return Smart(packet);
      default:
        fake::Firmware::Current().Problem("a command that nobody expects");
        return EFI_UNSUPPORTED;
    }
  }

  static EFI_STATUS EFIAPI PassThru(EFI_ATA_PASS_THRU_PROTOCOL *self, UINT16 port,
                                    UINT16 multiplier, EFI_ATA_PASS_THRU_COMMAND_PACKET *packet,
                                    EFI_EVENT) {
    FakeAta *ata = Of(self);
    ata->Called();
    if (packet->Timeout == 0 || packet->Timeout > 10'000'000 || packet->Asb == nullptr ||
        packet->Acb == nullptr || !ata->IsAligned(packet->Asb) ||
        !ata->IsAligned(packet->InDataBuffer)) {
      fake::Firmware::Current().Problem("a command packet that the driver refuses");
      return EFI_INVALID_PARAMETER;
    }
    if (port != ata->Port || multiplier != ata->Multiplier || ata->Device == Kind::Nothing) {
      return EFI_INVALID_PARAMETER;
    }
    if (!ata->IsThere()) {
      return EFI_TIMEOUT;
    }
    return EFI_ERROR(ata->Failure) ? ata->Failure : ata->Answer(packet);
  }

  // As EDK2's driver: it lists the ports of disks alone.
  static EFI_STATUS EFIAPI GetNextPort(EFI_ATA_PASS_THRU_PROTOCOL *self, UINT16 *port) {
    FakeAta *ata = Of(self);
    if (ata->CountsInCircles) {
      *port = static_cast<UINT16>(*port == 7 ? 8 : 7);
      return EFI_SUCCESS;
    }
    if (*port != 0xFFFF || ata->Device != Kind::Disk) {
      return EFI_NOT_FOUND;
    }
    *port = ata->Port;
    return EFI_SUCCESS;
  }

  // And remembers between calls that it has told of a device without a multiplier.
  static EFI_STATUS EFIAPI GetNextDevice(EFI_ATA_PASS_THRU_PROTOCOL *self, UINT16 port,
                                         UINT16 *multiplier) {
    FakeAta *ata = Of(self);
    if (ata->CountsInCircles) {
      *multiplier = static_cast<UINT16>(*multiplier == 1 ? 2 : 1);
      return EFI_SUCCESS;
    }
    if (ata->IsBetweenDevices()) {
      ata->lastMultiplier_ = 0;
      return EFI_NOT_FOUND;
    }
    if (*multiplier != 0xFFFF || port != ata->Port || ata->Device != Kind::Disk) {
      return EFI_NOT_FOUND;
    }
    ata->lastMultiplier_ = *multiplier = ata->Multiplier;
    return EFI_SUCCESS;
  }

  EFI_ATA_PASS_THRU_MODE mode_ = {};
  Io io_ = {};
  UINT16 lastMultiplier_ = 0;
};

}  // namespace obv_host
