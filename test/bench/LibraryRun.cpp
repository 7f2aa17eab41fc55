#include <cstdio>

#include "test/bench/BenchHost.h"
#include "test/bench/MeasureInChild.h"
#include "test/bench/Timing.h"
#include "test/bench/ViewRun.h"
#include "test/firmware/Run.h"

#include "platform/FontTable.h"
#include "platform/LvglMemory.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#define LODEPNG_NO_COMPILE_CPP
extern "C" {
#include "src/extra/libs/png/lodepng.h"
}

// The application's allocator in native builds, where it is not called malloc.
extern "C" {
void *BoardscopeMalloc(size_t size);
void BoardscopeFree(void *pointer);
void *BoardscopeRealloc(void *pointer, size_t size);
}

namespace bench {

namespace {

bool DecodeAlone(const std::vector<uint8_t> &picture, double *seconds) {
  unsigned char *pixels = nullptr;
  unsigned width = 0, height = 0;
  Stopwatch stopwatch;
  unsigned error = lodepng_decode32(&pixels, &width, &height, picture.data(), picture.size());
  *seconds = stopwatch.Elapsed();
  BoardscopeFree(pixels);
  return error == 0;
}

bool LoadFacesAlone(const fake::TestHost &host, double *seconds) {
  FT_Library library = nullptr;
  if (FT_Init_FreeType(&library) != 0) {
    return false;
  }
  size_t loaded = 0;
  Stopwatch stopwatch;
  for (FT_UInt size = kFontSizeFirst; size <= kFontSizeLast; size++) {
    for (const fake::TestHost::Font &font : host.Fonts) {
      FT_Face face = nullptr;
      auto length = static_cast<FT_Long>(font.File.size());
      bool good = FT_New_Memory_Face(library, font.File.data(), length, 0, &face) == 0 &&
                  FT_Set_Pixel_Sizes(face, 0, size) == 0;
      loaded += good ? 1 : 0;
    }
  }
  *seconds = stopwatch.Elapsed();
  FT_Done_FreeType(library);
  return loaded == kFontCount;
}

bool Measure(std::string *text) {
  fake::Firmware firmware;
  firmware.Pool.Poison = false;
  firmware.Calls.RecordAll(false);
  fake::TestHost host(firmware);
  if (!Furnish(&host)) {
    return false;
  }
  fake::RunLibraryConstructors(firmware);
  gLvglMemory = {BoardscopeMalloc, BoardscopeFree, BoardscopeRealloc};
  double decode = 0, faces = 0;
  if (!DecodeAlone(host.Picture, &decode) || !LoadFacesAlone(host, &faces)) {
    std::printf("a library refuses the picture or a font\n");
    return false;
  }
  *text = "decode " + std::to_string(decode) + "\nfaces " + std::to_string(faces) + "\n";
  return true;
}

}  // namespace

Figures MeasureLibraries() { return MeasureInChild("The libraries", Measure); }

}  // namespace bench
