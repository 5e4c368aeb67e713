#include "win/WinInputLayout.h"

#include <algorithm>

namespace WinLayer {

namespace {

constexpr int32_t LeastEditWidth = 100;

} // namespace

void WinInputLayout::compute() {
  placeFields();
  placeButtons();
  joinAreas();
}

// A prompt that is wider than the rows widens the edit boxes, never the labels.
void WinInputLayout::placeFields() {
  int32_t labelWidth = 0;
  int32_t editWidth = LeastEditWidth;
  int32_t hintWidth = 0;
  for (const Row& row : rows) {
    labelWidth = std::max(labelWidth, row.label.width);
    editWidth = std::max(editWidth, row.edit.width);
    if (hintWidth == 0) hintWidth = std::max(row.hint.width, 0);
  }
  const int32_t needed = margin + labelWidth + editWidth + hintWidth;
  const int32_t total = std::max(needed, prompt.width);
  editWidth += total - needed;

  promptRect = {0, 0, total, prompt.height};
  int32_t top = prompt.height > 0 ? prompt.height + margin : 0;
  int32_t bottom = prompt.height;
  for (Row& row : rows) {
    bottom = top + std::max(row.label.height, row.edit.height);
    row.labelRect = {0, top, labelWidth, bottom};
    row.editRect = {total - hintWidth - editWidth, top, total - hintWidth, bottom};
    row.hintRect = {total - hintWidth, top, total, bottom};
    top = bottom + margin;
  }
  fields = {total, bottom};
}

void WinInputLayout::placeButtons() {
  buttons = {finish.width + cancel.width, std::max(finish.height, cancel.height)};
  finishRect = {0, 0, finish.width, buttons.height};
  cancelRect = {finish.width, 0, buttons.width, buttons.height};
}

void WinInputLayout::joinAreas() {
  const int32_t width = std::max(fields.width, buttons.width);
  fieldsArea = WinRect{0, 0, width, fields.height}.movedBy(margin, margin);
  buttonsArea = WinRect{0, 0, width, buttons.height}.movedBy(margin, fieldsArea.bottom + margin);
  client = {buttonsArea.right + margin, buttonsArea.bottom + margin};
}

} // namespace WinLayer
