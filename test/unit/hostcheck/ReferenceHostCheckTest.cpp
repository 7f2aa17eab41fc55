// The reference host, with its own board and fonts, has no mistake.

#include "test/unit/host/HostDriverStage.h"

#include "hostcheck/HostCheck.h"
#include "hostcheck/ReportText.h"

namespace obv_host {
namespace {

class ReferenceHostCheck : public HostDriverStage {
 protected:
  std::string Text() const {
    std::string text;
    hostcheck::WriteReport(
        *report_,
        [](void *context, const CHAR8 *line) {
          static_cast<std::string *>(context)->append(line).append("\n");
        },
        &text);
    return text;
  }
  /// Its own clock is the processor's, which this machine's Stall does not move.
  static UINT64 EFIAPI GetTime(OBV_PROTOCOL *) {
    return fake::Firmware::Current().Clock.Milliseconds();
  }

  std::unique_ptr<hostcheck::Report> report_ = std::make_unique<hostcheck::Report>();
};

TEST_F(ReferenceHostCheck, FindsNothing) {
  Machine.AddOutput({{1920, 1080}});
  ASSERT_EQ(Load(), EFI_SUCCESS);
  FindHost()->GetTime = GetTime;
  EXPECT_EQ(hostcheck::CheckHost(report_.get()), EFI_SUCCESS) << Text();
  EXPECT_EQ(report_->Warnings, 0u) << Text();
}

}  // namespace
}  // namespace obv_host
