/** @file
  Whole runs of the application, whose state is one-shot, with as little repeated as can be: one
  process starts the run and stops where the input begins to matter; each input goes on from there
  in a child of its own.
**/

#pragma once

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <cstdio>

#include "test/fuzz/Fuzz.h"

#include "test/firmware/FakeFirmware.h"

/// What libFuzzer has the sanitizers call before they end the process; null in other builds.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)(void));

namespace fuzz {

/// clang's counters of visited code, one byte each; null in other builds. Not declared in C++,
/// because clang would then give its own declaration another name.
#define FUZZ_COUNTERS(Edge, Address)                           \
  __asm__(".weak __" Edge                                      \
          "___sancov_cntrs\n\t"                                \
          "movq __" Edge "___sancov_cntrs@GOTPCREL(%%rip), %0" \
          : "=r"(Address))

/// Lets the fuzzer see what children visit: all whole pages of counters become shared memory, once.
inline void ShareCounters() {
  static bool shared = false;
  if (std::exchange(shared, true)) {
    return;
  }
  std::uintptr_t start = 0;
  std::uintptr_t stop = 0;
  FUZZ_COUNTERS("start", start);
  FUZZ_COUNTERS("stop", stop);
  auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  std::uintptr_t from = (start + page - 1) & ~(page - 1);
  std::uintptr_t to = stop & ~(page - 1);
  if (from < to) {
    void *mapped = mmap(reinterpret_cast<void *>(from), to - from, PROT_READ | PROT_WRITE,
                        MAP_SHARED | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
    Require(mapped != MAP_FAILED, "the counters can be shared");
  }
}

/// Messages between two processes: a length, then as many bytes.
class Channel {
 public:
  Channel() { Require(pipe(ends_) == 0, "there is a pipe"); }
  void CloseReading() { close(ends_[0]); }
  void CloseWriting() { close(ends_[1]); }

  bool Send(const void *data, std::size_t size) {
    return Write(&size, sizeof size) && Write(data, size);
  }
  /// False when the other side is gone.
  bool Receive(std::vector<std::uint8_t> *bytes) {
    std::size_t size = 0;
    if (!Read(&size, sizeof size)) {
      return false;
    }
    bytes->resize(size);
    return Read(bytes->data(), size);
  }

 private:
  template <typename Transfer>
  static bool Repeat(Transfer transfer, std::size_t size) {
    for (std::size_t done = 0; done < size;) {
      ssize_t count = transfer(done, size - done);
      if (count <= 0 && (count == 0 || errno != EINTR)) {
        return false;
      }
      done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
  }
  bool Write(const void *data, std::size_t size) {
    const auto *bytes = static_cast<const std::uint8_t *>(data);
    return Repeat([=, this](size_t at, size_t left) { return write(ends_[1], bytes + at, left); },
                  size);
  }
  bool Read(void *data, std::size_t size) {
    auto *bytes = static_cast<std::uint8_t *>(data);
    return Repeat([=, this](size_t at, size_t left) { return read(ends_[0], bytes + at, left); },
                  size);
  }

  int ends_[2];
};

inline VOID EFIAPI LeaveAlone(VOID *, UINTN, UINT8) {}

/// Leaves out what a child would spend much of its time with: nobody reads the records, and the
/// address sanitizer sees the use of freed memory anyway. The application uses SetMem for nothing
/// but to poison what it gives back.
inline void Hasten(fake::Firmware *machine) {
  machine->BootServices.SetMem = LeaveAlone;
  machine->Calls.RecordAll(false);
  machine->Pool.Poison = false;
}

/// One for each target; it lives as long as the process.
class LateFork {
 public:
  /// `run` is a whole run that asks for its input once, with Input(), and ends with End().
  using Run = void (*)(LateFork *fork);
  explicit LateFork(Run run) : run_(run) {
    ShareCounters();
    // What waits in the buffers would otherwise be written by both processes.
    std::fflush(nullptr);
    if (fork() == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      inputs_.CloseWriting();
      verdicts_.CloseReading();
      LeaveFuzzer();
      run_(this);
      _exit(1);  // The run has not asked for its input.
    }
    inputs_.CloseReading();
    verdicts_.CloseWriting();
  }

  /// Lets a run go on with this input; ends the process when a promise is broken.
  void Try(const std::uint8_t *data, std::size_t size) {
    std::vector<std::uint8_t> verdict;
    bool told = inputs_.Send(data, size) && verdicts_.Receive(&verdict);
    Require(told, "a run gets as far as its input");
    if (!verdict.empty()) {
      Stop(std::string(verdict.begin(), verdict.end()));
    }
  }

  /// Ends an input's run that went well, without tidying up what is gone with the process.
  [[noreturn]] static void End() {
    std::fflush(nullptr);
    _exit(0);
  }

  /// Called in the run: returns once for each input, each time in another process.
  Reader Input() {
    while (inputs_.Receive(&input_)) {
      output_ = memfd_create("output", 0);
      Require(output_ >= 0, "there is a file for the output");
      pid_t child = fork();
      if (child == 0) {
        dup2(output_, STDOUT_FILENO);
        dup2(output_, STDERR_FILENO);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        return Reader(input_.data(), input_.size());
      }
      std::string verdict = VerdictOn(child);
      close(output_);
      if (!verdicts_.Send(verdict.data(), verdict.size())) {
        break;
      }
    }
    _exit(0);  // The fuzzer is gone.
  }

 private:
  /// libFuzzer would put down the first input as the one that failed. Who ends it by a signal to
  /// the group ends this process through it, not as a run that fails.
  static void LeaveFuzzer() {
    signal(SIGABRT, SIG_DFL);
    for (int number : {SIGINT, SIGTERM}) {
      signal(number, SIG_IGN);
    }
    if (__sanitizer_set_death_callback != nullptr) {
      __sanitizer_set_death_callback(nullptr);
    }
  }

  /// Empty when the child has ended well; else how it ended, and what it wrote.
  std::string VerdictOn(pid_t child) const {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
      return "";
    }
    std::string text = WIFSIGNALED(status)
                           ? std::string("the run died of ") + strsignal(WTERMSIG(status))
                           : "the run ended with " + std::to_string(WEXITSTATUS(status));
    text += "\n";
    char buffer[4096];
    lseek(output_, 0, SEEK_SET);
    for (ssize_t count; (count = read(output_, buffer, sizeof buffer)) > 0;) {
      text.append(buffer, static_cast<std::size_t>(count));
    }
    return text;
  }

  Run run_;
  Channel inputs_;
  Channel verdicts_;
  std::vector<std::uint8_t> input_;
  int output_ = -1;
};

}  // namespace fuzz
