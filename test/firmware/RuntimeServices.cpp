#include "test/firmware/ServiceTables.h"

namespace fake {

namespace {

VariableStore &Variables() { return Firmware::Current().Variables; }

EFI_STATUS EFIAPI GetTime(EFI_TIME *time, EFI_TIME_CAPABILITIES *capabilities) {
  Call call(Service::RtGetTime, nullptr);
  return call.Run([&]() -> EFI_STATUS {
    if (time == nullptr) {
      return EFI_INVALID_PARAMETER;
    }
    *time = Firmware::Current().Clock.Date;
    if (capabilities != nullptr) {
      *capabilities = {1, 50000000, FALSE};
    }
    return EFI_SUCCESS;
  });
}

EFI_STATUS EFIAPI SetTime(EFI_TIME *time) {
  Call call(Service::RtSetTime, nullptr);
  return call.Run([&]() -> EFI_STATUS {
    if (time == nullptr || time->Month < 1 || time->Month > 12 || time->Hour > 23) {
      return EFI_INVALID_PARAMETER;
    }
    Firmware::Current().Clock.Date = *time;
    return EFI_SUCCESS;
  });
}

EFI_STATUS EFIAPI GetVariable(CHAR16 *name, EFI_GUID *vendor, UINT32 *attributes, UINTN *size,
                              VOID *data) {
  Call call(Service::RtGetVariable, nullptr, static_cast<const CHAR16 *>(name));
  return call.Run([&] { return Variables().Get(name, vendor, attributes, size, data); });
}

EFI_STATUS EFIAPI GetNextVariableName(UINTN *size, CHAR16 *name, EFI_GUID *vendor) {
  Call call(Service::RtGetNextVariableName, nullptr);
  return call.Run([&] { return Variables().Next(size, name, vendor); });
}

EFI_STATUS EFIAPI SetVariable(CHAR16 *name, EFI_GUID *vendor, UINT32 attributes, UINTN size,
                              VOID *data) {
  Call call(Service::RtSetVariable, nullptr, static_cast<const CHAR16 *>(name), attributes, size);
  return call.Run([&] { return Variables().Set(name, vendor, attributes, size, data); });
}

EFI_STATUS EFIAPI QueryVariableInfo(UINT32 attributes, UINT64 *most, UINT64 *left,
                                    UINT64 *largest) {
  Call call(Service::RtQueryVariableInfo, nullptr, attributes);
  return call.Run([&]() -> EFI_STATUS {
    if (most == nullptr || left == nullptr || largest == nullptr || attributes == 0) {
      return EFI_INVALID_PARAMETER;
    }
    *most = 256 * 1024;
    *left = 128 * 1024;
    *largest = 32 * 1024;
    return EFI_SUCCESS;
  });
}

VOID EFIAPI ResetSystem(EFI_RESET_TYPE, EFI_STATUS, UINTN, VOID *) {
  Call call(Service::RtUnprovided, nullptr, "ResetSystem");
  call.RunVoid([] { Firmware::Current().Problem("ResetSystem was called"); });
}

}  // namespace

void FillRuntimeServices(EFI_RUNTIME_SERVICES *table) {
  table->Hdr.Signature = EFI_RUNTIME_SERVICES_SIGNATURE;
  table->Hdr.Revision = EFI_RUNTIME_SERVICES_REVISION;
  table->Hdr.HeaderSize = sizeof *table;
  table->GetTime = &GetTime;
  table->SetTime = &SetTime;
  Unprovide<Service::RtGetWakeupTime>(table->GetWakeupTime);
  Unprovide<Service::RtSetWakeupTime>(table->SetWakeupTime);
  Unprovide<Service::RtUnprovided>(table->SetVirtualAddressMap);
  Unprovide<Service::RtUnprovided>(table->ConvertPointer);
  table->GetVariable = &GetVariable;
  table->GetNextVariableName = &GetNextVariableName;
  table->SetVariable = &SetVariable;
  Unprovide<Service::RtUnprovided>(table->GetNextHighMonotonicCount);
  table->ResetSystem = &ResetSystem;
  Unprovide<Service::RtUnprovided>(table->UpdateCapsule);
  Unprovide<Service::RtUnprovided>(table->QueryCapsuleCapabilities);
  table->QueryVariableInfo = &QueryVariableInfo;
}

}  // namespace fake
