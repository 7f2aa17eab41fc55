// Whole runs in which one call of a firmware service, or all calls from one on, fail with a
// status that the UEFI specification allows: they end by themselves, with nothing left behind.

#include <gtest/gtest.h>

#include <span>

#include "test/unit/run/FailureRun.h"

namespace {

using fake::kForever;
using fake::Service;

struct Failure {
  Service What;
  EFI_STATUS Status;
  /// Of many calls of the same kind each so many-th is tried.
  uint64_t Step = 1;
};

std::string Name(const Failure &failure) {
  return std::string(ServiceName(failure.What)) + " " + fake::StatusName(failure.Status);
}

constexpr Failure kHandles[] = {
    {Service::LocateProtocol, EFI_NOT_FOUND},
    {Service::LocateHandleBuffer, EFI_NOT_FOUND},
    {Service::LocateHandleBuffer, EFI_OUT_OF_RESOURCES},
    {Service::HandleProtocol, EFI_UNSUPPORTED},
    {Service::HandleProtocol, EFI_ACCESS_DENIED},
};

constexpr Failure kEvents[] = {
    {Service::CreateEvent, EFI_OUT_OF_RESOURCES},
    {Service::RegisterProtocolNotify, EFI_OUT_OF_RESOURCES},
    {Service::CloseEvent, EFI_INVALID_PARAMETER},
};

constexpr Failure kTexts[] = {
    {Service::RtGetVariable, EFI_NOT_FOUND, 4},
    {Service::RtGetVariable, EFI_DEVICE_ERROR, 4},
    {Service::HiiListPackageLists, EFI_NOT_FOUND},
    {Service::HiiListPackageLists, EFI_OUT_OF_RESOURCES},
    {Service::HiiGetLanguages, EFI_NOT_FOUND, 7},
    {Service::HiiGetString, EFI_NOT_FOUND, 7},
    {Service::HiiGetString, EFI_OUT_OF_RESOURCES, 7},
};

constexpr Failure kModes[] = {
    {Service::GopQueryMode, EFI_DEVICE_ERROR},
    {Service::GopQueryMode, EFI_INVALID_PARAMETER},
    {Service::GopSetMode, EFI_DEVICE_ERROR},
    {Service::GopSetMode, EFI_UNSUPPORTED},
};

constexpr Failure kTransfers[] = {
    {Service::GopBlt, EFI_DEVICE_ERROR},
    {Service::GopBlt, EFI_INVALID_PARAMETER},
};

constexpr Failure kHost[] = {
    {Service::HostGetResourceData, EFI_NOT_FOUND},
    {Service::HostParseComponents, EFI_OUT_OF_RESOURCES},
    {Service::HostFinishParse, EFI_DEVICE_ERROR},
    {Service::HostQueryComponentStatus, EFI_TIMEOUT},
    {Service::HostFindBiosOption, EFI_NOT_FOUND},
    {Service::HostAfterAppLife, EFI_ABORTED},
};

/// Called in every turn.
constexpr Failure kPolled[] = {
    {Service::ConInReadKeyStroke, EFI_DEVICE_ERROR, 5},
    {Service::PointerGetState, EFI_DEVICE_ERROR, 5},
    {Service::AbsoluteGetState, EFI_DEVICE_ERROR, 5},
};

int Visit(fake::Firmware &machine) { return FailureRun(machine).Run(); }

/// Each failure once and for ever, at each call of its service.
void TryAll(std::span<const Failure> failures) {
  uint64_t runs = 0;
  for (const Failure &failure : failures) {
    for (uint64_t count : {uint64_t{1}, kForever}) {
      fake::FailureLoop loop = {.What = failure.What, .Status = failure.Status, .Count = count};
      loop.Step = failure.Step;
      fake::FailureLoopResult result = RunFailureLoop(loop, Visit);
      EXPECT_EQ(result.Text(), "") << Name(failure);
      EXPECT_TRUE(result.Ended) << Name(failure);
      EXPECT_GT(result.Runs, 0u) << Name(failure);
      runs += result.Runs;
    }
  }
  std::printf("%llu runs\n", static_cast<unsigned long long>(runs));
}

TEST(ServiceFailure, HandlesCannotBeFoundOrOpened) { TryAll(kHandles); }
TEST(ServiceFailure, EventsCannotBeCreatedOrClosed) { TryAll(kEvents); }
TEST(ServiceFailure, TextsCannotBeRead) { TryAll(kTexts); }
TEST(ServiceFailure, ModesCannotBeQueriedOrSet) { TryAll(kModes); }
TEST(ServiceFailure, PixelsCannotBeTransferred) { TryAll(kTransfers); }
TEST(ServiceFailure, TheHostAnswersWithErrors) { TryAll(kHost); }
TEST(ServiceFailure, InputDevicesFail) { TryAll(kPolled); }

}  // namespace
