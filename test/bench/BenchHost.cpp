#include "test/bench/BenchHost.h"

#include <cstdio>

#include "host/portable/Blobs.h"
#include "host/portable/BoardReader.h"

namespace bench {

namespace {

constexpr size_t kColumns = 11;
constexpr uint32_t kLeft = 120, kTop = 100, kAcross = 155, kDown = 100;

Place Corner(size_t index) {
  return {kLeft + static_cast<uint32_t>(index % kColumns) * kAcross,
          kTop + static_cast<uint32_t>(index / kColumns) * kDown};
}

void AddComponents(fake::TestHost *host) {
  constexpr UINT32 kTypes[] = {OBV_TYPE_USB, OBV_TYPE_SATA, OBV_TYPE_M2, OBV_TYPE_PCIE,
                               OBV_TYPE_FAN};
  host->ClearComponents();
  for (size_t i = 0; i < kComponents; i++) {
    Place corner = Corner(i);
    std::u16string name = fake::FromAscii("PART_" + std::to_string(i + 1));
    host->AddComponent(name, kTypes[i % std::size(kTypes)], static_cast<UINT16>(0x100 + i),
                       static_cast<INT16>(corner.X), static_cast<INT16>(corner.Y));
    host->Answers[name].Lines = {{u"State", u"Present"}, {u"Device", u"Something 512 GB"}};
  }
}

void AddFonts(fake::TestHost *host) {
  const char *names[] = {"OpenSans", "DroidSans", "OpenSansBold"};
  for (UINT8 face = 0; face < host->Fonts.size(); face++) {
    obv_host::FontFile file = obv_host::EmbeddedFont(face);
    auto *bytes = static_cast<const uint8_t *>(file.Data);
    host->Fonts[face] = {names[face], std::vector<uint8_t>(bytes, bytes + file.Size)};
  }
}

}  // namespace

Place ComponentPlace(size_t index) {
  Place corner = Corner(index);
  return {corner.X + 40, corner.Y + 20};
}

Place EmptyPlace(size_t step) {
  // Five rows of pixels lie between an outline and the callout below it.
  return {kLeft + static_cast<uint32_t>(step) * 3, kTop + 4 * kDown + 43};
}

std::vector<uint8_t> DefaultPicture() {
  obv_host::EmbeddedFile file = obv_host::EmbeddedBoard();
  obv_host::Board board{};
  obv_host::BoardFault fault{};
  if (EFI_ERROR(obv_host::OpenBoard(file.Data, file.Size, &board, &fault))) {
    std::printf("The default board is refused: %s\n", fault.Text);
    return {};
  }
  return {board.Picture, board.Picture + board.Header.PictureSize};
}

bool Furnish(fake::TestHost *host) {
  AddComponents(host);
  AddFonts(host);
  host->Picture = DefaultPicture();
  return !host->Picture.empty();
}

}  // namespace bench
