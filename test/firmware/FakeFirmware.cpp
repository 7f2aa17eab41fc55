#include "test/firmware/FakeFirmware.h"

#include <cstdio>
#include <cstdlib>

#include "test/firmware/ServiceTables.h"

namespace fake {

namespace {

// The one instance that the static functions of the tables belong to.
Firmware *gCurrent = nullptr;

std::string OutputName(size_t index) { return "gop" + std::to_string(index); }

// Notification of the events that input devices offer to wait for.
template <typename Device>
VOID EFIAPI SignalWhenWaiting(EFI_EVENT event, VOID *context) {
  if (static_cast<Device *>(context)->Waiting() != 0) {
    Firmware::Current().Events.Signal(event);
  }
}

template <typename Device>
EFI_EVENT WaitEvent(EventQueue *events, Device *device) {
  EFI_EVENT event = nullptr;
  events->Create(EVT_NOTIFY_WAIT, TPL_NOTIFY, &SignalWhenWaiting<Device>, device, nullptr, &event);
  return event;
}

}  // namespace

Firmware &Firmware::Current() {
  if (gCurrent == nullptr) {
    std::fprintf(stderr, "A firmware table was used while no fake::Firmware exists\n");
    std::abort();
  }
  return *gCurrent;
}

Firmware::Firmware()
    : Pool([this](std::string text) { Problem(std::move(text)); }),
      Events(Clock, [this](std::string text) { Problem(std::move(text)); }),
      Handles([this](EFI_EVENT event) { Events.Signal(event); }) {
  if (gCurrent != nullptr) {
    std::fprintf(stderr, "Only one fake::Firmware can exist at a time\n");
    std::abort();
  }
  gCurrent = this;
  FillBootServices(&BootServices);
  FillRuntimeServices(&RuntimeServices);
  FillSystemTable();
  InstallHii();
  InstallHobList();
}

Firmware::~Firmware() { gCurrent = nullptr; }

void Firmware::FillSystemTable() {
  vendor_ = ToFirmware(u"Boardscope fake firmware");
  SystemTable.Hdr.Signature = EFI_SYSTEM_TABLE_SIGNATURE;
  SystemTable.Hdr.Revision = EFI_SYSTEM_TABLE_REVISION;
  SystemTable.Hdr.HeaderSize = sizeof SystemTable;
  SystemTable.FirmwareVendor = vendor_.data();
  SystemTable.FirmwareRevision = 0x00010000;
  SystemTable.BootServices = &BootServices;
  SystemTable.RuntimeServices = &RuntimeServices;
  SystemTable.ConIn = Keyboard.Protocol();
  SystemTable.ConOut = ConsoleOutput();
  SystemTable.StdErr = ConsoleOutput();
  consoleInHandle_ = Install(kSimpleTextInGuid, Keyboard.Protocol());
  consoleOutHandle_ = Install(kSimpleTextOutGuid, ConsoleOutput());
  SystemTable.ConsoleInHandle = consoleInHandle_;
  SystemTable.ConsoleOutHandle = consoleOutHandle_;
  SystemTable.StandardErrorHandle = consoleOutHandle_;
  Keyboard.Protocol()->WaitForKey = WaitEvent(&Events, &Keyboard);
  // Stands for the loaded image; agents that open protocols name it.
  constexpr EFI_GUID kImageMark = {0x0E1AD94A, 0xC4D3, 0x4E0F, {1, 2, 3, 4, 5, 6, 7, 8}};
  ImageHandle = Install(kImageMark, this);
}

void Firmware::InstallHii() {
  EFI_HANDLE handle = Install(kHiiStringGuid, Hii.Strings());
  Install(kHiiDatabaseGuid, Hii.Database(), handle);
  Install(kHiiConfigRoutingGuid, Hii.ConfigRouting(), handle);
  Install(kHiiFontGuid, Hii.Font(), handle);
  Install(kHiiImageGuid, Hii.Image(), handle);
}

void Firmware::InstallHobList() {
  EFI_HOB_HANDOFF_INFO_TABLE handoff{};
  handoff.Header.HobType = EFI_HOB_TYPE_HANDOFF;
  handoff.Header.HobLength = sizeof handoff;
  handoff.Version = EFI_HOB_HANDOFF_TABLE_VERSION;
  EFI_HOB_GENERIC_HEADER end{EFI_HOB_TYPE_END_OF_HOB_LIST, sizeof end, 0};
  hobList_.resize(sizeof handoff + sizeof end);
  std::memcpy(hobList_.data(), &handoff, sizeof handoff);
  std::memcpy(hobList_.data() + sizeof handoff, &end, sizeof end);
  SetConfigurationTable(kHobListGuid, hobList_.data());
}

std::string Firmware::ProblemsText() const {
  std::string text;
  for (const std::string &problem : problems_) {
    text += problem + "\n";
  }
  return text;
}

UINT64 Firmware::LookAtClock() {
  Call call(Service::HostGetTime, nullptr);
  Clock.Advance(Clock.StepPerLook);
  call.End(EFI_SUCCESS);
  return Clock.Milliseconds();
}

std::string Firmware::Leftovers(size_t filesLeftOnPurpose) const {
  std::string text = ProblemsText();
  auto add = [&](uint64_t count, const char *what) {
    text += count == 0 ? "" : std::to_string(count) + " " + what + "\n";
  };
  add(Pool.LiveBlocks(), "pool blocks are still allocated");
  add(Pool.LivePages(), "pages are still allocated");
  add(Handles.UnclosedCount(), "protocols are still open");
  add(OpenFileCount() - std::min(OpenFileCount(), filesLeftOnPurpose), "files are still open");
  return text;
}

EFI_HANDLE Firmware::Install(const EFI_GUID &protocol, VOID *interface, EFI_HANDLE handle) {
  EFI_STATUS status = Handles.Install(&handle, &protocol, interface);
  if (EFI_ERROR(status)) {
    Problem("installing " + GuidName(protocol) + ": " + StatusName(status));
  }
  return handle;
}

void Firmware::Uninstall(EFI_HANDLE handle, const EFI_GUID &protocol, VOID *interface) {
  EFI_STATUS status = Handles.Uninstall(handle, &protocol, interface);
  if (EFI_ERROR(status)) {
    Problem("uninstalling " + GuidName(protocol) + ": " + StatusName(status));
  }
}

GraphicsOutput &Firmware::AddOutput(std::vector<VideoMode> modes, UINT32 current) {
  size_t index = outputs_.size();
  outputs_.push_back(
      std::make_unique<GraphicsOutput>(OutputName(index), std::move(modes), current));
  GraphicsOutput &output = *outputs_.back();
  auto address = static_cast<UINT32>(ACPI_DISPLAY_ADR(1, 0, 0, 1, 0, 0, 0, index));
  output.Path.PciRoot().Pci(2).Display(address);
  output.Handle = Install(kDevicePathGuid, output.Path.Get());
  Install(kGraphicsOutputGuid, output.Protocol(), output.Handle);
  return output;
}

void Firmware::RemoveOutput(GraphicsOutput &output) {
  output.Removed = true;
  Uninstall(output.Handle, kGraphicsOutputGuid, output.Protocol());
  VOID *path = Handles.Interface(output.Handle, kDevicePathGuid);
  Uninstall(output.Handle, kDevicePathGuid, path);
}

SimplePointer &Firmware::AddSimplePointer(UINT64 resolutionX, UINT64 resolutionY) {
  mouse_ = std::make_unique<SimplePointer>(resolutionX, resolutionY);
  mouse_->Protocol()->WaitForInput = WaitEvent(&Events, mouse_.get());
  Install(kSimplePointerGuid, mouse_->Protocol(), consoleInHandle_);
  return *mouse_;
}

AbsolutePointer &Firmware::AddAbsolutePointer(const AbsolutePointer::Range &range) {
  tablet_ = std::make_unique<AbsolutePointer>(range);
  tablet_->Protocol()->WaitForInput = WaitEvent(&Events, tablet_.get());
  Install(kAbsolutePointerGuid, tablet_->Protocol(), consoleInHandle_);
  return *tablet_;
}

void Firmware::RemoveSimplePointer() {
  Uninstall(consoleInHandle_, kSimplePointerGuid, mouse_->Protocol());
}

void Firmware::RemoveAbsolutePointer() {
  Uninstall(consoleInHandle_, kAbsolutePointerGuid, tablet_->Protocol());
}

Volume &Firmware::AddVolume(VolumeOptions options) {
  volumes_.push_back(std::make_unique<Volume>(std::move(options)));
  Volume &volume = *volumes_.back();
  volume.Handle = Install(kDevicePathGuid, volume.Options.Path.Get());
  Install(kSimpleFileSystemGuid, volume.Protocol(), volume.Handle);
  return volume;
}

void Firmware::RemoveVolume(Volume &volume) {
  volume.Removed = true;
  Uninstall(volume.Handle, kSimpleFileSystemGuid, volume.Protocol());
  VOID *path = Handles.Interface(volume.Handle, kDevicePathGuid);
  Uninstall(volume.Handle, kDevicePathGuid, path);
}

size_t Firmware::OpenFileCount() const {
  size_t count = 0;
  for (const std::unique_ptr<Volume> &volume : volumes_) {
    count += volume->OpenCount();
  }
  return count;
}

EFI_STATUS Firmware::SetConfigurationTable(const EFI_GUID &guid, VOID *table) {
  auto found = std::find_if(
      configurationTables_.begin(), configurationTables_.end(),
      [&](const EFI_CONFIGURATION_TABLE &entry) { return SameGuid(entry.VendorGuid, guid); });
  EFI_STATUS status = EFI_SUCCESS;
  if (table == nullptr) {
    status = found == configurationTables_.end() ? EFI_NOT_FOUND : EFI_SUCCESS;
    configurationTables_.erase(found,
                               found == configurationTables_.end() ? found : std::next(found));
  } else if (found != configurationTables_.end()) {
    found->VendorTable = table;
  } else {
    configurationTables_.push_back({guid, table});
  }
  SystemTable.ConfigurationTable = configurationTables_.data();
  SystemTable.NumberOfTableEntries = configurationTables_.size();
  return status;
}

}  // namespace fake
