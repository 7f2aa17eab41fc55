#include "test/contract/Contract.h"

namespace contract {

namespace {

constexpr UINT64 kNew = EFI_FILE_MODE_CREATE | EFI_FILE_MODE_READ | EFI_FILE_MODE_WRITE;
constexpr char16_t kName[] = u"2031-05-17-08-30-00.png";
constexpr UINTN kInformationSize = 2088;

EFI_STATUS Open(EFI_FILE_PROTOCOL *root, const char16_t *name, UINT64 mode,
                EFI_FILE_PROTOCOL **file) {
  return root->Open(root, file, Ucs2(name), mode, 0);
}

void Write(const Report &report, EFI_FILE_PROTOCOL *file, const CHAR8 *text) {
  UINTN size = AsciiStrLen(text);
  Say(report, "write to it", file->Write(file, &size, const_cast<CHAR8 *>(text)));
  SayNumber(report, "bytes written", size);
}

void Read(const Report &report, EFI_FILE_PROTOCOL *file) {
  CHAR8 text[16] = {};
  UINTN size = sizeof(text);
  Say(report, "read from it", file->Read(file, &size, text));
  SayNumber(report, "bytes read", size);
  report.Line(report.Context, text);
}

void AskForRefusals(const Report &report, EFI_FILE_PROTOCOL *root) {
  EFI_FILE_PROTOCOL *file = nullptr;
  Say(report, "open a file that is not there", Open(root, kName, EFI_FILE_MODE_READ, &file));
  Say(report, "open without a mode", Open(root, kName, 0, &file));
  Say(report, "create without writing",
      Open(root, kName, EFI_FILE_MODE_CREATE | EFI_FILE_MODE_READ, &file));
  Say(report, "create in a folder that is not there", Open(root, u"none\\a.png", kNew, &file));
}

}  // namespace

void AskAboutFiles(const Report &report, EFI_FILE_PROTOCOL *root) {
  AskForRefusals(report, root);
  EFI_FILE_PROTOCOL *file = nullptr;
  Say(report, "create a file", Open(root, kName, kNew, &file));
  Write(report, file, "0123456789");
  Say(report, "flush it", file->Flush(file));
  Say(report, "close it", file->Close(file));

  Say(report, "create it again", Open(root, kName, kNew, &file));
  Write(report, file, "abc");
  Say(report, "set its position", file->SetPosition(file, 1));
  Read(report, file);
  Read(report, file);
  file->Close(file);

  Say(report, "open it to read", Open(root, kName, EFI_FILE_MODE_READ, &file));
  UINTN size = 1;
  Say(report, "write to one that is open to read",
      file->Write(file, &size, const_cast<CHAR8 *>("x")));
  file->Close(file);
  Say(report, "open it by another case",
      Open(root, u"2031-05-17-08-30-00.PNG", EFI_FILE_MODE_READ, &file));
  file->Close(file);
  Open(root, kName, EFI_FILE_MODE_READ | EFI_FILE_MODE_WRITE, &file);
  Say(report, "delete it", file->Delete(file));
  Say(report, "open it once deleted", Open(root, kName, EFI_FILE_MODE_READ, &file));
}

void AskAboutFileInformation(const Report &report, EFI_FILE_PROTOCOL *root) {
  static UINT64 room[kInformationSize / sizeof(UINT64)];
  auto *info = reinterpret_cast<EFI_FILE_SYSTEM_INFO *>(room);
  EFI_GUID system = gEfiFileSystemInfoGuid;
  EFI_GUID unknown = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
  UINTN size = sizeof(room);
  Say(report, "ask for the volume", root->GetInfo(root, &system, &size, info));
  SayNumber(report, "size of the answer", size);
  SayNumber(report, "size in the answer", info->Size);
  SayNumber(report, "read-only", info->ReadOnly);
  SayNumber(report, "characters of its label", StrLen(info->VolumeLabel));
  SayNumber(report, "free bytes are fewer than all", info->FreeSpace <= info->VolumeSize ? 1 : 0);
  size = 8;
  Say(report, "ask with little room", root->GetInfo(root, &system, &size, info));
  SayNumber(report, "room that it takes", size);
  size = sizeof(room);
  Say(report, "ask for something unknown", root->GetInfo(root, &unknown, &size, info));
}

}  // namespace contract
