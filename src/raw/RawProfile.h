// RawProfile, RawProfileEnumeration: files of the bracketed form, `[section]` with `key=value`
// lines and "//" comments.
//
// A profile has no open state: each call opens and closes the file. Saving goes through a
// temporary file (the path and ".tmp") that replaces the old one only when it is whole; encoding
// and mark are kept. Lines that a save does not own keep their bytes, but every line then ends in
// CR LF, and a section line ends at its bracket. There is no escaping: a value with a line end in
// it becomes two lines, a key that starts with a bracket a section. No locks here: callers lock.
// Nothing is reported to the user.
#pragma once

#include "raw/RawLineFile.h"
#include "raw/RawParameterList.h"
#include "raw/RawString.h"

#include <memory>

namespace RawLayer {

class RawProfileEnumeration;

class RawProfile {
 public:
  RawString path;
  RawString readPath;
  int32_t bufferSize = RawLineFile::DefaultBufferSize; // bytes; a line must be shorter
  int32_t encoding = 0;                                // found at the last read
  int32_t markEncoding = 0;                            // found at the last read; 0 for none
  // How the last read ended: RawLineFile::Closed, or the state of a fault (CannotRead for a file
  // that is not there or is locked), in which case the list given may lack entries.
  int32_t readState = RawLineFile::Closed;

  RawProfile() = default;
  explicit RawProfile(const RawString& file);

  // Replaces the list by the section's entries; true when there is at least one.
  bool loadSection(RawParameterList& list, const RawString& section);
  // Replaces the section's lines by the list, all else stays; true when the file was replaced.
  // A file that is missing is made; one that cannot be read to its end is left alone.
  bool saveSection(const RawParameterList& list, const RawString& section);
  // The value of the first such key. Reads no further than to it.
  RawString readValue(const RawString& section, const RawString& key,
                      const RawString& fallback = RawString::emptyStatic());
  // Sets the first such key, or adds it; true when the file was replaced.
  bool writeValue(const RawString& section, const RawString& key, const RawString& value);

  // Writes a section line, a line for each entry and an empty line. For rewriters: whether all was
  // written shows in the writer's state.
  static void writeSection(RawLineFile& writer, const RawString& name,
                           const RawParameterList& list);

 private:
  // Copies all with the list in the place of each such section; whether there was one.
  static bool copyAround(RawProfileEnumeration& source, RawLineFile& writer,
                         const RawParameterList& list, const RawString& section);
  static void writeSectionLine(RawLineFile& writer, const RawString& name);
  void takeEncoding(const RawProfileEnumeration& file);
};

// The walk over all sections of a file, and its rewrite by families of sections.
class RawProfileEnumeration {
 public:
  class Saver {
   public:
    virtual ~Saver() = default;
    // Writes the caller's sections; false aborts the rewrite.
    virtual bool saveSections(RawLineFile& writer, const RawString& prefix) = 0;
  };
  class Enumerator {
   public:
    virtual ~Enumerator() = default;
    virtual void onSection(const RawString& name, const RawParameterList& parameters) = 0;
  };

  RawString path;
  int32_t bufferSize;
  RawString currentSection; // the section that nextSection gives next; empty behind the last
  int32_t encoding = 0;     // found by `open`, the profile's before
  int32_t markEncoding = 0; // the same; 0 for none

  explicit RawProfileEnumeration(const RawProfile& profile);
  RawProfileEnumeration(const RawString& file, int32_t size); // bytes
  // Goes to the first section; false when the file cannot be opened.
  bool open();
  // Whether a section is at hand; one with an empty name is a section too.
  [[nodiscard]] bool hasSection() const { return hasSection_; }
  // Gives the section at hand, its entries alone in `parameters`, and goes to the following one.
  RawString nextSection(RawParameterList& parameters);
  // The state that the file has once closed: RawLineFile::Closed, or the fault that stopped the
  // reading.
  int32_t close();
  // Shows all sections, from the first on; true when the file was read to its end.
  bool enumerate(Enumerator& enumerator);

  // Copies the file to `temporary` with the sections of `prefix` (any case) left out and the
  // saver's in the place of the first. Comments of the other sections are lost.
  bool rewrite(Saver& saver, const RawString& prefix, const RawString& temporary);
  // `rewrite` and replacement; on failure the temporary file is deleted.
  bool save(Saver& saver, const RawString& prefix);
  // Opens a file to copy a profile to, in the encoding and with the mark found in it.
  static bool openWriter(RawLineFile& writer, int32_t encoding, int32_t markEncoding);

 private:
  friend class RawProfile;
  bool openFile();
  // Opens the file in front of its first line, to be copied: lines come as the file's own bytes
  // where a conversion could change them.
  bool openVerbatim();
  bool goesAlong();
  // The next line of the section at hand, valid up to the next call; null at the following
  // section line or the end.
  const RawString* nextLine();
  const RawString* nextEntry(); // the same, comments passed over
  void passSection();
  bool passTo(const RawString& section); // any case, the section at hand counts; false at the end
  void readSection(RawParameterList& list);               // adds the entries
  bool findValue(const RawString& key, RawString& value); // true: stopped at the entry
  void copySection(RawLineFile& writer); // the lines as they stand, without the section line
  bool copyOthers(RawLineFile& writer, Saver& saver, const RawString& prefix);

  std::unique_ptr<RawLineFile> reader_;
  std::unique_ptr<RawProfileEnumeration> asRead_; // only while lines come as they stand
  bool hasSection_ = false;
};

} // namespace RawLayer
