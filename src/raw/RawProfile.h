// RawProfile, RawProfileEnumeration: files of the bracketed form, `[section]` with `key=value`
// lines and "//" comments.
//
// A profile has no open state: each call opens and closes the file. Saving goes through a
// temporary file (the path and ".tmp") that replaces the old one only when it is whole; encoding
// and mark are kept. No locks here: callers lock. Nothing is reported to the user.
#pragma once

#include "raw/RawLineFile.h"
#include "raw/RawParameterList.h"
#include "raw/RawString.h"

namespace RawLayer {

class RawProfile {
public:
  RawString path;
  RawString readPath;
  int32_t bufferSize = RawLineFile::DefaultBufferSize;
  int32_t encoding = 0;     // found at the last read
  int32_t markEncoding = 0; // found at the last read; 0 for none

  RawProfile() = default;
  explicit RawProfile(const RawString& file);

  // Replaces the list by the section's entries; true when there is at least one.
  bool loadSection(RawParameterList& list, const RawString& section);
  // Replaces the section's lines by the list, all else stays; true when the file was replaced.
  bool saveSection(const RawParameterList& list, const RawString& section);
  RawString readValue(const RawString& section, const RawString& key,
                      const RawString& fallback = RawString::emptyStatic());
  bool writeValue(const RawString& section, const RawString& key, const RawString& value);
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

  RawString currentSection; // the section that nextSection gives next
  int32_t encoding;
  int32_t markEncoding;

  explicit RawProfileEnumeration(RawProfile& profile);
  bool open();
  // Whether a section is at hand; one with an empty name is a section too.
  [[nodiscard]] bool hasSection() const { return hasSection_; }
  // Gives the section at hand, its entries in `parameters`, and goes to the following one.
  RawString nextSection(RawParameterList& parameters);
  void close();
  void enumerate(Enumerator& enumerator);

  // Copies the file to `temporary` with the sections of `prefix` (any case) left out and the
  // saver's in the place of the first. Comments of the other sections are lost.
  bool rewrite(Saver& saver, const RawString& prefix, const RawString& temporary);
  // `rewrite` and replacement; on failure the temporary file is deleted.
  bool save(Saver& saver, const RawString& prefix);

private:
  void skipToSection();
  RawProfile& profile_;
  RawLineFile reader_;
  bool hasSection_ = false;
};

} // namespace RawLayer
