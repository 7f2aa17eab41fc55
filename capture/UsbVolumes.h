/** @file
  The file systems on USB devices.
**/

#pragma once

#include "app/base/Firmware.h"

inline constexpr UINTN kMaxVolumes = 100;

/// Room for EFI_FILE_SYSTEM_INFO with its label.
inline constexpr UINTN kFileSystemInfoSize = 2088;

/// Opened root directories; the first NULL ends the list.
struct VolumeList {
  EFI_FILE_PROTOCOL *Roots[kMaxVolumes];
};

/// Opens the root of every file system on a USB device into the zeroed list, in
/// handle order. The caller closes them. EFI_NOT_FOUND when there is none,
/// EFI_INVALID_PARAMETER for NULL, else the status of the handle search.
[[nodiscard]] EFI_STATUS GetRootDirectoryFileHandle(VolumeList *volumes);

/// Closes the roots from a place in the list on, in order, and forgets them.
void CloseVolumes(VolumeList *volumes, UINTN first = 0);

/// Reads a volume's label and size; both are empty when it does not tell.
/// label has room for labelSize bytes; the size is in bytes.
void DescribeVolume(EFI_FILE_PROTOCOL *root, CHAR8 *label, UINTN labelSize, UINT64 *size);
