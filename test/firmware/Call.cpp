#include "test/firmware/Call.h"

#include "test/firmware/FakeFirmware.h"

namespace fake {

std::string ArgText(const EFI_GUID *guid) { return guid == nullptr ? "null" : GuidName(*guid); }
std::string ArgText(const std::string &text) { return text; }
std::string ArgText(const char *text) { return text == nullptr ? "null" : text; }
std::string ArgText(const CHAR16 *text) { return ToAscii(text); }
std::string ArgText(uint64_t number) { return std::to_string(number); }
std::string ArgText(int64_t number) { return std::to_string(number); }

bool Call::Recorded(Service service) { return Firmware::Current().Calls.Records(service); }

void Call::Begin(const void *instance, std::string args) {
  Firmware &firmware = Firmware::Current();
  EFI_TPL tpl = firmware.Events.CurrentTpl();
  firmware.Calls.Count(service_);
  if (firmware.Calls.Records(service_)) {
    record_ = firmware.Calls.Begin(service_, std::move(args), tpl);
  }
  if (tpl > ServiceHighestTpl(service_)) {
    firmware.Problem(std::string(ServiceName(service_)) + " called at task priority level " +
                     std::to_string(tpl));
  }
  for (const FaultPlan::Action &action : firmware.Faults.Begin(service_)) {
    action();
  }
  firmware.Events.Dispatch();
  planned_ = firmware.Faults.Decide(service_, instance);
}

void Call::End(EFI_STATUS status) {
  if (record_ != CallLog::kNone) {
    Firmware::Current().Calls.End(record_, status);
  }
}

}  // namespace fake
