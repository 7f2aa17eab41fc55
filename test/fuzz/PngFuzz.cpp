/** @file
  The board picture's file, from its bytes to the scaled and recoloured pixels.
**/

#include "test/firmware/Run.h"
#include "test/fuzz/Fuzz.h"
#include "test/fuzz/Repair.h"
#include "test/unit/stage/ApplicationPool.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "platform/LvglGuard.h"
#include "platform/LvglMemory.h"
#include "resources/BoardImage.h"

namespace {

using Bytes = std::vector<UINT8>;

UINT32 Adler32(const Bytes &bytes) {
  UINT32 a = 1;
  UINT32 b = 0;
  for (UINT8 byte : bytes) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  return b << 16 | a;
}

void AppendChunk(Bytes *file, std::string_view type, const Bytes &data) {
  size_t at = file->size();
  file->resize(at + 12 + data.size());
  fuzz::PutBigEndian(file, at, static_cast<UINT32>(data.size()));
  std::copy(type.begin(), type.end(), file->begin() + static_cast<ptrdiff_t>(at + 4));
  std::copy(data.begin(), data.end(), file->begin() + static_cast<ptrdiff_t>(at + 8));
}

/// The input as header fields, palette and stored scan lines of a file that is otherwise right.
Bytes Wrap(fuzz::Reader input) {
  Bytes file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  Bytes header = {0, 0, 0, input.Byte(), 0, 0, 0, input.Byte()};
  constexpr UINT8 kDepths[] = {1, 2, 4, 8, 16, 8, 8, 8};
  constexpr UINT8 kTypes[] = {0, 2, 3, 4, 6, 6, 3, 5};
  UINT8 kind = input.Byte();
  header.insert(header.end(),
                {kDepths[kind % 8], kTypes[kind / 8 % 8], 0, 0, static_cast<UINT8>(kind >> 6 & 1)});
  AppendChunk(&file, "IHDR", header);
  AppendChunk(&file, "PLTE", input.Bytes(3 * (1 + input.Byte() % 16)));
  AppendChunk(&file, "tRNS", input.Bytes(input.Byte() % 17));
  Bytes lines = input.Bytes(0xFFFF);
  auto length = static_cast<UINT16>(lines.size());
  Bytes stored = {0x78,
                  0x01,
                  1,
                  static_cast<UINT8>(length),
                  static_cast<UINT8>(length >> 8),
                  static_cast<UINT8>(~length),
                  static_cast<UINT8>(~length >> 8)};
  stored.insert(stored.end(), lines.begin(), lines.end());
  stored.resize(stored.size() + 4);
  fuzz::PutBigEndian(&stored, stored.size() - 4, Adler32(lines));
  AppendChunk(&file, "IDAT", stored);
  AppendChunk(&file, "IEND", {});
  fuzz::RepairChunks(&file);
  return file;
}

void Scale(const Bytes &file, UINT32 targetWidth, UINT32 targetHeight) {
  UINT32 height = 0;
  UINT32 width = 0;
  EFI_STATUS measured = GetPngHeightAndWidth(file.data(), file.size(), &height, &width);
  VOID *pixels = nullptr;
  UINTN size = 0;
  UINT8 hasAlpha = 0;
  EFI_STATUS status =
      ScaleImage(file.data(), file.size(), targetWidth, targetHeight, &pixels, &size, &hasAlpha);
  if (!EFI_ERROR(status)) {
    fuzz::Require(!EFI_ERROR(measured) && width != 0 && height != 0, "the picture has a size");
    fuzz::Require(size == UINTN{4} * targetWidth * targetHeight, "the target has its size");
    fuzz::Require(pixels != nullptr, "there are pixels");
  }
}

void Use(const Bytes &file, OBV_SHARED_STATE *shared) {
  fake::Firmware machine;
  // Less than the fuzzer would call a leak.
  machine.Pool.Capacity = UINT64{256} << 20;
  fake::RunLibraryConstructors(machine);
  gHost = {nullptr, shared, nullptr};
  gGeometry.ViewWidth = 1024;
  gGeometry.ViewHeight = 768;
  gLvglMemory = {BoardscopeAllocateOrFail, BoardscopeFree, BoardscopeReallocateOrFail};
  Scale(file, 13, 7);
  Scale(file, 64, 48);
  ReportMemoryLeaks();
  fuzz::Require(machine.Leftovers().empty(), "all memory was given back");
  gHost = {};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  OBV_SHARED_STATE shared = {};
  shared.RecolorEnabled = 1;
  shared.RecolorMode = static_cast<UINT8>(1 + size % 2);
  AsciiStrCpyS(shared.RecolorHighText, sizeof shared.RecolorHighText, "99,99,99");
  Bytes file(data, data + size);
  Use(file, &shared);
  fuzz::RepairChunks(&file);
  Use(file, &shared);
  Use(Wrap(fuzz::Reader(data, size)), &shared);
  return 0;
}
