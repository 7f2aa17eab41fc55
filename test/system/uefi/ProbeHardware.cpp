#include "ProbeHardware.h"

#include "ProbeHost.h"

namespace {

// The host's clock counts milliseconds.
constexpr UINT64 kQuestions = 100;
constexpr UINT64 kMicroseconds = 1000;

EFI_STATUS Ask(OBV_PROTOCOL *host, OBV_COMPONENT *component) {
  return host->QueryComponentStatus(host, component->Name, component->Type, OBV_INFO_CAPACITY,
                                    &component->InfoCount, component->Info);
}

void LogState(OBV_PROTOCOL *host, OBV_COMPONENT *component) {
  EFI_STATUS status = Ask(host, component);
  host->DebugPrint(OBV_LOG_INFO, "[Probe] state %S: %r\n", component->Name, status);
  for (UINTN i = 0; i < component->InfoCount; i++) {
    host->DebugPrint(OBV_LOG_INFO, "[Probe] line %S: %S\n", component->Info[i].Label,
                     component->Info[i].Value);
  }
}

UINT64 TimeOf(OBV_PROTOCOL *host, OBV_COMPONENT *component) {
  UINT64 start = host->GetTime(host);
  for (UINT64 i = 0; i < kQuestions; i++) {
    (void)Ask(host, component);
  }
  return (host->GetTime(host) - start) * kMicroseconds / kQuestions;
}

}  // namespace

EFI_STATUS LogStates() {
  OBV_PROTOCOL *host = FindHost();
  if (host == nullptr) {
    return EFI_NOT_FOUND;
  }
  OBV_COMPONENT *components = nullptr;
  EFI_STATUS status = ParseForSize(host, 1920, 1080, &components);
  if (EFI_ERROR(status)) {
    return status;
  }
  UINT64 slowest = 0;
  OBV_COMPONENT *slow = components;
  for (UINTN i = 0; i < host->SharedState->ComponentCount; i++) {
    LogState(host, &components[i]);
    UINT64 time = TimeOf(host, &components[i]);
    slow = time > slowest ? &components[i] : slow;
    slowest = time > slowest ? time : slowest;
  }
  host->DebugPrint(OBV_LOG_INFO, "[Probe] slowest %S: %ld us\n", slow->Name, slowest);
  return EFI_SUCCESS;
}
