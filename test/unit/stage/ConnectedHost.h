/** @file
  On MachineStage: EDK2's libraries have started and the application talks to the host, as after the
  first step of its start-up. For tests of single operations.
**/

#pragma once

#include "test/unit/stage/MachineStage.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/Run.h"

class ConnectedHost : public MachineStage {
 protected:
  ConnectedHost() {
    fake::RunLibraryConstructors(Machine);
    gHost.Protocol = &Host.Protocol();
    gHost.SharedState = &Host.State;
  }
  ~ConnectedHost() override { gHost = {}; }

  LogLines &Log() { return Host.Log; }
};
