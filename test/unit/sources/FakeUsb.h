// A USB device, or one interface of it: its descriptors and texts.

#pragma once

#include "test/unit/sources/FakeDevice.h"

extern "C" {
#include <Protocol/UsbIo.h>
}

namespace obv_host {

class FakeUsb : public FakeDevice {
 public:
  /// A keyboard of USB 2.
  FakeUsb() {
    Descriptor = {18, 1, 0x0200, 0, 0, 0, 8, 0x046D, 0xC31C, 0x4900, 1, 2, 0, 1};
    InterfaceDescriptor = {9, 4, 0, 0, 1, 3, 1, 1, 0};
    Texts[1] = u"Logitech";
    Texts[2] = u"USB Keyboard";
    io_.Owner = this;
    io_.Protocol.UsbGetDeviceDescriptor = GetDevice;
    io_.Protocol.UsbGetInterfaceDescriptor = GetInterface;
    io_.Protocol.UsbGetStringDescriptor = GetText;
    io_.Protocol.UsbGetSupportedLanguages = GetLanguages;
  }

  FakeUsb &At(fake::Firmware &machine, fake::DevicePath path) {
    Place(machine, gEfiUsbIoProtocolGuid, &io_.Protocol, std::move(path));
    return *this;
  }
  /// With a path that may be none.
  FakeUsb &AtRaw(fake::Firmware &machine, VOID *path) {
    PlaceRaw(machine, gEfiUsbIoProtocolGuid, &io_.Protocol, path);
    return *this;
  }

  /// Makes it another product; a hub with a class.
  FakeUsb &Named(const std::u16string &product, UINT8 deviceClass = 0) {
    Texts[2] = product;
    Descriptor.DeviceClass = deviceClass;
    return *this;
  }

  EFI_USB_DEVICE_DESCRIPTOR Descriptor;
  EFI_USB_INTERFACE_DESCRIPTOR InterfaceDescriptor;
  std::map<UINT8, std::u16string> Texts;
  std::vector<UINT16> Languages = {0x0409, 0x0407};
  /// Told of the table of languages instead of its size, when set.
  std::optional<UINT16> LanguageBytes;
  EFI_STATUS Failure = EFI_SUCCESS;
  EFI_STATUS InterfaceFailure = EFI_SUCCESS;
  EFI_STATUS TextFailure = EFI_SUCCESS;
  EFI_STATUS LanguageFailure = EFI_SUCCESS;
  bool GivesNoText = false;  ///< Success, and NULL.

 private:
  struct Io {
    EFI_USB_IO_PROTOCOL Protocol;
    FakeUsb *Owner;
  };

  static FakeUsb *Of(EFI_USB_IO_PROTOCOL *self) {
    FakeUsb *usb = reinterpret_cast<Io *>(self)->Owner;
    usb->Called();
    return usb;
  }

  EFI_STATUS Result(EFI_STATUS failure) const { return IsThere() ? failure : EFI_DEVICE_ERROR; }

  static EFI_STATUS EFIAPI GetDevice(EFI_USB_IO_PROTOCOL *self, EFI_USB_DEVICE_DESCRIPTOR *to) {
    FakeUsb *usb = Of(self);
    EFI_STATUS status = usb->Result(usb->Failure);
    if (!EFI_ERROR(status)) {
      *to = usb->Descriptor;
    }
    return status;
  }

  static EFI_STATUS EFIAPI GetInterface(EFI_USB_IO_PROTOCOL *self,
                                        EFI_USB_INTERFACE_DESCRIPTOR *to) {
    FakeUsb *usb = Of(self);
    EFI_STATUS status = usb->Result(usb->InterfaceFailure);
    if (!EFI_ERROR(status)) {
      *to = usb->InterfaceDescriptor;
    }
    return status;
  }

  static EFI_STATUS EFIAPI GetLanguages(EFI_USB_IO_PROTOCOL *self, UINT16 **table, UINT16 *size) {
    FakeUsb *usb = Of(self);
    EFI_STATUS status = usb->Result(usb->LanguageFailure);
    if (!EFI_ERROR(status)) {
      *table = usb->Languages.empty() ? nullptr : usb->Languages.data();
      UINT16 whole = static_cast<UINT16>(usb->Languages.size() * sizeof(UINT16));
      *size = usb->LanguageBytes.value_or(whole);
    }
    return status;
  }

  static EFI_STATUS EFIAPI GetText(EFI_USB_IO_PROTOCOL *self, UINT16 language, UINT8 number,
                                   CHAR16 **text) {
    FakeUsb *usb = Of(self);
    EFI_STATUS status = usb->Result(usb->TextFailure);
    auto found = usb->Texts.find(number);
    bool known = !usb->Languages.empty() && language == usb->Languages.front();
    if (EFI_ERROR(status) || found == usb->Texts.end() || !known) {
      return EFI_ERROR(status) ? status : EFI_NOT_FOUND;
    }
    *text = nullptr;
    if (!usb->GivesNoText) {
      size_t size = (found->second.size() + 1) * sizeof(CHAR16);
      *text = static_cast<CHAR16 *>(
          fake::Firmware::Current().Pool.Duplicate(found->second.data(), size));
    }
    return EFI_SUCCESS;
  }

  Io io_ = {};
};

}  // namespace obv_host
