#include "app/GuiTitleMenu.h"

#include "job/JobProduct.h"
#include "raw/RawLanguage.h"
#include "raw/RawPath.h"

#include <algorithm>

namespace AppLayer {

using namespace RawLayer::RawLiterals;
using RawLayer::RawLanguageGroup;
using RawLayer::RawLocaleRecord;
using RawLayer::RawParameterUnit;

namespace {

const RawString& groupName() {
  return "TitleMenu"_text;
}

const RawLocaleRecord* titleTexts() {
  static const RawLocaleRecord table[] = {
      {"ViewHelp"_text, "View help."_text},
      {"MoveToPrimaryScreen"_text, "Move to primary screen."_text},
      {"SelectLanguage"_text, "Select language."_text},
      {"OpenGuiProfile"_text, "Open gui profile."_text},
      {"SelectWindowFont"_text, "Select window font."_text},
      {"SelectMenuFont"_text, "Select menu font."_text},
      {"SelectTipFont"_text, "Select tip font."_text},
      {"OpenLogFolder"_text, "Open log folder."_text},
      {RawString(), RawString()},
  };
  return table;
}

GuiTitleEntry textEntry(uint32_t id, const RawString& text) {
  GuiTitleEntry entry;
  entry.id = id;
  entry.text = text;
  return entry;
}

GuiTitleEntry separator() {
  GuiTitleEntry entry;
  entry.kind = GuiTitleEntry::Separator;
  return entry;
}

// One document needs no submenu, none leaves nothing to choose.
GuiTitleEntry helpEntry(const RawString& text, const RawStringList& documents) {
  GuiTitleEntry entry = textEntry(GuiTitleMenu::ViewHelp, text);
  entry.isEnabled = documents.count() > 0;
  if (documents.count() < 2) return entry;
  entry.kind = GuiTitleEntry::Submenu;
  for (const RawString& path : documents.elements()) {
    const auto index = static_cast<uint32_t>(entry.entries.size());
    if (index == GuiTitleMenu::MaxHelpFiles) break;
    entry.entries.push_back(textEntry(GuiTitleMenu::FirstHelpFile + index, RawLayer::nameOf(path)));
  }
  return entry;
}

GuiTitleEntry languageEntry(const RawString& text, const RawParameterList& languages,
                            const RawString& selection) {
  GuiTitleEntry entry = textEntry(GuiTitleMenu::SelectLanguage, text);
  entry.isEnabled = languages.count() >= 2;
  if (!entry.isEnabled) return entry;
  entry.kind = GuiTitleEntry::Submenu;
  entry.entries.push_back(textEntry(GuiTitleMenu::SelectLanguage, "(Auto)"_text));
  entry.entries.back().isChecked = selection.isEmpty();
  for (const RawParameterUnit& language : languages.elements()) {
    const auto number = static_cast<uint32_t>(entry.entries.size());
    if (number > GuiTitleMenu::MaxLanguages) break;
    entry.entries.push_back(textEntry(GuiTitleMenu::SelectLanguage + number, language.key));
    entry.entries.back().isChecked = language.key.equals(selection);
  }
  return entry;
}

} // namespace

void GuiTitleMenu::registerTexts() {
  RawLayer::RawLanguage::instance().registerTable(groupName(), titleTexts());
}

std::vector<GuiTitleEntry> GuiTitleMenu::entries(const RawStringList& documents,
                                                 const RawParameterList& languages,
                                                 const RawString& selection) {
  const RawLanguageGroup texts(groupName(), titleTexts());
  const auto entry = [&texts](uint32_t id, const RawString& key) {
    return textEntry(id, texts.text(key));
  };
  return {
      textEntry(Version, JobLayer::JobProduct::version()),
      separator(),
      helpEntry(texts.text("ViewHelp"_text), documents),
      entry(MoveToPrimaryScreen, "MoveToPrimaryScreen"_text),
      separator(),
      languageEntry(texts.text("SelectLanguage"_text), languages, selection),
      entry(OpenGuiProfile, "OpenGuiProfile"_text),
      entry(SelectWindowFont, "SelectWindowFont"_text),
      entry(SelectMenuFont, "SelectMenuFont"_text),
      entry(SelectTipFont, "SelectTipFont"_text),
      entry(OpenLogFolder, "OpenLogFolder"_text),
      separator(),
  };
}

RawString GuiTitleMenu::helpFileOf(uint32_t id, const RawStringList& documents) {
  const bool isFirst = id == ViewHelp;
  if (!isFirst && (id < FirstHelpFile || id >= FirstHelpFile + MaxHelpFiles)) return {};
  const uint32_t index = isFirst ? 0 : id - FirstHelpFile;
  const RawString* path = RawStringList::element(documents.nodeAt(static_cast<int32_t>(index)));
  return path ? *path : RawString();
}

bool GuiTitleMenu::isLanguageId(uint32_t id) {
  return id >= SelectLanguage && id <= SelectLanguage + MaxLanguages;
}

RawString GuiTitleMenu::languageOf(uint32_t id, const RawParameterList& languages) {
  if (id < FirstLanguage || !isLanguageId(id)) return {};
  const auto index = static_cast<int32_t>(id - FirstLanguage);
  const RawParameterUnit* language = RawParameterList::element(languages.nodeAt(index));
  return language ? language->key : RawString();
}

WinLayer::WinRect GuiTitleMenu::centred(const WinLayer::WinRect& window,
                                        const WinLayer::WinRect& workArea) {
  const int32_t left = workArea.left + (workArea.width() - window.width()) / 2;
  const int32_t top = workArea.top + (workArea.height() - window.height()) / 2;
  return window.movedTo(std::max(left, workArea.left), std::max(top, workArea.top));
}

} // namespace AppLayer
