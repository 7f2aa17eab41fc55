#include <gtest/gtest.h>

#include "test/firmware/FakeFirmware.h"

namespace fake {
namespace {

TEST(FakeFirmwareInput, KeysComeInOrder) {
  Firmware machine;
  EFI_SIMPLE_TEXT_INPUT_PROTOCOL *input = machine.SystemTable.ConIn;
  machine.Keyboard.Scan(SCAN_ESC);
  machine.Keyboard.Character(u'a');
  EFI_INPUT_KEY key;
  EXPECT_EQ(input->ReadKeyStroke(input, &key), EFI_SUCCESS);
  EXPECT_EQ(key.ScanCode, SCAN_ESC);
  EXPECT_EQ(key.UnicodeChar, 0);
  EXPECT_EQ(input->ReadKeyStroke(input, &key), EFI_SUCCESS);
  EXPECT_EQ(key.ScanCode, SCAN_NULL);
  EXPECT_EQ(key.UnicodeChar, u'a');
  EXPECT_EQ(input->ReadKeyStroke(input, &key), EFI_NOT_READY);
  machine.Keyboard.Character(u'b');
  EXPECT_EQ(input->Reset(input, FALSE), EFI_SUCCESS);
  EXPECT_EQ(input->ReadKeyStroke(input, &key), EFI_NOT_READY);
}

TEST(FakeFirmwareInput, PointersLiveOnTheConsoleInputHandle) {
  Firmware machine;
  EFI_GUID simple = kSimplePointerGuid;
  EFI_GUID absolute = kAbsolutePointerGuid;
  VOID *found = nullptr;
  EFI_HANDLE handle = machine.SystemTable.ConsoleInHandle;
  EXPECT_EQ(machine.BootServices.HandleProtocol(handle, &simple, &found), EFI_UNSUPPORTED);
  machine.AddSimplePointer(16, 32);
  machine.AddAbsolutePointer();
  EXPECT_EQ(machine.BootServices.HandleProtocol(handle, &simple, &found), EFI_SUCCESS);
  EXPECT_EQ(found, machine.Mouse()->Protocol());
  EXPECT_EQ(static_cast<EFI_SIMPLE_POINTER_PROTOCOL *>(found)->Mode->ResolutionY, 32u);
  EXPECT_EQ(machine.BootServices.HandleProtocol(handle, &absolute, &found), EFI_SUCCESS);
  EXPECT_EQ(found, machine.Tablet()->Protocol());
  machine.RemoveSimplePointer();
  EXPECT_EQ(machine.BootServices.HandleProtocol(handle, &simple, &found), EFI_UNSUPPORTED);
  EXPECT_EQ(machine.ProblemsText(), "");
}

TEST(FakeFirmwareInput, ReportsComeInOrderUntilNoneIsLeft) {
  Firmware machine;
  SimplePointer &mouse = machine.AddSimplePointer();
  mouse.Move(3, -2, true);
  mouse.Move(1, 1);
  EFI_SIMPLE_POINTER_PROTOCOL *protocol = mouse.Protocol();
  EFI_SIMPLE_POINTER_STATE state;
  EXPECT_EQ(protocol->GetState(protocol, &state), EFI_SUCCESS);
  EXPECT_EQ(state.RelativeMovementX, 3);
  EXPECT_EQ(state.RelativeMovementY, -2);
  EXPECT_TRUE(state.LeftButton);
  EXPECT_EQ(protocol->GetState(protocol, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ(protocol->GetState(protocol, &state), EFI_SUCCESS);
  EXPECT_EQ(protocol->GetState(protocol, &state), EFI_NOT_READY);
}

TEST(FakeFirmwareInput, DevicesCanBeWaitedFor) {
  Firmware machine;
  AbsolutePointer &tablet = machine.AddAbsolutePointer();
  EFI_EVENT events[] = {machine.AddSimplePointer().Protocol()->WaitForInput,
                        tablet.Protocol()->WaitForInput};
  EXPECT_EQ(machine.BootServices.CheckEvent(events[1]), EFI_NOT_READY);
  tablet.MoveTo(1, 2);
  UINTN index = 7;
  EXPECT_EQ(machine.BootServices.WaitForEvent(2, events, &index), EFI_SUCCESS);
  EXPECT_EQ(index, 1u);
}

TEST(FakeFirmwareInput, AbsoluteRangesCanBeStrange) {
  Firmware machine;
  AbsolutePointer &tablet =
      machine.AddAbsolutePointer({.MinX = 500, .MinY = 0, .MaxX = 100, .MaxY = 0});
  EFI_ABSOLUTE_POINTER_PROTOCOL *protocol = tablet.Protocol();
  EXPECT_EQ(protocol->Mode->AbsoluteMinX, 500u);
  EXPECT_EQ(protocol->Mode->AbsoluteMaxX, 100u);
  tablet.MoveTo(7, 8, 1);
  EFI_ABSOLUTE_POINTER_STATE state;
  EXPECT_EQ(protocol->GetState(protocol, &state), EFI_SUCCESS);
  EXPECT_EQ(state.CurrentX, 7u);
  EXPECT_EQ(state.ActiveButtons, 1u);
  EXPECT_EQ(protocol->GetState(protocol, &state), EFI_NOT_READY);
}

TEST(FakeFirmwareInput, DateIsWhatTheTestSays) {
  Firmware machine;
  machine.Clock.Date.Year = 2031;
  EFI_TIME time;
  EXPECT_EQ(machine.RuntimeServices.GetTime(&time, nullptr), EFI_SUCCESS);
  EXPECT_EQ(time.Year, 2031);
  EXPECT_EQ(machine.RuntimeServices.GetTime(nullptr, nullptr), EFI_INVALID_PARAMETER);
}

}  // namespace
}  // namespace fake
