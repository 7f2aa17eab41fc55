/** @file
  Component records for one view geometry.
**/

#pragma once

#include "host/portable/Board.h"
#include "host/portable/PictureMapping.h"

namespace obv_host {

/// Geometry of a run, as ParseComponents receives it.
struct ViewRequest {
  PictureMapping Mapping;
  double ScaleX;
  double ScaleY;
};

/// Fills component with the board's record of this index. styles is the host's
/// array of looks, of board.Header.StyleCount entries; the record points into
/// it. The status flags and information lines are left zero for the
/// application to ask for.
void BuildComponent(const Board &board, UINTN index, const ViewRequest &view, BoardStyle *styles,
                    OBV_COMPONENT *component);

}  // namespace obv_host
