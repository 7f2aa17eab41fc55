// A PCI device: its configuration space, read through PciIo.

#pragma once

#include "test/unit/sources/FakeDevice.h"

extern "C" {
#include <Protocol/PciIo.h>
}

namespace obv_host {

class FakePci : public FakeDevice {
 public:
  /// Vendor, device and class, the base class in the upper byte.
  FakePci(UINT16 vendor, UINT16 device, UINT16 pciClass) {
    Put16(0x00, vendor);
    Put16(0x02, device);
    Put16(0x0A, pciClass);
    io_.Owner = this;
    io_.Protocol.Pci.Read = Read;
  }

  FakePci &At(fake::Firmware &machine, fake::DevicePath path) {
    Place(machine, gEfiPciIoProtocolGuid, &io_.Protocol, std::move(path));
    return *this;
  }
  FakePci &AtRaw(fake::Firmware &machine, VOID *path) {
    PlaceRaw(machine, gEfiPciIoProtocolGuid, &io_.Protocol, path);
    return *this;
  }

  void Put8(size_t offset, UINT8 value) { Space[offset] = value; }
  void Put16(size_t offset, UINT16 value) { std::memcpy(&Space[offset], &value, sizeof value); }

  /// A list with one capability in between, and the link in the PCI Express capability: speeds by
  /// their number in its registers.
  void AddLink(UINT8 speed, UINT8 width, UINT8 mostSpeed, UINT8 mostWidth) {
    Put16(0x06, 0x0010);
    Put8(0x34, 0x40);
    Put16(0x40, 0x6001);  // power management
    Put16(0x60, 0x0010);
    Put16(0x60 + 0x0C, static_cast<UINT16>(mostSpeed | mostWidth << 4));
    Put16(0x60 + 0x12, static_cast<UINT16>(speed | width << 4));
  }

  std::array<UINT8, 256> Space = {};
  EFI_STATUS Failure = EFI_SUCCESS;

 private:
  struct Io {
    EFI_PCI_IO_PROTOCOL Protocol;
    FakePci *Owner;
  };

  static EFI_STATUS EFIAPI Read(EFI_PCI_IO_PROTOCOL *self, EFI_PCI_IO_PROTOCOL_WIDTH width,
                                UINT32 offset, UINTN count, VOID *buffer) {
    FakePci *pci = reinterpret_cast<Io *>(self)->Owner;
    pci->Called();
    UINTN size = count << width;
    if (width > EfiPciIoWidthUint32 || offset + size > pci->Space.size() ||
        offset % (1U << width) != 0) {
      fake::Firmware::Current().Problem("a read outside the configuration space");
      return EFI_UNSUPPORTED;
    }
    if (EFI_ERROR(pci->Failure)) {
      return pci->Failure;
    }
    // Nobody answers for a device that has left.
    if (pci->IsThere()) {
      std::memcpy(buffer, &pci->Space[offset], size);
    } else {
      std::memset(buffer, 0xFF, size);
    }
    return EFI_SUCCESS;
  }

  Io io_ = {};
};

}  // namespace obv_host
