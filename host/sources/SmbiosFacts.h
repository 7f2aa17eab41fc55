/** @file
  What several sources tell of SMBIOS structures in the same words.
**/

#pragma once

#include "host/portable/Facts.h"
#include "host/sources/Smbios.h"

namespace obv_host {

/// A number of a structure's field and the word for it.
struct SmbiosWord {
  UINT8 Number;
  const CHAR8 *Word;
};

/// The word for a number; NULL when words has none.
template <UINTN kCount>
const CHAR8 *WordFor(const SmbiosWord (&words)[kCount], UINT8 number) {
  for (const SmbiosWord &word : words) {
    if (word.Number == number) {
      return word.Word;
    }
  }
  return nullptr;
}

/// Whether a text is empty or one that makers leave in for want of a better one,
/// as "To Be Filled By O.E.M.".
bool IsPlaceholder(const CHAR8 *text);

/// Tells the string whose number stands in the field at offset, unless it is a
/// placeholder.
void TellText(Facts *facts, UINT32 kind, const CHAR8 *label, const SmbiosStructure &structure,
              UINTN offset);

/// Tells word unless it is NULL.
void TellWord(Facts *facts, UINT32 kind, const CHAR8 *label, const CHAR8 *word);

/// Tells the status that cooling devices and probes keep in the upper three bits
/// of a byte. EFI_DEVICE_ERROR for the critical and the non-recoverable one.
EFI_STATUS TellHealth(Facts *facts, UINT8 typeAndStatus);

/// What the lower five bits of that byte hold.
inline UINT8 TypeBits(UINT8 typeAndStatus) { return typeAndStatus & 0x1F; }

}  // namespace obv_host
