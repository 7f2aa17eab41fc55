#include "host/portable/FormSearch.h"

extern "C" {
#include <Uefi/UefiInternalFormRepresentation.h>
}

namespace obv_host {
namespace {

/// A stretch of the bytes that are left to read.
struct Span {
  const UINT8 *Data;
  UINTN Size;
};

/// What is open while the opcodes of a form package are read. A formset or form
/// counts from its opcode to the end of its scope.
struct FormWalk {
  OBV_SETUP_OPTION Place;
  UINTN Depth;
  UINTN FormSetDepth;  ///< 0 outside of a formset.
  UINTN FormDepth;     ///< 0 outside of a form.
};

struct Wanted {
  UINT16 Question;
  const EFI_GUID *FormSet;
};

constexpr UINTN kScopeOffset = 1;
constexpr UINT8 kLengthMask = 0x7F;
constexpr UINT8 kScopeMask = 0x80;
constexpr UINTN kPackageLengthSize = 3;

UINT16 ReadWord(const UINT8 *data) {
  return static_cast<UINT16>(data[0] | static_cast<UINT16>(data[1]) << 8);
}

Span Rest(const Span &span, UINTN size) { return {span.Data + size, span.Size - size}; }

/// The questions that a form browser can be sent to.
bool IsQuestion(UINT8 opcode) {
  switch (opcode) {
    case EFI_IFR_ONE_OF_OP:
    case EFI_IFR_CHECKBOX_OP:
    case EFI_IFR_NUMERIC_OP:
    case EFI_IFR_PASSWORD_OP:
    case EFI_IFR_ACTION_OP:
    case EFI_IFR_REF_OP:
    case EFI_IFR_DATE_OP:
    case EFI_IFR_TIME_OP:
    case EFI_IFR_STRING_OP:
    case EFI_IFR_ORDERED_LIST_OP:
      return true;
    default:
      return false;
  }
}

void EnterFormSet(const Span &opcode, FormWalk *walk) {
  if (opcode.Size >= OFFSET_OF(EFI_IFR_FORM_SET, FormSetTitle)) {
    CopyMem(&walk->Place.FormSet, opcode.Data + OFFSET_OF(EFI_IFR_FORM_SET, Guid),
            sizeof(walk->Place.FormSet));
    walk->FormSetDepth = walk->Depth;
  }
}

/// Both kinds of forms have their number in the same place.
void EnterForm(const Span &opcode, FormWalk *walk) {
  static_assert(OFFSET_OF(EFI_IFR_FORM, FormId) == OFFSET_OF(EFI_IFR_FORM_MAP, FormId));
  if (opcode.Size >= OFFSET_OF(EFI_IFR_FORM, FormTitle)) {
    walk->Place.FormId = ReadWord(opcode.Data + OFFSET_OF(EFI_IFR_FORM, FormId));
    walk->FormDepth = walk->Depth;
  }
}

void Leave(FormWalk *walk) {
  if (walk->Depth == walk->FormDepth) {
    walk->FormDepth = 0;
  }
  if (walk->Depth == walk->FormSetDepth) {
    walk->FormSetDepth = 0;
  }
  --walk->Depth;
}

bool IsWanted(const Span &opcode, const FormWalk &walk, const Wanted &wanted) {
  constexpr UINTN kNumber =
      sizeof(EFI_IFR_OP_HEADER) + OFFSET_OF(EFI_IFR_QUESTION_HEADER, QuestionId);
  constexpr UINTN kSize = sizeof(EFI_IFR_OP_HEADER) + sizeof(EFI_IFR_QUESTION_HEADER);
  if (!IsQuestion(opcode.Data[0]) || opcode.Size < kSize || walk.FormSetDepth == 0 ||
      walk.FormDepth == 0 || walk.Place.FormId == 0) {
    return false;
  }
  bool inFormSet = wanted.FormSet == nullptr ||
                   CompareMem(wanted.FormSet, &walk.Place.FormSet, sizeof(walk.Place.FormSet)) == 0;
  return inFormSet && ReadWord(opcode.Data + kNumber) == wanted.Question;
}

/// Follows one opcode into or out of a scope. False when the nesting makes no sense.
bool Follow(const Span &opcode, FormWalk *walk) {
  if (opcode.Data[0] == EFI_IFR_END_OP) {
    if (walk->Depth == 0) {
      return false;
    }
    Leave(walk);
    return true;
  }
  if ((opcode.Data[kScopeOffset] & kScopeMask) == 0) {
    return true;
  }
  if (walk->Depth == kFormDepthLimit) {
    return false;
  }
  ++walk->Depth;
  if (opcode.Data[0] == EFI_IFR_FORM_SET_OP) {
    EnterFormSet(opcode, walk);
  } else if (opcode.Data[0] == EFI_IFR_FORM_OP || opcode.Data[0] == EFI_IFR_FORM_MAP_OP) {
    EnterForm(opcode, walk);
  }
  return true;
}

/// The opcode at the front of the span; empty when its length leads nowhere.
Span FirstOpcode(const Span &span) {
  UINTN size = span.Data[kScopeOffset] & kLengthMask;
  return {span.Data, size < sizeof(EFI_IFR_OP_HEADER) || size > span.Size ? 0 : size};
}

bool SearchForms(Span forms, const Wanted &wanted, OBV_SETUP_OPTION *option) {
  FormWalk walk;
  ZeroMem(&walk, sizeof(walk));
  while (forms.Size >= sizeof(EFI_IFR_OP_HEADER)) {
    Span opcode = FirstOpcode(forms);
    if (opcode.Size == 0) {
      return false;
    }
    if (IsWanted(opcode, walk, wanted)) {
      CopyMem(option, &walk.Place, sizeof(*option));
      option->QuestionId = wanted.Question;
      return true;
    }
    if (!Follow(opcode, &walk)) {
      return false;
    }
    forms = Rest(forms, opcode.Size);
  }
  return false;
}

/// Size of the package at the front of the span, its header included; 0 when that makes no sense.
UINTN PackageSize(const Span &packages) {
  UINTN size = packages.Data[0] | static_cast<UINTN>(packages.Data[1]) << 8 |
               static_cast<UINTN>(packages.Data[2]) << 16;
  return size < sizeof(EFI_HII_PACKAGE_HEADER) || size > packages.Size ? 0 : size;
}

bool SearchPackages(Span packages, const Wanted &wanted, OBV_SETUP_OPTION *option) {
  while (packages.Size >= sizeof(EFI_HII_PACKAGE_HEADER)) {
    UINTN size = PackageSize(packages);
    UINT8 type = packages.Data[kPackageLengthSize];
    if (size == 0 || type == EFI_HII_PACKAGE_END) {
      return false;
    }
    const Span forms = {packages.Data + sizeof(EFI_HII_PACKAGE_HEADER),
                        size - sizeof(EFI_HII_PACKAGE_HEADER)};
    if (type == EFI_HII_PACKAGE_FORMS && SearchForms(forms, wanted, option)) {
      return true;
    }
    packages = Rest(packages, size);
  }
  return false;
}

}  // namespace

bool FindQuestion(const void *packageList, UINTN size, UINT16 question, const EFI_GUID *formset,
                  OBV_SETUP_OPTION *option) {
  static_assert(sizeof(EFI_HII_PACKAGE_HEADER) == kPackageLengthSize + 1);
  EFI_HII_PACKAGE_LIST_HEADER header;
  if (packageList == nullptr || size < sizeof(header) || question == 0) {
    return false;
  }
  CopyMem(&header, packageList, sizeof(header));
  if (header.PackageLength < sizeof(header) || header.PackageLength > size) {
    return false;
  }
  const Span packages = {static_cast<const UINT8 *>(packageList) + sizeof(header),
                         header.PackageLength - sizeof(header)};
  return SearchPackages(packages, {.Question = question, .FormSet = formset}, option);
}

}  // namespace obv_host
