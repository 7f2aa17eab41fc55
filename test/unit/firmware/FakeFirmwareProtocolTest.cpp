#include <gtest/gtest.h>

#include "test/firmware/FakeFirmware.h"

namespace fake {
namespace {

EFI_GUID gOne = {1, 0, 0, {1}};
EFI_GUID gTwo = {2, 0, 0, {2}};
int gNotified;

VOID EFIAPI CountNotification(EFI_EVENT, VOID *) { gNotified++; }

class FakeFirmwareProtocol : public testing::Test {
 protected:
  FakeFirmwareProtocol() { gNotified = 0; }
  EFI_HANDLE Install(EFI_GUID *guid, VOID *interface, EFI_HANDLE handle = nullptr) {
    EXPECT_EQ(Services.InstallProtocolInterface(&handle, guid, EFI_NATIVE_INTERFACE, interface),
              EFI_SUCCESS);
    return handle;
  }
  Firmware Machine;
  EFI_BOOT_SERVICES &Services = Machine.BootServices;
  int First = 0;
  int Second = 0;
};

TEST_F(FakeFirmwareProtocol, InstallHasItsRules) {
  EFI_HANDLE handle = Install(&gOne, &First);
  EXPECT_EQ(Services.InstallProtocolInterface(&handle, &gOne, EFI_NATIVE_INTERFACE, &Second),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.InstallProtocolInterface(nullptr, &gOne, EFI_NATIVE_INTERFACE, &Second),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.InstallProtocolInterface(&handle, nullptr, EFI_NATIVE_INTERFACE, &Second),
            EFI_INVALID_PARAMETER);
  EFI_HANDLE bogus = &First;
  EXPECT_EQ(Services.InstallProtocolInterface(&bogus, &gOne, EFI_NATIVE_INTERFACE, &Second),
            EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareProtocol, HandleProtocolStatuses) {
  EFI_HANDLE handle = Install(&gOne, &First);
  VOID *found = nullptr;
  EXPECT_EQ(Services.HandleProtocol(handle, &gOne, &found), EFI_SUCCESS);
  EXPECT_EQ(found, &First);
  EXPECT_EQ(Services.HandleProtocol(handle, &gTwo, &found), EFI_UNSUPPORTED);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(Services.HandleProtocol(&First, &gOne, &found), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.HandleProtocol(handle, &gOne, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.HandleProtocol(handle, nullptr, &found), EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareProtocol, LocateProtocolGivesTheFirst) {
  VOID *found = &found;
  EXPECT_EQ(Services.LocateProtocol(&gOne, nullptr, &found), EFI_NOT_FOUND);
  EXPECT_EQ(found, nullptr);
  Install(&gOne, &First);
  Install(&gOne, &Second);
  EXPECT_EQ(Services.LocateProtocol(&gOne, nullptr, &found), EFI_SUCCESS);
  EXPECT_EQ(found, &First);
  EXPECT_EQ(Services.LocateProtocol(&gOne, nullptr, nullptr), EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareProtocol, HandleBufferComesInOrderOfCreation) {
  UINTN count = 7;
  EFI_HANDLE *buffer = nullptr;
  EXPECT_EQ(Services.LocateHandleBuffer(ByProtocol, &gOne, nullptr, &count, &buffer),
            EFI_NOT_FOUND);
  EXPECT_EQ(count, 0u);
  EFI_HANDLE first = Install(&gTwo, &First);
  EFI_HANDLE second = Install(&gOne, &First);
  Install(&gOne, &Second, first);
  ASSERT_EQ(Services.LocateHandleBuffer(ByProtocol, &gOne, nullptr, &count, &buffer), EFI_SUCCESS);
  ASSERT_EQ(count, 2u);
  EXPECT_EQ(buffer[0], first);
  EXPECT_EQ(buffer[1], second);
  EXPECT_EQ(Services.FreePool(buffer), EFI_SUCCESS);
  EXPECT_EQ(Services.LocateHandleBuffer(ByProtocol, nullptr, nullptr, &count, &buffer),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.LocateHandleBuffer(ByProtocol, &gOne, nullptr, nullptr, &buffer),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(FakeFirmwareProtocol, LocateHandleHasItsSizeProtocol) {
  EFI_HANDLE handle = Install(&gOne, &First);
  EFI_HANDLE found = nullptr;
  UINTN size = 0;
  EXPECT_EQ(Services.LocateHandle(ByProtocol, &gOne, nullptr, &size, nullptr),
            EFI_BUFFER_TOO_SMALL);
  EXPECT_EQ(size, sizeof(EFI_HANDLE));
  EXPECT_EQ(Services.LocateHandle(ByProtocol, &gOne, nullptr, &size, &found), EFI_SUCCESS);
  EXPECT_EQ(found, handle);
}

TEST_F(FakeFirmwareProtocol, UninstallRemovesEmptyHandles) {
  EFI_HANDLE handle = Install(&gOne, &First);
  EXPECT_EQ(Services.UninstallProtocolInterface(handle, &gOne, &Second), EFI_NOT_FOUND);
  EXPECT_EQ(Services.UninstallProtocolInterface(handle, &gTwo, &First), EFI_NOT_FOUND);
  EXPECT_EQ(Services.UninstallProtocolInterface(handle, &gOne, &First), EFI_SUCCESS);
  EXPECT_EQ(Services.UninstallProtocolInterface(handle, &gOne, &First), EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareProtocol, OpenAndCloseAreBalanced) {
  EFI_HANDLE handle = Install(&gOne, &First);
  VOID *found = nullptr;
  EFI_HANDLE agent = Machine.ImageHandle;
  EXPECT_EQ(
      Services.OpenProtocol(handle, &gOne, &found, agent, handle, EFI_OPEN_PROTOCOL_BY_DRIVER),
      EFI_SUCCESS);
  EXPECT_EQ(
      Services.OpenProtocol(handle, &gOne, &found, agent, handle, EFI_OPEN_PROTOCOL_BY_DRIVER),
      EFI_ALREADY_STARTED);
  EXPECT_EQ(
      Services.OpenProtocol(handle, &gOne, &found, agent, nullptr, EFI_OPEN_PROTOCOL_EXCLUSIVE),
      EFI_ACCESS_DENIED);
  EXPECT_EQ(Machine.Handles.UnclosedCount(), 1u);
  EXPECT_EQ(Services.UninstallProtocolInterface(handle, &gOne, &First), EFI_ACCESS_DENIED);
  EXPECT_EQ(Services.CloseProtocol(handle, &gOne, agent, handle), EFI_SUCCESS);
  EXPECT_EQ(Services.CloseProtocol(handle, &gOne, agent, handle), EFI_NOT_FOUND);
  EXPECT_EQ(Machine.Handles.UnclosedCount(), 0u);
  EXPECT_EQ(Services.OpenProtocol(handle, &gOne, &found, agent, handle, 0x99),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.OpenProtocol(handle, &gTwo, nullptr, agent, nullptr,
                                  EFI_OPEN_PROTOCOL_TEST_PROTOCOL),
            EFI_UNSUPPORTED);
}

TEST_F(FakeFirmwareProtocol, MultipleInstallsAllOrNothing) {
  EFI_HANDLE handle = Install(&gTwo, &Second);
  EXPECT_EQ(
      Services.InstallMultipleProtocolInterfaces(&handle, &gOne, &First, &gTwo, &First, nullptr),
      EFI_INVALID_PARAMETER);
  VOID *found = nullptr;
  EXPECT_EQ(Services.HandleProtocol(handle, &gOne, &found), EFI_UNSUPPORTED);
  EFI_HANDLE fresh = nullptr;
  EXPECT_EQ(
      Services.InstallMultipleProtocolInterfaces(&fresh, &gOne, &First, &gTwo, &First, nullptr),
      EFI_SUCCESS);
  EXPECT_EQ(
      Services.UninstallMultipleProtocolInterfaces(fresh, &gOne, &First, &gTwo, &First, nullptr),
      EFI_SUCCESS);
  EXPECT_FALSE(Machine.Handles.IsHandle(fresh));
}

TEST_F(FakeFirmwareProtocol, NotifiesOfNewInstances) {
  Install(&gOne, &First);
  EFI_EVENT event = nullptr;
  VOID *registration = nullptr;
  Services.CreateEvent(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, &CountNotification, nullptr, &event);
  EXPECT_EQ(Services.RegisterProtocolNotify(&gOne, nullptr, &registration), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.RegisterProtocolNotify(&gOne, event, &registration), EFI_SUCCESS);
  EXPECT_EQ(gNotified, 0) << "registration alone signals nothing";
  VOID *found = nullptr;
  EXPECT_EQ(Services.LocateProtocol(&gOne, registration, &found), EFI_NOT_FOUND);
  Install(&gTwo, &First);
  EXPECT_EQ(gNotified, 0);
  EFI_HANDLE handle = Install(&gOne, &Second);
  EXPECT_EQ(gNotified, 1);
  EXPECT_EQ(Services.LocateProtocol(&gOne, registration, &found), EFI_SUCCESS);
  EXPECT_EQ(found, &Second);
  EXPECT_EQ(Services.LocateProtocol(&gOne, registration, &found), EFI_NOT_FOUND);
  EXPECT_EQ(Services.ReinstallProtocolInterface(handle, &gOne, &Second, &First), EFI_SUCCESS);
  EXPECT_EQ(gNotified, 2);
  Services.CloseEvent(event);
  Install(&gOne, &Second);
  EXPECT_EQ(gNotified, 2);
}

TEST_F(FakeFirmwareProtocol, DevicePathsAreMatchedByTheirLongestPart) {
  Volume &disk = Machine.AddVolume({.Path = DevicePath().PciRoot().Pci(1)});
  DevicePath path;
  path.PciRoot().Pci(1).Usb(3);
  EFI_DEVICE_PATH_PROTOCOL *rest = path.Get();
  EFI_HANDLE found = nullptr;
  EFI_GUID guid = kSimpleFileSystemGuid;
  EXPECT_EQ(Services.LocateDevicePath(&guid, &rest, &found), EFI_SUCCESS);
  EXPECT_EQ(found, disk.Handle);
  EXPECT_EQ(rest->SubType, MSG_USB_DP);
  DevicePath other;
  rest = other.PciRoot(5).Get();
  EXPECT_EQ(Services.LocateDevicePath(&guid, &rest, &found), EFI_NOT_FOUND);
}

TEST_F(FakeFirmwareProtocol, ProtocolsOfAHandle) {
  EFI_HANDLE handle = Install(&gOne, &First);
  Install(&gTwo, &Second, handle);
  EFI_GUID **guids = nullptr;
  UINTN count = 0;
  ASSERT_EQ(Services.ProtocolsPerHandle(handle, &guids, &count), EFI_SUCCESS);
  ASSERT_EQ(count, 2u);
  EXPECT_TRUE(SameGuid(*guids[1], gTwo));
  Services.FreePool(guids);
}

TEST_F(FakeFirmwareProtocol, MissingServicesAreProblems) {
  EXPECT_EQ(Services.UnloadImage(Machine.ImageHandle), EFI_UNSUPPORTED);
  ASSERT_EQ(Machine.Problems().size(), 1u);
  EXPECT_EQ(Machine.Problems()[0], "UnloadImage was called; the fake does not provide it");
}

}  // namespace
}  // namespace fake
