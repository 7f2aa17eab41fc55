// What of a process's memory can be read: what is mapped, and what the address sanitizer lets one
// touch.

#include <sanitizer/asan_interface.h>
#include <sys/uio.h>
#include <unistd.h>

#include "hostcheck/Readable.h"

namespace hostcheck {
namespace {

constexpr UINTN kPageSize = 4096;

bool IsMapped(const VOID *address) {
  char byte = 0;
  iovec here = {&byte, 1};
  iovec there = {const_cast<VOID *>(address), 1};
  return process_vm_readv(getpid(), &here, 1, &there, 1, 0) == 1;
}

}  // namespace

bool IsReadable(const VOID *address, UINTN size) {
  auto first = reinterpret_cast<UINTN>(address);
  if (first == 0 || size == 0 || size > MAX_UINT64 - first) {
    return false;
  }
  for (UINTN at = first; at < first + size; at = (at | (kPageSize - 1)) + 1) {
    if (!IsMapped(reinterpret_cast<const VOID *>(at))) {
      return false;
    }
  }
  return __asan_region_is_poisoned(const_cast<VOID *>(address), size) == nullptr;
}

}  // namespace hostcheck
