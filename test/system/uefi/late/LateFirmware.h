/** @file
  The firmware's headers, which are C.
**/

#pragma once

extern "C" {
#include <Uefi.h>

#include <Library/BaseMemoryLib.h>
#include <Library/IoLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/DevicePath.h>
#include <Protocol/GraphicsOutput.h>
#include <Protocol/ObvComponent.h>
#include <Protocol/ObvProtocol.h>
#include <Protocol/PciIo.h>
}
