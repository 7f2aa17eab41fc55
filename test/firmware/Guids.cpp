#include "test/firmware/Guids.h"

namespace fake {

namespace {

struct NamedGuid {
  EFI_GUID Guid;
  const char *Name;
};

constexpr NamedGuid kNamedGuids[] = {
    {kGraphicsOutputGuid, "GraphicsOutput"},
    {kDevicePathGuid, "DevicePath"},
    {kSimplePointerGuid, "SimplePointer"},
    {kAbsolutePointerGuid, "AbsolutePointer"},
    {kSimpleTextInGuid, "SimpleTextInput"},
    {kSimpleTextOutGuid, "SimpleTextOutput"},
    {kSimpleFileSystemGuid, "SimpleFileSystem"},
    {kHiiStringGuid, "HiiString"},
    {kHiiDatabaseGuid, "HiiDatabase"},
    {kHiiConfigRoutingGuid, "HiiConfigRouting"},
    {kHiiFontGuid, "HiiFont"},
    {kHiiImageGuid, "HiiImage"},
    {kHobListGuid, "HobList"},
    {kGlobalVariableGuid, "GlobalVariable"},
    {kFileInfoGuid, "FileInfo"},
    {kFileSystemInfoGuid, "FileSystemInfo"},
    {kVolumeLabelGuid, "VolumeLabel"},
    {kObvProtocolGuid, "Obv"},
    {kObvStringListGuid, "ObvStrings"},
    {kSetupEventHandlerGuid, "SetupEventHandler"},
};

}  // namespace

bool SameGuid(const EFI_GUID &a, const EFI_GUID &b) {
  return std::memcmp(&a, &b, sizeof(EFI_GUID)) == 0;
}

const char *KnownGuidName(const EFI_GUID &guid) {
  for (const NamedGuid &named : kNamedGuids) {
    if (SameGuid(named.Guid, guid)) {
      return named.Name;
    }
  }
  return nullptr;
}

}  // namespace fake
