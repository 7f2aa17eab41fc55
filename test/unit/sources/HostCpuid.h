/** @file
  The processor that EDK2's AsmCpuid and AsmCpuidEx ask in the unit tests: the linker takes these
  functions from here, as they stand in the program itself, and EDK2's from a library.
**/

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace obv_host {

struct CpuidRegisters {
  uint32_t Eax = 0;
  uint32_t Ebx = 0;
  uint32_t Ecx = 0;
  uint32_t Edx = 0;
};

struct FakeProcessor {
  /// By leaf and subleaf; every other one is all zero.
  std::map<std::pair<uint32_t, uint32_t>, CpuidRegisters> Leaves;

  CpuidRegisters &Leaf(uint32_t leaf, uint32_t subleaf = 0) { return Leaves[{leaf, subleaf}]; }

  /// The brand string, at most 48 bytes; shorter ones are padded with zeros.
  void SetBrand(const std::string &brand);

  /// Four cores with two threads each, with a brand, a frequency and a topology.
  static FakeProcessor Usual();
};

extern FakeProcessor gProcessor;

}  // namespace obv_host
