// The EFI_FILE_PROTOCOL table of an open file.

#include "test/firmware/Call.h"
#include "test/firmware/FakeFirmware.h"
#include "test/firmware/OpenFile.h"

namespace fake {

struct FileThunks {
  static OpenFile *From(EFI_FILE_PROTOCOL *protocol) {
    return reinterpret_cast<OpenFile::Thunk *>(protocol)->Self;
  }

  static EFI_STATUS EFIAPI Open(EFI_FILE_PROTOCOL *protocol, EFI_FILE_PROTOCOL **file, CHAR16 *name,
                                UINT64 mode, UINT64 attributes) {
    Call call(Service::FileOpen, From(protocol), static_cast<const CHAR16 *>(name), mode,
              attributes);
    return call.Run([&] { return From(protocol)->Open(file, name, mode, attributes); });
  }

  // The UEFI specification knows no failure of Close; a planned one closes all the same.
  static EFI_STATUS EFIAPI Close(EFI_FILE_PROTOCOL *protocol) {
    OpenFile *file = From(protocol);
    Call call(Service::FileClose, file, ToAscii(file->Node()->Name));
    EFI_STATUS status = call.Planned().value_or(EFI_SUCCESS);
    file->volume_.Forget(file);
    call.End(status);
    return status;
  }

  static EFI_STATUS EFIAPI Delete(EFI_FILE_PROTOCOL *protocol) {
    OpenFile *file = From(protocol);
    Call call(Service::FileDelete, file, ToAscii(file->Node()->Name));
    return call.Run([&] { return file->Delete(); });
  }

  static EFI_STATUS EFIAPI Read(EFI_FILE_PROTOCOL *protocol, UINTN *size, VOID *buffer) {
    Call call(Service::FileRead, From(protocol), size == nullptr ? 0 : *size);
    return call.Run([&] { return From(protocol)->Read(size, buffer); });
  }

  static EFI_STATUS EFIAPI Write(EFI_FILE_PROTOCOL *protocol, UINTN *size, VOID *buffer) {
    Call call(Service::FileWrite, From(protocol), size == nullptr ? 0 : *size);
    return call.Run([&] { return From(protocol)->Write(size, buffer); });
  }

  static EFI_STATUS EFIAPI GetPosition(EFI_FILE_PROTOCOL *protocol, UINT64 *position) {
    Call call(Service::FileGetPosition, From(protocol));
    return call.Run([&] { return From(protocol)->GetPosition(position); });
  }

  static EFI_STATUS EFIAPI SetPosition(EFI_FILE_PROTOCOL *protocol, UINT64 position) {
    Call call(Service::FileSetPosition, From(protocol), position);
    return call.Run([&] { return From(protocol)->SetPosition(position); });
  }

  static EFI_STATUS EFIAPI GetInfo(EFI_FILE_PROTOCOL *protocol, EFI_GUID *type, UINTN *size,
                                   VOID *buffer) {
    Call call(Service::FileGetInfo, From(protocol), static_cast<const EFI_GUID *>(type),
              size == nullptr ? 0 : *size);
    return call.Run([&] { return From(protocol)->GetInfo(type, size, buffer); });
  }

  static EFI_STATUS EFIAPI SetInfo(EFI_FILE_PROTOCOL *protocol, EFI_GUID *type, UINTN size,
                                   VOID *buffer) {
    Call call(Service::FileSetInfo, From(protocol), static_cast<const EFI_GUID *>(type), size);
    return call.Run([&] { return From(protocol)->SetInfo(type, size, buffer); });
  }

  static EFI_STATUS EFIAPI Flush(EFI_FILE_PROTOCOL *protocol) {
    Call call(Service::FileFlush, From(protocol));
    return call.Run([&] { return From(protocol)->Flush(); });
  }
};

OpenFile::OpenFile(Volume &volume, FileNode *node, UINT64 mode)
    : volume_(volume), node_(node), mode_(mode), thunk_{{}, this} {
  EFI_FILE_PROTOCOL &table = thunk_.Protocol;
  table.Revision = EFI_FILE_PROTOCOL_REVISION;
  table.Open = &FileThunks::Open;
  table.Close = &FileThunks::Close;
  table.Delete = &FileThunks::Delete;
  table.Read = &FileThunks::Read;
  table.Write = &FileThunks::Write;
  table.GetPosition = &FileThunks::GetPosition;
  table.SetPosition = &FileThunks::SetPosition;
  table.GetInfo = &FileThunks::GetInfo;
  table.SetInfo = &FileThunks::SetInfo;
  table.Flush = &FileThunks::Flush;
}

}  // namespace fake
