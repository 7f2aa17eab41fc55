/** @file
  The files that the build embeds: the default board binary and the three
  fonts. host/embed.py writes the assembler file that defines these symbols;
  each End symbol is the first byte behind its file.
**/

#pragma once

#include "host/portable/Host.h"

extern "C" {
extern const UINT8 ObvHostBoardStart[];
extern const UINT8 ObvHostBoardEnd[];
extern const UINT8 ObvHostFont0Start[];
extern const UINT8 ObvHostFont0End[];
extern const UINT8 ObvHostFont1Start[];
extern const UINT8 ObvHostFont1End[];
extern const UINT8 ObvHostFont2Start[];
extern const UINT8 ObvHostFont2End[];
}

namespace obv_host {

/// A file in the image: it needs no owner.
struct EmbeddedFile {
  const UINT8 *Data;
  UINTN Size;
};

inline EmbeddedFile Embedded(const UINT8 *start, const UINT8 *end) {
  return {.Data = start, .Size = reinterpret_cast<UINTN>(end) - reinterpret_cast<UINTN>(start)};
}

/// The default board binary.
inline EmbeddedFile EmbeddedBoard() { return Embedded(ObvHostBoardStart, ObvHostBoardEnd); }

/// The font file of a face below kFaceCount.
inline FontFile EmbeddedFont(UINT8 face) {
  const EmbeddedFile files[kFaceCount] = {
      Embedded(ObvHostFont0Start, ObvHostFont0End),
      Embedded(ObvHostFont1Start, ObvHostFont1End),
      Embedded(ObvHostFont2Start, ObvHostFont2End),
  };
  return {.Data = files[face].Data, .Size = files[face].Size};
}

}  // namespace obv_host
