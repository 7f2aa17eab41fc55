/** @file
  The volumes that a screenshot may go to: their labels, sizes and device paths.
**/

#include "test/fuzz/LateFork.h"

#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"
#include "test/unit/run/AbandonedVolumes.h"

#include "capture/UsbVolumes.h"

namespace {

constexpr int kFirstTurn = 25;  // Keys are dropped before.
constexpr size_t kMostVolumes = 40;
constexpr size_t kMostShown = 32;
constexpr size_t kMostNodes = 6;
constexpr size_t kLabelRoom = (kFileSystemInfoSize - SIZE_OF_EFI_FILE_SYSTEM_INFO) / 2 - 1;

class Session {
 public:
  explicit Session(fuzz::LateFork *fork) : fork_(fork) {}

  void Run() {
    fuzz::Hasten(&machine_);
    machine_.AddOutput({{1024, 768}});
    machine_.AddAbsolutePointer();
    host_.LeaveFontsOut();
    host_.Install();
    fake::RunOptions options;
    options.EscapeAtTurn = 0;
    options.MostTurns = 400;
    options.EveryTurn = [this](int turn) { Turn(turn); };
    fuzz::Require(fake::RunApplication(machine_, options).Status == EFI_SUCCESS,
                  "the run succeeds");
    host_.Uninstall();
    std::string left = machine_.Leftovers(abandoned_.Accounted());
    fuzz::Require(left.empty(), left.c_str());
    RequireList();
    fuzz::LateFork::End();
  }

 private:
  void Turn(int turn) {
    (void)abandoned_.Accounted();
    if (turn == kFirstTurn) {
      input_ = fork_->Input();
      keys_ = input_.Bytes(input_.Byte() % 12);
      while (input_.Left() != 0 && volumes_ < kMostVolumes) {
        AddVolume();
      }
      machine_.Keyboard.Scan(SCAN_F12);
    } else if (turn > kFirstTurn && turn % 4 == 0) {
      Type();
    }
  }

  /// Walks in the box; Enter takes a picture or cancels, and every end is by Esc.
  void Type() {
    constexpr UINT16 kScans[] = {SCAN_UP, SCAN_DOWN, SCAN_LEFT, SCAN_RIGHT};
    if (typed_ >= keys_.size()) {
      return machine_.Keyboard.Scan(SCAN_ESC);
    }
    UINT8 key = keys_[typed_++];
    if (key % 16 == 15) {
      return machine_.Keyboard.Character(u'\r');
    }
    machine_.Keyboard.Scan(kScans[key % 4]);
  }

  void AddVolume() {
    fake::VolumeOptions options;
    std::vector<CHAR16> label = input_.Text<CHAR16>(kLabelRoom + 4);
    options.Label.assign(label.begin(), label.end() - 1);
    UINT8 what = input_.Byte();
    options.Capacity = what % 4 == 3 ? input_.Take<UINT64>() : UINT64{64} << 20;
    options.WriteProtected = what / 4 % 2 != 0;
    options.Path = fake::DevicePath();
    bool usb = ReadPath(&options.Path);
    fake::Volume &volume = machine_.AddVolume(options);
    volumes_++;
    if (what / 8 % 8 == 7) {
      ShortenFirstNode(volume, what / 64);
      usb = false;
    }
    // One whose information does not fit is not offered.
    usb_ += usb && options.Label.size() <= kLabelRoom ? 1 : 0;
  }

  /// A length below that of a node's header leads nowhere.
  void ShortenFirstNode(const fake::Volume &volume, int length) {
    VOID *path = machine_.Handles.Interface(volume.Handle, gEfiDevicePathProtocolGuid);
    auto *node = static_cast<EFI_DEVICE_PATH_PROTOCOL *>(path);
    node->Length[0] = static_cast<UINT8>(length);
    node->Length[1] = 0;
  }

  /// Whether one of the path's nodes says that it is on USB.
  bool ReadPath(fake::DevicePath *path) {
    bool usb = false;
    for (size_t left = input_.Byte() % (kMostNodes + 1); left > 0; left--) {
      UINT8 kind = input_.Byte();
      UINT8 type = kind % 2 == 0 ? UINT8{MESSAGING_DEVICE_PATH} : input_.Byte();
      UINT8 subType = kind / 2 % 2 == 0 ? UINT8{MSG_USB_DP} : input_.Byte();
      // What stands behind an end is not a part of the path.
      bool ends = (type & 0x7F) == END_DEVICE_PATH_TYPE;
      path->Node(ends ? UINT8{HARDWARE_DEVICE_PATH} : type, subType, input_.Bytes(kind >> 2));
      usb = usb || (type == MESSAGING_DEVICE_PATH && subType == MSG_USB_DP);
    }
    return usb;
  }

  /// Each stick that can be offered has its line in the log.
  void RequireList() {
    size_t lines = 0;
    for (const std::string &line : host_.LogTexts()) {
      lines += line.starts_with("FS") ? 1 : 0;
    }
    fuzz::Require(lines == std::min(usb_, kMostShown), "the volumes on USB are listed");
  }

  fuzz::LateFork *fork_;
  fuzz::Reader input_{nullptr, 0};
  fake::Firmware machine_;
  fake::TestHost host_{machine_};
  AbandonedVolumes abandoned_;
  std::vector<UINT8> keys_;
  size_t typed_ = 0;
  size_t volumes_ = 0;
  size_t usb_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static fuzz::LateFork fork([](fuzz::LateFork *self) { Session(self).Run(); });
  fork.Try(data, size);
  return 0;
}
