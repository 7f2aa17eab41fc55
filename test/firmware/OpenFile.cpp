#include "test/firmware/OpenFile.h"

#include "test/firmware/FakeFirmware.h"

namespace fake {

namespace {

// Copies an answer out with the size protocol of GetInfo and Read.
EFI_STATUS Answer(const std::vector<uint8_t> &answer, UINTN *size, VOID *buffer) {
  UINTN capacity = std::exchange(*size, answer.size());
  if (capacity < answer.size()) {
    return EFI_BUFFER_TOO_SMALL;
  }
  if (buffer == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  std::memcpy(buffer, answer.data(), answer.size());
  return EFI_SUCCESS;
}

template <typename Info>
std::vector<uint8_t> WithName(Info info, size_t nameOffset, std::u16string_view name) {
  std::vector<CHAR16> text = ToFirmware(name);
  std::vector<uint8_t> bytes(nameOffset + text.size() * sizeof(CHAR16));
  info.Size = bytes.size();
  std::memcpy(bytes.data(), &info, nameOffset);
  std::memcpy(bytes.data() + nameOffset, text.data(), text.size() * sizeof(CHAR16));
  return bytes;
}

bool KnownMode(UINT64 mode) {
  return mode == EFI_FILE_MODE_READ || mode == (EFI_FILE_MODE_READ | EFI_FILE_MODE_WRITE) ||
         mode == (EFI_FILE_MODE_READ | EFI_FILE_MODE_WRITE | EFI_FILE_MODE_CREATE);
}

}  // namespace

EFI_STATUS OpenFile::Open(EFI_FILE_PROTOCOL **file, const CHAR16 *name, UINT64 mode,
                          UINT64 attributes) {
  bool create = (mode & EFI_FILE_MODE_CREATE) != 0;
  if (file == nullptr || name == nullptr || !KnownMode(mode) ||
      (create && (attributes & ~UINT64{EFI_FILE_VALID_ATTR}) != 0)) {
    return EFI_INVALID_PARAMETER;
  }
  if (volume_.Removed) {
    return volume_.RemovedStatus;
  }
  std::u16string path = ToU16(name);
  FileNode *found = volume_.Lookup(node_, path);
  if (found == nullptr && !create) {
    return EFI_NOT_FOUND;
  }
  if (mode != EFI_FILE_MODE_READ && volume_.Options.WriteProtected) {
    return EFI_WRITE_PROTECTED;
  }
  if (found != nullptr && mode != EFI_FILE_MODE_READ && !found->Directory &&
      (found->Attributes & EFI_FILE_READ_ONLY) != 0) {
    return EFI_ACCESS_DENIED;
  }
  if (found == nullptr) {
    size_t slash = path.rfind(u'\\');
    bool bare = slash == std::u16string::npos;
    FileNode *parent = bare ? node_ : volume_.Lookup(node_, path.substr(0, slash + 1));
    std::u16string last = bare ? path : path.substr(slash + 1);
    if (parent == nullptr || !parent->Directory || last.empty()) {
      return EFI_NOT_FOUND;
    }
    if (volume_.FreeBytes() == 0) {
      return EFI_VOLUME_FULL;
    }
    found = parent->Add(last, (attributes & EFI_FILE_DIRECTORY) != 0);
    found->Attributes = attributes;
  }
  *file = volume_.Open(found, mode);
  return EFI_SUCCESS;
}

EFI_STATUS OpenFile::ReadDirectory(UINTN *size, VOID *buffer) {
  if (position_ >= node_->Entries.size()) {
    *size = 0;
    return EFI_SUCCESS;
  }
  EFI_STATUS status = Answer(FileInfoOf(*node_->Entries[position_]), size, buffer);
  position_ += status == EFI_SUCCESS ? 1 : 0;
  return status;
}

EFI_STATUS OpenFile::Read(UINTN *size, VOID *buffer) {
  if (size == nullptr || (buffer == nullptr && *size != 0)) {
    return EFI_INVALID_PARAMETER;
  }
  if (volume_.Removed) {
    return volume_.RemovedStatus;
  }
  if (node_->Directory) {
    return ReadDirectory(size, buffer);
  }
  if (position_ > node_->Data.size()) {
    return EFI_DEVICE_ERROR;
  }
  *size = std::min<UINTN>(*size, node_->Data.size() - position_);
  if (*size != 0) {
    std::memcpy(buffer, node_->Data.data() + position_, *size);
  }
  position_ += *size;
  return EFI_SUCCESS;
}

EFI_STATUS OpenFile::Write(UINTN *size, const VOID *buffer) {
  if (size == nullptr || buffer == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (volume_.Removed) {
    return volume_.RemovedStatus;
  }
  if (node_->Directory) {
    return EFI_UNSUPPORTED;
  }
  if (volume_.Options.WriteProtected) {
    return EFI_WRITE_PROTECTED;
  }
  if (!Writable()) {
    return EFI_ACCESS_DENIED;
  }
  UINT64 end = position_ + *size;
  UINT64 growth = end > node_->Data.size() ? end - node_->Data.size() : 0;
  EFI_STATUS status = EFI_SUCCESS;
  if (growth > volume_.FreeBytes()) {
    // What fits is written, and the count says how much that was.
    end = node_->Data.size() + volume_.FreeBytes();
    *size = end > position_ ? end - position_ : 0;
    status = EFI_VOLUME_FULL;
  }
  UINTN written = WriteBlocks(static_cast<const uint8_t *>(buffer), *size);
  if (written != *size) {
    *size = written;
    return volume_.RemovedStatus;
  }
  return status;
}

// The file grows with each block, until the device is gone; how much was written.
UINTN OpenFile::WriteBlocks(const uint8_t *data, UINTN size) {
  UINTN written = 0;
  while (written < size && !volume_.Removed) {
    UINT64 block = volume_.Options.BlockSize;
    UINTN count = std::min<UINTN>(block - position_ % block, size - written);
    node_->Data.resize(std::max<size_t>(node_->Data.size(), position_ + count));
    std::memcpy(node_->Data.data() + position_, data + written, count);
    position_ += count;
    written += count;
    if (volume_.OnBlock) {
      volume_.OnBlock();
    }
  }
  return written;
}

EFI_STATUS OpenFile::GetPosition(UINT64 *position) const {
  if (position == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (node_->Directory) {
    return EFI_UNSUPPORTED;
  }
  *position = position_;
  return EFI_SUCCESS;
}

EFI_STATUS OpenFile::SetPosition(UINT64 position) {
  if (node_->Directory && position != 0) {
    return EFI_UNSUPPORTED;
  }
  constexpr UINT64 kEnd = 0xFFFFFFFFFFFFFFFF;
  position_ = position == kEnd ? node_->Data.size() : position;
  return EFI_SUCCESS;
}

std::vector<uint8_t> OpenFile::FileInfoOf(const FileNode &node) const {
  EFI_FILE_INFO info{};
  info.FileSize = node.Data.size();
  UINT64 block = volume_.Options.BlockSize;
  info.PhysicalSize = (node.Data.size() + block - 1) / block * block;
  info.CreateTime = Firmware::Current().Clock.Date;
  info.LastAccessTime = info.CreateTime;
  info.ModificationTime = info.CreateTime;
  info.Attribute = node.Attributes | (node.Directory ? UINT64{EFI_FILE_DIRECTORY} : 0);
  return WithName(info, SIZE_OF_EFI_FILE_INFO, node.Name);
}

std::vector<uint8_t> OpenFile::SystemInfo() const {
  EFI_FILE_SYSTEM_INFO info{};
  info.ReadOnly = volume_.Options.WriteProtected;
  info.VolumeSize = volume_.Options.Capacity;
  info.FreeSpace = volume_.FreeBytes();
  info.BlockSize = volume_.Options.BlockSize;
  return WithName(info, SIZE_OF_EFI_FILE_SYSTEM_INFO, volume_.Options.Label);
}

EFI_STATUS OpenFile::GetInfo(const EFI_GUID *type, UINTN *size, VOID *buffer) const {
  if (type == nullptr || size == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (volume_.Removed) {
    return volume_.RemovedStatus;
  }
  if (SameGuid(*type, kFileInfoGuid)) {
    return Answer(FileInfoOf(*node_), size, buffer);
  }
  if (SameGuid(*type, kFileSystemInfoGuid)) {
    return Answer(SystemInfo(), size, buffer);
  }
  if (SameGuid(*type, kVolumeLabelGuid)) {
    std::vector<CHAR16> label = ToFirmware(volume_.Options.Label);
    const auto *bytes = reinterpret_cast<const uint8_t *>(label.data());
    return Answer({bytes, bytes + label.size() * sizeof(CHAR16)}, size, buffer);
  }
  return EFI_UNSUPPORTED;
}

EFI_STATUS OpenFile::SetInfo(const EFI_GUID *type, UINTN size, const VOID *buffer) {
  if (type == nullptr || buffer == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (!SameGuid(*type, kFileInfoGuid)) {
    return EFI_UNSUPPORTED;
  }
  if (size < SIZE_OF_EFI_FILE_INFO) {
    return EFI_BAD_BUFFER_SIZE;
  }
  if (volume_.Options.WriteProtected) {
    return EFI_WRITE_PROTECTED;
  }
  if (!Writable()) {
    return EFI_ACCESS_DENIED;
  }
  EFI_FILE_INFO info{};
  std::memcpy(&info, buffer, SIZE_OF_EFI_FILE_INFO);
  if (info.FileSize > node_->Data.size() + volume_.FreeBytes()) {
    return EFI_VOLUME_FULL;
  }
  node_->Data.resize(info.FileSize);
  node_->Attributes = info.Attribute & EFI_FILE_VALID_ATTR;
  return EFI_SUCCESS;
}

EFI_STATUS OpenFile::Flush() const {
  if (volume_.Removed) {
    return volume_.RemovedStatus;
  }
  if (volume_.Options.WriteProtected) {
    return EFI_WRITE_PROTECTED;
  }
  return Writable() ? EFI_SUCCESS : EFI_ACCESS_DENIED;
}

// Deleting closes the handle whatever happens to the file.
EFI_STATUS OpenFile::Delete() {
  FileNode *parent = node_->Parent;
  bool possible = parent != nullptr && Writable() && !volume_.Options.WriteProtected &&
                  !volume_.Removed && node_->Entries.empty();
  FileNode *node = node_;
  Volume &volume = volume_;
  volume.Forget(this);
  if (!possible || volume.IsOpen(node)) {
    return EFI_WARN_DELETE_FAILURE;
  }
  std::erase_if(parent->Entries, [&](const auto &entry) { return entry.get() == node; });
  return EFI_SUCCESS;
}

}  // namespace fake
