#include "win/WinInfoDialog.h"

#include "win/WindowMetrics.h"

namespace WinLayer {

using RawLayer::RawLabelUnit;

namespace {

constexpr uint16_t BigIcon = 130;

// To the sides of what they follow.
constexpr uint16_t UpperAnchors = 0x1111; // stretched with the client
constexpr uint16_t LowerAnchors = 0x1112; // at its right side, stretched in height
constexpr uint16_t ImageAnchors = 0x2121; // at the left top of the upper block
constexpr uint16_t TextAnchors = 0x2111;  // the same, stretched in width
constexpr uint16_t RowAnchors = 0x1212;   // at the right bottom of the lower block

WinSize fittedSize(WinView& view) {
  view.FitToContent();
  return {view.windowWidth, view.windowHeight};
}

} // namespace

WinInfoDialog::WinInfoDialog() {
  className = "Class_InfoDialog"_text;
  bigIconId = BigIcon;
  style = WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;
  extendedStyle = WS_EX_TOOLWINDOW;
  image_.icon = &icon_;
  text_.fitFlags = TextLeft | TextMiddle;
  for (WinView* child : {static_cast<WinView*>(&image_), static_cast<WinView*>(&text_),
                         static_cast<WinView*>(&row_)})
    child->styleParent = this;
}

void WinInfoDialog::Prepare(const RawString& title, const RawString& text,
                            const RawLayer::RawLabelList& answers, uint16_t iconId, int32_t initial,
                            const WinRect& centreOn) {
  loadIcon(iconId);
  SetTitle(title);
  text_.SetTitle(text);
  answers_ = RawLayer::RawLabelList();
  for (const RawLabelUnit& answer : answers.elements()) {
    if (answer.label.isEmpty()) break;
    answers_.add(answer.label, answer.value);
  }
  value_ = initial;
  row_.SetUp(answers_, value_);

  const WinSize image = icon_.handle() ? fittedSize(image_) : WinSize{};
  place(WinInfoLayout::of(image, fittedSize(text_), fittedSize(row_),
                          WindowMetrics::instance().margin));
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  set(placedInMiddle({rect.width(), rect.height()}, centreOn, rectOf(work)));
}

void WinInfoDialog::loadIcon(uint16_t iconId) {
  icon_.setShared(iconId ? LoadIconW(nullptr, MAKEINTRESOURCEW(iconId)) : nullptr,
                  {GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON)});
}

void WinInfoDialog::place(const WinInfoLayout& layout) {
  fitToClient(layout.client);
  upper_.set(layout.upper);
  upper_.bind(&client, UpperAnchors);
  lower_.set(layout.lower);
  lower_.bind(&client, LowerAnchors);
  image_.set(layout.image);
  image_.bind(&upper_, ImageAnchors);
  text_.set(layout.text);
  text_.bind(&upper_, TextAnchors);
  row_.set(layout.row);
  row_.bind(&lower_, RowAnchors);
}

void WinInfoDialog::OnCreateChildren() {
  isFinished_ = false;
  if (icon_.handle()) addChild(image_);
  addChild(text_);
  addChild(row_);
}

void WinInfoDialog::OnCreated() {
  if (row_.window) SetFocus(row_.window);
}

void WinInfoDialog::OnResized() {
  upper_.ApplyAnchors();
  lower_.ApplyAnchors();
  for (WinView* child : {static_cast<WinView*>(&image_), static_cast<WinView*>(&text_),
                         static_cast<WinView*>(&row_)}) {
    const WinRect before = child->rect;
    child->ApplyAnchors();
    if (child->rect != before) child->moveWindow(true); // the first size is that of the set-up
  }
}

// What is offered already is the rule: the window shrinks by no more than it has grown.
bool WinInfoDialog::OnMinMaxInfo(WinSize&, WinSize&) {
  return true;
}

// The answers have the focus from the first activation on, so they are painted once.
int32_t WinInfoDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_SETFOCUS:
    if (!row_.window) break;
    SetFocus(row_.window);
    return 0;
  case WM_COPYDATA:
    finish(WinSelectorButton::numberIn(lParam));
    return 1;
  default:
    break;
  }
  return WinDialog::OnMessage(message, wParam, lParam);
}

int32_t WinInfoDialog::OnCommand(WinView& view, uint32_t code) {
  if (code != WinSelectorButton::Chosen) return WinDialog::OnCommand(view, code);
  finish(value_);
  return 0;
}

void WinInfoDialog::finish(int32_t answer) {
  if (isFinished_ || !window) return;
  isFinished_ = true;
  result = answer;
  DestroyWindow(window);
}

} // namespace WinLayer
