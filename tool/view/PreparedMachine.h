/** @file
  The machine of a request, ready to run the application on.
**/

#pragma once

#include "tool/view/HostedMachine.h"
#include "tool/view/Request.h"

namespace board_view {

using Bytes = std::vector<uint8_t>;

/// With an output, pointers, the board, and everything else that was asked for.
class PreparedMachine : public HostedMachine {
 public:
  /// Throws a ViewError if that cannot be had.
  explicit PreparedMachine(const Request &request);

  /// The component's place in the board.
  std::optional<size_t> IndexOf(const std::string &name) const;

 private:
  void TakeFonts(const std::vector<std::string> &paths);
  void TakeBoard(const std::string &path);

  Bytes board_;
  std::vector<Bytes> fonts_;
};

}  // namespace board_view
