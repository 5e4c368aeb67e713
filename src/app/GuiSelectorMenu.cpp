#include "app/GuiSelectorMenu.h"

#include "raw/RawLanguage.h"

namespace AppLayer {

using RawLayer::RawLanguageGroup;
using RawLayer::RawLocaleRecord;
using RawLayer::RawString;
using namespace RawLayer::RawLiterals;

namespace {

enum class Needs : uint8_t { Mark, OneRun };

struct Row {
  uint32_t id;
  const RawString& key; // empty: a line
  Needs needs;
};

// The doubled word of the last text is what users know, and translations are made of.
const RawLanguageGroup& texts() {
  static const RawLocaleRecord table[] = {
      {"InsertSeparator"_text, "Insert separator."_text},
      {"DeleteItems"_text, "Delete selected items."_text},
      {"MoveUpItems"_text, "Move up selected items."_text},
      {"MoveDownItems"_text, "Move down selected items."_text},
      {"SortItems"_text, "Sort selected items."_text},
      {"ReverseSortItems"_text, "Reverse selected selected items."_text},
      {""_text, ""_text},
  };
  static const RawLanguageGroup group("SelectorMenu"_text, table);
  return group;
}

} // namespace

void GuiSelectorMenu::registerTexts() {
  texts();
}

std::vector<GuiSelectorMenu::Entry>
GuiSelectorMenu::entries(const JobLayer::JobMarkedRange& marked) {
  static const Row rows[] = {
      {InsertSeparator, "InsertSeparator"_text, Needs::Mark},
      {DeleteItems, "DeleteItems"_text, Needs::Mark},
      {0, ""_text, Needs::Mark},
      {MoveUpItems, "MoveUpItems"_text, Needs::Mark},
      {MoveDownItems, "MoveDownItems"_text, Needs::Mark},
      {0, ""_text, Needs::Mark},
      {SortItems, "SortItems"_text, Needs::OneRun},
      {ReverseSortItems, "ReverseSortItems"_text, Needs::OneRun},
  };
  std::vector<Entry> entries;
  for (const Row& row : rows) {
    const bool isEnabled = row.needs == Needs::OneRun ? marked.contiguous : marked.first >= 0;
    entries.push_back(
        {row.id, row.id ? texts().text(row.key) : RawString(), row.id != 0 && isEnabled});
  }
  return entries;
}

} // namespace AppLayer
