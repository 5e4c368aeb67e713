// RawLanguage: the message catalogue of the process. Texts are looked up by group and id, in the
// loaded section of the language file first, in the program's English texts then.
//
// The file maintains itself: a section asked for but missing is written with all English texts,
// and `save` adds ids that it lacks. All operations are under one lock: any thread may call.
// Every failure ends in the English text; an unknown id shows as itself.
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
class RawLocaleRecordListAllocator : public RawListAllocator<const RawLocaleRecord> {
public:
  void destroy(const RawLocaleRecord*) override {}
  void release(void*) override {}
};
class RawLocaleRecordList : public RawListP<RawLocaleRecordListAllocator, RawLocaleRecord> {};

class RawLanguage {
public:
  RawLanguage(); // tests make their own; the program uses instance()
  static RawLanguage& instance();

  void setPath(const RawString& path); // empty: no file
  [[nodiscard]] RawString path() const;
  void setSelection(const RawString& name); // empty: automatic
  [[nodiscard]] RawString selection() const;
  [[nodiscard]] RawString section() const;
  [[nodiscard]] RawParameterList languageMap() const; // a list of its own
  void loadMap();
  // The section for the user's interface language; "Default" when the map has none.
  [[nodiscard]] RawString systemSection() const;
  // Chooses the section from the selection and loads its translations; writes a missing section.
  void loadSection();
  void registerTable(const RawString& group, const RawLocaleRecord* table);
  RawString text(const RawString& group, const RawString& id);
  void save(); // adds what was missed to the file; nothing when nothing was

  // `text` with its first "%s" replaced.
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
  bool dirty_ = false;
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
