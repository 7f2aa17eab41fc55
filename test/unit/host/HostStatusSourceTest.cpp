#include "test/unit/host/HostBoardBytes.h"

#include "host/portable/StatusSource.h"

namespace obv_host {
namespace {

/// Whoever answers for the hardware: what it says, and what it was asked.
struct Answering {
  EFI_STATUS Status = EFI_SUCCESS;
  std::vector<std::string> Lines;
  std::vector<UINTN> Asked;
};

EFI_STATUS AnswerFor(void *context, UINTN component, Facts *facts) {
  auto *answering = static_cast<Answering *>(context);
  answering->Asked.push_back(component);
  EXPECT_EQ(facts->Count, 0U);
  for (const std::string &line : answering->Lines) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Told", "%a", line.c_str());
  }
  return answering->Status;
}

class HostStatus : public testing::Test {
 protected:
  EFI_STATUS Query(const char16_t *name, UINT32 type, UINTN capacity = OBV_INFO_CAPACITY) {
    bytes_ = Parts.Bytes();
    BoardFault fault;
    EXPECT_EQ(OpenBoard(bytes_.data(), bytes_.size(), &Owner.ActiveBoard, &fault), EFI_SUCCESS)
        << fault.Text;
    std::memset(Infos, 0xCC, sizeof(Infos));
    Count = 77;
    return QueryStatus(&Owner, Ucs2(name), type, capacity, &Count, Infos);
  }

  /// From now on somebody answers for the hardware.
  void KnowHardware() {
    Owner.Services.Context = &Hardware;
    Owner.Services.AskHardware = AnswerFor;
  }

  bool IsZero(UINTN index) const {
    OBV_COMPONENT_INFO none = {};
    return std::memcmp(&Infos[index], &none, sizeof(none)) == 0;
  }

  BoardParts Parts = BoardParts::Sound();
  Answering Hardware;
  Host Owner = {};
  OBV_COMPONENT_INFO Infos[OBV_INFO_CAPACITY];
  UINT64 Count = 0;

 private:
  std::vector<UINT8> bytes_;
};

TEST_F(HostStatus, LinesOfTheNamedComponent) {
  EXPECT_EQ(Query(u"CPU", OBV_TYPE_PROCESSOR), EFI_SUCCESS);
  ASSERT_EQ(Count, 2U);
  EXPECT_EQ(StrCmp(Infos[0].Label, Ucs2(u"Brand")), 0);
  EXPECT_EQ(StrCmp(Infos[1].Value, Ucs2(u"8")), 0);
  EXPECT_EQ(Infos[1].Kind, static_cast<UINT32>(OBV_INFO_SIDE_LIST));
}

TEST_F(HostStatus, EntriesBeyondTheCountAreZero) {
  EXPECT_EQ(Query(u"CPU", OBV_TYPE_PROCESSOR), EFI_SUCCESS);
  for (UINTN i = Count; i < OBV_INFO_CAPACITY; i++) {
    EXPECT_TRUE(IsZero(i)) << i;
  }
}

TEST_F(HostStatus, NothingIsWrittenBeyondTheCapacity) {
  EXPECT_EQ(Query(u"CPU", OBV_TYPE_PROCESSOR, 1), EFI_SUCCESS);
  EXPECT_EQ(Count, 1U);
  EXPECT_FALSE(IsZero(0));
  EXPECT_EQ(Infos[1].Kind, 0xCCCCCCCCU);
}

TEST_F(HostStatus, EveryDescribedStatusHasItsAnswer) {
  const EFI_STATUS answers[] = {EFI_SUCCESS, EFI_DEVICE_ERROR, EFI_NOT_READY, EFI_NO_MAPPING,
                                EFI_NOT_FOUND};
  for (UINT8 status = 0; status <= kStatusLimit; status++) {
    Parts.Components[1].Status = status;
    EXPECT_EQ(Query(u"FAN 1", OBV_TYPE_FAN), answers[status]);
    EXPECT_EQ(Count, 0U);
  }
}

TEST_F(HostStatus, UnknownComponentIsNotFoundAndHasNoLines) {
  for (const char16_t *name : {u"", u"CP", u"CPU ", u"CPU2", u"cpu"}) {
    EXPECT_EQ(Query(name, OBV_TYPE_PROCESSOR), EFI_NOT_FOUND);
    EXPECT_EQ(Count, 0U);
    EXPECT_TRUE(IsZero(0));
  }
  EXPECT_EQ(Query(u"CPU", OBV_TYPE_MEMORY), EFI_NOT_FOUND);
}

TEST_F(HostStatus, NameLongerThanTheFieldIsNotFound) {
  PutText(Parts.Components[0].Name, std::u16string(19, u'x'));
  EXPECT_EQ(Query(std::u16string(19, u'x').c_str(), OBV_TYPE_PROCESSOR), EFI_SUCCESS);
  EXPECT_EQ(Query(std::u16string(59, u'x').c_str(), OBV_TYPE_PROCESSOR), EFI_NOT_FOUND);
}

TEST_F(HostStatus, MissingArgumentsAreRefused) {
  EXPECT_EQ(QueryStatus(&Owner, nullptr, 0, 20, &Count, Infos), EFI_INVALID_PARAMETER);
  EXPECT_EQ(QueryStatus(&Owner, Ucs2(u"x"), 0, 20, nullptr, Infos), EFI_INVALID_PARAMETER);
  EXPECT_EQ(QueryStatus(&Owner, Ucs2(u"x"), 0, 20, &Count, nullptr), EFI_INVALID_PARAMETER);
}

TEST_F(HostStatus, HardwareAnswersForTheComponentThatNamesIt) {
  KnowHardware();
  Parts.AddHardware(1, kHardwareFan, "CPU_FAN");
  Hardware.Lines = {"1200 RPM"};
  for (EFI_STATUS status : {EFI_SUCCESS, EFI_DEVICE_ERROR, EFI_NOT_READY, EFI_NOT_FOUND}) {
    Hardware.Status = status;
    EXPECT_EQ(Query(u"FAN 1", OBV_TYPE_FAN), status);
    ASSERT_EQ(Count, 1U);
    EXPECT_EQ(StrCmp(Infos[0].Value, Ucs2(u"1200 RPM")), 0);
  }
  EXPECT_EQ(Hardware.Asked, std::vector<UINTN>({1, 1, 1, 1}));
}

TEST_F(HostStatus, ComponentWithoutHardwareIsNotAskedFor) {
  KnowHardware();
  Hardware.Status = EFI_DEVICE_ERROR;
  Parts.AddHardware(1, kHardwareFan, "CPU_FAN");
  EXPECT_EQ(Query(u"CPU", OBV_TYPE_PROCESSOR), EFI_SUCCESS);
  EXPECT_EQ(Count, 2U);
  EXPECT_TRUE(Hardware.Asked.empty());
}

TEST_F(HostStatus, DescribedStatusStandsWhereNobodyKnowsTheHardware) {
  Parts.AddHardware(1, kHardwareFan, "CPU_FAN");
  Parts.Components[1].Status = kStatusNotReady;
  EXPECT_EQ(Query(u"FAN 1", OBV_TYPE_FAN), EFI_NOT_READY);
  EXPECT_EQ(Count, 0U);
}

TEST_F(HostStatus, LinesOfTheHardwareStandBeforeTheDescribedOnes) {
  KnowHardware();
  Parts.AddHardware(0, kHardwareProcessor);
  Hardware.Lines = {"first", "second"};
  EXPECT_EQ(Query(u"CPU", OBV_TYPE_PROCESSOR), EFI_SUCCESS);
  ASSERT_EQ(Count, 4U);
  EXPECT_EQ(StrCmp(Infos[0].Value, Ucs2(u"first")), 0);
  EXPECT_EQ(StrCmp(Infos[1].Value, Ucs2(u"second")), 0);
  EXPECT_EQ(StrCmp(Infos[2].Label, Ucs2(u"Brand")), 0);
  EXPECT_EQ(StrCmp(Infos[3].Label, Ucs2(u"Cores")), 0);
}

TEST_F(HostStatus, LinesOfBothKeepToTheCapacity) {
  KnowHardware();
  Parts.AddHardware(0, kHardwareProcessor);
  Hardware.Lines.assign(19, "line");
  EXPECT_EQ(Query(u"CPU", OBV_TYPE_PROCESSOR), EFI_SUCCESS);
  ASSERT_EQ(Count, 20U);
  EXPECT_EQ(StrCmp(Infos[19].Label, Ucs2(u"Brand")), 0);
  EXPECT_EQ(Query(u"CPU", OBV_TYPE_PROCESSOR, 3), EFI_SUCCESS);
  EXPECT_EQ(Count, 3U);
  EXPECT_EQ(Infos[3].Kind, 0xCCCCCCCCU);
  EXPECT_EQ(Query(u"CPU", OBV_TYPE_PROCESSOR, 0), EFI_SUCCESS);
  EXPECT_EQ(Count, 0U);
}

TEST_F(HostStatus, LinesOfAnEarlierAnswerAreForgotten) {
  KnowHardware();
  Parts.AddHardware(1, kHardwareFan, "CPU_FAN");
  Hardware.Lines = {"one", "two"};
  EXPECT_EQ(Query(u"FAN 1", OBV_TYPE_FAN), EFI_SUCCESS);
  EXPECT_EQ(Count, 2U);
  Hardware.Lines = {};
  EXPECT_EQ(Query(u"FAN 1", OBV_TYPE_FAN), EFI_SUCCESS);
  EXPECT_EQ(Count, 0U);
}

}  // namespace
}  // namespace obv_host
