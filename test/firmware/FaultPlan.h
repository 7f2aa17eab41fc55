// Which calls fail, and what else happens at the k-th call of a service.

#pragma once

#include "test/firmware/Service.h"

namespace fake {

/// As a count: every call from the n-th on.
inline constexpr uint64_t kForever = ~uint64_t{0};

class FaultPlan {
 public:
  using Action = std::function<void()>;

  /// Makes calls n, n + 1, ... n + count - 1 of a service return `status` without effect. The
  /// next call is number 1. With `instance` (a GraphicsOutput, Volume, ...) only calls on that
  /// object are counted.
  void Fail(Service service, uint64_t n, EFI_STATUS status, uint64_t count = 1,
            const void *instance = nullptr);
  /// As Fail, for a service that is named in text; an unknown name is a test's mistake and ends
  /// the program.
  void Fail(std::string_view name, uint64_t n, EFI_STATUS status, uint64_t count = 1,
            const void *instance = nullptr);

  /// Asked about every call that no planned failure hits, when set; for fuzzers, whose input then
  /// decides call by call. The second argument is the instance.
  std::function<std::optional<EFI_STATUS>(Service, const void *)> Choose;

  /// Runs `action` once, when call n of the service begins (the next call is number 1), before
  /// the call takes effect. Events that it signals are notified at once if the TPL allows.
  void At(Service service, uint64_t n, Action action);
  /// Runs `action` at every call of the service.
  void AtEvery(Service service, Action action);
  /// Forgets the actions that AtEvery planned for the service.
  void StopEvery(Service service);

  /// Forgets all planned failures and actions, and Choose.
  void Clear();

  /// Whether, and how often, a call was made to fail.
  bool AnyFailed() const { return failed_ != 0; }
  uint64_t FailedCount() const { return failed_; }

  /// For the fake's own use: actions due at this call are moved out, then the planned status.
  std::vector<Action> Begin(Service service);
  std::optional<EFI_STATUS> Decide(Service service, const void *instance);

 private:
  std::optional<EFI_STATUS> Planned(Service service, const void *instance);
  struct Failure {
    EFI_STATUS Status;
    uint64_t SkipCount;
    uint64_t FailCount;
    const void *Instance;
  };
  struct Scheduled {
    uint64_t SkipCount;
    bool Always;
    Action Run;
  };
  std::map<Service, std::vector<Failure>> failures_;
  std::map<Service, std::vector<Scheduled>> actions_;
  uint64_t failed_ = 0;
};

}  // namespace fake
