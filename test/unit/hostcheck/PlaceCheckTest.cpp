// Where the records put things in each view, and what a second parse gives.

#include "test/unit/hostcheck/HostCheckStage.h"

namespace hostcheck {
namespace {

class PlaceCheck : public HostCheckStage {
 protected:
  OBV_COMPONENT &First() { return Host.Components[0]; }
};

TEST_F(PlaceCheck, OutlineBeyondTheScreenIsNamedWithItsPlace) {
  First().HotspotVertices[1].X = 2000;
  EXPECT_EQ(Check(), EFI_ABORTED);
  // Positions are scaled, so that it lies outside in each view.
  ASSERT_EQ(Mistakes("places").size(), 4u);
  EXPECT_EQ(Mistakes("places")[1],
            "places: the outline of component 0, \"CPU\", lies at 500,300 to 2000,340, outside the "
            "screen of 1920 x 1080. Map it as docs/host.md says, with the size and the scale that "
            "ParseComponents gets.");
}

TEST_F(PlaceCheck, OutlineThatIsNotScaledIsNamedWhereItMatters) {
  Host.OnParseComponents = [this](OBV_COMPONENT **components, const fake::ParseArguments &) {
    Records = Host.Components;
    *components = Records.data();
    Host.State.ComponentCount = static_cast<UINT16>(Records.size());
    return EFI_SUCCESS;
  };
  EXPECT_EQ(Check(), EFI_ABORTED);
  for (const std::string &mistake : Mistakes()) {
    EXPECT_NE(mistake.find("outside the screen of 1024 x 768"), std::string::npos) << mistake;
  }
}

TEST_F(PlaceCheck, OutlineWithoutAreaIsNamed) {
  for (OBV_VERTEX &vertex : First().HotspotVertices) {
    vertex.Y = 300;
  }
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_EQ(Mistakes()[0],
            "places: the outline of component 0, \"CPU\", has no area at 1024 x 768. Give it one.");
}

TEST_F(PlaceCheck, LeaderBeyondTheScreenIsNamed) {
  First().LeaderPoints[0].Y = -10;
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_TRUE(Mistakes()[0].starts_with(
      "places: the leader line of component 0, \"CPU\", lies at 378,-8 to 378,216, outside the "
      "screen of 1024 x 768."));
}

TEST_F(PlaceCheck, DotBeyondTheScreenIsNamed) {
  First().MarkerX = -5;
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_TRUE(Mistakes()[0].starts_with("places: the status dot of component 0, \"CPU\","));
}

TEST_F(PlaceCheck, CalloutBeyondTheScreenIsNamedWithItsPlace) {
  First().LeaderPoints[1] = {10, 500};
  First().CalloutSide = OBV_CALLOUT_RIGHT;
  EXPECT_EQ(Check(), EFI_ABORTED);
  ASSERT_EQ(Mistakes().size(), 4u);
  EXPECT_TRUE(Mistakes()[1].starts_with("places: the callout of component 0, \"CPU\", lies at -"))
      << Mistakes()[1];
}

TEST_F(PlaceCheck, PointsBeyondTheCapacityAreNotRead) {
  First().HotspotVertexCount = 41;
  First().LeaderPointCount = 21;
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_EQ(Mistakes("places"), Lines{});
}

TEST_F(PlaceCheck, ViewForWhichTheHostFailsIsNamed) {
  auto parse = Host.OnParseComponents;
  Host.OnParseComponents = [parse](OBV_COMPONENT **components,
                                   const fake::ParseArguments &arguments) {
    return arguments.ViewWidth == 2560 ? EFI_UNSUPPORTED : parse(components, arguments);
  };
  EXPECT_EQ(Check(), EFI_ABORTED);
  ASSERT_EQ(Mistakes("places").size(), 1u);
  EXPECT_TRUE(Mistakes("places")[0].starts_with(
      "places: the host answers Unsupported for a view of 2560 x 1440."));
}

class SecondParseCheck : public HostCheckStage {
 protected:
  /// The host parses anew, but for what the function puts back from what it found.
  void Keep(const std::function<void(OBV_COMPONENT *now, const OBV_COMPONENT &before)> &keep) {
    auto parse = Host.OnParseComponents;
    Host.OnParseComponents = [this, parse, keep](OBV_COMPONENT **components,
                                                 const fake::ParseArguments &arguments) {
      std::vector<OBV_COMPONENT> before = Records;
      EFI_STATUS status = parse(components, arguments);
      if (!before.empty()) {
        keep(&Records[0], before[0]);
      }
      return status;
    };
  }
};

TEST_F(SecondParseCheck, FlagThatIsKeptIsNamed) {
  Keep([](OBV_COMPONENT *now, const OBV_COMPONENT &before) { now->NotReady = before.NotReady; });
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_EQ(
      Mistakes()[0],
      "second parse: component 0, \"CPU\", keeps NotReady over a second ParseComponents. Zero "
      "it there: the next view starts with what the last one left.");
}

TEST_F(SecondParseCheck, LinesThatAreKeptAreNamed) {
  Keep([](OBV_COMPONENT *now, const OBV_COMPONENT &before) {
    std::memcpy(now->Info, before.Info, sizeof now->Info);
  });
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_TRUE(Mistakes()[0].starts_with("second parse: component 0, \"CPU\", keeps Info over"));
}

TEST_F(SecondParseCheck, CalloutThatIsKeptIsNamed) {
  Keep([](OBV_COMPONENT *now, const OBV_COMPONENT &before) { now->CalloutX = before.CalloutX; });
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_TRUE(Mistakes()[0].starts_with(
      "second parse: component 0, \"CPU\", has another CalloutX after a second ParseComponents "
      "for 1024 x 768."));
}

// A host that scales its records where they are.
TEST_F(SecondParseCheck, OutlineThatMovesOnIsNamed) {
  Keep([](OBV_COMPONENT *now, const OBV_COMPONENT &before) {
    now->HotspotVertices[0].X = static_cast<UINT16>(before.HotspotVertices[0].X + 1);
  });
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_TRUE(Mistakes("second parse")[0].starts_with(
      "second parse: component 0, \"CPU\", has another HotspotVertices after"));
}

TEST_F(SecondParseCheck, CountThatGrowsIsNamed) {
  int parses = 0;
  auto parse = Host.OnParseComponents;
  Host.OnParseComponents = [&](OBV_COMPONENT **components, const fake::ParseArguments &arguments) {
    Count = static_cast<UINT16>(++parses == 8 ? 7 : 8);
    return parse(components, arguments);
  };
  ExpectTheMistake("second parse: a second ParseComponents gives 7 components after 8.");
}

TEST_F(SecondParseCheck, SecondParseThatFailsIsNamed) {
  int parses = 0;
  auto parse = Host.OnParseComponents;
  Host.OnParseComponents = [&](OBV_COMPONENT **components, const fake::ParseArguments &arguments) {
    return ++parses == 8 ? EFI_OUT_OF_RESOURCES : parse(components, arguments);
  };
  ExpectTheMistake("second parse: the host does not build its records twice for 1024 x 768.");
}

}  // namespace
}  // namespace hostcheck
