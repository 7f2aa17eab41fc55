#include "test/firmware/EventQueue.h"

#include "test/firmware/Guids.h"

namespace fake {

EventQueue::Event *EventQueue::Find(EFI_EVENT event) {
  auto found = events_.find(event);
  return found == events_.end() ? nullptr : found->second.get();
}

EFI_STATUS EventQueue::Create(UINT32 type, EFI_TPL tpl, EFI_EVENT_NOTIFY notify,
                              const VOID *context, const EFI_GUID *group, EFI_EVENT *event) {
  constexpr UINT32 kNotifies = EVT_NOTIFY_SIGNAL | EVT_NOTIFY_WAIT;
  constexpr UINT32 kKnown = EVT_TIMER | EVT_RUNTIME | kNotifies;
  bool system = type == EVT_SIGNAL_EXIT_BOOT_SERVICES || type == EVT_SIGNAL_VIRTUAL_ADDRESS_CHANGE;
  if (event == nullptr || (type & kNotifies) == kNotifies || (!system && (type & ~kKnown) != 0)) {
    return EFI_INVALID_PARAMETER;
  }
  // The UEFI specification reserves these two types to CreateEvent.
  if (system && group != nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  bool notified = (type & kNotifies) != 0;
  if (notified && (notify == nullptr || (tpl != TPL_CALLBACK && tpl != TPL_NOTIFY))) {
    return EFI_INVALID_PARAMETER;
  }
  auto created = std::make_unique<Event>();
  created->Type = type;
  created->Tpl = notified ? tpl : TPL_APPLICATION;
  created->Notify = notified ? notify : nullptr;
  created->Context = notified ? const_cast<VOID *>(context) : nullptr;
  if (group != nullptr) {
    created->Group = *group;
  }
  *event = created.get();
  events_[*event] = std::move(created);
  return EFI_SUCCESS;
}

EFI_STATUS EventQueue::Close(EFI_EVENT event) {
  if (Find(event) == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  for (auto &[tpl, queue] : pending_) {
    std::erase(queue, event);
  }
  events_.erase(event);
  return EFI_SUCCESS;
}

void EventQueue::Queue(EFI_EVENT handle, Event &event) {
  if (!event.Queued) {
    event.Queued = true;
    pending_[event.Tpl].push_back(handle);
  }
}

void EventQueue::SignalOne(EFI_EVENT handle, Event &event) {
  if (!event.Signaled) {
    event.Signaled = true;
    if ((event.Type & EVT_NOTIFY_SIGNAL) != 0) {
      Queue(handle, event);
    }
  }
}

EFI_STATUS EventQueue::Signal(EFI_EVENT handle) {
  Event *event = Find(handle);
  if (event == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  SignalOne(handle, *event);
  if (event->Group) {
    for (auto &[other, member] : events_) {
      if (member->Group && SameGuid(*member->Group, *event->Group)) {
        SignalOne(other, *member);
      }
    }
  }
  Dispatch();
  return EFI_SUCCESS;
}

EFI_STATUS EventQueue::Check(EFI_EVENT handle) {
  Event *event = Find(handle);
  if (event == nullptr || (event->Type & EVT_NOTIFY_SIGNAL) != 0) {
    return EFI_INVALID_PARAMETER;
  }
  if (!event->Signaled && (event->Type & EVT_NOTIFY_WAIT) != 0) {
    Queue(handle, *event);
    Dispatch();
    event = Find(handle);
  }
  if (event == nullptr || !event->Signaled) {
    return EFI_NOT_READY;
  }
  event->Signaled = false;
  return EFI_SUCCESS;
}

bool EventQueue::AdvanceToNextTimer() {
  std::optional<uint64_t> next;
  for (auto &[handle, event] : events_) {
    if (event->TimerSet && (!next || event->Due < *next)) {
      next = event->Due;
    }
  }
  if (!next) {
    return false;
  }
  clock_.AdvanceTicks(*next > clock_.Ticks() ? *next - clock_.Ticks() : 0);
  return true;
}

EFI_STATUS EventQueue::Wait(UINTN count, EFI_EVENT *events, UINTN *index) {
  if (count == 0 || events == nullptr || index == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (tpl_ != TPL_APPLICATION) {
    return EFI_UNSUPPORTED;
  }
  constexpr int kMostTurns = 100000;
  for (int turn = 0; turn < kMostTurns; turn++) {
    Dispatch();
    for (UINTN i = 0; i < count; i++) {
      EFI_STATUS status = Check(events[i]);
      if (status != EFI_NOT_READY) {
        *index = i;
        return status;
      }
    }
    if (!AdvanceToNextTimer()) {
      break;
    }
  }
  report_("WaitForEvent would wait for ever");
  return EFI_TIMEOUT;
}

EFI_STATUS EventQueue::SetTimer(EFI_EVENT handle, EFI_TIMER_DELAY type, UINT64 ticks) {
  Event *event = Find(handle);
  if (event == nullptr || (event->Type & EVT_TIMER) == 0 || type > TimerRelative) {
    return EFI_INVALID_PARAMETER;
  }
  event->TimerSet = type != TimerCancel;
  // A delay of 0 means at every (periodic) or the next (relative) tick of the platform.
  uint64_t delay = std::max<uint64_t>(ticks, FirmwareClock::kTicksPerMillisecond);
  event->Due = clock_.Ticks() + delay;
  event->Period = type == TimerPeriodic ? delay : 0;
  return EFI_SUCCESS;
}

void EventQueue::SignalDueTimers() {
  for (auto &[handle, event] : events_) {
    if (!event->TimerSet || event->Due > clock_.Ticks()) {
      continue;
    }
    SignalOne(handle, *event);
    event->TimerSet = event->Period != 0;
    // As in firmware, expirations that nobody could notice in between are lost.
    while (event->TimerSet && event->Due <= clock_.Ticks()) {
      event->Due += event->Period;
    }
  }
}

EFI_TPL EventQueue::Raise(EFI_TPL tpl) {
  EFI_TPL old = tpl_;
  if (tpl < tpl_ || tpl > TPL_HIGH_LEVEL) {
    report_("RaiseTPL to " + std::to_string(tpl) + " from " + std::to_string(old));
  }
  tpl_ = std::max(tpl, tpl_);
  return old;
}

void EventQueue::Restore(EFI_TPL tpl) {
  if (tpl > tpl_) {
    report_("RestoreTPL to " + std::to_string(tpl) + " from " + std::to_string(tpl_));
  }
  tpl_ = std::min(tpl, tpl_);
  Dispatch();
}

void EventQueue::Dispatch() {
  SignalDueTimers();
  for (;;) {
    auto highest = std::find_if(pending_.rbegin(), pending_.rend(),
                                [](const auto &item) { return !item.second.empty(); });
    if (highest == pending_.rend() || highest->first <= tpl_) {
      return;
    }
    EFI_EVENT handle = highest->second.front();
    highest->second.pop_front();
    Event &event = *events_[handle];
    event.Queued = false;
    if ((event.Type & EVT_NOTIFY_SIGNAL) != 0) {
      event.Signaled = false;
    }
    EFI_TPL old = tpl_;
    tpl_ = event.Tpl;
    event.Notify(handle, event.Context);
    if (tpl_ != highest->first) {
      report_("a notification returned at another task priority level");
    }
    tpl_ = old;
  }
}

}  // namespace fake
