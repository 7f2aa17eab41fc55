#include "tool/view/HostedMachine.h"

#include <cstdlib>

#include "host/portable/Blobs.h"
#include "host/portable/Texts.h"

namespace board_view {

namespace {

UINT64 ReadClock(void *) { return fake::Firmware::Current().LookAtClock(); }

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

Screen ScreenOf(const fake::GraphicsOutput &output) {
  return {output.Width(), output.Height(), output.Picture()};
}

HostedMachine::HostedMachine() {
  const obv_host::HostServices services = {
      this, ReadClock, WriteLog, FindGop, Allocate, Free, nullptr, nullptr,
  };
  obv_host::FontFile fonts[obv_host::kFaceCount];
  for (UINT8 face = 0; face < obv_host::kFaceCount; face++) {
    fonts[face] = obv_host::EmbeddedFont(face);
  }
  obv_host::InitializeHost(&Host, services, fonts);
  Machine.Hii.AddStrings(fake::kObvStringListGuid, Texts());
  Machine.Install(fake::kObvProtocolGuid, &Host.Protocol);
}

HostedMachine::~HostedMachine() { obv_host::ReleaseHost(&Host); }

void HostedMachine::WriteLog(void *self, const CHAR8 *line, UINTN size) {
  const auto &machine = *static_cast<HostedMachine *>(self);
  if (machine.OnLog) {
    machine.OnLog(std::string_view(line, size));
  }
}

}  // namespace board_view
