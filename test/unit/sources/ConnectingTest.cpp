#include "test/unit/sources/DeviceStage.h"
#include "test/unit/sources/FakePci.h"
#include "test/unit/sources/FakeUsb.h"

#include "host/sources/Connecting.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

fake::DevicePath Root() { return fake::DevicePath().PciRoot(); }

// The firmware's drivers: a controller that is connected gets the devices that are planned for it.
class Drivers {
 public:
  explicit Drivers(fake::Firmware &machine) : machine_(machine) {
    current_ = this;
    original_ = machine.BootServices.ConnectController;
    machine.BootServices.ConnectController = Connect;
  }

  ~Drivers() {
    machine_.BootServices.ConnectController = original_;
    current_ = nullptr;
  }

  void Plan(const FakeDevice &controller, std::function<void()> appear) {
    plans_.push_back({&controller, std::move(appear)});
  }

  /// The controllers that were connected, in order; recursive ones with a star.
  std::vector<std::string> Log;
  std::map<const FakeDevice *, std::string> Names;

 private:
  struct Planned {
    const FakeDevice *Controller;
    std::function<void()> Appear;
  };

  static EFI_STATUS EFIAPI Connect(EFI_HANDLE controller, EFI_HANDLE *drivers,
                                   EFI_DEVICE_PATH_PROTOCOL *rest, BOOLEAN recursive) {
    current_->Note(controller, recursive);
    EFI_STATUS status = current_->original_(controller, drivers, rest, recursive);
    for (Planned &planned : current_->plans_) {
      if (planned.Controller->Handle == controller && planned.Appear) {
        std::exchange(planned.Appear, nullptr)();
        status = EFI_SUCCESS;
      }
    }
    return status;
  }

  void Note(EFI_HANDLE controller, bool recursive) {
    for (const auto &[device, name] : Names) {
      if (device->Handle == controller) {
        Log.push_back(name + (recursive ? "*" : ""));
      }
    }
  }

  static inline Drivers *current_ = nullptr;
  fake::Firmware &machine_;
  EFI_CONNECT_CONTROLLER original_ = nullptr;
  std::vector<Planned> plans_;
};

class Connecting : public DeviceStage {
 protected:
  Connecting() {
    gConnections = {};
    root_.At(Machine, Root());
    port_.At(Machine, Root().Pci(0x1C));
    usb_.At(Machine, Root().Pci(0x14));
    Firmware.Names = {{&root_, "root"}, {&port_, "port"}, {&usb_, "usb"}, {&card_, "card"}};
  }

  void Connect(const std::vector<BoardHardware> &names) {
    Board board = {};
    board.Header.HardwareCount = static_cast<UINT16>(names.size());
    board.Hardware = reinterpret_cast<const UINT8 *>(names.data());
    ConnectHardware(board);
  }

  FakePci root_{0x8086, 1, 0x0600};
  FakePci port_{0x8086, 2, 0x0604};
  FakePci usb_{0x8086, 3, 0x0C03};
  FakePci card_{0x8086, 4, 0x0200};
  Drivers Firmware{Machine};
};

TEST_F(Connecting, RootPortIsConnectedWithAllBehindIt) {
  Connect({HardwareAtPath(kHardwarePcie, Root().Pci(0x1C))});
  EXPECT_THAT(Firmware.Log, ElementsAre("port*"));
}

TEST_F(Connecting, DeviceBehindARootPortIsBroughtUpStepByStep) {
  Firmware.Plan(port_, [&] { card_.At(Machine, Root().Pci(0x1C).Pci(0)); });
  Connect({HardwareAtPath(kHardwareNetwork, Root().Pci(0x1C).Pci(0))});
  EXPECT_THAT(Firmware.Log, ElementsAre("port", "card*"));
}

TEST_F(Connecting, DeviceThatDoesNotAppearEndsTheWay) {
  Connect({HardwareAtPath(kHardwareNetwork, Root().Pci(0x1C).Pci(0).Pci(1).Pci(2))});
  EXPECT_THAT(Firmware.Log, ElementsAre("port"));
}

TEST_F(Connecting, PortsOfOneControllerConnectItOnce) {
  Connect({HardwareAtPath(kHardwareUsb, Root().Pci(0x14).Usb(1)),
           HardwareAtPath(kHardwareUsb, Root().Pci(0x14).Usb(2)),
           HardwareAtPath(kHardwareUsb, Root().Pci(0x14).Usb(3).Usb(1))});
  EXPECT_THAT(Firmware.Log, ElementsAre("usb*"));
}

TEST_F(Connecting, WhatWasTriedIsNotTriedAgain) {
  std::vector<BoardHardware> names = {HardwareAtPath(kHardwareUsb, Root().Pci(0x14).Usb(1)),
                                      HardwareAtPath(kHardwareNvme, Root().Pci(0x1D))};
  Connect(names);
  EXPECT_THAT(Firmware.Log, ElementsAre("usb*", "root"));
  Connect(names);
  EXPECT_EQ(Firmware.Log.size(), 2U);
}

TEST_F(Connecting, MachineWithoutThePathIsLeftAlone) {
  Connect({HardwareAtPath(kHardwarePcie, fake::DevicePath().PciRoot(7).Pci(0x1C))});
  EXPECT_THAT(Firmware.Log, ElementsAre());
}

TEST_F(Connecting, NamesThatAreNoDevicePathsAreLeftAlone) {
  BoardHardware memory = {};
  memory.Kind = kHardwareMemory;
  std::strcpy(reinterpret_cast<char *>(memory.Name), "DIMM_A1");
  BoardHardware sensor = memory;
  sensor.Kind = kHardwareSensor;
  Connect({memory, sensor});
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::LocateDevicePath), 0U);
}

TEST_F(Connecting, EachOfManyControllersIsConnected) {
  constexpr UINT8 kMany = 40;
  std::deque<FakePci> controllers;
  std::vector<BoardHardware> names;
  for (UINT8 i = 0; i < kMany; i++) {
    fake::DevicePath path = fake::DevicePath().PciRoot(1).Pci(i);
    controllers.emplace_back(0x8086, i, 0x0C03).At(Machine, path);
    Firmware.Names[&controllers.back()] = std::to_string(i);
    names.push_back(HardwareAtPath(kHardwareUsb, path.Usb(1)));
  }
  Connect(names);
  ASSERT_EQ(Firmware.Log.size(), kMany);
  EXPECT_EQ(Firmware.Log.front(), "0*");
  EXPECT_EQ(Firmware.Log.back(), "39*");
}

TEST_F(Connecting, PathWithoutNodesLeadsNowhere) {
  Connect({HardwareAtPath(kHardwarePcie, fake::DevicePath())});
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::LocateDevicePath), 0U);
  EXPECT_EQ(Machine.Calls.CountOf(fake::Service::ConnectController), 0U);
}

TEST_F(Connecting, FailingServicesAreNotAskedForEver) {
  Machine.FailCall(fake::Service::ConnectController, 1, EFI_OUT_OF_RESOURCES, fake::kForever);
  Connect({HardwareAtPath(kHardwareNetwork, Root().Pci(0x1C).Pci(0)),
           HardwareAtPath(kHardwareUsb, Root().Pci(0x14).Usb(1))});
  EXPECT_THAT(Firmware.Log, ElementsAre("port", "usb*"));
  Machine.FailCall(fake::Service::LocateDevicePath, 1, EFI_OUT_OF_RESOURCES, fake::kForever);
  gConnections = {};
  Connect({HardwareAtPath(kHardwareUsb, Root().Pci(0x14).Usb(1))});
  EXPECT_EQ(Firmware.Log.size(), 2U);
}

TEST_F(Connecting, LastHardwareOfTheLargestBoardIsRemembered) {
  BoardHardware none = {};
  none.Kind = kHardwareSlot;
  std::vector<BoardHardware> names(MAX_UINT16, none);
  names.back() = HardwareAtPath(kHardwareUsb, Root().Pci(0x14).Usb(1));
  Connect(names);
  Connect(names);
  EXPECT_THAT(Firmware.Log, ElementsAre("usb*"));
}

}  // namespace
}  // namespace obv_host
