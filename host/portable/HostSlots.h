/** @file
  The functions behind the slots of OBV_PROTOCOL, whose header says what they
  promise. What is said here is what this host does about it. NULL in place of
  an output gives EFI_INVALID_PARAMETER.
**/

#pragma once

#include "host/portable/HostRecord.h"

namespace obv_host {

/// The surroundings' clock, in milliseconds.
UINT64 EFIAPI HostGetTime(OBV_PROTOCOL *This);
/// Builds the array anew from the board; it stays the host's, until the next call.
EFI_STATUS EFIAPI HostParseComponents(OBV_PROTOCOL *This, OBV_COMPONENT **components,
                                      UINT16 pictureHeight, UINT16 pictureWidth, UINT16 viewHeight,
                                      UINT16 viewWidth, double pictureShare, double scaleX,
                                      double scaleY);
/// Logs which board is shown.
EFI_STATUS EFIAPI HostFinishParse(OBV_PROTOCOL *This);
/// The board's picture; EFI_NOT_READY without a board.
EFI_STATUS EFIAPI HostGetResourceData(OBV_PROTOCOL *This, VOID **data, UINTN *size);
/// One of the fonts that are built in; EFI_NOT_FOUND for any other index.
EFI_STATUS EFIAPI HostGetFontData(OBV_PROTOCOL *This, UINT8 fontIndex, CHAR8 **name, VOID **data,
                                  UINTN *size);
/// The output that the surroundings find.
EFI_STATUS EFIAPI HostGetGop(OBV_PROTOCOL *This, EFI_GRAPHICS_OUTPUT_PROTOCOL **gop);
/// The status and lines that the board gives; EFI_NOT_FOUND for a component
/// that it has not.
EFI_STATUS EFIAPI HostQueryComponentStatus(OBV_PROTOCOL *This, CHAR16 *name, UINT32 type,
                                           UINTN capacity, UINT64 *infoCount,
                                           OBV_COMPONENT_INFO *infos);
/// Has the setup open the option of the chosen component. Without a setup, logs
/// the option that it would open. EFI_NOT_FOUND for an index beyond the components
/// and for an option that no formset has.
EFI_STATUS EFIAPI HostFindBiosOption(OBV_PROTOCOL *This);
/// Logs that the run is over.
EFI_STATUS EFIAPI HostAfterAppLife(OBV_PROTOCOL *This);
/// Logs that no display mode suits the view.
EFI_STATUS EFIAPI HostUnsupportedResolution(OBV_PROTOCOL *This);

}  // namespace obv_host
