/** @file
  On ViewStage: a view without fonts, of which tests describe every component themselves.
**/

#pragma once

#include "test/unit/stage/ViewStage.h"

class ComponentStage : public ViewStage {
 protected:
  ComponentStage() {
    LeaveFontsOut();
    Host.ClearComponents();
  }
};
