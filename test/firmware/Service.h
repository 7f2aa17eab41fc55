// Names of everything that can be recorded, counted, scheduled upon and made to fail: firmware
// services, functions of the fake's protocols, and slots of the scriptable host.

#pragma once

#include "test/firmware/Edk2.h"

// X(enumerator, printed name, highest task priority level at which it may be called)
#define FAKE_SERVICE_LIST(X)                                                  \
  X(RaiseTpl, "RaiseTPL", TPL_HIGH_LEVEL)                                     \
  X(RestoreTpl, "RestoreTPL", TPL_HIGH_LEVEL)                                 \
  X(AllocatePages, "AllocatePages", TPL_NOTIFY)                               \
  X(FreePages, "FreePages", TPL_NOTIFY)                                       \
  X(GetMemoryMap, "GetMemoryMap", TPL_NOTIFY)                                 \
  X(AllocatePool, "AllocatePool", TPL_NOTIFY)                                 \
  X(FreePool, "FreePool", TPL_NOTIFY)                                         \
  X(CreateEvent, "CreateEvent", TPL_NOTIFY)                                   \
  X(CreateEventEx, "CreateEventEx", TPL_NOTIFY)                               \
  X(SetTimer, "SetTimer", TPL_NOTIFY)                                         \
  X(WaitForEvent, "WaitForEvent", TPL_APPLICATION)                            \
  X(SignalEvent, "SignalEvent", TPL_HIGH_LEVEL)                               \
  X(CloseEvent, "CloseEvent", TPL_NOTIFY)                                     \
  X(CheckEvent, "CheckEvent", TPL_NOTIFY)                                     \
  X(InstallProtocolInterface, "InstallProtocolInterface", TPL_NOTIFY)         \
  X(ReinstallProtocolInterface, "ReinstallProtocolInterface", TPL_NOTIFY)     \
  X(UninstallProtocolInterface, "UninstallProtocolInterface", TPL_NOTIFY)     \
  X(InstallMultiple, "InstallMultipleProtocolInterfaces", TPL_NOTIFY)         \
  X(UninstallMultiple, "UninstallMultipleProtocolInterfaces", TPL_NOTIFY)     \
  X(HandleProtocol, "HandleProtocol", TPL_NOTIFY)                             \
  X(OpenProtocol, "OpenProtocol", TPL_NOTIFY)                                 \
  X(CloseProtocol, "CloseProtocol", TPL_NOTIFY)                               \
  X(OpenProtocolInformation, "OpenProtocolInformation", TPL_NOTIFY)           \
  X(ProtocolsPerHandle, "ProtocolsPerHandle", TPL_NOTIFY)                     \
  X(RegisterProtocolNotify, "RegisterProtocolNotify", TPL_NOTIFY)             \
  X(LocateHandle, "LocateHandle", TPL_NOTIFY)                                 \
  X(LocateHandleBuffer, "LocateHandleBuffer", TPL_NOTIFY)                     \
  X(LocateDevicePath, "LocateDevicePath", TPL_NOTIFY)                         \
  X(LocateProtocol, "LocateProtocol", TPL_NOTIFY)                             \
  X(InstallConfigurationTable, "InstallConfigurationTable", TPL_NOTIFY)       \
  X(LoadImage, "LoadImage", TPL_APPLICATION)                                  \
  X(StartImage, "StartImage", TPL_APPLICATION)                                \
  X(Exit, "Exit", TPL_CALLBACK)                                               \
  X(UnloadImage, "UnloadImage", TPL_APPLICATION)                              \
  X(ExitBootServices, "ExitBootServices", TPL_APPLICATION)                    \
  X(GetNextMonotonicCount, "GetNextMonotonicCount", TPL_CALLBACK)             \
  X(Stall, "Stall", TPL_HIGH_LEVEL)                                           \
  X(SetWatchdogTimer, "SetWatchdogTimer", TPL_CALLBACK)                       \
  X(ConnectController, "ConnectController", TPL_APPLICATION)                  \
  X(DisconnectController, "DisconnectController", TPL_APPLICATION)            \
  X(CalculateCrc32, "CalculateCrc32", TPL_HIGH_LEVEL)                         \
  X(CopyMem, "CopyMem", TPL_HIGH_LEVEL)                                       \
  X(SetMem, "SetMem", TPL_HIGH_LEVEL)                                         \
  X(RtGetTime, "RT.GetTime", TPL_CALLBACK)                                    \
  X(RtSetTime, "RT.SetTime", TPL_CALLBACK)                                    \
  X(RtGetWakeupTime, "RT.GetWakeupTime", TPL_CALLBACK)                        \
  X(RtSetWakeupTime, "RT.SetWakeupTime", TPL_CALLBACK)                        \
  X(RtGetVariable, "RT.GetVariable", TPL_CALLBACK)                            \
  X(RtGetNextVariableName, "RT.GetNextVariableName", TPL_CALLBACK)            \
  X(RtSetVariable, "RT.SetVariable", TPL_CALLBACK)                            \
  X(RtQueryVariableInfo, "RT.QueryVariableInfo", TPL_CALLBACK)                \
  X(RtUnprovided, "RT.(unprovided)", TPL_HIGH_LEVEL)                          \
  X(GopQueryMode, "Gop.QueryMode", TPL_NOTIFY)                                \
  X(GopSetMode, "Gop.SetMode", TPL_NOTIFY)                                    \
  X(GopBlt, "Gop.Blt", TPL_NOTIFY)                                            \
  X(ConInReset, "ConIn.Reset", TPL_APPLICATION)                               \
  X(ConInReadKeyStroke, "ConIn.ReadKeyStroke", TPL_APPLICATION)               \
  X(ConOutCall, "ConOut", TPL_NOTIFY)                                         \
  X(PointerReset, "SimplePointer.Reset", TPL_NOTIFY)                          \
  X(PointerGetState, "SimplePointer.GetState", TPL_NOTIFY)                    \
  X(AbsoluteReset, "AbsolutePointer.Reset", TPL_NOTIFY)                       \
  X(AbsoluteGetState, "AbsolutePointer.GetState", TPL_NOTIFY)                 \
  X(FsOpenVolume, "FileSystem.OpenVolume", TPL_CALLBACK)                      \
  X(FileOpen, "File.Open", TPL_CALLBACK)                                      \
  X(FileClose, "File.Close", TPL_CALLBACK)                                    \
  X(FileDelete, "File.Delete", TPL_CALLBACK)                                  \
  X(FileRead, "File.Read", TPL_CALLBACK)                                      \
  X(FileWrite, "File.Write", TPL_CALLBACK)                                    \
  X(FileGetPosition, "File.GetPosition", TPL_CALLBACK)                        \
  X(FileSetPosition, "File.SetPosition", TPL_CALLBACK)                        \
  X(FileGetInfo, "File.GetInfo", TPL_CALLBACK)                                \
  X(FileSetInfo, "File.SetInfo", TPL_CALLBACK)                                \
  X(FileFlush, "File.Flush", TPL_CALLBACK)                                    \
  X(HiiNewPackageList, "Hii.NewPackageList", TPL_NOTIFY)                      \
  X(HiiRemovePackageList, "Hii.RemovePackageList", TPL_NOTIFY)                \
  X(HiiUpdatePackageList, "Hii.UpdatePackageList", TPL_NOTIFY)                \
  X(HiiListPackageLists, "Hii.ListPackageLists", TPL_NOTIFY)                  \
  X(HiiExportPackageLists, "Hii.ExportPackageLists", TPL_NOTIFY)              \
  X(HiiGetPackageListHandle, "Hii.GetPackageListHandle", TPL_NOTIFY)          \
  X(HiiUnprovided, "Hii.(unprovided)", TPL_NOTIFY)                            \
  X(HiiNewString, "HiiString.NewString", TPL_NOTIFY)                          \
  X(HiiGetString, "HiiString.GetString", TPL_NOTIFY)                          \
  X(HiiSetString, "HiiString.SetString", TPL_NOTIFY)                          \
  X(HiiGetLanguages, "HiiString.GetLanguages", TPL_NOTIFY)                    \
  X(HiiGetSecondaryLanguages, "HiiString.GetSecondaryLanguages", TPL_NOTIFY)  \
  X(HostGetTime, "Host.GetTime", TPL_NOTIFY)                                  \
  X(HostParseComponents, "Host.ParseComponents", TPL_NOTIFY)                  \
  X(HostFinishParse, "Host.FinishParse", TPL_NOTIFY)                          \
  X(HostGetResourceData, "Host.GetResourceData", TPL_NOTIFY)                  \
  X(HostGetFontData, "Host.GetFontData", TPL_NOTIFY)                          \
  X(HostGetGop, "Host.GetGop", TPL_NOTIFY)                                    \
  X(HostQueryComponentStatus, "Host.QueryComponentStatus", TPL_NOTIFY)        \
  X(HostDebugPrint, "Host.DebugPrint", TPL_HIGH_LEVEL)                        \
  X(HostFindBiosOption, "Host.FindBiosOption", TPL_APPLICATION)               \
  X(HostAfterAppLife, "Host.AfterAppLife", TPL_APPLICATION)                   \
  X(HostUnsupportedResolution, "Host.UnsupportedResolution", TPL_APPLICATION) \
  X(HostUnusedSlot, "Host.(unused slot)", TPL_HIGH_LEVEL)                     \
  X(SetupGetEventData, "Setup.GetEventData", TPL_NOTIFY)                      \
  X(SetupEndEventData, "Setup.EndEventData", TPL_NOTIFY)

namespace fake {

enum class Service {
#define FAKE_SERVICE_ENUM(name, text, tpl) name,
  FAKE_SERVICE_LIST(FAKE_SERVICE_ENUM)
#undef FAKE_SERVICE_ENUM
      kCount
};

inline constexpr size_t kServiceCount = static_cast<size_t>(Service::kCount);

/// Printed name, for example "Gop.SetMode".
const char *ServiceName(Service service);

/// Service of a printed or enumerator name; nothing when unknown.
std::optional<Service> ServiceByName(std::string_view name);

/// Highest task priority level at which the UEFI specification allows the call.
EFI_TPL ServiceHighestTpl(Service service);

/// "Success", "Not Found", ... for the statuses of the UEFI specification, else hexadecimal.
std::string StatusName(EFI_STATUS status);

/// Name of a protocol or other GUID known to the fake, else its registry form.
std::string GuidName(const EFI_GUID &guid);

/// Gives a GUID a name for printed records.
void NameGuid(const EFI_GUID &guid, std::string name);

}  // namespace fake
