// A scriptable host: an OBV_PROTOCOL with its shared state, appearance record, texts, board
// picture, fonts and components. Everything has a sensible default and can be replaced.

#pragma once

#include "test/firmware/FakeFirmware.h"

namespace fake {

struct LogLine {
  UINTN Level;
  std::string Text;
  bool operator==(const LogLine &) const = default;
};

/// For failure messages.
inline void PrintTo(const LogLine &line, std::ostream *stream) {
  *stream << std::hex << "0x" << line.Level << std::dec << " \"" << line.Text << "\"";
}

/// Geometry arguments of ParseComponents.
struct ParseArguments {
  UINT16 PictureHeight, PictureWidth, ViewHeight, ViewWidth;
  double Share, ScaleX, ScaleY;
};

class TestHost {
 public:
  explicit TestHost(Firmware &firmware);
  ~TestHost();
  TestHost(const TestHost &) = delete;
  TestHost &operator=(const TestHost &) = delete;

  /// Publishes the protocol and the string package; sets SharedState->Gop to the first output
  /// (when there is one and State.Gop is null).
  void Install();
  void Uninstall();

  /// Slots may be set to null before the run; Shared and Look are what the slots point to.
  OBV_PROTOCOL &Protocol() { return thunk_.Protocol; }
  OBV_SHARED_STATE State{};
  OBV_CONFIG Config{};
  std::vector<OBV_COMPONENT> Components;
  OBV_COMPONENT_STYLE DefaultStyle{};
  OBV_COMPONENT_STYLE FocusStyle{};
  StringTable Strings;
  std::vector<uint8_t> Picture;
  std::string ViewColor = "32,32,32";

  /// One font face; an empty file makes GetFontData answer EFI_NOT_FOUND.
  struct Font {
    std::string Name;
    std::vector<uint8_t> File;
  };
  std::array<Font, 3> Fonts;
  /// No face at all: loading them takes most of a run.
  void LeaveFontsOut();

  /// Answer of QueryComponentStatus for one component, by name; others get EFI_SUCCESS and no
  /// lines. Lines are {label, value} of kind 0, or with a kind of their own.
  struct InfoLine {
    std::u16string Label, Value;
    UINT32 Kind = OBV_INFO_DESCRIPTION;
  };
  struct ComponentAnswer {
    EFI_STATUS Status = EFI_SUCCESS;
    std::vector<InfoLine> Lines;
    /// Statuses of the first queries, before Status is given for all further ones.
    std::deque<EFI_STATUS> Before;
  };
  std::map<std::u16string, ComponentAnswer> Answers;
  /// Whether the default ParseComponents multiplies the components' positions with the scale
  /// factors that it gets.
  bool ScaleComponents = true;

  /// Replacements of slots; where one is set, the default answer is not given.
  std::function<UINT64()> OnGetTime;
  std::function<EFI_STATUS(OBV_COMPONENT **, const ParseArguments &)> OnParseComponents;
  std::function<EFI_STATUS()> OnFinishParse;
  std::function<EFI_STATUS(VOID **, UINTN *)> OnGetResourceData;
  std::function<EFI_STATUS(UINT8, CHAR8 **, VOID **, UINTN *)> OnGetFontData;
  std::function<EFI_STATUS(EFI_GRAPHICS_OUTPUT_PROTOCOL **)> OnGetGop;
  std::function<EFI_STATUS(CHAR16 *, UINT32, UINTN, UINT64 *, OBV_COMPONENT_INFO *)>
      OnQueryComponentStatus;
  std::function<void(const LogLine &)> OnDebugPrint;
  std::function<EFI_STATUS()> OnFindBiosOption;
  std::function<EFI_STATUS()> OnAfterAppLife;
  std::function<EFI_STATUS()> OnUnsupportedResolution;

  /// Lines that DebugPrint got, formatted by EDK2's print library; line feeds are plain.
  std::vector<LogLine> Log;
  /// Texts of the log alone, line feeds kept; of one level when given.
  std::vector<std::string> LogTexts(std::optional<UINTN> level = std::nullopt) const;
  bool Logged(std::string_view text) const;
  /// The arguments of the last ParseComponents.
  std::optional<ParseArguments> Parsed;

  /// Adds a component with an outline, leader line, marker and callout near (x, y), in pixels of
  /// a 1920 x 1080 view. The reference is valid until the next one is added.
  OBV_COMPONENT &AddComponent(std::u16string_view name, UINT32 type, UINT16 tokenId, INT16 x,
                              INT16 y);
  /// Removes all components, for tests that describe their own.
  void ClearComponents() { Components.clear(); }

 private:
  struct Thunk {
    OBV_PROTOCOL Protocol;
    TestHost *Self;
  };
  friend struct HostThunks;
  EFI_STATUS DefaultParse(OBV_COMPONENT **components, const ParseArguments &arguments);
  EFI_STATUS DefaultFont(UINT8 index, CHAR8 **name, VOID **data, UINTN *size);
  EFI_STATUS DefaultQuery(const CHAR16 *name, UINTN capacity, UINT64 *count,
                          OBV_COMPONENT_INFO *info);
  void FillSlots();
  void FillState();
  void FillConfig();
  void FillStyles();
  void FillStrings();
  void FillComponents();
  void FillFonts();

  Firmware &firmware_;
  Thunk thunk_;
  EFI_HANDLE handle_ = nullptr;
  EFI_HII_HANDLE strings_ = nullptr;
};

}  // namespace fake
