// board-view: shows a board as the application shows it.

#include <CLI/CLI.hpp>
#include <iostream>

#include "tool/view/LiveRun.h"
#include "tool/view/Request.h"
#include "tool/view/Session.h"
#include "tool/view/View.h"

namespace {

using board_view::ViewError;
using nlohmann::json;

constexpr char kAbout[] =
    "Shows a board in the application itself, on a firmware in memory.\n"
    "What a component names as its hardware is not there; it counts as present, with the lines of "
    "the board's description. --status says otherwise.";

/// An option that is a text of the request.
struct TextOption {
  const char *Name;
  const char *Help;
};
constexpr TextOption kTexts[] = {
    {"resolution", "default: 1920x1080"},
    {"language", "default: en-US"},
    {"appearance", "standard (default), high-contrast or large-text"},
    {"hover", "the component that the pointer stands on"},
    {"pointer", "X,Y: where the pointer stands"},
    {"filter", "all, usb, sata, m2, pcie or fan"},
    {"shot", "write the picture to this PNG file"},
};

json Answer(const json &wanted) {
  try {
    return board_view::View(board_view::ReadRequest(wanted));
  } catch (const ViewError &error) {
    return {{"error", error.what()}};
  }
}

/// A request a line, an answer a line, until there are no more.
int Serve() {
  for (std::string line; std::getline(std::cin, line);) {
    json answer = Answer(json::parse(line, nullptr, false));
    // A path may have bytes that are no text.
    std::cout << answer.dump(-1, ' ', false, json::error_handler_t::replace) << std::endl;
  }
  return 0;
}

int Show(const json &wanted) {
  json answer = Answer(wanted);
  if (answer.contains("error")) {
    std::cerr << answer["error"].get<std::string>() << "\n";
    return 1;
  }
  if (answer.contains("measures")) {
    std::cout << answer["measures"].dump() << "\n";
  }
  return 0;
}

void AddStatus(json *wanted, const std::string &text) {
  size_t at = text.rfind('=');
  if (at == std::string::npos) {
    throw CLI::ValidationError('"' + text + "\" is no status; write it like SATA_1=absent");
  }
  (*wanted)["statuses"][text.substr(0, at)] = text.substr(at + 1);
}

/// The options that fill in a request.
void AddOptions(CLI::App *app, json *wanted) {
  for (const TextOption &option : kTexts) {
    app->add_option_function<std::string>(
        std::string("--") + option.Name,
        [=, name = option.Name](const std::string &text) { (*wanted)[name] = text; }, option.Help);
  }
  using Texts = std::vector<std::string>;
  app->add_option_function<Texts>(
         "--status",
         [=](const Texts &texts) {
           for (const std::string &text : texts) {
             AddStatus(wanted, text);
           }
         },
         "NAME=available, device-error, not-ready, no-mapping or absent; any number of times")
      ->take_all()
      ->expected(1);
  app->add_option_function<Texts>(
         "--font", [=](const Texts &paths) { (*wanted)["fonts"] = paths; },
         "a file in place of the host's font; up to three times: regular, East Asian, bold")
      ->take_all()
      ->expected(1);
  app->add_flag_callback(
      "--measure", [=] { (*wanted)["measure"] = true; }, "print where everything stands, as JSON");
}

}  // namespace

int main(int count, char **arguments) {
  CLI::App app(kAbout, "board-view");
  json wanted = json::object();
  std::string path, live, stick = "screenshots";
  bool serve = false, window = false;
  CLI::Option *board = app.add_option("board", path, "a board.bin")->type_name("FILE");
  AddOptions(&app, &wanted);
  app.add_flag("--window", window, "show it in a window; lines on the standard input change it");
  app.add_option("--stick", stick, "the folder that gets the window's screenshots");
  app.add_flag("--serve", serve, "answer requests on the standard input, one JSON object a line")
      ->excludes(board);
  // The process that runs the application for a window; not for people.
  app.add_option("--live", live)->group("");
  try {
    app.parse(count, arguments);
    if (!serve && live.empty() && path.empty()) {
      throw CLI::RequiredError("board");
    }
  } catch (const CLI::ParseError &error) {
    return app.exit(error);
  }
  if (!live.empty()) {
    return board_view::RunLive(json::parse(live));
  }
  wanted["board"] = path;
  if (window) {
    wanted["stick"] = stick;
    return board_view::RunSession(wanted);
  }
  return serve ? Serve() : Show(wanted);
}
