#include "raw/RawLineFile.h"

#include "raw/RawEncodings.h"
#include "raw/RawScan.h"

#include <cstring>

namespace RawLayer {

namespace {

constexpr uint16_t CarriageReturn = 0x0D;
constexpr uint16_t LineFeed = 0x0A;

int32_t workEncodingOf(int32_t encoding) {
  return encoding == EncodingWide ? rawNativeUtf16() : encoding;
}

// No conversion is asked for by 0, and none is possible for binary data.
bool isConvertible(int32_t encoding) {
  return encoding != 0 && encoding != EncodingBinary;
}

// A carriage return and a line feed as they stand in memory; shows each of the two alone, too.
const char* lineEndPair(int32_t encoding) {
  static constexpr char16_t native[] = {CarriageReturn, LineFeed};
  static constexpr char16_t swapped[] = {CarriageReturn << 8, LineFeed << 8};
  if (!isUtf16Bytes(encoding)) return "\r\n";
  return reinterpret_cast<const char*>(encoding == rawNativeUtf16() ? native : swapped);
}

} // namespace

RawLineFile::RawLineFile() : RawLineFile(RawString::emptyStatic()) {}

RawLineFile::RawLineFile(const RawString& path) : RawLineFile(path, DefaultBufferSize) {}

RawLineFile::RawLineFile(const RawString& path, int32_t bufferSize)
    : path_(path), bufferSize_(bufferSize) {}

RawLineFile::~RawLineFile() {
  if (file_) close();
}

// What was open before another opening is written out, but not flushed.
void RawLineFile::dropFile() {
  if (accessMode_ == RawAccessWrite) writeOut();
  file_.reset();
  clearLine();
}

bool RawLineFile::openRead() {
  dropFile();
  record_.path = path_;
  record_.offset = 0;
  record_.lineNumber = record_.fileEncoding = record_.markEncoding = 0;
  lineCounter_ = 0;
  scanStart_ = dataEnd_ = 0;
  fileOffset_ = 0;
  accessMode_ = RawAccessRead;
  file_ = openFile(path_, RawAccessRead, RawShareReadWrite, RawOpenExisting);
  if (!file_) {
    state = CannotRead;
    return false;
  }
  state = Open;
  startReader();
  if ((options & DeferFirstBlock) != 0 || refill(0)) return true;
  file_.reset();
  return false;
}

void RawLineFile::startReader() {
  workEncoding = workEncodingOf(lineEncoding);
  reader_.start(bufferSize_);
  reader_.target = workEncoding;
  reader_.detected = sourceEncoding;
  reader_.keepEncoding = (options & KeepEncoding) != 0;
  if ((options & RawReaderFlags) != 0)
    reader_.flags = options;
  else if (workEncoding != 0 && sourceEncoding == 0)
    reader_.flags =
        RawBlockReader::FindMark | RawBlockReader::SkipMark | RawBlockReader::DetectContent;
  wideLines_ = lineEncoding == EncodingWide && !reader_.keepEncoding;
}

// False when there will be no more lines; at the end of the file it is true once, with the tail.
bool RawLineFile::refill(uint32_t consumedTail) {
  const RawBlockReader::Result result = reader_.refill(file_, static_cast<int32_t>(consumedTail));
  record_.fileEncoding = sourceEncoding = reader_.detected;
  record_.markEncoding = reader_.markFound;
  workEncoding = reader_.target;
  unit_ = isUtf16Bytes(workEncoding) ? 2 : 1;
  const int32_t unknownTag = (options & TagUnknownAnsi) != 0 ? EncodingAnsi : EncodingUtf8;
  lineTag_ = wideLines_ ? EncodingWide : workEncoding != 0 ? workEncoding : unknownTag;
  buffer_ = reader_.text();
  scanStart_ = static_cast<uint32_t>(reader_.textStart());
  dataEnd_ = static_cast<uint32_t>(reader_.textEnd());
  switch (result) {
  case RawBlockReader::Ready:
    return true;
  case RawBlockReader::Ended:
    state = OpenLastBlock;
    return true;
  case RawBlockReader::ReadFailed:
    state = CannotRead;
    return false;
  case RawBlockReader::ConversionFailed:
    state = ConversionFailed;
    return false;
  default:
    state = LineTooLong;
    return false;
  }
}

const RawLineRecord& RawLineFile::nextLine() {
  const bool readable = accessMode_ == RawAccessRead;
  while (readable && (state == Open || (state == OpenLastBlock && scanStart_ < dataEnd_))) {
    if (parseLine(scanStart_, dataEnd_)) {
      record_.valid = true;
      return record_;
    }
    if (!refill(dataEnd_ - scanStart_)) break;
  }
  clearLine();
  return record_;
}

void RawLineFile::clearLine() {
  record_.valid = false;
  record_.text.release();
  record_.lineEnd.release();
  shownEnd_ = NoEnd;
}

bool RawLineFile::parseLine(uint32_t start, uint32_t end) {
  Cut cut;
  if (!cutLine(start, end, cut)) return false;
  showLineEnd(cut.lineEnd);
  buffer_[cut.stop] = 0;
  if (unit_ == 2) buffer_[cut.stop + 1] = 0;
  const auto size = static_cast<int32_t>(cut.stop - start);
  if (!wideLines_) {
    record_.text.assignView(lineTag_, buffer_ + start, size);
  } else if ((start & 1) == 0) {
    record_.text.assignView(lineTag_, buffer_ + start, size / 2);
  } else {
    state = OddOffset;
    record_.text.release();
  }
  record_.lineNumber = lineCounter_++;
  record_.offset = fileOffset_;
  fileOffset_ += cut.next - start;
  scanStart_ = cut.next;
  return true;
}

// False when the line goes on behind the data at hand.
bool RawLineFile::cutLine(uint32_t start, uint32_t end, Cut& cut) const {
  const bool last = state == OpenLastBlock;
  const uint32_t stop = findLineEnd(start, end);
  if (stop == end) {
    cut = {stop, stop, NoEnd};
    return last;
  }
  const uint32_t next = stop + unit_;
  const bool isFeed = unitAt(stop) == LineFeed;
  cut = {stop, next, isFeed ? Feed : Return};
  if (isFeed) return true;
  if (end - next < unit_) return last; // a line feed may still follow
  if (unitAt(next) == LineFeed) cut = {stop, next + unit_, Pair};
  return true;
}

uint32_t RawLineFile::findLineEnd(uint32_t start, uint32_t end) const {
  if (unit_ == 1) return rawFindLineEnd8(buffer_, start, end);
  return rawFindLineEnd16(buffer_, start, end, workEncoding == EncodingUtf16Be);
}

uint16_t RawLineFile::unitAt(uint32_t position) const {
  const uint8_t* bytes = buffer_ + position;
  if (unit_ == 1) return bytes[0];
  const bool bigEndian = workEncoding == EncodingUtf16Be;
  return static_cast<uint16_t>((bytes[bigEndian ? 0 : 1] << 8) | bytes[bigEndian ? 1 : 0]);
}

// The terminator will overwrite the end in the buffer, and a copy would cost memory for each line:
// so the end is shown in static data.
void RawLineFile::showLineEnd(LineEnd end) {
  if (end == shownEnd_) return; // most lines end like the one before
  shownEnd_ = end;
  if (end == NoEnd) {
    record_.lineEnd.release();
    return;
  }
  const char* first = lineEndPair(workEncoding) + (end == Feed ? unit_ : 0);
  const int32_t units = end == Pair ? 2 : 1;
  record_.lineEnd.assignView(lineTag_, first, unit_ == 2 && !wideLines_ ? units * 2 : units);
}

bool RawLineFile::openWrite() {
  dropFile();
  fileOffset_ = 0;
  pending_ = 0;
  lineOpen_ = false;
  workEncoding = workEncodingOf(lineEncoding);
  accessMode_ = RawAccessWrite;
  file_ = openFile(path_, RawAccessWrite, RawShareRead, RawCreateAlways);
  state = file_ ? Open : CannotWrite;
  if (file_) reader_.start(bufferSize_);
  return state == Open;
}

void RawLineFile::close() {
  if (accessMode_ == RawAccessWrite && file_) {
    writeOut();
    // What did not reach the disk is not written.
    if (!flushFile(file_)) fail();
  }
  file_.reset();
  clearLine();
  lineEncoding = EncodingUtf8;
  options = 0;
  sourceEncoding = 0;
  if (state == Open || state == OpenLastBlock) state = Closed;
}

bool RawLineFile::writeBytes(const void* data, int32_t size) {
  if (state != Open || accessMode_ != RawAccessWrite) return false;
  if (size <= 0) return true;
  if (fileOffset_ == 0 && (options & WriteMark) != 0) {
    const RawMark mark = markOf(workEncoding);
    std::memcpy(reader_.block(), mark.bytes, static_cast<std::size_t>(mark.size));
    pending_ = mark.size;
    fileOffset_ = static_cast<uint64_t>(mark.size);
  }
  fileOffset_ += static_cast<uint64_t>(size);
  if (size > reader_.blockSize() - pending_ && !writeOut()) return false;
  if (size > reader_.blockSize()) return writeFile(file_, data, size) || fail();
  std::memcpy(reader_.block() + pending_, data, static_cast<std::size_t>(size));
  pending_ += size;
  return true;
}

bool RawLineFile::writeOut() {
  if (state != Open) return false;
  const int32_t size = pending_;
  pending_ = 0;
  return size == 0 || writeFile(file_, reader_.block(), size) || fail();
}

bool RawLineFile::fail() {
  state = WriteFailed;
  return false;
}

bool RawLineFile::writeText(int32_t encoding, const void* data, int32_t size) {
  encoding = workEncodingOf(encoding);
  if (size <= 0 || encoding == workEncoding || !isConvertible(encoding) ||
      !isConvertible(workEncoding))
    return writeBytes(data, size);
  const RawString text = RawString::viewOf(encoding, data, size).shareAs(workEncoding);
  // A text that came to nothing must not silently be missing in the file.
  if (text.isEmpty() && state == Open) return fail();
  return writeBytes(text.text(), text.length());
}

bool RawLineFile::writeString(const RawString& text) {
  if (text.encoding() == EncodingWide)
    return writeText(EncodingWide, text.wide(), text.length() * 2);
  return writeText(text.encoding(), text.text(), text.length());
}

bool RawLineFile::writeLine(const RawString& text) {
  if (lineOpen_ && !writeLineEnd()) return false;
  return writeString(text) && writeLineEnd();
}

bool RawLineFile::writeLineEnd() {
  lineOpen_ = false;
  return writeBytes(lineEndPair(workEncoding), isUtf16Bytes(workEncoding) ? 4 : 2);
}

bool RawLineFile::writeLineWithEnd(const RawString& text, const RawString& lineEnd) {
  if (!text.isEmpty() || !lineEnd.isEmpty()) lineOpen_ = lineEnd.isEmpty();
  return writeString(text) && writeString(lineEnd);
}

} // namespace RawLayer
