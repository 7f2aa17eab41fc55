#include "test/unit/sources/DeviceStage.h"
#include "test/unit/sources/FakeUsb.h"

namespace obv_host {
namespace {

using testing::ElementsAre;

fake::DevicePath Controller() { return fake::DevicePath().PciRoot().Pci(0x14); }

class Usb : public DeviceStage {
 protected:
  DeviceAnswer AskPort(UINT8 port = 3) {
    return Ask(ReadUsb, kHardwareUsb, Controller().Usb(port));
  }

  FakeUsb Device;
};

TEST_F(Usb, KeyboardTellsWhatItIs) {
  Device.At(Machine, Controller().Usb(3));
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Status, EFI_SUCCESS);
  EXPECT_THAT(answer.Lines(),
              ElementsAre("Product: USB Keyboard", "Manufacturer: Logitech", "Type: Keyboard",
                          "USB version: 2.0", "Device ID: 046D:C31C"));
  EXPECT_EQ(answer.Where.Handle, Device.Handle);
}

TEST_F(Usb, SerialNumberAndSpeedAreToldWhereTheyAreKnown) {
  Device.Descriptor = {18, 1, 0x0320, 0, 0, 0, 9, 0x0781, 0x5591, 0, 1, 2, 5, 1};
  Device.InterfaceDescriptor.InterfaceClass = 8;
  Device.Texts[5] = u"4C530001";
  Device.At(Machine, Controller().Usb(3));
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Line("Serial number"), "4C530001");
  EXPECT_EQ(answer.Line("Type"), "Storage device");
  EXPECT_EQ(answer.Line("USB version"), "3.2");
  EXPECT_EQ(answer.Line("Speed"), "5 Gb/s or more");
}

TEST_F(Usb, AnyInterfaceOfTheDeviceAtThePortWillDo) {
  Device.At(Machine, Controller().Usb(3, 2));
  EXPECT_EQ(AskPort().Status, EFI_SUCCESS);
}

TEST_F(Usb, EmptyPortIsNotThere) {
  EXPECT_EQ(AskPort().Status, EFI_NOT_FOUND);
  Device.At(Machine, Controller().Usb(4));
  EXPECT_EQ(AskPort().Status, EFI_NOT_FOUND) << "another port";
  FakeUsb behind;
  behind.At(Machine, Controller().Usb(3).Usb(1));
  EXPECT_EQ(AskPort().Status, EFI_NOT_FOUND) << "behind a hub that left";
}

TEST_F(Usb, NameThatDoesNotEndAtAPortIsNotThere) {
  Device.At(Machine, Controller().Usb(3));
  EXPECT_EQ(Ask(ReadUsb, kHardwareUsb, Controller()).Status, EFI_NOT_FOUND);
  EXPECT_EQ(Ask(ReadUsb, kHardwareUsb, fake::DevicePath()).Status, EFI_NOT_FOUND);
}

TEST_F(Usb, HubTellsWhatHangsOnItOnceForEachDevice) {
  Device.Named(u"USB2.0 Hub", 9).At(Machine, Controller().Usb(3));
  FakeUsb keyboard;
  keyboard.At(Machine, Controller().Usb(3).Usb(1, 0));
  FakeUsb keys;
  keys.At(Machine, Controller().Usb(3).Usb(1, 1));
  FakeUsb stick;
  stick.Named(u"").At(Machine, Controller().Usb(3).Usb(2));
  FakeUsb mute;
  mute.Failure = EFI_DEVICE_ERROR;
  mute.At(Machine, Controller().Usb(3).Usb(4));
  FakeUsb behind;
  behind.At(Machine, Controller().Usb(3).Usb(4).Usb(1));
  FakeUsb elsewhere;
  elsewhere.At(Machine, Controller().Usb(5));
  DeviceAnswer answer = AskPort();
  EXPECT_THAT(answer.Lines(),
              ElementsAre("Product: USB2.0 Hub", "Manufacturer: Logitech", "Type: Hub",
                          "USB version: 2.0", "Device ID: 046D:C31C", "Devices: 3",
                          ": USB Keyboard", ": 046D:C31C", ": A device that does not answer"));
}

TEST_F(Usb, HubFullOfDevicesNamesSomeOfThem) {
  Device.Named(u"Hub", 9).At(Machine, Controller().Usb(3));
  std::deque<FakeUsb> devices(40);
  UINT8 port = 0;
  for (FakeUsb &device : devices) {
    device.At(Machine, Controller().Usb(3).Usb(++port));
  }
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Line("Devices"), "32");
  EXPECT_EQ(answer.Told.Count, 6U + 8U);
}

TEST_F(Usb, DescriptorOfAnotherLengthOrKindIsRefused) {
  Device.At(Machine, Controller().Usb(3));
  for (UINT8 length : {0, 17, 19, 255}) {
    Device.Descriptor.Length = length;
    DeviceAnswer answer = AskPort();
    EXPECT_EQ(answer.Status, EFI_DEVICE_ERROR) << int{length};
    EXPECT_THAT(answer.Lines(), ElementsAre("Health: Failing: does not describe itself"));
  }
  Device.Descriptor.Length = 18;
  Device.Descriptor.DescriptorType = 2;
  EXPECT_EQ(AskPort().Status, EFI_DEVICE_ERROR);
}

TEST_F(Usb, DeviceThatCannotBeAskedFails) {
  Device.At(Machine, Controller().Usb(3));
  Device.Failure = EFI_TIMEOUT;
  EXPECT_EQ(AskPort().Status, EFI_DEVICE_ERROR);
}

TEST_F(Usb, InterfaceThatDescribesNothingLeavesTheTypeOpen) {
  Device.At(Machine, Controller().Usb(3));
  Device.InterfaceFailure = EFI_DEVICE_ERROR;
  EXPECT_EQ(AskPort().Line("Type"), "Device of an unknown class");
  Device.InterfaceFailure = EFI_SUCCESS;
  Device.InterfaceDescriptor.Length = 8;
  EXPECT_EQ(AskPort().Line("Type"), "Device of an unknown class");
}

TEST_F(Usb, TextsOfOddCharactersAreCleaned) {
  Device.Texts[2] = u" Ma\u00FCs#\a\U0001F600 ";
  Device.At(Machine, Controller().Usb(3));
  EXPECT_EQ(AskPort().Line("Product"), "Ma?s##???");
}

TEST_F(Usb, LongestTextIsReadAndNoFurther) {
  Device.Texts[2] = std::u16string(126, u'x');
  Device.At(Machine, Controller().Usb(3));
  EXPECT_EQ(AskPort().Line("Product"), std::string(126, 'x'));
  Device.Texts[2] = std::u16string(4000, u'x');
  EXPECT_EQ(AskPort().Line("Product"), std::string(126, 'x'));
}

TEST_F(Usb, DeviceWithoutTextsTellsTheRest) {
  Device.At(Machine, Controller().Usb(3));
  Device.TextFailure = EFI_DEVICE_ERROR;
  EXPECT_EQ(AskPort().Told.Count, 3U);
  Device.TextFailure = EFI_SUCCESS;
  Device.GivesNoText = true;
  EXPECT_EQ(AskPort().Told.Count, 3U);
  Device.GivesNoText = false;
  Device.Languages.clear();
  EXPECT_EQ(AskPort().Told.Count, 3U);
  Device.Languages = {0x0409};
  Device.LanguageFailure = EFI_DEVICE_ERROR;
  EXPECT_EQ(AskPort().Told.Count, 3U);
}

TEST_F(Usb, TableOfLanguagesThatIsTooShortForOneHasNone) {
  Device.At(Machine, Controller().Usb(3));
  Device.LanguageBytes = 1;
  EXPECT_EQ(AskPort().Line("Product"), "(none)");
  Device.LanguageBytes = 2;
  EXPECT_EQ(AskPort().Line("Product"), "USB Keyboard");
}

TEST_F(Usb, DeviceThatLeavesInTheMiddleStillHasASoundAnswer) {
  for (int leaving = 1; leaving <= 7; leaving++) {
    Device.At(Machine, Controller().Usb(3));
    int calls = 0;
    Device.OnCall = [&](int) {
      if (++calls == leaving) {
        Device.Leave();
      }
    };
    EXPECT_EQ(AskPort().Status, leaving == 1 ? EFI_DEVICE_ERROR : EFI_SUCCESS) << leaving;
    Device.Leave();
  }
}

TEST_F(Usb, HubThatLeavesBeforeItsDevicesAreCountedHasNone) {
  Device.Named(u"Hub", 9).At(Machine, Controller().Usb(3));
  FakeUsb keyboard;
  keyboard.At(Machine, Controller().Usb(3).Usb(1));
  Device.OnCall = [&](int call) {
    if (call == 2) {
      Device.Leave();
    }
  };
  EXPECT_EQ(AskPort().Line("Devices"), "0");
}

TEST_F(Usb, InputDevicesAreToldByWhatTheFirmwareCanUseThemAs) {
  Device.At(Machine, Controller().Usb(3));
  Device.InterfaceDescriptor.InterfaceProtocol = 2;
  EXPECT_EQ(AskPort().Line("Type"), "Mouse");
  Device.InterfaceDescriptor.InterfaceProtocol = 0;
  EXPECT_EQ(AskPort().Line("Type"), "Input device");
  Device.InterfaceDescriptor.InterfaceClass = 8;
  Device.InterfaceDescriptor.InterfaceProtocol = 2;
  EXPECT_EQ(AskPort().Line("Type"), "Storage device") << "the number means something else there";
}

TEST_F(Usb, CompositeDeviceIsToldByItsInterfaceAndAnotherByItself) {
  Device.At(Machine, Controller().Usb(3));
  Device.Descriptor.DeviceClass = 0xEF;
  EXPECT_EQ(AskPort().Line("Type"), "Keyboard");
  Device.Descriptor.DeviceClass = 0xE0;
  EXPECT_EQ(AskPort().Line("Type"), "Wireless controller");
}

TEST_F(Usb, SpeedOfUsb3IsNotToldOfADeviceThatRunsSlower) {
  Device.Descriptor.BcdUSB = 0x0300;
  Device.At(Machine, Controller().Usb(3));
  DeviceAnswer answer = AskPort();
  EXPECT_EQ(answer.Line("USB version"), "3.0");
  EXPECT_EQ(answer.Line("Speed"), "(none)");
}

TEST(UsbFailures, FailingServicesGetSoundAnswers) {
  uint64_t runs = 0;
  std::string complaints = AnswersDespiteFailures(
      [](fake::Firmware &machine) {
        static FakeUsb hub;
        hub.Named(u"Hub", 9).At(machine, Controller().Usb(3));
        static FakeUsb keyboard;
        keyboard.At(machine, Controller().Usb(3).Usb(1));
        return AskSource(ReadUsb, HardwareAtPath(kHardwareUsb, Controller().Usb(3)));
      },
      &runs);
  EXPECT_EQ(complaints, "");
  EXPECT_GE(runs, 8U);
}

}  // namespace
}  // namespace obv_host
