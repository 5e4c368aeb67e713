// RawLanguage: the message catalogue of the process. Texts are looked up by group and id, in the
// loaded section of the language file first, in the program's English texts then.
//
// The file is a profile with a section for each language, keys of the form group, "_", id, and the
// section "LangMap", where `section=number` names the language id of each. It maintains itself: a
// section asked for but missing is written with all English texts, and `save` adds ids that it
// lacks. A file that could not be read is never written.
//
// The order at start: setPath, setSelection, loadMap, loadSection. All operations are under one
// lock: any thread may call. Every failure ends in the English text; an unknown id shows as itself.
// Ids compare without case.
#pragma once

#include "raw/RawList.h"
#include "raw/RawLock.h"
#include "raw/RawParameterList.h"
#include "raw/RawString.h"

namespace RawLayer {

// One message of a static table; the table ends with a record whose id is empty.
struct RawLocaleRecord {
  RawString id;
  RawString text;
};
class RawLocaleRecordListAllocator : public RawListAllocator<RawLocaleRecord> {
 public:
  void destroy(RawLocaleRecord*) override {} // the tables are static data
};
class RawLocaleRecordList : public RawListP<RawLocaleRecordListAllocator, RawLocaleRecord> {};

class RawLanguage {
 public:
  RawLanguage(); // tests make their own; the program uses instance()
  static RawLanguage& instance();

  void setPath(const RawString& path); // empty: no file
  [[nodiscard]] RawString path() const;
  // The user's choice; empty for the automatic one, which sets the section at once. The texts
  // change with the next loadSection.
  void setSelection(const RawString& name);
  [[nodiscard]] RawString selection() const;
  [[nodiscard]] RawString section() const;
  // The languages of the file: section names as keys, language ids as numbers. A list of its own.
  [[nodiscard]] RawParameterList languageMap() const;
  // Reads the map from the file; nothing without a path.
  void loadMap();
  // The section for the user's interface language; "Default" when the map has none.
  [[nodiscard]] RawString systemSection() const;
  // Chooses the section from the selection and loads its translations; writes a missing section.
  void loadSection();
  // Adds the texts of a table that lives as long as the process; once for each table.
  void registerTable(const RawString& group, const RawLocaleRecord* table);
  // The text to show, with the file's escapes resolved: a backslash and "n" give CR LF, "t" a tab,
  // "s" a blank, any other unit that unit; a backslash at the end gives a zero unit.
  RawString text(const RawString& group, const RawString& id);
  void save(); // adds what was missed to the file, sorted by keys; nothing when nothing was

  // `text` with its first "%s" replaced by the argument.
  static RawString substitute(const RawString& text, const RawString& argument);

 private:
  mutable RawLock lock_;
  RawString path_;
  RawString selection_;
  RawString section_;
  RawParameterList languageMap_;
  RawParameterList translations_;
  RawParameterList defaults_;
  RawLocaleRecordList tables_;
  bool isLoaded_ = false; // translations_ is what the file holds in section_
  bool dirty_ = false;    // a lookup missed translations_
};

// One group of messages: registers its table, saves what was missed when it goes.
class RawLanguageGroup {
 public:
  RawLanguageGroup(const RawString& group, const RawLocaleRecord* table);
  ~RawLanguageGroup();
  RawLanguageGroup(const RawLanguageGroup&) = delete;
  RawLanguageGroup& operator=(const RawLanguageGroup&) = delete;
  [[nodiscard]] RawString text(const RawString& id) const;

 private:
  RawString group_;
};

} // namespace RawLayer
