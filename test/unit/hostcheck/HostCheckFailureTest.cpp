// The check on firmware that has no memory, or refuses a service: it ends, says so, and gives back
// what it has.

#include <gtest/gtest.h>

#include "test/firmware/FailureLoop.h"
#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"

#include "hostcheck/HostCheck.h"

namespace hostcheck {
namespace {

using fake::FailureLoop;
using fake::kForever;
using fake::Service;

/// Two sizes of one face: opening all of them takes most of a check.
EFI_STATUS GiveFewFonts(fake::TestHost *host, int number, CHAR8 **name, VOID **data, UINTN *size) {
  fake::TestHost::Font &font = host->Fonts[1];
  *name = font.Name.data();
  *data = font.File.data();
  *size = font.File.size();
  return number == 6 * 3 + 1 || number == 8 * 3 + 1 || number == 53 * 3 + 1 ? EFI_SUCCESS
                                                                            : EFI_NOT_FOUND;
}

/// Whether status and report say the same.
bool IsTold(EFI_STATUS status, const Report &report) {
  switch (status) {
    case EFI_SUCCESS:
      return report.Mistakes == 0;
    case EFI_OUT_OF_RESOURCES:
      return report.Mistakes == 0 &&
             report.Points[report.PointCount - 1].Grade == Verdict::kLeftOut;
    case EFI_ABORTED:
    case EFI_NOT_FOUND:
      return report.Mistakes != 0;
    default:
      return false;
  }
}

/// 0 when the check has ended as it should, whatever failed.
int CheckOnce(fake::Firmware &machine) {
  fake::RunLibraryConstructors(machine);
  machine.AddOutput({{1920, 1080}});
  fake::TestHost host(machine);
  host.ScaleComponents = false;
  host.Components.resize(2);
  int asked = 0;
  host.OnGetFontData = [&](UINT8, CHAR8 **name, VOID **data, UINTN *size) {
    return GiveFewFonts(&host, asked++, name, data, size);
  };
  host.Install();
  static Report report;
  EFI_STATUS status = CheckHost(&report);
  // EDK2's library gives back the null that it got for a package list; firmware refuses it.
  if (machine.ProblemsText() == "FreePool of memory that is not from the pool at (nil)\n") {
    machine.ForgetProblems();
  }
  return IsTold(status, report) ? 0 : 1;
}

void ExpectAnOrderlyEnd(const FailureLoop &loop) {
  fake::FailureLoopResult result = RunFailureLoop(loop, CheckOnce);
  EXPECT_TRUE(result.Complaints.empty()) << result.Text();
  EXPECT_GT(result.Runs, 0u);
}

TEST(HostCheckFailure, EachAllocationMayFailOnce) {
  ExpectAnOrderlyEnd({.What = Service::AllocatePool});
}

TEST(HostCheckFailure, MemoryMayEndAnywhere) {
  ExpectAnOrderlyEnd({.What = Service::AllocatePool, .Count = kForever, .Step = 7});
}

TEST(HostCheckFailure, HostMayNotBeThere) {
  ExpectAnOrderlyEnd({.What = Service::LocateProtocol, .Status = EFI_NOT_FOUND});
}

}  // namespace
}  // namespace hostcheck
