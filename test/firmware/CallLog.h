// One ordered list of every call that crossed a seam: firmware services, protocol functions and
// host slots, in the order in which they began.

#pragma once

#include "test/firmware/Service.h"

namespace fake {

struct CallRecord {
  Service What;
  std::string Args;       ///< Salient arguments, comma-separated.
  EFI_STATUS Status = 0;  ///< Zero for calls that return nothing.
  bool Returned = false;  ///< False while the call runs (and after it was left by a crash).
  EFI_TPL Tpl = 0;        ///< Task priority level of the caller.
};

/// "Gop.SetMode(gop0, 3) = Success"
std::string ToText(const CallRecord &record);

class CallLog {
 public:
  CallLog();

  /// Counts a call and, when its service is recorded, appends a record. Returns the record's
  /// index or kNone.
  static constexpr size_t kNone = ~size_t{0};
  size_t Begin(Service service, std::string args, EFI_TPL tpl);
  void End(size_t index, EFI_STATUS status);
  void Count(Service service) { counts_[static_cast<size_t>(service)]++; }
  bool Records(Service service) const { return all_ && recorded_[static_cast<size_t>(service)]; }

  /// Memory services and TPL changes are counted but not recorded unless asked for here.
  void Record(Service service, bool on) { recorded_[static_cast<size_t>(service)] = on; }
  /// Switches all recording off (benchmarks, soak runs) or on again; counting goes on.
  void RecordAll(bool on) { all_ = on; }

  uint64_t CountOf(Service service) const { return counts_[static_cast<size_t>(service)]; }
  const std::vector<CallRecord> &All() const { return records_; }
  /// Records of the given services only, in order.
  std::vector<CallRecord> Of(std::initializer_list<Service> services) const;
  /// Printed records of the given services; of all when the list is empty.
  std::vector<std::string> Lines(std::initializer_list<Service> services = {}) const;
  /// Index of the first record at or after `from` whose printed form starts with `text`; -1 when
  /// there is none.
  int Find(std::string_view text, int from = 0) const;
  /// Forgets the records and sets all counts to zero.
  void Clear();

 private:
  std::vector<CallRecord> records_;
  std::array<uint64_t, kServiceCount> counts_{};
  std::array<bool, kServiceCount> recorded_{};
  bool all_ = true;
};

}  // namespace fake
