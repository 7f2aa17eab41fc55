/** @file
  The secret of the compiler's stack protector: guarded functions compare a value on their stack
  with it before they return. What happens when they differ is each image's own affair:
  __stack_chk_fail.
**/

#pragma once

/// Makes up the run's secret value. To be called once, first of all, by a function that is not
/// guarded itself.
void SeedStackGuard();
