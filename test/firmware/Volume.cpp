#include "test/firmware/Volume.h"

#include "test/firmware/Call.h"
#include "test/firmware/OpenFile.h"
#include "test/firmware/Text.h"

namespace fake {

namespace {

char16_t Upper(char16_t c) {
  return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
}

// Names compare as FAT's do: the case of letters does not matter.
bool SameName(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return Upper(x) == Upper(y); });
}

std::vector<std::u16string> Split(std::u16string_view path) {
  std::vector<std::u16string> parts(1);
  for (char16_t c : path) {
    if (c == u'\\') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  std::erase(parts, std::u16string());
  return parts;
}

UINT64 BytesIn(const FileNode &node) {
  UINT64 bytes = node.Data.size();
  for (const std::unique_ptr<FileNode> &entry : node.Entries) {
    bytes += BytesIn(*entry);
  }
  return bytes;
}

}  // namespace

FileNode *FileNode::Find(std::u16string_view name) const {
  for (const std::unique_ptr<FileNode> &entry : Entries) {
    if (SameName(entry->Name, name)) {
      return entry.get();
    }
  }
  return nullptr;
}

FileNode *FileNode::Add(std::u16string_view name, bool directory) {
  auto entry = std::make_unique<FileNode>();
  entry->Name = name;
  entry->Directory = directory;
  entry->Parent = this;
  Entries.push_back(std::move(entry));
  return Entries.back().get();
}

Volume::Volume(VolumeOptions options)
    : Options(std::move(options)),
      thunk_{{EFI_SIMPLE_FILE_SYSTEM_PROTOCOL_REVISION, &OpenVolumeThunk}, this} {
  root_.Directory = true;
}

Volume::~Volume() = default;

EFI_STATUS EFIAPI Volume::OpenVolumeThunk(EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *protocol,
                                          EFI_FILE_PROTOCOL **root) {
  Volume *self = reinterpret_cast<Thunk *>(protocol)->Self;
  Call call(Service::FsOpenVolume, self, ToAscii(self->Options.Label));
  return call.Run([&]() -> EFI_STATUS {
    if (root == nullptr) {
      return EFI_INVALID_PARAMETER;
    }
    if (self->Removed) {
      return self->RemovedStatus;
    }
    *root = self->Open(&self->root_, EFI_FILE_MODE_READ | EFI_FILE_MODE_WRITE);
    return EFI_SUCCESS;
  });
}

FileNode *Volume::Lookup(FileNode *from, std::u16string_view path) const {
  FileNode *node = from;
  if (path.starts_with(u'\\')) {
    node = const_cast<FileNode *>(&root_);
  }
  for (const std::u16string &part : Split(path)) {
    if (part == u"..") {
      node = node->Parent;
    } else if (part != u".") {
      node = node->Directory ? node->Find(part) : nullptr;
    }
    if (node == nullptr) {
      return nullptr;
    }
  }
  return node;
}

EFI_FILE_PROTOCOL *Volume::Open(FileNode *node, UINT64 mode) {
  open_.push_back(std::make_unique<OpenFile>(*this, node, mode));
  return open_.back()->Protocol();
}

void Volume::Forget(OpenFile *file) {
  std::erase_if(open_, [&](const auto &candidate) { return candidate.get() == file; });
}

bool Volume::IsOpen(const FileNode *node) const {
  return std::any_of(open_.begin(), open_.end(),
                     [&](const auto &candidate) { return candidate->Node() == node; });
}

std::optional<std::vector<uint8_t>> Volume::Read(std::u16string_view path) const {
  const FileNode *node = Lookup(const_cast<FileNode *>(&root_), path);
  if (node == nullptr || node->Directory) {
    return std::nullopt;
  }
  return node->Data;
}

void Volume::MakeDirectory(std::u16string_view path) {
  FileNode *node = &root_;
  for (const std::u16string &part : Split(path)) {
    FileNode *next = node->Find(part);
    node = next != nullptr ? next : node->Add(part, true);
  }
}

void Volume::Write(std::u16string_view path, std::vector<uint8_t> data) {
  size_t slash = path.rfind(u'\\');
  std::u16string_view folder = slash == path.npos ? u"" : path.substr(0, slash);
  MakeDirectory(folder);
  std::u16string_view name = slash == path.npos ? path : path.substr(slash + 1);
  FileNode *parent = Lookup(&root_, folder);
  FileNode *node = parent->Find(name);
  node = node != nullptr ? node : parent->Add(name, false);
  node->Data = std::move(data);
}

std::vector<std::u16string> Volume::RootNames() const {
  std::vector<std::u16string> names;
  for (const std::unique_ptr<FileNode> &entry : root_.Entries) {
    names.push_back(entry->Name);
  }
  return names;
}

UINT64 Volume::UsedBytes() const { return BytesIn(root_); }

UINT64 Volume::FreeBytes() const {
  UINT64 used = UsedBytes();
  return used < Options.Capacity ? Options.Capacity - used : 0;
}

}  // namespace fake
