#include "tool/view/Statuses.h"

#include "host/portable/StatusSource.h"
#include "test/firmware/Text.h"

namespace board_view {

namespace {

/// A slot of the protocol is a plain function.
std::map<std::string, EFI_STATUS> gStatuses;

EFI_STATUS EFIAPI Answer(OBV_PROTOCOL *host, CHAR16 *name, UINT32 type, UINTN capacity,
                         UINT64 *count, OBV_COMPONENT_INFO *infos) {
  EFI_STATUS status = obv_host::QueryStatus(reinterpret_cast<obv_host::Host *>(host), name, type,
                                            capacity, count, infos);
  auto chosen = gStatuses.find(fake::ToAscii(name));
  return chosen == gStatuses.end() ? status : chosen->second;
}

}  // namespace

void ChooseStatuses(obv_host::Host *host, const std::map<std::string, EFI_STATUS> &statuses) {
  gStatuses = statuses;
  host->Protocol.QueryComponentStatus = Answer;
}

}  // namespace board_view
