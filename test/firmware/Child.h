// Runs code in a child process, for what can happen only once in a process or may crash.

#pragma once

#include <functional>
#include <string>

namespace fake {

struct ChildResult {
  bool Succeeded = false;  ///< The function returned 0.
  int ExitCode = -1;       ///< What it returned, or -1.
  int Signal = 0;          ///< The signal that ended it, or 0.
  bool TimedOut = false;
  std::string Text;    ///< What it put into its text.
  std::string Output;  ///< Its standard output and standard error.
  /// One line for a failure message.
  std::string Summary() const;
};

/// Forks, calls `body` in the child with a text to fill, and waits. The child ends without
/// running destructors of the parent's objects. Assertions of a test framework work in the child
/// when its result says so: `return testing::Test::HasFailure() ? 1 : 0;`
ChildResult RunInChild(const std::function<int(std::string *text)> &body,
                       unsigned timeoutSeconds = 120);

/// As RunInChild, but the child goes on from here, with all that has happened so far: true in the
/// child, which has to end itself with EndChild; false in the parent, when the child has ended.
bool GoOnInChild(ChildResult *result, unsigned timeoutSeconds = 120);
[[noreturn]] void EndChild(int code);

}  // namespace fake
