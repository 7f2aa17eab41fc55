// A device in the handle database: its path and the interface of one protocol.

#pragma once

#include "test/firmware/DevicePath.h"
#include "test/firmware/FakeFirmware.h"

namespace obv_host {

class FakeDevice {
 public:
  FakeDevice() = default;
  FakeDevice(const FakeDevice &) = delete;
  FakeDevice &operator=(const FakeDevice &) = delete;

  bool IsThere() const { return Handle != nullptr; }

  /// Takes the device away, from the middle of whatever runs.
  void Leave() {
    if (Handle != nullptr) {
      machine_->Uninstall(Handle, protocol_, interface_);
      machine_->Uninstall(Handle, fake::kDevicePathGuid, rawPath_);
      Handle = nullptr;
    }
  }

  EFI_HANDLE Handle = nullptr;
  /// Called at each call of the protocol, before it takes effect, with its number.
  std::function<void(int)> OnCall;

 protected:
  void Place(fake::Firmware &machine, const EFI_GUID &protocol, VOID *interface,
             fake::DevicePath path) {
    path_ = std::move(path);
    PlaceRaw(machine, protocol, interface, path_.Get());
  }

  /// With a path that may be none.
  void PlaceRaw(fake::Firmware &machine, const EFI_GUID &protocol, VOID *interface, VOID *path) {
    machine_ = &machine;
    protocol_ = protocol;
    interface_ = interface;
    rawPath_ = path;
    Handle = machine.Install(fake::kDevicePathGuid, path);
    machine.Install(protocol, interface, Handle);
  }

  void Called() {
    ++calls_;
    if (OnCall) {
      OnCall(calls_);
    }
  }

 private:
  fake::Firmware *machine_ = nullptr;
  EFI_GUID protocol_ = {};
  VOID *interface_ = nullptr;
  VOID *rawPath_ = nullptr;
  fake::DevicePath path_;
  int calls_ = 0;
};

}  // namespace obv_host
