#include "app/base/Firmware.h"
#include "hostcheck/Readable.h"

namespace hostcheck {
namespace {

// As the processor's manuals number them.
constexpr UINT64 kPresent = BIT0;
constexpr UINT64 kLargePage = BIT7;
constexpr UINT64 kAddress = 0x000FFFFFFFFFF000;
constexpr UINT64 kFifthLevel = BIT12;  // of CR4
constexpr UINT64 kEntryMask = 0x1FF;
constexpr UINTN kLevelBits = 9;
constexpr UINTN kOffsetBits = 12;
/// Tables of the second and third level may hold pages instead of tables.
constexpr UINTN kMostLargeLevels = 3;

UINTN Levels() { return (AsmReadCr4() & kFifthLevel) != 0 ? 5 : 4; }

/// The address with the bits above its last one as that says, or the processor refuses it.
bool IsCanonical(UINT64 address, UINTN levels) {
  UINTN bits = kOffsetBits + levels * kLevelBits;
  UINT64 above = address >> (bits - 1);
  return above == 0 || above == MAX_UINT64 >> (bits - 1);
}

/// Bytes from the address on that its page holds; 0 when there is no page.
UINT64 RestOfPage(UINT64 address) {
  UINTN level = Levels();
  if (!IsCanonical(address, level)) {
    return 0;
  }
  // UEFI maps all memory to itself, the tables' own included.
  auto *table = reinterpret_cast<const UINT64 *>(AsmReadCr3() & kAddress);
  for (; level > 0; --level) {
    UINTN shift = kOffsetBits + (level - 1) * kLevelBits;
    UINT64 entry = table[(address >> shift) & kEntryMask];
    if ((entry & kPresent) == 0) {
      return 0;
    }
    if (level == 1 || (level <= kMostLargeLevels && (entry & kLargePage) != 0)) {
      UINT64 pageSize = LShiftU64(1, shift);
      return pageSize - (address & (pageSize - 1));
    }
    table = reinterpret_cast<const UINT64 *>(entry & kAddress);
  }
  return 0;
}

}  // namespace

bool IsReadable(const VOID *address, UINTN size) {
  auto at = reinterpret_cast<UINT64>(address);
  if (address == nullptr || size == 0 || size > MAX_UINT64 - at) {
    return false;
  }
  UINT64 end = at + size;
  while (at < end) {
    UINT64 rest = RestOfPage(at);
    if (rest == 0) {
      return false;
    }
    at += MIN(rest, end - at);
  }
  return true;
}

}  // namespace hostcheck
