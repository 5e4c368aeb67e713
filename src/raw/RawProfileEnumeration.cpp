#include "raw/RawProfile.h"

#include "raw/RawFile.h"

#include <algorithm>

namespace RawLayer {

namespace {

constexpr uint16_t OpeningBracket = '[';
constexpr uint16_t ClosingBracket = ']';

// A line that was read as text is shorter than three buffers, whatever its file is written in: two
// of them hold what was converted, as UTF-16 in the worst case.
constexpr int32_t VerbatimFactor = 4;

// Whether reading as text changes the bytes.
bool isConverted(int32_t encoding) {
  return encoding != EncodingAnsi && encoding != EncodingUtf8 && encoding != EncodingBinary;
}

uint16_t firstUnit(const RawString& line) {
  switch (line.encoding()) {
  case EncodingUtf16Be:
    return static_cast<uint16_t>(line.at(0) << 8 | line.at(1));
  case EncodingUtf16Le:
    return static_cast<uint16_t>(line.at(1) << 8 | line.at(0));
  default:
    return line.at(0);
  }
}

RawString asText(const RawString& line) {
  return isConverted(line.encoding()) ? line.shareAs(EncodingUtf8) : line;
}

// From behind the bracket to the last closing one, or to the end of the line. Looked for by units:
// a bracket is never part of a character in UTF-8, and bytes of another code page must not hide
// one, or each save would add one more.
RawString sectionName(const RawString& line) {
  int32_t stop = line.length() - 1;
  while (stop > 0 && line.at(stop) != ClosingBracket) --stop;
  return RawString::fromRange(line.encoding(), line, {1, stop > 0 ? stop : line.length()});
}

bool isComment(const RawString& line) {
  return line.at(0) == '/' && line.at(1) == '/';
}

} // namespace

RawProfileEnumeration::RawProfileEnumeration(const RawProfile& profile)
    : RawProfileEnumeration(profile.path, profile.bufferSize) {
  encoding = profile.encoding;
  markEncoding = profile.markEncoding;
}

RawProfileEnumeration::RawProfileEnumeration(const RawString& file, int32_t size)
    : path(file), bufferSize(size), reader_(std::make_unique<RawLineFile>(file, size)) {}

bool RawProfileEnumeration::openFile() {
  hasSection_ = false;
  currentSection.release();
  if (!reader_->openRead()) return false;
  encoding = reader_->record().fileEncoding;
  markEncoding = reader_->record().markEncoding;
  return true;
}

bool RawProfileEnumeration::open() {
  if (!openFile()) return false;
  passSection();
  return true;
}

// A conversion to text and back may change bytes: Shift-JIS has two codes for some characters, and
// other code pages pass for it. So the lines of such a file come as they stand, while a second
// reader goes along that sees the file as loadSection does.
bool RawProfileEnumeration::openVerbatim() {
  if (!openFile()) return false;
  if (!isConverted(encoding)) return true;
  asRead_ = std::make_unique<RawProfileEnumeration>(path, bufferSize);
  const int32_t size = std::min(bufferSize, RawBlockReader::MaximumBlockSize / VerbatimFactor);
  reader_ = std::make_unique<RawLineFile>(path, size * VerbatimFactor);
  reader_->options = RawLineFile::KeepEncoding;
  return asRead_->open() && reader_->openRead();
}

// False when the second reader is not at the same section: a byte that is no character may swallow
// a line end, and then a section stands in the bytes that reading does not show. What was loaded is
// not what a save would replace.
bool RawProfileEnumeration::goesAlong() {
  if (!asRead_) return true;
  const bool same =
      asRead_->hasSection_ == hasSection_ && asRead_->currentSection.equals(currentSection);
  if (hasSection_) asRead_->passSection();
  return same;
}

int32_t RawProfileEnumeration::close() {
  reader_->close();
  hasSection_ = false;
  const int32_t stateAsRead =
      asRead_ ? asRead_->close() : static_cast<int32_t>(RawLineFile::Closed);
  asRead_.reset();
  return reader_->state != RawLineFile::Closed ? reader_->state : stateAsRead;
}

const RawString* RawProfileEnumeration::nextLine() {
  const RawLineRecord& line = reader_->nextLine();
  hasSection_ = line.valid && firstUnit(line.text) == OpeningBracket;
  if (line.valid && !hasSection_) return &line.text;
  currentSection = sectionName(asText(line.text));
  if (!goesAlong()) {
    reader_->state = RawLineFile::ConversionFailed;
    hasSection_ = false;
  }
  return nullptr;
}

const RawString* RawProfileEnumeration::nextEntry() {
  const RawString* line = nextLine();
  while (line && isComment(*line)) line = nextLine();
  return line;
}

void RawProfileEnumeration::passSection() {
  while (nextLine()) continue;
}

bool RawProfileEnumeration::passTo(const RawString& section) {
  while (hasSection_ && !currentSection.equalsNoCase(section)) passSection();
  return hasSection_;
}

void RawProfileEnumeration::readSection(RawParameterList& list) {
  while (const RawString* line = nextEntry())
    list.parseLine(*line, line->all(), RawString::emptyStatic());
}

bool RawProfileEnumeration::findValue(const RawString& key, RawString& value) {
  RawParameterList entries;
  while (const RawString* line = nextEntry()) {
    entries.parseLine(*line, line->all(), RawString::emptyStatic());
    if (const RawParameterUnit* unit = entries.find(key)) {
      value = unit->value;
      return true;
    }
    entries.clear();
  }
  return false;
}

void RawProfileEnumeration::copySection(RawLineFile& writer) {
  while (const RawString* line = nextLine()) writer.writeLine(*line);
}

RawString RawProfileEnumeration::nextSection(RawParameterList& parameters) {
  const RawString name = currentSection;
  parameters.renew();
  if (hasSection_) readSection(parameters);
  return name;
}

bool RawProfileEnumeration::enumerate(Enumerator& enumerator) {
  if (!open()) return false;
  while (hasSection_) {
    RawParameterList parameters;
    const RawString name = nextSection(parameters);
    enumerator.onSection(name, parameters);
  }
  return close() == RawLineFile::Closed;
}

bool RawProfileEnumeration::openWriter(RawLineFile& writer, int32_t encoding,
                                       int32_t markEncoding) {
  // Unknown means ASCII so far, and the lines of binary files are bytes: neither is converted.
  const bool isText = encoding != EncodingAnsi && encoding != EncodingBinary;
  writer.lineEncoding = isText ? encoding : static_cast<int32_t>(EncodingUtf8);
  if (markEncoding != 0) writer.options |= RawLineFile::WriteMark;
  return writer.openWrite();
}

bool RawProfileEnumeration::rewrite(Saver& saver, const RawString& prefix,
                                    const RawString& temporary) {
  if (!openFile()) return false;
  RawLineFile writer(temporary);
  const bool copied =
      openWriter(writer, encoding, markEncoding) && copyOthers(writer, saver, prefix);
  writer.close();
  return close() == RawLineFile::Closed && copied && writer.state == RawLineFile::Closed;
}

bool RawProfileEnumeration::copyOthers(RawLineFile& writer, Saver& saver, const RawString& prefix) {
  bool saved = false;
  copySection(writer); // what stands in front of the first section
  while (hasSection_) {
    if (currentSection.startsWithAt(0, prefix, prefix.length())) {
      if (!saved && !saver.saveSections(writer, prefix)) return false;
      saved = true;
      passSection();
    } else {
      RawParameterList parameters;
      const RawString name = nextSection(parameters);
      RawProfile::writeSection(writer, name, parameters);
    }
  }
  return saved || saver.saveSections(writer, prefix);
}

bool RawProfileEnumeration::save(Saver& saver, const RawString& prefix) {
  const RawString temporary = RawString::concat(path, ".tmp"_text);
  if (rewrite(saver, prefix, temporary) && replaceFile(path, temporary)) return true;
  deleteFile(temporary);
  return false;
}

} // namespace RawLayer
