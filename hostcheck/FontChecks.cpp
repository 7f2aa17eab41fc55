#include "app/base/HostClient.h"
#include "hostcheck/Checks.h"
#include "hostcheck/FontFace.h"
#include "hostcheck/Quote.h"
#include "hostcheck/Readable.h"
#include "platform/FontTable.h"
#include "platform/LvglGuard.h"

namespace hostcheck {
namespace {

// How a font file begins: its kind, and how many tables follow.
constexpr UINTN kHeaderSize = 12;
constexpr UINTN kTableCountOffset = 4;
constexpr UINT32 kCollection = SIGNATURE_32('t', 't', 'c', 'f');
constexpr UINTN kMostQuoted = 30;

struct FontFile {
  CHAR8 *Name;
  VOID *Data;
  UINTN Size;
};

/// Tables that the file claims; 0 for a collection, which claims them elsewhere.
UINT32 ClaimedTables(const FontFile &file) {
  auto *bytes = static_cast<const UINT8 *>(file.Data);
  if (file.Size < kHeaderSize ||
      ReadUnaligned32(static_cast<const UINT32 *>(file.Data)) == kCollection) {
    return 0;
  }
  return static_cast<UINT32>(bytes[kTableCountOffset] << 8 | bytes[kTableCountOffset + 1]);
}

void CheckFile(Report *report, UINT32 face, const FontFile &file) {
  Quoted name = Quote(file.Name, kMostQuoted);
  if (file.Data == nullptr || file.Size == 0) {
    Complain(report,
             "face %d, %a, has %ld bytes at %p. Hand over a font file, or return an error for a "
             "face that you do not have.",
             face, name.Text, static_cast<UINT64>(file.Size), file.Data);
    return;
  }
  if (!IsReadable(file.Data, file.Size)) {
    Block(report,
          "face %d, %a, has %ld bytes at %p, where there is not as much memory. Hand over the "
          "file's own size.",
          face, name.Text, static_cast<UINT64>(file.Size), file.Data);
    return;
  }
  FontFace font = {.Data = file.Data, .Size = file.Size, .Opened = 0, .Tables = 0};
  bool finished = RunTestingAllocations(OpenFontFace, &font);
  UINT32 claimed = ClaimedTables(file);
  if (!finished || font.Opened == 0) {
    Complain(report,
             "face %d, %a: FreeType cannot open its %ld bytes. Hand over a whole TrueType or "
             "OpenType file.",
             face, name.Text, static_cast<UINT64>(file.Size));
  } else if (claimed > font.Tables) {
    Complain(report,
             "face %d, %a: of %d tables only %d lie inside its %ld bytes; the file is cut. Hand "
             "over all of it, with its true size.",
             face, name.Text, claimed, static_cast<UINT32>(font.Tables),
             static_cast<UINT64>(file.Size));
  }
}

void CheckName(Report *report, UINT32 face, const CHAR8 *name) {
  if (name == nullptr || name[0] == 0) {
    Complain(report,
             "face %d has no name, so nothing can ask for it. Name it as the appearance record "
             "does.",
             face);
  } else if (AsciiStrnLenS(name, OBV_FONT_NAME_SIZE + 1) > OBV_FONT_NAME_SIZE) {
    Complain(report,
             "the name of face %d, %a, is longer than the 20 characters with which the appearance "
             "record can ask for it. Shorten it.",
             face, Quote(name, kMostQuoted).Text);
  }
}

/// Whether a face is there that the host does not leave out.
bool CheckFace(Report *report, UINT8 face) {
  FontFile file = {};
  EFI_STATUS status =
      gHost.Protocol->GetFontData(gHost.Protocol, face, &file.Name, &file.Data, &file.Size);
  if (EFI_ERROR(status)) {
    Warn(report, "GetFontData answers %r for face %d, which is left out. Hand over a font.", status,
         static_cast<UINT32>(face));
    return false;
  }
  if (file.Name != nullptr && !IsReadable(file.Name, 1)) {
    Block(report, "the name of face %d is at %p, where there is no memory. Hand over a text.",
          static_cast<UINT32>(face), file.Name);
    return true;
  }
  CheckName(report, face, file.Name);
  CheckFile(report, face, file);
  return true;
}

/// Sizes of a face that the application cannot open.
UINT32 MissingSizes(UINTN face) {
  UINT32 missing = 0;
  for (UINTN i = face; i < kFontCount; i += kFontFaces) {
    missing += gFontTable.Fonts[i].font == nullptr ? 1 : 0;
  }
  return missing;
}

}  // namespace

void CheckFontFiles(Report *report) {
  bool there[kFontFaces] = {};
  bool right[kFontFaces] = {};
  for (UINT8 face = 0; face < kFontFaces; ++face) {
    UINTN mistakes = report->Mistakes;
    there[face] = CheckFace(report, face);
    right[face] = there[face] && mistakes == report->Mistakes;
  }
  if (IsAtLeast(*report, Verdict::kBlocking)) {
    return;
  }
  LoadFonts();
  for (UINTN face = 0; face < kFontFaces; ++face) {
    UINT32 missing = MissingSizes(face);
    if (right[face] && missing != 0) {
      Complain(
          report,
          "face %d does not open in %d of its %d sizes. Hand over an outline font that scales, "
          "in one place for the whole run.",
          static_cast<UINT32>(face), missing, static_cast<UINT32>(kFontCount / kFontFaces));
    }
  }
  if (!there[0] && !there[1] && !there[2]) {
    Complain(report, "there is no font at all. Hand over one at least.");
  }
}

}  // namespace hostcheck
