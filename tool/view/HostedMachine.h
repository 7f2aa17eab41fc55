/** @file
  A machine that the application runs on: the fake firmware, and the reference host's portable part
  with its texts and fonts. The picture tests stand on it as well.
**/

#pragma once

#include <string_view>

#include "test/firmware/Run.h"

#include "host/portable/Host.h"

namespace board_view {

/// Rows of 0x00RRGGBB.
struct Screen {
  uint32_t Width = 0;
  uint32_t Height = 0;
  std::vector<uint32_t> Pixels;
};

/// What an output shows now.
Screen ScreenOf(const fake::GraphicsOutput &output);

/// One a process, as the application's state is one-shot.
class HostedMachine {
 public:
  HostedMachine();
  ~HostedMachine();
  HostedMachine(const HostedMachine &) = delete;
  HostedMachine &operator=(const HostedMachine &) = delete;

  fake::Firmware Machine;
  obv_host::Host Host = {};
  /// Gets the host's log, a line with its line feed at a time.
  std::function<void(std::string_view)> OnLog;

 private:
  static void WriteLog(void *self, const CHAR8 *line, UINTN size);
};

}  // namespace board_view
