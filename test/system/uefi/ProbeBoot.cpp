#include "ProbeBoot.h"

#include "ProbeDebug.h"
#include "ProbeScreens.h"

namespace {

constexpr UINTN kWidth = 1024;
constexpr UINTN kHeight = 768;

void Say(const char16_t *name, EFI_STATUS status) { Print(Ucs2(u"%s: %r\n"), Ucs2(name), status); }

EFI_STATUS Start(EFI_HANDLE probe, const char16_t *name) {
  EFI_HANDLE program = nullptr;
  EFI_STATUS status = LoadProgram(probe, Ucs2(name), &program);
  return EFI_ERROR(status) ? status : gBS->StartImage(program, nullptr, nullptr);
}

void StartAndSay(EFI_HANDLE probe, const char16_t *name) { Say(name, Start(probe, name)); }

}  // namespace

EFI_STATUS RunWithoutShell(EFI_HANDLE probe) {
  StartAndSay(probe, u"unsigned\\ObvHost.efi");
  StartAndSay(probe, u"unsigned\\Boardscope.efi");
  StartAndSay(probe, u"ObvHost.efi");
  StartAndSay(probe, u"unsigned\\Boardscope.efi");
  EFI_STATUS status = ShowSetupScreen(kWidth, kHeight);
  if (EFI_ERROR(status)) {
    return status;
  }
  status = WaitForKey();
  if (EFI_ERROR(status)) {
    return status;
  }
  EFI_STATUS ended = Start(probe, u"Boardscope.efi");
  status = WaitForKey();
  Say(u"Boardscope.efi", ended);
  return EFI_ERROR(status) ? status : WaitForKey();
}
