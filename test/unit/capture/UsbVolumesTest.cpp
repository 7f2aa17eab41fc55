// The file systems on USB devices.

#include "test/unit/stage/ConnectedHost.h"

#include "capture/UsbVolumes.h"

namespace {

using fake::DevicePath;
using fake::Service;

class UsbVolumes : public ConnectedHost {
 protected:
  fake::Volume &Add(std::u16string_view label, DevicePath path) {
    fake::VolumeOptions options;
    options.Label = label;
    options.Path = std::move(path);
    return Machine.AddVolume(options);
  }
  fake::Volume &AddStick(std::u16string_view label, UINT8 port = 1) {
    return Add(label, DevicePath().PciRoot().Pci(20).Usb(port).HardDrive(1));
  }
  static DevicePath DiskPath() { return DevicePath().PciRoot().Pci(31).Sata(0).HardDrive(1); }

  EFI_STATUS List() {
    ZeroMem(&List_, sizeof List_);
    return GetRootDirectoryFileHandle(&List_);
  }
  /// Labels of the listed volumes, in order.
  std::vector<std::string> Labels() const {
    std::vector<std::string> labels;
    for (EFI_FILE_PROTOCOL *root : List_.Roots) {
      if (root == nullptr) {
        break;
      }
      CHAR8 label[512];
      UINT64 size = 0;
      DescribeVolume(root, label, sizeof label, &size);
      labels.emplace_back(label);
    }
    return labels;
  }
  size_t Count() const {
    return static_cast<size_t>(std::find(std::begin(List_.Roots), std::end(List_.Roots), nullptr) -
                               std::begin(List_.Roots));
  }

  VolumeList List_{};
};

TEST_F(UsbVolumes, NullListIsAnInvalidParameter) {
  EXPECT_EQ(GetRootDirectoryFileHandle(nullptr), EFI_INVALID_PARAMETER);
  EXPECT_TRUE(Host.Log.empty());
}

TEST_F(UsbVolumes, WithoutAnyFileSystemTheSearchFailsAndIsLogged) {
  EXPECT_EQ(List(), EFI_NOT_FOUND);
  EXPECT_EQ(Host.Log, (std::vector<fake::LogLine>{
                          {0x80000000, "[GetRootDirectoryFileHandle] Error occurs: Not Found\n"}}));
}

TEST_F(UsbVolumes, StatusOfTheSearchIsReturned) {
  AddStick(u"A");
  Machine.FailCall(Service::LocateHandleBuffer, 1, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(List(), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(Host.Log,
            (std::vector<fake::LogLine>{
                {0x80000000, "[GetRootDirectoryFileHandle] Error occurs: Out of Resources\n"}}));
}

TEST_F(UsbVolumes, DisksAloneAreNotFoundWithoutALogLine) {
  fake::Volume &disk = Add(u"DISK", DiskPath());
  EXPECT_EQ(List(), EFI_NOT_FOUND);
  EXPECT_TRUE(Host.Log.empty());
  EXPECT_EQ(disk.OpenCount(), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::FsOpenVolume), 0u);
}

TEST_F(UsbVolumes, SticksAreListedInHandleOrderBetweenDisks) {
  Add(u"DISK", DiskPath());
  AddStick(u"B", 1);
  Add(u"DISK2", DiskPath());
  AddStick(u"A", 2);
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Labels(), (std::vector<std::string>{"B", "A"}));
}

TEST_F(UsbVolumes, EveryPartitionOfAStickIsListed) {
  for (UINT32 partition : {1u, 2u, 3u}) {
    Add(u"P" + fake::FromAscii(std::to_string(partition)),
        DevicePath().PciRoot().Pci(20).Usb(3).HardDrive(partition));
  }
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Labels(), (std::vector<std::string>{"P1", "P2", "P3"}));
}

TEST_F(UsbVolumes, AnyUsbNodeInThePathCounts) {
  Add(u"HUB", DevicePath().PciRoot().Pci(20).Usb(1).Usb(2).Usb(3).HardDrive(1));
  Add(u"FIRST", DevicePath().Usb(1).Sata(2));
  Add(u"LAST", DevicePath().PciRoot().Usb(1));
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Labels(), (std::vector<std::string>{"HUB", "FIRST", "LAST"}));
  EXPECT_EQ(Machine.Calls.CountOf(Service::FsOpenVolume), 3u);
}

TEST_F(UsbVolumes, NodesThatOnlyResembleUsbDoNotCount) {
  Add(u"TYPE", DevicePath().PciRoot().Node(2, 5, {1, 0}).Sata(1));
  Add(u"SUBTYPE", DevicePath().PciRoot().Node(3, 6, {1, 0}));
  Add(u"CLASS", DevicePath().PciRoot().Node(3, 15, {1, 2, 3, 4, 5, 6, 7}));
  EXPECT_EQ(List(), EFI_NOT_FOUND);
}

TEST_F(UsbVolumes, HandleWithoutADevicePathIsSkipped) {
  fake::Volume &bare = AddStick(u"BARE");
  AddStick(u"GOOD");
  Machine.Uninstall(bare.Handle, fake::kDevicePathGuid,
                    Machine.Handles.Interface(bare.Handle, fake::kDevicePathGuid));
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Labels(), std::vector<std::string>{"GOOD"});
  EXPECT_TRUE(Host.Log.empty());
}

TEST_F(UsbVolumes, FileSystemThatCannotBeHadIsSkipped) {
  AddStick(u"GONE");
  AddStick(u"GOOD");
  // The first is for the device path.
  Machine.FailCall(Service::HandleProtocol, 2, EFI_UNSUPPORTED);
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Labels(), std::vector<std::string>{"GOOD"});
  EXPECT_TRUE(Host.Log.empty());
}

TEST_F(UsbVolumes, VolumeThatDoesNotOpenIsSkipped) {
  fake::Volume &bad = AddStick(u"BAD");
  AddStick(u"GOOD");
  Machine.FailCall(Service::FsOpenVolume, 1, EFI_VOLUME_CORRUPTED, 1, &bad);
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Labels(), std::vector<std::string>{"GOOD"});
  EXPECT_EQ(bad.OpenCount(), 0u);
  EXPECT_TRUE(Host.Log.empty());
}

TEST_F(UsbVolumes, VolumeThatDoesNotTellAboutItselfIsClosedAgain) {
  fake::Volume &bad = AddStick(u"BAD");
  fake::Volume &good = AddStick(u"GOOD");
  Machine.FailCall(Service::FileGetInfo, 1, EFI_DEVICE_ERROR);
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Labels(), std::vector<std::string>{"GOOD"});
  EXPECT_EQ(bad.OpenCount(), 0u);
  EXPECT_EQ(good.OpenCount(), 1u);
}

TEST_F(UsbVolumes, OnlyVolumesThatDoNotTellAreNotFound) {
  fake::Volume &bad = AddStick(u"BAD");
  Machine.FailCall(Service::FileGetInfo, 1, EFI_DEVICE_ERROR);
  EXPECT_EQ(List(), EFI_NOT_FOUND);
  EXPECT_EQ(bad.OpenCount(), 0u);
}

// 36 bytes and the label with its end: 1025 characters fill the 2088 bytes.
TEST_F(UsbVolumes, LabelOf1025CharactersFitsTheInformationBuffer) {
  AddStick(std::u16string(1025, u'L'));
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Count(), 1u);
}

TEST_F(UsbVolumes, VolumeWithALongerLabelIsNotListed) {
  fake::Volume &bad = AddStick(std::u16string(1026, u'L'));
  EXPECT_EQ(List(), EFI_NOT_FOUND);
  EXPECT_EQ(bad.OpenCount(), 0u);
}

TEST_F(UsbVolumes, NinetyNineVolumesAreListed) {
  for (int i = 0; i < 99; i++) {
    AddStick(u"S");
  }
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Count(), 99u);
}

TEST_F(UsbVolumes, ListStaysTerminatedWithMoreVolumesThanItHolds) {
  std::vector<fake::Volume *> volumes;
  for (int i = 0; i < 120; i++) {
    volumes.push_back(&AddStick(u"S"));
  }
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Count(), 99u);
  CloseVolumes(&List_);
  for (fake::Volume *volume : volumes) {
    EXPECT_EQ(volume->OpenCount(), 0u);
  }
}

TEST_F(UsbVolumes, ClosingClosesAllInOrderAndForgetsThem) {
  std::vector<fake::Volume *> volumes = {&AddStick(u"A"), &AddStick(u"B"), &AddStick(u"C")};
  ASSERT_EQ(List(), EFI_SUCCESS);
  for (fake::Volume *volume : volumes) {
    EXPECT_EQ(volume->OpenCount(), 1u);
  }
  std::vector<size_t> open;
  Machine.Faults.AtEvery(Service::FileClose, [&] {
    open.push_back(volumes[0]->OpenCount() + volumes[1]->OpenCount() * 10 +
                   volumes[2]->OpenCount() * 100);
  });
  CloseVolumes(&List_);
  EXPECT_EQ(open, (std::vector<size_t>{111, 110, 100}));
  EXPECT_EQ(volumes[2]->OpenCount(), 0u);
  EXPECT_EQ(Count(), 0u);
  CloseVolumes(&List_);
  EXPECT_EQ(open.size(), 3u);
}

TEST_F(UsbVolumes, SearchLeavesNoMemoryBehind) {
  AddStick(u"A");
  Add(u"DISK", DiskPath());
  fake::Volume &bad = AddStick(u"BAD");
  Machine.FailCall(Service::FileGetInfo, 1, EFI_DEVICE_ERROR, 1, &bad);
  uint64_t before = Machine.Pool.LiveBlocks();
  EXPECT_EQ(List(), EFI_SUCCESS);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), before);
}

TEST_F(UsbVolumes, WithoutMemoryTheSearchFails) {
  fake::Volume &stick = AddStick(u"A");
  Machine.FailCall(Service::AllocatePool, 1, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(List(), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(stick.OpenCount(), 0u);
}

TEST_F(UsbVolumes, PathNodeWithoutALengthEndsTheWalk) {
  // A header whose length field says 0.
  fake::Volume &bad = Add(u"BAD", DevicePath().PciRoot().Usb(1));
  auto *path = static_cast<UINT8 *>(Machine.Handles.Interface(bad.Handle, fake::kDevicePathGuid));
  path[2] = 0;
  path[3] = 0;
  EXPECT_EQ(List(), EFI_NOT_FOUND);
}

}  // namespace
