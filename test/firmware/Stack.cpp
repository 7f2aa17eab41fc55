#include "test/firmware/Stack.h"

#include <sys/mman.h>
#include <unistd.h>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

// The address sanitizer wants to know where the stack is; in other builds these are missing.
extern "C" {
__attribute__((weak)) void __sanitizer_start_switch_fiber(void **saved, const void *bottom,
                                                          size_t size);
__attribute__((weak)) void __sanitizer_finish_switch_fiber(void *saved, const void **bottom,
                                                           size_t *size);
void FakeCallOnStack(void *top, void (*function)(void *), void *argument);
}

// Goes to the new stack, calls, and comes back; the old stack pointer is kept in a register that
// the called function preserves.
__asm__(
    ".text\n"
    ".type FakeCallOnStack, @function\n"
    "FakeCallOnStack:\n"
    "  pushq %rbp\n"
    "  movq %rsp, %rbp\n"
    "  movq %rdi, %rsp\n"
    "  movq %rdx, %rdi\n"
    "  callq *%rsi\n"
    "  movq %rbp, %rsp\n"
    "  popq %rbp\n"
    "  retq\n"
    ".size FakeCallOnStack, .-FakeCallOnStack\n");

namespace fake {

namespace {

constexpr uint8_t kUnused = 0xC9;

/// Memory for one stack, with a page in front of it that nobody may touch.
class Stack {
 public:
  Stack() : guard_(static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
    void *mapped = mmap(nullptr, guard_ + kStackSize, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED || mprotect(mapped, guard_, PROT_NONE) != 0) {
      std::perror("no stack");
      std::abort();
    }
    start_ = static_cast<uint8_t *>(mapped);
    std::memset(Bottom(), kUnused, kStackSize);
  }
  ~Stack() { munmap(start_, guard_ + kStackSize); }
  Stack(const Stack &) = delete;
  Stack &operator=(const Stack &) = delete;

  uint8_t *Bottom() { return start_ + guard_; }
  // Through the kernel: the sanitizer and memcheck know which frames are gone, and would complain.
  size_t Used() {
    std::vector<uint8_t> bytes(kStackSize);
    std::ifstream memory("/proc/self/mem", std::ios::binary);
    memory.seekg(reinterpret_cast<std::streamoff>(Bottom()));
    memory.read(reinterpret_cast<char *>(bytes.data()), static_cast<std::streamsize>(kStackSize));
    if (!memory) {
      std::abort();
    }
    auto used = std::find_if(bytes.begin(), bytes.end(), [](uint8_t b) { return b != kUnused; });
    return static_cast<size_t>(bytes.end() - used);
  }

 private:
  size_t guard_;
  uint8_t *start_;
};

struct Entry {
  const std::function<void()> *Body;
  const void *OldBottom = nullptr;
  size_t OldSize = 0;
};

void Enter(void *argument) {
  auto *entry = static_cast<Entry *>(argument);
  if (__sanitizer_finish_switch_fiber != nullptr) {
    __sanitizer_finish_switch_fiber(nullptr, &entry->OldBottom, &entry->OldSize);
  }
  (*entry->Body)();
  if (__sanitizer_start_switch_fiber != nullptr) {
    __sanitizer_start_switch_fiber(nullptr, entry->OldBottom, entry->OldSize);
  }
}

}  // namespace

size_t CallOnStack(const std::function<void()> &body) {
  Stack stack;
  Entry entry{&body};
  void *saved = nullptr;
  if (__sanitizer_start_switch_fiber != nullptr) {
    __sanitizer_start_switch_fiber(&saved, stack.Bottom(), kStackSize);
  }
  FakeCallOnStack(stack.Bottom() + kStackSize, &Enter, &entry);
  if (__sanitizer_finish_switch_fiber != nullptr) {
    __sanitizer_finish_switch_fiber(saved, nullptr, nullptr);
  }
  return stack.Used();
}

}  // namespace fake
