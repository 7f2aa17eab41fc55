// Events, timers and task priority levels.

#pragma once

#include "test/firmware/Edk2.h"
#include "test/firmware/FirmwareClock.h"

namespace fake {

class EventQueue {
 public:
  using Report = std::function<void(std::string)>;

  EventQueue(FirmwareClock &clock, Report report) : clock_(clock), report_(std::move(report)) {}

  EFI_STATUS Create(UINT32 type, EFI_TPL tpl, EFI_EVENT_NOTIFY notify, const VOID *context,
                    const EFI_GUID *group, EFI_EVENT *event);
  EFI_STATUS Close(EFI_EVENT event);
  EFI_STATUS Signal(EFI_EVENT event);
  EFI_STATUS Check(EFI_EVENT event);
  EFI_STATUS Wait(UINTN count, EFI_EVENT *events, UINTN *index);
  EFI_STATUS SetTimer(EFI_EVENT event, EFI_TIMER_DELAY type, UINT64 ticks);

  EFI_TPL Raise(EFI_TPL tpl);
  void Restore(EFI_TPL tpl);
  EFI_TPL CurrentTpl() const { return tpl_; }

  /// Signals timers that are due, then runs the notifications that the current level allows.
  void Dispatch();

  size_t LiveCount() const { return events_.size(); }
  bool IsEvent(EFI_EVENT event) const { return events_.contains(event); }

 private:
  struct Event {
    UINT32 Type;
    EFI_TPL Tpl;
    EFI_EVENT_NOTIFY Notify;
    VOID *Context;
    std::optional<EFI_GUID> Group;
    bool Signaled = false;
    bool Queued = false;
    bool TimerSet = false;
    uint64_t Due = 0;
    uint64_t Period = 0;
  };
  Event *Find(EFI_EVENT event);
  void SignalOne(EFI_EVENT handle, Event &event);
  void Queue(EFI_EVENT handle, Event &event);
  void SignalDueTimers();
  bool AdvanceToNextTimer();

  FirmwareClock &clock_;
  Report report_;
  std::map<EFI_EVENT, std::unique_ptr<Event>> events_;
  std::map<EFI_TPL, std::deque<EFI_EVENT>> pending_;
  EFI_TPL tpl_ = TPL_APPLICATION;
};

}  // namespace fake
