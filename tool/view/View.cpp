#include "tool/view/View.h"

#include "test/firmware/Child.h"
#include "tool/view/Hand.h"
#include "tool/view/Measures.h"
#include "tool/view/PngFile.h"
#include "tool/view/PreparedMachine.h"

namespace board_view {

namespace {

using nlohmann::json;

constexpr unsigned kMostSeconds = 60;

/// What is to be seen once the hand has done its part.
struct Outcome {
  Screen Picture;
  json Measures;
  std::string Trouble;
};

Outcome Run(HostedMachine *hosted, const Request &request) {
  Outcome outcome;
  Hand hand(hosted->Machine, request);
  fake::RunOptions options;
  options.EscapeAtTurn = 0;
  options.EveryTurn = [&, seen = false](int) mutable {
    if (seen || !hand.Turn()) {
      return;
    }
    seen = true;
    outcome.Trouble = hand.Trouble();
    if (outcome.Trouble.empty()) {
      outcome.Picture = ScreenOf(hosted->Machine.Output());
      outcome.Measures = request.Measure ? MeasureView() : json();
    }
    hosted->Machine.Keyboard.Scan(SCAN_ESC);
  };
  fake::RunResult result = fake::RunApplication(hosted->Machine, options);
  if (outcome.Trouble.empty() && outcome.Picture.Pixels.empty()) {
    outcome.Trouble =
        "the view ended before it stood, with status " + std::to_string(result.Status);
  } else if (!hosted->Machine.Problems().empty()) {
    outcome.Trouble = "the view broke a rule of the firmware: " + hosted->Machine.ProblemsText();
  }
  return outcome;
}

json Answer(const Request &request) {
  PreparedMachine machine(request);
  Outcome outcome = Run(&machine, request);
  if (!outcome.Trouble.empty()) {
    throw ViewError(outcome.Trouble);
  }
  json answer = json::object();
  if (!request.Shot.empty()) {
    WritePng(request.Shot, outcome.Picture);
    answer["shot"] = request.Shot;
  }
  if (request.Measure) {
    answer["measures"] = std::move(outcome.Measures);
  }
  return answer;
}

json AnswerOrError(const Request &request) {
  try {
    return Answer(request);
  } catch (const std::exception &error) {
    return {{"error", error.what()}};
  }
}

}  // namespace

json View(const Request &request) {
  fake::ChildResult child = fake::RunInChild(
      [&](std::string *text) {
        *text = AnswerOrError(request).dump(-1, ' ', false, json::error_handler_t::replace);
        return 0;
      },
      kMostSeconds);
  if (!child.Succeeded) {
    return {{"error", "the view failed: " + child.Summary()}};
  }
  return json::parse(child.Text);
}

}  // namespace board_view
