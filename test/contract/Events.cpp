#include "test/contract/Contract.h"

namespace contract {

namespace {

struct Notified {
  UINT64 Times;
  EFI_TPL Level;
};

EFI_TPL CurrentLevel() {
  EFI_TPL level = gBS->RaiseTPL(TPL_HIGH_LEVEL);
  gBS->RestoreTPL(level);
  return level;
}

void EFIAPI Notice(EFI_EVENT, void *context) {
  auto *notified = static_cast<Notified *>(context);
  notified->Times++;
  notified->Level = CurrentLevel();
}

EFI_STATUS Create(UINT32 type, EFI_TPL level, EFI_EVENT_NOTIFY notify, Notified *notified,
                  EFI_EVENT *event) {
  return gBS->CreateEvent(type, level, notify, notified, event);
}

void AskAboutSignals(const Report &report) {
  Notified notified = {};
  EFI_EVENT event = nullptr;
  Say(report, "create an event",
      Create(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, Notice, &notified, &event));
  SayNumber(report, "notifications before it is signalled", notified.Times);
  Say(report, "signal it", gBS->SignalEvent(event));
  SayNumber(report, "notifications", notified.Times);
  SayNumber(report, "their level", notified.Level);

  EFI_TPL level = gBS->RaiseTPL(TPL_CALLBACK);
  SayNumber(report, "the level before a raise", level);
  gBS->SignalEvent(event);
  gBS->SignalEvent(event);
  SayNumber(report, "notifications at the event's own level", notified.Times);
  gBS->RestoreTPL(level);
  SayNumber(report, "two signals in one, when it is restored", notified.Times);
  Say(report, "check an event with a notification", gBS->CheckEvent(event));
  Say(report, "close it", gBS->CloseEvent(event));
}

}  // namespace

void AskAboutEvents(const Report &report) {
  Notified notified = {};
  EFI_EVENT event = nullptr;
  Say(report, "create an event for nobody",
      Create(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, Notice, &notified, nullptr));
  Say(report, "create one without a notification",
      Create(EVT_NOTIFY_SIGNAL, TPL_CALLBACK, nullptr, &notified, &event));
  Say(report, "create one at the application's level",
      Create(EVT_NOTIFY_SIGNAL, TPL_APPLICATION, Notice, &notified, &event));
  Say(report, "create one above all levels",
      Create(EVT_NOTIFY_SIGNAL, TPL_HIGH_LEVEL, Notice, &notified, &event));
  Say(report, "create one of both kinds",
      Create(EVT_NOTIFY_SIGNAL | EVT_NOTIFY_WAIT, TPL_CALLBACK, Notice, &notified, &event));
  Say(report, "close no event", gBS->CloseEvent(nullptr));
  AskAboutSignals(report);

  Say(report, "create one to wait for", Create(0, 0, nullptr, nullptr, &event));
  Say(report, "check it", gBS->CheckEvent(event));
  gBS->SignalEvent(event);
  Say(report, "check it once signalled", gBS->CheckEvent(event));
  Say(report, "check it again", gBS->CheckEvent(event));
  gBS->CloseEvent(event);
}

}  // namespace contract
