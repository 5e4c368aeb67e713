#include "gallery/GalleryPage.h"

namespace Gallery {

using namespace WinLayer;
using Draw = WinButtonDraw;

namespace {

constexpr WinSize PageSize{1040, 500};
constexpr int32_t Columns[] = {10, 360, 700};
constexpr int32_t Gap = 8;

// Texts that layouts and fonts must cope with.
const char* const Latin = "Größe, élan, Žluťoučký kůň";
const char* const Japanese = "日本語の表示とカナ";
const char* const Hebrew = "שלום עולם (1)";
const char* const Arabic = "مرحبا بالعالم";

} // namespace

Page::Page() {
  className = "Class_Gallery"_text;
  SetTitle("Gallery"_text);
  style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
  fitToClient(PageSize);
  rect = rect.movedTo(20, 40);
  labels_.add("First"_text, 1);
  labels_.add("Zweite"_text, 2);
  labels_.add("三番目"_text, 3);
}

void Page::OnCreateChildren() {
  int32_t top = faces(Columns[0], Gap);
  top = buttons(Columns[0], top);
  top = rows(Columns[0], top);
  images(Columns[0], top);
  top = statics(Columns[1], Gap);
  planes(Columns[1], top);
  top = edits(Columns[2], Gap);
  top = lists(Columns[2], top);
  edges(Columns[2], top);
}

void Page::OnCreated() {
  SetFocus(firstEdit_->window);
}

int32_t Page::OnCommand(WinView& view, uint32_t code) {
  return code == WinCodeFocusLost ? 0 : WinDialog::OnCommand(view, code);
}

void Page::place(WinView& view, const WinRect& area) {
  view.set(area);
  addChild(view);
}

int32_t Page::caption(const RawString& text, int32_t left, int32_t top) {
  auto& box = keep<WinStaticBox>();
  box.SetTitle(text);
  box.textColour = 0x804000;
  place(box, {left, top, left + 330, top + 18});
  return top + 20;
}

WinButton& Page::button(const RawString& text, uint32_t flags, const WinRect& area) {
  auto& view = keep<WinButton>();
  view.SetUp(text, flags, 0);
  place(view, area);
  return view;
}

WinEditBox& Page::edit(const RawString& text, uint16_t flags, const WinRect& area) {
  auto& view = keep<WinEditBox>();
  view.info.flags = static_cast<uint16_t>(view.info.flags | flags);
  view.SetTitle(text);
  place(view, area);
  return view;
}

// --- The groups

int32_t Page::faces(int32_t left, int32_t top) {
  top = caption("Faces: rounded, square, framed, left cell"_text, left, top);
  auto& sheet = keep<FaceSheet>();
  place(sheet, {left, top, left + FaceSheet::Size.width + 10, top + FaceSheet::Size.height});
  return top + FaceSheet::Size.height + Gap;
}

int32_t Page::buttons(int32_t left, int32_t top) {
  top = caption("Buttons: plain, two lines, pressed, disabled, checked, hints"_text, left, top);
  const auto at = [&](int32_t index, int32_t row) {
    const int32_t x = left + index * 84;
    const int32_t y = top + row * 48;
    return WinRect{x, y, x + 78, y + 42};
  };
  button("Finish"_text, Draw::CornersAll, at(0, 0));
  button("Check\\nAll"_text, Draw::CornersAll, at(1, 0));
  SendMessageW(button("Pressed"_text, Draw::CornersAll, at(2, 0)).window, BM_SETSTATE, TRUE, 0);
  EnableWindow(button("Disabled"_text, Draw::CornersAll, at(3, 0)).window, FALSE);
  button("Checked"_text, Draw::CornersAll | Draw::Toggle, at(0, 1)).checked = true;
  button(RawString::fromChars("日本語"), Draw::CornersAll, at(1, 1));
  auto& edited = edit(RawString::fromChars("filled by the hint"), 0,
                      {at(2, 1).left, at(2, 1).top, at(3, 1).left + 40, at(2, 1).top + 22});
  auto& arrow = keep<WinHintButton>();
  arrow.Connect(edited, 0, 0);
  arrow.FitToContent();
  place(arrow, WinRect{0, 0, arrow.windowWidth, arrow.windowHeight}.movedTo(at(3, 1).left + 42,
                                                                            at(3, 1).top));
  return at(0, 2).top + Gap;
}

int32_t Page::rows(int32_t left, int32_t top) {
  top = caption("Rows of cells: choice, titled with a disabled cell, answers"_text, left, top);
  const auto add = [&](WinRadioButtonBody& row, const RawString& title, int32_t& value) {
    row.SetTitle(title);
    row.SetUp(labels_, value);
    row.FitToContent();
    place(row, WinRect{0, 0, row.windowWidth, row.windowHeight}.movedTo(left, top));
    top += row.windowHeight + Gap;
  };
  add(keep<WinRadioButtonBody>(), RawString(), values_[0]);
  auto& titled = keep<WinRadioButtonBody>();
  titled.enabledCells = enabledCells_;
  values_[1] = 1;
  add(titled, "Title "_text, values_[1]);
  add(keep<WinSelectorButton>(), RawString(), values_[2]);
  return top + Gap;
}

int32_t Page::statics(int32_t left, int32_t top) {
  top = caption("Texts: sides and heights, bands, wrapped, disabled, scripts"_text, left, top);
  const struct {
    const char* text;
    uint16_t fit;
    COLORREF background;
    COLORREF second;
    int32_t width;
    int32_t height;
  } boxes[] = {
      {"left top", TextLeft | TextTop, 0xFFFFFF, WinNoColour, 100, 40},
      {"centre middle", TextCentre | TextMiddle, 0xFFFFFF, WinNoColour, 100, 40},
      {"right bottom", TextRight | TextBottom, 0xFFFFFF, WinNoColour, 100, 40},
      {"two bands", TextCentre | TextMiddle, 0xFFE0C0, 0xC0E0FF, 100, 40},
      {"two\nlines & more", TextLeft | TextMiddle, 0xE0FFE0, WinNoColour, 100, 40},
      {"disabled", TextCentre | TextMiddle, 0xFFFFFF, WinNoColour, 100, 40},
      {Latin, TextLeft | TextMiddle, 0xFAFFF5, WinNoColour, 156, 24},
      {Japanese, TextLeft | TextMiddle, 0xFAFFF5, WinNoColour, 156, 24},
      {Hebrew, TextRight | TextMiddle, 0xFAFFF5, WinNoColour, 156, 24},
      {Arabic, TextRight | TextMiddle, 0xFAFFF5, WinNoColour, 156, 24},
      {"A wrapped text is broken between its words where the box ends, and goes on in the next "
       "line.",
       TextLeft | TextTop | TextWrapped, 0xFFFFFF, WinNoColour, 318, 44},
  };
  int32_t x = left;
  int32_t bottom = top;
  for (const auto& each : boxes) {
    if (x + each.width > left + 330) {
      x = left;
      top = bottom + 6;
    }
    bottom = top + each.height;
    auto& box = keep<WinStaticBox>();
    box.SetTitle(RawString::fromChars(each.text));
    box.fitFlags = each.fit;
    box.background = each.background;
    box.secondBackground = each.second;
    place(box, {x, top, x + each.width, top + each.height});
    if (box.GetTitle().equals("disabled"_text)) EnableWindow(box.window, FALSE);
    x += each.width + 6;
  }
  return bottom + Gap;
}

int32_t Page::images(int32_t left, int32_t top) {
  top = caption("Images: icons of the system, and none"_text, left, top);
  const LPCWSTR names[] = {IDI_QUESTION, IDI_EXCLAMATION, IDI_INFORMATION, IDI_ERROR};
  int32_t x = left;
  for (size_t i = 0; i < std::size(icons_); ++i) {
    icons_[i].setShared(LoadIconW(nullptr, names[i]), {32, 32});
    auto& box = keep<WinImageBox>();
    box.icon = &icons_[i];
    box.FitToContent();
    place(box, WinRect{0, 0, box.windowWidth, box.windowHeight}.movedTo(x, top));
    x += box.windowWidth + Gap;
  }
  place(keep<WinImageBox>(), {x, top, x + 36, top + 36});
  return top + 36 + Gap;
}

int32_t Page::edits(int32_t left, int32_t top) {
  top = caption("Edit boxes: focus, marked, input method, read-only, lines"_text, left, top);
  const struct {
    const char* text;
    uint16_t flags;
  } singles[] = {{Latin, WinEditBoxInfo::SteadyCaret},
                 {Japanese, WinEditBoxInfo::Marked},
                 {Hebrew, WinEditBoxInfo::InputMethodOpen},
                 {"read-only", WinEditBoxInfo::ReadOnly}};
  int32_t index = 0;
  for (const auto& each : singles) {
    const int32_t x = left + index % 2 * 166;
    WinEditBox& box =
        edit(RawString::fromChars(each.text), each.flags, {x, top, x + 160, top + 24});
    if (!firstEdit_) firstEdit_ = &box;
    if (index++ % 2) top += 30;
  }
  auto& lines = edit(RawString::fromChars("Several lines\r\nof a text\r\nمرحبا 日本語 ü"),
                     WinEditBoxInfo::MultiLine, {left, top, left + 326, top + 60});
  lines.setSelection(8, 20);
  return top + 66 + Gap;
}

int32_t Page::lists(int32_t left, int32_t top) {
  top = caption("Lists: one mark, several with header and footer"_text, left, top);
  int32_t x = left;
  for (const bool several : {false, true}) {
    auto& list = keep<TextList>();
    list.hasHeaders = several;
    list.setFlag(WinListBoxTarget::MultipleSelection, several);
    list.setFlag(WinListBoxTarget::HeaderFixed, several);
    for (const char* text : {"First row", Latin, Japanese, "", Hebrew, Arabic, "Row six",
                             "Row seven", "Row eight", "Row nine"})
      list.addRow(text);
    place(list, {x, top, x + 160, top + 140});
    list.SetCursorRow(1);
    if (several) {
      list.unitAt(2)->mark(true);
      list.hotIndex = 4;
    }
    x += 166;
  }
  return top + 140 + Gap;
}

int32_t Page::planes(int32_t left, int32_t top) {
  top = caption("Planes: larger and smaller than their view"_text, left, top);
  auto& large = keep<GridPlane>();
  place(large, {left, top, left + 160, top + 130});
  SendMessageW(large.window, WM_VSCROLL, SB_LINEDOWN, 0);
  auto& small = keep<GridPlane>();
  small.wanted = {90, 70};
  place(small, {left + 166, top, left + 326, top + 130});
  return top + 130 + Gap;
}

int32_t Page::edges(int32_t left, int32_t top) {
  top = caption("Edge buttons: plain, hover, press, maximised"_text, left, top);
  const struct {
    WinEdgeButtons::Kind kind;
    bool hovered;
    bool pressed;
    bool maximised;
  } looks[] = {{WinEdgeButtons::Close, false, false, false},
               {WinEdgeButtons::Close, true, false, false},
               {WinEdgeButtons::Close, true, true, true},
               {WinEdgeButtons::Minimize, true, false, true}};
  int32_t index = 0;
  for (const auto& each : looks) {
    const int32_t x = left + index % 2 * 166;
    auto& sample = keep<EdgeSample>();
    place(sample, {x, top, x + 160, top + 44});
    sample.setLook(each.kind, each.hovered, each.pressed, each.maximised);
    if (index++ % 2) top += 50;
  }
  return top + Gap;
}

// --- TipPage

TipPage::TipPage() {
  className = "Class_GalleryTip"_text;
  SetTitle("Gallery"_text);
  style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
  fitToClient({300, 200});
  rect = rect.movedTo(400, 300);
}

} // namespace Gallery
