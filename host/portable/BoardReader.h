/** @file
  Reading a board binary that nobody vouches for.
**/

#pragma once

#include "host/portable/Board.h"

namespace obv_host {

/// Checks the whole of the size bytes at data and opens them as *board. On
/// EFI_COMPROMISED_DATA *board is all zero and *fault says why. data may have
/// any alignment; NULL is refused like any other damage.
[[nodiscard]] EFI_STATUS OpenBoard(const void *data, UINTN size, Board *board, BoardFault *fault);

}  // namespace obv_host
