#include "raw/RawCodePage.h"

#include "CodePageBestFit.h"
#include "HostFaults.h"

#include <iconv.h>

#include <cstdlib>

// The code page calls of the platform for the host builds. The active code page is 1252. Tables of
// 932 and 1252 are asked out of iconv and completed by what the platform does beyond the standard:
// codes without a character, default characters, look-alikes. UTF-8 and UTF-7 are done by hand, for
// iconv stops at the first fault where the platform goes on.

namespace RawLayer {

namespace {

constexpr uint32_t invalidParameter = 87;
constexpr char16_t replacement = 0xFFFD;

// Counts what it is given, and stores it as long as there is room. Without any room it only counts.
template <typename Unit>
class Sink {
 public:
  Sink(Unit* target, int32_t room) : target_(target), room_(room) {}
  void put(uint32_t unit) {
    if (room_ > 0 && count_ < room_) target_[count_] = static_cast<Unit>(unit);
    ++count_;
  }
  [[nodiscard]] int64_t left() const { return room_ - count_; }
  [[nodiscard]] RawConversion outcome() const {
    if (count_ > (room_ > 0 ? room_ : INT32_MAX)) return {0, RawConversionNoRoom};
    return {static_cast<int32_t>(count_), 0};
  }

 private:
  Unit* target_;
  int32_t room_;
  int64_t count_ = 0;
};
using WideSink = Sink<char16_t>;
using ByteSink = Sink<char>;

// --- Code pages with tables

class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {
    if (handle_ == reinterpret_cast<iconv_t>(-1)) std::abort();
  }
  ~Converter() { iconv_close(handle_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // One character of at most two bytes, big-endian in the result; false when there is none.
  bool convert(uint8_t* bytes, std::size_t size, uint32_t& result) {
    uint8_t out[8];
    char* from = reinterpret_cast<char*>(bytes);
    char* to = reinterpret_cast<char*>(out);
    std::size_t room = sizeof out;
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle_, &from, &size, &to, &room) == static_cast<std::size_t>(-1)) return false;
    const std::size_t count = sizeof out - room;
    result = count == 1 ? out[0] : static_cast<uint32_t>(out[0] << 8 | out[1]);
    return count == 1 || count == 2;
  }

 private:
  iconv_t handle_;
};

struct PageTable {
  char16_t single[256];  // of single bytes
  char16_t pairs[65536]; // of lead byte and trail byte
  uint16_t codes[65536]; // of 16-bit units: one byte, or lead and trail byte
  char16_t defaultUnit;  // for pairs without a character
  bool (*isLead)(uint8_t);
};

bool neverLead(uint8_t) {
  return false;
}
bool leadOf932(uint8_t byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

void fillToWide(PageTable& table, const char* name) {
  Converter converter("UTF-16BE", name);
  for (uint32_t code = 0; code < 0x10000; ++code) {
    uint8_t bytes[] = {static_cast<uint8_t>(code >> 8), static_cast<uint8_t>(code)};
    const bool paired = table.isLead(bytes[0]);
    if (code > 0xFF && !paired) continue;
    uint32_t unit = paired ? table.defaultUnit : code;
    converter.convert(paired ? bytes : bytes + 1, paired ? 2 : 1, unit);
    (paired ? table.pairs[code] : table.single[code]) = static_cast<char16_t>(unit);
  }
}

template <std::size_t Rows>
void fillFromWide(PageTable& table, const char* name, const BestFitRow (&bestFit)[Rows]) {
  Converter converter(name, "UTF-16BE");
  for (uint32_t unit = 0; unit < 0x10000; ++unit) {
    uint8_t bytes[] = {static_cast<uint8_t>(unit >> 8), static_cast<uint8_t>(unit)};
    uint32_t code = '?';
    if (unit < 0xD800 || unit > 0xDFFF) converter.convert(bytes, 2, code);
    table.codes[unit] = static_cast<uint16_t>(code);
  }
  for (const BestFitRow& row : bestFit)
    for (uint16_t i = 0; i < row.count; ++i)
      table.codes[row.unit + i] = static_cast<uint16_t>(row.code + i);
}

const PageTable& table932() {
  static const PageTable& table = [&]() -> const PageTable& {
    auto& page = *new PageTable{};
    page.defaultUnit = 0x30FB;
    page.isLead = leadOf932;
    fillToWide(page, "CP932");
    page.single[0xA0] = 0xF8F0;
    for (uint32_t byte = 0xFD; byte <= 0xFF; ++byte)
      page.single[byte] = static_cast<char16_t>(0xF8F1 + (byte - 0xFD));
    for (uint32_t byte = 0; byte <= 0xFF; ++byte)
      if (leadOf932(static_cast<uint8_t>(byte))) page.single[byte] = page.defaultUnit;
    fillFromWide(page, "CP932", bestFit932);
    return page;
  }();
  return table;
}

const PageTable& table1252() {
  static const PageTable& table = []() -> const PageTable& {
    auto& page = *new PageTable{};
    page.isLead = neverLead;
    fillToWide(page, "CP1252");
    fillFromWide(page, "CP1252", bestFit1252);
    return page;
  }();
  return table;
}

void tableToWide(const PageTable& table, const uint8_t* bytes, int32_t size, WideSink& sink) {
  for (int32_t i = 0; i < size; ++i) {
    // A lead byte takes its successor with it, whatever that is, but never a zero.
    if (table.isLead(bytes[i]) && i + 1 < size && bytes[i + 1] != 0) {
      sink.put(table.pairs[bytes[i] << 8 | bytes[i + 1]]);
      ++i;
    } else {
      sink.put(table.single[bytes[i]]);
    }
  }
}

void tableFromWide(const PageTable& table, const char16_t* units, int32_t count, ByteSink& sink) {
  for (int32_t i = 0; i < count; ++i) {
    const uint16_t code = table.codes[units[i]];
    if (code > 0xFF) sink.put(code >> 8);
    sink.put(code & 0xFFU);
  }
}

// --- UTF-8

uint32_t highSurrogate(uint32_t character) {
  return 0xD800 + ((character - 0x10000) >> 10);
}

void putCharacter(WideSink& sink, uint32_t character) {
  if (character < 0x10000) {
    sink.put(character);
  } else {
    sink.put(highSurrogate(character));
    sink.put(0xDC00 + (character & 0x3FF));
  }
}

// Whether no character goes on like this: too long a form, a surrogate, or beyond the last one.
bool isBarredPair(uint32_t lead, uint32_t second) {
  return (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
         (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
}

// Each lead byte with what could follow it counts as one fault; one whose character would end
// behind the text takes all the rest with it.
void utf8ToWide(const uint8_t* bytes, int32_t size, WideSink& sink) {
  for (int32_t i = 0; i < size;) {
    const uint32_t lead = bytes[i++];
    const int32_t extra = lead < 0xC2 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : lead < 0xF5 ? 3 : 0;
    if (lead < 0x80 || extra == 0) {
      sink.put(lead < 0x80 ? lead : replacement);
      continue;
    }
    if (extra > size - i) {
      sink.put(replacement);
      return;
    }
    uint32_t character = lead & (0x3FU >> extra);
    int32_t read = 0;
    while (read < extra && (bytes[i] & 0xC0) == 0x80) {
      character = character << 6 | (bytes[i++] & 0x3FU);
      if (read++ == 0 && isBarredPair(lead, bytes[i - 1])) break;
    }
    if (read < extra) character = replacement;
    // Of a pair at the very end that does not fit whole the platform gives the first half.
    if (character > 0xFFFF && sink.left() == 1 && i == size) {
      sink.put(highSurrogate(character));
      return;
    }
    putCharacter(sink, character);
  }
}

void utf8FromWide(const char16_t* units, int32_t count, ByteSink& sink) {
  for (int32_t i = 0; i < count; ++i) {
    uint32_t character = units[i];
    if ((character & 0xFC00) == 0xD800 && i + 1 < count && (units[i + 1] & 0xFC00) == 0xDC00)
      character = 0x10000 + ((character & 0x3FF) << 10) + (units[++i] & 0x3FFU);
    else if ((character & 0xF800) == 0xD800)
      character = replacement;
    if (character < 0x80) {
      sink.put(character);
      continue;
    }
    const int32_t extra = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    sink.put((0xF0U << (3 - extra) & 0xFFU) | character >> (6 * extra));
    for (int32_t j = extra; j-- > 0;) sink.put(0x80 | (character >> (6 * j) & 0x3F));
  }
}

// --- UTF-7

constexpr char base64[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

int32_t base64Value(uint8_t byte) {
  for (int32_t i = 0; i < 64; ++i)
    if (static_cast<uint8_t>(base64[i]) == byte) return i;
  return -1;
}

bool isDirectInUtf7(char16_t unit) {
  if (unit >= 0x80) return false;
  const auto byte = static_cast<uint8_t>(unit);
  if (base64Value(byte) >= 0) return true;
  for (const char* each = "\t\n\r '(),-.:?"; *each != 0; ++each)
    if (static_cast<uint8_t>(*each) == byte) return true;
  return byte == 0;
}

void utf7ToWide(const uint8_t* bytes, int32_t size, WideSink& sink) {
  uint32_t bits = 0;
  int32_t bitCount = 0;
  for (int32_t i = 0; i < size;) {
    if (bytes[i] != '+') {
      sink.put(bytes[i++]);
      continue;
    }
    if (++i < size && bytes[i] == '-') {
      sink.put('+');
      ++i;
      continue;
    }
    for (; i < size && base64Value(bytes[i]) >= 0; ++i) {
      bits = bits << 6 | static_cast<uint32_t>(base64Value(bytes[i]));
      bitCount += 6;
      if (bitCount < 16) continue;
      bitCount -= 16;
      sink.put(bits >> bitCount & 0xFFFF);
    }
    // The platform keeps the bits left over when a byte above 0x7F ends the shift.
    if (i < size && bytes[i] < 0x80) bitCount = 0;
    if (i < size && bytes[i] == '-') ++i;
  }
}

void utf7FromWide(const char16_t* units, int32_t count, ByteSink& sink) {
  for (int32_t i = 0; i < count;) {
    if (isDirectInUtf7(units[i])) {
      sink.put(units[i]);
      if (units[i++] == '+') sink.put('-');
      continue;
    }
    sink.put('+');
    uint32_t bits = 0;
    int32_t bitCount = 0;
    for (; i < count && !isDirectInUtf7(units[i]); ++i) {
      bits = bits << 16 | units[i];
      for (bitCount += 16; bitCount >= 6; bitCount -= 6)
        sink.put(static_cast<uint8_t>(base64[bits >> (bitCount - 6) & 0x3F]));
    }
    if (bitCount > 0) sink.put(static_cast<uint8_t>(base64[bits << (6 - bitCount) & 0x3F]));
    sink.put('-');
  }
}

} // namespace

RawConversion rawToWide(uint32_t codePage, const char* bytes, int32_t size, char16_t* target,
                        int32_t room) {
  if (size <= 0) return {};
  if (HostFaults::fails(HostFaults::Conversion)) return {0, invalidParameter};
  const auto* from = reinterpret_cast<const uint8_t*>(bytes);
  WideSink sink(target, room);
  switch (codePage) {
  case 0:
  case 1252:
    tableToWide(table1252(), from, size, sink);
    break;
  case 932:
    tableToWide(table932(), from, size, sink);
    break;
  case 65000:
    utf7ToWide(from, size, sink);
    break;
  case 65001:
    utf8ToWide(from, size, sink);
    break;
  default:
    return {0, invalidParameter};
  }
  return sink.outcome();
}

RawConversion rawFromWide(uint32_t codePage, const char16_t* units, int32_t count, char* target,
                          int32_t room) {
  if (count <= 0) return {};
  if (HostFaults::fails(HostFaults::Conversion)) return {0, invalidParameter};
  ByteSink sink(target, room);
  switch (codePage) {
  case 0:
  case 1252:
    tableFromWide(table1252(), units, count, sink);
    break;
  case 932:
    tableFromWide(table932(), units, count, sink);
    break;
  case 65000:
    utf7FromWide(units, count, sink);
    break;
  case 65001:
    utf8FromWide(units, count, sink);
    break;
  default:
    return {0, invalidParameter};
  }
  return sink.outcome();
}

} // namespace RawLayer
