#include "capture/Screenshot.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/HostFormat.h"
#include "app/base/LocalizedStrings.h"
#include "capture/MessageBox.h"
#include "capture/ScreenshotFile.h"
#include "capture/VolumeBox.h"
#include "platform/GraphicsOutput.h"
#include "platform/HotPlug.h"

ScreenshotState gScreenshot;

namespace {

constexpr CHAR8 kOperation[] = "F12ScreenShots";
constexpr UINTN kTextSize = 512;

/// The output's screen must be the view's for the buffer to fit the picture.
EFI_STATUS CopyScreen() {
  if (!IsOutputThere()) {
    // The view has not been drawn on another one yet.
    LeaveLostOutput();
    return EFI_NOT_READY;
  }
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = gHost.Gop;
  if (gop != nullptr && (gop->Mode->Info->HorizontalResolution != gGeometry.ViewWidth ||
                         gop->Mode->Info->VerticalResolution != gGeometry.ViewHeight)) {
    return EFI_UNSUPPORTED;
  }
  return BackupScreenShots(gop, &gScreenshot.Buffer);
}

void ShowFailure(EFI_STATUS status) {
  LogInfo("F12ScreenShots Failed %r\n", status);
  TextId text = status == EFI_WRITE_PROTECTED ? TextId::WriteProtectedText : TextId::NotSavedText;
  ShowResultBox(LocalizedText(TextId::FailureTitle), LocalizedText(text), kBoxTitleColor,
                kBoxTextColor);
}

void ShowSuccess(const CHAR8 *volume, const CHAR8 *file) {
  CHAR8 text[kTextSize] = {};
  PrintHostFormat(text, sizeof(text), LocalizedText(TextId::SavedText), volume, file);
  ShowResultBox(LocalizedText(TextId::SavedTitle), text, kBoxTitleColor, kBoxTextColor);
}

}  // namespace

EFI_STATUS F12ScreenShots() {
  EFI_STATUS status = CopyScreen();
  if (EFI_ERROR(status)) {
    LogOperationError(kOperation, status);
    return status;
  }
  // Deliberately not closed where Esc has left them open: the stick may be gone by now, and not
  // every file system's driver bears a close on what it has lost.
  gScreenshot.Volumes = {};
  status = GetRootDirectoryFileHandle(&gScreenshot.Volumes);
  if (EFI_ERROR(status)) {
    // Deliberately a UCS-2 text in the ASCII log, which shows its first
    // character.
    LogError(
        reinterpret_cast<const CHAR8 *>(u"[%a] Failed to get file system for screen shots: %r.\n"),
        kOperation, status);
    ShowResultBox(LocalizedText(TextId::FailureTitle), LocalizedText(TextId::NoVolumeText),
                  kBoxTitleColor, kBoxTextColor);
    return EFI_NO_MEDIA;
  }
  status = OpenVolumeBox(&gScreenshot.Volumes, UserSelectedPartitionMessageBoxHandler);
  if (EFI_ERROR(status)) {
    LogOperationError(kOperation, status);
    CloseVolumes(&gScreenshot.Volumes);
  }
  return status;
}

void UserSelectedPartitionMessageBoxHandler(lv_event_t *event) {
  lv_obj_t *box = lv_event_get_current_target(event);
  auto *volumes = static_cast<VolumeList *>(lv_event_get_user_data(event));
  UINT16 button = lv_msgbox_get_active_btn(box);
  CHAR8 volumeText[kTextSize] = {};
  const CHAR8 *buttonText = lv_msgbox_get_active_btn_text(box);
  if (buttonText != nullptr) {
    (void)AsciiStrnCpyS(volumeText, sizeof(volumeText), buttonText, sizeof(volumeText) - 1);
  }
  CloseMessageBox(event);

  // Cancel stands behind the last volume.
  EFI_FILE_PROTOCOL *root = button < kMaxVolumes ? volumes->Roots[button] : nullptr;
  if (root == nullptr) {
    LogInfo("F12ScreenShots Canceled\n");
    CloseVolumes(volumes);
    return;
  }
  ScreenshotName name = {};
  EFI_STATUS status = SaveScreenshot(root, gScreenshot.Buffer, &name);
  CloseVolumes(volumes);
  if (EFI_ERROR(status)) {
    ShowFailure(status);
  } else {
    ShowSuccess(volumeText, name.Ascii);
  }
}
