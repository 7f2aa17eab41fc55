#include "test/contract/Contract.h"

namespace contract {

namespace {

EFI_GUID gUnknown = {0x5F1C2B04, 0x3A77, 0x4E0B, {0x91, 0x0D, 0x6B, 0xF3, 0x52, 0x18, 0xC7, 0xA1}};
EFI_GUID gOurs = {0x2D9A0E61, 0x84C3, 0x4D2F, {0xB6, 0x55, 0x1E, 0x70, 0x9C, 0x43, 0xDA, 0x08}};

UINT8 gFirst, gSecond;

EFI_STATUS Install(EFI_HANDLE *handle, void *interface) {
  return gBS->InstallProtocolInterface(handle, &gOurs, EFI_NATIVE_INTERFACE, interface);
}

void EFIAPI Count(EFI_EVENT, void *context) { ++*static_cast<UINT64 *>(context); }

UINT64 HandleCount(EFI_GUID *guid) {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  if (EFI_ERROR(gBS->LocateHandleBuffer(ByProtocol, guid, nullptr, &count, &handles))) {
    return 0;
  }
  gBS->FreePool(handles);
  return count;
}

void AskForHandles(const Report &report, EFI_HANDLE first, EFI_HANDLE second) {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  Say(report, "locate the handles of a protocol",
      gBS->LocateHandleBuffer(ByProtocol, &gOurs, nullptr, &count, &handles));
  SayNumber(report, "handles", count);
  if (count == 2) {
    bool inOrder = handles[0] == first && handles[1] == second;
    SayNumber(report, "in the order of installation", inOrder ? 1 : 0);
    gBS->FreePool(handles);
  }
  void *interface = nullptr;
  Say(report, "locate a protocol", gBS->LocateProtocol(&gOurs, nullptr, &interface));
  SayNumber(report, "it is the first one", interface == &gFirst ? 1 : 0);
}

void AskForOnesThatAreNotThere(const Report &report, EFI_HANDLE handle) {
  UINTN count = 7;
  EFI_HANDLE *handles = nullptr;
  void *interface = nullptr;
  Say(report, "locate the handles of an unknown protocol",
      gBS->LocateHandleBuffer(ByProtocol, &gUnknown, nullptr, &count, &handles));
  SayNumber(report, "handles", count);
  Say(report, "locate handles without a count",
      gBS->LocateHandleBuffer(ByProtocol, &gOurs, nullptr, nullptr, &handles));
  Say(report, "locate handles without a protocol",
      gBS->LocateHandleBuffer(ByProtocol, nullptr, nullptr, &count, &handles));
  Say(report, "locate an unknown protocol", gBS->LocateProtocol(&gUnknown, nullptr, &interface));
  Say(report, "locate a protocol to nowhere", gBS->LocateProtocol(&gOurs, nullptr, nullptr));
  Say(report, "an unknown protocol of a handle",
      gBS->HandleProtocol(handle, &gUnknown, &interface));
  Say(report, "a protocol of no handle", gBS->HandleProtocol(nullptr, &gOurs, &interface));
  Say(report, "no protocol of a handle", gBS->HandleProtocol(handle, nullptr, &interface));
  Say(report, "a protocol of a handle to nowhere", gBS->HandleProtocol(handle, &gOurs, nullptr));
}

}  // namespace

void AskAboutProtocols(const Report &report) {
  EFI_HANDLE first = nullptr, second = nullptr;
  Say(report, "install a protocol on a new handle", Install(&first, &gFirst));
  Say(report, "install it once more", Install(&first, &gSecond));
  Say(report, "install it on another handle", Install(&second, &gSecond));
  AskForHandles(report, first, second);
  void *interface = nullptr;
  Say(report, "the protocol of a handle", gBS->HandleProtocol(second, &gOurs, &interface));
  SayNumber(report, "it is the handle's", interface == &gSecond ? 1 : 0);
  AskForOnesThatAreNotThere(report, first);
  Say(report, "uninstall another interface",
      gBS->UninstallProtocolInterface(first, &gOurs, &gSecond));
  Say(report, "uninstall it", gBS->UninstallProtocolInterface(first, &gOurs, &gFirst));
  SayNumber(report, "handles left", HandleCount(&gOurs));
  Say(report, "ask the handle that is gone", gBS->HandleProtocol(first, &gOurs, &interface));
  Say(report, "uninstall the other", gBS->UninstallProtocolInterface(second, &gOurs, &gSecond));
}

void AskAboutNotifications(const Report &report) {
  EFI_HANDLE before = nullptr, after = nullptr;
  Install(&before, &gFirst);
  UINT64 times = 0;
  EFI_EVENT event = nullptr;
  gBS->CreateEvent(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, Count, &times, &event);
  void *registration = nullptr;
  Say(report, "notify of no protocol", gBS->RegisterProtocolNotify(nullptr, event, &registration));
  Say(report, "notify through no event",
      gBS->RegisterProtocolNotify(&gOurs, nullptr, &registration));
  Say(report, "notify without a registration", gBS->RegisterProtocolNotify(&gOurs, event, nullptr));
  Say(report, "notify of a protocol", gBS->RegisterProtocolNotify(&gOurs, event, &registration));
  SayNumber(report, "notifications for one that was there", times);
  Install(&after, &gSecond);
  SayNumber(report, "notifications after an installation", times);
  gBS->ReinstallProtocolInterface(after, &gOurs, &gSecond, &gSecond);
  SayNumber(report, "notifications after a reinstallation", times);
  gBS->CloseEvent(event);
  gBS->UninstallProtocolInterface(after, &gOurs, &gSecond);
  Install(&after, &gSecond);
  SayNumber(report, "notifications once the event is closed", times);
  gBS->UninstallProtocolInterface(after, &gOurs, &gSecond);
  gBS->UninstallProtocolInterface(before, &gOurs, &gFirst);
}

}  // namespace contract
