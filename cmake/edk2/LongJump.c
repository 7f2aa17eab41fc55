/** @file
  Stands before EDK2's LongJump in builds with the address sanitizer, which must learn that the
  frames in between are gone.
**/

#include <Library/BaseLib.h>

void __asan_handle_no_return(void);
VOID EFIAPI __real_LongJump(IN BASE_LIBRARY_JUMP_BUFFER *JumpBuffer, IN UINTN Value);

VOID EFIAPI __wrap_LongJump(IN BASE_LIBRARY_JUMP_BUFFER *JumpBuffer, IN UINTN Value) {
  __asan_handle_no_return();
  __real_LongJump(JumpBuffer, Value);
}
