// The text of an edit box: random edits, moves and compositions beside a plain model over
// std::u16string.
//
// The first byte says whether the text has lines; then each step takes a byte for what is done and
// those that it needs.
#include "EditBoxBed.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using namespace WinLayer;
using RawLayer::RawRange;
using RawLayer::RawString;

namespace {

constexpr int32_t MostUnits = 300;
constexpr char16_t Alphabet[] = u"ab1_ .\t\u3042\u6F22\u30AB\u00E9\xD83D\xDE00";
constexpr int32_t Letters = 13;

void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

class Input {
 public:
  Input(const uint8_t* data, std::size_t size) : data_(data), left_(size) {}
  [[nodiscard]] bool isEnded() const { return left_ == 0; }
  uint8_t byte() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }
  // From below the start of a text of that length to behind its end.
  int32_t place(int32_t length) { return byte() % (length + 5) - 2; }
  std::u16string text() {
    std::u16string units;
    for (int32_t count = byte() % 8; count > 0; --count) {
      const int32_t chosen = byte() % (Letters + 4);
      if (chosen < Letters)
        units += Alphabet[chosen];
      else if (chosen == Letters)
        units += u'\r';
      else if (chosen == Letters + 1)
        units += u'\n';
      else
        units += u"\r\n";
    }
    return units;
  }

 private:
  const uint8_t* data_;
  std::size_t left_;
};

// The same box, written down the long way.
struct Model {
  std::u16string text;
  int caret = 0;
  int anchor = 0;
  int column = -1;
  int changes = 0;
  std::u16string taken;
  int putStart = 0;
  int putEnd = 0;
  bool hasLines = false;

  struct Line {
    int start;
    int end;
  };

  [[nodiscard]] int length() const { return static_cast<int>(text.size()); }
  [[nodiscard]] int within(int place) const {
    return place < 0 ? 0 : place > length() ? length() : place;
  }
  [[nodiscard]] std::u16string part(int from, int to) const {
    return text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
  }
  [[nodiscard]] std::vector<Line> lines() const {
    std::vector<Line> found;
    int start = 0;
    if (hasLines) {
      for (std::size_t at = text.find(u"\r\n"); at != std::u16string::npos;
           at = text.find(u"\r\n", at + 2)) {
        found.push_back({start, static_cast<int>(at)});
        start = static_cast<int>(at) + 2;
      }
    }
    found.push_back({start, length()});
    return found;
  }
  [[nodiscard]] int row(int place) const {
    const std::vector<Line> all = lines();
    int found = 0;
    while (found + 1 < static_cast<int>(all.size()) &&
           all[static_cast<std::size_t>(found) + 1].start <= place)
      ++found;
    return found;
  }
  [[nodiscard]] Line line(int row) const { return lines()[static_cast<std::size_t>(row)]; }

  void choose(int from, int to) {
    anchor = within(from);
    caret = within(to);
  }
  void replace(int from, int to, const std::u16string& with) {
    const int start = within(from);
    const int end = within(to) < start ? start : within(to);
    if (start == end && with.empty()) return;
    taken = part(start, end);
    text = part(0, start) + with + part(end, length());
    putStart = start;
    putEnd = caret = anchor = start + static_cast<int>(with.size());
    ++changes;
  }
  [[nodiscard]] int low() const { return caret < anchor ? caret : anchor; }
  [[nodiscard]] int high() const { return caret < anchor ? anchor : caret; }
  [[nodiscard]] int before(int place) const {
    if (place <= 2) return place > 0 ? place - 1 : 0;
    return part(place - 2, place) == u"\r\n" ? place - 2 : place - 1;
  }
  [[nodiscard]] int behind(int place) const {
    if (place + 2 <= length() && part(place, place + 2) == u"\r\n") return place + 2;
    return place < length() ? place + 1 : place;
  }
  void erase(int from, int to) {
    if (caret != anchor)
      replace(low(), high(), u"");
    else
      replace(from, to, u"");
  }
  void undo() {
    if (taken.empty() && putStart == putEnd) return;
    const std::u16string back = taken;
    const int start = putStart;
    replace(putStart, putEnd, back);
    choose(start, start + static_cast<int>(back.size()));
  }
  void go(int place, bool extend) { choose(extend ? anchor : place, place); }
  void goRows(int rows, bool extend) {
    const int now = row(caret);
    const Line from = line(now);
    const int offset = caret - from.start;
    if (column < 0) column = offset * EditBoxRuler::UnitWidth;
    const int wanted = now + rows;
    if (wanted < 0 || wanted >= static_cast<int>(lines().size())) return go(caret, extend);
    const Line to = line(wanted);
    const int units = column / EditBoxRuler::UnitWidth;
    go(to.start + (units < to.end - to.start ? units : to.end - to.start), extend);
  }
};

RawString wide(const std::u16string& text) {
  return RawString::fromWide(text.data(), static_cast<int32_t>(text.size()));
}

class Pair {
 public:
  explicit Pair(bool hasLines) {
    box_.info.setFlag(WinEditBoxInfo::MultiLine, hasLines);
    model_.hasLines = hasLines;
  }

  void step(Input& input) {
    const uint8_t what = input.byte();
    const bool extend = what >= 128;
    switch (what % 16) {
    case 0:
    case 1:
      insert(input.text());
      break;
    case 2:
      box_.info.eraseBack();
      model_.erase(model_.before(model_.caret), model_.caret);
      break;
    case 3:
      box_.info.eraseForward();
      model_.erase(model_.caret, model_.behind(model_.caret));
      break;
    case 4:
      box_.info.eraseSelection();
      model_.replace(model_.low(), model_.high(), u"");
      break;
    case 5:
      box_.info.undo();
      model_.undo();
      break;
    case 6:
    case 7:
      moveSideways(what % 16 == 7, extend);
      break;
    case 8:
    case 9: {
      const int rows = what % 16 == 8 ? -1 : 1;
      box_.info.moveRows(rows, extend);
      model_.goRows(rows, extend);
      break;
    }
    case 10: {
      const int32_t place = input.place(model_.length());
      box_.info.moveTo(place, extend);
      model_.go(place, extend);
      box_.info.wantedColumn = model_.column = -1;
      break;
    }
    case 11: {
      const int32_t from = input.place(model_.length());
      const int32_t to = input.place(model_.length());
      box_.info.select(from, to);
      model_.choose(from, to);
      break;
    }
    case 12: {
      const int32_t from = input.place(model_.length());
      const int32_t to = input.place(model_.length());
      const std::u16string with = input.text();
      box_.info.replace({from, to}, wide(with));
      model_.replace(from, to, with);
      break;
    }
    case 13:
      setText(input.text());
      break;
    case 14:
      compose(input, extend);
      break;
    default:
      ask(input.place(model_.length()));
      break;
    }
    compare();
  }

 private:
  void insert(const std::u16string& units) {
    if (model_.length() > MostUnits) return;
    box_.info.insert(wide(units));
    model_.replace(model_.low(), model_.high(), units);
  }
  void moveSideways(bool right, bool extend) {
    right ? box_.info.moveRight(extend) : box_.info.moveLeft(extend);
    const bool collapses = !extend && model_.caret != model_.anchor;
    if (right)
      model_.go(collapses ? model_.high() : model_.behind(model_.caret), extend);
    else
      model_.go(collapses ? model_.low() : model_.before(model_.caret), extend);
  }
  void setText(const std::u16string& units) {
    box_.info.setText(wide(units));
    model_.text = units;
    model_.taken.clear();
    model_.putStart = model_.putEnd = 0;
    model_.column = -1;
    ++model_.changes;
    model_.choose(model_.anchor, model_.caret);
  }
  // A whole composition: two running texts, and perhaps a result.
  void compose(Input& input, bool confirms) {
    box_.info.beginComposition();
    model_.replace(model_.low(), model_.high(), u"");
    const int start = model_.caret;
    int end = start;
    for (int i = 0; i < 2; ++i) {
      const std::u16string running = input.text();
      box_.info.putComposition(wide(running));
      model_.replace(start, end, running);
      end = start + static_cast<int>(running.size());
      model_.choose(start, end);
      compare();
    }
    if (confirms) {
      const std::u16string result = input.text();
      box_.info.putResult(wide(result));
      model_.replace(start, end, result);
      end = start;
      const RawRange again = box_.info.reconversion();
      check(again.size() == static_cast<int>(result.size()), "the result can be had again");
    }
    box_.info.endComposition();
    if (start != end) model_.replace(start, end, u"");
    check(!box_.info.composing, "the composition has ended");
  }
  void ask(int32_t place) {
    const int inside = model_.within(place);
    const int row = model_.row(inside);
    const Model::Line line = model_.line(row);
    check(box_.info.rowOf(place) == row, "row of a place");
    check(box_.info.lineOf(place) == RawRange{line.start, line.end}, "line of a place");
    check(box_.info.lineOfRow(row) == RawRange{line.start, line.end}, "line of a row");
    check(box_.info.stepBack(inside) == model_.before(inside), "step back");
    check(box_.info.stepForward(inside) == model_.behind(inside), "step forward");
    const RawRange word = box_.info.wordAt(place);
    check(word.start >= line.start && word.end <= line.end && word.start <= word.end,
          "a word stays in its line");
    check(word.start < word.end || line.start == line.end, "a line has words");
    if (inside <= line.end) {
      const WinPoint point = box_.info.pointOf(inside);
      check(box_.info.positionAt(point) == inside, "a place is where it is shown");
    }
  }
  void compare() const {
    const WinEditBoxInfo& info = box_.info;
    check(box_.text() == model_.text, "text");
    check(info.text.wide()[info.text.length()] == 0, "terminator");
    check(info.caret == model_.caret && info.anchor == model_.anchor, "selection");
    check(info.wantedColumn == model_.column, "column");
    check(info.changeCount == model_.changes && box_.ruler.changes == model_.changes, "changes");
    check(info.rowCount() == static_cast<int>(model_.lines().size()), "rows");
    check(info.canUndo() == (!model_.taken.empty() || model_.putStart != model_.putEnd), "undo");
  }

  EditBoxBed box_;
  Model model_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  Input input(data, size);
  Pair pair(input.byte() % 2 == 1);
  while (!input.isEnded()) pair.step(input);
  return 0;
}
