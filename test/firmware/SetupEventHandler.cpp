#include "test/firmware/SetupEventHandler.h"

namespace fake {

namespace {

// The protocol's functions take no This.
SetupEventHandler *gHandler = nullptr;

}  // namespace

struct SetupThunks {
  static EFI_STATUS EFIAPI GetEventData(CHAR8 *key, UINT8 *reserved, UINT32 *type, UINT32 *dataSize,
                                        VOID *data) {
    Call call(Service::SetupGetEventData, nullptr, static_cast<const char *>(key));
    SetupEventHandler &self = *gHandler;
    const auto *bytes = static_cast<const uint8_t *>(data);
    bool zero = std::all_of(bytes, bytes + VELT_EVENT_DATA_SIZE, [](uint8_t b) { return b == 0; });
    self.Requests.push_back({std::string(key, VELT_EVENT_KEY_SIZE),
                             std::string(reserved, reserved + VELT_EVENT_KEY_SIZE), *type,
                             *dataSize, zero});
    return call.Run([&] {
      *type = self.Type;
      *dataSize = self.DataSize;
      std::copy_n(self.Data.begin(), std::min<size_t>(self.Data.size(), VELT_EVENT_DATA_SIZE),
                  static_cast<uint8_t *>(data));
      return self.Status;
    });
  }

  static EFI_STATUS EFIAPI EndEventData() {
    Call call(Service::SetupEndEventData, nullptr);
    gHandler->EndCount++;
    return call.Run([]() -> EFI_STATUS { return EFI_SUCCESS; });
  }
};

SetupEventHandler::SetupEventHandler(Firmware &firmware) : firmware_(firmware) {
  gHandler = this;
  protocol_.GetEventData = &SetupThunks::GetEventData;
  protocol_.EndEventData = &SetupThunks::EndEventData;
  Select(0, u"");
}

SetupEventHandler::~SetupEventHandler() {
  if (handle_ != nullptr) {
    firmware_.Uninstall(handle_, kSetupEventHandlerGuid, installed_);
  }
  gHandler = nullptr;
}

void SetupEventHandler::Install() {
  installed_ = &protocol_;
  handle_ = firmware_.Install(kSetupEventHandlerGuid, installed_);
}

void SetupEventHandler::InstallNull() {
  installed_ = nullptr;
  handle_ = firmware_.Install(kSetupEventHandlerGuid, installed_);
}

void SetupEventHandler::Select(UINT16 category, std::u16string_view component) {
  VELT_SELECTION selection{};
  selection.Category = category;
  std::array<CHAR16, std::size(selection.ComponentName)> name{};
  std::copy_n(component.begin(), std::min(component.size(), name.size()), name.begin());
  std::memcpy(selection.ComponentName, name.data(), sizeof selection.ComponentName);
  Data.resize(sizeof selection);
  std::memcpy(Data.data(), &selection, sizeof selection);
}

}  // namespace fake
