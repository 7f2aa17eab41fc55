#include "ProbeGuards.h"

#include "ProbeStack.h"

namespace {

constexpr UINT8 kReturnInstruction = 0xC3;
constexpr UINTN kBlockSize = 64;

BASE_LIBRARY_JUMP_BUFFER gWayBack;

[[noreturn]] VOID EFIAPI GoBack() {
  LongJump(&gWayBack, 1);
  CpuDeadLoop();
  __builtin_unreachable();
}

/// Continues where the way back begins, on a stack that is surely there.
VOID EFIAPI OnPageFault(EFI_EXCEPTION_TYPE, EFI_SYSTEM_CONTEXT context) {
  constexpr UINTN kAlignment = 16;
  constexpr UINTN kReturnAddress = 8;
  EFI_SYSTEM_CONTEXT_X64 *cpu = context.SystemContextX64;
  cpu->Rip = reinterpret_cast<UINTN>(&GoBack);
  cpu->Rsp = (gWayBack.Rsp - kBlockSize) / kAlignment * kAlignment - kReturnAddress;
}

/// Reads a byte and writes it back.
void Touch(UINTN address) {
  auto *byte = reinterpret_cast<volatile UINT8 *>(address);
  *byte = *byte;
}

void Run(VOID *code) { reinterpret_cast<VOID(EFIAPI *)()>(code)(); }

/// Compilers do as they like with an address that they know to be 0.
volatile UINTN gNull;

void TouchNull() { Touch(gNull); }

void TouchBehindBlock() {
  VOID *block = nullptr;
  if (EFI_ERROR(gBS->AllocatePool(EfiBootServicesData, kBlockSize, &block))) {
    return;
  }
  // Never freed: after a fault nobody comes back here.
  Touch(reinterpret_cast<UINTN>(block) + kBlockSize);
}

void TouchBehindPage() {
  EFI_PHYSICAL_ADDRESS page = 0;
  if (EFI_ERROR(gBS->AllocatePages(AllocateAnyPages, EfiBootServicesData, 1, &page))) {
    return;
  }
  Touch(static_cast<UINTN>(page) + EFI_PAGE_SIZE);
}

void TouchStackEnd() {
  Stack stack = {};
  if (!EFI_ERROR(FindStack(&stack))) {
    Touch(stack.Base);
  }
}

void TouchCode() { Touch(reinterpret_cast<UINTN>(&TouchStackEnd)); }

void RunBlock() {
  VOID *block = nullptr;
  if (EFI_ERROR(gBS->AllocatePool(EfiBootServicesData, kBlockSize, &block))) {
    return;
  }
  *static_cast<volatile UINT8 *>(block) = kReturnInstruction;
  Run(block);
}

void RunStack() {
  volatile UINT8 code = kReturnInstruction;
  Run(const_cast<UINT8 *>(&code));
}

UINT8 gCode = kReturnInstruction;
void RunData() { Run(&gCode); }

struct Trial {
  const char16_t *Name;
  void (*Try)();
};

constexpr Trial kTrials[] = {
    {u"null", TouchNull},
    {u"behind a block", TouchBehindBlock},
    {u"behind a page", TouchBehindPage},
    {u"end of the stack", TouchStackEnd},
    {u"writing code", TouchCode},
    {u"running a block", RunBlock},
    {u"running the stack", RunStack},
    {u"running data", RunData},
};

bool IsCaught(void (*forbidden)()) {
  if (SetJump(&gWayBack) != 0) {
    return true;
  }
  forbidden();
  return false;
}

}  // namespace

EFI_STATUS TryGuards() {
  VOID *found = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&gEfiCpuArchProtocolGuid, nullptr, &found);
  if (EFI_ERROR(status)) {
    return status;
  }
  auto *cpu = static_cast<EFI_CPU_ARCH_PROTOCOL *>(found);
  status = cpu->RegisterInterruptHandler(cpu, EXCEPT_X64_PAGE_FAULT, OnPageFault);
  if (EFI_ERROR(status)) {
    return status;
  }
  for (const Trial &trial : kTrials) {
    Print(Ucs2(u"%s is %scaught\n"), trial.Name, IsCaught(trial.Try) ? u"" : u"not ");
  }
  return cpu->RegisterInterruptHandler(cpu, EXCEPT_X64_PAGE_FAULT, nullptr);
}

EFI_STATUS ReadNull() {
  TouchNull();
  return EFI_SUCCESS;
}
