#include "app/base/StackGuard.h"
#include "hostcheck/HostCheck.h"
#include "hostcheck/ReportText.h"

namespace {

/// Too large for a stack.
hostcheck::Report gReport;

void Print(void * /*context*/, const CHAR8 *line) { AsciiPrint("%a\n", line); }

}  // namespace

// Not guarded: the guard's value changes under it.
extern "C" __attribute__((no_stack_protector, noinline)) EFI_STATUS EFIAPI
BoardscopeHostCheckEntryPoint(EFI_HANDLE, EFI_SYSTEM_TABLE *) {
  SeedStackGuard();
  EFI_STATUS status = hostcheck::CheckHost(&gReport);
  hostcheck::WriteReport(gReport, Print, nullptr);
  return status;
}
