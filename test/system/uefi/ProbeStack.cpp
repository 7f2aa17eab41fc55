#include "ProbeStack.h"

#include "ProbeDebug.h"
#include "ProbeHost.h"

namespace {

constexpr UINT64 kPaint = 0x5AC3965A3C69A5C3;
/// What painting itself needs below its caller's frame.
constexpr UINTN kOwnFrames = 1024;

UINTN Here() { return reinterpret_cast<UINTN>(__builtin_frame_address(0)); }

volatile UINT64 *WordAt(UINTN address) { return reinterpret_cast<volatile UINT64 *>(address); }

/// Interrupts may come meanwhile: nothing of theirs outlives them.
void Paint(UINTN from, UINTN to) {
  for (UINTN address = from; address < to; address += sizeof(UINT64)) {
    *WordAt(address) = kPaint;
  }
}

/// The lowest place between these two that is not as it was painted.
UINTN FindMark(UINTN from, UINTN to) {
  UINTN address = from;
  while (address < to && *WordAt(address) == kPaint) {
    address += sizeof(UINT64);
  }
  return address;
}

}  // namespace

EFI_STATUS FindStack(Stack *stack) {
  for (VOID *hob = GetFirstHob(EFI_HOB_TYPE_MEMORY_ALLOCATION); hob != nullptr;
       hob = GetNextHob(EFI_HOB_TYPE_MEMORY_ALLOCATION, GET_NEXT_HOB(hob))) {
    const auto &memory = static_cast<EFI_HOB_MEMORY_ALLOCATION *>(hob)->AllocDescriptor;
    if (CompareGuid(&memory.Name, &gEfiHobMemoryAllocStackGuid)) {
      *stack = {.Base = static_cast<UINTN>(memory.MemoryBaseAddress),
                .Size = static_cast<UINTN>(memory.MemoryLength)};
      return Here() - stack->Base < stack->Size ? EFI_SUCCESS : EFI_UNSUPPORTED;
    }
  }
  return EFI_NOT_FOUND;
}

EFI_STATUS StartOnPaintedStack(EFI_HANDLE probe, const CHAR16 *name) {
  OBV_PROTOCOL *host = FindHost();
  Stack stack = {};
  EFI_STATUS status = FindStack(&stack);
  if (host == nullptr || EFI_ERROR(status)) {
    return EFI_NOT_FOUND;
  }
  EFI_HANDLE program = nullptr;
  status = LoadProgram(probe, name, &program);
  if (EFI_ERROR(status)) {
    return status;
  }
  UINTN here = Here();
  UINTN lowest = stack.Base + EFI_PAGE_SIZE;
  Paint(lowest, here - kOwnFrames);
  status = gBS->StartImage(program, nullptr, nullptr);
  UINTN mark = FindMark(lowest, here);
  host->DebugPrint(OBV_LOG_INFO, "[Probe] stack: %d bytes used, %d never touched\n", here - mark,
                   mark - lowest);
  return status;
}
