// Boot services for events, timers, task priority levels and time.

#include "test/firmware/ServiceTables.h"

namespace fake {

namespace {

EventQueue &Events() { return Firmware::Current().Events; }

EFI_TPL EFIAPI RaiseTpl(EFI_TPL tpl) {
  Call call(Service::RaiseTpl, nullptr, tpl);
  EFI_TPL old = 0;
  call.RunVoid([&] { old = Events().Raise(tpl); });
  return old;
}

VOID EFIAPI RestoreTpl(EFI_TPL tpl) {
  Call call(Service::RestoreTpl, nullptr, tpl);
  call.RunVoid([&] { Events().Restore(tpl); });
}

EFI_STATUS EFIAPI CreateEvent(UINT32 type, EFI_TPL tpl, EFI_EVENT_NOTIFY notify, VOID *context,
                              EFI_EVENT *event) {
  Call call(Service::CreateEvent, nullptr, type, tpl);
  return call.Run([&] { return Events().Create(type, tpl, notify, context, nullptr, event); });
}

EFI_STATUS EFIAPI CreateEventEx(UINT32 type, EFI_TPL tpl, EFI_EVENT_NOTIFY notify,
                                CONST VOID *context, CONST EFI_GUID *group, EFI_EVENT *event) {
  Call call(Service::CreateEventEx, nullptr, type, tpl, group);
  return call.Run([&] { return Events().Create(type, tpl, notify, context, group, event); });
}

EFI_STATUS EFIAPI SetTimer(EFI_EVENT event, EFI_TIMER_DELAY type, UINT64 ticks) {
  Call call(Service::SetTimer, nullptr, type, ticks);
  return call.Run([&] { return Events().SetTimer(event, type, ticks); });
}

EFI_STATUS EFIAPI WaitForEvent(UINTN count, EFI_EVENT *events, UINTN *index) {
  Call call(Service::WaitForEvent, nullptr, count);
  return call.Run([&] { return Events().Wait(count, events, index); });
}

EFI_STATUS EFIAPI SignalEvent(EFI_EVENT event) {
  Call call(Service::SignalEvent, nullptr);
  return call.Run([&] { return Events().Signal(event); });
}

EFI_STATUS EFIAPI CloseEvent(EFI_EVENT event) {
  Call call(Service::CloseEvent, nullptr, event == nullptr ? "null" : "event");
  return call.Run([&] {
    EFI_STATUS status = Events().Close(event);
    if (status == EFI_SUCCESS) {
      Firmware::Current().Handles.DropEvent(event);
    }
    return status;
  });
}

EFI_STATUS EFIAPI CheckEvent(EFI_EVENT event) {
  Call call(Service::CheckEvent, nullptr);
  return call.Run([&] { return Events().Check(event); });
}

EFI_STATUS EFIAPI Stall(UINTN microseconds) {
  Call call(Service::Stall, nullptr, microseconds);
  return call.Run([&]() -> EFI_STATUS {
    Firmware::Current().Clock.AdvanceTicks(microseconds * 10);
    return EFI_SUCCESS;
  });
}

EFI_STATUS EFIAPI SetWatchdogTimer(UINTN seconds, UINT64 code, UINTN, CHAR16 *) {
  Call call(Service::SetWatchdogTimer, nullptr, seconds, code);
  return call.Run([]() -> EFI_STATUS { return EFI_SUCCESS; });
}

EFI_STATUS EFIAPI GetNextMonotonicCount(UINT64 *count) {
  Call call(Service::GetNextMonotonicCount, nullptr);
  return call.Run([&]() -> EFI_STATUS {
    if (count == nullptr) {
      return EFI_INVALID_PARAMETER;
    }
    *count = Firmware::Current().Calls.CountOf(Service::GetNextMonotonicCount);
    return EFI_SUCCESS;
  });
}

}  // namespace

void FillEventServices(EFI_BOOT_SERVICES *table) {
  table->RaiseTPL = &RaiseTpl;
  table->RestoreTPL = &RestoreTpl;
  table->CreateEvent = &CreateEvent;
  table->CreateEventEx = &CreateEventEx;
  table->SetTimer = &SetTimer;
  table->WaitForEvent = &WaitForEvent;
  table->SignalEvent = &SignalEvent;
  table->CloseEvent = &CloseEvent;
  table->CheckEvent = &CheckEvent;
  table->Stall = &Stall;
  table->SetWatchdogTimer = &SetWatchdogTimer;
  table->GetNextMonotonicCount = &GetNextMonotonicCount;
}

}  // namespace fake
