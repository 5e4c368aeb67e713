#include "raw/RawLanguage.h"

#include "raw/RawFile.h"
#include "raw/RawProfile.h"
#include "raw/RawSystem.h"

namespace RawLayer {

namespace {

constexpr uint16_t Backslash = '\\';

const RawString& mapSection() {
  return "LangMap"_text;
}

RawString keyOf(const RawString& group, const RawString& id) {
  return RawString::concat(group, "_"_text, id);
}

void appendEscape(RawString& target, uint16_t unit) {
  switch (unit) {
  case 'n':
    target.append("\r\n"_text);
    break;
  case 't':
    target.appendChar('\t');
    break;
  case 's':
    target.appendChar(' ');
    break;
  default:
    target.appendChar(unit);
  }
}

RawString unescape(const RawString& source) {
  RawString result(source.encoding(), source.length());
  for (int32_t i = 0; i < source.length(); ++i)
    if (source.at(i) == Backslash)
      appendEscape(result, source.at(++i)); // behind the last unit there is a zero
    else
      result.appendChar(source.at(i));
  return result;
}

// A file without a map has a language in each section, none with an id.
void mapSections(RawParameterList& map, const RawProfile& file) {
  RawProfileEnumeration sections(file);
  if (!sections.open()) return;
  while (sections.hasSection()) {
    RawParameterList entries;
    map.set(sections.nextSection(entries), RawString::emptyStatic());
  }
}

void removeKey(RawParameterList& list, const RawString& key) {
  for (RawListNode* node = list.first(); !RawListBody::isEnd(node);) {
    RawListNode* const following = node->next;
    if (RawParameterList::element(node)->key.equalsNoCase(key)) list.erase(node);
    node = following;
  }
}

} // namespace

RawLanguage::RawLanguage() = default;

RawLanguage& RawLanguage::instance() {
  static RawLanguage language;
  return language;
}

void RawLanguage::setPath(const RawString& path) {
  const RawLockScope scope(lock_);
  path_ = path;
  isLoaded_ = false;
}

RawString RawLanguage::path() const {
  const RawLockScope scope(lock_);
  return path_;
}

void RawLanguage::setSelection(const RawString& name) {
  const RawLockScope scope(lock_);
  selection_ = name;
  if (!name.isEmpty()) return;
  const RawString automatic = systemSection();
  // What is loaded belongs to the old section and must not be saved into the new one.
  isLoaded_ = isLoaded_ && automatic.equals(section_);
  section_ = automatic;
}

RawString RawLanguage::selection() const {
  const RawLockScope scope(lock_);
  return selection_;
}

RawString RawLanguage::section() const {
  const RawLockScope scope(lock_);
  return section_;
}

RawParameterList RawLanguage::languageMap() const {
  const RawLockScope scope(lock_);
  RawParameterList copy;
  for (const RawParameterUnit& unit : languageMap_.elements()) {
    RawParameterUnit* const added = copy.add(unit.key);
    added->value = unit.value;
    added->number = unit.number;
  }
  return copy;
}

void RawLanguage::loadMap() {
  const RawLockScope scope(lock_);
  if (path_.isEmpty()) return;
  RawProfile file(path_);
  if (file.loadSection(languageMap_, mapSection()))
    languageMap_.parseNumbers();
  else
    mapSections(languageMap_, file);
  removeKey(languageMap_, mapSection());
}

RawString RawLanguage::systemSection() const {
  const RawLockScope scope(lock_);
  const int32_t id = languageMap_.count() > 0 ? userLanguage() : 0;
  if (id != 0) // the number of a language without an id
    for (const RawParameterUnit& unit : languageMap_.elements())
      if (unit.number == id) return unit.key;
  return "Default"_text;
}

void RawLanguage::loadSection() {
  const RawLockScope scope(lock_);
  section_ = selection_.isEmpty() ? systemSection() : selection_;
  isLoaded_ = false;
  if (path_.isEmpty()) return;
  RawProfile file(path_);
  const bool found = file.loadSection(translations_, section_);
  // Translations that could not be read would be written over with English texts.
  isLoaded_ = file.readState == RawLineFile::Closed || !exists(path_);
  if (!found && isLoaded_) file.saveSection(defaults_, section_);
}

void RawLanguage::registerTable(const RawString& group, const RawLocaleRecord* table) {
  const RawLockScope scope(lock_);
  if (tables_.contains(table)) return;
  // A list takes elements that may change; this one only remembers them.
  tables_.append(const_cast<RawLocaleRecord*>(table));
  for (const RawLocaleRecord* record = table; !record->id.isEmpty(); ++record)
    defaults_.set(keyOf(group, record->id), RawString::escapeControls(record->text));
}

RawString RawLanguage::text(const RawString& group, const RawString& id) {
  const RawString key = keyOf(group, id);
  RawString value;
  {
    const RawLockScope scope(lock_);
    const RawParameterUnit* unit = translations_.find(key);
    if (!unit) {
      dirty_ = true;
      unit = defaults_.find(key);
    }
    if (!unit) {
      defaults_.set(key, id);
      unit = defaults_.find(key);
    }
    value = unit->value;
  }
  return unescape(value);
}

// The file is written under the lock: two writers would meet in its temporary file.
void RawLanguage::save() {
  const RawLockScope scope(lock_);
  if (!dirty_ || path_.isEmpty() || !isLoaded_) return;
  dirty_ = false;
  RawParameterList merged;
  merged.merge(defaults_);
  for (const RawParameterUnit& unit : translations_.elements()) merged.set(unit.key, unit.value);
  RawParameterListSort(merged).sortAll();
  RawProfile(path_).saveSection(merged, section_);
}

RawString RawLanguage::substitute(const RawString& text, const RawString& argument) {
  const RawString& placeholder = "%s"_text;
  const int32_t position = text.find(placeholder);
  if (position == text.length()) return text;
  const RawString inserted = argument.shareAs(text.encoding());
  RawString result = text;
  result.replaceRange({position, position + placeholder.length()}, inserted, inserted.all());
  return result;
}

RawLanguageGroup::RawLanguageGroup(const RawString& group, const RawLocaleRecord* table)
    : group_(group) {
  RawLanguage::instance().registerTable(group_, table);
}

RawLanguageGroup::~RawLanguageGroup() {
  RawLanguage::instance().save();
}

RawString RawLanguageGroup::text(const RawString& id) const {
  return RawLanguage::instance().text(group_, id);
}

} // namespace RawLayer
