#include <gtest/gtest.h>

#include "test/firmware/FakeFirmware.h"

namespace fake {
namespace {

constexpr UINT64 kRead = EFI_FILE_MODE_READ;
constexpr UINT64 kReadWrite = EFI_FILE_MODE_READ | EFI_FILE_MODE_WRITE;
constexpr UINT64 kCreate = EFI_FILE_MODE_READ | EFI_FILE_MODE_WRITE | EFI_FILE_MODE_CREATE;

class FakeFirmwareFile : public testing::Test {
 protected:
  FakeFirmwareFile() {
    EXPECT_EQ(Stick.Protocol()->OpenVolume(Stick.Protocol(), &Root), EFI_SUCCESS);
  }
  EFI_STATUS Open(EFI_FILE_PROTOCOL **file, std::u16string_view name, UINT64 mode,
                  UINT64 attributes = 0) {
    std::vector<CHAR16> text = ToFirmware(name);
    return Root->Open(Root, file, text.data(), mode, attributes);
  }
  EFI_STATUS Write(EFI_FILE_PROTOCOL *file, std::string_view text, UINTN *size) {
    *size = text.size();
    return file->Write(file, size, const_cast<char *>(text.data()));
  }
  Firmware Machine;
  Volume &Stick = Machine.AddVolume({.Label = u"MY STICK", .Capacity = 1000});
  EFI_FILE_PROTOCOL *Root = nullptr;
};

TEST_F(FakeFirmwareFile, CreatesWritesAndReadsBack) {
  EFI_FILE_PROTOCOL *file = nullptr;
  UINTN size = 0;
  EXPECT_EQ(Open(&file, u"a.txt", kReadWrite), EFI_NOT_FOUND);
  ASSERT_EQ(Open(&file, u"a.txt", kCreate), EFI_SUCCESS);
  EXPECT_EQ(Write(file, "hello", &size), EFI_SUCCESS);
  EXPECT_EQ(file->Flush(file), EFI_SUCCESS);
  EXPECT_EQ(file->SetPosition(file, 1), EFI_SUCCESS);
  char back[10] = {};
  size = sizeof back;
  EXPECT_EQ(file->Read(file, &size, back), EFI_SUCCESS);
  EXPECT_EQ(size, 4u);
  EXPECT_STREQ(back, "ello");
  EXPECT_EQ(Stick.OpenCount(), 2u);
  EXPECT_EQ(file->Close(file), EFI_SUCCESS);
  EXPECT_EQ(Root->Close(Root), EFI_SUCCESS);
  EXPECT_EQ(Stick.OpenCount(), 0u);
  EXPECT_EQ(Stick.Read(u"A.TXT"), (std::vector<uint8_t>{'h', 'e', 'l', 'l', 'o'}));
  EXPECT_EQ(Stick.RootNames(), std::vector<std::u16string>{u"a.txt"});
}

TEST_F(FakeFirmwareFile, ExistingFileIsOverwrittenFromItsBeginning) {
  Stick.Write(u"a", {'1', '2', '3'});
  EFI_FILE_PROTOCOL *file = nullptr;
  UINTN size = 0;
  ASSERT_EQ(Open(&file, u"A", kCreate), EFI_SUCCESS);
  EXPECT_EQ(Write(file, "x", &size), EFI_SUCCESS);
  EXPECT_EQ(Stick.Read(u"a"), (std::vector<uint8_t>{'x', '2', '3'}));
}

TEST_F(FakeFirmwareFile, OpenHasItsRules) {
  EFI_FILE_PROTOCOL *file = nullptr;
  EXPECT_EQ(Open(&file, u"a", EFI_FILE_MODE_WRITE), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Open(&file, u"a", kRead | EFI_FILE_MODE_CREATE), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Open(nullptr, u"a", kRead), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Open(&file, u"no\\a", kCreate), EFI_NOT_FOUND);
  Stick.Write(u"locked", {1});
  Stick.Root().Find(u"locked")->Attributes = EFI_FILE_READ_ONLY;
  EXPECT_EQ(Open(&file, u"locked", kReadWrite), EFI_ACCESS_DENIED);
  EXPECT_EQ(Open(&file, u"locked", kRead), EFI_SUCCESS);
  UINTN size = 0;
  EXPECT_EQ(Write(file, "x", &size), EFI_ACCESS_DENIED);
}

TEST_F(FakeFirmwareFile, PathsReachIntoDirectories) {
  Stick.Write(u"\\EFI\\Boot\\x.efi", {7});
  EFI_FILE_PROTOCOL *file = nullptr;
  EXPECT_EQ(Open(&file, u"\\EFI\\boot\\..\\Boot\\.\\X.EFI", kRead), EFI_SUCCESS);
  EFI_FILE_PROTOCOL *folder = nullptr;
  ASSERT_EQ(Open(&folder, u"EFI", kRead), EFI_SUCCESS);
  uint8_t entry[200];
  UINTN size = 10;
  EXPECT_EQ(folder->Read(folder, &size, entry), EFI_BUFFER_TOO_SMALL);
  size = sizeof entry;
  EXPECT_EQ(folder->Read(folder, &size, entry), EFI_SUCCESS);
  EFI_FILE_INFO info;
  std::memcpy(&info, entry, SIZE_OF_EFI_FILE_INFO);
  EXPECT_EQ(info.Attribute, UINT64{EFI_FILE_DIRECTORY});
  size = sizeof entry;
  EXPECT_EQ(folder->Read(folder, &size, entry), EFI_SUCCESS);
  EXPECT_EQ(size, 0u) << "the end of the directory";
}

TEST_F(FakeFirmwareFile, WriteProtectionShowsAtOpening) {
  Stick.Options.WriteProtected = true;
  EFI_FILE_PROTOCOL *file = nullptr;
  EXPECT_EQ(Open(&file, u"a", kCreate), EFI_WRITE_PROTECTED);
}

TEST_F(FakeFirmwareFile, FullVolumeTakesWhatFits) {
  EFI_FILE_PROTOCOL *file = nullptr;
  UINTN size = 0;
  ASSERT_EQ(Open(&file, u"a", kCreate), EFI_SUCCESS);
  EXPECT_EQ(Write(file, std::string(1001, 'x'), &size), EFI_VOLUME_FULL);
  EXPECT_EQ(size, 1000u);
  EXPECT_EQ(Stick.FreeBytes(), 0u);
  EXPECT_EQ(Open(&file, u"b", kCreate), EFI_VOLUME_FULL);
}

TEST_F(FakeFirmwareFile, SystemInfoHasItsSizeProtocol) {
  EFI_GUID guid = kFileSystemInfoGuid;
  UINTN size = 0;
  EXPECT_EQ(Root->GetInfo(Root, &guid, &size, nullptr), EFI_BUFFER_TOO_SMALL);
  EXPECT_EQ(size, SIZE_OF_EFI_FILE_SYSTEM_INFO + 9 * sizeof(CHAR16));
  std::vector<uint8_t> bytes(size);
  ASSERT_EQ(Root->GetInfo(Root, &guid, &size, bytes.data()), EFI_SUCCESS);
  EFI_FILE_SYSTEM_INFO info;
  std::memcpy(&info, bytes.data(), SIZE_OF_EFI_FILE_SYSTEM_INFO);
  EXPECT_EQ(info.VolumeSize, 1000u);
  EXPECT_EQ(ToAscii(reinterpret_cast<const CHAR16 *>(bytes.data() + SIZE_OF_EFI_FILE_SYSTEM_INFO)),
            "MY STICK");
  EFI_GUID other = kHobListGuid;
  EXPECT_EQ(Root->GetInfo(Root, &other, &size, bytes.data()), EFI_UNSUPPORTED);
}

TEST_F(FakeFirmwareFile, DeleteClosesAndRemoves) {
  EFI_FILE_PROTOCOL *file = nullptr;
  ASSERT_EQ(Open(&file, u"a", kCreate), EFI_SUCCESS);
  EXPECT_EQ(file->Delete(file), EFI_SUCCESS);
  EXPECT_FALSE(Stick.Read(u"a").has_value());
  EXPECT_EQ(Root->Delete(Root), EFI_WARN_DELETE_FAILURE);
  EXPECT_EQ(Stick.OpenCount(), 0u);
}

TEST_F(FakeFirmwareFile, RemovedVolumeHasNoMedium) {
  EFI_FILE_PROTOCOL *file = nullptr;
  ASSERT_EQ(Open(&file, u"a", kCreate), EFI_SUCCESS);
  Machine.RemoveVolume(Stick);
  UINTN size = 0;
  EXPECT_EQ(Write(file, "x", &size), EFI_NO_MEDIA);
  EXPECT_EQ(file->Flush(file), EFI_NO_MEDIA);
  EXPECT_EQ(Open(&file, u"b", kCreate), EFI_NO_MEDIA);
  EXPECT_EQ(Root->Close(Root), EFI_SUCCESS);
  VOID *found = nullptr;
  EFI_GUID guid = kSimpleFileSystemGuid;
  EXPECT_EQ(Machine.BootServices.LocateProtocol(&guid, nullptr, &found), EFI_NOT_FOUND);
}

TEST_F(FakeFirmwareFile, FailuresCanBeForOneVolume) {
  Volume &other = Machine.AddVolume({.Label = u"OTHER"});
  Machine.FailCall(Service::FsOpenVolume, 1, EFI_VOLUME_CORRUPTED, 1, &other);
  EFI_FILE_PROTOCOL *root = nullptr;
  EXPECT_EQ(Stick.Protocol()->OpenVolume(Stick.Protocol(), &root), EFI_SUCCESS);
  EXPECT_EQ(other.Protocol()->OpenVolume(other.Protocol(), &root), EFI_VOLUME_CORRUPTED);
  EXPECT_EQ(other.Protocol()->OpenVolume(other.Protocol(), &root), EFI_SUCCESS);
}

}  // namespace
}  // namespace fake
