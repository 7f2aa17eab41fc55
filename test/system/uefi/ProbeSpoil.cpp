#include "ProbeSpoil.h"

#include "ProbeDebug.h"
#include "ProbeHost.h"

namespace {

/// The host as it was.
OBV_PROTOCOL gWhole;

UINT64 EFIAPI StandStill(OBV_PROTOCOL *) { return 4711; }

EFI_STATUS EFIAPI CutPicture(OBV_PROTOCOL *host, VOID **data, UINTN *size) {
  EFI_STATUS status = gWhole.GetResourceData(host, data, size);
  *size /= 2;
  return status;
}

EFI_STATUS EFIAPI CutFont(OBV_PROTOCOL *host, UINT8 face, CHAR8 **name, VOID **data, UINTN *size) {
  EFI_STATUS status = gWhole.GetFontData(host, face, name, data, size);
  *size /= face == 0 ? 2 : 1;
  return status;
}

/// Spoils what the host has built.
template <void (*Spoil)(OBV_PROTOCOL *host, OBV_COMPONENT *components)>
EFI_STATUS EFIAPI ParseAndSpoil(OBV_PROTOCOL *host, OBV_COMPONENT **components,
                                UINT16 pictureHeight, UINT16 pictureWidth, UINT16 viewHeight,
                                UINT16 viewWidth, double share, double scaleX, double scaleY) {
  EFI_STATUS status = gWhole.ParseComponents(host, components, pictureHeight, pictureWidth,
                                             viewHeight, viewWidth, share, scaleX, scaleY);
  if (!EFI_ERROR(status)) {
    Spoil(host, *components);
  }
  return status;
}

void UseOddType(OBV_PROTOCOL *, OBV_COMPONENT *components) { components[0].Type = 12; }

void CountTooFew(OBV_PROTOCOL *host, OBV_COMPONENT *) { host->SharedState->ComponentCount--; }

/// Beyond all memory of a machine, at an address that the processor would take.
void PointNowhere(OBV_PROTOCOL *, OBV_COMPONENT *components) {
  constexpr UINTN kNowhere = 0x0000700000000000;
  components[0].FocusStyle = reinterpret_cast<OBV_COMPONENT_STYLE *>(kNowhere);
}

struct Mistake {
  const char16_t *Word;
  void (*Make)(OBV_PROTOCOL *host);
};

constexpr Mistake kMistakes[] = {
    {u"clock", [](OBV_PROTOCOL *host) { host->GetTime = StandStill; }},
    {u"query", [](OBV_PROTOCOL *host) { host->QueryComponentStatus = nullptr; }},
    {u"state", [](OBV_PROTOCOL *host) { host->SharedState = nullptr; }},
    {u"look", [](OBV_PROTOCOL *host) { host->SharedState->Config = nullptr; }},
    {u"picture", [](OBV_PROTOCOL *host) { host->GetResourceData = CutPicture; }},
    {u"font", [](OBV_PROTOCOL *host) { host->GetFontData = CutFont; }},
    {u"type", [](OBV_PROTOCOL *host) { host->ParseComponents = ParseAndSpoil<UseOddType>; }},
    {u"few", [](OBV_PROTOCOL *host) { host->ParseComponents = ParseAndSpoil<CountTooFew>; }},
    {u"nowhere", [](OBV_PROTOCOL *host) { host->ParseComponents = ParseAndSpoil<PointNowhere>; }},
    // The text with two directives instead of the one with one.
    {u"text",
     [](OBV_PROTOCOL *host) { host->SharedState->StringIds[4] = host->SharedState->StringIds[8]; }},
};

const Mistake *FindMistake(const CHAR16 *word) {
  for (const Mistake &mistake : kMistakes) {
    if (StrCmp(word, Ucs2(mistake.Word)) == 0) {
      return &mistake;
    }
  }
  return nullptr;
}

}  // namespace

EFI_STATUS StartOnSpoiltHost(EFI_HANDLE probe, const CHAR16 *word, const CHAR16 *name) {
  OBV_PROTOCOL *host = FindHost();
  const Mistake *mistake = FindMistake(word);
  if (host == nullptr || mistake == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  EFI_HANDLE program = nullptr;
  EFI_STATUS status = LoadProgram(probe, name, &program);
  if (EFI_ERROR(status)) {
    return status;
  }
  OBV_SHARED_STATE *shared = host->SharedState;
  OBV_CONFIG *look = shared->Config;
  UINT16 text = shared->StringIds[4];
  gWhole = *host;
  mistake->Make(host);
  status = gBS->StartImage(program, nullptr, nullptr);
  *host = gWhole;
  shared->Config = look;
  shared->StringIds[4] = text;
  return status;
}
