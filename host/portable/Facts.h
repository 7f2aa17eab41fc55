/** @file
  What a source tells of a piece of hardware: the lines of its panel.
**/

#pragma once

#include "host/portable/Firmware.h"

namespace obv_host {

/// Lines in the order in which they were told. A list of no lines is all zero.
struct Facts {
  UINTN Count;
  OBV_COMPONENT_INFO Lines[OBV_INFO_CAPACITY];
};

/// Adds a line of this kind (OBV_INFO_*): its value is the format of EDK2's print
/// library with its arguments, without blanks at either end, with every
/// character that the panel cannot draw as '?' and every '#' doubled, because a
/// single one would start a colour. A text of no characters and a line beyond
/// the last one are left out; a text too long is cut. EFIAPI because EDK2's print
/// library takes the argument list of that calling convention.
void EFIAPI TellFact(Facts *facts, UINT32 kind, const CHAR8 *label, const CHAR8 *format, ...);

/// The same for the size bytes of text that a device keeps in a field: padded
/// with blanks or zeros, or not ended at all.
void TellField(Facts *facts, UINT32 kind, const CHAR8 *label, const void *text, UINTN size);

}  // namespace obv_host
