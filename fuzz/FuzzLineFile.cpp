// Bytes as a text file: detection against a plain detector, lines against plain cutting, and a
// rewrite in the file's own encoding against the bytes themselves.
//
// Input: size of a block, how to read, bytes per read, then the file.

#include "LineReference.h"
#include "host/HostFaults.h"
#include "raw/RawEncodings.h"
#include "raw/RawLineFile.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

using namespace RawLayer;
using LineReference::Line;
using std::string;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

// A file in memory under a path.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("fuzz", MFD_CLOEXEC)) { require(descriptor_ >= 0); }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  [[nodiscard]] RawString path() const {
    const string name = "/proc/self/fd/" + std::to_string(descriptor_);
    return RawString::fromChars(name.c_str());
  }
  void write(const string& bytes) const {
    require(ftruncate(descriptor_, 0) == 0);
    require(pwrite(descriptor_, bytes.data(), bytes.size(), 0) ==
            static_cast<ssize_t>(bytes.size()));
  }
  [[nodiscard]] string read() const {
    string bytes(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
    require(pread(descriptor_, bytes.data(), bytes.size(), 0) ==
            static_cast<ssize_t>(bytes.size()));
    return bytes;
  }

 private:
  int descriptor_;
};

struct Choice {
  int32_t bufferSize;
  int32_t lineEncoding;
  int32_t sourceEncoding;
  bool keepEncoding;
};

string unitsOf(const RawString& text) {
  if (text.encoding() == EncodingWide)
    return {reinterpret_cast<const char*>(text.wide()),
            static_cast<std::size_t>(text.length()) * 2};
  return {text.text(), static_cast<std::size_t>(text.length())};
}

string converted(int32_t from, int32_t to, const string& bytes) {
  if (bytes.empty()) return bytes;
  return unitsOf(
      RawString::fromBytes(from, bytes.data(), static_cast<int32_t>(bytes.size())).shareAs(to));
}

void checkDetection(const string& data) {
  const auto size = static_cast<int32_t>(data.size());
  require(detectTextEncoding(data.data(), size) == LineReference::detect(data));
  require(detectShiftJisOrUtf8(data.data(), size) == LineReference::shiftJisOrUtf8(data));
  for (int32_t encoding = 0; encoding <= 8; ++encoding) {
    const int32_t clipped = clipToCharacter(encoding, data.data(), size);
    require(clipped >= 0 && clipped <= size);
  }
}

// A line too long is only believed when there is one. Half a unit may stand behind it.
void checkTooLong(const string& text, int32_t workEncoding, int32_t bufferSize) {
  std::size_t longest = 0;
  for (const Line& line : LineReference::cut(text, workEncoding)) {
    const std::size_t size = line.text.size() + line.end.size();
    if (size > longest) longest = size;
  }
  require(longest + 1 + 6 >= static_cast<std::size_t>(bufferSize));
}

void checkReading(const MemoryFile& source, const string& data, const Choice& choice) {
  RawLineFile file(source.path(), choice.bufferSize);
  file.lineEncoding = choice.lineEncoding;
  file.sourceEncoding = choice.sourceEncoding;
  if (choice.keepEncoding) file.options = RawLineFile::KeepEncoding;
  std::vector<Line> lines;
  const bool opened = file.openRead();
  const int32_t detected = file.record().fileEncoding; // a fault further on makes it binary
  if (opened)
    while (file.nextLine().valid)
      lines.push_back({unitsOf(file.record().text), unitsOf(file.record().lineEnd)});
  require(!file.nextLine().valid);

  const int32_t work = file.workEncoding;
  const RawMark mark = markOf(file.record().markEncoding);
  string text = data.substr(static_cast<std::size_t>(mark.size));
  const bool converts = work != 0 && detected != EncodingBinary && detected != work &&
                        (detected != 0 || isUtf16Bytes(work));
  const bool inOneBlock = static_cast<int32_t>(data.size()) <= choice.bufferSize;
  const auto size = static_cast<int32_t>(text.size());
  const bool endsInside =
      converts && detected != 0 && clipToCharacter(detected, text.data(), size) != size;
  require(inOneBlock ? (file.state == RawLineFile::ConversionFailed) <= endsInside
                     : file.state != RawLineFile::ConversionFailed || converts);
  if (file.state == RawLineFile::ConversionFailed) return;
  // Faulty characters may come out otherwise where a block cuts them.
  if (converts && (endsInside || !inOneBlock)) return;
  if (converts) text = converted(detected, work, text);
  if (file.state == RawLineFile::LineTooLong) {
    checkTooLong(text, work, choice.bufferSize);
    return;
  }
  require(file.state == RawLineFile::OpenLastBlock);
  std::vector<Line> expected = LineReference::cut(text, work);
  // Wide text has no half units.
  if (choice.lineEncoding == EncodingWide && !choice.keepEncoding)
    for (Line& line : expected) line.text.resize(line.text.size() & ~std::size_t{1});
  require(lines == expected);
}

// What a rewrite does with lines that are not its own.
void checkCopy(const MemoryFile& source, const MemoryFile& target, const string& data,
               int32_t bufferSize) {
  RawLineFile reader(source.path(), bufferSize);
  reader.options = RawLineFile::KeepEncoding;
  RawLineFile writer(target.path(), bufferSize);
  require(reader.openRead());
  writer.lineEncoding = reader.record().fileEncoding;
  if (reader.record().markEncoding != 0) writer.options = RawLineFile::WriteMark;
  require(writer.openWrite());
  while (reader.nextLine().valid)
    require(writer.writeLineWithEnd(reader.record().text, reader.record().lineEnd));
  reader.close();
  writer.close();
  require(writer.state == RawLineFile::Closed);
  if (reader.state == RawLineFile::LineTooLong) return;
  require(reader.state == RawLineFile::Closed);
  // A file of nothing but its mark has no line to write the mark before.
  const auto markSize = static_cast<std::size_t>(markOf(reader.record().markEncoding).size);
  require(target.read() == (data.size() == markSize ? string() : data));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
  static const MemoryFile& source = *new MemoryFile;
  static const MemoryFile& target = *new MemoryFile;
  static constexpr int32_t lineEncodings[] = {2, 2, 2, 7, 6, 5, 1, 0};
  static constexpr int32_t sourceEncodings[] = {0, 0, 0, 0, 1, 2, 5, 6};
  if (size < 3) return 0;
  const Choice choice{bytes[0] == 0 ? RawLineFile::DefaultBufferSize : 16 + bytes[0],
                      lineEncodings[bytes[1] & 7], sourceEncodings[(bytes[1] >> 3) & 7],
                      (bytes[1] & 0x40) != 0};
  const string data(reinterpret_cast<const char*>(bytes) + 3, size - 3);
  HostFaults::Scope faults;
  faults.limitReads(bytes[2]);
  source.write(data);
  checkDetection(data);
  checkReading(source, data, choice);
  checkCopy(source, target, data, choice.bufferSize);
  return 0;
}
