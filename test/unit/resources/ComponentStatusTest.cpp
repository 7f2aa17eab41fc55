// What the answers to the status queries do to a component.

#include "test/unit/stage/ComponentIntakeStage.h"

namespace {

using fake::Service;

class ComponentStatus : public ComponentIntakeStage {};

struct StatusCase {
  EFI_STATUS Status;
  const char *Flags;
};

TEST_F(ComponentStatus, StatusesMapToFlags) {
  KeepComponents(1);
  ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
  const StatusCase cases[] = {
      {EFI_SUCCESS, "0010"},
      {0x8000000000000011, "0100"},
      {0x8000000000000006, "1000"},
      {0x8000000000000007, "0001"},
      {EFI_NOT_FOUND, "0000"},
      {EFI_UNSUPPORTED, "0000"},
      {EFI_INVALID_PARAMETER, "0000"},
      {EFI_WARN_STALE_DATA, "0000"},
      {7, "0000"},
      {6, "0000"},
      {0x11, "0000"},
  };
  for (const StatusCase &expected : cases) {
    Host.Components[0].NotReady = Host.Components[0].NoMapping = 0;
    Answer(expected.Status);
    RefreshComponentStatus(0);
    EXPECT_EQ(Flags(), expected.Flags) << std::hex << expected.Status;
  }
  EXPECT_TRUE(Host.Log.empty());
}

TEST_F(ComponentStatus, NotReadyOnceAndSuccessLaterLeavesBothFlagsSet) {
  KeepComponents(1);
  Host.Answers[u"CPU"].Before = {EFI_NOT_READY};
  ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
  EXPECT_EQ(Flags(), "1000");
  RefreshComponentStatus(0);
  EXPECT_EQ(Flags(), "1010");
}

TEST_F(ComponentStatus, NoMappingStaysSet) {
  KeepComponents(1);
  Host.Answers[u"CPU"].Before = {EFI_NO_MAPPING, EFI_DEVICE_ERROR};
  ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
  RefreshComponentStatus(0);
  EXPECT_EQ(Flags(), "0101");
  RefreshComponentStatus(0);
  EXPECT_EQ(Flags(), "0110");
}

TEST_F(ComponentStatus, AnotherStatusLeavesAllFourFlagsClear) {
  KeepComponents(1);
  Host.Answers[u"CPU"].Status = EFI_NOT_FOUND;
  EXPECT_EQ(GetComponentData(), EFI_SUCCESS);
  EXPECT_EQ(Flags(), "0000");
}

TEST_F(ComponentStatus, AvailableAndDeviceErrorAreClearedBeforeTheQuery) {
  KeepComponents(1);
  OBV_COMPONENT &component = Host.Components[0];
  component.NotReady = component.NoMapping = component.Available = component.DeviceError = 1;
  Host.OnQueryComponentStatus = [&](CHAR16 *, UINT32, UINTN, UINT64 *, OBV_COMPONENT_INFO *) {
    EXPECT_EQ(Flags(), "1100");
    return EFI_NOT_FOUND;
  };
  ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
  EXPECT_EQ(Flags(), "1100");
}

TEST_F(ComponentStatus, FailingQueriesNeverFailTheIntake) {
  for (EFI_STATUS status : {EFI_DEVICE_ERROR, EFI_OUT_OF_RESOURCES, EFI_ABORTED}) {
    Answer(status);
    EXPECT_EQ(GetComponentData(), EFI_SUCCESS);
  }
  EXPECT_TRUE(Host.Log.empty());
}

TEST_F(ComponentStatus, RefreshLeavesEverythingElseOfTheRecordAlone) {
  KeepComponents(1);
  Answer(EFI_SUCCESS);
  ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
  OBV_COMPONENT before = Host.Components[0];
  RefreshComponentStatus(0);
  EXPECT_EQ(std::memcmp(&before, &Host.Components[0], sizeof before), 0);
}

TEST_F(ComponentStatus, IndexAtOrBeyondTheCountIsIgnored) {
  KeepComponents(2);
  ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
  Host.State.ComponentCount = 1;
  Machine.Calls.Clear();
  for (UINTN index : {UINTN{1}, UINTN{2}, UINTN{65536}, ~UINTN{0}}) {
    RefreshComponentStatus(index);
  }
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostQueryComponentStatus), 0u);
  RefreshComponentStatus(0);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostQueryComponentStatus), 1u);
}

TEST_F(ComponentStatus, CountWithoutAnArrayHoldsNoComponent) {
  Host.State.ComponentCount = 5;
  EXPECT_EQ(ComponentCount(), 0);
  RefreshComponentStatus(0);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostQueryComponentStatus), 0u);
}

}  // namespace
