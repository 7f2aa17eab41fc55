// The check measures callouts without building them, and gets what the view gets.

#include "test/unit/stage/ViewStage.h"

#include "hostcheck/Checks.h"

namespace hostcheck {
namespace {

class CalloutAgreement : public ViewStage {
 protected:
  static std::vector<std::array<int, 4>> Callouts() {
    std::vector<std::array<int, 4>> places;
    for (UINTN i = 0; i < ViewComponentCount(); i++) {
      const OBV_COMPONENT &component = ComponentAt(i);
      places.push_back({component.CalloutX, component.CalloutY, component.CalloutWidth,
                        component.CalloutHeight});
    }
    return places;
  }
};

TEST_F(CalloutAgreement, CheckPlacesThemWhereTheViewDoes) {
  Host.ScaleComponents = false;
  INT32 side = OBV_CALLOUT_KEEP;
  for (OBV_COMPONENT &component : Host.Components) {
    component.CalloutSide = side++;
  }
  // The last of the views that are checked.
  Build(3840, 2160);
  std::vector<std::array<int, 4>> built = Callouts();
  ASSERT_EQ(built.size(), 8u);
  for (OBV_COMPONENT &component : Host.Components) {
    component.CalloutWidth = component.CalloutHeight = 1;
  }
  auto report = std::make_unique<Report>();
  BeginPoint(report.get(), "places");
  CheckPlaces(report.get());
  EXPECT_EQ(Callouts(), built);
}

}  // namespace
}  // namespace hostcheck
