#include "test/picture/PictureFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/LvglMemory.h"

#define LODEPNG_NO_COMPILE_CPP
extern "C" {
#include "src/extra/libs/png/lodepng.h"
}

namespace picture {

namespace {

using Bytes = std::vector<uint8_t>;

/// The PNG library takes its memory where LVGL does. A run of the application is over when it is
/// called here, so it may have the heap.
void UseHeap() { gLvglMemory = {std::malloc, std::free, std::realloc}; }

Bytes ReadFile(const std::string &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteFile(const std::string &path, const Bytes &bytes) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char *>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  ASSERT_TRUE(file.good()) << "cannot write " << path;
}

Bytes Encode(const Screen &screen) {
  UseHeap();
  Bytes raw;
  raw.reserve(screen.Pixels.size() * 3);
  for (uint32_t pixel : screen.Pixels) {
    for (int shift : {16, 8, 0}) {
      raw.push_back(static_cast<uint8_t>(pixel >> shift));
    }
  }
  LodePNGState state;
  lodepng_state_init(&state);
  state.info_raw.colortype = LCT_RGB;
  state.info_png.color.colortype = LCT_RGB;
  state.encoder.auto_convert = 0;
  state.encoder.zlibsettings.windowsize = 32768;
  uint8_t *file = nullptr;
  size_t size = 0;
  unsigned error = lodepng_encode(&file, &size, raw.data(), screen.Width, screen.Height, &state);
  EXPECT_EQ(error, 0u);
  Bytes bytes(file, file + size);
  std::free(file);
  lodepng_state_cleanup(&state);
  return bytes;
}

Screen Decode(const Bytes &file) {
  Screen screen;
  Bytes samples = DecodeSamples(file, &screen.Width, &screen.Height);
  for (size_t i = 0; i < samples.size(); i += 4) {
    screen.Pixels.push_back(static_cast<uint32_t>(samples[i]) << 16 |
                            static_cast<uint32_t>(samples[i + 1]) << 8 | samples[i + 2]);
  }
  return screen;
}

/// Differing pixels in white on a dimmed picture.
Screen Difference(const Screen &wanted, const Screen &seen) {
  Screen result = seen;
  for (size_t i = 0; i < result.Pixels.size(); i++) {
    bool same = wanted.Pixels[i] == seen.Pixels[i];
    result.Pixels[i] = same ? (seen.Pixels[i] >> 2 & 0x3F3F3F) : 0xFFFFFF;
  }
  return result;
}

std::string FirstDifference(const Screen &wanted, const Screen &seen) {
  size_t count = 0;
  size_t first = 0;
  for (size_t i = seen.Pixels.size(); i-- > 0;) {
    if (wanted.Pixels[i] != seen.Pixels[i]) {
      count++;
      first = i;
    }
  }
  std::ostringstream text;
  text << count << " pixels differ, first (" << first % seen.Width << ", " << first / seen.Width
       << "): " << std::hex << seen.Pixels[first] << " instead of " << wanted.Pixels[first];
  return text.str();
}

}  // namespace

Bytes DecodeSamples(const Bytes &file, uint32_t *width, uint32_t *height) {
  UseHeap();
  uint8_t *pixels = nullptr;
  unsigned error = lodepng_decode32(&pixels, width, height, file.data(), file.size());
  if (error != 0) {
    std::fprintf(stderr, "The picture does not decode: error %u\n", error);
    std::abort();
  }
  Bytes samples(pixels, pixels + size_t{*width} * *height * 4);
  std::free(pixels);
  return samples;
}

void ExpectReference(const std::string &name, const Screen &screen) {
  std::string path = BOARDSCOPE_SOURCE_DIR "/test/picture/reference/" + name + ".png";
  const char *update = std::getenv("BOARDSCOPE_UPDATE_REFERENCES");
  if (update != nullptr && std::string(update) == "1") {
    WriteFile(path, Encode(screen));
    return;
  }
  std::string left = BOARDSCOPE_BINARY_DIR "/picture/" + name;
  Bytes file = ReadFile(path);
  if (file.empty()) {
    WriteFile(left + ".png", Encode(screen));
    FAIL() << "There is no " << path << ". The screen is in " << left
           << ".png; BOARDSCOPE_UPDATE_REFERENCES=1 makes it the reference.";
  }
  Screen wanted = Decode(file);
  ASSERT_EQ(wanted.Width, screen.Width);
  ASSERT_EQ(wanted.Height, screen.Height);
  if (wanted.Pixels == screen.Pixels) {
    return;
  }
  WriteFile(left + ".png", Encode(screen));
  WriteFile(left + ".difference.png", Encode(Difference(wanted, screen)));
  ADD_FAILURE() << name << ": " << FirstDifference(wanted, screen) << ". See " << left
                << ".png and " << left << ".difference.png.";
}

}  // namespace picture
