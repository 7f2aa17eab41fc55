/** @file
  The driver's end of the compiler's stack protector: guarded functions compare a value on their
  stack with a secret one before they return.
**/

#pragma once

namespace obv_setup {

/// Makes up the secret value. To be called once, first of all, by a function that is not guarded
/// itself.
void SeedStackGuard();

}  // namespace obv_setup
