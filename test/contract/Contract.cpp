#include "test/contract/Contract.h"

namespace contract {

namespace {

constexpr UINTN kLineSize = 80;

}  // namespace

void Say(const Report &report, const CHAR8 *question, EFI_STATUS status) {
  CHAR8 line[kLineSize];
  AsciiSPrint(line, sizeof(line), "%a: %r", question, status);
  report.Line(report.Context, line);
}

void SayNumber(const Report &report, const CHAR8 *question, UINT64 number) {
  CHAR8 line[kLineSize];
  AsciiSPrint(line, sizeof(line), "%a: %ld", question, number);
  report.Line(report.Context, line);
}

void PutAllQuestions(const Report &report, EFI_FILE_PROTOCOL *root) {
  AskAboutPool(report);
  AskAboutEvents(report);
  AskAboutNotifications(report);
  AskAboutProtocols(report);
  AskAboutOutput(report);
  AskAboutTransfers(report);
  AskAboutFiles(report, root);
  AskAboutFileInformation(report, root);
  AskAboutVariables(report);
  AskAboutKeyboard(report);
}

}  // namespace contract
