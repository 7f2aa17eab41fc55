#include "setup/portable/Callback.h"

#include "setup/portable/SelectionRecord.h"

namespace obv_setup {
namespace {

const ViewEntry *FindEntry(UINT16 question) {
  for (const ViewEntry &entry : kViewEntries) {
    if (entry.Question == question) {
      return &entry;
    }
  }
  return nullptr;
}

bool LeadsToView(UINT16 question) {
  return question == kViewQuestion || FindEntry(question) != nullptr;
}

bool IsDefaultAction(EFI_BROWSER_ACTION action) {
  return action >= EFI_BROWSER_ACTION_DEFAULT_STANDARD;
}

void Select(UINT16 question) {
  const ViewEntry *entry = FindEntry(question);
  if (entry == nullptr) {
    ClearSelection();
  } else {
    SelectComponent(*entry);
  }
}

/// Where the browser goes next. Without a formset it searches the present one,
/// whose unsaved values stay as they are.
void PointTo(const OBV_SETUP_OPTION &option, EFI_HII_REF *ref) {
  const EFI_GUID own = OBV_SETUP_FORMSET_GUID;
  ZeroMem(ref, sizeof(*ref));
  ref->QuestionId = option.QuestionId;
  ref->FormId = option.FormId;
  if (CompareMem(&option.FormSet, &own, sizeof(own)) != 0) {
    CopyMem(&ref->FormSetGuid, &option.FormSet, sizeof(ref->FormSetGuid));
  }
}

EFI_STATUS VisitView(const CallbackServices &services, SetupLink *link, const BrowserCall &call) {
  if (call.Type != EFI_IFR_TYPE_REF) {
    return EFI_INVALID_PARAMETER;
  }
  Select(call.Question);
  BeginVisit(link);
  Trouble trouble = Trouble::kFailed;
  EFI_STATUS status = services.ShowView(services.Context, &trouble);
  OBV_SETUP_OPTION option;
  bool jumps = EndVisit(link, &option);
  // A view that did not come as far as to read it leaves nothing for the next one.
  ClearSelection();
  if (EFI_ERROR(status)) {
    services.Tell(services.Context, link->LacksOption ? Trouble::kNoOption : trouble);
    return EFI_ABORTED;
  }
  if (!jumps) {
    return EFI_ABORTED;
  }
  PointTo(option, &call.Value->ref);
  return EFI_SUCCESS;
}

EFI_STATUS AnswerLanguage(const CallbackServices &services, const BrowserCall &call) {
  if (call.Action == EFI_BROWSER_ACTION_RETRIEVE || IsDefaultAction(call.Action)) {
    call.Value->u8 = services.GetLanguage(services.Context);
    return EFI_SUCCESS;
  }
  if (call.Action == EFI_BROWSER_ACTION_CHANGED) {
    return call.Value->u8 < kLanguageCount ? services.SetLanguage(services.Context, call.Value->u8)
                                           : EFI_INVALID_PARAMETER;
  }
  return EFI_UNSUPPORTED;
}

/// The look is saved at once, so that the next view has it.
EFI_STATUS AnswerLook(const BrowserCall &call) {
  if (call.Action != EFI_BROWSER_ACTION_CHANGED) {
    return EFI_UNSUPPORTED;
  }
  *call.Request = EFI_BROWSER_ACTION_REQUEST_FORM_APPLY;
  return EFI_SUCCESS;
}

}  // namespace

EFI_STATUS AnswerBrowser(const CallbackServices &services, SetupLink *link,
                         const BrowserCall &call) {
  if (call.Value == nullptr || call.Request == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  if (LeadsToView(call.Question)) {
    return call.Action == EFI_BROWSER_ACTION_CHANGING ? VisitView(services, link, call)
                                                      : EFI_UNSUPPORTED;
  }
  if (call.Question == kLanguageQuestion) {
    return AnswerLanguage(services, call);
  }
  if (call.Question == kContrastQuestion || call.Question == kTextSizeQuestion) {
    return AnswerLook(call);
  }
  return EFI_UNSUPPORTED;
}

}  // namespace obv_setup
