#include "hostcheck/ReportText.h"

namespace hostcheck {
namespace {

constexpr UINTN kColumns = 79;
constexpr UINTN kIndent = 5;
constexpr UINTN kLineSize = kFindingSize + 64;

struct Writer {
  LineSink Sink;
  void *Context;
};

const CHAR8 *WordFor(Verdict grade) {
  switch (grade) {
    case Verdict::kGood:
      return "ok";
    case Verdict::kWarning:
      return "warn";
    case Verdict::kLeftOut:
      return "skip";
    default:
      return "BAD";
  }
}

/// Bytes of the text's first line: up to the last blank that leaves it in its columns.
UINTN LineLength(const CHAR8 *text, UINTN columns) {
  UINTN length = AsciiStrLen(text);
  if (length <= columns) {
    return length;
  }
  for (UINTN i = columns; i > 0; --i) {
    if (text[i] == ' ') {
      return i;
    }
  }
  return columns;
}

/// The lines behind the first are indented.
void WriteWrapped(const Writer &writer, const CHAR8 *text) {
  CHAR8 line[kColumns + 1];
  UINTN indent = 0;
  while (*text != 0) {
    UINTN length = LineLength(text, kColumns - indent);
    SetMem(line, indent, ' ');
    CopyMem(line + indent, text, length);
    line[indent + length] = 0;
    writer.Sink(writer.Context, line);
    text += length;
    text += *text == ' ' ? 1 : 0;
    indent = kIndent;
  }
}

void WriteFindings(const Writer &writer, const PointReport &point) {
  CHAR8 line[kLineSize];
  for (UINTN i = 0; i < point.Kept; ++i) {
    const Finding &finding = point.Findings[i];
    AsciiSPrint(line, sizeof(line), "%-4a %a: %a", WordFor(finding.Grade), point.Name,
                finding.Text);
    WriteWrapped(writer, line);
  }
  if (point.Dropped != 0) {
    AsciiSPrint(line, sizeof(line), "     %a: and %d more.", point.Name,
                static_cast<UINT32>(point.Dropped));
    writer.Sink(writer.Context, line);
  }
}

}  // namespace

void WriteReport(const Report &report, LineSink sink, void *context) {
  const Writer writer = {.Sink = sink, .Context = context};
  CHAR8 line[kLineSize];
  for (UINTN i = 0; i < report.PointCount; ++i) {
    const PointReport &point = report.Points[i];
    AsciiSPrint(line, sizeof(line), "%-4a %a", WordFor(point.Grade), point.Name);
    sink(context, line);
  }
  sink(context, "");
  for (UINTN i = 0; i < report.PointCount; ++i) {
    WriteFindings(writer, report.Points[i]);
  }
  AsciiSPrint(line, sizeof(line), "%d mistake%a, %d warning%a",
              static_cast<UINT32>(report.Mistakes), report.Mistakes == 1 ? "" : "s",
              static_cast<UINT32>(report.Warnings), report.Warnings == 1 ? "" : "s");
  sink(context, line);
}

}  // namespace hostcheck
