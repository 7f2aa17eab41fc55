#include "host/sources/PciFacts.h"

#include "host/sources/PciNames.h"

namespace obv_host {
namespace {

/// Offsets in the configuration space, as the PCI Local Bus and PCI Express
/// specifications define it.
constexpr UINT32 kIdentityOffset = 0x00;
constexpr UINT32 kStatusOffset = 0x06;
constexpr UINT32 kClassOffset = 0x08;
constexpr UINT32 kListOffset = 0x34;
constexpr UINT16 kHasList = 0x0010;
constexpr UINT32 kFirstCapability = 0x40;
/// Behind it, a PCI Express capability up to its link would not fit.
constexpr UINT32 kLastExpress = 0x100 - 0x14;
/// As many capabilities as there is room for: a longer list runs in circles.
constexpr UINTN kCapabilityLimit = (0x100 - 0x40) / 4;
constexpr UINT8 kExpressCapability = 0x10;
constexpr UINT32 kLinkCapabilities = 0x0C;
constexpr UINT32 kLinkStatus = 0x12;

EFI_STATUS ReadBytes(const Presence &device, UINT32 offset, UINTN size, void *buffer) {
  auto *pci = static_cast<EFI_PCI_IO_PROTOCOL *>(device.Interface);
  return pci->Pci.Read(pci, EfiPciIoWidthUint8, offset, size, buffer);
}

/// Its offset; 0 for a device without one.
UINT32 FindExpressCapability(const Presence &device) {
  UINT16 status = 0;
  UINT8 next = 0;
  if (EFI_ERROR(ReadBytes(device, kStatusOffset, sizeof(status), &status)) ||
      (status & kHasList) == 0 || EFI_ERROR(ReadBytes(device, kListOffset, sizeof(next), &next))) {
    return 0;
  }
  for (UINTN i = 0; i < kCapabilityLimit; ++i) {
    // The two lowest bits are reserved.
    UINT32 offset = next & 0xFCU;
    UINT8 header[2] = {};
    if (offset < kFirstCapability || EFI_ERROR(ReadBytes(device, offset, sizeof(header), header))) {
      return 0;
    }
    if (header[0] == kExpressCapability) {
      return offset <= kLastExpress ? offset : 0;
    }
    next = header[1];
  }
  return 0;
}

/// A link's registers keep speed and width in the same bits.
struct LinkRate {
  UINT32 Speed;
  UINT32 Width;
};

LinkRate RateOf(UINT32 bits) { return {bits & 0xF, bits >> 4 & 0x3F}; }

/// In GT/s; NULL for a speed that is not defined.
const CHAR8 *SpeedName(UINT32 speed) {
  constexpr const CHAR8 *kSpeeds[] = {nullptr, "2.5", "5.0", "8.0", "16.0", "32.0", "64.0"};
  return speed < ARRAY_SIZE(kSpeeds) ? kSpeeds[speed] : nullptr;
}

bool IsRate(const LinkRate &rate) {
  return SpeedName(rate.Speed) != nullptr && rate.Width >= 1 && rate.Width <= 32;
}

}  // namespace

EFI_STATUS ReadPciIdentity(const Presence &device, PciIdentity *identity) {
  UINT16 numbers[2] = {};
  UINT8 revisionAndClass[4] = {};
  EFI_STATUS status = ReadBytes(device, kIdentityOffset, sizeof(numbers), numbers);
  if (EFI_ERROR(status)) {
    return EFI_DEVICE_ERROR;
  }
  if (numbers[0] == 0xFFFF) {
    return EFI_NOT_FOUND;
  }
  status = ReadBytes(device, kClassOffset, sizeof(revisionAndClass), revisionAndClass);
  if (EFI_ERROR(status)) {
    return EFI_DEVICE_ERROR;
  }
  *identity = {numbers[0], numbers[1], revisionAndClass[3], revisionAndClass[2]};
  return EFI_SUCCESS;
}

void TellPciIdentity(const PciIdentity &identity, Facts *facts) {
  TellFact(facts, OBV_INFO_DESCRIPTION, "Type", "%a",
           PciClassName(identity.BaseClass, identity.SubClass));
  const CHAR8 *vendor = PciVendorName(identity.Vendor);
  if (vendor != nullptr) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Manufacturer", "%a", vendor);
  }
  TellFact(facts, OBV_INFO_DESCRIPTION, "Device ID", "%04X:%04X", identity.Vendor, identity.Device);
}

void TellPciLink(const Presence &device, Facts *facts) {
  UINT32 offset = FindExpressCapability(device);
  UINT32 capabilities = 0;
  UINT16 status = 0;
  if (offset == 0 ||
      EFI_ERROR(
          ReadBytes(device, offset + kLinkCapabilities, sizeof(capabilities), &capabilities)) ||
      EFI_ERROR(ReadBytes(device, offset + kLinkStatus, sizeof(status), &status))) {
    return;
  }
  LinkRate now = RateOf(status);
  LinkRate most = RateOf(capabilities);
  if (IsRate(now) && IsRate(most)) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Link", "%a GT/s x%u (possible: %a GT/s x%u)",
             SpeedName(now.Speed), now.Width, SpeedName(most.Speed), most.Width);
  } else if (IsRate(now)) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Link", "%a GT/s x%u", SpeedName(now.Speed), now.Width);
  }
}

EFI_STATUS ReadPciDevice(const Presence &device, Facts *facts, Presence *presence) {
  PciIdentity identity;
  EFI_STATUS status = ReadPciIdentity(device, &identity);
  if (status == EFI_NOT_FOUND) {
    return EFI_NOT_FOUND;
  }
  *presence = device;
  if (EFI_ERROR(status)) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Failing: does not answer");
    return EFI_DEVICE_ERROR;
  }
  TellPciIdentity(identity, facts);
  TellPciLink(device, facts);
  return EFI_SUCCESS;
}

EFI_STATUS ReadPciDeviceAt(const PathNodes &place, Facts *facts, Presence *presence) {
  Presence device;
  EFI_STATUS status = FindDevice({&gEfiPciIoProtocolGuid, place, AcceptNothing, nullptr}, &device);
  return EFI_ERROR(status) ? EFI_NOT_FOUND : ReadPciDevice(device, facts, presence);
}

void PrintPciName(const PciIdentity &identity, CHAR8 *name, UINTN size) {
  const CHAR8 *type = PciClassName(identity.BaseClass, identity.SubClass);
  const CHAR8 *vendor = PciVendorName(identity.Vendor);
  if (vendor != nullptr) {
    AsciiSPrint(name, size, "%a %a", vendor, type);
  } else {
    AsciiSPrint(name, size, "%a %04X:%04X", type, identity.Vendor, identity.Device);
  }
}

}  // namespace obv_host
