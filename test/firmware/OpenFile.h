// One open file or directory of a Volume: the object behind an EFI_FILE_PROTOCOL.

#pragma once

#include "test/firmware/Volume.h"

namespace fake {

class OpenFile {
 public:
  OpenFile(Volume &volume, FileNode *node, UINT64 mode);

  EFI_FILE_PROTOCOL *Protocol() { return &thunk_.Protocol; }
  FileNode *Node() const { return node_; }

  EFI_STATUS Open(EFI_FILE_PROTOCOL **file, const CHAR16 *name, UINT64 mode, UINT64 attributes);
  EFI_STATUS Read(UINTN *size, VOID *buffer);
  EFI_STATUS Write(UINTN *size, const VOID *buffer);
  EFI_STATUS GetPosition(UINT64 *position) const;
  EFI_STATUS SetPosition(UINT64 position);
  EFI_STATUS GetInfo(const EFI_GUID *type, UINTN *size, VOID *buffer) const;
  EFI_STATUS SetInfo(const EFI_GUID *type, UINTN size, const VOID *buffer);
  EFI_STATUS Flush() const;
  EFI_STATUS Delete();

 private:
  struct Thunk {
    EFI_FILE_PROTOCOL Protocol;
    OpenFile *Self;
  };
  friend struct FileThunks;
  UINTN WriteBlocks(const uint8_t *data, UINTN size);
  EFI_STATUS ReadDirectory(UINTN *size, VOID *buffer);
  std::vector<uint8_t> FileInfoOf(const FileNode &node) const;
  std::vector<uint8_t> SystemInfo() const;
  bool Writable() const { return (mode_ & EFI_FILE_MODE_WRITE) != 0; }

  Volume &volume_;
  FileNode *node_;
  UINT64 mode_;
  UINT64 position_ = 0;
  Thunk thunk_;
};

}  // namespace fake
