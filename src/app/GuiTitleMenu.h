// GuiTitleMenu: what the title menu holds, as plain data in the order of its positions, and what
// its entries mean. Whoever shows the menu inserts the entries from the top; texts are in the
// language of the user.
#pragma once

#include "raw/RawParameterList.h"
#include "raw/RawStringList.h"
#include "win/WinRect.h"

#include <vector>

namespace AppLayer {

using RawLayer::RawParameterList;
using RawLayer::RawString;
using RawLayer::RawStringList;

struct GuiTitleEntry {
  enum Kind : uint8_t { Text, Separator, Submenu };
  Kind kind = Text;
  uint32_t id = 0;
  RawString text;
  bool isEnabled = true;
  bool isChecked = false;
  std::vector<GuiTitleEntry> entries; // of a submenu
};

class GuiTitleMenu {
 public:
  // Ids of the system commands.
  enum Id : uint32_t {
    Version = 0x100C,
    ViewHelp = 0x100D,
    MoveToPrimaryScreen = 0x100E,
    OpenGuiProfile = 0x100F,
    SelectWindowFont = 0x1010,
    SelectMenuFont = 0x1011,
    SelectTipFont = 0x1012,
    OpenLogFolder = 0x1013,
    FirstHelpFile = 0x1014,
    SelectLanguage = 0x1033, // also the automatic language
    FirstLanguage = 0x1034,
  };
  static constexpr uint32_t MaxHelpFiles = 30;
  static constexpr uint32_t MaxLanguages = 29;

  static void registerTexts(); // makes them known to the catalogue
  // All entries: `documents` are full paths, `languages` has their names as keys, `selection` is
  // the user's own choice, empty for the automatic one.
  static std::vector<GuiTitleEntry> entries(const RawStringList& documents,
                                            const RawParameterList& languages,
                                            const RawString& selection);
  // The help file of an id; empty when the id is none of a help file's or there are too few.
  static RawString helpFileOf(uint32_t id, const RawStringList& documents);
  static bool isLanguageId(uint32_t id);
  // The name of the language of an id; empty for the automatic one and beyond the list.
  static RawString languageOf(uint32_t id, const RawParameterList& languages);
  // The window in the middle of the work area, with its size; one that is larger shows its left
  // top corner.
  static WinLayer::WinRect centred(const WinLayer::WinRect& window,
                                   const WinLayer::WinRect& workArea);
};

} // namespace AppLayer
