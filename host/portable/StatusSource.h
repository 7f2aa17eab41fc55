/** @file
  Who answers QueryComponentStatus.

  Every component of a board names its status source. The only source so far
  repeats what the board description says; a source that asks hardware is one
  more row of the table in StatusSource.cpp and one more number in the board
  format, and gets the component's StatusArgument to know what to ask.
**/

#pragma once

#include "host/portable/Board.h"

namespace obv_host {

/// Answers for one component. Writes at most capacity lines to infos, which is
/// zeroed before, and their number to *infoCount.
using StatusSource = EFI_STATUS (*)(const Board &board, const BoardComponent &component,
                                    UINTN capacity, UINT64 *infoCount, OBV_COMPONENT_INFO *infos);

/// The answer for the component with this name and category; EFI_NOT_FOUND,
/// with no lines, when the board has none. Entries beyond *infoCount are zeroed
/// up to capacity.
EFI_STATUS QueryStatus(const Board &board, const CHAR16 *name, UINT32 type, UINTN capacity,
                       UINT64 *infoCount, OBV_COMPONENT_INFO *infos);

}  // namespace obv_host
