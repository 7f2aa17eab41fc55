#include "test/firmware/FaultPlan.h"

#include <cstdio>
#include <cstdlib>

namespace fake {

void FaultPlan::Fail(Service service, uint64_t n, EFI_STATUS status, uint64_t count,
                     const void *instance) {
  failures_[service].push_back({status, n == 0 ? 0 : n - 1, count, instance});
}

void FaultPlan::Fail(std::string_view name, uint64_t n, EFI_STATUS status, uint64_t count,
                     const void *instance) {
  std::optional<Service> service = ServiceByName(name);
  if (!service) {
    std::fprintf(stderr, "FaultPlan: there is no service named '%.*s'\n",
                 static_cast<int>(name.size()), name.data());
    std::abort();
  }
  Fail(*service, n, status, count, instance);
}

void FaultPlan::At(Service service, uint64_t n, Action action) {
  actions_[service].push_back({n == 0 ? 0 : n - 1, false, std::move(action)});
}

void FaultPlan::AtEvery(Service service, Action action) {
  actions_[service].push_back({0, true, std::move(action)});
}

void FaultPlan::StopEvery(Service service) {
  std::erase_if(actions_[service], [](const Scheduled &scheduled) { return scheduled.Always; });
}

void FaultPlan::Clear() {
  failures_.clear();
  actions_.clear();
  Choose = nullptr;
}

std::vector<FaultPlan::Action> FaultPlan::Begin(Service service) {
  std::vector<Action> due;
  auto found = actions_.find(service);
  if (found == actions_.end()) {
    return due;
  }
  std::vector<Scheduled> &waiting = found->second;
  for (Scheduled &scheduled : waiting) {
    if (scheduled.Always) {
      due.push_back(scheduled.Run);
    } else if (scheduled.SkipCount-- == 0) {
      due.push_back(std::move(scheduled.Run));
      scheduled.Run = nullptr;
    }
  }
  std::erase_if(waiting, [](const Scheduled &scheduled) { return scheduled.Run == nullptr; });
  return due;
}

std::optional<EFI_STATUS> FaultPlan::Decide(Service service, const void *instance) {
  std::optional<EFI_STATUS> decision = Planned(service, instance);
  if (!decision && Choose) {
    decision = Choose(service, instance);
  }
  failed_ += decision ? 1 : 0;
  return decision;
}

std::optional<EFI_STATUS> FaultPlan::Planned(Service service, const void *instance) {
  auto found = failures_.find(service);
  if (found == failures_.end()) {
    return std::nullopt;
  }
  std::optional<EFI_STATUS> decision;
  for (Failure &failure : found->second) {
    if (failure.Instance != nullptr && failure.Instance != instance) {
      continue;
    }
    if (failure.SkipCount > 0) {
      failure.SkipCount--;
    } else if (failure.FailCount > 0) {
      failure.FailCount -= failure.FailCount == kForever ? 0 : 1;
      decision = decision.value_or(failure.Status);
    }
  }
  return decision;
}

}  // namespace fake
