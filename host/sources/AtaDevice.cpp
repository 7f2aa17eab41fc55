#include "host/sources/AtaDevice.h"

namespace obv_host {
namespace {

constexpr UINT32 kAnswerSize = kAtaWords * sizeof(UINT16);
constexpr UINT8 kStatusError = 0x01;
constexpr UINT8 kStatusFault = 0x20;
/// Without these two, SMART commands are refused; returned as they were by a device that
/// is well, else as the second pair.
constexpr UINT8 kSmartLow = 0x4F;
constexpr UINT8 kSmartHigh = 0xC2;
constexpr UINT8 kFailingLow = 0xF4;
constexpr UINT8 kFailingHigh = 0x2C;

UINT8 *AnswerOf(const AtaDevice &device) { return device.Pages; }

EFI_ATA_STATUS_BLOCK *StatusOf(const AtaDevice &device) {
  return reinterpret_cast<EFI_ATA_STATUS_BLOCK *>(device.Pages + EFI_PAGE_SIZE);
}

EFI_STATUS Send(const AtaDevice &device, EFI_ATA_PASS_THRU_COMMAND_PACKET *packet) {
  ZeroMem(device.Pages, EFI_PAGES_TO_SIZE(kAtaPages));
  packet->Asb = StatusOf(device);
  packet->Timeout = kCommandTimeout;
  return device.Controller->PassThru(device.Controller, device.Port, device.Multiplier, packet,
                                     nullptr);
}

bool IsNobodysAnswer(const UINT8 *bytes) {
  for (UINTN i = 0; i < kAnswerSize; ++i) {
    if (bytes[i] != bytes[0]) {
      return false;
    }
  }
  return bytes[0] == 0 || bytes[0] == 0xFF;
}

}  // namespace

EFI_STATUS AtaIdentify(const AtaDevice &device, UINT8 command, const UINT16 **words) {
  EFI_ATA_COMMAND_BLOCK block = {};
  block.AtaCommand = command;
  block.AtaSectorCount = 1;
  EFI_ATA_PASS_THRU_COMMAND_PACKET packet = {};
  packet.Acb = &block;
  packet.InDataBuffer = AnswerOf(device);
  packet.InTransferLength = kAnswerSize;
  packet.Protocol = EFI_ATA_PASS_THRU_PROTOCOL_PIO_DATA_IN;
  packet.Length = EFI_ATA_PASS_THRU_LENGTH_BYTES | EFI_ATA_PASS_THRU_LENGTH_SECTOR_COUNT;
  EFI_STATUS status = Send(device, &packet);
  if (EFI_ERROR(status)) {
    return status;
  }
  *words = reinterpret_cast<const UINT16 *>(AnswerOf(device));
  return IsNobodysAnswer(AnswerOf(device)) ? EFI_DEVICE_ERROR : EFI_SUCCESS;
}

EFI_STATUS AtaPredictsFailure(const AtaDevice &device, bool *failing) {
  EFI_ATA_COMMAND_BLOCK block = {};
  block.AtaCommand = ATA_CMD_SMART;
  block.AtaFeatures = ATA_SMART_RETURN_STATUS;
  block.AtaCylinderLow = kSmartLow;
  block.AtaCylinderHigh = kSmartHigh;
  EFI_ATA_PASS_THRU_COMMAND_PACKET packet = {};
  packet.Acb = &block;
  packet.Protocol = EFI_ATA_PASS_THRU_PROTOCOL_ATA_NON_DATA;
  packet.Length = EFI_ATA_PASS_THRU_LENGTH_NO_DATA_TRANSFER;
  EFI_STATUS status = Send(device, &packet);
  if (EFI_ERROR(status)) {
    return status;
  }
  // Only a command without data is sure to bring a status of its own: EDK2's driver hands
  // out the last that it got.
  if ((packet.Asb->AtaStatus & (kStatusError | kStatusFault)) != 0) {
    return EFI_DEVICE_ERROR;
  }
  UINT8 low = packet.Asb->AtaCylinderLow;
  UINT8 high = packet.Asb->AtaCylinderHigh;
  *failing = low == kFailingLow && high == kFailingHigh;
  bool isAnswer = *failing || (low == kSmartLow && high == kSmartHigh);
  return isAnswer ? EFI_SUCCESS : EFI_PROTOCOL_ERROR;
}

}  // namespace obv_host
