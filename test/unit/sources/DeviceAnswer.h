// What a source answered, in words that tests compare, and what every answer has to keep.

#pragma once

#include "test/firmware/DevicePath.h"
#include "test/firmware/FakeFirmware.h"

#include "host/sources/Source.h"

namespace obv_host {

struct DeviceAnswer {
  EFI_STATUS Status = EFI_ABORTED;
  Facts Told = {};
  Presence Where = {};

  /// "Label: Value" for each line.
  std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    for (UINTN i = 0; i < Told.Count; i++) {
      lines.push_back(fake::ToAscii(Told.Lines[i].Label) + ": " +
                      fake::ToAscii(Told.Lines[i].Value));
    }
    return lines;
  }

  /// Value of the first line with this label; "(none)" without one.
  std::string Line(const std::string &label) const {
    for (const std::string &line : Lines()) {
      if (line.rfind(label + ": ", 0) == 0) {
        return line.substr(label.size() + 2);
      }
    }
    return "(none)";
  }
};

template <typename Character>
bool EndsWithin(const Character *text, size_t count) {
  return std::find(text, text + count, 0) != text + count;
}

/// Which promise of Source.h an answer breaks; empty when it keeps them all.
inline std::string BrokenPromise(const DeviceAnswer &answer) {
  constexpr EFI_STATUS kAnswers[] = {EFI_SUCCESS, EFI_DEVICE_ERROR, EFI_NOT_READY, EFI_NOT_FOUND};
  if (std::find(std::begin(kAnswers), std::end(kAnswers), answer.Status) == std::end(kAnswers)) {
    return "answered " + fake::StatusName(answer.Status);
  }
  if (answer.Told.Count > OBV_INFO_CAPACITY) {
    return "told too many lines";
  }
  for (UINTN i = 0; i < answer.Told.Count; i++) {
    const OBV_COMPONENT_INFO &line = answer.Told.Lines[i];
    if (!EndsWithin(line.Label, OBV_INFO_LABEL_LENGTH) ||
        !EndsWithin(line.Value, OBV_INFO_VALUE_LENGTH) || line.Value[0] == 0) {
      return "told a line without an end or a value";
    }
  }
  if (answer.Status == EFI_NOT_FOUND) {
    bool silent = answer.Told.Count == 0 && answer.Where.Handle == nullptr;
    return silent ? "" : "told something of what is not there";
  }
  if (answer.Where.Handle == nullptr || answer.Where.Protocol == nullptr ||
      answer.Where.Interface == nullptr) {
    return "did not say what stands for the device";
  }
  if (answer.Status == EFI_DEVICE_ERROR && answer.Line("Health").rfind("Failing: ", 0) != 0) {
    return "did not say why the device fails";
  }
  return "";
}

/// Hardware whose name is a device path.
inline BoardHardware HardwareAtPath(UINT16 kind, fake::DevicePath path) {
  BoardHardware hardware = {};
  hardware.Kind = kind;
  EFI_DEVICE_PATH_PROTOCOL *nodes = path.Get();
  std::memcpy(hardware.Name, nodes, fake::DevicePathSizeWithoutEnd(nodes) + 4);
  return hardware;
}

inline DeviceAnswer AskSource(ReadHardware read, const BoardHardware &hardware) {
  DeviceAnswer answer;
  answer.Status = read(hardware, &answer.Told, &answer.Where);
  return answer;
}

/// Lets the sources use this firmware.
inline void UseFirmware(fake::Firmware &machine) {
  gST = &machine.SystemTable;
  gBS = &machine.BootServices;
  gRT = &machine.RuntimeServices;
}

}  // namespace obv_host
