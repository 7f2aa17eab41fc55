/** @file
  The functions behind the slots of OBV_PROTOCOL.
**/

#pragma once

#include "host/portable/Host.h"

namespace obv_host {

UINT64 EFIAPI HostGetTime(OBV_PROTOCOL *This);
EFI_STATUS EFIAPI HostParseComponents(OBV_PROTOCOL *This, OBV_COMPONENT **components,
                                      UINT16 pictureHeight, UINT16 pictureWidth, UINT16 viewHeight,
                                      UINT16 viewWidth, double pictureShare, double scaleX,
                                      double scaleY);
EFI_STATUS EFIAPI HostFinishParse(OBV_PROTOCOL *This);
EFI_STATUS EFIAPI HostGetResourceData(OBV_PROTOCOL *This, VOID **data, UINTN *size);
EFI_STATUS EFIAPI HostGetFontData(OBV_PROTOCOL *This, UINT8 fontIndex, CHAR8 **name, VOID **data,
                                  UINTN *size);
EFI_STATUS EFIAPI HostGetGop(OBV_PROTOCOL *This, EFI_GRAPHICS_OUTPUT_PROTOCOL **gop);
EFI_STATUS EFIAPI HostQueryComponentStatus(OBV_PROTOCOL *This, CHAR16 *name, UINT32 type,
                                           UINTN capacity, UINT64 *infoCount,
                                           OBV_COMPONENT_INFO *infos);
EFI_STATUS EFIAPI HostFindBiosOption(OBV_PROTOCOL *This);
EFI_STATUS EFIAPI HostAfterAppLife(OBV_PROTOCOL *This);
EFI_STATUS EFIAPI HostUnsupportedResolution(OBV_PROTOCOL *This);

}  // namespace obv_host
