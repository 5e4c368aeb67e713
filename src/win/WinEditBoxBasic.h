// WinEditBoxBasic: what the user's keys do to the text of an edit box, and the operations that its
// keys, its menu and dropped files share. No window is touched here. A read-only text is never
// changed by them; it can still be selected and copied.
//
// Belongs to one thread. The filter stays the caller's.
#pragma once

#include "raw/RawStringList.h"
#include "win/WinEditBoxInfo.h"

namespace WinLayer {

// What an edit box tells its parent: codes of a WM_COMMAND with its identifier.
inline constexpr uint32_t WinEditEnter = 0x1002;
inline constexpr uint32_t WinEditHint = 0x1003; // the hints are wanted
inline constexpr uint32_t WinEditEscape = 0x1004;
inline constexpr uint32_t WinEditChanged = 0x1006; // the text, by whomever
inline constexpr uint32_t WinEditDropped = 0x1007; // files have been dropped

class WinEditBoxBasic {
 public:
  using RawString = RawLayer::RawString;

  // Turns the clipboard's text into the text to insert.
  class TextFilter {
   public:
    virtual RawString textToInsert(const RawString& text) = 0;

   protected:
    ~TextFilter() = default;
  };

  WinEditBoxInfo info;
  TextFilter* pasteFilter = nullptr; // of a single-line box; null for none

  virtual ~WinEditBoxBasic() = default;
  WinEditBoxBasic(const WinEditBoxBasic&) = delete;
  WinEditBoxBasic& operator=(const WinEditBoxBasic&) = delete;

  // A key that went down, by its virtual number; `control` without Alt. False when the box has no
  // use for it.
  bool pressKey(uint32_t virtualKey, bool shift, bool control);
  // A character of the keyboard: the low 8 bits of its code. Control characters insert nothing.
  void typeCharacter(uint32_t code);

  void undo();
  void copy() const; // nothing without a selection
  void paste();
  void erase(); // the selection
  void selectAll();
  void insertTab();
  // The paths, a blank between them, become the text; the parent is told.
  void dropPaths(const RawLayer::RawStringList& paths);

 protected:
  explicit WinEditBoxBasic(WinEditBoxInfo::Drawer& drawer) : info(drawer) {}
  virtual void tellParent(uint32_t code) = 0;

 private:
  struct Press {
    bool shift;
    bool control;
  };
  struct KeyRule {
    uint32_t key;
    bool needsControl;
    bool (WinEditBoxBasic::*act)(Press);
  };
  static const KeyRule keyRules[];

  [[nodiscard]] bool isMultiLine() const { return info.has(WinEditBoxInfo::MultiLine); }
  [[nodiscard]] bool isReadOnly() const { return info.has(WinEditBoxInfo::ReadOnly); }
  void insertTyped(const RawString& text); // unless read-only
  bool onBackspace(Press press);
  bool onDelete(Press press);
  bool onDeleteSelection(Press press);
  bool onTab(Press press);
  bool onEnter(Press press);
  bool onLineEnd(Press press);
  bool onEscape(Press press);
  bool onLeft(Press press);
  bool onRight(Press press);
  bool onUp(Press press);
  bool onDown(Press press);
  bool onHome(Press press);
  bool onEnd(Press press);
  bool onSelectAll(Press press);
  bool onCopy(Press press);
  bool onPaste(Press press);
  bool onUndo(Press press);
};

} // namespace WinLayer
