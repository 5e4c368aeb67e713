// RawLineFile: the only door to text files. Reads one line by line, or writes one, in any encoding.
//
// On reading it finds out the encoding by itself (mark first, then statistics), converts the file
// in blocks to the encoding that the caller wants, and cuts lines from a sliding buffer without
// copying them. Encoding and mark are handed back, so that a rewrite keeps both.
//
// A rewrite that must leave lines byte for byte reads with the option KeepEncoding and writes with
// `lineEncoding` set to the reader's fileEncoding (0 and 8 included): nothing is converted then,
// so bytes that are no characters survive. A line's text has the file's encoding in that case; it
// is converted with shareAs where it has to be understood.
//
// One object belongs to one thread. Failure is a state number; 4 and above stay until the next
// opening. A line's text is valid up to the next read only: keep it with a copy.
#pragma once

#include "raw/RawBlockReader.h"
#include "raw/RawFile.h"
#include "raw/RawRangedText.h"
#include "raw/RawString.h"

namespace RawLayer {

struct RawLineRecord {
  bool valid = false; // false at the end of the file or after an error
  RawString path;
  uint64_t offset = 0; // of the line's first byte, in the buffer's encoding, marks not counted
  int32_t lineNumber = 0;
  RawString text;    // without its end; a view, valid up to the next read
  RawString lineEnd; // the end characters as they stood, in the line's encoding; a view, too
  int32_t fileEncoding = 0;
  int32_t markEncoding = 0;
};

class RawLineFileInfo {
 public:
  enum State : int32_t {
    Closed = 0,
    Open = 1,
    OpenLastBlock = 2,
    CannotRead = 4, // it could not be opened, or a read failed in the middle
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
    KeepEncoding = 0x0100,   // lines come in the file's own encoding, as they stand
  };
  virtual ~RawLineFileInfo() = default;

 protected:
  // Slot order: parseLine, findLineEnd (behind the destructor).
  virtual bool parseLine(uint32_t start, uint32_t end) = 0;
  [[nodiscard]] virtual uint32_t findLineEnd(uint32_t start, uint32_t end) const = 0;
};

class RawLineFile final : public RawLineFileInfo {
 public:
  static constexpr int32_t DefaultBufferSize = 0x2000;

  uint16_t options = 0;
  int32_t state = Closed;
  int32_t sourceEncoding = 0; // 0 means find out; after opening, the result
  int32_t lineEncoding = EncodingUtf8;
  // What the lines are converted to: lineEncoding, with 7 changed to the native code. Set by the
  // openings; under KeepEncoding it is the file's own.
  int32_t workEncoding = 0;

  RawLineFile();
  explicit RawLineFile(const RawString& path);
  // The size of a block in bytes, 16 at least; no line may be longer.
  RawLineFile(const RawString& path, int32_t bufferSize);
  ~RawLineFile() override;
  RawLineFile(const RawLineFile&) = delete;
  RawLineFile& operator=(const RawLineFile&) = delete;

  [[nodiscard]] const RawString& path() const { return path_; }
  // Reads the first block, too; false with the state when either fails.
  bool openRead();
  // Makes the file anew; false: state CannotWrite.
  bool openWrite();
  // The next line, or a record that is not valid.
  const RawLineRecord& nextLine();
  [[nodiscard]] const RawLineRecord& record() const { return record_; }
  // Writes out what is pending, flushes and closes. States 1 and 2 become 0, faults stay: only a
  // state of 0 behind it means that the file was read to its end, or written whole. `options`,
  // `lineEncoding` and `sourceEncoding` go back to their defaults.
  void close();

  // Each is false from the first failed write on. Bytes are in the file's encoding. Small writes
  // are gathered to blocks, so a fault may show as late as `close`.
  bool writeBytes(const void* data, int32_t size);
  // `size` bytes in `encoding`, converted to the file's unless either is 0 or binary.
  bool writeText(int32_t encoding, const void* data, int32_t size);
  // Ends in CR LF, and begins with one when the line before was written without its end.
  bool writeLine(const RawString& text);
  // Writes the text with the line end given (empty for none), in the text's own code.
  bool writeLineWithEnd(const RawString& text, const RawString& lineEnd);

 protected:
  bool parseLine(uint32_t start, uint32_t end) override;
  // The first CR or LF, or `end` when no unit is one.
  [[nodiscard]] uint32_t findLineEnd(uint32_t start, uint32_t end) const override;

 private:
  enum LineEnd { NoEnd, Return, Feed, Pair };
  struct Cut {
    uint32_t stop; // end of the line's text
    uint32_t next; // start of the next line
    LineEnd lineEnd;
  };
  bool cutLine(uint32_t start, uint32_t end, Cut& cut) const;
  [[nodiscard]] uint16_t unitAt(uint32_t position) const;
  void showLineEnd(LineEnd end);
  bool refill(uint32_t consumedTail);
  void clearLine();
  void startReader();
  bool writeString(const RawString& text);
  bool writeLineEnd();
  bool writeOut();
  void dropFile();
  bool fail();

  RawString path_;
  RawFileOwner file_;
  uint32_t accessMode_ = 0;
  uint8_t* buffer_ = nullptr;
  uint32_t scanStart_ = 0;
  uint32_t dataEnd_ = 0;
  uint64_t fileOffset_ = 0;
  RawLineRecord record_;
  int32_t lineCounter_ = 0;
  bool lineOpen_ = false;    // the last line was written without its end
  bool wideLines_ = false;   // lines are handed out in code 7
  int32_t lineTag_ = 0;      // code of the lines' texts
  uint32_t unit_ = 1;        // bytes of one unit in the buffer
  LineEnd shownEnd_ = NoEnd; // what the record's line end shows
  int32_t pending_ = 0;      // bytes in the reader's block that are still to be written
  RawBlockReader reader_;
  int32_t bufferSize_;
};

} // namespace RawLayer
