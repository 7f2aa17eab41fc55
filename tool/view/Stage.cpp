#include "tool/view/Stage.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>

namespace board_view {

namespace {

using namespace std::chrono_literals;

/// A view that takes longer to leave hangs.
constexpr auto kPatience = 2s;

void Check(bool good, const char *what) {
  if (!good) {
    throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
  }
}

/// Starts this program once more, with these two files.
pid_t Spawn(const std::string &wanted, int input, int sight) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  // The window's own input is not the application's.
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, input, kInputFile);
  posix_spawn_file_actions_adddup2(&actions, sight, kSightFile);
  std::string name = "board-view", option = "--live", text = wanted;
  char *arguments[] = {name.data(), option.data(), text.data(), nullptr};
  pid_t process = -1;
  errno = posix_spawn(&process, "/proc/self/exe", &actions, nullptr, arguments, environ);
  posix_spawn_file_actions_destroy(&actions);
  Check(errno == 0, "the application does not start");
  return process;
}

/// A copy of a file with a number that the child's files do not need.
int Moved(int file) {
  int moved = fcntl(file, F_DUPFD_CLOEXEC, 10);
  close(file);
  return moved;
}

}  // namespace

Stage::Stage(const nlohmann::json &wanted, uint32_t width, uint32_t height, const UiState &state)
    : width_(width), height_(height) {
  int ends[2];
  Check(pipe2(ends, O_CLOEXEC) == 0, "no pipe");
  int reading = Moved(ends[0]);
  input_ = Moved(ends[1]);
  fcntl(input_, F_SETFL, O_NONBLOCK);
  int memory = Moved(memfd_create("board-view", MFD_CLOEXEC));
  size_t size = SightSize(width, height);
  Check(ftruncate(memory, static_cast<off_t>(size)) == 0, "no memory for the screen");
  void *mapped = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, memory, 0);
  Check(mapped != MAP_FAILED, "no memory for the screen");
  sight_ = new (mapped) Sight{};
  sight_->State = state;
  process_ = Spawn(wanted.dump(), reading, memory);
  close(reading);
  close(memory);
}

Stage::~Stage() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  close(input_);
  munmap(sight_, SightSize(width_, height_));
}

const uint32_t *Stage::News() {
  uint32_t transfers = sight_->Transfers;
  if (!sight_->Stands || transfers == shown_) {
    return nullptr;
  }
  shown_ = transfers;
  return sight_->Pixels();
}

void Stage::Send(const Input &input) {
  // One that hangs takes nothing any more.
  (void)!write(input_, &input, sizeof input);
}

void Stage::Reap(int status) {
  process_ = -1;
  if (WIFSIGNALED(status)) {
    std::string text = std::string("the application died: ") + strsignal(WTERMSIG(status));
    std::strncpy(sight_->Trouble, text.c_str(), sizeof sight_->Trouble - 1);
  }
}

bool Stage::Ended() {
  int status = 0;
  if (process_ > 0 && waitpid(process_, &status, WNOHANG) == process_) {
    Reap(status);
  }
  return process_ < 0;
}

UiState Stage::Leave() {
  Send({.What = Input::kLeave, .X = 0, .Y = 0, .Pressed = 0, .ScanCode = 0, .Character = 0});
  auto end = std::chrono::steady_clock::now() + kPatience;
  while (!Ended() && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(1ms);
  }
  return sight_->State;
}

}  // namespace board_view
