// RawLineFile: the only door to text files. Reads one line by line, or writes one, in any encoding.
//
// On reading it finds out the encoding by itself (mark first, then statistics), converts the file
// in blocks to the encoding that the caller wants, and cuts lines from a sliding buffer without
// copying them. Encoding and mark are handed back, so that a rewrite keeps both.
//
// One object belongs to one thread. Failure is a state number; 4 and above stay until the next
// opening. A line's text is valid up to the next read only: keep it with a copy.
#pragma once

#include "raw/RawBlockReader.h"
#include "raw/RawFile.h"
#include "raw/RawList.h"
#include "raw/RawString.h"

namespace RawLayer {

struct RawLineRecord {
  bool valid = false; // false at the end of the file or after an error
  RawString path;
  uint64_t offset = 0; // of the line's first byte, in the buffer's encoding
  int32_t lineNumber = 0;
  RawString text;    // without its end; a view, valid up to the next read
  RawString lineEnd; // the end characters as they stood, in the line's encoding
  int32_t fileEncoding = 0;
  int32_t markEncoding = 0;
};

class RawLineFileInfo {
public:
  enum State : int32_t {
    Closed = 0,
    Open = 1,
    OpenLastBlock = 2,
    CannotRead = 4,
    CannotWrite = 5,
    WriteFailed = 7,
    ConversionFailed = 11,
    LineTooLong = 12,
    OddOffset = 13,
  };
  enum Option : uint16_t {
    TagUnknownAnsi = 0x0010, // a line of unknown encoding is tagged 0 instead of 2
    WriteMark = 0x0020,      // write a byte-order mark at the start
    DeferFirstBlock = 0x0040,
    RawReaderFlags = 0x0080, // the low bits of the options are the reader's flags
  };
  virtual ~RawLineFileInfo() = default;

protected:
  // Slot order: parseLine, findLineEnd (behind the destructor).
  virtual bool parseLine(uint32_t start, uint32_t end) = 0;
  [[nodiscard]] virtual uint32_t findLineEnd(uint32_t start, uint32_t end) const = 0;
};

class RawLineFile : public RawLineFileInfo {
public:
  static constexpr int32_t DefaultBufferSize = 0x2000;

  uint16_t options = 0;
  int32_t state = Closed;
  int32_t sourceEncoding = 0; // 0 means find out; after opening, the result
  int32_t lineEncoding = EncodingUtf8;
  int32_t workEncoding = 0; // lineEncoding, with 7 changed to the native code; writers may set it

  RawLineFile();
  explicit RawLineFile(const RawString& path);
  RawLineFile(const RawString& path, int32_t bufferSize);
  ~RawLineFile() override;
  RawLineFile(const RawLineFile&) = delete;
  RawLineFile& operator=(const RawLineFile&) = delete;

  [[nodiscard]] const RawString& path() const { return path_; }
  bool openRead();  // false: state CannotRead
  bool openWrite(); // false: state CannotWrite
  const RawLineRecord& nextLine();
  [[nodiscard]] const RawLineRecord& record() const { return record_; }
  // Flushes what was written and closes. States 1 and 2 become 0, faults stay.
  void close();

  // Each is false from the first failed write on. Bytes are in the file's encoding.
  bool writeBytes(const void* data, int32_t size);
  bool writeText(int32_t encoding, const void* data, int32_t size);
  bool writeLine(const RawString& text); // ends in CR LF
  // Writes the text with the line end given (empty for none), in the text's own code.
  bool writeLineWithEnd(const RawString& text, const RawString& lineEnd);

protected:
  bool parseLine(uint32_t start, uint32_t end) override;
  [[nodiscard]] uint32_t findLineEnd(uint32_t start, uint32_t end) const override;

private:
  bool refill(uint32_t consumedTail);
  RawString path_;
  RawFileOwner file_;
  uint32_t accessMode_ = 0;
  uint8_t* buffer_ = nullptr;
  uint32_t scanStart_ = 0;
  uint32_t dataEnd_ = 0;
  uint64_t fileOffset_ = 0;
  RawLineRecord record_;
  int32_t lineCounter_ = 0;
  RawBlockReader reader_;
  int32_t bufferSize_;
};

// A line kept from a file: its text, the part of it that counts, and its number from 0.
struct RawRangedTextUnit {
  RawString text;
  RawRange range;
  int32_t lineNumber = 0;
};
class RawRangedTextListAllocator : public RawListAllocator<RawRangedTextUnit> {
public:
  void destroy(RawRangedTextUnit* element) override { delete element; }
};
class RawRangedTextList : public RawListR<RawRangedTextListAllocator, RawRangedTextUnit> {};

} // namespace RawLayer
