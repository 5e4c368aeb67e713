#include "job/JobDataSaver.h"

#include "raw/RawEncodings.h"

namespace JobLayer {

using RawLayer::RawLineFile;
using RawLayer::RawLineRecord;

namespace {

// What a line is to a rewrite.
enum class LineKind {
  Content,
  OwnHeader, // of a section that is written anew
  OtherHeader,
  NoLine, // behind the last one
};

LineKind kindOfLine(const RawString& text, const RawString& prefix) {
  const RawRange line = text.trimRange(text.all(), RawString::whiteSpace());
  if (text.at(line.start) != '[') return LineKind::Content;
  return text.equalsAt(line.start + 1, prefix, 0, prefix.length()) ? LineKind::OwnHeader
                                                                   : LineKind::OtherHeader;
}

// One rewrite. The file is read twice at the same time. `kept` gives its lines as they stand, for
// copying them byte for byte. `loaded` gives them as the configuration was loaded, converted block
// by block: it tells whether all of the file could be loaded at all, and whether both see the same
// headers (a byte that is no character in the file's encoding may swallow what stands behind it).
// Where they differ, what is in memory is not what the copy would leave out, and lines were lost.
class Rewrite {
 public:
  Rewrite(const RawString& path, const RawString& temporary)
      : loaded_(path), kept_(path), writer_(temporary) {}

  bool open();
  bool copy(JobDataSaver::Caller& caller, const RawString& prefix);
  bool close(); // false when a line could not be read or written

 private:
  LineKind nextHeader(const RawString& prefix);
  RawLineFile loaded_;
  RawLineFile kept_;
  RawLineFile writer_;
};

bool createEmpty(const RawString& path) {
  return RawLayer::openFile(path, RawLayer::RawAccessWrite, RawLayer::RawShareRead,
                            RawLayer::RawCreateNew)
      .isValid();
}

bool Rewrite::open() {
  if (!loaded_.openRead() &&
      (RawLayer::exists(loaded_.path()) || !createEmpty(loaded_.path()) || !loaded_.openRead()))
    return false;
  kept_.options = RawLineFile::KeepEncoding;
  if (!kept_.openRead()) return false;
  const RawLineRecord& file = kept_.record();
  writer_.lineEncoding = file.fileEncoding == 0 ? RawLayer::EncodingUtf8 : file.fileEncoding;
  if (!writer_.openWrite()) return false;
  // Written here, so that a file that holds nothing but its mark keeps it, too.
  const RawLayer::RawMark mark = RawLayer::markOf(file.markEncoding);
  return writer_.writeBytes(mark.bytes, mark.size);
}

// The kind of the next header in the file as it was loaded.
LineKind Rewrite::nextHeader(const RawString& prefix) {
  while (loaded_.nextLine().valid) {
    const LineKind kind = kindOfLine(loaded_.record().text, prefix);
    if (kind != LineKind::Content) return kind;
  }
  return LineKind::NoLine;
}

bool Rewrite::copy(JobDataSaver::Caller& caller, const RawString& prefix) {
  bool isWritten = false;
  bool isSkipping = false;
  while (kept_.nextLine().valid) {
    const RawLineRecord& line = kept_.record();
    // In all other encodings of files ASCII stands for itself.
    const bool isUtf16 = line.text.encoding() == RawLayer::EncodingUtf16Be ||
                         line.text.encoding() == RawLayer::EncodingUtf16Le;
    const LineKind kind = isUtf16 ? kindOfLine(line.text.shareAs(RawLayer::EncodingUtf8), prefix)
                                  : kindOfLine(line.text, prefix);
    if (kind != LineKind::Content) {
      if (kind != nextHeader(prefix)) return false;
      isSkipping = kind == LineKind::OwnHeader;
      if (isSkipping && !std::exchange(isWritten, true)) caller.writeAll(writer_);
    }
    if (!isSkipping && !writer_.writeLineWithEnd(line.text, line.lineEnd)) return false;
  }
  if (!isWritten) caller.writeAll(writer_);
  return nextHeader(prefix) == LineKind::NoLine;
}

bool Rewrite::close() {
  bool isWhole = true;
  for (RawLineFile* file : {&loaded_, &kept_, &writer_}) {
    file->close();
    isWhole = isWhole && file->state == RawLineFile::Closed;
  }
  return isWhole;
}

} // namespace

const RawString& separatorName() {
  return "-"_text;
}

const RawString& templateName() {
  return "*"_text;
}

JobParamList paramsFromTemplate(const JobParamList& templateParams, const RawString& text) {
  return templateParams.substituted("$(APPEND)"_text, text);
}

bool JobDataSaver::save(Caller& caller, const RawString& prefix) {
  const JobFacts& facts = JobFacts::instance();
  return facts.configIsWhole && save(facts.configFile, caller, prefix);
}

bool JobDataSaver::save(const RawString& path, Caller& caller, const RawString& prefix) {
  const RawString temporary = RawString::concat(path, ".tmp"_text);
  Rewrite rewrite(path, temporary);
  const bool isCopied = rewrite.open() && rewrite.copy(caller, prefix);
  // Also closed after a fault, and asked first: nothing may be open when the file is replaced.
  return rewrite.close() && isCopied && RawLayer::replaceFile(path, temporary);
}

void JobDataSaver::writeEntry(RawLineFile& file, const RawString& prefix, const RawString& name,
                              const JobParamList& params) {
  file.writeLine(RawString::concat("["_text, prefix, name, "]"_text));
  params.writeAll(file, 0);
  file.writeLine(RawString::emptyStatic());
}

} // namespace JobLayer
