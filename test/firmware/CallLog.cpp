#include "test/firmware/CallLog.h"

namespace fake {

namespace {

constexpr Service kQuietServices[] = {
    Service::RaiseTpl, Service::RestoreTpl, Service::AllocatePool,
    Service::FreePool, Service::CopyMem,    Service::SetMem,
};

}  // namespace

std::string ToText(const CallRecord &record) {
  std::string text = ServiceName(record.What);
  text += "(" + record.Args + ")";
  text += record.Returned ? " = " + StatusName(record.Status) : " ...";
  return text;
}

CallLog::CallLog() {
  recorded_.fill(true);
  for (Service service : kQuietServices) {
    Record(service, false);
  }
}

size_t CallLog::Begin(Service service, std::string args, EFI_TPL tpl) {
  records_.push_back({service, std::move(args), 0, false, tpl});
  return records_.size() - 1;
}

void CallLog::End(size_t index, EFI_STATUS status) {
  if (index < records_.size()) {
    records_[index].Status = status;
    records_[index].Returned = true;
  }
}

std::vector<CallRecord> CallLog::Of(std::initializer_list<Service> services) const {
  std::vector<CallRecord> chosen;
  for (const CallRecord &record : records_) {
    if (std::find(services.begin(), services.end(), record.What) != services.end()) {
      chosen.push_back(record);
    }
  }
  return chosen;
}

std::vector<std::string> CallLog::Lines(std::initializer_list<Service> services) const {
  std::vector<std::string> lines;
  for (const CallRecord &record : services.size() == 0 ? records_ : Of(services)) {
    lines.push_back(ToText(record));
  }
  return lines;
}

int CallLog::Find(std::string_view text, int from) const {
  for (size_t i = static_cast<size_t>(std::max(from, 0)); i < records_.size(); i++) {
    if (ToText(records_[i]).starts_with(text)) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

void CallLog::Clear() {
  records_.clear();
  counts_.fill(0);
}

}  // namespace fake
