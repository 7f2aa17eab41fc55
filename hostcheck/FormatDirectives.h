/** @file
  The directives of a text that is used as a print format.
**/

#pragma once

#include "app/base/Types.h"

namespace hostcheck {

/// What takes one argument: a directive, or the '*' of a width or precision.
struct Directive {
  CHAR8 Type;        ///< The letter at its end, or '*'.
  UINTN LeastWidth;  ///< Characters that it prints at least, zeros in front.
};

/// Reads what takes arguments as EDK2's print library does. Returns how many there are; the first
/// of them, capacity at most, are stored.
[[nodiscard]] UINTN ReadDirectives(const CHAR8 *format, Directive *directives, UINTN capacity);

}  // namespace hostcheck
