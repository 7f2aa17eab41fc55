// The firmware setup's event handler with a scripted selection.

#pragma once

#include "test/firmware/FakeFirmware.h"

namespace fake {

class SetupEventHandler {
 public:
  explicit SetupEventHandler(Firmware &firmware);
  ~SetupEventHandler();
  SetupEventHandler(const SetupEventHandler &) = delete;
  SetupEventHandler &operator=(const SetupEventHandler &) = delete;

  void Install();
  /// Publishes the protocol's GUID with a null interface, as broken firmware might.
  void InstallNull();

  /// The answer of GetEventData.
  EFI_STATUS Status = EFI_SUCCESS;
  UINT32 Type = VELT_SELECTION_TYPE;
  UINT32 DataSize = VELT_SELECTION_DATA_SIZE;
  std::vector<uint8_t> Data;
  void Select(UINT16 category, std::u16string_view component);

  /// What GetEventData was asked for.
  struct Request {
    std::string Key;       ///< 24 bytes, padding included.
    std::string Reserved;  ///< 24 bytes.
    UINT32 Type, DataSize;
    bool DataWasZero;
  };
  std::vector<Request> Requests;
  unsigned EndCount = 0;

 private:
  friend struct SetupThunks;
  Firmware &firmware_;
  VELT_SETUP_EVENT_HANDLER_PROTOCOL protocol_{};
  EFI_HANDLE handle_ = nullptr;
  VOID *installed_ = nullptr;
};

}  // namespace fake
