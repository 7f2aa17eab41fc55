#include "app/base/MemoryPool.h"

#include "app/base/HostClient.h"

namespace {

constexpr UINT32 kSignature = SIGNATURE_32('$', 'O', 'B', 'V');
constexpr UINTN kHeaderSize = sizeof(MemoryBlockHeader);
constexpr UINTN kSizeLimit = 0xFFFFFFFF;
constexpr UINT8 kPoison = 0xAF;
constexpr UINTN kPoisonedLink = 0xAFAFAFAFAFAFAFAF;

MemoryBlockHeader *HeaderOf(void *pointer) {
  return reinterpret_cast<MemoryBlockHeader *>(static_cast<UINT8 *>(pointer) - kHeaderSize);
}

bool HasSignature(void *pointer) { return HeaderOf(pointer)->Signature == kSignature; }

/// The word at the signature's place in a header at address 0, which is what
/// the error lines deliberately show instead of the rejected block's.
UINT32 FoundSignature() {
  return *reinterpret_cast<const volatile UINT32 *>(gMemoryPool.FoundSignatureAddress);
}

void ReleaseToFirmware(MemoryBlockHeader *block) {
  gBS->SetMem(block, block->TotalSize, kPoison);
  (void)gBS->FreePool(block);
}

/// Frees the list from its newest block back; false when it is corrupt.
bool FreeLiveBlocks(UINTN *count, UINTN *bytes) {
  LIST_ENTRY *link = gMemoryPool.Live.BackLink;
  while (link != &gMemoryPool.Live && reinterpret_cast<UINTN>(link) != kPoisonedLink) {
    auto *block = reinterpret_cast<MemoryBlockHeader *>(link);
    if (block->Signature != kSignature) {
      return false;
    }
    link = link->BackLink;
    *count += 1;
    *bytes += block->TotalSize;
    ReleaseToFirmware(block);
  }
  return true;
}

}  // namespace

MemoryPoolState gMemoryPool = {
    .Live = {.ForwardLink = &gMemoryPool.Live, .BackLink = &gMemoryPool.Live},
    .FoundSignatureAddress = OFFSET_OF(MemoryBlockHeader, Signature),
};

void *malloc(size_t size) {
  if (size == 0) {
    LogError("ERROR malloc: Zero Size\n");
    return nullptr;
  }
  // Written so that a size near the top of the address space cannot wrap.
  if (size >= kSizeLimit - kHeaderSize) {
    LogError("ERROR malloc: Size overflow\n");
    return nullptr;
  }
  UINTN total = size + kHeaderSize;
  VOID *memory = nullptr;
  EFI_STATUS status = gBS->AllocatePool(EfiBootServicesData, total, &memory);
  if (status != EFI_SUCCESS) {
    LogError("ERROR malloc: AllocatePool returned %r\n", status);
    return nullptr;
  }
  ZeroMem(memory, total);
  auto *block = static_cast<MemoryBlockHeader *>(memory);
  block->Signature = kSignature;
  block->TotalSize = static_cast<UINT32>(total);
  InsertTailList(&gMemoryPool.Live, &block->Link);
  return static_cast<UINT8 *>(memory) + kHeaderSize;
}

void free(void *pointer) {
  if (pointer == nullptr) {
    return;
  }
  if (!HasSignature(pointer)) {
    LogError("ERROR free(0x%p): Signature is 0x%8X, expected 0x%8X\n", pointer, FoundSignature(),
             kSignature);
    return;
  }
  MemoryBlockHeader *block = HeaderOf(pointer);
  RemoveEntryList(&block->Link);
  ReleaseToFirmware(block);
}

void *realloc(void *pointer, size_t size) {
  UINTN oldTotal = 0;
  if (pointer != nullptr) {
    if (!HasSignature(pointer)) {
      LogError("ERROR realloc(0x%p): Signature is 0x%8X, expected 0x%8X\n", pointer,
               FoundSignature(), kSignature);
      return nullptr;
    }
    oldTotal = HeaderOf(pointer)->TotalSize;
  }
  if (size == 0) {
    free(pointer);
    return nullptr;
  }
  // Deliberate: a reallocated block carries a header's size of spare bytes. The cap keeps the sum
  // from wrapping; malloc refuses it.
  UINTN newSize = MIN(size, kSizeLimit) + kHeaderSize;
  void *moved = malloc(newSize);
  if (pointer == nullptr || moved == nullptr) {
    return moved;
  }
  // The copy ends where the old block does: nobody can rely on what stands behind it, and firmware
  // with a guarded heap faults on reading there.
  CopyMem(moved, pointer, MIN(oldTotal - kHeaderSize, newSize));
  free(pointer);
  return moved;
}

void ReleaseMemoryBut(const void *kept) {
  LIST_ENTRY *link = gMemoryPool.Live.BackLink;
  while (link != &gMemoryPool.Live) {
    auto *block = reinterpret_cast<MemoryBlockHeader *>(link);
    if (block->Signature != kSignature) {
      return;  // The leak report tells of it.
    }
    link = link->BackLink;
    void *user = block + 1;
    if (user != kept) {
      free(user);
    }
  }
}

const void *NewestMemory() {
  LIST_ENTRY *link = gMemoryPool.Live.BackLink;
  return link == &gMemoryPool.Live ? nullptr : reinterpret_cast<MemoryBlockHeader *>(link) + 1;
}

void ReleaseMemoryNewerThan(const void *kept) {
  for (const void *newest = NewestMemory(); newest != kept && newest != nullptr;
       newest = NewestMemory()) {
    auto *user = const_cast<void *>(newest);
    if (static_cast<MemoryBlockHeader *>(user)[-1].Signature != kSignature) {
      return;  // The leak report tells of it.
    }
    free(user);
  }
}

void ReportMemoryLeaks() {
  UINTN count = 0;
  UINTN bytes = 0;
  bool intact = FreeLiveBlocks(&count, &bytes);
  if (!intact) {
    LogError("mem pool crash\n");
  }
  LogError(
      "There are a total of %d memory leaks, amounting to %dKB in total, and it has been freed!\n",
      static_cast<UINT32>(count), static_cast<UINT32>(bytes >> 10));
  InitializeListHead(&gMemoryPool.Live);
}
