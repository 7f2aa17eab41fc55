#include "test/unit/sources/LowMemory.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>

namespace obv_host {
namespace {

constexpr size_t kPage = 4096;

}  // namespace

uint8_t *LowMemory::Place(const std::vector<uint8_t> &bytes) {
  Release();
  size_t used = (bytes.size() + kPage - 1) / kPage * kPage;
  size_ = used + kPage;
  base_ =
      mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_32BIT, -1, 0);
  auto *start = static_cast<uint8_t *>(base_);
  if (base_ == MAP_FAILED || mprotect(start + used, kPage, PROT_NONE) != 0) {
    std::abort();
  }
  return std::copy(bytes.begin(), bytes.end(), start + used - bytes.size()) - bytes.size();
}

void LowMemory::Release() {
  if (base_ != nullptr) {
    munmap(base_, size_);
    base_ = nullptr;
  }
}

}  // namespace obv_host
