#include "tool/view/PreparedMachine.h"

#include <fstream>
#include <iterator>

#include "host/portable/BoardReader.h"
#include "tool/view/Statuses.h"

namespace board_view {

namespace {

/// A slot of the host's services is a plain function.
obv_host::LookChoice gLook;

Bytes ReadFile(const std::string &path) {
  std::ifstream file(path, std::ios::binary);
  Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file) {
    throw ViewError("cannot read " + path);
  }
  return bytes;
}

}  // namespace

PreparedMachine::PreparedMachine(const Request &request) {
  Machine.Pool.Poison = false;
  Machine.Calls.RecordAll(false);
  Machine.AddOutput({{request.Width, request.Height}});
  Machine.AddSimplePointer();
  Machine.AddAbsolutePointer({0, 0, request.Width, request.Height});
  Machine.Variables.SetText(u"PlatformLang", request.Language);
  gLook = request.Look;
  Host.Services.ReadLook = [](void *) { return gLook; };
  TakeFonts(request.Fonts);
  TakeBoard(request.Board);
  for (const auto &[name, status] : request.Statuses) {
    if (!IndexOf(name)) {
      throw ViewError("the board has no component \"" + name + "\"");
    }
  }
  ChooseStatuses(&Host, request.Statuses);
}

std::optional<size_t> PreparedMachine::IndexOf(const std::string &name) const {
  for (size_t i = 0; i < Host.ActiveBoard.Header.ComponentCount; i++) {
    if (fake::ToAscii(obv_host::ComponentAt(Host.ActiveBoard, i).Name) == name) {
      return i;
    }
  }
  return std::nullopt;
}

void PreparedMachine::TakeFonts(const std::vector<std::string> &paths) {
  for (const std::string &path : paths) {
    fonts_.push_back(ReadFile(path));
    Host.Fonts[fonts_.size() - 1] = {fonts_.back().data(), fonts_.back().size()};
  }
}

void PreparedMachine::TakeBoard(const std::string &path) {
  board_ = ReadFile(path);
  obv_host::Board board;
  obv_host::BoardFault fault;
  if (EFI_ERROR(obv_host::OpenBoard(board_.data(), board_.size(), &board, &fault))) {
    throw ViewError(path + " is no board: " + fault.Text + "; make it with tool/board build");
  }
  if (EFI_ERROR(obv_host::UseBoard(&Host, "the board", board_.data(), board_.size()))) {
    throw ViewError("there is no memory for the board");
  }
}

}  // namespace board_view
