#include "tool/view/View.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "host/portable/BoardReader.h"
#include "test/firmware/Child.h"
#include "tool/view/Hand.h"
#include "tool/view/HostedMachine.h"
#include "tool/view/Measures.h"
#include "tool/view/PngFile.h"
#include "tool/view/Statuses.h"

namespace board_view {

namespace {

using nlohmann::json;
using Bytes = std::vector<uint8_t>;

constexpr unsigned kMostSeconds = 60;

/// A slot of the host's services is a plain function.
obv_host::LookChoice gLook;

Bytes ReadBoard(const Request &request) {
  std::ifstream file(request.Board, std::ios::binary);
  if (!file) {
    throw ViewError("cannot read " + request.Board);
  }
  Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  obv_host::Board board;
  obv_host::BoardFault fault;
  if (EFI_ERROR(obv_host::OpenBoard(bytes.data(), bytes.size(), &board, &fault))) {
    throw ViewError(request.Board + " is no board: " + fault.Text +
                    "; make it with tool/board build");
  }
  for (const auto &[name, status] : request.Statuses) {
    auto isMeant = [&, &name = name](UINTN index) {
      return fake::ToAscii(obv_host::ComponentAt(board, index).Name) == name;
    };
    bool known = false;
    for (UINTN i = 0; i < board.Header.ComponentCount; i++) {
      known = known || isMeant(i);
    }
    if (!known) {
      throw ViewError("the board has no component \"" + name + "\"");
    }
  }
  return bytes;
}

void Furnish(HostedMachine *hosted, const Request &request) {
  fake::Firmware &machine = hosted->Machine;
  machine.Pool.Poison = false;
  machine.Calls.RecordAll(false);
  machine.AddOutput({{request.Width, request.Height}});
  machine.AddSimplePointer();
  machine.AddAbsolutePointer({0, 0, request.Width, request.Height});
  machine.Variables.SetText(u"PlatformLang", request.Language);
  gLook = request.Look;
  hosted->Host.Services.ReadLook = [](void *) { return gLook; };
  ChooseStatuses(&hosted->Host, request.Statuses);
}

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
  Bytes board = ReadBoard(request);
  HostedMachine hosted;
  Furnish(&hosted, request);
  if (EFI_ERROR(obv_host::UseBoard(&hosted.Host, "the board", board.data(), board.size()))) {
    throw ViewError("there is no memory for the board");
  }
  Outcome outcome = Run(&hosted, request);
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
        *text = AnswerOrError(request).dump();
        return 0;
      },
      kMostSeconds);
  if (!child.Succeeded) {
    return {{"error", "the view failed: " + child.Summary()}};
  }
  return json::parse(child.Text);
}

}  // namespace board_view
