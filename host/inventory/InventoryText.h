/** @file
  The text of an inventory: lines of YAML in a block of memory.
**/

#pragma once

#include "host/portable/Firmware.h"

namespace obv_host {

/// Bytes has Size bytes and is the caller's.
struct InventoryText {
  CHAR8 *Bytes;
  UINTN Size;
  UINTN Length;
  bool Full;  ///< Something had no room; no line behind it is written either.
};

/// Adds a line in EDK2's print format, with a line feed, or nothing at all when the
/// text has no room for it whole. EFIAPI because EDK2's print library takes the
/// argument list of that calling convention.
void EFIAPI AddLine(InventoryText *text, const CHAR8 *format, ...);

/// Copies name into quoted as YAML's double quotes want it, without the quotes. False
/// for a name that is empty, too long, or holds what is no printable ASCII: a board
/// could not name it.
bool QuoteName(const CHAR8 *name, CHAR8 *quoted, UINTN size);

}  // namespace obv_host
