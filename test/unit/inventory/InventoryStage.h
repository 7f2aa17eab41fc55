// A machine whose inventory is written.

#pragma once

#include "test/unit/sources/SmbiosStage.h"

#include "host/inventory/Inventory.h"

namespace obv_host {

class InventoryStage : public SmbiosStage {
 protected:
  std::string Written(size_t room = 64 * 1024) {
    Table.Install(Machine);
    return WrittenAgain(room);
  }

  /// Without publishing the table.
  std::string WrittenAgain(size_t room = 64 * 1024) {
    bytes_.assign(room, '~');
    text_ = {.Bytes = bytes_.data(), .Size = room, .Length = 0, .Full = false};
    WriteInventory(&work_, &text_);
    return {bytes_.data(), text_.Length};
  }

  bool Full() const { return text_.Full; }

  void AddModule(UINT16 megabytes, const std::string &locator, const std::string &bank) {
    SMBIOS_TABLE_TYPE17 module = {};
    module.Size = megabytes;
    module.DeviceLocator = 1;
    module.BankLocator = 2;
    Table.Add(17, module, {locator, bank});
  }

 private:
  std::vector<char> bytes_;
  InventoryText text_ = {};
  InventoryWork work_ = {};
};

}  // namespace obv_host
