// The component array: parsing, queries and failures.

#include "test/unit/stage/ComponentIntakeStage.h"
#include "test/unit/stage/WholeRun.h"

#include "test/firmware/Png.h"

namespace {

using fake::Service;

class ComponentIntake : public ComponentIntakeStage {};

TEST_F(ComponentIntake, HostCallsComeInOrder) {
  KeepComponents(2);
  EXPECT_EQ(GetComponentData(), EFI_SUCCESS);
  EXPECT_EQ(HostCalls(), (Lines{"Host.GetResourceData() = Success",
                                "Host.ParseComponents(108, 192, 1440, 2560) = Success",
                                "Host.QueryComponentStatus(CPU, 6, 20) = Success",
                                "Host.QueryComponentStatus(DIMM_A1, 7, 20) = Success",
                                "Host.FinishParse() = Success"}));
  EXPECT_TRUE(Host.Log.empty());
}

TEST_F(ComponentIntake, ParseGetsHeightsBeforeWidthsThenShareAndFactors) {
  Host.Picture = fake::MakePng(40, 30, [](uint32_t, uint32_t) { return 0u; });
  ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
  ASSERT_TRUE(Host.Parsed.has_value());
  EXPECT_EQ(Host.Parsed->PictureHeight, 30);
  EXPECT_EQ(Host.Parsed->PictureWidth, 40);
  EXPECT_EQ(Host.Parsed->ViewHeight, 1440);
  EXPECT_EQ(Host.Parsed->ViewWidth, 2560);
  EXPECT_EQ(Host.Parsed->Share, 0.75);
  EXPECT_EQ(Host.Parsed->ScaleX, 1.25);
  EXPECT_EQ(Host.Parsed->ScaleY, 1.5);
}

TEST_F(ComponentIntake, PictureSizesPassAs16Bits) {
  Host.Picture.assign(24, 0);
  Host.Picture[17] = 3;
  Host.Picture[19] = 5;
  Host.Picture[21] = 4;
  Host.Picture[22] = 1;
  Host.Picture[23] = 7;
  ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
  EXPECT_EQ(Host.Parsed->PictureWidth, 5);
  EXPECT_EQ(Host.Parsed->PictureHeight, 0x0107);
}

TEST_F(ComponentIntake, ParseWritesTheApplicationsArrayPointer) {
  Host.OnParseComponents = [this](OBV_COMPONENT **components, const fake::ParseArguments &) {
    EXPECT_EQ(components, &gComponents.Components);
    *components = &Host.Components[2];
    Host.State.ComponentCount = 3;
    return EFI_SUCCESS;
  };
  ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
  EXPECT_EQ(ComponentCount(), 3);
  EXPECT_EQ(&ComponentAt(1), &Host.Components[3]);
}

TEST_F(ComponentIntake, ResourceIsAskedWithNothingInTheOutputs) {
  VOID *data = this;
  UINTN size = 5;
  Host.OnGetResourceData = [&](VOID **askedData, UINTN *askedSize) -> EFI_STATUS {
    data = *askedData;
    size = *askedSize;
    return EFI_NOT_FOUND;
  };
  EXPECT_EQ(GetComponentData(), EFI_NOT_FOUND);
  EXPECT_EQ(data, nullptr);
  EXPECT_EQ(size, 0u);
}

TEST_F(ComponentIntake, CountOf0QueriesNothingAndStillFinishes) {
  KeepComponents(0);
  Host.OnFinishParse = [] { return EFI_WARN_STALE_DATA; };
  EXPECT_EQ(GetComponentData(), EFI_WARN_STALE_DATA);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostQueryComponentStatus), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostFinishParse), 1u);
}

TEST_F(ComponentIntake, CountIsReadAgainBeforeEveryQuery) {
  ASSERT_GE(Host.Components.size(), 6u);
  int queries = 0;
  Host.OnQueryComponentStatus = [&](CHAR16 *, UINT32, UINTN, UINT64 *, OBV_COMPONENT_INFO *) {
    Host.State.ComponentCount = ++queries == 1 ? 3 : Host.State.ComponentCount;
    return EFI_SUCCESS;
  };
  EXPECT_EQ(GetComponentData(), EFI_SUCCESS);
  EXPECT_EQ(queries, 3);
}

TEST_F(ComponentIntake, QueryGetsTheRecordsOwnTableAndCount) {
  KeepComponents(1);
  Host.OnQueryComponentStatus = [this](CHAR16 *name, UINT32 type, UINTN capacity, UINT64 *count,
                                       OBV_COMPONENT_INFO *info) {
    EXPECT_EQ(name, Host.Components[0].Name);
    EXPECT_EQ(type, static_cast<UINT32>(OBV_TYPE_PROCESSOR));
    EXPECT_EQ(capacity, 20u);
    EXPECT_EQ(count, &Host.Components[0].InfoCount);
    EXPECT_EQ(info, Host.Components[0].Info);
    *count = 2;
    info[1].Kind = OBV_INFO_SIDE_LIST;
    return EFI_SUCCESS;
  };
  ASSERT_EQ(GetComponentData(), EFI_SUCCESS);
  EXPECT_EQ(Host.Components[0].InfoCount, 2u);
  EXPECT_EQ(InfoCountOf(Host.Components[0]), 2u);
}

TEST_F(ComponentIntake, InfoCountBeyondTheTableReadsAsTheTablesSize) {
  OBV_COMPONENT &component = Host.Components[0];
  component.InfoCount = 20;
  EXPECT_EQ(InfoCountOf(component), 20u);
  component.InfoCount = 21;
  EXPECT_EQ(InfoCountOf(component), 20u);
  component.InfoCount = ~UINT64{0};
  EXPECT_EQ(InfoCountOf(component), 20u);
}

// Failures.

TEST_F(ComponentIntake, HostWithoutABlobEndsTheIntake) {
  Host.OnGetResourceData = [](VOID **, UINTN *) -> EFI_STATUS { return EFI_LOAD_ERROR; };
  EXPECT_EQ(GetComponentData(), EFI_LOAD_ERROR);
  EXPECT_EQ(Errors(), (Lines{"[GetComponentData] Error occurs: Load Error\n"}));
  EXPECT_EQ(HostCalls(), (Lines{"Host.GetResourceData() = Load Error"}));
}

TEST_F(ComponentIntake, BlobShorterThan24BytesEndsTheIntakeBeforeTheParse) {
  Host.Picture.resize(23);
  EXPECT_EQ(GetComponentData(), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Errors(), (Lines{"GetPngHeightAndWidth 252\n",
                             "[GetComponentData] Error occurs: Invalid Parameter\n"}));
  EXPECT_EQ(HostCalls(), (Lines{"Host.GetResourceData() = Success"}));
}

TEST_F(ComponentIntake, NullBlobEndsTheIntakeBeforeTheParse) {
  Host.OnGetResourceData = [](VOID **, UINTN *size) -> EFI_STATUS {
    *size = 1000;
    return EFI_SUCCESS;
  };
  EXPECT_EQ(GetComponentData(), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostParseComponents), 0u);
}

TEST_F(ComponentIntake, FailingParseEndsTheIntake) {
  Host.OnParseComponents = [](OBV_COMPONENT **, const fake::ParseArguments &) {
    return EFI_COMPROMISED_DATA;
  };
  EXPECT_EQ(GetComponentData(), EFI_COMPROMISED_DATA);
  EXPECT_EQ(Errors(), (Lines{"[GetComponentData] Error occurs: Compromised Data\n"}));
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostQueryComponentStatus), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostFinishParse), 0u);
}

TEST_F(ComponentIntake, FailingFinishIsReturnedAndNotLogged) {
  Host.OnFinishParse = [] { return EFI_ABORTED; };
  EXPECT_EQ(GetComponentData(), EFI_ABORTED);
  EXPECT_TRUE(Host.Log.empty());
}

TEST_F(ComponentIntake, FailureWithoutALogIsSilent) {
  Host.Protocol().DebugPrint = nullptr;
  Host.Picture.clear();
  EXPECT_EQ(GetComponentData(), EFI_INVALID_PARAMETER);
  EXPECT_TRUE(Host.Log.empty());
}

// A whole run whose intake fails.
class ComponentIntakeRun : public WholeRun {};

TEST_F(ComponentIntakeRun, FailedIntakeIsLoggedByTheStartUpTooAndDrawsNothing) {
  Install({{1920, 1080}});
  Host.OnParseComponents = [](OBV_COMPONENT **, const fake::ParseArguments &) {
    return EFI_NOT_FOUND;
  };
  // Would be published with the summary.
  fake::CopyText(Host.State.SystemInfo[2], u"Order 4711");
  fake::RunResult result = Run();
  EXPECT_EQ(result.Status, EFI_NOT_FOUND);
  EXPECT_EQ(result.Turns, 0);
  Lines lines = Errors();
  auto first =
      std::find(lines.begin(), lines.end(), "[GetComponentData] Error occurs: Not Found\n");
  ASSERT_GE(lines.end() - first, 2);
  EXPECT_EQ(first[1], "[VeltBoardscopeAppEntryPoint] Parse resources error: Not Found.\n");
  EXPECT_EQ(Host.State.InfoBuffer, nullptr);
  EXPECT_TRUE(SetupScreenIsBack());
}

}  // namespace
