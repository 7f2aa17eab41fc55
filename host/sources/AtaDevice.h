/** @file
  Commands to one ATA device.
**/

#pragma once

#include "host/sources/Devices.h"

namespace obv_host {

inline constexpr UINTN kAtaWords = 256;

/// A device at a port, and pages that its controller writes to.
struct AtaDevice {
  EFI_ATA_PASS_THRU_PROTOCOL *Controller;
  UINT16 Port;
  UINT16 Multiplier;  ///< Port of the port multiplier; kNoMultiplier without one.
  UINT8 *Pages;       ///< kAtaPages pages from AllocateForController.
};
inline constexpr UINT16 kNoMultiplier = 0xFFFF;
inline constexpr UINTN kAtaPages = 2;

/// What the device says of itself in answer to IDENTIFY DEVICE (ATA_CMD_IDENTIFY_DRIVE)
/// or IDENTIFY PACKET DEVICE (ATA_CMD_IDENTIFY_DEVICE): kAtaWords words within Pages, valid
/// until the next command. The controller's errors; EFI_DEVICE_ERROR, too, when nobody
/// wrote the answer.
[[nodiscard]] EFI_STATUS AtaIdentify(const AtaDevice &device, UINT8 command, const UINT16 **words);

/// Whether the device predicts its own failure. The controller's errors; EFI_DEVICE_ERROR
/// when the device refuses, EFI_PROTOCOL_ERROR for an answer that is neither.
[[nodiscard]] EFI_STATUS AtaPredictsFailure(const AtaDevice &device, bool *failing);

}  // namespace obv_host
