#include "test/firmware/Service.h"

#include <cstdio>

#include "test/firmware/Guids.h"

namespace fake {

namespace {

struct ServiceEntry {
  const char *Enumerator;
  const char *Name;
  EFI_TPL HighestTpl;
};

constexpr ServiceEntry kServices[] = {
#define FAKE_SERVICE_ENTRY(name, text, tpl) {#name, text, tpl},
    FAKE_SERVICE_LIST(FAKE_SERVICE_ENTRY)
#undef FAKE_SERVICE_ENTRY
};

struct StatusEntry {
  EFI_STATUS Status;
  const char *Name;
};

constexpr StatusEntry kStatuses[] = {
    {EFI_SUCCESS, "Success"},
    {EFI_LOAD_ERROR, "Load Error"},
    {EFI_INVALID_PARAMETER, "Invalid Parameter"},
    {EFI_UNSUPPORTED, "Unsupported"},
    {EFI_BAD_BUFFER_SIZE, "Bad Buffer Size"},
    {EFI_BUFFER_TOO_SMALL, "Buffer Too Small"},
    {EFI_NOT_READY, "Not Ready"},
    {EFI_DEVICE_ERROR, "Device Error"},
    {EFI_WRITE_PROTECTED, "Write Protected"},
    {EFI_OUT_OF_RESOURCES, "Out of Resources"},
    {EFI_VOLUME_CORRUPTED, "Volume Corrupt"},
    {EFI_VOLUME_FULL, "Volume Full"},
    {EFI_NO_MEDIA, "No Media"},
    {EFI_MEDIA_CHANGED, "Media changed"},
    {EFI_NOT_FOUND, "Not Found"},
    {EFI_ACCESS_DENIED, "Access Denied"},
    {EFI_NO_RESPONSE, "No Response"},
    {EFI_NO_MAPPING, "No mapping"},
    {EFI_TIMEOUT, "Time out"},
    {EFI_NOT_STARTED, "Not started"},
    {EFI_ALREADY_STARTED, "Already started"},
    {EFI_ABORTED, "Aborted"},
    {EFI_INVALID_LANGUAGE, "Invalid Language"},
    {EFI_SECURITY_VIOLATION, "Security Violation"},
    {EFI_WARN_DELETE_FAILURE, "Warning Delete Failure"},
};

std::map<std::string, std::string> &GivenNames() {
  static std::map<std::string, std::string> names;
  return names;
}

std::string RegistryForm(const EFI_GUID &guid) {
  char text[40];
  std::snprintf(text, sizeof text, "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", guid.Data1,
                guid.Data2, guid.Data3, guid.Data4[0], guid.Data4[1], guid.Data4[2], guid.Data4[3],
                guid.Data4[4], guid.Data4[5], guid.Data4[6], guid.Data4[7]);
  return text;
}

}  // namespace

const char *ServiceName(Service service) { return kServices[static_cast<size_t>(service)].Name; }

std::optional<Service> ServiceByName(std::string_view name) {
  for (size_t i = 0; i < kServiceCount; i++) {
    if (name == kServices[i].Name || name == kServices[i].Enumerator) {
      return static_cast<Service>(i);
    }
  }
  return std::nullopt;
}

EFI_TPL ServiceHighestTpl(Service service) {
  return kServices[static_cast<size_t>(service)].HighestTpl;
}

std::string StatusName(EFI_STATUS status) {
  for (const StatusEntry &entry : kStatuses) {
    if (entry.Status == status) {
      return entry.Name;
    }
  }
  char text[20];
  std::snprintf(text, sizeof text, "%016llX", static_cast<unsigned long long>(status));
  return text;
}

std::string GuidName(const EFI_GUID &guid) {
  if (const char *known = KnownGuidName(guid)) {
    return known;
  }
  std::string text = RegistryForm(guid);
  auto given = GivenNames().find(text);
  return given == GivenNames().end() ? text : given->second;
}

void NameGuid(const EFI_GUID &guid, std::string name) {
  GivenNames()[RegistryForm(guid)] = std::move(name);
}

}  // namespace fake
