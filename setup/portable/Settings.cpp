#include "setup/portable/Settings.h"

namespace obv_setup {
namespace {

bool IsContrast(UINT8 value) { return value <= OBV_CONTRAST_HIGH; }
bool IsTextSize(UINT8 value) { return value <= OBV_LETTERS_LARGE; }

void ReadLook(const OBV_SETUP_LOOK &look, Settings *settings) {
  if (IsContrast(look.Contrast)) {
    settings->Look.Contrast = look.Contrast;
  }
  if (IsTextSize(look.TextSize)) {
    settings->Look.TextSize = look.TextSize;
  }
}

void ReadOptions(const Settings &read, Settings *settings) {
  for (UINTN i = 0; i < kOptionCount; ++i) {
    if (read.Options[i] <= kOptionRules[i].Limit) {
      settings->Options[i] = read.Options[i];
    }
  }
}

}  // namespace

void SetDefaults(Settings *settings) {
  settings->Look = {
      .Layout = kLayout, .Contrast = OBV_CONTRAST_STANDARD, .TextSize = OBV_LETTERS_STANDARD};
  for (UINTN i = 0; i < kOptionCount; ++i) {
    settings->Options[i] = kOptionRules[i].Default;
  }
}

void ReadSettings(const void *data, UINTN size, Settings *settings) {
  SetDefaults(settings);
  if (data == nullptr || size < sizeof(OBV_SETUP_LOOK) || size > OBV_SETUP_VARIABLE_LIMIT) {
    return;
  }
  Settings read = {};
  CopyMem(&read, data, size < sizeof(read) ? size : sizeof(read));
  // The look stays where it is in every layout, so that it survives another board.
  ReadLook(read.Look, settings);
  if (size == sizeof(read) && read.Look.Layout == kLayout) {
    ReadOptions(read, settings);
  }
}

bool AreValid(const Settings &settings) {
  Settings read;
  ReadSettings(&settings, sizeof(settings), &read);
  return CompareMem(&read, &settings, sizeof(read)) == 0;
}

}  // namespace obv_setup
