/** @file
  What the application and its tests take for granted of UEFI firmware.

  The same questions are put to the fake firmware and to the real one in QEMU.
  Each answer is a line; both must give the lines of expected.txt. A question
  therefore asks nothing that depends on the machine.
**/

#pragma once

#include "test/contract/Firmware.h"

namespace contract {

/// Where the lines go.
struct Report {
  /// The line ends without a line feed; it is valid during the call.
  void (*Line)(void *context, const CHAR8 *line);
  void *Context;
};

/// "question: status" and "question: number", for a text of up to 50 bytes.
void Say(const Report &report, const CHAR8 *question, EFI_STATUS status);
void SayNumber(const Report &report, const CHAR8 *question, UINT64 number);

/// Puts all questions. Needs gBS, gRT and gST, a graphics output with a mode of
/// at least 64 x 64 pixels, no key that waits, and the root of an empty FAT
/// volume that can be written to.
void PutAllQuestions(const Report &report, EFI_FILE_PROTOCOL *root);

void AskAboutPool(const Report &report);
void AskAboutEvents(const Report &report);
void AskAboutNotifications(const Report &report);
void AskAboutProtocols(const Report &report);
void AskAboutOutput(const Report &report);
void AskAboutTransfers(const Report &report);
void AskAboutFiles(const Report &report, EFI_FILE_PROTOCOL *root);
void AskAboutFileInformation(const Report &report, EFI_FILE_PROTOCOL *root);
void AskAboutVariables(const Report &report);
void AskAboutKeyboard(const Report &report);

}  // namespace contract
