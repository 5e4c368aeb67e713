#include "win/WinInputDialog.h"

#include "raw/RawLanguage.h"
#include "win/WindowMetrics.h"

#include <algorithm>

namespace WinLayer {

namespace {

constexpr uint16_t BigIcon = 130;
constexpr uint16_t SmallIcon = 131;
constexpr int32_t WorkAreaShare = 4; // the form is a quarter of it wide

// Anchors: of what stretches, stays at the left, stays at the right; of the two areas.
constexpr uint16_t StretchedAnchors = 0x2111;
constexpr uint16_t LeftAnchors = 0x2121;
constexpr uint16_t RightAnchors = 0x2112;
constexpr uint16_t FieldsAnchors = 0x1111;
constexpr uint16_t ButtonsAnchors = 0x1212;

// The texts of all dialogs that ask for something.
const RawLayer::RawLanguageGroup& messages() {
  static const RawLayer::RawLocaleRecord table[] = {
      {"FinishButton"_text, "Finish"_text},
      {"CancelButton"_text, "Cancel"_text},
      {"CheckAllButton"_text, "Check\\nAll"_text},
      {"UncheckAllButton"_text, "Clear\\nAll"_text},
      {"HiddenButton"_text, "Hidden"_text},
      {"OpenSide"_text, "open"_text},
      {"HintSide"_text, "hint"_text},
      {"InputTextPrompt"_text, "Input text ?"_text},
      {RawString(), RawString()},
  };
  static const RawLayer::RawLanguageGroup group("CommonDialog"_text, table);
  return group;
}

WinRect workArea() {
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  return rectOf(area);
}

WinSize measured(WinView& view) {
  view.FitToContent();
  return {view.windowWidth, view.windowHeight};
}

void place(WinView& view, const WinRect& rect, const WinFitRect& area, uint16_t anchors) {
  view.set(rect);
  view.bind(&area, anchors);
}

} // namespace

void WinInputDialog::registerTexts() {
  messages();
}

WinInputDialog::WinInputDialog() {
  className = "Class_InputDialog"_text;
  bigIconId = BigIcon;
  smallIconId = SmallIcon;
  style |= WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;
  extendedStyle |= WS_EX_TOOLWINDOW;
}

// --- Filling

void WinInputDialog::Prepare(const WinRect& rectangle, const RawString& title,
                             const WinInputParameterList& fields) {
  fields_ = fields;
  prompt_ = fields.prompt;
  SetTitle(title.isEmpty() ? "Input text."_text : title);
  promptBox_.SetTitle(prompt_);
  rowCount_ = 0;
  for (const WinInputParameterUnit& unit : fields_.elements())
    if (rowCount_ < RowLimit) fillRow(rowCount_++, unit);
  finishButton_.SetUp(messages().text("FinishButton"_text), WinButtonDraw::CornersAll,
                      CommandFinish);
  cancelButton_.SetUp(messages().text("CancelButton"_text), WinButtonDraw::CornersAll,
                      CommandCancel);

  defaultWidth_ = workArea().width() / WorkAreaShare;
  measureParts();
  placeParts();
  set(rect.movedTo(rectangle.left + (rectangle.width() - rect.width()) / 2,
                   rectangle.top + (rectangle.height() - rect.height()) / 2));
}

void WinInputDialog::fillRow(int32_t row, const WinInputParameterUnit& unit) {
  labels_[row].SetTitle(unit.label);
  labels_[row].fitFlags = TextLeft | TextMiddle;

  WinEditBox& edit = edits_[row];
  edit.SetTitle(unit.initial);
  edit.extendedStyle |= WS_EX_CLIENTEDGE | WS_EX_ACCEPTFILES;
  edit.setReadOnly((unit.flags & WinInputParameterUnit::ReadOnly) != 0);
  edit.info.setFlag(WinEditBoxInfo::TabMovesFocus, true);
  if (unit.flags & WinInputParameterUnit::NoHint) return;
  edit.info.setFlag(WinEditBoxInfo::OpensHints, true);
  hintButtons_[row].Connect(edit, CommandHintPress, CommandHintChosen);
  hintButtons_[row].SetLabels(unit.hints);
}

void WinInputDialog::measureParts() {
  layout_.margin = WindowMetrics::instance().margin;
  if (!prompt_.isEmpty()) layout_.prompt = measured(promptBox_);
  for (int32_t row = 0; row < rowCount_; ++row) {
    const WinSize hint = hintButtons_[row].edit ? measured(hintButtons_[row]) : WinSize{};
    layout_.rows.push_back({measured(labels_[row]), measured(edits_[row]), hint});
  }
  layout_.finish = measured(finishButton_);
  layout_.cancel = measured(cancelButton_);
  layout_.compute();
}

// Every part stands in its area as it measured itself; then the areas take their places and the
// parts follow them, as they do at each later size.
void WinInputDialog::placeParts() {
  fieldsArea_.set({0, 0, layout_.fields.width, layout_.fields.height});
  buttonsArea_.set({0, 0, layout_.buttons.width, layout_.buttons.height});
  place(promptBox_, layout_.promptRect, fieldsArea_, StretchedAnchors);
  for (int32_t row = 0; row < rowCount_; ++row) {
    const WinInputLayout::Row& parts = layout_.rows[static_cast<size_t>(row)];
    place(labels_[row], parts.labelRect, fieldsArea_, LeftAnchors);
    place(edits_[row], parts.editRect, fieldsArea_, StretchedAnchors);
    place(hintButtons_[row], parts.hintRect, fieldsArea_, RightAnchors);
  }
  place(finishButton_, layout_.finishRect, buttonsArea_, ButtonsAnchors);
  place(cancelButton_, layout_.cancelRect, buttonsArea_, ButtonsAnchors);

  fieldsArea_.set(layout_.fieldsArea);
  buttonsArea_.set(layout_.buttonsArea);
  client.set({0, 0, layout_.client.width, layout_.client.height});
  fieldsArea_.bind(&client, FieldsAnchors);
  buttonsArea_.bind(&client, ButtonsAnchors);
  applyAnchors();
  fitToClient({defaultWidth_, layout_.client.height});
  applyAnchors();
}

template <class Act>
void WinInputDialog::forEachPart(Act act) {
  act(promptBox_);
  for (int32_t row = 0; row < rowCount_; ++row) {
    act(labels_[row]);
    act(edits_[row]);
    act(hintButtons_[row]);
  }
  act(finishButton_);
  act(cancelButton_);
}

void WinInputDialog::applyAnchors() {
  fieldsArea_.ApplyAnchors();
  buttonsArea_.ApplyAnchors();
  forEachPart([](WinView& part) { part.ApplyAnchors(); });
}

void WinInputDialog::MeasureText(WinRect& area) {
  area = {0, 0, layout_.client.width, layout_.client.height};
}

// --- The window

void WinInputDialog::OnCreateChildren() {
  hasEnded_ = false;
  if (!prompt_.isEmpty()) addChild(promptBox_);
  for (int32_t row = 0; row < rowCount_; ++row) {
    addChild(labels_[row]);
    addChild(edits_[row]);
    if (hintButtons_[row].edit) addChild(hintButtons_[row]);
  }
  addChild(finishButton_);
  addChild(cancelButton_);
}

void WinInputDialog::OnCreated() {
  if (rowCount_ > 0) SetFocus(edits_[0].window);
}

void WinInputDialog::OnResized() {
  applyAnchors();
  forEachPart([](const WinView& part) { part.moveWindow(true); });
}

bool WinInputDialog::OnMinMaxInfo(WinSize& shrink, WinSize&) {
  const WinRect inner = clientRect();
  shrink.width = std::max(inner.width() - layout_.client.width, 0);
  shrink.height = std::max(inner.height() - layout_.client.height, 0);
  return true;
}

// --- Notifications

void WinInputDialog::copyTexts() {
  int32_t row = 0;
  for (WinInputParameterUnit& unit : fields_.elements()) {
    if (row == rowCount_) return;
    unit.value = edits_[row++].GetTitle();
  }
}

int32_t WinInputDialog::rowOfEdit(const WinView& view) const {
  for (int32_t row = 0; row < rowCount_; ++row)
    if (&view == &edits_[row]) return row;
  return -1;
}

int32_t WinInputDialog::OnCommand(WinView& view, uint32_t code) {
  copyTexts();
  const int32_t row = rowOfEdit(view);
  if ((&view == &finishButton_ && code == CommandFinish) || (row >= 0 && code == WinEditEnter))
    endOnce(Finished);
  else if ((&view == &cancelButton_ && code == CommandCancel) ||
           (row >= 0 && code == WinEditEscape))
    endOnce(Cancelled);
  else if (row >= 0 && code == WinEditHint)
    hintButtons_[row].ShowMenu(true);
  return 0;
}

void WinInputDialog::endOnce(Result outcome) {
  if (hasEnded_) return;
  hasEnded_ = true;
  result = outcome;
  DestroyWindow(window);
}

} // namespace WinLayer
