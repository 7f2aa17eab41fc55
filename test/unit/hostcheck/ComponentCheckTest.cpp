// Component records: counts, names, codes and styles.

#include "test/unit/hostcheck/HostCheckStage.h"

namespace hostcheck {
namespace {

class ComponentCheck : public HostCheckStage {
 protected:
  OBV_COMPONENT &First() { return Host.Components[0]; }
  void Name(std::u16string_view name) {
    Host.Answers.clear();
    fake::CopyText(First().Name, name);
  }
};

TEST_F(ComponentCheck, CountOneTooManyIsNamed) {
  Count = static_cast<UINT16>(Host.Components.size() + 1);
  ExpectTheMistake("components: record 9 of 9 is empty: no name, no outline, no style.");
}

TEST_F(ComponentCheck, CountOneTooFewIsNamed) {
  Count = static_cast<UINT16>(Host.Components.size() - 1);
  ExpectTheMistake(
      "components: ComponentCount is 7, and behind these stands another whole record, "
      "\"TPM\". Count it, or zero it.");
}

// The array ends where the memory ends.
TEST_F(ComponentCheck, NothingIsReadBehindTheArray) {
  auto parse = Host.OnParseComponents;
  Host.OnParseComponents = [this, parse](OBV_COMPONENT **components,
                                         const fake::ParseArguments &arguments) {
    EFI_STATUS status = parse(components, arguments);
    Records.resize(Host.Components.size());
    Records.shrink_to_fit();
    *components = Records.data();
    return status;
  };
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

TEST_F(ComponentCheck, CountBeyondTheMemoryOfTheArrayIsNamed) {
  Count = 99;
  auto parse = Host.OnParseComponents;
  Host.OnParseComponents = [this, parse](OBV_COMPONENT **components,
                                         const fake::ParseArguments &arguments) {
    EFI_STATUS status = parse(components, arguments);
    Records.resize(Host.Components.size());
    Records.shrink_to_fit();
    *components = Records.data();
    return status;
  };
  EXPECT_EQ(Check(), EFI_ABORTED);
  ASSERT_EQ(Mistakes().size(), 1u);
  EXPECT_NE(Mistakes()[0].find("and ComponentCount is 99, but there is no such memory."),
            std::string::npos);
}

TEST_F(ComponentCheck, StyleThatPointsNowhereIsNamed) {
  First().FocusStyle = reinterpret_cast<OBV_COMPONENT_STYLE *>(UINTN{0xAFAFAFAFAFAFAFAF});
  ExpectTheMistake(
      "components: FocusStyle of component 0, \"CPU\" is AFAFAFAFAFAFAFAF, where there "
      "is no memory.");
  EXPECT_EQ(GradeOf("places"), Verdict::kGood);
}

// What lies behind the array is nothing to follow.
TEST_F(ComponentCheck, RecordOfRubbishIsNamedAndNotFollowed) {
  OBV_COMPONENT &rubbish = Host.Components.emplace_back();
  std::memset(&rubbish, 0xA7, sizeof rubbish);
  EXPECT_EQ(Check(), EFI_ABORTED);
  Lines mistakes = Mistakes();
  ASSERT_EQ(mistakes.size(), 4u);
  EXPECT_TRUE(
      mistakes[0].starts_with("components: the name of component 8, \"????????????????????"
                              "????\", has no end in its 60 characters."));
  EXPECT_TRUE(mistakes[1].find("has 42919 vertices.") != std::string::npos);
  EXPECT_TRUE(mistakes[2].find("has 42919 leader points.") != std::string::npos);
  EXPECT_TRUE(mistakes[3].find("has type -1482184793, ") != std::string::npos ||
              mistakes[3].find("has type 2812782503, ") != std::string::npos)
      << mistakes[3];
}

TEST_F(ComponentCheck, AHundredComponentsAreNamed) {
  while (Host.Components.size() < 100) {
    auto number = static_cast<char16_t>(u'!' + Host.Components.size());
    Host.AddComponent(
        std::u16string(u"P_") + (number == u'#' ? u'~' : number) + (number > u'~' ? u"2" : u"1"),
        OBV_TYPE_USB, 1, 400, 400);
    Host.Components.back().Name[2] = static_cast<CHAR16>(u'0' + Host.Components.size() / 10);
    Host.Components.back().Name[3] = static_cast<CHAR16>(u'0' + Host.Components.size() % 10);
  }
  ExpectTheMistake("components: ComponentCount is 100. Describe 99 components at most");
}

TEST_F(ComponentCheck, CountBesideANullArrayIsNamed) {
  Host.OnParseComponents = [this](OBV_COMPONENT **components, const fake::ParseArguments &) {
    *components = nullptr;
    Host.State.ComponentCount = 3;
    return EFI_SUCCESS;
  };
  ExpectTheMistake("components: ParseComponents stores 0 as its array, and ComponentCount is 3");
  EXPECT_EQ(GradeOf("places"), Verdict::kLeftOut);
}

TEST_F(ComponentCheck, ViewOfNoComponentsIsAWarning) {
  Host.Components.clear();
  ExpectTheWarning("components: there are no components.");
}

TEST_F(ComponentCheck, ParseThatFailsIsNamed) {
  Host.OnParseComponents = [](OBV_COMPONENT **, const fake::ParseArguments &) -> EFI_STATUS {
    return EFI_OUT_OF_RESOURCES;
  };
  ExpectTheMistake("components: ParseComponents answers Out of Resources.");
}

TEST_F(ComponentCheck, EndOfTheIntakeThatFailsIsNamed) {
  Host.OnFinishParse = []() -> EFI_STATUS { return EFI_DEVICE_ERROR; };
  ExpectTheMistake("components: FinishParse answers Device Error.");
  EXPECT_EQ(GradeOf("status"), Verdict::kLeftOut);
}

TEST_F(ComponentCheck, NameOfTwentyCharactersIsNamed) {
  Name(u"A_NAME_OF_TWENTY_CHR");
  ExpectTheMistake(
      "components: the name of component 0, \"A_NAME_OF_TWENTY_CHR\", has 20 "
      "characters, and is not shown at all.");
}

TEST_F(ComponentCheck, NameOfNineteenCharactersIsNot) {
  Name(u"A_NAME_OF_19_CHARAC");
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

TEST_F(ComponentCheck, NameThatIsEmptyIsNamed) {
  Name(u"");
  ExpectTheMistake("components: component 0, \"\", has no name.");
}

TEST_F(ComponentCheck, NameWithAnUmlautIsNamed) {
  Name(u"L\u00FCfter");
  ExpectTheMistake("components: the name of component 0, \"L?fter\", holds what no callout can");
}

TEST_F(ComponentCheck, NameWithAColourIsNamed) {
  Name(u"FAN #1");
  ExpectTheMistake("components: the name of component 0, \"FAN #1\", holds what no callout can");
}

TEST_F(ComponentCheck, NameOfTwoComponentsIsAWarning) {
  OBV_COMPONENT twin = Host.Components[2];
  Host.Components.push_back(twin);
  ExpectTheWarning("components: component 8, \"USB_1\", has name and type of component 2");
}

TEST_F(ComponentCheck, TypeTwelveIsNamed) {
  First().Type = 12;
  ExpectTheMistake("components: component 0, \"CPU\", has type 12, which no filter shows.");
}

TEST_F(ComponentCheck, FortyOneVerticesAreNamed) {
  First().HotspotVertexCount = 41;
  ExpectTheMistake("components: component 0, \"CPU\", has 41 vertices.");
}

TEST_F(ComponentCheck, OutlineOfNoVertexIsNamed) {
  First().HotspotVertexCount = 0;
  ExpectTheMistake("components: component 0, \"CPU\", has 0 vertices.");
}

TEST_F(ComponentCheck, VerticesThatAreNotDrawnAreAWarning) {
  First().HotspotVertexCount = 21;
  std::fill_n(First().HotspotVertices + 4, 17, First().HotspotVertices[3]);
  ExpectTheWarning("components: component 0, \"CPU\", has 21 vertices, of which 20 are drawn.");
}

TEST_F(ComponentCheck, LeaderOfNoPointIsNamed) {
  First().LeaderPointCount = 0;
  ExpectTheMistake("components: component 0, \"CPU\", has 0 leader points.");
}

TEST_F(ComponentCheck, LeaderOfTwentyOnePointsIsNamed) {
  First().LeaderPointCount = 21;
  ExpectTheMistake("components: component 0, \"CPU\", has 21 leader points.");
}

TEST_F(ComponentCheck, StyleThatIsNullIsNamed) {
  First().DefaultStyle = nullptr;
  ExpectTheMistake("components: DefaultStyle of component 0, \"CPU\" is NULL");
}

TEST_F(ComponentCheck, FocusStyleThatIsNullIsNamed) {
  First().FocusStyle = nullptr;
  ExpectTheMistake("components: FocusStyle of component 0, \"CPU\" is NULL");
}

TEST_F(ComponentCheck, ColourOfASharedStyleIsNamedOnce) {
  fake::CopyText(Host.FocusStyle.MarkColor, "300,0,0");
  ExpectTheMistake("components: MarkColor of FocusStyle of component 0, \"CPU\" is \"300,0,0\"");
}

TEST_F(ComponentCheck, UnknownSideIsAWarning) {
  First().CalloutSide = 9;
  ExpectTheWarning("components: component 0, \"CPU\", has callout side 9, which counts as 0.");
}

TEST_F(ComponentCheck, UnknownAlignmentIsAWarning) {
  First().TextAlign = -1;
  ExpectTheWarning("components: component 0, \"CPU\", has text alignment -1, which is logged");
}

}  // namespace
}  // namespace hostcheck
