#include "test/unit/sources/HostCpuid.h"

#include <cstring>

extern "C" {
#include <Uefi.h>

#include <Library/BaseLib.h>
}

namespace obv_host {

FakeProcessor gProcessor = FakeProcessor::Usual();

void FakeProcessor::SetBrand(const std::string &brand) {
  std::string padded = brand;
  padded.resize(48);
  Leaf(0x80000000).Eax = 0x80000008;
  for (uint32_t i = 0; i < 3; i++) {
    std::memcpy(&Leaf(0x80000002 + i), padded.data() + i * 16, 16);
  }
}

FakeProcessor FakeProcessor::Usual() {
  FakeProcessor processor;
  processor.Leaf(0).Eax = 0x16;
  processor.Leaf(1) = {.Eax = 0x000906EA, .Ebx = 0x00100800, .Edx = 1U << 28};
  processor.Leaf(0xB, 0) = {.Eax = 1, .Ebx = 2, .Ecx = 0x100};
  processor.Leaf(0xB, 1) = {.Eax = 4, .Ebx = 8, .Ecx = 0x201};
  processor.Leaf(0x16).Eax = 3600;
  processor.SetBrand("Example(R)  Processor   9000 @ 3.60GHz ");
  return processor;
}

namespace {

void Give(uint32_t value, UINT32 *target) {
  if (target != nullptr) {
    *target = value;
  }
}

UINT32 Answer(uint32_t leaf, uint32_t subleaf, UINT32 *eax, UINT32 *ebx, UINT32 *ecx, UINT32 *edx) {
  auto found = gProcessor.Leaves.find({leaf, subleaf});
  CpuidRegisters registers = found == gProcessor.Leaves.end() ? CpuidRegisters() : found->second;
  Give(registers.Eax, eax);
  Give(registers.Ebx, ebx);
  Give(registers.Ecx, ecx);
  Give(registers.Edx, edx);
  return leaf;
}

}  // namespace
}  // namespace obv_host

extern "C" UINT32 EFIAPI AsmCpuid(UINT32 leaf, UINT32 *eax, UINT32 *ebx, UINT32 *ecx, UINT32 *edx) {
  return obv_host::Answer(leaf, 0, eax, ebx, ecx, edx);
}

extern "C" UINT32 EFIAPI AsmCpuidEx(UINT32 leaf, UINT32 subleaf, UINT32 *eax, UINT32 *ebx,
                                    UINT32 *ecx, UINT32 *edx) {
  return obv_host::Answer(leaf, subleaf, eax, ebx, ecx, edx);
}
