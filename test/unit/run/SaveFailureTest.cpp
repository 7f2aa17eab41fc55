// A picture of the screen is saved while one call of a firmware service, or all calls from one on,
// fail: what the user is told is true, and nothing is left behind.

#include <gtest/gtest.h>

#include "test/unit/run/SaveCases.h"

namespace {

using fake::kForever;
using fake::Service;

struct Failure {
  Service What;
  std::vector<EFI_STATUS> Statuses;
  /// Of many calls of the same kind each so many-th is tried.
  uint64_t Step = 1;
};

const std::vector<Failure> kFiles = {
    {Service::FsOpenVolume, {EFI_NO_MEDIA, EFI_OUT_OF_RESOURCES}},
    {Service::FileOpen, {EFI_WRITE_PROTECTED, EFI_VOLUME_FULL, EFI_OUT_OF_RESOURCES}},
    {Service::FileWrite, {EFI_DEVICE_ERROR, EFI_WRITE_PROTECTED, EFI_VOLUME_FULL}},
    {Service::FileFlush, {EFI_DEVICE_ERROR, EFI_WRITE_PROTECTED}},
    {Service::FileGetInfo, {EFI_DEVICE_ERROR, EFI_NO_MEDIA}},
    {Service::FileClose, {EFI_DEVICE_ERROR}},
    {Service::RtGetTime, {EFI_DEVICE_ERROR}},
};

const std::vector<Failure> kDevices = {
    {Service::LocateHandleBuffer, {EFI_NOT_FOUND, EFI_OUT_OF_RESOURCES}},
    {Service::HandleProtocol, {EFI_UNSUPPORTED, EFI_ACCESS_DENIED}},
    {Service::GopBlt, {EFI_DEVICE_ERROR, EFI_INVALID_PARAMETER}},
    {Service::ConInReadKeyStroke, {EFI_DEVICE_ERROR}, 5},
    {Service::PointerGetState, {EFI_DEVICE_ERROR}, 5},
    {Service::AbsoluteGetState, {EFI_DEVICE_ERROR}, 5},
};

/// Cannot fail, or only for a caller that is mistaken; and the log, which these tests read.
constexpr Service kSure[] = {Service::FreePool,   Service::RaiseTpl, Service::RestoreTpl,
                             Service::CopyMem,    Service::SetMem,   Service::HostDebugPrint,
                             Service::HostGetTime};

class SaveFailure : public SaveCases {
 protected:
  struct Case {
    Service What;
    EFI_STATUS Status;
    uint64_t Number;
    uint64_t Count;
  };
  void TryCases(const std::vector<Case> &cases) {
    TryEach(
        cases.size(),
        [&](SaveRun &, fake::Firmware &machine, size_t i) {
          machine.FailCall(cases[i].What, cases[i].Number, cases[i].Status, cases[i].Count);
        },
        [&](size_t i) {
          return std::string(ServiceName(cases[i].What)) + " call " +
                 std::to_string(cases[i].Number) + " " + fake::StatusName(cases[i].Status) +
                 (cases[i].Count == kForever ? " and on" : "");
        });
  }
  void TryFailures(const std::vector<Failure> &failures) {
    std::vector<Case> cases;
    for (const Failure &failure : failures) {
      EXPECT_GT(CallsOf(failure.What), 0u) << ServiceName(failure.What);
      for (EFI_STATUS status : failure.Statuses) {
        for (uint64_t n = 1; n <= CallsOf(failure.What); n += failure.Step) {
          cases.push_back({failure.What, status, n, 1});
          cases.push_back({failure.What, status, n, kForever});
        }
      }
    }
    TryCases(cases);
  }
  void TryAllocations(uint64_t count, size_t step) {
    std::vector<Case> cases;
    for (size_t i = 0; i < Expected->AllocationCount; i += step) {
      cases.push_back(
          {Service::AllocatePool, EFI_OUT_OF_RESOURCES, Expected->Allocations[i], count});
    }
    TryCases(cases);
  }
};

TEST_F(SaveFailure, FilesFail) { TryFailures(kFiles); }
TEST_F(SaveFailure, DevicesFail) { TryFailures(kDevices); }
TEST_F(SaveFailure, OneAllocationFails) { TryAllocations(1, 1); }
TEST_F(SaveFailure, AllFurtherAllocationsFail) { TryAllocations(kForever, 5); }

TEST_F(SaveFailure, EveryServiceThatCanFailIsTried) {
  std::set<Service> known(std::begin(kSure), std::end(kSure));
  known.insert(Service::AllocatePool);
  for (const auto *failures : {&kFiles, &kDevices}) {
    for (const Failure &failure : *failures) {
      known.insert(failure.What);
    }
  }
  for (size_t i = 0; i < fake::kServiceCount; i++) {
    auto service = static_cast<Service>(i);
    EXPECT_TRUE(CallsOf(service) == 0 || known.contains(service)) << ServiceName(service);
  }
}

}  // namespace
