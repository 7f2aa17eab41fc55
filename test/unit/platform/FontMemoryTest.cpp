// Fonts that are loaded while the firmware's pool has nothing to give at one of their allocations,
// or from one on: the font itself may be missing, all others look as they always do.

#include <gmock/gmock.h>

#include "test/firmware/Child.h"
#include "test/unit/stage/PortStage.h"

#include "app/base/MemoryPool.h"
#include "host/portable/Blobs.h"

namespace {

using fake::Service;

/// What each font looks like.
using Looks = std::vector<std::string>;

const std::string kMissing = "missing";
/// FreeType opens a font also when it finds no memory for the table of its characters.
const std::string kNoLetters = "no letters";

/// Which allocation of which font fails, and how many from it on, up to the next font.
struct Disturbance {
  size_t Font;
  uint64_t Allocation;
  uint64_t Count;
};

/// Metrics and pixels of a letter, without those of the font's fallback; empty when there is none.
std::string LookOf(const lv_font_t *font, UINT32 letter) {
  lv_font_glyph_dsc_t glyph = {};
  if (!font->get_glyph_dsc(font, &glyph, letter, 0) || glyph.is_placeholder) {
    return "";
  }
  const UINT8 *pixels = font->get_glyph_bitmap(font, letter);
  UINT32 sum = 0;
  for (UINT32 i = 0; i < UINT32{glyph.box_w} * glyph.box_h; i++) {
    sum = sum * 31 + pixels[i];
  }
  std::string look;
  for (int value :
       {glyph.adv_w + 0, glyph.box_w + 0, glyph.box_h + 0, glyph.ofs_x + 0, glyph.ofs_y + 0}) {
    look += std::to_string(value) + " ";
  }
  return look + std::to_string(sum);
}

std::string LookOf(const lv_font_t *font) {
  if (font == nullptr) {
    return kMissing;
  }
  std::string letters;
  for (UINT32 letter : {0x41u, 0x67u, 0x4E2Du}) {
    letters += LookOf(font, letter);
    letters += ", ";
  }
  std::string lines = std::to_string(font->line_height) + " " + std::to_string(font->base_line);
  return letters == ", , , " ? kNoLetters : letters + lines;
}

/// A line for each font that looks otherwise.
std::string Changes(const Looks &from, const Looks &to) {
  std::string changes = from.size() == to.size() ? "" : "other fonts\n";
  for (size_t i = 0; i < std::min(from.size(), to.size()); i++) {
    if (from[i] != to[i]) {
      changes += "font " + std::to_string(i) + " from " + from[i] + " to " + to[i] + "\n";
    }
  }
  return changes;
}

/// Fonts 0, 3, 6, ... are of face 0, and so on.
class FontMemory : public PortStage {
 protected:
  struct Loaded {
    Looks Fonts;
    bool Failed = false;  ///< An allocation was made to fail.
  };

  FontMemory() {
    Machine.Pool.ReuseFreed = true;
    Machine.Calls.RecordAll(false);
    Host.OnGetFontData = [this](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) {
      PlanForFont(asked_++);
      obv_host::FontFile file = obv_host::EmbeddedFont(face);
      *name = Host.Fonts[face].Name.data();
      *data = const_cast<VOID *>(static_cast<const VOID *>(file.Data));
      *size = file.Size;
      return EFI_SUCCESS;
    };
  }

  /// Loads all fonts in a process of its own and looks at them when there is memory again.
  Loaded Load(std::optional<Disturbance> disturbance) {
    fake::ChildResult child = fake::RunInChild([&](std::string *text) {
      disturbance_ = disturbance;
      InitializeLvglPort();
      Machine.Faults.Clear();
      *text = Machine.Faults.AnyFailed() ? "failed\n" : "\n";
      for (const lv_ft_info_t &font : gFontTable.Fonts) {
        *text += LookOf(font.font) + "\n";
      }
      std::string complaints = MissingAndLog();
      ReportMemoryLeaks();
      complaints += Machine.Leftovers();
      std::fputs(complaints.c_str(), stdout);
      return complaints.empty() ? 0 : 1;
    });
    EXPECT_TRUE(child.Succeeded) << child.Summary();
    Loaded loaded;
    std::istringstream lines(child.Text);
    std::string line;
    loaded.Failed = std::getline(lines, line) && line == "failed";
    while (std::getline(lines, line)) {
      loaded.Fonts.push_back(line);
    }
    return loaded;
  }

 private:
  void PlanForFont(size_t font) {
    if (disturbance_ && disturbance_->Font == font) {
      Machine.FailCall(Service::AllocatePool, disturbance_->Allocation, EFI_OUT_OF_RESOURCES,
                       disturbance_->Count);
    } else {
      Machine.Faults.Clear();
    }
  }
  /// Empty when each missing font has its line in the log, and no other font has one.
  std::string MissingAndLog() const {
    std::string missing;
    std::string logged;
    for (const lv_ft_info_t &font : gFontTable.Fonts) {
      if (font.font == nullptr) {
        missing += "[OBV] Font(" + std::string(font.name) + " " + std::to_string(font.weight) +
                   ") not found, ignore.\n";
      }
    }
    for (const std::string &line : Host.LogTexts(OBV_LOG_ERROR)) {
      logged += line.starts_with("[OBV]") ? line : "";
    }
    return missing == logged ? "" : "missing:\n" + missing + "logged:\n" + logged;
  }

  std::optional<Disturbance> disturbance_;
  size_t asked_ = 0;
};

/// The font, and how many of its allocations fail.
class FontMemoryFailure : public FontMemory,
                          public testing::WithParamInterface<std::tuple<size_t, uint64_t>> {};

TEST_P(FontMemoryFailure, CostsNoOtherFont) {
  auto [font, count] = GetParam();
  const Looks undisturbed = Load(std::nullopt).Fonts;
  ASSERT_EQ(undisturbed.size(), kFontCount);
  ASSERT_EQ(std::set<std::string>(undisturbed.begin(), undisturbed.end()).size(), kFontCount);
  int allocations = 0;
  int missing = 0;
  Loaded loaded = Load(Disturbance{font, 1, count});
  while (loaded.Failed) {
    allocations++;
    ASSERT_EQ(loaded.Fonts.size(), kFontCount);
    EXPECT_THAT(loaded.Fonts[font], testing::AnyOf(kMissing, kNoLetters, undisturbed[font]))
        << "allocation " << allocations;
    missing += loaded.Fonts[font] == kMissing ? 1 : 0;
    loaded.Fonts[font] = undisturbed[font];
    EXPECT_EQ(Changes(undisturbed, loaded.Fonts), "") << "allocation " << allocations;
    loaded = Load(Disturbance{font, allocations + 1u, count});
  }
  EXPECT_EQ(Changes(undisturbed, loaded.Fonts), "");
  std::printf("%d allocations, the font is missing without %d of them\n", allocations, missing);
  EXPECT_GT(missing, allocations / 2);
}

// The first font of the first name, that of another, and one of the third face in between.
INSTANTIATE_TEST_SUITE_P(, FontMemoryFailure,
                         testing::Combine(testing::Values(0, 1, 80),
                                          testing::Values(uint64_t{1}, fake::kForever)));

}  // namespace
