#include "tool/view/Stick.h"

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>

namespace board_view {

namespace {

/// Screenshots are named after the time.
EFI_TIME Now() {
  std::time_t seconds = std::time(nullptr);
  std::tm now = {};
  localtime_r(&seconds, &now);
  EFI_TIME time = {};
  time.Year = static_cast<UINT16>(now.tm_year + 1900);
  time.Month = static_cast<UINT8>(now.tm_mon + 1);
  time.Day = static_cast<UINT8>(now.tm_mday);
  time.Hour = static_cast<UINT8>(now.tm_hour);
  time.Minute = static_cast<UINT8>(now.tm_min);
  time.Second = static_cast<UINT8>(now.tm_sec);
  time.TimeZone = EFI_UNSPECIFIED_TIMEZONE;
  return time;
}

}  // namespace

Stick::Stick(fake::Firmware &machine, std::string folder)
    : machine_(machine), volume_(machine.AddVolume()), folder_(std::move(folder)) {}

void Stick::Save() {
  machine_.Clock.Date = Now();
  if (volume_.OpenCount() > 0) {
    return;
  }
  for (const std::u16string &name : volume_.RootNames()) {
    std::optional<std::vector<uint8_t>> data = volume_.Read(name);
    if (!data || !saved_.insert(name).second) {
      continue;
    }
    std::error_code ignored;  // The file then cannot be written either.
    std::filesystem::create_directories(folder_, ignored);
    std::string path = folder_ + "/" + fake::ToAscii(name);
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char *>(data->data()),
               static_cast<std::streamsize>(data->size()));
    file.close();
    std::printf(file ? "Screenshot: %s\n" : "cannot write %s\n", path.c_str());
    std::fflush(stdout);
  }
}

}  // namespace board_view
