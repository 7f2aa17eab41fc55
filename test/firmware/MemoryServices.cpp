// Boot services that hand out and move memory.

#include "test/firmware/ServiceTables.h"

namespace fake {

namespace {

MemoryPool &Pool() { return Firmware::Current().Pool; }

EFI_STATUS EFIAPI AllocatePages(EFI_ALLOCATE_TYPE type, EFI_MEMORY_TYPE memoryType, UINTN pages,
                                EFI_PHYSICAL_ADDRESS *memory) {
  Call call(Service::AllocatePages, nullptr, type, memoryType, pages);
  return call.Run([&] { return Pool().AllocatePages(type, memoryType, pages, memory); });
}

EFI_STATUS EFIAPI FreePages(EFI_PHYSICAL_ADDRESS memory, UINTN pages) {
  Call call(Service::FreePages, nullptr, pages);
  return call.Run([&] { return Pool().FreePages(memory, pages); });
}

EFI_STATUS EFIAPI AllocatePool(EFI_MEMORY_TYPE type, UINTN size, VOID **buffer) {
  Call call(Service::AllocatePool, nullptr, type, size);
  return call.Run([&] { return Pool().Allocate(type, size, buffer); });
}

EFI_STATUS EFIAPI FreePool(VOID *buffer) {
  Call call(Service::FreePool, nullptr);
  return call.Run([&] { return Pool().Free(buffer); });
}

VOID EFIAPI CopyMem(VOID *to, VOID *from, UINTN size) {
  Call call(Service::CopyMem, nullptr, size);
  call.RunVoid([&] { std::memmove(to, from, size); });
}

VOID EFIAPI SetMem(VOID *to, UINTN size, UINT8 value) {
  Call call(Service::SetMem, nullptr, size, value);
  call.RunVoid([&] { std::memset(to, value, size); });
}

// Polynomial 0xEDB88320, as the UEFI specification and zlib have it.
UINT32 Crc32(const uint8_t *bytes, UINTN size) {
  UINT32 crc = 0xFFFFFFFF;
  for (UINTN i = 0; i < size; i++) {
    crc ^= bytes[i];
    for (int bit = 0; bit < 8; bit++) {
      crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
    }
  }
  return ~crc;
}

EFI_STATUS EFIAPI CalculateCrc32(VOID *data, UINTN size, UINT32 *crc) {
  Call call(Service::CalculateCrc32, nullptr, size);
  return call.Run([&]() -> EFI_STATUS {
    if (data == nullptr || size == 0 || crc == nullptr) {
      return EFI_INVALID_PARAMETER;
    }
    *crc = Crc32(static_cast<const uint8_t *>(data), size);
    return EFI_SUCCESS;
  });
}

}  // namespace

void FillMemoryServices(EFI_BOOT_SERVICES *table) {
  table->AllocatePages = &AllocatePages;
  table->FreePages = &FreePages;
  table->AllocatePool = &AllocatePool;
  table->FreePool = &FreePool;
  table->CopyMem = &CopyMem;
  table->SetMem = &SetMem;
  table->CalculateCrc32 = &CalculateCrc32;
  Unprovide<Service::GetMemoryMap>(table->GetMemoryMap);
}

}  // namespace fake
