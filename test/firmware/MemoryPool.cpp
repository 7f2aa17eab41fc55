#include "test/firmware/MemoryPool.h"

#include <cstdio>
#include <cstdlib>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define __SANITIZE_ADDRESS__
#endif
#endif

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#define FAKE_GUARD(address, size) ASAN_POISON_MEMORY_REGION(address, size)
#define FAKE_UNGUARD(address, size) ASAN_UNPOISON_MEMORY_REGION(address, size)
#else
#define FAKE_GUARD(address, size) ((void)0)
#define FAKE_UNGUARD(address, size) ((void)0)
#endif

namespace fake {

namespace {

// In front of each block; the block then starts 8 bytes off a 16-byte boundary, as EDK2's do.
constexpr size_t kLead = 24;
constexpr uint8_t kLeadByte = 0xC7;

bool HoldsOnly(const uint8_t *bytes, size_t size, uint8_t value) {
  return std::all_of(bytes, bytes + size, [=](uint8_t byte) { return byte == value; });
}

std::string Describe(const char *what, const VOID *address) {
  char text[80];
  std::snprintf(text, sizeof text, "%s at %p", what, address);
  return text;
}

}  // namespace

MemoryPool::~MemoryPool() {
  for (const auto &[address, block] : blocks_) {
    Release(block);
  }
  for (uint8_t *base : kept_) {
    std::free(base);
  }
  for (const auto &[size, bases] : reusable_) {
    std::for_each(bases.begin(), bases.end(), std::free);
  }
  for (const auto &[address, range] : pages_) {
    std::free(reinterpret_cast<void *>(address));
  }
}

bool MemoryPool::ValidType(EFI_MEMORY_TYPE type) {
  auto value = static_cast<UINT32>(type);
  return (value < EfiMaxMemoryType && type != EfiPersistentMemory) || value >= 0x70000000;
}

uint8_t *MemoryPool::TakeReusable(UINTN size) {
  auto found = reusable_.find(size);
  if (found == reusable_.end() || found->second.empty()) {
    return nullptr;
  }
  uint8_t *base = found->second.back();
  found->second.pop_back();
  return base;
}

EFI_STATUS MemoryPool::Allocate(EFI_MEMORY_TYPE type, UINTN size, VOID **buffer) {
  if (buffer == nullptr || !ValidType(type)) {
    return EFI_INVALID_PARAMETER;
  }
  allocations_++;
  if (size > Capacity || liveBytes_ + size > Capacity) {
    return EFI_OUT_OF_RESOURCES;
  }
  uint8_t *base = TakeReusable(size);
  if (base == nullptr) {
    base = static_cast<uint8_t *>(std::malloc(kLead + size));
  }
  if (base == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }
  std::memset(base, kLeadByte, kLead);
  if (Poison) {
    std::memset(base + kLead, kFreshByte, size);
  }
  FAKE_GUARD(base, kLead);
  *buffer = base + kLead;
  blocks_[*buffer] = {type, size, base};
  freed_.erase(*buffer);
  liveBytes_ += size;
  peakBytes_ = std::max(peakBytes_, liveBytes_);
  return EFI_SUCCESS;
}

void MemoryPool::Release(const Block &block) {
  FAKE_UNGUARD(block.Base, kLead);
  if (!HoldsOnly(block.Base, kLead, kLeadByte)) {
    report_(Describe("memory was written in front of the pool block", block.Base + kLead));
  }
  if (KeepFreed) {
    kept_.push_back(block.Base);
    return;
  }
  if (Poison) {
    std::memset(block.Base, kFreedByte, kLead + block.Size);
  }
  if (ReuseFreed) {
    reusable_[block.Size].push_back(block.Base);
    return;
  }
  std::free(block.Base);
}

EFI_STATUS MemoryPool::Free(VOID *buffer) {
  auto found = blocks_.find(buffer);
  if (found == blocks_.end()) {
    const char *what = freed_.contains(buffer) ? "FreePool of a block that was freed before"
                                               : "FreePool of memory that is not from the pool";
    report_(Describe(what, buffer));
    return EFI_INVALID_PARAMETER;
  }
  liveBytes_ -= found->second.Size;
  Release(found->second);
  blocks_.erase(found);
  freed_.insert(buffer);
  return EFI_SUCCESS;
}

VOID *MemoryPool::Duplicate(const VOID *data, UINTN size) {
  VOID *copy = nullptr;
  if (Allocate(EfiBootServicesData, size, &copy) != EFI_SUCCESS) {
    return nullptr;
  }
  std::memcpy(copy, data, size);
  return copy;
}

EFI_STATUS MemoryPool::AllocatePages(EFI_ALLOCATE_TYPE type, EFI_MEMORY_TYPE memoryType,
                                     UINTN pages, EFI_PHYSICAL_ADDRESS *memory) {
  if (memory == nullptr || type >= MaxAllocateType || !ValidType(memoryType)) {
    return EFI_INVALID_PARAMETER;
  }
  // Addresses of the host's heap cannot be chosen.
  if (type != AllocateAnyPages) {
    return EFI_NOT_FOUND;
  }
  uint64_t size = pages * EFI_PAGE_SIZE;
  if (pages == 0 || pages > Capacity / EFI_PAGE_SIZE || liveBytes_ + size > Capacity) {
    return pages == 0 ? EFI_INVALID_PARAMETER : EFI_OUT_OF_RESOURCES;
  }
  void *base = std::aligned_alloc(EFI_PAGE_SIZE, size);
  if (base == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }
  std::memset(base, kFreshByte, size);
  *memory = reinterpret_cast<EFI_PHYSICAL_ADDRESS>(base);
  pages_[*memory] = {pages, memoryType};
  liveBytes_ += size;
  peakBytes_ = std::max(peakBytes_, liveBytes_);
  return EFI_SUCCESS;
}

EFI_STATUS MemoryPool::FreePages(EFI_PHYSICAL_ADDRESS memory, UINTN pages) {
  auto found = pages_.find(memory);
  if (found == pages_.end() || found->second.Pages != pages) {
    const VOID *address = reinterpret_cast<const VOID *>(memory);
    report_(Describe("FreePages of pages that were not allocated so", address));
    return found == pages_.end() ? EFI_NOT_FOUND : EFI_INVALID_PARAMETER;
  }
  liveBytes_ -= pages * EFI_PAGE_SIZE;
  std::free(reinterpret_cast<void *>(memory));
  pages_.erase(found);
  return EFI_SUCCESS;
}

uint64_t MemoryPool::LiveBytes(EFI_MEMORY_TYPE type) const {
  uint64_t bytes = 0;
  for (const auto &[address, block] : blocks_) {
    bytes += block.Type == type ? block.Size : 0;
  }
  return bytes;
}

uint64_t MemoryPool::LiveBlocks(EFI_MEMORY_TYPE type) const {
  return static_cast<uint64_t>(std::count_if(
      blocks_.begin(), blocks_.end(), [&](const auto &item) { return item.second.Type == type; }));
}

uint64_t MemoryPool::LivePages() const {
  uint64_t pages = 0;
  for (const auto &[address, range] : pages_) {
    pages += range.Pages;
  }
  return pages;
}

std::optional<UINTN> MemoryPool::SizeOf(const VOID *buffer) const {
  auto found = blocks_.find(buffer);
  return found == blocks_.end() ? std::nullopt : std::optional<UINTN>(found->second.Size);
}

}  // namespace fake
