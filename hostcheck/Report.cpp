#include "hostcheck/Report.h"

namespace hostcheck {
namespace {

void Count(Report *report, Verdict grade) {
  report->Mistakes += grade >= Verdict::kMistake ? 1 : 0;
  report->Warnings += grade == Verdict::kWarning ? 1 : 0;
}

void Add(Report *report, Verdict grade, const CHAR8 *format, VA_LIST arguments) {
  PointReport *point = &report->Points[report->PointCount - 1];
  Count(report, grade);
  point->Grade = MAX(point->Grade, grade);
  if (point->Kept == kMostFindings) {
    point->Dropped++;
    return;
  }
  Finding *finding = &point->Findings[point->Kept++];
  finding->Grade = grade;
  AsciiVSPrint(finding->Text, sizeof(finding->Text), format, arguments);
}

}  // namespace

void BeginPoint(Report *report, const CHAR8 *name) {
  report->Points[report->PointCount++].Name = name;
}

void EFIAPI Warn(Report *report, const CHAR8 *format, ...) {
  VA_LIST arguments;
  VA_START(arguments, format);
  Add(report, Verdict::kWarning, format, arguments);
  VA_END(arguments);
}

void EFIAPI Complain(Report *report, const CHAR8 *format, ...) {
  VA_LIST arguments;
  VA_START(arguments, format);
  Add(report, Verdict::kMistake, format, arguments);
  VA_END(arguments);
}

void EFIAPI Block(Report *report, const CHAR8 *format, ...) {
  VA_LIST arguments;
  VA_START(arguments, format);
  Add(report, Verdict::kBlocking, format, arguments);
  VA_END(arguments);
}

void EFIAPI LeaveOut(Report *report, const CHAR8 *format, ...) {
  VA_LIST arguments;
  VA_START(arguments, format);
  Add(report, Verdict::kLeftOut, format, arguments);
  VA_END(arguments);
}

bool IsAtLeast(const Report &report, Verdict grade) {
  return report.Points[report.PointCount - 1].Grade >= grade;
}

}  // namespace hostcheck
