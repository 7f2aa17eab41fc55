/** @file
  A whole run in which the input chooses, besides keys, pointers and plugs, which allocations and
  which calls of services fail.
**/

#include "test/fuzz/InputSession.h"

namespace {

using fake::Service;

struct Fault {
  Service What;
  EFI_STATUS Status;
};

/// Calls that may fail, with what the UEFI specification lets them answer. Giving back is not
/// among them: what could not be given back would stay.
constexpr Fault kFaults[] = {
    {Service::AllocatePool, EFI_OUT_OF_RESOURCES},
    {Service::LocateHandleBuffer, EFI_OUT_OF_RESOURCES},
    {Service::HandleProtocol, EFI_UNSUPPORTED},
    {Service::GopQueryMode, EFI_DEVICE_ERROR},
    {Service::GopSetMode, EFI_DEVICE_ERROR},
    {Service::GopBlt, EFI_DEVICE_ERROR},
    {Service::ConInReadKeyStroke, EFI_DEVICE_ERROR},
    {Service::PointerGetState, EFI_DEVICE_ERROR},
    {Service::AbsoluteGetState, EFI_DEVICE_ERROR},
    {Service::HostQueryComponentStatus, EFI_TIMEOUT},
    {Service::FsOpenVolume, EFI_NO_MEDIA},
    {Service::FileOpen, EFI_DEVICE_ERROR},
    {Service::FileGetInfo, EFI_DEVICE_ERROR},
    {Service::FileWrite, EFI_VOLUME_FULL},
    {Service::FileFlush, EFI_DEVICE_ERROR},
};

class FaultSession : public fuzz::InputSession {
 public:
  using InputSession::InputSession;

 protected:
  /// First a list of faults: which service, and how many of its calls succeed before one fails.
  void Begin(fuzz::Reader *input) override {
    for (UINT8 left = input->Byte() % 32; left > 0; left--) {
      size_t which = input->Byte() % std::size(kFaults);
      waits_[which].push_back(input->Byte());
    }
    Machine().Faults.Choose = [this](Service service, const void *) { return Choose(service); };
  }

  void Judge(EFI_STATUS status) override {
    fuzz::Require(status == EFI_SUCCESS || status == EFI_OUT_OF_RESOURCES,
                  "the run succeeds, unless memory runs out");
    RequireNothingLeft(FullVolume() || filesFailed_);
  }

 private:
  std::optional<EFI_STATUS> Choose(Service service) {
    for (size_t i = 0; i < std::size(kFaults); i++) {
      if (kFaults[i].What != service || waits_[i].empty()) {
        continue;
      }
      if (waits_[i].front() > 0) {
        waits_[i].front()--;
        return std::nullopt;
      }
      waits_[i].pop_front();
      filesFailed_ = filesFailed_ || service == Service::FileWrite || service == Service::FileFlush;
      return kFaults[i].Status;
    }
    return std::nullopt;
  }

  std::array<std::deque<UINT8>, std::size(kFaults)> waits_;
  bool filesFailed_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static fuzz::LateFork fork([](fuzz::LateFork *self) { FaultSession(self).Run(); });
  fork.Try(data, size);
  return 0;
}
