#include <gtest/gtest.h>

#include "test/firmware/FakeFirmware.h"

namespace fake {
namespace {

// What the notifications of these tests write down.
std::vector<std::string> gNotes;

VOID EFIAPI Note(EFI_EVENT, VOID *context) { gNotes.push_back(static_cast<char *>(context)); }

VOID EFIAPI SignalFirst(EFI_EVENT event, VOID *context) {
  auto *events = static_cast<std::pair<int, EFI_EVENT> *>(context);
  if (++events->first == 2) {
    Firmware::Current().BootServices.SignalEvent(event);
  }
}

class FakeFirmwareEvent : public testing::Test {
 protected:
  FakeFirmwareEvent() { gNotes.clear(); }
  EFI_EVENT Create(UINT32 type, EFI_TPL tpl, const char *name) {
    EFI_EVENT event = nullptr;
    EXPECT_EQ(Services.CreateEvent(type, tpl, &Note, const_cast<char *>(name), &event),
              EFI_SUCCESS);
    return event;
  }
  using Notes = std::vector<std::string>;
  Firmware Machine;
  EFI_BOOT_SERVICES &Services = Machine.BootServices;
};

TEST_F(FakeFirmwareEvent, RefusesBadArguments) {
  EFI_EVENT event = nullptr;
  constexpr UINT32 kBoth = EVT_NOTIFY_SIGNAL | EVT_NOTIFY_WAIT;
  EXPECT_EQ(Services.CreateEvent(kBoth, TPL_CALLBACK, &Note, nullptr, &event),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.CreateEvent(EVT_NOTIFY_SIGNAL, TPL_APPLICATION, &Note, nullptr, &event),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.CreateEvent(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, nullptr, nullptr, &event),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.CreateEvent(0x1234, TPL_CALLBACK, nullptr, nullptr, &event),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.CreateEvent(0, TPL_CALLBACK, nullptr, nullptr, nullptr),
            EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.CloseEvent(nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Services.SignalEvent(&event), EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareEvent, NotifiesAtOnceFromTheApplicationLevel) {
  EFI_EVENT event = Create(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, "a");
  EXPECT_EQ(Services.SignalEvent(event), EFI_SUCCESS);
  EXPECT_EQ(gNotes, Notes{"a"});
  EXPECT_EQ(Services.SignalEvent(event), EFI_SUCCESS);
  EXPECT_EQ(gNotes.size(), 2u);
}

TEST_F(FakeFirmwareEvent, RaisedLevelHoldsNotificationsBack) {
  EFI_EVENT low = Create(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, "low");
  EFI_EVENT high = Create(EVT_NOTIFY_SIGNAL, TPL_NOTIFY, "high");
  EXPECT_EQ(Services.RaiseTPL(TPL_NOTIFY), TPL_APPLICATION);
  Services.SignalEvent(low);
  Services.SignalEvent(low);
  Services.SignalEvent(high);
  EXPECT_EQ(gNotes, Notes{});
  Services.RestoreTPL(TPL_CALLBACK);
  EXPECT_EQ(gNotes, Notes{"high"});
  Services.RestoreTPL(TPL_APPLICATION);
  EXPECT_EQ(gNotes, (Notes{"high", "low"}));
  EXPECT_EQ(Machine.ProblemsText(), "");
}

TEST_F(FakeFirmwareEvent, SameLevelNotifiesInOrderOfSignalling) {
  EFI_EVENT first = Create(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, "first");
  EFI_EVENT second = Create(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, "second");
  Services.RaiseTPL(TPL_CALLBACK);
  Services.SignalEvent(second);
  Services.SignalEvent(first);
  Services.RestoreTPL(TPL_APPLICATION);
  EXPECT_EQ(gNotes, (Notes{"second", "first"}));
}

TEST_F(FakeFirmwareEvent, WrongLevelChangesAreProblems) {
  Services.RaiseTPL(TPL_NOTIFY);
  Services.RaiseTPL(TPL_CALLBACK);
  EXPECT_EQ(Machine.Problems().size(), 1u);
  Services.RestoreTPL(TPL_APPLICATION);
  Services.RestoreTPL(TPL_CALLBACK);
  EXPECT_EQ(Machine.Problems().size(), 2u);
}

TEST_F(FakeFirmwareEvent, ServiceAboveItsLevelIsAProblem) {
  Services.RaiseTPL(TPL_CALLBACK);
  EFI_INPUT_KEY key;
  Machine.SystemTable.ConIn->ReadKeyStroke(Machine.SystemTable.ConIn, &key);
  ASSERT_EQ(Machine.Problems().size(), 1u);
  EXPECT_EQ(Machine.Problems()[0], "ConIn.ReadKeyStroke called at task priority level 8");
  Services.RestoreTPL(TPL_APPLICATION);
}

TEST_F(FakeFirmwareEvent, ClosedEventIsNotNotified) {
  EFI_EVENT event = Create(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, "a");
  Services.RaiseTPL(TPL_CALLBACK);
  Services.SignalEvent(event);
  EXPECT_EQ(Services.CloseEvent(event), EFI_SUCCESS);
  Services.RestoreTPL(TPL_APPLICATION);
  EXPECT_EQ(gNotes, Notes{});
  EXPECT_EQ(Services.CloseEvent(event), EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareEvent, CheckClearsTheSignal) {
  EFI_EVENT event = nullptr;
  ASSERT_EQ(Services.CreateEvent(0, 0, nullptr, nullptr, &event), EFI_SUCCESS);
  EXPECT_EQ(Services.CheckEvent(event), EFI_NOT_READY);
  Services.SignalEvent(event);
  EXPECT_EQ(Services.CheckEvent(event), EFI_SUCCESS);
  EXPECT_EQ(Services.CheckEvent(event), EFI_NOT_READY);
  EFI_EVENT notified = Create(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, "a");
  EXPECT_EQ(Services.CheckEvent(notified), EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareEvent, CheckAsksTheNotificationOfAWaitEvent) {
  std::pair<int, EFI_EVENT> counter{0, nullptr};
  EFI_EVENT event = nullptr;
  ASSERT_EQ(Services.CreateEvent(EVT_NOTIFY_WAIT, TPL_CALLBACK, &SignalFirst, &counter, &event),
            EFI_SUCCESS);
  EXPECT_EQ(Services.CheckEvent(event), EFI_NOT_READY);
  EXPECT_EQ(Services.CheckEvent(event), EFI_SUCCESS);
}

TEST_F(FakeFirmwareEvent, TimersFollowTheClock) {
  EFI_EVENT event = Create(EVT_TIMER | EVT_NOTIFY_SIGNAL, TPL_CALLBACK, "tick");
  EXPECT_EQ(Services.SetTimer(event, TimerPeriodic, 10 * 10000), EFI_SUCCESS);
  Machine.Clock.Advance(9);
  Services.Stall(0);
  EXPECT_EQ(gNotes.size(), 0u);
  Services.Stall(1000);
  Services.Stall(0);
  EXPECT_EQ(gNotes.size(), 1u);
  Machine.Clock.Advance(35);
  Services.Stall(0);
  EXPECT_EQ(gNotes.size(), 2u) << "expirations that nobody could see are lost";
  EXPECT_EQ(Services.SetTimer(event, TimerCancel, 0), EFI_SUCCESS);
  Machine.Clock.Advance(100);
  Services.Stall(0);
  EXPECT_EQ(gNotes.size(), 2u);
  EFI_EVENT plain = Create(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, "plain");
  EXPECT_EQ(Services.SetTimer(plain, TimerRelative, 1), EFI_INVALID_PARAMETER);
}

TEST_F(FakeFirmwareEvent, WaitMovesTheClockToTheNextTimer) {
  EFI_EVENT timer = nullptr;
  ASSERT_EQ(Services.CreateEvent(EVT_TIMER, 0, nullptr, nullptr, &timer), EFI_SUCCESS);
  ASSERT_EQ(Services.SetTimer(timer, TimerRelative, 250 * 10000), EFI_SUCCESS);
  EFI_EVENT events[] = {Machine.SystemTable.ConIn->WaitForKey, timer};
  UINTN index = 9;
  uint64_t before = Machine.Clock.Milliseconds();
  EXPECT_EQ(Services.WaitForEvent(2, events, &index), EFI_SUCCESS);
  EXPECT_EQ(index, 1u);
  EXPECT_EQ(Machine.Clock.Milliseconds() - before, 250u);
  Machine.Keyboard.Scan(SCAN_UP);
  EXPECT_EQ(Services.WaitForEvent(2, events, &index), EFI_SUCCESS);
  EXPECT_EQ(index, 0u);
}

TEST_F(FakeFirmwareEvent, WaitHasItsRules) {
  EFI_EVENT events[] = {Machine.SystemTable.ConIn->WaitForKey};
  UINTN index = 0;
  EXPECT_EQ(Services.WaitForEvent(0, events, &index), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Machine.ProblemsText(), "");
  EXPECT_EQ(Services.WaitForEvent(1, events, &index), EFI_TIMEOUT);
  EXPECT_EQ(Machine.Problems().size(), 1u) << "nothing would ever end this wait";
  Services.RaiseTPL(TPL_CALLBACK);
  EXPECT_EQ(Services.WaitForEvent(1, events, &index), EFI_UNSUPPORTED);
  Services.RestoreTPL(TPL_APPLICATION);
}

TEST_F(FakeFirmwareEvent, GroupsAreSignalledTogether) {
  constexpr EFI_GUID kGroup = {1, 2, 3, {4}};
  EFI_EVENT first = nullptr;
  EFI_EVENT second = nullptr;
  Services.CreateEventEx(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, &Note, "first", &kGroup, &first);
  Services.CreateEventEx(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, &Note, "second", &kGroup, &second);
  Services.SignalEvent(first);
  EXPECT_EQ(gNotes.size(), 2u);
}

}  // namespace
}  // namespace fake
