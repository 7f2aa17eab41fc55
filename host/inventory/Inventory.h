/** @file
  Everything of a PC that a board can name.
**/

#pragma once

#include "host/inventory/InventoryText.h"
#include "host/sources/Source.h"

namespace obv_host {

/// What a reading needs and a stack has no room for.
struct InventoryWork {
  Facts Told;
  BoardHardware Hardware;
};

/// Writes an inventory: for each piece of hardware that this PC tells of, what it is,
/// as a comment, and its name in the form that a component's `hardware` takes.
void WriteInventory(InventoryWork *work, InventoryText *text);

/// One piece of hardware of work->Hardware, unless a board cannot name it. Parts of
/// WriteInventory, one a file.
void WriteHardware(const CHAR8 *kind, InventoryWork *work, InventoryText *text);
void WriteTableHardware(InventoryWork *work, InventoryText *text);
void WriteDeviceHardware(InventoryWork *work, InventoryText *text);

}  // namespace obv_host
