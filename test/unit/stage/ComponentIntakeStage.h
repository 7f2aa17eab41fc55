/** @file
  On ResourceStage: component intake for a view of 2560 x 1440.
**/

#pragma once

#include "test/unit/stage/ResourceStage.h"

#include "app/base/Geometry.h"
#include "resources/ComponentIntake.h"

class ComponentIntakeStage : public ResourceStage {
 protected:
  ComponentIntakeStage() {
    gGeometry.ViewWidth = 2560;
    gGeometry.ViewHeight = 1440;
    gGeometry.ScaleX = 1.25;
    gGeometry.ScaleY = 1.5;
    Host.Answers.clear();
    Host.ScaleComponents = false;
  }
  ~ComponentIntakeStage() override { gComponents = {}; }

  Lines HostCalls() const {
    return Machine.Calls.Lines(
        {fake::Service::HostGetResourceData, fake::Service::HostParseComponents,
         fake::Service::HostQueryComponentStatus, fake::Service::HostFinishParse});
  }
  /// Flags in the order NotReady, NoMapping, Available, DeviceError.
  std::string Flags(size_t index = 0) const {
    const OBV_COMPONENT &c = Host.Components[index];
    std::string flags;
    for (UINT8 flag : {c.NotReady, c.NoMapping, c.Available, c.DeviceError}) {
      flags += std::to_string(flag);
    }
    return flags;
  }
  void KeepComponents(size_t count) { Host.Components.resize(count); }
  /// All queries are answered with this.
  void Answer(EFI_STATUS status) {
    Host.OnQueryComponentStatus = [status](CHAR16 *, UINT32, UINTN, UINT64 *,
                                           OBV_COMPONENT_INFO *) { return status; };
  }
};
