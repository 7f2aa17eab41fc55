// An NVMe controller: its answers to Identify and to Get Log Page, as pages.

#pragma once

#include "test/unit/sources/FakeDevice.h"

extern "C" {
#include <IndustryStandard/Nvme.h>
#include <Protocol/NvmExpressPassthru.h>
}

namespace obv_host {

class FakeNvme : public FakeDevice {
 public:
  /// A drive of 1 TB that is well.
  FakeNvme() {
    NVME_ADMIN_CONTROLLER_DATA identity = {};
    Text("S6BENS0T123456", identity.Sn);
    Text("Samsung SSD 990 PRO 1TB", identity.Mn);
    Text("4B2QJXD7", identity.Fr);
    UINT64 size = 1'000'204'886'016;
    std::memcpy(identity.Tnvmcap, &size, sizeof size);
    std::memcpy(Identity.data(), &identity, sizeof identity);
    Health[1] = (273 + 41) & 0xFF;
    Health[2] = (273 + 41) >> 8;
    Health[3] = 100;
    Health[4] = 10;
    Health[5] = 3;
    Health[128] = 0xD2;  // 1234 hours
    Health[129] = 0x04;
    mode_.Attributes = EFI_NVM_EXPRESS_PASS_THRU_ATTRIBUTES_PHYSICAL;
    mode_.IoAlign = 512;
    io_.Owner = this;
    io_.Protocol.Mode = &mode_;
    io_.Protocol.PassThru = PassThru;
  }

  FakeNvme &At(fake::Firmware &machine, fake::DevicePath path) {
    Place(machine, gEfiNvmExpressPassThruProtocolGuid, &io_.Protocol, std::move(path));
    return *this;
  }

  template <size_t size>
  static void Text(const char *text, UINT8 (&field)[size]) {
    std::memset(field, ' ', size);
    std::memcpy(field, text, std::strlen(text));
  }

  void SetAlignment(UINT32 alignment) { mode_.IoAlign = alignment; }
  void DropMode() { io_.Protocol.Mode = nullptr; }

  using Page = std::array<UINT8, 4096>;
  Page Identity = {};
  Page Namespace = {};
  Page Health = {};
  EFI_STATUS IdentifyFailure = EFI_SUCCESS;
  EFI_STATUS NamespaceFailure = EFI_SUCCESS;
  EFI_STATUS HealthFailure = EFI_SUCCESS;
  /// Of the completion queue entry.
  UINT32 CompletionWord = 0;

 private:
  struct Io {
    EFI_NVM_EXPRESS_PASS_THRU_PROTOCOL Protocol;
    FakeNvme *Owner;
  };

  // What EDK2's driver refuses, or a drive.
  bool IsSound(UINT32 space, const EFI_NVM_EXPRESS_PASS_THRU_COMMAND_PACKET *packet) const {
    UINT32 alignment = mode_.IoAlign == 0 ? 1 : mode_.IoAlign;
    return packet->NvmeCmd != nullptr && packet->NvmeCompletion != nullptr &&
           packet->NvmeCmd->Nsid == space && packet->QueueType == NVME_ADMIN_QUEUE &&
           packet->NvmeCmd->Flags == CDW10_VALID && packet->CommandTimeout != 0 &&
           packet->CommandTimeout <= 10'000'000 &&
           reinterpret_cast<UINTN>(packet->TransferBuffer) % alignment == 0;
  }

  EFI_STATUS Answer(UINT32 space, EFI_NVM_EXPRESS_PASS_THRU_COMMAND_PACKET *packet) {
    UINT32 argument = packet->NvmeCmd->Cdw10;
    const Page *page = nullptr;
    EFI_STATUS failure = EFI_SUCCESS;
    UINT32 size = 4096;
    if (packet->NvmeCmd->Cdw0.Opcode == 0x06 && argument == 1 && space == 0) {
      page = &Identity;
      failure = IdentifyFailure;
    } else if (packet->NvmeCmd->Cdw0.Opcode == 0x06 && argument == 0 && space == 1) {
      page = &Namespace;
      failure = NamespaceFailure;
    } else if (packet->NvmeCmd->Cdw0.Opcode == 0x02 && argument == (2 | 127 << 16)) {
      page = &Health;
      failure = HealthFailure;
      size = 512;
    }
    if (page == nullptr || packet->TransferLength != size) {
      fake::Firmware::Current().Problem("a command that no NVMe controller knows");
      return EFI_INVALID_PARAMETER;
    }
    if (!EFI_ERROR(failure)) {
      std::memcpy(packet->TransferBuffer, page->data(), size);
      packet->NvmeCompletion->DW3 = CompletionWord;
    }
    return failure;
  }

  static EFI_STATUS EFIAPI PassThru(EFI_NVM_EXPRESS_PASS_THRU_PROTOCOL *self, UINT32 space,
                                    EFI_NVM_EXPRESS_PASS_THRU_COMMAND_PACKET *packet, EFI_EVENT) {
    FakeNvme *nvme = reinterpret_cast<Io *>(self)->Owner;
    nvme->Called();
    if (!nvme->IsSound(space, packet)) {
      fake::Firmware::Current().Problem("a command packet that the driver refuses");
      return EFI_INVALID_PARAMETER;
    }
    return nvme->IsThere() ? nvme->Answer(space, packet) : EFI_TIMEOUT;
  }

  EFI_NVM_EXPRESS_PASS_THRU_MODE mode_ = {};
  Io io_ = {};
};

}  // namespace obv_host
