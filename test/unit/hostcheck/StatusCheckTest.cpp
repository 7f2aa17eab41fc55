// What a host answers when it is asked for a component's status.

#include "test/unit/hostcheck/HostCheckStage.h"

namespace hostcheck {
namespace {

class StatusCheck : public HostCheckStage {
 protected:
  using Answer = std::function<void(UINT64 *count, OBV_COMPONENT_INFO *info)>;

  /// Answers for the first component; the others have no lines.
  void AnswerWith(const Answer &answer) {
    Host.OnQueryComponentStatus = [answer](CHAR16 *name, UINT32, UINTN capacity, UINT64 *count,
                                           OBV_COMPONENT_INFO *info) -> EFI_STATUS {
      std::memset(info, 0, capacity * sizeof *info);
      *count = 0;
      if (fake::ToU16(name) == u"CPU") {
        answer(count, info);
      }
      return EFI_SUCCESS;
    };
  }
};

TEST_F(StatusCheck, TwentyOneLinesAreNamed) {
  AnswerWith([](UINT64 *count, OBV_COMPONENT_INFO *) { *count = 21; });
  ExpectTheMistake("status: component 0, \"CPU\", has an InfoCount of 21. Write 20 lines at most.");
}

TEST_F(StatusCheck, TwentyLinesAreRight) {
  AnswerWith([](UINT64 *count, OBV_COMPONENT_INFO *info) {
    *count = 20;
    std::for_each(info, info + 20, [](OBV_COMPONENT_INFO &line) {
      fake::CopyText(line.Label, u"Label");
      fake::CopyText(line.Value, u"Value");
    });
  });
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Warnings(), Lines{});
}

TEST_F(StatusCheck, RestThatIsNotZeroIsNamed) {
  AnswerWith([](UINT64 *count, OBV_COMPONENT_INFO *info) {
    *count = 2;
    info[2].Kind = 1;
  });
  ExpectTheMistake("status: component 0, \"CPU\", has 2 lines, and something behind them.");
}

TEST_F(StatusCheck, CountThatIsNotWrittenIsNamed) {
  Host.OnQueryComponentStatus = [](CHAR16 *, UINT32, UINTN, UINT64 *count,
                                   OBV_COMPONENT_INFO *) -> EFI_STATUS {
    if (*count != 0) {
      return EFI_NOT_FOUND;
    }
    return EFI_SUCCESS;
  };
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_EQ(Result().Mistakes, Host.Components.size());
  EXPECT_TRUE(Mistakes()[0].starts_with(
      "status: QueryComponentStatus for component 0, \"CPU\", writes no InfoCount."));
}

TEST_F(StatusCheck, LabelWithoutAnEndIsNamed) {
  AnswerWith([](UINT64 *count, OBV_COMPONENT_INFO *info) {
    *count = 1;
    std::fill_n(info[0].Label, OBV_INFO_LABEL_LENGTH, u'x');
  });
  ExpectTheMistake("status: component 0, \"CPU\", line 0: label or value has no end");
}

TEST_F(StatusCheck, ValueWithoutAnEndIsNamed) {
  AnswerWith([](UINT64 *count, OBV_COMPONENT_INFO *info) {
    *count = 2;
    std::fill_n(info[1].Value, OBV_INFO_VALUE_LENGTH, u'x');
  });
  ExpectTheMistake("status: component 0, \"CPU\", line 1: label or value has no end");
}

TEST_F(StatusCheck, LineOfAnUnknownKindIsAWarning) {
  AnswerWith([](UINT64 *count, OBV_COMPONENT_INFO *info) {
    *count = 1;
    info[0].Kind = 2;
  });
  ExpectTheWarning("status: component 0, \"CPU\", line 0 is of kind 2, which is not shown.");
}

TEST_F(StatusCheck, SlowAnswerIsAWarning) {
  AnswerWith([this](UINT64 *, OBV_COMPONENT_INFO *) { Machine.Clock.Advance(30); });
  ExpectTheWarning("status: QueryComponentStatus takes 30 ms for component 0, \"CPU\", and");
}

TEST_F(StatusCheck, FirstAnswerMayReadADevice) {
  int asked = 0;
  AnswerWith([&](UINT64 *, OBV_COMPONENT_INFO *) { Machine.Clock.Advance(asked++ < 8 ? 30 : 1); });
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Warnings(), Lines{});
}

TEST_F(StatusCheck, EachStatusIsRight) {
  for (EFI_STATUS status :
       {EFI_NOT_FOUND, EFI_NOT_READY, EFI_NO_MAPPING, EFI_DEVICE_ERROR, EFI_UNSUPPORTED}) {
    static size_t next = 0;
    Host.Answers[fake::ToU16(Host.Components[next++].Name)].Status = status;
  }
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Warnings(), Lines{});
}

TEST_F(StatusCheck, SecondIntakeThatFailsIsNamed) {
  int intakes = 0;
  Host.OnFinishParse = [&]() -> EFI_STATUS {
    return ++intakes == 6 ? EFI_DEVICE_ERROR : EFI_SUCCESS;
  };
  ExpectTheMistake("status: the host answers Device Error to a second intake.");
}

}  // namespace
}  // namespace hostcheck
