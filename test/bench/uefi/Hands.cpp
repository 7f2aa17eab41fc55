#include "Hands.h"

namespace {

struct Hands {
  EFI_INPUT_READ_KEY ReadKeyStroke;
  EFI_SIMPLE_POINTER_PROTOCOL *Simple;
  EFI_SIMPLE_POINTER_GET_STATE GetMovement;
  EFI_ABSOLUTE_POINTER_PROTOCOL *Absolute;
  EFI_ABSOLUTE_POINTER_GET_STATE GetPosition;
  EFI_ABSOLUTE_POINTER_MODE *Mode;
  EFI_ABSOLUTE_POINTER_MODE ModeOfBench;
  EFI_INPUT_KEY Key;
  bool KeyWaits;
  EFI_ABSOLUTE_POINTER_STATE Position;
  bool PositionWaits;
};
Hands gHands;

EFI_STATUS EFIAPI ReadKeyStroke(EFI_SIMPLE_TEXT_INPUT_PROTOCOL *, EFI_INPUT_KEY *key) {
  if (!gHands.KeyWaits) {
    return EFI_NOT_READY;
  }
  gHands.KeyWaits = false;
  *key = gHands.Key;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI GetMovement(EFI_SIMPLE_POINTER_PROTOCOL *, EFI_SIMPLE_POINTER_STATE *) {
  return EFI_NOT_READY;
}

EFI_STATUS EFIAPI GetPosition(EFI_ABSOLUTE_POINTER_PROTOCOL *, EFI_ABSOLUTE_POINTER_STATE *state) {
  if (!gHands.PositionWaits) {
    return EFI_NOT_READY;
  }
  gHands.PositionWaits = false;
  *state = gHands.Position;
  return EFI_SUCCESS;
}

VOID *OfConsole(EFI_GUID *protocol) {
  VOID *found = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(gST->ConsoleInHandle, protocol, &found);
  return EFI_ERROR(status) ? nullptr : found;
}

}  // namespace

EFI_STATUS TakeInput(UINT64 width, UINT64 height) {
  gHands.Simple =
      static_cast<EFI_SIMPLE_POINTER_PROTOCOL *>(OfConsole(&gEfiSimplePointerProtocolGuid));
  gHands.Absolute =
      static_cast<EFI_ABSOLUTE_POINTER_PROTOCOL *>(OfConsole(&gEfiAbsolutePointerProtocolGuid));
  if (gHands.Simple == nullptr || gHands.Absolute == nullptr) {
    return EFI_NOT_FOUND;
  }
  gHands.ModeOfBench.AbsoluteMaxX = width;
  gHands.ModeOfBench.AbsoluteMaxY = height;
  gHands.ReadKeyStroke = gST->ConIn->ReadKeyStroke;
  gHands.GetMovement = gHands.Simple->GetState;
  gHands.GetPosition = gHands.Absolute->GetState;
  gHands.Mode = gHands.Absolute->Mode;
  gST->ConIn->ReadKeyStroke = ReadKeyStroke;
  gHands.Simple->GetState = GetMovement;
  gHands.Absolute->GetState = GetPosition;
  gHands.Absolute->Mode = &gHands.ModeOfBench;
  return EFI_SUCCESS;
}

void GiveInputBack() {
  gST->ConIn->ReadKeyStroke = gHands.ReadKeyStroke;
  gHands.Simple->GetState = gHands.GetMovement;
  gHands.Absolute->GetState = gHands.GetPosition;
  gHands.Absolute->Mode = gHands.Mode;
}

void PressKey(EFI_INPUT_KEY key) {
  gHands.Key = key;
  gHands.KeyWaits = true;
}

void PointAt(const Place &place, bool pressed) {
  gHands.Position.CurrentX = place.X;
  gHands.Position.CurrentY = place.Y;
  gHands.Position.ActiveButtons = pressed ? EFI_ABSP_TouchActive : 0;
  gHands.PositionWaits = true;
}
