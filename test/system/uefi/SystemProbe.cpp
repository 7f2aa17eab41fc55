/** @file
  The probe's commands, given as the shell's arguments.
**/

#include "ProbeBoot.h"
#include "ProbeCycle.h"
#include "ProbeDebug.h"
#include "ProbeFirmware.h"
#include "ProbeGuards.h"
#include "ProbeHardware.h"
#include "ProbeHost.h"
#include "ProbePages.h"
#include "ProbeScreens.h"
#include "ProbeSpoil.h"
#include "ProbeStack.h"

namespace {

constexpr UINTN kMaxArguments = 3;

struct Arguments {
  bool FromShell;
  UINTN Count;
  const CHAR16 *Texts[kMaxArguments];
};

Arguments ReadArguments(EFI_HANDLE image) {
  Arguments arguments = {};
  void *found = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(image, &gEfiShellParametersProtocolGuid, &found);
  if (EFI_ERROR(status)) {
    return arguments;
  }
  auto *shell = static_cast<EFI_SHELL_PARAMETERS_PROTOCOL *>(found);
  arguments.FromShell = true;
  // The first is the program itself.
  for (UINTN i = 1; i < shell->Argc && arguments.Count < kMaxArguments; i++) {
    arguments.Texts[arguments.Count] = shell->Argv[i];
    arguments.Count++;
  }
  return arguments;
}

bool Is(const Arguments &arguments, const char16_t *command, UINTN count) {
  return arguments.Count == count && StrCmp(arguments.Texts[0], Ucs2(command)) == 0;
}

UINTN Number(const Arguments &arguments, UINTN index) {
  return StrDecimalToUintn(arguments.Texts[index]);
}

EFI_STATUS Execute(EFI_HANDLE image, const Arguments &arguments) {
  if (!arguments.FromShell) {
    return RunWithoutShell(image);
  }
  if (Is(arguments, u"show", 3)) {
    return ShowSetupScreen(Number(arguments, 1), Number(arguments, 2));
  }
  if (Is(arguments, u"outputs", 1)) {
    return ListOutputs();
  }
  if (Is(arguments, u"wait", 1)) {
    return WaitForKey();
  }
  if (Is(arguments, u"debug", 2)) {
    return StartForDebugger(image, arguments.Texts[1]);
  }
  if (Is(arguments, u"stack", 2)) {
    return StartOnPaintedStack(image, arguments.Texts[1]);
  }
  if (Is(arguments, u"spoil", 3)) {
    return StartOnSpoiltHost(image, arguments.Texts[1], arguments.Texts[2]);
  }
  if (Is(arguments, u"guards", 1)) {
    return TryGuards();
  }
  if (Is(arguments, u"null", 1)) {
    return ReadNull();
  }
  if (Is(arguments, u"forget", 1)) {
    return ForgetSavedState();
  }
  if (Is(arguments, u"restore-all", 2)) {
    return RestoreAllOutputs(Number(arguments, 1) != 0);
  }
  if (Is(arguments, u"components", 3)) {
    return LogComponents(Number(arguments, 1), Number(arguments, 2));
  }
  if (Is(arguments, u"cycle", 3)) {
    return CycleHostAndSetup(image, arguments.Texts[1], arguments.Texts[2]);
  }
  if (Is(arguments, u"states", 1)) {
    return LogStates();
  }
  if (Is(arguments, u"pages", 1)) {
    return OpenSetupPages();
  }
  return EFI_INVALID_PARAMETER;
}

}  // namespace

extern "C" EFI_STATUS EFIAPI SystemProbeEntryPoint(EFI_HANDLE image, EFI_SYSTEM_TABLE *) {
  return Execute(image, ReadArguments(image));
}
