#include "raw/RawProfile.h"

#include "raw/RawFile.h"

namespace RawLayer {

RawProfile::RawProfile(const RawString& file) : path(file), readPath(file) {}

bool RawProfile::loadSection(RawParameterList& list, const RawString& section) {
  list.renew();
  RawProfileEnumeration file(readPath, bufferSize);
  if (file.open()) {
    takeEncoding(file);
    while (file.passTo(section)) file.readSection(list);
  }
  readState = file.close();
  return list.count() > 0;
}

RawString RawProfile::readValue(const RawString& section, const RawString& key,
                                const RawString& fallback) {
  RawString value = fallback;
  RawProfileEnumeration file(readPath, bufferSize);
  if (file.open()) {
    takeEncoding(file);
    while (file.passTo(section) && !file.findValue(key, value)) continue;
  }
  readState = file.close();
  return value;
}

bool RawProfile::writeValue(const RawString& section, const RawString& key,
                            const RawString& value) {
  RawParameterList list;
  loadSection(list, section);
  // Entries that could not be read would be lost.
  if (readState != RawLineFile::Closed && exists(readPath)) return false;
  list.set(key, value);
  return saveSection(list, section);
}

bool RawProfile::saveSection(const RawParameterList& list, const RawString& section) {
  const RawString temporary = RawString::concat(path, ".tmp"_text);
  RawProfileEnumeration source(path, bufferSize);
  const bool hasSource = source.openVerbatim();
  // A locked file is not written over, and no name is no file.
  if (!hasSource && (path.isEmpty() || exists(path))) return false;
  if (hasSource) takeEncoding(source);

  RawLineFile writer(temporary, bufferSize);
  if (!RawProfileEnumeration::openWriter(writer, encoding, markEncoding)) return false;
  const bool found = hasSource && copyAround(source, writer, list, section);
  readState = source.close();
  if (!found) writeSection(writer, section, list);
  writer.close();
  if (writer.state != RawLineFile::Closed) return false;
  if (!hasSource) return moveFile(temporary, path);
  return readState == RawLineFile::Closed && replaceFile(path, temporary);
}

bool RawProfile::copyAround(RawProfileEnumeration& source, RawLineFile& writer,
                            const RawParameterList& list, const RawString& section) {
  bool found = false;
  source.copySection(writer); // what stands in front of the first section
  while (source.hasSection()) {
    if (source.currentSection.equalsNoCase(section)) {
      found = true;
      writeSection(writer, source.currentSection, list);
      source.passSection();
    } else {
      writeSectionLine(writer, source.currentSection);
      source.copySection(writer);
    }
  }
  return found;
}

void RawProfile::writeSectionLine(RawLineFile& writer, const RawString& name) {
  writer.writeLine(RawString::concat("["_text, name, "]"_text));
}

void RawProfile::writeSection(RawLineFile& writer, const RawString& name,
                              const RawParameterList& list) {
  writeSectionLine(writer, name);
  for (const RawParameterUnit& unit : list.elements()) {
    writer.writeLineWithEnd(unit.key, "="_text);
    writer.writeLine(unit.value);
  }
  writer.writeLine(RawString::emptyStatic());
}

void RawProfile::takeEncoding(const RawProfileEnumeration& file) {
  encoding = file.encoding;
  markEncoding = file.markEncoding;
}

} // namespace RawLayer
