// Bytes of .ico files with images in every depth, as other programs write them.
#pragma once

#include "TestIcon.h"

#include <cstdint>
#include <string>
#include <vector>

namespace IconFile {

// One image. Rows are from the top; a mask of 1 is where nothing shows.
struct Image {
  WinLayer::WinSize size;
  int32_t depth = 32;
  TestPixels palette; // of depth 1, 4 and 8; 0xRRGGBB
  TestPixels pixels;  // numbers of the palette; without one colours, with alpha at depth 32
  TestPixels mask;
  bool isPng = false; // of depth 32
};

inline void put(std::string& bytes, uint32_t value, int32_t count, bool bigEnd = false) {
  for (int32_t i = 0; i < count; ++i)
    bytes += static_cast<char>(value >> 8 * (bigEnd ? count - 1 - i : i));
}

// A row of numbers of so many bits, the first in the highest bits, filled up to four bytes.
inline std::string packedRow(const TestPixels& numbers, std::size_t first, std::size_t count,
                             int32_t depth) {
  std::string row;
  uint32_t bits = 0;
  int32_t filled = 0;
  for (std::size_t i = 0; i < count; ++i) {
    bits = bits << depth | numbers[first + i];
    filled += depth;
    if (filled < 8) continue;
    row += static_cast<char>(bits);
    bits = 0;
    filled = 0;
  }
  if (filled > 0) row += static_cast<char>(bits << (8 - filled));
  row.resize((row.size() + 3) / 4 * 4);
  return row;
}

inline std::string colourRow(const Image& image, std::size_t first, std::size_t count) {
  if (image.depth <= 8) return packedRow(image.pixels, first, count, image.depth);
  std::string row;
  for (std::size_t i = 0; i < count; ++i) put(row, image.pixels[first + i], image.depth / 8);
  row.resize((row.size() + 3) / 4 * 4);
  return row;
}

inline std::string bitmapOf(const Image& image) {
  const auto width = static_cast<std::size_t>(image.size.width);
  const auto height = static_cast<std::size_t>(image.size.height);
  std::string bytes;
  put(bytes, 40, 4);
  put(bytes, static_cast<uint32_t>(width), 4);
  put(bytes, static_cast<uint32_t>(height * 2), 4);
  put(bytes, 1, 2);
  put(bytes, static_cast<uint32_t>(image.depth), 2);
  bytes.resize(40);
  for (const uint32_t colour : image.palette) put(bytes, colour, 4);
  for (std::size_t y = height; y-- > 0;) bytes += colourRow(image, y * width, width);
  for (std::size_t y = height; y-- > 0;) bytes += packedRow(image.mask, y * width, width, 1);
  return bytes;
}

// --- PNG, without compression

inline uint32_t crcOf(const std::string& bytes) {
  uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes) {
    crc ^= static_cast<uint8_t>(byte);
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
  }
  return ~crc;
}

inline uint32_t adlerOf(const std::string& bytes) {
  uint32_t a = 1;
  uint32_t b = 0;
  for (const char byte : bytes) {
    a = (a + static_cast<uint8_t>(byte)) % 65521;
    b = (b + a) % 65521;
  }
  return b << 16 | a;
}

inline std::string stored(const std::string& bytes) {
  constexpr std::size_t MostInBlock = 65535;
  std::string result("\x78\x01");
  for (std::size_t at = 0; at < bytes.size(); at += MostInBlock) {
    const std::string block = bytes.substr(at, MostInBlock);
    result += at + block.size() == bytes.size() ? '\1' : '\0';
    put(result, static_cast<uint32_t>(block.size()), 2);
    put(result, ~static_cast<uint32_t>(block.size()), 2);
    result += block;
  }
  put(result, adlerOf(bytes), 4, true);
  return result;
}

inline std::string chunk(const std::string& kind, const std::string& data) {
  std::string bytes;
  put(bytes, static_cast<uint32_t>(data.size()), 4, true);
  bytes += kind + data;
  put(bytes, crcOf(kind + data), 4, true);
  return bytes;
}

inline std::string pngOf(const Image& image) {
  std::string head;
  put(head, static_cast<uint32_t>(image.size.width), 4, true);
  put(head, static_cast<uint32_t>(image.size.height), 4, true);
  head += std::string("\x08\x06\0\0\0", 5); // eight bits of red, green, blue and alpha
  const auto width = static_cast<std::size_t>(image.size.width);
  std::string rows;
  for (std::size_t i = 0; i < image.pixels.size(); ++i) {
    if (i % width == 0) rows += '\0'; // no filter
    put(rows, image.pixels[i] << 8 | image.pixels[i] >> 24, 4, true);
  }
  return "\x89PNG\r\n\x1A\n" + chunk("IHDR", head) + chunk("IDAT", stored(rows)) +
         chunk("IEND", "");
}

// --- The file

inline std::string bytesOf(const std::vector<Image>& images) {
  constexpr std::size_t HeaderSize = 6;
  constexpr std::size_t EntrySize = 16;
  std::string head("\0\0\1\0", 4);
  put(head, static_cast<uint32_t>(images.size()), 2);
  std::string body;
  for (const Image& image : images) {
    const std::string bytes = image.isPng ? pngOf(image) : bitmapOf(image);
    head += static_cast<char>(image.size.width); // 0 for 256
    head += static_cast<char>(image.size.height);
    put(head, image.depth < 8 ? 1u << image.depth : 0, 2); // colours, and a byte of 0
    put(head, 1, 2);
    put(head, static_cast<uint32_t>(image.depth), 2);
    put(head, static_cast<uint32_t>(bytes.size()), 4);
    put(head, static_cast<uint32_t>(HeaderSize + EntrySize * images.size() + body.size()), 4);
    body += bytes;
  }
  return head + body;
}

} // namespace IconFile
