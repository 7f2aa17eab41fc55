/** @file
  What a hand does in the view until it is as somebody wants to see it.
**/

#pragma once

#include <deque>

#include "test/firmware/FakeFirmware.h"
#include "tool/view/Request.h"

namespace board_view {

/// Keys and pointer of a run, a step a turn of the main loop.
class Hand {
 public:
  Hand(fake::Firmware &machine, const Request &request);

  /// To be called in each turn. True once everything is done and has been drawn.
  bool Turn();
  /// Why it cannot be done; empty if it can.
  const std::string &Trouble() const { return trouble_; }

 private:
  using Step = void (Hand::*)();

  void PressFilterKey();
  void Point();
  void TryToHover();
  void LookAtFocus();
  void HideArrow();
  void Rest();
  void Next(Step step, int turns);
  void MoveTo(const Pixel &pixel);
  std::deque<Pixel> PlacesOf(size_t index) const;
  /// The index of the component that the pointer is to stand on; trouble if there is none.
  std::optional<size_t> Hovered();

  fake::Firmware &machine_;
  const Request &request_;
  Step step_;
  int turns_;
  bool done_ = false;
  size_t target_ = 0;
  std::deque<Pixel> places_;
  std::string trouble_;
};

}  // namespace board_view
