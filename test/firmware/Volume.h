// A volume in memory behind the Simple File System and File protocols.

#pragma once

#include "test/firmware/DevicePath.h"
#include "test/firmware/Edk2.h"

namespace fake {

struct VolumeOptions {
  std::u16string Label = u"STICK";
  UINT64 Capacity = UINT64{64} << 20;  ///< Bytes, also the reported volume size.
  UINT32 BlockSize = 512;
  bool WriteProtected = false;
  DevicePath Path = DevicePath().PciRoot().Pci(20).Usb(1).HardDrive(1);
};

/// A file or directory; directories own their entries.
struct FileNode {
  std::u16string Name;
  bool Directory = false;
  std::vector<uint8_t> Data;
  UINT64 Attributes = 0;
  FileNode *Parent = nullptr;
  std::vector<std::unique_ptr<FileNode>> Entries;

  FileNode *Find(std::u16string_view name) const;
  FileNode *Add(std::u16string_view name, bool directory);
};

class OpenFile;

class Volume {
 public:
  /// For Firmware::AddVolume, which also installs it.
  explicit Volume(VolumeOptions options);
  ~Volume();
  Volume(const Volume &) = delete;
  Volume &operator=(const Volume &) = delete;

  EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *Protocol() { return &thunk_.Protocol; }
  EFI_HANDLE Handle = nullptr;
  VolumeOptions Options;
  /// After a removal every function answers RemovedStatus (Close succeeds).
  bool Removed = false;
  EFI_STATUS RemovedStatus = EFI_NO_MEDIA;
  /// Called after each block that a write has brought to the device; it may remove the volume.
  std::function<void()> OnBlock;

  /// Contents of a file by its path ("\\DIR\\FILE.TXT", "FILE.TXT"), nothing when absent.
  std::optional<std::vector<uint8_t>> Read(std::u16string_view path) const;
  /// Creates or replaces a file, and the directories to it.
  void Write(std::u16string_view path, std::vector<uint8_t> data);
  void MakeDirectory(std::u16string_view path);
  /// Names in the root directory, in order of creation.
  std::vector<std::u16string> RootNames() const;

  /// Roots and files that are open now; every Open must meet a Close.
  size_t OpenCount() const { return open_.size(); }
  UINT64 UsedBytes() const;
  UINT64 FreeBytes() const;

  /// For open files.
  FileNode &Root() { return root_; }
  FileNode *Lookup(FileNode *from, std::u16string_view path) const;
  EFI_FILE_PROTOCOL *Open(FileNode *node, UINT64 mode);
  void Forget(OpenFile *file);
  bool IsOpen(const FileNode *node) const;

 private:
  struct Thunk {
    EFI_SIMPLE_FILE_SYSTEM_PROTOCOL Protocol;
    Volume *Self;
  };
  static EFI_STATUS EFIAPI OpenVolumeThunk(EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *self,
                                           EFI_FILE_PROTOCOL **root);

  Thunk thunk_;
  FileNode root_;
  std::vector<std::unique_ptr<OpenFile>> open_;
};

}  // namespace fake
