#include "Disks.h"

#include "Meter.h"

namespace {

constexpr UINTN kMaxDisks = 16;

struct WatchedDisk {
  EFI_BLOCK_IO_PROTOCOL *Disk;
  EFI_BLOCK_READ Read;
  EFI_BLOCK_WRITE Write;
  EFI_BLOCK_FLUSH Flush;
};

struct WatchedDisks {
  WatchedDisk List[kMaxDisks];
  UINTN Count;
};
WatchedDisks gDisks;

const WatchedDisk &Watched(const EFI_BLOCK_IO_PROTOCOL *disk) {
  UINTN i = 0;
  while (gDisks.List[i].Disk != disk) {
    i++;
  }
  return gDisks.List[i];
}

EFI_STATUS EFIAPI ReadBlocks(EFI_BLOCK_IO_PROTOCOL *disk, UINT32 medium, EFI_LBA block, UINTN size,
                             VOID *buffer) {
  Uncounted uncounted;
  return Watched(disk).Read(disk, medium, block, size, buffer);
}

EFI_STATUS EFIAPI WriteBlocks(EFI_BLOCK_IO_PROTOCOL *disk, UINT32 medium, EFI_LBA block, UINTN size,
                              VOID *buffer) {
  Uncounted uncounted;
  return Watched(disk).Write(disk, medium, block, size, buffer);
}

EFI_STATUS EFIAPI FlushBlocks(EFI_BLOCK_IO_PROTOCOL *disk) {
  Uncounted uncounted;
  return Watched(disk).Flush(disk);
}

void Watch(EFI_HANDLE handle) {
  VOID *found = nullptr;
  if (EFI_ERROR(gBS->HandleProtocol(handle, &gEfiBlockIoProtocolGuid, &found))) {
    return;
  }
  auto *disk = static_cast<EFI_BLOCK_IO_PROTOCOL *>(found);
  if (disk->ReadBlocks == ReadBlocks || gDisks.Count == kMaxDisks) {
    return;
  }
  gDisks.List[gDisks.Count] = {disk, disk->ReadBlocks, disk->WriteBlocks, disk->FlushBlocks};
  gDisks.Count++;
  disk->ReadBlocks = ReadBlocks;
  disk->WriteBlocks = WriteBlocks;
  disk->FlushBlocks = FlushBlocks;
}

}  // namespace

EFI_STATUS WatchDisks() {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status =
      gBS->LocateHandleBuffer(ByProtocol, &gEfiBlockIoProtocolGuid, nullptr, &count, &handles);
  if (EFI_ERROR(status)) {
    return status;
  }
  for (UINTN i = 0; i < count; i++) {
    Watch(handles[i]);
  }
  return gBS->FreePool(handles);
}

void LeaveDisks() {
  for (UINTN i = 0; i < gDisks.Count; i++) {
    const WatchedDisk &watched = gDisks.List[i];
    watched.Disk->ReadBlocks = watched.Read;
    watched.Disk->WriteBlocks = watched.Write;
    watched.Disk->FlushBlocks = watched.Flush;
  }
  gDisks.Count = 0;
}
