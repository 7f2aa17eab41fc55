/** @file
  Texts of a host as the report shows them.
**/

#pragma once

#include "app/base/Types.h"

namespace hostcheck {

/// In double quotes. What is no printable ASCII is a question mark, and what is longer is cut.
struct Quoted {
  CHAR8 Text[36];
};

/// Reads up to the terminator, and at most size characters. NULL is shown as such.
[[nodiscard]] Quoted Quote(const CHAR8 *text, UINTN size);
[[nodiscard]] Quoted Quote(const CHAR16 *text, UINTN size);

}  // namespace hostcheck
