#include "tool/view/Session.h"

#include <poll.h>
#include <unistd.h>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "tool/view/KeyTable.h"
#include "tool/view/Stage.h"
#include "tool/view/Window.h"

#include "tool/view/Request.h"

namespace board_view {

namespace {

using nlohmann::json;

/// How long the window waits for events before it looks after the rest.
constexpr int kWaitMilliseconds = 5;

/// The keys that change what is shown.
struct ChoiceKey {
  SDL_Keycode Key;
  const char *Name;
  const char *Field;
};
constexpr ChoiceKey kChoiceKeys[] = {
    {SDLK_F2, "F2", "resolution"},
    {SDLK_F3, "F3", "language"},
    {SDLK_F4, "F4", "appearance"},
};
constexpr SDL_Keycode kStatusKey = SDLK_F5;

/// Lines of the standard input, without waiting for them.
class Lines {
 public:
  std::optional<std::string> Next() {
    pollfd news = {STDIN_FILENO, POLLIN, 0};
    while (open_ && poll(&news, 1, 0) > 0) {
      char buffer[4096];
      ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
      open_ = count > 0;
      text_.append(buffer, open_ ? static_cast<size_t>(count) : 0);
    }
    size_t end = text_.find('\n');
    if (end == std::string::npos) {
      return std::nullopt;
    }
    std::string line = text_.substr(0, end);
    text_.erase(0, end + 1);
    return line;
  }

 private:
  bool open_ = true;
  std::string text_;
};

class Session {
 public:
  explicit Session(json wanted) : wanted_(std::move(wanted)) {
    wanted_.emplace("resolution", Choices("resolution")[1]);
    wanted_.emplace("language", Choices("language")[0]);
    wanted_.emplace("appearance", Choices("appearance")[0]);
    wanted_.emplace("statuses", json::object());
    Start();
  }

  int Run() {
    while (!over_) {
      HandleEvents();
      while (std::optional<std::string> line = lines_.Next()) {
        TakeLine(*line);
      }
      LookAtStage();
    }
    return 0;
  }

 private:
  /// Shows what is wanted from now on.
  void Start() {
    if (stage_) {
      state_ = stage_->Leave();
    }
    json request = wanted_;
    request.erase("stick");
    Request read = ReadRequest(request);
    stage_.emplace(wanted_, read.Width, read.Height, state_);
    resized_ = true;
    failed_ = false;
    window_.Complain("");
    SetTitle();
  }

  void SetTitle() {
    std::string title = "Boardscope";
    for (const ChoiceKey &key : kChoiceKeys) {
      title += std::string("   ") + key.Name + " " + wanted_[key.Field].get<std::string>();
    }
    std::string component = state_.Component;
    title += "   F5 status";
    if (!component.empty() && wanted_["statuses"].contains(component)) {
      title += " of " + component + ": " + wanted_["statuses"][component].get<std::string>();
    }
    window_.SetTitle(title);
  }

  void HandleEvents() {
    SDL_Event event;
    for (bool more = SDL_WaitEventTimeout(&event, kWaitMilliseconds) != 0; more;
         more = SDL_PollEvent(&event) != 0) {
      Handle(event);
    }
  }

  void Handle(const SDL_Event &event) {
    switch (event.type) {
      case SDL_QUIT:
        over_ = true;
        break;
      case SDL_WINDOWEVENT:
        window_.Draw();
        break;
      case SDL_KEYDOWN:
        HandleKey(event.key.keysym.sym);
        break;
      case SDL_MOUSEMOTION:
        Move(event.motion.x, event.motion.y, (event.motion.state & SDL_BUTTON_LMASK) != 0);
        break;
      case SDL_MOUSEBUTTONDOWN:
      case SDL_MOUSEBUTTONUP:
        if (event.button.button == SDL_BUTTON_LEFT) {
          Move(event.button.x, event.button.y, event.button.state == SDL_PRESSED);
        }
        break;
      default:
        break;
    }
  }

  void HandleKey(SDL_Keycode pressed) {
    for (const ChoiceKey &key : kChoiceKeys) {
      if (key.Key == pressed) {
        wanted_[key.Field] = Next(Choices(key.Field), wanted_[key.Field]);
        Start();
        return;
      }
    }
    if (pressed == kStatusKey) {
      ChooseStatus();
    } else if (std::optional<Input> input = KeyStroke(pressed)) {
      stage_->Send(*input);
    }
  }

  /// The one after the current one; the first after the last.
  static std::string Next(const std::vector<std::string> &choices, const std::string &current) {
    auto found = std::find(choices.begin(), choices.end(), current);
    return found == choices.end() || found + 1 == choices.end() ? choices[0] : found[1];
  }

  /// The next status of the component with the focus; after the last one its own again.
  void ChooseStatus() {
    std::string component = stage_->Leave().Component;
    if (!component.empty()) {
      json &statuses = wanted_["statuses"];
      std::vector<std::string> choices = Choices("status");
      std::string current = statuses.value(component, "");
      if (current == choices.back()) {
        statuses.erase(component);
      } else {
        statuses[component] = Next(choices, current);
      }
    }
    Start();
  }

  void Move(int x, int y, bool pressed) {
    Input input = {};
    input.What = Input::kMovement;
    input.X = static_cast<uint32_t>(std::clamp(x, 0, static_cast<int>(stage_->Width()) - 1));
    input.Y = static_cast<uint32_t>(std::clamp(y, 0, static_cast<int>(stage_->Height()) - 1));
    input.Pressed = pressed ? 1 : 0;
    stage_->Send(input);
  }

  void TakeLine(const std::string &line) {
    json said = json::parse(line, nullptr, false);
    if (said.is_object() && said.contains("board") && said["board"].is_string()) {
      wanted_["board"] = said["board"];
      Start();
    } else if (said.is_object() && said.contains("complaint") && said["complaint"].is_string()) {
      window_.Complain(said["complaint"]);
    } else {
      std::fprintf(stderr, "board-view: a line names a \"board\" or a \"complaint\"\n");
    }
  }

  void LookAtStage() {
    if (const uint32_t *pixels = stage_->News()) {
      // Until now the last view's picture stood there.
      if (resized_) {
        window_.SetSize(stage_->Width(), stage_->Height());
        resized_ = false;
      }
      window_.Show(pixels);
    }
    if (failed_ || !stage_->Ended()) {
      return;
    }
    if (stage_->Seen().Trouble[0] != 0) {
      failed_ = true;
      window_.Complain(stage_->Seen().Trouble);
      std::fprintf(stderr, "%s\n", stage_->Seen().Trouble);
    } else if (stage_->Seen().Jumped) {
      // As if the user had come back from the setup.
      Start();
    } else {
      over_ = true;
    }
  }

  json wanted_;
  Window window_;
  Lines lines_;
  std::optional<Stage> stage_;
  UiState state_ = {};
  /// The view's screen has a size that the window does not know yet.
  bool resized_ = false;
  /// There is no view any more, but the window tells why.
  bool failed_ = false;
  bool over_ = false;
};

}  // namespace

int RunSession(json wanted) {
  // An application that has ended takes no input any more; what it has told is looked at later.
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return Session(std::move(wanted)).Run();
  } catch (const std::exception &error) {
    std::fprintf(stderr, "board-view: %s\n", error.what());
    return 1;
  }
}

}  // namespace board_view
