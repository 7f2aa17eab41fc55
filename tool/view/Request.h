/** @file
  What somebody wants to see: a board on a screen, and what a hand does there.

  A request is a JSON object of texts as a person writes them; --help tells its fields.
**/

#pragma once

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

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
  /// Files in place of the host's fonts, in the order of its faces.
  std::vector<std::string> Fonts;
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

/// Throws a ViewError if there is anything in it that makes no sense.
Request ReadRequest(const nlohmann::json &wanted);

/// What a field that is a choice may say: "resolution" (the usual ones), "language", "appearance",
/// and "status", which is what "statuses" may say of a component.
std::vector<std::string> Choices(const std::string &field);

}  // namespace board_view
