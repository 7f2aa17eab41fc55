#include "host/sources/Source.h"

namespace obv_host {

const Source kSources[kSourceCount] = {
    {ReadProcessor, nullptr, kHardwareProcessor, false},
    {ReadMemory, nullptr, kHardwareMemory, false},
    {ReadMemoryTotal, nullptr, kHardwareMemoryTotal, false},
    {ReadPcie, &gEfiPciIoProtocolGuid, kHardwarePcie, true},
    {ReadNvme, &gEfiNvmExpressPassThruProtocolGuid, kHardwareNvme, true},
    {ReadSata, &gEfiAtaPassThruProtocolGuid, kHardwareSata, true},
    {ReadUsb, &gEfiUsbIoProtocolGuid, kHardwareUsb, false},
    {ReadNetwork, &gEfiSimpleNetworkProtocolGuid, kHardwareNetwork, true},
    {ReadAudio, &gEfiPciIoProtocolGuid, kHardwareAudio, false},
    {ReadDisplay, &gEfiGraphicsOutputProtocolGuid, kHardwareDisplay, false},
    {ReadFan, nullptr, kHardwareFan, false},
    {ReadProbe, nullptr, kHardwareProbe, false},
    {ReadSlot, nullptr, kHardwareSlot, false},
    {ReadPort, nullptr, kHardwarePort, false},
    {ReadSensor, &gObvSensorProtocolGuid, kHardwareSensor, true},
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
