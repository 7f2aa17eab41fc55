// A strict UEFI in memory: the tables that the application runs against in native builds.
//
// One instance at a time. Construct it, add outputs, pointers, volumes and texts, install a host
// (TestHost.h), run (Run.h), then ask Calls, Pool, Problems() and the devices what happened.

#pragma once

#include "test/firmware/Call.h"
#include "test/firmware/CallLog.h"
#include "test/firmware/ConsoleInput.h"
#include "test/firmware/EventQueue.h"
#include "test/firmware/FaultPlan.h"
#include "test/firmware/FirmwareClock.h"
#include "test/firmware/GraphicsOutput.h"
#include "test/firmware/Guids.h"
#include "test/firmware/HandleDatabase.h"
#include "test/firmware/HiiDatabase.h"
#include "test/firmware/MemoryPool.h"
#include "test/firmware/Pointers.h"
#include "test/firmware/Text.h"
#include "test/firmware/VariableStore.h"
#include "test/firmware/Volume.h"

namespace fake {

class Firmware {
 public:
  Firmware();
  ~Firmware();
  Firmware(const Firmware &) = delete;
  Firmware &operator=(const Firmware &) = delete;

  /// The living instance; ends the program when there is none.
  static Firmware &Current();

 private:
  // First, because the parts below report through it.
  std::vector<std::string> problems_;

 public:
  CallLog Calls;
  FaultPlan Faults;
  FirmwareClock Clock;
  MemoryPool Pool;
  EventQueue Events;
  HandleDatabase Handles;
  VariableStore Variables;
  HiiDatabase Hii;
  ConsoleInput Keyboard;

  EFI_BOOT_SERVICES BootServices{};
  EFI_RUNTIME_SERVICES RuntimeServices{};
  EFI_SYSTEM_TABLE SystemTable{};
  EFI_HANDLE ImageHandle = nullptr;

  /// What the tests must find empty at their end: double frees, foreign pointers, services used
  /// above their task priority level, use of removed devices, functions the fake does not have.
  const std::vector<std::string> &Problems() const { return problems_; }
  /// All problems in one text, one a line.
  std::string ProblemsText() const;
  void Problem(std::string text) { problems_.push_back(std::move(text)); }
  void ForgetProblems() { problems_.clear(); }
  /// The problems, and what the run should have given back: pool blocks, pages, open protocols
  /// and files; one a line, empty when all is well. Files may be left open on purpose.
  std::string Leftovers(size_t filesLeftOnPurpose = 0) const;

  /// Adds an output whose current mode is `current` and installs it on a new handle with a
  /// device path. While the application runs this is a hot-plug: notifications are due at once.
  GraphicsOutput &AddOutput(std::vector<VideoMode> modes = UsualModes(), UINT32 current = 0);
  /// Uninstalls its protocols; the object stays to be looked at, and its use is a problem.
  void RemoveOutput(GraphicsOutput &output);
  GraphicsOutput &Output(size_t index = 0) { return *outputs_.at(index); }
  size_t OutputCount() const { return outputs_.size(); }

  /// Pointing devices on the console-input handle; at most one of each kind.
  SimplePointer &AddSimplePointer(UINT64 resolutionX = 1, UINT64 resolutionY = 1);
  AbsolutePointer &AddAbsolutePointer(const AbsolutePointer::Range &range = {});
  SimplePointer *Mouse() { return mouse_.get(); }
  AbsolutePointer *Tablet() { return tablet_.get(); }
  void RemoveSimplePointer();
  void RemoveAbsolutePointer();

  Volume &AddVolume(VolumeOptions options = {});
  void RemoveVolume(Volume &volume);
  /// Roots and files that are open now, on all volumes.
  size_t OpenFileCount() const;

  /// The clock as a host's GetTime answers it, in milliseconds: recorded as Host.GetTime, and
  /// Clock.StepPerLook passes first. A host other than TestHost reads its clock here, too.
  UINT64 LookAtClock();

  /// Installs any protocol on a handle (a new one for null) without a recorded call.
  EFI_HANDLE Install(const EFI_GUID &protocol, VOID *interface, EFI_HANDLE handle = nullptr);
  void Uninstall(EFI_HANDLE handle, const EFI_GUID &protocol, VOID *interface);

  /// Shorthands of Faults.Fail and Faults.At.
  template <typename... Rest>
  void FailCall(Rest &&...rest) {
    Faults.Fail(std::forward<Rest>(rest)...);
  }
  void At(Service service, uint64_t n, FaultPlan::Action action) {
    Faults.At(service, n, std::move(action));
  }

  /// Configuration table entry; replaces one of the same GUID, null removes it.
  EFI_STATUS SetConfigurationTable(const EFI_GUID &guid, VOID *table);

 private:
  void FillSystemTable();
  void InstallHii();
  void InstallHobList();

  std::vector<std::unique_ptr<GraphicsOutput>> outputs_;
  std::vector<std::unique_ptr<Volume>> volumes_;
  std::unique_ptr<SimplePointer> mouse_;
  std::unique_ptr<AbsolutePointer> tablet_;
  EFI_HANDLE consoleInHandle_ = nullptr;
  EFI_HANDLE consoleOutHandle_ = nullptr;
  std::vector<EFI_CONFIGURATION_TABLE> configurationTables_;
  std::vector<uint8_t> hobList_;
  std::vector<CHAR16> vendor_;
};

}  // namespace fake
