/** @file
  On MachineStage: a host without a mistake, which a test spoils before it is checked. Once per
  process, like LVGL.
**/

#pragma once

#include <memory>

#include "test/unit/stage/MachineStage.h"

#include "hostcheck/HostCheck.h"
#include "hostcheck/ReportText.h"

namespace hostcheck {

class HostCheckStage : public MachineStage {
 protected:
  HostCheckStage() {
    fake::RunLibraryConstructors(Machine);
    Machine.AddOutput({{1920, 1080}});
    Host.Config.TitleFont.Size = 18;
    Host.OnParseComponents = [this](OBV_COMPONENT **components,
                                    const fake::ParseArguments &arguments) {
      return Parse(components, arguments);
    };
  }
  ~HostCheckStage() override { EXPECT_EQ(Machine.Leftovers(), ""); }

  /// Installs the host and checks it.
  EFI_STATUS Check() {
    Host.Install();
    return CheckAsItIs();
  }
  EFI_STATUS CheckAsItIs() {
    *report_ = {};
    return CheckHost(report_.get());
  }

  /// Findings of a point; all points for none.
  Lines Findings(Verdict least, const std::string &point = "") const {
    Lines found;
    for (size_t i = 0; i < report_->PointCount; i++) {
      const PointReport &one = report_->Points[i];
      for (size_t k = 0; k < one.Kept; k++) {
        if (one.Findings[k].Grade >= least && (point.empty() || point == one.Name)) {
          found.push_back(std::string(one.Name) + ": " + one.Findings[k].Text);
        }
      }
    }
    return found;
  }
  Lines Mistakes(const std::string &point = "") const { return Findings(Verdict::kMistake, point); }
  /// Warnings and what is worse.
  Lines Warnings(const std::string &point = "") const { return Findings(Verdict::kWarning, point); }
  Lines Printed() const {
    Lines lines;
    WriteReport(
        *report_,
        [](void *context, const CHAR8 *line) { static_cast<Lines *>(context)->push_back(line); },
        &lines);
    return lines;
  }
  Verdict GradeOf(const std::string &point) const {
    for (size_t i = 0; i < report_->PointCount; i++) {
      if (point == report_->Points[i].Name) {
        return report_->Points[i].Grade;
      }
    }
    ADD_FAILURE() << "no point " << point;
    return Verdict::kGood;
  }
  const Report &Result() const { return *report_; }

  /// One mistake and nothing else, which begins like this.
  void ExpectTheMistake(const std::string &begin) {
    EXPECT_EQ(Check(), EFI_ABORTED);
    Lines mistakes = Mistakes();
    ASSERT_EQ(mistakes.size(), 1u) << testing::PrintToString(mistakes);
    EXPECT_TRUE(mistakes[0].starts_with(begin)) << mistakes[0];
    EXPECT_EQ(Result().Mistakes, 1u);
  }
  /// A warning alone.
  void ExpectTheWarning(const std::string &begin) {
    EXPECT_EQ(Check(), EFI_SUCCESS);
    Lines warnings = Warnings();
    ASSERT_EQ(warnings.size(), 1u) << testing::PrintToString(warnings);
    EXPECT_TRUE(warnings[0].starts_with(begin)) << warnings[0];
    EXPECT_EQ(Result().Mistakes, 0u);
  }

  /// What the host hands over: its description, built anew for each view. Tests spoil it, or give
  /// another count.
  std::vector<OBV_COMPONENT> Records;
  std::optional<UINT16> Count;

 private:
  EFI_STATUS Parse(OBV_COMPONENT **components, const fake::ParseArguments &arguments) {
    Records = Host.Components;
    // Room for a count that is too large.
    Records.resize(Host.Components.size() + 100);
    for (OBV_COMPONENT &record : Records) {
      for (OBV_VERTEX &vertex : record.HotspotVertices) {
        vertex.X = static_cast<UINT16>(vertex.X * arguments.ScaleX);
        vertex.Y = static_cast<UINT16>(vertex.Y * arguments.ScaleY);
      }
      for (OBV_POINT &point : record.LeaderPoints) {
        point.X = static_cast<INT16>(point.X * arguments.ScaleX);
        point.Y = static_cast<INT16>(point.Y * arguments.ScaleY);
      }
      record.MarkerX = static_cast<INT16>(record.MarkerX * arguments.ScaleX);
      record.MarkerY = static_cast<INT16>(record.MarkerY * arguments.ScaleY);
    }
    *components = Records.data();
    Host.State.ComponentCount = Count.value_or(static_cast<UINT16>(Host.Components.size()));
    return EFI_SUCCESS;
  }

  std::unique_ptr<Report> report_ = std::make_unique<Report>();
};

}  // namespace hostcheck
