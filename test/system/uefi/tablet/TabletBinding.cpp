#include "TabletPointer.h"

namespace {

constexpr UINT16 kQemuVendor = 0x0627;
constexpr UINT16 kQemuInput = 0x0001;  // keyboard, mouse and tablet alike
constexpr UINT8 kClassHid = 3;
// QEMU's keyboard and mouse say that they know the boot protocol, its tablet does not.
constexpr UINT8 kNoBootProtocol = 0;
constexpr UINT8 kDirectionIn = 0x80;
constexpr UINT8 kTypeMask = 0x03;
constexpr UINT8 kTypeInterrupt = 0x03;

EFI_DRIVER_BINDING_PROTOCOL gBinding;

EFI_STATUS OpenUsbIo(EFI_HANDLE controller, EFI_USB_IO_PROTOCOL **usbIo) {
  return gBS->OpenProtocol(controller, &gEfiUsbIoProtocolGuid, reinterpret_cast<VOID **>(usbIo),
                           gBinding.DriverBindingHandle, controller, EFI_OPEN_PROTOCOL_BY_DRIVER);
}

void CloseUsbIo(EFI_HANDLE controller) {
  gBS->CloseProtocol(controller, &gEfiUsbIoProtocolGuid, gBinding.DriverBindingHandle, controller);
}

bool IsTablet(EFI_USB_IO_PROTOCOL *usbIo, EFI_USB_INTERFACE_DESCRIPTOR *interface) {
  EFI_USB_DEVICE_DESCRIPTOR device = {};
  return !EFI_ERROR(usbIo->UsbGetDeviceDescriptor(usbIo, &device)) &&
         device.IdVendor == kQemuVendor && device.IdProduct == kQemuInput &&
         !EFI_ERROR(usbIo->UsbGetInterfaceDescriptor(usbIo, interface)) &&
         interface->InterfaceClass == kClassHid && interface->InterfaceSubClass == kNoBootProtocol;
}

EFI_STATUS FindEndpoint(EFI_USB_IO_PROTOCOL *usbIo, EFI_USB_ENDPOINT_DESCRIPTOR *endpoint) {
  EFI_USB_INTERFACE_DESCRIPTOR interface = {};
  if (!IsTablet(usbIo, &interface)) {
    return EFI_UNSUPPORTED;
  }
  for (UINT8 i = 0; i < interface.NumEndpoints; i++) {
    if (!EFI_ERROR(usbIo->UsbGetEndpointDescriptor(usbIo, i, endpoint)) &&
        (endpoint->EndpointAddress & kDirectionIn) != 0 &&
        (endpoint->Attributes & kTypeMask) == kTypeInterrupt) {
      return EFI_SUCCESS;
    }
  }
  return EFI_UNSUPPORTED;
}

EFI_STATUS EFIAPI Supported(EFI_DRIVER_BINDING_PROTOCOL *, EFI_HANDLE controller,
                            EFI_DEVICE_PATH_PROTOCOL *) {
  EFI_USB_IO_PROTOCOL *usbIo = nullptr;
  EFI_STATUS status = OpenUsbIo(controller, &usbIo);
  if (EFI_ERROR(status)) {
    return status;
  }
  EFI_USB_ENDPOINT_DESCRIPTOR endpoint = {};
  status = FindEndpoint(usbIo, &endpoint);
  CloseUsbIo(controller);
  return status;
}

/// Makes the tablet of a controller whose USB interface is open.
EFI_STATUS MakeTablet(EFI_HANDLE controller, EFI_USB_IO_PROTOCOL *usbIo) {
  VOID *memory = nullptr;
  EFI_STATUS status = gBS->AllocatePool(EfiBootServicesData, sizeof(Tablet), &memory);
  if (EFI_ERROR(status)) {
    return status;
  }
  ZeroMem(memory, sizeof(Tablet));
  Tablet *tablet = static_cast<Tablet *>(memory);
  tablet->UsbIo = usbIo;
  status = FindEndpoint(usbIo, &tablet->Endpoint);
  if (!EFI_ERROR(status)) {
    status = StartTablet(tablet);
  }
  if (EFI_ERROR(status)) {
    gBS->FreePool(tablet);
    return status;
  }
  status = gBS->InstallProtocolInterface(&controller, &gEfiAbsolutePointerProtocolGuid,
                                         EFI_NATIVE_INTERFACE, &tablet->Pointer);
  if (EFI_ERROR(status)) {
    StopTablet(tablet);
    gBS->FreePool(tablet);
  }
  return status;
}

EFI_STATUS EFIAPI Start(EFI_DRIVER_BINDING_PROTOCOL *, EFI_HANDLE controller,
                        EFI_DEVICE_PATH_PROTOCOL *) {
  EFI_USB_IO_PROTOCOL *usbIo = nullptr;
  EFI_STATUS status = OpenUsbIo(controller, &usbIo);
  if (EFI_ERROR(status)) {
    return status;
  }
  status = MakeTablet(controller, usbIo);
  if (EFI_ERROR(status)) {
    CloseUsbIo(controller);
  }
  return status;
}

EFI_STATUS EFIAPI Stop(EFI_DRIVER_BINDING_PROTOCOL *, EFI_HANDLE controller, UINTN, EFI_HANDLE *) {
  VOID *pointer = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(controller, &gEfiAbsolutePointerProtocolGuid, &pointer);
  if (EFI_ERROR(status)) {
    return EFI_DEVICE_ERROR;
  }
  status = gBS->UninstallProtocolInterface(controller, &gEfiAbsolutePointerProtocolGuid, pointer);
  if (EFI_ERROR(status)) {
    return status;
  }
  StopTablet(static_cast<Tablet *>(pointer));
  gBS->FreePool(pointer);
  CloseUsbIo(controller);
  return EFI_SUCCESS;
}

}  // namespace

extern "C" EFI_STATUS EFIAPI UsbTabletEntryPoint(EFI_HANDLE image, EFI_SYSTEM_TABLE *systemTable) {
  gBinding.Supported = Supported;
  gBinding.Start = Start;
  gBinding.Stop = Stop;
  gBinding.Version = 1;
  return EfiLibInstallDriverBinding(image, systemTable, &gBinding, image);
}
