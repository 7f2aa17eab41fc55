// Pool and page memory with accounting. Blocks are real heap blocks, so that sanitizers see
// accesses before and behind them; they lie 8 bytes off a 16-byte boundary, all that firmware
// promises.

#pragma once

#include "test/firmware/Edk2.h"

namespace fake {

class MemoryPool {
 public:
  using Report = std::function<void(std::string)>;

  static constexpr uint8_t kFreshByte = 0x5A;
  static constexpr uint8_t kFreedByte = 0xF5;

  explicit MemoryPool(Report report) : report_(std::move(report)) {}
  ~MemoryPool();
  MemoryPool(const MemoryPool &) = delete;
  MemoryPool &operator=(const MemoryPool &) = delete;

  EFI_STATUS Allocate(EFI_MEMORY_TYPE type, UINTN size, VOID **buffer);
  EFI_STATUS Free(VOID *buffer);
  EFI_STATUS AllocatePages(EFI_ALLOCATE_TYPE type, EFI_MEMORY_TYPE memoryType, UINTN pages,
                           EFI_PHYSICAL_ADDRESS *memory);
  EFI_STATUS FreePages(EFI_PHYSICAL_ADDRESS memory, UINTN pages);

  /// A block filled with a copy of `size` bytes, as services return that allocate for the
  /// caller; null when the capacity is used up.
  VOID *Duplicate(const VOID *data, UINTN size);

  /// Bytes that may be live at once; larger requests get EFI_OUT_OF_RESOURCES.
  uint64_t Capacity = uint64_t{1} << 30;
  /// Filling of fresh and freed memory; benchmarks switch it off.
  bool Poison = true;
  /// Leaves freed blocks readable as they were, as they are in firmware until their memory is
  /// given out again; for tests of stale pointers.
  bool KeepFreed = false;
  /// Gives the block that was freed last to the next request of its size, as EDK2's pool does;
  /// for tests of addresses that are remembered too long. The host's heap would keep it back.
  bool ReuseFreed = false;

  uint64_t LiveBlocks() const { return blocks_.size(); }
  uint64_t LiveBytes() const { return liveBytes_; }
  uint64_t PeakBytes() const { return peakBytes_; }
  uint64_t LiveBytes(EFI_MEMORY_TYPE type) const;
  uint64_t LiveBlocks(EFI_MEMORY_TYPE type) const;
  uint64_t LivePages() const;
  uint64_t AllocationCount() const { return allocations_; }
  void ResetPeak() { peakBytes_ = liveBytes_; }
  /// Size of a live pool block; nothing for other addresses.
  std::optional<UINTN> SizeOf(const VOID *buffer) const;

 private:
  struct Block {
    EFI_MEMORY_TYPE Type;
    UINTN Size;
    uint8_t *Base;
  };
  struct PageRange {
    UINTN Pages;
    EFI_MEMORY_TYPE Type;
  };
  static bool ValidType(EFI_MEMORY_TYPE type);
  void Release(const Block &block);
  uint8_t *TakeReusable(UINTN size);

  Report report_;
  std::unordered_map<const VOID *, Block> blocks_;
  std::map<EFI_PHYSICAL_ADDRESS, PageRange> pages_;
  std::set<const VOID *> freed_;
  std::vector<uint8_t *> kept_;
  std::map<UINTN, std::vector<uint8_t *>> reusable_;
  uint64_t liveBytes_ = 0;
  uint64_t peakBytes_ = 0;
  uint64_t allocations_ = 0;
};

}  // namespace fake
