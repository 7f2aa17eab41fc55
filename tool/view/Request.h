/** @file
  What somebody wants to see: a board on a screen, and what a hand does there.
**/

#pragma once

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>

#include "test/firmware/Edk2.h"

#include "host/portable/Appearance.h"

namespace board_view {

/// Says what is wrong and what to do about it.
class ViewError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A pixel of the view.
struct Pixel {
  uint32_t X = 0;
  uint32_t Y = 0;
};

struct Request {
  std::string Board;
  uint32_t Width = 1920;
  uint32_t Height = 1080;
  std::string Language = "en-US";
  obv_host::LookChoice Look = {};
  /// By the names of components; what the host answers in place of what it would.
  std::map<std::string, EFI_STATUS> Statuses;
  /// The component that the pointer stands on.
  std::string Hover;
  /// Where the pointer stands; without that and Hover there is none to be seen.
  std::optional<Pixel> Pointer;
  /// How often the key is pressed that leads to the next category.
  size_t FilterPresses = 0;
  /// The file that gets the picture; empty for none.
  std::string Shot;
  bool Measure = false;
};

/// Each takes a text as a person writes it and throws a ViewError if it makes no sense.
void SetResolution(Request *request, const std::string &text);
void SetLanguage(Request *request, const std::string &text);
void SetAppearance(Request *request, const std::string &text);
void SetStatus(Request *request, const std::string &name, const std::string &status);
/// NAME=STATUS.
void AddStatus(Request *request, const std::string &text);
void SetPointer(Request *request, const std::string &text);
void SetFilter(Request *request, const std::string &text);

/// A request as one line of JSON has it.
Request ParseRequest(const std::string &line);

}  // namespace board_view
