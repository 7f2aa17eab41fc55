/** @file
  EDK2's headers with the services and protocols that the sources use.
**/

#pragma once

extern "C" {
#include <Uefi.h>

#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
#include <Library/MemoryAllocationLib.h>
#include <Library/PrintLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

#include <Guid/GlobalVariable.h>
#include <Guid/SmBios.h>
#include <IndustryStandard/Atapi.h>
#include <IndustryStandard/Nvme.h>
#include <IndustryStandard/Pci.h>
#include <IndustryStandard/SmBios.h>
#include <Protocol/AtaPassThru.h>
#include <Protocol/DevicePath.h>
#include <Protocol/GraphicsOutput.h>
#include <Protocol/NvmExpressPassthru.h>
#include <Protocol/ObvSensor.h>
#include <Protocol/PciIo.h>
#include <Protocol/SimpleNetwork.h>
#include <Protocol/UsbIo.h>
}
