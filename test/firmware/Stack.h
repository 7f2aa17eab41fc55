// A stack of the size that firmware promises, with nothing behind its end.

#pragma once

#include <cstddef>
#include <functional>

// clang does not define gcc's __SANITIZE_ADDRESS__.
#ifdef __has_feature
#define FAKE_STACK_HAS_RED_ZONES __has_feature(address_sanitizer)
#endif

namespace fake {

/// What the UEFI specification promises an application.
inline constexpr size_t kPromisedStack = 128 << 10;

/// How many times as much is given to code that the address sanitizer has instrumented: it puts
/// red zones around what stands in a frame. The application needs a fifth more with them; the rest
/// is for what a test does in its turns, with the test framework on the same stack.
#if defined(__SANITIZE_ADDRESS__) || FAKE_STACK_HAS_RED_ZONES
inline constexpr size_t kStackFactor = 4;
#else
inline constexpr size_t kStackFactor = 1;
#endif

inline constexpr size_t kStackSize = kStackFactor * kPromisedStack;

/// Calls `body` on a stack of its own of kStackSize bytes; how many of them it has used. Who goes
/// beyond the end dies of a fault.
size_t CallOnStack(const std::function<void()> &body);

}  // namespace fake
