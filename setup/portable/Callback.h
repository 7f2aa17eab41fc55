/** @file
  What the setup does when the form browser calls back.
**/

#pragma once

#include "setup/portable/SetupLink.h"
#include "setup/portable/SetupPages.h"

namespace obv_setup {

/// Why the board view did not do what the user asked for.
enum class Trouble : UINT8 {
  kNoFile,    ///< Boardscope.efi is not there.
  kRefused,   ///< The firmware does not start it.
  kNoHost,    ///< Nobody knows the board.
  kNoOption,  ///< No page has the option that the user chose.
  kFailed,    ///< Anything else.
};

/// What the callback takes from its surroundings. Context is handed back to each.
struct CallbackServices {
  void *Context;
  /// Shows the board view until the user leaves it. With an error, *trouble says
  /// what to tell the user.
  EFI_STATUS (*ShowView)(void *context, Trouble *trouble);
  void (*Tell)(void *context, Trouble trouble);
  /// The platform's language, as an index of kLanguageCodes.
  UINT8 (*GetLanguage)(void *context);
  EFI_STATUS (*SetLanguage)(void *context, UINT8 language);
};

/// One call of the form browser.
struct BrowserCall {
  EFI_BROWSER_ACTION Action;
  UINT16 Question;
  UINT8 Type;  ///< Of Value, EFI_IFR_TYPE_*.
  EFI_IFR_TYPE_VALUE *Value;
  EFI_BROWSER_ACTION_REQUEST *Request;
};

/// Answers as EFI_HII_CONFIG_ACCESS_PROTOCOL.Callback does. EFI_UNSUPPORTED
/// leaves all to the browser. A way to the view that leads nowhere answers
/// EFI_ABORTED, and the browser stays on its page.
EFI_STATUS AnswerBrowser(const CallbackServices &services, SetupLink *link,
                         const BrowserCall &call);

}  // namespace obv_setup
