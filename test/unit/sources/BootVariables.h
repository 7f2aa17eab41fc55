/** @file
  The variables of the boot menu, for tests and fuzz targets.
**/

#pragma once

#include "test/firmware/FakeFirmware.h"

extern "C" {
#include <Guid/GlobalVariable.h>
}

namespace obv_host {

class BootVariables {
 public:
  explicit BootVariables(fake::Firmware &machine) : machine_(machine) {}

  /// Replaces a global variable; no bytes remove it.
  void Set(const std::u16string &name, const std::vector<UINT8> &bytes) {
    machine_.Variables.Remove(name);
    if (!bytes.empty()) {
      machine_.Variables.Set(reinterpret_cast<const CHAR16 *>(name.c_str()),
                             &gEfiGlobalVariableGuid, kAttributes, bytes.size(), bytes.data());
    }
  }

  void SetOrder(const std::vector<UINT16> &numbers) {
    const auto *bytes = reinterpret_cast<const UINT8 *>(numbers.data());
    Set(u"BootOrder", {bytes, bytes + numbers.size() * sizeof(UINT16)});
  }

  void SetEntry(UINT16 number, const std::u16string &description,
                UINT32 attributes = LOAD_OPTION_ACTIVE) {
    Set(NameOf(number), Entry(description, attributes));
  }

  static std::u16string NameOf(UINT16 number) {
    std::u16string name = u"Boot";
    for (int shift = 12; shift >= 0; shift -= 4) {
      name += u"0123456789ABCDEF"[number >> shift & 0xF];
    }
    return name;
  }

  /// A load option whose path is an end node.
  static std::vector<UINT8> Entry(const std::u16string &description,
                                  UINT32 attributes = LOAD_OPTION_ACTIVE) {
    std::vector<UINT8> bytes(sizeof(EFI_LOAD_OPTION));
    std::memcpy(bytes.data(), &attributes, sizeof(attributes));
    bytes[sizeof(attributes)] = 4;
    for (char16_t unit : description + u'\0') {
      bytes.push_back(static_cast<UINT8>(unit));
      bytes.push_back(static_cast<UINT8>(unit >> 8));
    }
    bytes.insert(bytes.end(), {0x7F, 0xFF, 0x04, 0x00});
    return bytes;
  }

 private:
  static constexpr UINT32 kAttributes =
      EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS;
  fake::Firmware &machine_;
};

}  // namespace obv_host
