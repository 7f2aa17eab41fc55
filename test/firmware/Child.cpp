#include "test/firmware/Child.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>

#ifdef BOARDSCOPE_COUNTED
extern "C" void __gcov_dump(void);
#endif

namespace fake {

namespace {

struct Pipe {
  int Read = -1;
  int Write = -1;
  bool Open() {
    int ends[2];
    if (pipe(ends) != 0) {
      return false;
    }
    Read = ends[0];
    Write = ends[1];
    return true;
  }
};

void WriteAll(int file, const std::string &text) {
  size_t at = 0;
  while (at < text.size()) {
    ssize_t count = write(file, text.data() + at, text.size() - at);
    if (count <= 0 && errno != EINTR) {
      return;
    }
    at += count > 0 ? static_cast<size_t>(count) : 0;
  }
}

void EnterChild(const Pipe &text, const Pipe &output) {
  close(text.Read);
  close(output.Read);
  dup2(output.Write, STDOUT_FILENO);
  dup2(output.Write, STDERR_FILENO);
}

// Reads both pipes until the child closed them or the time is over.
void Collect(const Pipe &text, const Pipe &output, unsigned seconds, ChildResult *result) {
  using Clock = std::chrono::steady_clock;
  Clock::time_point end = Clock::now() + std::chrono::seconds(seconds);
  pollfd files[] = {{text.Read, POLLIN, 0}, {output.Read, POLLIN, 0}};
  std::string *sinks[] = {&result->Text, &result->Output};
  while (files[0].fd >= 0 || files[1].fd >= 0) {
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0) {
      result->TimedOut = true;
      return;
    }
    poll(files, 2, static_cast<int>(left));
    for (int i = 0; i < 2; i++) {
      if (files[i].fd < 0 || files[i].revents == 0) {
        continue;
      }
      char buffer[65536];
      ssize_t count = read(files[i].fd, buffer, sizeof buffer);
      if (count > 0) {
        sinks[i]->append(buffer, static_cast<size_t>(count));
      } else {
        files[i].fd = -1;
      }
    }
  }
}

/// Forks. In the child `text` gets the file to write a text to, and the answer is true. The parent
/// waits for the child's end.
bool Fork(ChildResult *result, unsigned timeoutSeconds, int *text) {
  Pipe texts;
  Pipe output;
  *result = {};
  if (!texts.Open() || !output.Open()) {
    result->Output = "no pipe for the child process";
    return false;
  }
  // What waits in the buffers would otherwise be written by both processes.
  std::fflush(nullptr);
  pid_t child = fork();
  if (child == 0) {
    EnterChild(texts, output);
    *text = texts.Write;
    return true;
  }
  close(texts.Write);
  close(output.Write);
  Collect(texts, output, timeoutSeconds, result);
  if (result->TimedOut) {
    kill(child, SIGKILL);
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  close(texts.Read);
  close(output.Read);
  result->ExitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  result->Signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  result->Succeeded = result->ExitCode == 0 && !result->TimedOut;
  return false;
}

}  // namespace

ChildResult RunInChild(const std::function<int(std::string *text)> &body, unsigned timeoutSeconds) {
  ChildResult result;
  int text = -1;
  if (Fork(&result, timeoutSeconds, &text)) {
    std::string filled;
    int code = body(&filled);
    WriteAll(text, filled);
    EndChild(code);
  }
  return result;
}

bool GoOnInChild(ChildResult *result, unsigned timeoutSeconds) {
  int text = -1;
  return Fork(result, timeoutSeconds, &text);
}

void EndChild(int code) {
  std::fflush(nullptr);
#ifdef BOARDSCOPE_COUNTED
  __gcov_dump();
#endif
  _exit(code & 0xFF);
}

std::string ChildResult::Summary() const {
  if (TimedOut) {
    return "the child did not end in time\n" + Output;
  }
  if (Signal != 0) {
    return std::string("the child died of ") + strsignal(Signal) + "\n" + Output;
  }
  return "the child ended with " + std::to_string(ExitCode) + "\n" + Output;
}

}  // namespace fake
