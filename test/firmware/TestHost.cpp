#include "test/firmware/TestHost.h"

extern "C" {
#include <Library/PrintLib.h>
}

namespace fake {

namespace {

// DebugPrint has no This.
TestHost *gLogHost = nullptr;

// EDK2's print library turns each line feed of a format into carriage return and line feed; the
// log keeps what the application wrote.
std::string WithPlainLineFeeds(const CHAR8 *text) {
  std::string plain = text;
  for (size_t at = plain.find("\r\n"); at != plain.npos; at = plain.find("\r\n", at)) {
    plain.erase(at, 1);
  }
  return plain;
}

}  // namespace

struct HostThunks {
  static TestHost *From(OBV_PROTOCOL *protocol) {
    return reinterpret_cast<TestHost::Thunk *>(protocol)->Self;
  }

  static UINT64 EFIAPI GetTime(OBV_PROTOCOL *protocol) {
    UINT64 time = From(protocol)->firmware_.LookAtClock();
    return From(protocol)->OnGetTime ? From(protocol)->OnGetTime() : time;
  }

  static EFI_STATUS EFIAPI ParseComponents(OBV_PROTOCOL *protocol, OBV_COMPONENT **components,
                                           UINT16 pictureHeight, UINT16 pictureWidth,
                                           UINT16 viewHeight, UINT16 viewWidth, double share,
                                           double scaleX, double scaleY) {
    TestHost *self = From(protocol);
    ParseArguments arguments{pictureHeight, pictureWidth, viewHeight, viewWidth,
                             share,         scaleX,       scaleY};
    self->Parsed = arguments;
    Call call(Service::HostParseComponents, nullptr, pictureHeight, pictureWidth, viewHeight,
              viewWidth);
    return call.Run([&] {
      return self->OnParseComponents ? self->OnParseComponents(components, arguments)
                                     : self->DefaultParse(components, arguments);
    });
  }

  static EFI_STATUS EFIAPI FinishParse(OBV_PROTOCOL *protocol) {
    Call call(Service::HostFinishParse, nullptr);
    return call.Run([&] { return Hook(From(protocol)->OnFinishParse); });
  }

  static EFI_STATUS EFIAPI GetResourceData(OBV_PROTOCOL *protocol, VOID **data, UINTN *size) {
    TestHost *self = From(protocol);
    Call call(Service::HostGetResourceData, nullptr);
    return call.Run([&]() -> EFI_STATUS {
      if (self->OnGetResourceData) {
        return self->OnGetResourceData(data, size);
      }
      *data = self->Picture.data();
      *size = self->Picture.size();
      return EFI_SUCCESS;
    });
  }

  static EFI_STATUS EFIAPI GetFontData(OBV_PROTOCOL *protocol, UINT8 index, CHAR8 **name,
                                       VOID **data, UINTN *size) {
    TestHost *self = From(protocol);
    Call call(Service::HostGetFontData, nullptr, index);
    return call.Run([&] {
      return self->OnGetFontData ? self->OnGetFontData(index, name, data, size)
                                 : self->DefaultFont(index, name, data, size);
    });
  }

  static EFI_STATUS EFIAPI GetGop(OBV_PROTOCOL *protocol, EFI_GRAPHICS_OUTPUT_PROTOCOL **gop) {
    TestHost *self = From(protocol);
    Call call(Service::HostGetGop, nullptr);
    return call.Run([&]() -> EFI_STATUS {
      if (self->OnGetGop) {
        return self->OnGetGop(gop);
      }
      if (self->firmware_.OutputCount() == 0) {
        return EFI_NOT_FOUND;
      }
      *gop = self->firmware_.Output().Protocol();
      return EFI_SUCCESS;
    });
  }

  static EFI_STATUS EFIAPI QueryComponentStatus(OBV_PROTOCOL *protocol, CHAR16 *name, UINT32 type,
                                                UINTN capacity, UINT64 *count,
                                                OBV_COMPONENT_INFO *info) {
    TestHost *self = From(protocol);
    Call call(Service::HostQueryComponentStatus, nullptr, static_cast<const CHAR16 *>(name), type,
              capacity);
    return call.Run([&] {
      return self->OnQueryComponentStatus
                 ? self->OnQueryComponentStatus(name, type, capacity, count, info)
                 : self->DefaultQuery(name, capacity, count, info);
    });
  }

  static VOID EFIAPI DebugPrint(UINTN level, CONST CHAR8 *format, ...) {
    CHAR8 buffer[4096];
    VA_LIST arguments;
    VA_START(arguments, format);
    AsciiVSPrint(buffer, sizeof buffer, format, arguments);
    VA_END(arguments);
    std::string text = WithPlainLineFeeds(buffer);
    Call call(Service::HostDebugPrint, nullptr, level, text);
    call.RunVoid([&] {
      if (gLogHost == nullptr) {
        Firmware::Current().Problem("DebugPrint was called without a host");
        return;
      }
      gLogHost->Log.push_back({level, text});
      if (gLogHost->OnDebugPrint) {
        gLogHost->OnDebugPrint(gLogHost->Log.back());
      }
    });
  }

  static EFI_STATUS EFIAPI FindBiosOption(OBV_PROTOCOL *protocol) {
    Call call(Service::HostFindBiosOption, nullptr, From(protocol)->State.JumpSearchTokenId);
    return call.Run([&] { return Hook(From(protocol)->OnFindBiosOption); });
  }

  static EFI_STATUS EFIAPI AfterAppLife(OBV_PROTOCOL *protocol) {
    Call call(Service::HostAfterAppLife, nullptr, From(protocol)->State.JumpRequested);
    return call.Run([&] { return Hook(From(protocol)->OnAfterAppLife); });
  }

  static EFI_STATUS EFIAPI UnsupportedResolution(OBV_PROTOCOL *protocol) {
    Call call(Service::HostUnsupportedResolution, nullptr);
    return call.Run([&] { return Hook(From(protocol)->OnUnsupportedResolution); });
  }

  static EFI_STATUS EFIAPI Unused() {
    Call call(Service::HostUnusedSlot, nullptr);
    return call.Run([]() -> EFI_STATUS {
      Firmware::Current().Problem("a slot of OBV_PROTOCOL was called that nobody uses");
      return EFI_UNSUPPORTED;
    });
  }

  static EFI_STATUS Hook(const std::function<EFI_STATUS()> &hook) {
    return hook ? hook() : EFI_SUCCESS;
  }
};

TestHost::TestHost(Firmware &firmware) : firmware_(firmware), thunk_{{}, this} {
  gLogHost = this;
  FillSlots();
  FillState();
  FillConfig();
  FillStyles();
  FillStrings();
  FillComponents();
  FillFonts();
}

TestHost::~TestHost() {
  Uninstall();
  gLogHost = gLogHost == this ? nullptr : gLogHost;
}

void TestHost::FillSlots() {
  OBV_PROTOCOL &table = thunk_.Protocol;
  auto *unused = reinterpret_cast<VOID *>(&HostThunks::Unused);
  table.GetTime = &HostThunks::GetTime;
  table.ParseComponents = &HostThunks::ParseComponents;
  table.FinishParse = &HostThunks::FinishParse;
  table.GetResourceData = &HostThunks::GetResourceData;
  table.GetFontData = &HostThunks::GetFontData;
  table.GetGop = &HostThunks::GetGop;
  table.Unused6 = unused;
  table.QueryComponentStatus = &HostThunks::QueryComponentStatus;
  table.Unused8 = unused;
  table.DebugPrint = &HostThunks::DebugPrint;
  table.Unused10 = unused;
  table.Unused11 = unused;
  table.FindBiosOption = &HostThunks::FindBiosOption;
  table.AfterAppLife = &HostThunks::AfterAppLife;
  table.UnsupportedResolution = &HostThunks::UnsupportedResolution;
  table.SharedState = &State;
}

void TestHost::Install() {
  State.ViewColorText = ViewColor.c_str();
  State.Config = &Config;
  if (State.Gop == nullptr && firmware_.OutputCount() != 0) {
    State.Gop = firmware_.Output().Protocol();
  }
  if (!Strings.empty()) {
    strings_ = firmware_.Hii.AddStrings(kObvStringListGuid, Strings);
  }
  handle_ = firmware_.Install(kObvProtocolGuid, &thunk_.Protocol);
}

void TestHost::Uninstall() {
  if (handle_ != nullptr) {
    firmware_.Uninstall(handle_, kObvProtocolGuid, &thunk_.Protocol);
    handle_ = nullptr;
  }
  if (strings_ != nullptr) {
    firmware_.Hii.Remove(strings_);
    strings_ = nullptr;
  }
}

void TestHost::LeaveFontsOut() {
  for (Font &font : Fonts) {
    font.File.clear();
  }
}

std::vector<std::string> TestHost::LogTexts(std::optional<UINTN> level) const {
  std::vector<std::string> texts;
  for (const LogLine &line : Log) {
    if (!level || line.Level == *level) {
      texts.push_back(line.Text);
    }
  }
  return texts;
}

bool TestHost::Logged(std::string_view text) const {
  return std::any_of(Log.begin(), Log.end(),
                     [&](const LogLine &line) { return line.Text == text; });
}

}  // namespace fake
