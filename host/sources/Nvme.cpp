#include "host/sources/Capacity.h"
#include "host/sources/PciFacts.h"

namespace obv_host {
namespace {

using PassThru = EFI_NVM_EXPRESS_PASS_THRU_PROTOCOL;

constexpr UINT8 kIdentify = 0x06;
constexpr UINT8 kGetLogPage = 0x02;
constexpr UINT32 kIdentifyNamespace = 0;
constexpr UINT32 kIdentifyController = 1;
constexpr UINT32 kHealthLog = 2;
constexpr UINT32 kNoNamespace = 0;
constexpr UINT32 kFirstNamespace = 1;
constexpr UINT32 kAllNamespaces = MAX_UINT32;
/// Status code and its type within the completion's last word.
constexpr UINT32 kCompletionStatus = 0x7FFU << 17;

/// A subclass of PCI_CLASS_MASS_STORAGE.
constexpr UINT8 kNonVolatileMemory = 0x08;

/// One page: what a controller fills in.
static_assert(sizeof(NVME_ADMIN_CONTROLLER_DATA) == EFI_PAGE_SIZE);
static_assert(sizeof(NVME_ADMIN_NAMESPACE_DATA) == EFI_PAGE_SIZE);
static_assert(sizeof(NVME_SMART_HEALTH_INFO_LOG) == 512);

struct AdminCommand {
  UINT8 Opcode;
  UINT32 Namespace;
  UINT32 Argument;  ///< Cdw10.
  UINT32 Size;      ///< Of the answer, in bytes; at most a page.
};

/// answer is the page that the controller writes to.
EFI_STATUS Ask(PassThru *controller, const AdminCommand &asked, VOID *answer) {
  EFI_NVM_EXPRESS_COMMAND command = {};
  command.Cdw0.Opcode = asked.Opcode;
  command.Nsid = asked.Namespace;
  command.Flags = CDW10_VALID;
  command.Cdw10 = asked.Argument;
  EFI_NVM_EXPRESS_COMPLETION completion = {};
  EFI_NVM_EXPRESS_PASS_THRU_COMMAND_PACKET packet = {};
  packet.CommandTimeout = kCommandTimeout;
  packet.TransferBuffer = answer;
  packet.TransferLength = asked.Size;
  packet.QueueType = NVME_ADMIN_QUEUE;
  packet.NvmeCmd = &command;
  packet.NvmeCompletion = &completion;
  ZeroMem(answer, EFI_PAGE_SIZE);
  EFI_STATUS status = controller->PassThru(controller, asked.Namespace, &packet, nullptr);
  if (EFI_ERROR(status)) {
    return status;
  }
  return (completion.DW3 & kCompletionStatus) == 0 ? EFI_SUCCESS : EFI_DEVICE_ERROR;
}

/// Whether every byte is the same, 0 or 0xFF: nobody wrote it.
bool IsNobodysAnswer(const UINT8 *bytes, UINTN size) {
  for (UINTN i = 0; i < size; ++i) {
    if (bytes[i] != bytes[0]) {
      return false;
    }
  }
  return bytes[0] == 0 || bytes[0] == 0xFF;
}

/// The lower half of a number of 16 bytes; all ones when it does not fit.
UINT64 NumberOf(const UINT8 *bytes) {
  UINT64 high = ReadUnaligned64(reinterpret_cast<const UINT64 *>(bytes + sizeof(UINT64)));
  return high != 0 ? MAX_UINT64 : ReadUnaligned64(reinterpret_cast<const UINT64 *>(bytes));
}

UINT64 SizeOfNamespace(const NVME_ADMIN_NAMESPACE_DATA &space) {
  UINT8 exponent = space.LbaFormat[space.Flbas & 0xF].Lbads;
  if (exponent < 9 || exponent > 16 || space.Nsze > MAX_UINT64 >> exponent) {
    return 0;
  }
  return space.Nsze << exponent;
}

/// Not every controller tells its capacity; most have one namespace. Reuses the page.
void TellSize(PassThru *controller, UINT8 *page, Facts *facts) {
  const auto *identity = reinterpret_cast<const NVME_ADMIN_CONTROLLER_DATA *>(page);
  UINT64 size = NumberOf(identity->Tnvmcap);
  if (size == 0) {
    AdminCommand ask = {kIdentify, kFirstNamespace, kIdentifyNamespace, EFI_PAGE_SIZE};
    if (EFI_ERROR(Ask(controller, ask, page))) {
      return;
    }
    size = SizeOfNamespace(*reinterpret_cast<const NVME_ADMIN_NAMESPACE_DATA *>(page));
  }
  if (size != MAX_UINT64) {
    TellCapacity(size, facts);
  }
}

EFI_STATUS TellIdentity(PassThru *controller, UINT8 *page, Facts *facts) {
  EFI_STATUS status =
      Ask(controller, {kIdentify, kNoNamespace, kIdentifyController, EFI_PAGE_SIZE}, page);
  const auto *identity = reinterpret_cast<const NVME_ADMIN_CONTROLLER_DATA *>(page);
  constexpr UINTN kNames = OFFSET_OF(NVME_ADMIN_CONTROLLER_DATA, Rab);
  if (EFI_ERROR(status)) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Failing: does not answer");
    return EFI_DEVICE_ERROR;
  }
  if (IsNobodysAnswer(page, kNames)) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Failing: does not answer sensibly");
    return EFI_DEVICE_ERROR;
  }
  TellField(facts, OBV_INFO_DESCRIPTION, "Model", identity->Mn, sizeof(identity->Mn));
  TellField(facts, OBV_INFO_SIDE_LIST, "Serial number", identity->Sn, sizeof(identity->Sn));
  TellField(facts, OBV_INFO_SIDE_LIST, "Firmware", identity->Fr, sizeof(identity->Fr));
  TellSize(controller, page, facts);
  return EFI_SUCCESS;
}

/// By bit of the health log's critical warning.
constexpr const CHAR8 *kWarnings[] = {
    "Failing: spare blocks are used up",         "Failing: too hot or too cold",
    "Failing: its memory has become unreliable", "Failing: can only be read",
    "Failing: its backup power has failed",      "Failing: its persistent memory is unreliable",
};

void TellHealth(const UINT8 *page, Facts *facts) {
  constexpr UINT32 kCelsius = 273;  // 0 C in Kelvin
  constexpr UINT32 kHottest = kCelsius + 200;
  UINT32 temperature = page[1] | static_cast<UINT32>(page[2]) << 8;
  if (temperature >= kCelsius && temperature <= kHottest) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Temperature", "%u C", temperature - kCelsius);
  }
  const auto *log = reinterpret_cast<const NVME_SMART_HEALTH_INFO_LOG *>(page);
  TellFact(facts, OBV_INFO_DESCRIPTION, "Endurance used", "%u %%",
           static_cast<UINT32>(log->PercentageUsed));
  UINT64 hours = NumberOf(log->PowerOnHours);
  if (hours != MAX_UINT64) {
    TellFact(facts, OBV_INFO_SIDE_LIST, "Powered on", "%lu h", hours);
  }
}

EFI_STATUS ReadHealth(PassThru *controller, UINT8 *page, Facts *facts) {
  constexpr UINT32 kSize = sizeof(NVME_SMART_HEALTH_INFO_LOG);
  constexpr UINT32 kDwords = kSize / sizeof(UINT32) - 1;
  EFI_STATUS status =
      Ask(controller, {kGetLogPage, kAllNamespaces, kHealthLog | kDwords << 16, kSize}, page);
  UINT8 warning = page[0];
  if (EFI_ERROR(status) || IsNobodysAnswer(page, kSize) || warning >> ARRAY_SIZE(kWarnings) != 0) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "Unknown");
    return EFI_SUCCESS;
  }
  TellHealth(page, facts);
  for (UINTN bit = 0; bit < ARRAY_SIZE(kWarnings); ++bit) {
    if ((warning >> bit & 1) != 0) {
      TellFact(facts, OBV_INFO_DESCRIPTION, "Health", "%a", kWarnings[bit]);
    }
  }
  return warning == 0 ? EFI_SUCCESS : EFI_DEVICE_ERROR;
}

EFI_STATUS ReadController(PassThru *controller, Facts *facts) {
  if (controller->Mode == nullptr) {
    return EFI_NOT_READY;
  }
  UINT8 *page = AllocateForController(1, controller->Mode->IoAlign);
  if (page == nullptr) {
    return EFI_NOT_READY;
  }
  EFI_STATUS status = TellIdentity(controller, page, facts);
  if (!EFI_ERROR(status)) {
    status = ReadHealth(controller, page, facts);
  }
  FreePages(page, 1);
  return status;
}

/// A controller that its driver does not hold yet, or never will.
EFI_STATUS ReadWithoutDriver(const PathNodes &place, Presence *presence) {
  Presence devices[kDeviceLimit];
  UINTN count =
      FindDevices({&gEfiPciIoProtocolGuid, place, AcceptPciNodes, nullptr}, devices, kDeviceLimit);
  for (UINTN i = 0; i < count; ++i) {
    PciIdentity identity;
    if (!EFI_ERROR(ReadPciIdentity(devices[i], &identity)) &&
        identity.BaseClass == PCI_CLASS_MASS_STORAGE && identity.SubClass == kNonVolatileMemory) {
      *presence = devices[i];
      return EFI_NOT_READY;
    }
  }
  return EFI_NOT_FOUND;
}

}  // namespace

EFI_STATUS ReadNvme(const BoardHardware &hardware, Facts *facts, Presence *presence) {
  PathNodes place = NodesOf(hardware.Name);
  Presence device;
  EFI_STATUS status =
      FindDevice({&gEfiNvmExpressPassThruProtocolGuid, place, AcceptPciNodes, nullptr}, &device);
  if (EFI_ERROR(status)) {
    return ReadWithoutDriver(place, presence);
  }
  *presence = device;
  return ReadController(static_cast<PassThru *>(device.Interface), facts);
}

}  // namespace obv_host
