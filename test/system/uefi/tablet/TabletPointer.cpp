#include "TabletPointer.h"

namespace {

constexpr UINT64 kMaximum = 0x7FFF;  // QEMU's range in both directions
constexpr UINTN kReportSize = 6;     // buttons, x, y (two bytes each), wheel
constexpr UINT8 kButtons = 0x07;

static_assert(OFFSET_OF(Tablet, Pointer) == 0, "TabletOf relies on it");

Tablet *TabletOf(EFI_ABSOLUTE_POINTER_PROTOCOL *This) { return reinterpret_cast<Tablet *>(This); }

EFI_STATUS EFIAPI Reset(EFI_ABSOLUTE_POINTER_PROTOCOL *This, BOOLEAN) {
  Tablet *tablet = TabletOf(This);
  ZeroMem(&tablet->State, sizeof(tablet->State));
  tablet->Changed = FALSE;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI GetState(EFI_ABSOLUTE_POINTER_PROTOCOL *This, EFI_ABSOLUTE_POINTER_STATE *state) {
  Tablet *tablet = TabletOf(This);
  if (state == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (!tablet->Changed) {
    return EFI_NOT_READY;
  }
  EFI_TPL tpl = gBS->RaiseTPL(TPL_NOTIFY);
  *state = tablet->State;
  tablet->Changed = FALSE;
  gBS->RestoreTPL(tpl);
  return EFI_SUCCESS;
}

VOID EFIAPI WaitForInput(EFI_EVENT event, VOID *context) {
  if (static_cast<Tablet *>(context)->Changed) {
    gBS->SignalEvent(event);
  }
}

EFI_STATUS PollTablet(Tablet *tablet, BOOLEAN on, EFI_ASYNC_USB_TRANSFER_CALLBACK onReport) {
  const EFI_USB_ENDPOINT_DESCRIPTOR &endpoint = tablet->Endpoint;
  return tablet->UsbIo->UsbAsyncInterruptTransfer(
      tablet->UsbIo, endpoint.EndpointAddress, on, on ? endpoint.Interval : 0,
      on ? endpoint.MaxPacketSize : 0, onReport, on ? tablet : nullptr);
}

/// After an error the firmware has ended the transfer: start over.
EFI_STATUS Recover(Tablet *tablet, EFI_ASYNC_USB_TRANSFER_CALLBACK onReport) {
  (void)PollTablet(tablet, FALSE, nullptr);
  return PollTablet(tablet, TRUE, onReport);
}

EFI_STATUS EFIAPI OnReport(VOID *data, UINTN size, VOID *context, UINT32 result) {
  Tablet *tablet = static_cast<Tablet *>(context);
  if (result != EFI_USB_NOERROR) {
    return Recover(tablet, OnReport);
  }
  if (data == nullptr || size < kReportSize) {
    return EFI_SUCCESS;
  }
  const UINT8 *report = static_cast<const UINT8 *>(data);
  tablet->State.ActiveButtons = report[0] & kButtons;
  tablet->State.CurrentX = static_cast<UINT16>(report[1] | report[2] << 8);
  tablet->State.CurrentY = static_cast<UINT16>(report[3] | report[4] << 8);
  tablet->Changed = TRUE;
  return EFI_SUCCESS;
}

}  // namespace

EFI_STATUS StartTablet(Tablet *tablet) {
  tablet->Mode.AbsoluteMaxX = kMaximum;
  tablet->Mode.AbsoluteMaxY = kMaximum;
  tablet->Pointer.Reset = Reset;
  tablet->Pointer.GetState = GetState;
  tablet->Pointer.Mode = &tablet->Mode;
  EFI_STATUS status = gBS->CreateEvent(EVT_NOTIFY_WAIT, TPL_NOTIFY, WaitForInput, tablet,
                                       &tablet->Pointer.WaitForInput);
  if (EFI_ERROR(status)) {
    return status;
  }
  status = PollTablet(tablet, TRUE, OnReport);
  if (EFI_ERROR(status)) {
    gBS->CloseEvent(tablet->Pointer.WaitForInput);
  }
  return status;
}

void StopTablet(Tablet *tablet) {
  (void)PollTablet(tablet, FALSE, nullptr);
  gBS->CloseEvent(tablet->Pointer.WaitForInput);
}
