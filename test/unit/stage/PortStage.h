/** @file
  On ConnectedHost: a small output for LVGL's port, which tests start themselves; no view.
**/

#pragma once

#include "test/unit/stage/ConnectedHost.h"

#include "app/base/Geometry.h"
#include "platform/FontTable.h"
#include "platform/LvglPort.h"

class PortStage : public ConnectedHost {
 protected:
  PortStage() {
    gHost.Gop = Output.Protocol();
    SetView(64, 48);
    gGeometry.PreviousWidth = 64;
    gGeometry.PreviousHeight = 48;
    gGeometry.ScaleX = gGeometry.ScaleY = 1;
  }
  static void SetView(UINT16 width, UINT16 height) {
    gGeometry.ViewWidth = width;
    gGeometry.ViewHeight = height;
  }
  std::vector<std::string> Blts() { return Machine.Calls.Lines({fake::Service::GopBlt}); }

  fake::GraphicsOutput &Output = Machine.AddOutput({{64, 48}});
};
