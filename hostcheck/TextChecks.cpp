#include "app/base/HostClient.h"
#include "app/base/HostFormat.h"
#include "app/base/LocalizedStrings.h"
#include "app/base/MemoryPool.h"
#include "app/base/Utf8.h"
#include "hostcheck/Checks.h"
#include "hostcheck/FormatDirectives.h"
#include "view/Categories.h"

namespace hostcheck {
namespace {

constexpr CHAR8 kFallback[] = "en-US";
constexpr UINTN kLanguageSize = 32;
constexpr UINTN kMostDirectives = 8;
constexpr UINTN kPrintedSize = 2048;
constexpr UINT32 kColorDigits = 6;

/// A text that is used as a print format.
struct Format {
  TextId Id;
  CHAR8 Type;  ///< Of each directive.
  UINTN Arguments;
  UINTN MostPrinted;  ///< Bytes for which the view has room.
};

constexpr Format kFormats[] = {
    {TextId::KeyHelp, 'x', 5, 299},
    {TextId::FilterHint, 'a', 1, 99},
    {TextId::SavedText, 'a', 2, 511},
};

struct Text {
  TextId Id;
  const CHAR8 *Language;
  const CHAR8 *Utf8;
};

UINT32 NumberOf(TextId id) { return static_cast<UINT32>(id); }

bool IsRight(const Directive &directive, CHAR8 type) {
  if (type == 'a') {
    return directive.Type == 'a';
  }
  // Without its leading zeros, a dark colour would be no colour to LVGL.
  bool hexadecimal = directive.Type == 'x' || directive.Type == 'X';
  return hexadecimal && directive.LeastWidth == kColorDigits;
}

/// Bytes that the format prints, with the longest arguments that the view has for it.
UINTN PrintedLength(const Format &format, const CHAR8 *text) {
  CHAR8 printed[kPrintedSize];
  if (format.Type == 'x') {
    UINT32 color = 0;
    PrintHostFormat(printed, sizeof(printed), text, color, color, color, color, color);
    return AsciiStrLen(printed);
  }
  const CHAR8 *longest = kCategories[0].Caption;
  for (const Category &category : kCategories) {
    longest = AsciiStrLen(category.Caption) > AsciiStrLen(longest) ? category.Caption : longest;
  }
  PrintHostFormat(printed, sizeof(printed), text, longest, longest);
  return AsciiStrLen(printed);
}

void CheckFormat(Report *report, const Format &format, const Text &text) {
  const CHAR8 *wanted = format.Type == 'x' ? "%.6x" : "%a";
  Directive directives[kMostDirectives];
  UINTN count = ReadDirectives(text.Utf8, directives, kMostDirectives);
  if (count != format.Arguments) {
    Complain(report, "text %d in %a has %d directives that take an argument. Write %d, each %a.",
             NumberOf(text.Id), text.Language, static_cast<UINT32>(count),
             static_cast<UINT32>(format.Arguments), wanted);
    return;
  }
  for (UINTN i = 0; i < count; ++i) {
    if (!IsRight(directives[i], format.Type)) {
      Complain(report, "text %d in %a has a directive of type %c as number %d. Write %a.",
               NumberOf(text.Id), text.Language, static_cast<UINTN>(directives[i].Type),
               static_cast<UINT32>(i + 1), wanted);
      return;
    }
  }
  UINTN printed = PrintedLength(format, text.Utf8);
  if (printed > format.MostPrinted) {
    Complain(report, "text %d in %a prints %d bytes, and %d are shown. Shorten it.",
             NumberOf(text.Id), text.Language, static_cast<UINT32>(printed),
             static_cast<UINT32>(format.MostPrinted));
  }
}

void CheckText(Report *report, const Text &text) {
  if (text.Utf8[0] == 0) {
    Complain(report, "text %d in %a is empty. Write one, or leave it out of that language.",
             NumberOf(text.Id), text.Language);
  }
  if (text.Id == TextId::CloseHint && AsciiStrStr(text.Utf8, "#") != nullptr) {
    Complain(report,
             "text %d in %a holds a #, which begins a colour where it is shown. Leave it "
             "out.",
             NumberOf(text.Id), text.Language);
  }
  for (const Format &format : kFormats) {
    if (format.Id == text.Id) {
      CheckFormat(report, format, text);
    }
  }
}

/// As the application turns it into UTF-8; what cannot be turned ends there.
void CheckUcs2Text(Report *report, TextId id, const CHAR8 *language, const CHAR16 *ucs2) {
  UINTN units = StrLen(ucs2);
  UINTN capacity = units * 4 + 1;
  auto *utf8 = static_cast<CHAR8 *>(malloc(capacity));
  if (utf8 == nullptr) {
    LeaveOut(report, "the firmware has no memory for text %d in %a.", NumberOf(id), language);
    return;
  }
  ConvertUtf16ToUtf8(ucs2, units, utf8, capacity);
  CheckText(report, {.Id = id, .Language = language, .Utf8 = utf8});
  free(utf8);
}

/// Texts that the language lacks.
UINT32 CheckLanguage(Report *report, EFI_HII_HANDLE package, const CHAR8 *language) {
  UINT32 missing = 0;
  for (UINTN i = 0; i < OBV_STRING_COUNT; ++i) {
    EFI_STRING_ID id = gHost.SharedState->StringIds[i];
    EFI_STRING text = id == 0 ? nullptr : HiiGetStringEx(package, id, language, FALSE);
    if (text == nullptr) {
      ++missing;
      continue;
    }
    CheckUcs2Text(report, static_cast<TextId>(i), language, text);
    (void)gBS->FreePool(text);
  }
  return missing;
}

/// The next of a list with semicolons between its languages; false at its end.
bool NextLanguage(const CHAR8 **list, CHAR8 *language) {
  UINTN length = 0;
  const CHAR8 *at = *list;
  for (; *at != 0 && *at != ';'; ++at) {
    if (length < kLanguageSize - 1) {
      language[length++] = *at;
    }
  }
  language[length] = 0;
  *list = *at == ';' ? at + 1 : at;
  return length != 0;
}

void CheckLanguages(Report *report, EFI_HII_HANDLE package, const CHAR8 *list) {
  CHAR8 language[kLanguageSize];
  bool found = false;
  while (NextLanguage(&list, language)) {
    UINT32 missing = CheckLanguage(report, package, language);
    bool fallback = AsciiStrCmp(language, kFallback) == 0;
    found = found || fallback;
    if (missing != 0 && fallback) {
      Complain(report,
               "%d of the 15 texts are not there in en-US. Register them, and put their "
               "identifiers into StringIds.",
               missing);
    } else if (missing != 0) {
      Warn(report, "%d of the 15 texts are not there in %a: en-US stands in. Translate them.",
           missing, language);
    }
  }
  if (!found) {
    Complain(report,
             "the string package has no en-US, which stands in for every other language. "
             "Add it.");
  }
}

}  // namespace

void CheckTexts(Report *report) {
  EFI_GUID guid = OBV_STRING_PACKAGE_LIST_GUID;
  bool hasHii = gHiiDatabase != nullptr && gHiiString != nullptr;
  EFI_HII_HANDLE *packages = hasHii ? HiiGetHiiHandles(&guid) : nullptr;
  if (packages == nullptr) {
    Complain(report,
             "no package list has OBV_STRING_PACKAGE_LIST_GUID. No view starts: register the "
             "texts under it.");
    return;
  }
  if (packages[1] != nullptr) {
    Warn(report,
         "several package lists have OBV_STRING_PACKAGE_LIST_GUID; the first one counts. "
         "Register one.");
  }
  CHAR8 *languages = HiiGetSupportedLanguages(packages[0]);
  if (languages == nullptr) {
    LeaveOut(report, "the languages of the string package cannot be read.");
  } else {
    CheckLanguages(report, packages[0], languages);
    (void)gBS->FreePool(languages);
  }
  (void)gBS->FreePool(packages);
}

}  // namespace hostcheck
