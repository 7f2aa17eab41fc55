/** @file
  Devices that answer with the input: configuration spaces, pages and words of disks, descriptors
  and texts, modes, readings, and device paths. Every answer of every source keeps its promises.
**/

#include "test/fuzz/Fuzz.h"
#include "test/unit/sources/DeviceAnswer.h"
#include "test/unit/sources/FakeAta.h"
#include "test/unit/sources/FakeNetwork.h"
#include "test/unit/sources/FakeNvme.h"
#include "test/unit/sources/FakePci.h"
#include "test/unit/sources/FakeSensor.h"
#include "test/unit/sources/FakeUsb.h"

#include "host/sources/Devices.h"
#include "host/sources/Display.h"

namespace obv_host {
namespace {

fake::DevicePath Port() { return fake::DevicePath().PciRoot().Pci(0x1C); }

fake::DevicePath Device() { return Port().Pci(0); }

EFI_STATUS TakeFailure(fuzz::Reader *input) {
  constexpr EFI_STATUS kFailures[] = {EFI_DEVICE_ERROR, EFI_TIMEOUT, EFI_NOT_FOUND};
  UINT8 choice = input->Byte();
  return choice < std::size(kFailures) ? kFailures[choice] : EFI_SUCCESS;
}

void AskAt(ReadHardware read, UINT16 kind, fake::DevicePath path) {
  DeviceAnswer answer = AskSource(read, HardwareAtPath(kind, std::move(path)));
  std::string broken = BrokenPromise(answer);
  if (!broken.empty()) {
    fuzz::Stop(broken);
  }
}

/// Makes the device leave at one of the calls of its protocol.
void PlanDeparture(fuzz::Reader *input, FakeDevice *device) {
  int leaving = input->Byte();
  device->OnCall = [=](int call) {
    if (call == leaving) {
      device->Leave();
    }
  };
}

void UsePci(fuzz::Reader *input, fake::Firmware &machine) {
  FakePci card(0, 0, 0);
  card.Failure = TakeFailure(input);
  PlanDeparture(input, &card);
  input->Fill(card.Space.data(), card.Space.size());
  card.At(machine, Device());
  FakeNetwork network;
  input->Fill(&network.Mode, sizeof network.Mode);
  network.At(machine, Device().Pci(1));
  AskAt(ReadPcie, kHardwarePcie, Port());
  AskAt(ReadNvme, kHardwareNvme, Port());
  AskAt(ReadNetwork, kHardwareNetwork, Device());
  AskAt(ReadDisplay, kHardwareDisplay, Device());
  CHAR8 name[24];
  fuzz::Require(EFI_ERROR(DisplayName(name, sizeof name)) || EndsWithin(name, sizeof name),
                "a name ends");
}

void UseNvme(fuzz::Reader *input, fake::Firmware &machine) {
  FakeNvme drive;
  drive.IdentifyFailure = TakeFailure(input);
  drive.NamespaceFailure = TakeFailure(input);
  drive.HealthFailure = TakeFailure(input);
  drive.SetAlignment(1U << input->Byte() % 32);
  drive.CompletionWord = input->Byte() == 0 ? 0 : input->Take<UINT32>();
  PlanDeparture(input, &drive);
  input->Fill(drive.Health.data(), 512);
  input->Fill(drive.Namespace.data(), 192);
  input->Fill(drive.Identity.data(), 512);
  drive.At(machine, Device());
  AskAt(ReadNvme, kHardwareNvme, Port());
}

void UseAta(fuzz::Reader *input, fake::Firmware &machine) {
  FakeAta disk;
  disk.Device = static_cast<FakeAta::Kind>(input->Byte() % 3);
  disk.Failure = TakeFailure(input);
  disk.SmartFailure = TakeFailure(input);
  disk.SmartLow = input->Byte();
  disk.SmartHigh = input->Byte();
  disk.SmartStatus = input->Byte();
  disk.CountsInCircles = input->Byte() == 1;
  disk.SetAlignment(1U << input->Byte() % 32);
  PlanDeparture(input, &disk);
  input->Fill(disk.Words.data(), sizeof disk.Words);
  disk.At(machine, Device());
  AskAt(ReadSata, kHardwareSata, Device().Sata(2));
  AskAt(ReadSata, kHardwareSata, Device().Sata(3));
}

void FillUsb(fuzz::Reader *input, FakeUsb *device) {
  device->Failure = TakeFailure(input);
  device->TextFailure = TakeFailure(input);
  device->LanguageFailure = TakeFailure(input);
  device->InterfaceFailure = TakeFailure(input);
  device->GivesNoText = input->Byte() == 1;
  PlanDeparture(input, device);
  input->Fill(&device->Descriptor, sizeof device->Descriptor);
  input->Fill(&device->InterfaceDescriptor, sizeof device->InterfaceDescriptor);
  for (UINT8 number = 1; number < 4; number++) {
    std::vector<CHAR16> text = input->Text<CHAR16>(300);
    device->Texts[number] = std::u16string(text.begin(), text.end() - 1);
  }
}

void UseUsb(fuzz::Reader *input, fake::Firmware &machine) {
  FakeUsb hub;
  FillUsb(input, &hub);
  hub.At(machine, Device().Usb(1));
  std::deque<FakeUsb> devices(input->Byte() % 4);
  for (FakeUsb &device : devices) {
    FillUsb(input, &device);
    UINT8 port = input->Byte();
    device.At(machine, Device().Usb(1).Usb(port, input->Byte()));
  }
  AskAt(ReadUsb, kHardwareUsb, Device().Usb(1));
}

void UseSensor(fuzz::Reader *input, fake::Firmware &machine) {
  FakeSensor sensor("Fan");
  sensor.Failure = TakeFailure(input);
  input->Fill(&sensor.Reading, sizeof sensor.Reading);
  sensor.At(machine);
  BoardHardware hardware = {};
  input->Fill(hardware.Name, sizeof hardware.Name);
  for (const char *name : {"", "Fan"}) {
    std::memcpy(hardware.Name, name, std::strlen(name));
    fuzz::Require(BrokenPromise(AskSource(ReadSensor, hardware)).empty(), "a sensor's answer");
  }
}

/// A device whose path is the input.
void UsePath(fuzz::Reader *input, fake::Firmware &machine) {
  std::vector<UINT8> path = input->Bytes(8192);
  // So much a driver's path has at least; behind its end nobody looks.
  path.resize(path.size() + kDevicePathLimit);
  PathNodes nodes = NodesOf(path.data());
  fuzz::Require(nodes.Size <= kDevicePathLimit, "a path is not longer than the limit");
  FakePci card(0x8086, 1, 0x0200);
  card.AtRaw(machine, path.data());
  AskAt(ReadPcie, kHardwarePcie, Port());
  AskAt(ReadNvme, kHardwareNvme, Port());
  AskAt(ReadNetwork, kHardwareNetwork, Device());
}

using Use = void (*)(fuzz::Reader *input, fake::Firmware &machine);
constexpr Use kUses[] = {UsePci, UseNvme, UseAta, UseUsb, UseSensor, UsePath};

}  // namespace
}  // namespace obv_host

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fake::Firmware machine;
  obv_host::UseFirmware(machine);
  fuzz::Reader input(data, size);
  obv_host::kUses[input.Byte() % std::size(obv_host::kUses)](&input, machine);
  if (!machine.Leftovers().empty()) {
    fuzz::Stop(machine.Leftovers());
  }
  return 0;
}
