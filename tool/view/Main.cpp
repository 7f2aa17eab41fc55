// board-view: shows a board as the application shows it.

#include <CLI/CLI.hpp>
#include <iostream>

#include "tool/view/Request.h"
#include "tool/view/View.h"

namespace {

using board_view::Request;
using board_view::ViewError;
using nlohmann::json;

constexpr char kAbout[] =
    "Shows a board in the application itself, on a firmware in memory.\n"
    "What a component names as its hardware is not there; it counts as present, with the lines of "
    "the board's description. --status says otherwise.";

json Answer(const std::string &line) {
  try {
    return board_view::View(board_view::ParseRequest(line));
  } catch (const ViewError &error) {
    return {{"error", error.what()}};
  }
}

/// A request a line, an answer a line, until there are no more.
int Serve() {
  for (std::string line; std::getline(std::cin, line);) {
    // A path may have bytes that are no text.
    std::cout << Answer(line).dump(-1, ' ', false, json::error_handler_t::replace) << std::endl;
  }
  return 0;
}

int Show(const Request &request) {
  json answer = board_view::View(request);
  if (answer.contains("error")) {
    std::cerr << answer["error"].get<std::string>() << "\n";
    return 1;
  }
  if (answer.contains("measures")) {
    std::cout << answer["measures"].dump() << "\n";
  }
  return 0;
}

/// An option whose text the request takes or refuses.
template <typename Setter>
CLI::Option *Add(CLI::App *app, const std::string &name, Setter set, const std::string &help) {
  return app
      ->add_option_function<std::vector<std::string>>(
          name,
          [=](const std::vector<std::string> &texts) {
            for (const std::string &text : texts) {
              try {
                set(text);
              } catch (const ViewError &error) {
                throw CLI::ValidationError(error.what());
              }
            }
          },
          help)
      ->expected(1);
}

}  // namespace

int main(int count, char **arguments) {
  CLI::App app(kAbout, "board-view");
  Request request;
  bool serve = false;
  auto set = [&request](void (*take)(Request *, const std::string &)) {
    return [&request, take](const std::string &text) { take(&request, text); };
  };
  CLI::Option *board = app.add_option("board", request.Board, "a board.bin")->type_name("FILE");
  Add(&app, "--resolution", set(board_view::SetResolution), "default: 1920x1080");
  Add(&app, "--language", set(board_view::SetLanguage), "default: en-US");
  Add(&app, "--appearance", set(board_view::SetAppearance),
      "standard (default), high-contrast or large-text");
  Add(&app, "--status", set(board_view::AddStatus),
      "NAME=available, device-error, not-ready, no-mapping or absent; any number of times")
      ->take_all();
  app.add_option("--hover", request.Hover, "the component that the pointer stands on");
  Add(&app, "--pointer", set(board_view::SetPointer), "X,Y: where the pointer stands");
  Add(&app, "--filter", set(board_view::SetFilter), "all, usb, sata, m2, pcie or fan");
  app.add_option("--shot", request.Shot, "write the picture to this PNG file");
  app.add_flag("--measure", request.Measure, "print where everything stands, as JSON");
  app.add_flag("--serve", serve, "answer requests on the standard input, one JSON object a line")
      ->excludes(board);
  try {
    app.parse(count, arguments);
    if (!serve && request.Board.empty()) {
      throw CLI::RequiredError("board");
    }
  } catch (const CLI::ParseError &error) {
    return app.exit(error);
  }
  return serve ? Serve() : Show(request);
}
