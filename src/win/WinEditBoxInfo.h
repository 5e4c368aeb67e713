// WinEditBoxInfo: the text of an edit box with its caret, its selection and its one step of undo.
// Every editing operation is here and touches no window; what has to be measured or told to others
// goes through the Drawer.
//
// Positions and lengths count 16-bit units; a position beyond the text is cut back to its length. A
// line end of a multi-line text is CR LF; a single-line text is one line whatever it holds. The
// operations do not ask whether the box is read-only: whoever takes the user's input does.
// Belongs to one thread. Nothing fails.
#pragma once

#include "raw/RawString.h"
#include "win/WinRect.h"

namespace WinLayer {

class WinEditBoxInfo {
 public:
  using RawRange = RawLayer::RawRange;
  using RawString = RawLayer::RawString;

  // Measures lines, in pixels, and hears of changes.
  class Drawer {
   public:
    virtual ~Drawer() = default;
    // The width of a range that begins at the start of a line and stays within that line.
    virtual int32_t textWidth(RawRange range) = 0;
    // The position in the line that is nearest to the pixel offset from the line's left.
    virtual int32_t positionAt(RawRange line, int32_t offset) = 0;
    // The text is another one; the caret stands at the start of what has changed.
    virtual void onTextChanged() = 0;
  };

  enum Flag : uint16_t {
    MultiLine = 0x0001,
    ReadOnly = 0x0002,
    NoInputMethod = 0x0004,
    TabMovesFocus = 0x0008, // Tab is left to the dialog and inserts nothing
    HasCancel = 0x0010,     // in the menu
    Marked = 0x0020,        // frame in the marked colour
    SteadyCaret = 0x0040,   // the caret does not blink
    OpensHints = 0x0080,    // Down in a single-line box asks the parent for the hints
    ContextAttached = 0x0100,
    InputMethodOpen = 0x0200,
    Dragging = 0x0800, // with the left button
  };

  RawString text{RawLayer::EncodingWide};
  int32_t caret = 0;
  int32_t anchor = 0;                         // the selection's other end
  int32_t wantedColumn = -1;                  // pixels that Up and Down keep; -1 for none
  int32_t changeCount = 0;                    // goes up with each change of the text
  RawString undoText{RawLayer::EncodingWide}; // what the last change took away
  int32_t undoStart = 0;                      // and the range that it put in
  int32_t undoEnd = 0;
  RawString lastComposed{RawLayer::EncodingWide}; // by the input method
  bool composing = false;
  RawRange composition; // the running text of the input method
  int32_t lineHeight = 0;
  int32_t lineGap = 1;
  int32_t scrollX = 0; // where the text begins in the client area
  int32_t scrollY = 0;
  uint16_t flags = 0;

  explicit WinEditBoxInfo(Drawer& drawer) : drawer_(drawer) {}
  [[nodiscard]] bool has(Flag flag) const { return (flags & flag) != 0; }
  void setFlag(Flag flag, bool value);

  // --- Text and selection
  // Another text, any encoding, from outside: no change that could be undone. Caret and anchor are
  // cut back.
  void setText(const RawString& newText);
  void select(int32_t newAnchor, int32_t newCaret);
  [[nodiscard]] RawRange selection() const; // from the lower end to the upper
  [[nodiscard]] RawString selectedText() const;

  // --- Edits; each makes the new undo record and leaves the caret behind the new text
  // Nothing happens when both are empty.
  void replace(RawRange range, const RawString& newText); // any encoding
  void insert(const RawString& newText);                  // in place of the selection
  void eraseBack();    // the selection, or the step before the caret
  void eraseForward(); // the selection, or the step behind the caret
  void eraseSelection();
  [[nodiscard]] bool canUndo() const;
  // Swaps the last change with what it took away and selects what came back; again: redoes.
  void undo();

  // --- Moving; `extend` leaves the anchor where it is
  [[nodiscard]] int32_t stepBack(int32_t position) const; // over a line end in one, see the source
  [[nodiscard]] int32_t stepForward(int32_t position) const;
  void moveTo(int32_t position, bool extend);
  void moveLeft(bool extend); // to the left end of a selection that is not extended
  void moveRight(bool extend);
  void moveRows(int32_t rows, bool extend); // keeps wantedColumn; nothing beyond the first and last

  // --- Lines and words
  [[nodiscard]] RawRange lineOf(int32_t position) const;  // without its line end
  [[nodiscard]] int32_t rowOf(int32_t position) const;    // from 0
  [[nodiscard]] RawRange lineOfRow(int32_t row) const;    // the last line beyond the rows
  [[nodiscard]] RawRange lineBehind(RawRange line) const; // the next; its start -1 for the last
  [[nodiscard]] int32_t rowCount() const;
  // The run of units of one class round the position, within its line.
  [[nodiscard]] RawRange wordAt(int32_t position) const;

  // --- Where things are, in pixels of the client area
  [[nodiscard]] int32_t rowHeight() const { return lineHeight + lineGap; }
  [[nodiscard]] WinPoint pointOf(int32_t position) const;
  [[nodiscard]] int32_t positionAt(WinPoint point) const;
  // Moves the text so that the caret, so many pixels wide, lies in the view. True when it moved.
  bool scrollToCaret(const WinRect& view, int32_t caretWidth);
  // One move of a drag near the left or right edge of the client scrolls. True when it did.
  bool scrollAtEdge(int32_t x, const WinRect& client, int32_t viewLeft);

  // --- The input method
  void beginComposition();                       // takes the selection away
  void putComposition(const RawString& running); // in place of the one before; stays selected
  void putResult(const RawString& result);       // in place of the running text
  void endComposition();                         // drops what was not confirmed
  // The last composed text when it stands directly before the caret, else an empty range there.
  [[nodiscard]] RawRange reconversion() const;

 private:
  [[nodiscard]] bool isLineEnd(int32_t position) const; // CR LF begins there
  [[nodiscard]] int32_t endOfLine(int32_t start) const;
  void splice(RawRange range, const RawString& newText);

  Drawer& drawer_;
};

} // namespace WinLayer
