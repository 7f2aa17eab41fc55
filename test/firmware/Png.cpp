#include "test/firmware/Png.h"

namespace fake {

namespace {

void Put32(std::vector<uint8_t> *bytes, uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes->push_back(static_cast<uint8_t>(value >> shift));
  }
}

const std::array<uint32_t, 256> &CrcTable() {
  static const std::array<uint32_t, 256> table = [] {
    std::array<uint32_t, 256> entries{};
    for (uint32_t i = 0; i < entries.size(); i++) {
      uint32_t crc = i;
      for (int bit = 0; bit < 8; bit++) {
        crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
      }
      entries[i] = crc;
    }
    return entries;
  }();
  return table;
}

uint32_t Crc32(const uint8_t *bytes, size_t size) {
  uint32_t crc = 0xFFFFFFFF;
  for (size_t i = 0; i < size; i++) {
    crc = crc >> 8 ^ CrcTable()[(crc ^ bytes[i]) & 0xFF];
  }
  return ~crc;
}

uint32_t Adler32(const std::vector<uint8_t> &bytes) {
  uint32_t a = 1;
  uint32_t b = 0;
  for (uint8_t byte : bytes) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  return b << 16 | a;
}

void PutChunk(std::vector<uint8_t> *file, const char *type, const std::vector<uint8_t> &data) {
  Put32(file, static_cast<uint32_t>(data.size()));
  size_t start = file->size();
  file->insert(file->end(), type, type + 4);
  file->insert(file->end(), data.begin(), data.end());
  Put32(file, Crc32(file->data() + start, file->size() - start));
}

// A zlib stream of stored blocks.
std::vector<uint8_t> Store(const std::vector<uint8_t> &raw) {
  constexpr size_t kBlock = 65535;
  std::vector<uint8_t> stream = {0x78, 0x01};
  for (size_t at = 0; at < raw.size(); at += kBlock) {
    size_t size = std::min(kBlock, raw.size() - at);
    bool last = at + size == raw.size();
    uint16_t length = static_cast<uint16_t>(size);
    uint16_t inverse = static_cast<uint16_t>(~length);
    stream.insert(stream.end(), {static_cast<uint8_t>(last), static_cast<uint8_t>(length),
                                 static_cast<uint8_t>(length >> 8), static_cast<uint8_t>(inverse),
                                 static_cast<uint8_t>(inverse >> 8)});
    stream.insert(stream.end(), raw.begin() + static_cast<ptrdiff_t>(at),
                  raw.begin() + static_cast<ptrdiff_t>(at + size));
  }
  Put32(&stream, Adler32(raw));
  return stream;
}

}  // namespace

std::vector<uint8_t> MakePng(uint32_t width, uint32_t height,
                             const std::function<uint32_t(uint32_t x, uint32_t y)> &pixel) {
  std::vector<uint8_t> file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  std::vector<uint8_t> header;
  Put32(&header, width);
  Put32(&header, height);
  header.insert(header.end(), {8, 6, 0, 0, 0});
  PutChunk(&file, "IHDR", header);
  std::vector<uint8_t> raw;
  raw.reserve(height * (size_t{width} * 4 + 1));
  for (uint32_t y = 0; y < height; y++) {
    raw.push_back(0);
    for (uint32_t x = 0; x < width; x++) {
      Put32(&raw, pixel(x, y));
    }
  }
  PutChunk(&file, "IDAT", Store(raw));
  PutChunk(&file, "IEND", {});
  return file;
}

}  // namespace fake
