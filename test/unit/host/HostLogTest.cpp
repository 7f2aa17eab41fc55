// What the host writes to its log.

#include "test/unit/host/HostStage.h"

#include "host/portable/HostLog.h"

namespace obv_host {
namespace {

class HostLog : public HostStage {};

TEST_F(HostLog, LogIsOneLinePerCall) {
  Protocol->DebugPrint(OBV_LOG_INFO, "[%a] %d %S %r\n", "Name", 7, u"wide", EFI_NOT_FOUND);
  Protocol->DebugPrint(OBV_LOG_ERROR, "no end");
  Protocol->DebugPrint(OBV_LOG_ERROR, "");
  EXPECT_EQ(Log, "[Name] 7 wide Not Found\nno end\n\n");
}

TEST_F(HostLog, LongLogMessageIsCutAndStillEnds) {
  std::string text(5000, 'x');
  Protocol->DebugPrint(OBV_LOG_INFO, "%a\n", text.c_str());
  EXPECT_EQ(Log.size(), kLogLineSize - 1);
  EXPECT_EQ(Log.back(), '\n');
  EXPECT_EQ(Log.find('\n'), Log.size() - 1);
}

TEST_F(HostLog, EndOfLifeHooksAreLogged) {
  Shared->JumpRequested = 1;
  Shared->FocusIndex = 12;
  Shared->SelectedCategory = 8;
  Shared->PointerX = 640;
  Shared->PointerY = 480;
  EXPECT_EQ(Protocol->AfterAppLife(Protocol), EFI_SUCCESS);
  EXPECT_EQ(Protocol->UnsupportedResolution(Protocol), EFI_SUCCESS);
  EXPECT_EQ(Log,
            "[Host] Application ended: jump 1, focus 12, category 8, pointer 640 480\n"
            "[Host] No display mode suits the view\n");
}

TEST_F(HostLog, ReleasedHostLogsNothing) {
  OBV_DEBUG_PRINT print = Protocol->DebugPrint;
  ReleaseHost(&TheHost);
  print(OBV_LOG_ERROR, "too late\n");
  EXPECT_EQ(Log, "");
  SetUp();
}

}  // namespace
}  // namespace obv_host
