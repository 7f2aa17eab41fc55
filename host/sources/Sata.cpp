#include "host/sources/AtaDevice.h"
#include "host/sources/Capacity.h"

namespace obv_host {
namespace {

/// Words of IDENTIFY DEVICE, by their numbers in the ATA Command Set.
constexpr UINTN kConfiguration = 0;
constexpr UINTN kSerialNumber = 10;
constexpr UINTN kFirmware = 23;
constexpr UINTN kModel = 27;
constexpr UINTN kSectors28 = 60;
constexpr UINTN kSataCapabilities = 76;
constexpr UINTN kSataAdditional = 77;
constexpr UINTN kSupported = 82;
constexpr UINTN kSupported2 = 83;
constexpr UINTN kEnabled = 85;
constexpr UINTN kSectors48 = 100;
constexpr UINTN kSectorSize = 106;
constexpr UINTN kLogicalSectorWords = 117;
constexpr UINTN kRotation = 217;

constexpr UINT16 kIsPacketDevice = 0x8000;
constexpr UINT16 kSmart = 0x0001;
constexpr UINT16 kHas48Bits = 0x0400;

/// Ports to be asked for: no controller has more, and its driver may run in circles.
constexpr UINTN kPortLimit = 64;
/// Behind one port multiplier there is room for 15.
constexpr UINTN kMultiplierLimit = 16;

/// Text in words whose first character is the upper byte.
void TellWords(const UINT16 *words, UINTN count, UINT32 kind, const CHAR8 *label, Facts *facts) {
  CHAR8 text[40];
  for (UINTN i = 0; i < count && i < sizeof(text) / 2; ++i) {
    text[2 * i] = static_cast<CHAR8>(words[i] >> 8);
    text[2 * i + 1] = static_cast<CHAR8>(words[i] & 0xFF);
  }
  TellField(facts, kind, label, text, 2 * count);
}

void TellNames(const UINT16 *words, Facts *facts) {
  TellWords(words + kModel, 20, OBV_INFO_DESCRIPTION, "Model", facts);
  TellWords(words + kSerialNumber, 10, OBV_INFO_SIDE_LIST, "Serial number", facts);
  TellWords(words + kFirmware, 4, OBV_INFO_SIDE_LIST, "Firmware", facts);
}

/// Whether a word says of itself that it is valid: so are bits 15 and 14 then.
bool IsValid(UINT16 word) { return (word & 0xC000) == 0x4000; }

UINT64 SectorSize(const UINT16 *words) {
  constexpr UINT16 kLargeSectors = 0x1000;
  if (!IsValid(words[kSectorSize]) || (words[kSectorSize] & kLargeSectors) == 0) {
    return 512;
  }
  UINT64 count = words[kLogicalSectorWords] | static_cast<UINT64>(words[kLogicalSectorWords + 1])
                                                  << 16;
  return 2 * count;
}

UINT64 Sectors(const UINT16 *words) {
  bool large = IsValid(words[kSupported2]) && (words[kSupported2] & kHas48Bits) != 0;
  UINTN first = large ? kSectors48 : kSectors28;
  UINT64 sectors = 0;
  for (UINTN i = large ? 4 : 2; i > 0; --i) {
    sectors = sectors << 16 | words[first + i - 1];
  }
  return sectors;
}

void TellSize(const UINT16 *words, Facts *facts) {
  constexpr UINT64 kMostSectors = UINT64{1} << 48;
  constexpr UINT64 kLargestSector = 1 << 16;
  UINT64 sectors = Sectors(words);
  UINT64 size = SectorSize(words);
  if (sectors < kMostSectors && size >= 512 && size < kLargestSector) {
    TellCapacity(sectors * size, facts);
  }
}

/// By generation of Serial ATA; the first entry stands for none told.
constexpr const CHAR8 *kSpeeds[] = {nullptr, "1.5", "3.0", "6.0"};

void TellSpeed(const UINT16 *words, Facts *facts) {
  UINT16 capabilities = words[kSataCapabilities];
  if (capabilities == 0 || capabilities == 0xFFFF) {
    return;
  }
  UINTN most = (capabilities & 0x8) != 0 ? 3 : (capabilities & 0x4) != 0 ? 2 : 1;
  UINTN now = words[kSataAdditional] >> 1 & 0x7;
  if (now >= 1 && now < ARRAY_SIZE(kSpeeds)) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Link", "%a Gb/s (possible: %a Gb/s)", kSpeeds[now],
             kSpeeds[most]);
  } else {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Link", "%a Gb/s possible", kSpeeds[most]);
  }
}

void TellType(UINT16 rotation, Facts *facts) {
  constexpr UINT16 kNotRotating = 1;
  constexpr UINT16 kSlowest = 0x401;
  constexpr UINT16 kReserved = 0xFFFF;
  if (rotation == kNotRotating) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Type", "SSD");
  } else if (rotation >= kSlowest && rotation != kReserved) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Type", "Hard disk, %u RPM",
             static_cast<UINT32>(rotation));
  } else {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Type", "Disk");
  }
}

EFI_STATUS TellHealth(const AtaDevice &device, Facts *facts) {
  bool failing = false;
  EFI_STATUS status = AtaPredictsFailure(device, &failing);
  if (EFI_ERROR(status)) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Unknown");
    return EFI_SUCCESS;
  }
  if (failing) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Failing: expects its own failure (SMART)");
    return EFI_DEVICE_ERROR;
  }
  TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Good");
  return EFI_SUCCESS;
}

EFI_STATUS TellDisk(const AtaDevice &device, const UINT16 *words, Facts *facts) {
  TellNames(words, facts);
  TellType(words[kRotation], facts);
  TellSize(words, facts);
  TellSpeed(words, facts);
  bool smart = (words[kSupported] & kSmart) != 0 && (words[kEnabled] & kSmart) != 0;
  return smart ? TellHealth(device, facts) : EFI_SUCCESS;
}

/// A device that answers commands in packets: it refuses IDENTIFY DEVICE.
EFI_STATUS ReadPacketDevice(const AtaDevice &device, Facts *facts) {
  constexpr UINT16 kOptical = 0x05;
  const UINT16 *words = nullptr;
  EFI_STATUS status = AtaIdentify(device, ATA_CMD_IDENTIFY_DEVICE, &words);
  if (EFI_ERROR(status)) {
    return status;
  }
  TellNames(words, facts);
  bool optical = (words[kConfiguration] >> 8 & 0x1F) == kOptical;
  TellFact(facts, OBV_INFO_DESCRIPTION, "Type", optical ? "Optical drive" : "Packet device");
  TellSpeed(words, facts);
  return EFI_SUCCESS;
}

EFI_STATUS ReadDevice(const AtaDevice &device, bool listed, Facts *facts) {
  const UINT16 *words = nullptr;
  EFI_STATUS status = AtaIdentify(device, ATA_CMD_IDENTIFY_DRIVE, &words);
  if (!EFI_ERROR(status) && (words[kConfiguration] & kIsPacketDevice) == 0) {
    return TellDisk(device, words, facts);
  }
  // EDK2's driver lists disks only, but passes commands to other devices as well.
  status = ReadPacketDevice(device, facts);
  if (!EFI_ERROR(status) || !listed) {
    return EFI_ERROR(status) ? EFI_NOT_FOUND : EFI_SUCCESS;
  }
  TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Failing: does not answer");
  return EFI_DEVICE_ERROR;
}

bool HasPort(EFI_ATA_PASS_THRU_PROTOCOL *controller, UINT16 wanted) {
  UINT16 port = MAX_UINT16;
  for (UINTN i = 0; i < kPortLimit; ++i) {
    if (EFI_ERROR(controller->GetNextPort(controller, &port))) {
      return false;
    }
    if (port == wanted) {
      return true;
    }
  }
  return false;
}

/// Asks to the end, as EDK2's driver remembers in between where it was.
bool HasDevice(const AtaDevice &device) {
  UINT16 multiplier = kNoMultiplier;
  bool found = false;
  for (UINTN i = 0; i < kMultiplierLimit; ++i) {
    if (EFI_ERROR(device.Controller->GetNextDevice(device.Controller, device.Port, &multiplier))) {
      return found;
    }
    found = found || multiplier == device.Multiplier;
  }
  return found;
}

/// A device without a port multiplier has its port's highest bit or all bits set.
UINT16 MultiplierOf(const SATA_DEVICE_PATH &node) {
  bool direct = (node.PortMultiplierPortNumber & SATA_HBA_DIRECT_CONNECT_FLAG) != 0;
  return direct ? kNoMultiplier : node.PortMultiplierPortNumber;
}

EFI_STATUS ReadPort(EFI_ATA_PASS_THRU_PROTOCOL *controller, const SATA_DEVICE_PATH &node,
                    Facts *facts) {
  UINT8 *pages = controller->Mode == nullptr
                     ? nullptr
                     : AllocateForController(kAtaPages, controller->Mode->IoAlign);
  if (pages == nullptr) {
    return EFI_NOT_READY;
  }
  AtaDevice device = {controller, node.HBAPortNumber, MultiplierOf(node), pages};
  bool listed = HasPort(controller, device.Port) && HasDevice(device);
  EFI_STATUS status = ReadDevice(device, listed, facts);
  FreePages(pages, kAtaPages);
  return status;
}

}  // namespace

EFI_STATUS ReadSata(const BoardHardware &hardware, Facts *facts, Presence *presence) {
  PathNodes nodes = NodesOf(hardware.Name);
  if (nodes.Size == 0) {
    return EFI_NOT_FOUND;
  }
  PathNodes last;
  PathNodes place = WithoutLast(nodes, &last);
  if (!IsNode(last, MESSAGING_DEVICE_PATH, MSG_SATA_DP, sizeof(SATA_DEVICE_PATH))) {
    return EFI_NOT_FOUND;
  }
  SATA_DEVICE_PATH node;
  CopyMem(&node, last.Path, sizeof(node));
  Presence device;
  EFI_STATUS status =
      FindDevice({&gEfiAtaPassThruProtocolGuid, place, AcceptNothing, nullptr}, &device);
  if (EFI_ERROR(status)) {
    return EFI_NOT_FOUND;
  }
  status = ReadPort(static_cast<EFI_ATA_PASS_THRU_PROTOCOL *>(device.Interface), node, facts);
  if (status != EFI_NOT_FOUND) {
    *presence = device;
  }
  return status;
}

}  // namespace obv_host
