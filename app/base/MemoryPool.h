/** @file
  The one allocator of the program, on the firmware's pool.

  Application, LVGL, FreeType and lodepng call these functions by these names.
  Every block carries a signature and stands on one list; what is still alive at
  the end is freed and counted by the leak report. Not for use from event
  notifications.
**/

#pragma once

#include <stddef.h>

#include "app/base/Firmware.h"

/// In front of every address that malloc returns.
struct MemoryBlockHeader {
  LIST_ENTRY Link;
  UINT32 Signature;
  UINT32 TotalSize;  ///< Bytes, this header included.
};
static_assert(sizeof(MemoryBlockHeader) == 24);
static_assert(OFFSET_OF(MemoryBlockHeader, Signature) == 16);
static_assert(OFFSET_OF(MemoryBlockHeader, TotalSize) == 20);

struct MemoryPoolState {
  /// Live blocks, newest last.
  LIST_ENTRY Live;
  /// Where the error lines read the signature that they print as found.
  UINTN FoundSignatureAddress;
};

extern MemoryPoolState gMemoryPool;

extern "C" {
/// A zeroed block of size bytes, or NULL for size 0, a size beyond 32 bits, or
/// when the firmware has none. Owned by the caller.
void *malloc(size_t size);
/// Releases a block of malloc; NULL is ignored, anything else is refused.
void free(void *pointer);
/// Moves a block to a new one of at least size bytes; NULL, with the old block
/// untouched, when there is none. Size 0 frees.
void *realloc(void *pointer, size_t size);
}

/// Frees every live block but the one at the address kept, which may be NULL. Nothing that held
/// memory may be used afterwards.
void ReleaseMemoryBut(const void *kept);

/// The address of the newest live block; NULL without any.
const void *NewestMemory();

/// Frees the live blocks that are newer than the one at the address, or all for NULL.
void ReleaseMemoryNewerThan(const void *kept);

/// Frees every live block and logs how many there were and their whole KiB.
void ReportMemoryLeaks();
