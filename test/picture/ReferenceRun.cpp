#include "test/picture/ReferenceRun.h"

#include <cstdlib>

#include "host/portable/Blobs.h"
#include "host/portable/Texts.h"

namespace picture {

namespace {

UINT64 ReadClock(void *) { return fake::Firmware::Current().LookAtClock(); }

void WriteLog(void *, const CHAR8 *line, UINTN size) {
  std::fwrite(line, 1, size, stdout);  // gtest shows it with a failure.
}

EFI_STATUS FindGop(void *, EFI_GRAPHICS_OUTPUT_PROTOCOL **gop) {
  *gop = fake::Firmware::Current().Output().Protocol();
  return EFI_SUCCESS;
}

void *Allocate(void *, UINTN size) { return std::malloc(size); }
void Free(void *, void *memory) { std::free(memory); }

fake::StringTable Texts() {
  fake::StringTable table;
  for (const obv_host::LanguageTexts &language : obv_host::kLanguages) {
    auto &texts = table[language.Code];
    texts[1] = language.NativeName;
    for (UINTN i = 0; i < OBV_STRING_COUNT; i++) {
      texts[obv_host::TextId(i)] = obv_host::TextAt(language, i);
    }
  }
  return table;
}

}  // namespace

ReferenceRun::ReferenceRun() {
  const obv_host::HostServices services = {
      nullptr, ReadClock, WriteLog, FindGop, Allocate, Free, nullptr, nullptr,
  };
  obv_host::FontFile fonts[obv_host::kFaceCount];
  for (UINT8 face = 0; face < obv_host::kFaceCount; face++) {
    fonts[face] = obv_host::EmbeddedFont(face);
  }
  obv_host::InitializeHost(&Host, services, fonts);
  Machine.Hii.AddStrings(fake::kObvStringListGuid, Texts());
  Machine.Install(fake::kObvProtocolGuid, &Host.Protocol);
}

ReferenceRun::~ReferenceRun() {
  EXPECT_EQ(Machine.ProblemsText(), "");
  obv_host::ReleaseHost(&Host);
}

void ReferenceRun::AddPointers() {
  Machine.AddSimplePointer();
  Machine.AddAbsolutePointer({0, 0, 1920, 1080});
}

void ReferenceRun::MoveTo(fake::RunOptions *options, int turn, uint32_t x, uint32_t y,
                          bool pressed) {
  options->At(turn, [=, this] { Machine.Tablet()->MoveTo(x, y, pressed ? 1 : 0); });
}

Screen ReferenceRun::Show(std::vector<fake::VideoMode> modes, const std::vector<uint8_t> &board,
                          fake::RunOptions options, int turns) {
  board_ = board;
  EXPECT_EQ(obv_host::UseBoard(&Host, "the test", board_.data(), board_.size()), EFI_SUCCESS);
  fake::GraphicsOutput &output = Machine.AddOutput(std::move(modes));
  Screen screen;
  options.At(turns, [&] { screen = {output.Width(), output.Height(), output.Picture()}; });
  options.EscapeAtTurn = turns + 1;
  EXPECT_EQ(fake::RunApplication(Machine, options).Status, EFI_SUCCESS);
  return screen;
}

}  // namespace picture
