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

/// Whether a place with nothing in it has a line: so it has where the PC tells of each
/// place, as of its memory slots.
enum class Places { kAll, kUsed };

/// One piece of hardware, work->Hardware, unless a board cannot name it.
void WriteHardware(const CHAR8 *kind, Places places, InventoryWork *work, InventoryText *text);

/// Parts of WriteInventory, one a file.
void WriteTableHardware(InventoryWork *work, InventoryText *text);
void WriteDeviceHardware(InventoryWork *work, InventoryText *text);

}  // namespace obv_host
