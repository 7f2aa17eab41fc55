#include "host/sources/Source.h"

namespace obv_host {

const Source kSources[kSourceCount] = {
    {kHardwareProcessor, ReadProcessor, nullptr, false},
    {kHardwareMemory, ReadMemory, nullptr, false},
    {kHardwareMemoryTotal, ReadMemoryTotal, nullptr, false},
    {kHardwarePcie, ReadPcie, &gEfiPciIoProtocolGuid, true},
    {kHardwareNvme, ReadNvme, &gEfiNvmExpressPassThruProtocolGuid, true},
    {kHardwareSata, ReadSata, &gEfiAtaPassThruProtocolGuid, true},
    {kHardwareUsb, ReadUsb, &gEfiUsbIoProtocolGuid, false},
    {kHardwareNetwork, ReadNetwork, &gEfiSimpleNetworkProtocolGuid, true},
    {kHardwareAudio, ReadAudio, &gEfiPciIoProtocolGuid, false},
    {kHardwareDisplay, ReadDisplay, &gEfiGraphicsOutputProtocolGuid, false},
    {kHardwareFan, ReadFan, nullptr, false},
    {kHardwareProbe, ReadProbe, nullptr, false},
    {kHardwareSlot, ReadSlot, nullptr, false},
    {kHardwarePort, ReadPort, nullptr, false},
    {kHardwareSensor, ReadSensor, &gObvSensorProtocolGuid, true},
};

const Source *SourceOf(UINT16 kind) {
  for (const Source &source : kSources) {
    if (source.Kind == kind) {
      return &source;
    }
  }
  return nullptr;
}

}  // namespace obv_host
