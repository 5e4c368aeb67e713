// The window never asks for its content's size in the course of a resize: growth is computed from
// the boxes before the window is moved, and the anchors of the two areas do the rest.
#include "app/GuiMainDialog.h"

#include "app/GuiMainCommands.h"
#include "app/GuiMenuDraw.h"
#include "app/GuiProfileFile.h"
#include "app/LauncherOptions.h"
#include "job/JobExecutionRecord.h"
#include "job/JobIconControl.h"
#include "job/JobWindowContext.h"
#include "job/LauncherData.h"
#include "raw/RawShell.h"
#include "raw/RawSystem.h"

namespace AppLayer {

using JobLayer::JobExecutionRecord;
using JobLayer::JobExecutorPair;
using JobLayer::JobIconControl;
using JobLayer::JobWindowContext;
using RawLayer::RawParameterUnit;
using WinLayer::WindowMetrics;
using WinLayer::WinFitRect;
using WinLayer::WinView;

namespace {

constexpr uint16_t StretchAll = WinFitRect::LeftByLeft | WinFitRect::RightByRight |
                                WinFitRect::TopByTop | WinFitRect::BottomByBottom;
constexpr uint16_t StayRight = WinFitRect::LeftByRight | WinFitRect::RightByRight |
                               WinFitRect::TopByTop | WinFitRect::BottomByBottom;

// The place in the gui profile.
struct PlaceKey {
  const char* key;
  int32_t WinRect::*side;
};
constexpr PlaceKey PlaceKeys[] = {
    {"WindowRect_L", &WinRect::left},
    {"WindowRect_T", &WinRect::top},
    {"WindowRect_R", &WinRect::right},
    {"WindowRect_B", &WinRect::bottom},
};

const RawString& placeSection() {
  return "MainDialog"_text;
}

WinSize fitted(WinView& box) {
  box.FitToContent();
  return {box.windowWidth, box.windowHeight};
}

WinSize measured(WinView& box) {
  WinRect content;
  box.MeasureText(content);
  return {content.width(), content.height()};
}

// Of the program's own popup menu, which is a window of the platform's.
void repaintOpenMenu() {
  if (!JobWindowContext::instance().menuOpen.isSet()) return;
  if (const HWND menu = FindWindowW(L"#32768", nullptr)) InvalidateRect(menu, nullptr, FALSE);
}

WinSize sizeOf(const WinRect& rect) {
  return {rect.width(), rect.height()};
}

} // namespace

GuiMainDialog::GuiMainDialog()
    : WinEnterControl(static_cast<WinView&>(*this)), titleMenu_(*this),
      edges_(*this, WinLayer::EdgeMove | WinLayer::EdgeSystemMenu | WinLayer::EdgePaint |
                        WinLayer::EdgeCloseButton),
      selectors_(JobLayer::LauncherData::instance().selectors),
      buttons_(JobLayer::LauncherData::instance().buttons) {
  className = productName();
  bigIconId = BigIconId;
  smallIconId = SmallIconId;
  addHook(edges_);
  addHook(static_cast<WinEnterControl&>(*this));
}

GuiMainDialog::~GuiMainDialog() = default;

// --- Before the window stands

void GuiMainDialog::Prepare() {
  const LauncherOptions& options = LauncherOptions::instance();
  computeLayout();
  SetTitle(productName());
  style = WS_POPUP | WS_SYSMENU;
  extendedStyle = options.sysTray ? WS_EX_TOOLWINDOW : 0;

  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const WinRect place = GuiLayout::centred(sizeOf(client.rect), WinLayer::rectOf(work));
  fitToClient(sizeOf(client.rect));
  set(rect.movedBy(place.left, place.top));
  bindAreas();

  // A way out for a window that lies beyond any screen. A fresh process may not have been told of
  // the key yet, so the keyboard itself is asked too.
  if (RawLayer::isKeyDown(VK_SHIFT) || RawLayer::isKeyDownNow(VK_SHIFT)) return;
  restorePlace();
}

void GuiMainDialog::computeLayout() {
  const LauncherOptions& options = LauncherOptions::instance();
  const WindowMetrics& metrics = WindowMetrics::instance();
  layout_.mode = GuiLayout::modeOf(options.horizontal, options.viewSelector);
  layout_.frameMargin = metrics.frameMargin;
  layout_.captionHeight = metrics.captionHeight;

  selectors_.fill();
  const WinSize selectorSize = showsSelectors() ? fitted(selectors_) : WinSize{};
  const GuiLayout::Places places = layout_.places(selectorSize, fitted(buttons_));
  selectorArea_.set(places.selectors);
  buttonArea_.set(places.buttons);
  edges_.edgeButtons.buttonWidth = places.edgeButton.width;
  edges_.edgeButtons.buttonHeight = places.edgeButton.height;
  edges_.edgeButtons.glyphWidth = places.glyph.width;
  edges_.edgeButtons.glyphHeight = places.glyph.height;
  client.set({0, 0, places.client.width, places.client.height});
}

void GuiMainDialog::bindAreas() {
  selectorArea_.bind(&client, StretchAll);
  buttonArea_.bind(&client, showsSelectors() ? StayRight : StretchAll);
  selectors_.set(selectorArea_.rect);
  selectors_.bind(&selectorArea_, StretchAll);
  buttons_.set(buttonArea_.rect);
  buttons_.bind(&buttonArea_, StretchAll);
}

// Right and bottom are kept for the reader of the file; the size is the content's.
void GuiMainDialog::restorePlace() {
  RawParameterList list;
  if (!GuiProfileFile::instance().loadSection(list, placeSection())) return;
  WinRect stored;
  for (const PlaceKey& each : PlaceKeys)
    stored.*each.side = optionInteger(list.valueOf(RawString::fromChars(each.key)));
  set(rect.movedTo(stored.left, stored.top));
}

// --- The window comes and goes

void GuiMainDialog::OnCreateChildren() {
  const LauncherOptions& options = LauncherOptions::instance();
  if (showsSelectors()) addChild(selectors_);
  addChild(buttons_);
  if (options.topMost) SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
  if (options.sysTray) tray_.show(window, BigIconId, GetTitle());
}

void GuiMainDialog::OnCreated() {
  JobWindowContext::instance().dialog = this;
  selectors_.SetCursorRow(0); // a selection like any other: its script may end the launcher
  if (!window) return;
  selectors_.invalidate();
  JobIconControl::instance().open(this);
}

// A script of this window's may be running still: from here on it finds no main dialog. Its dialogs
// may take the WM_QUIT for theirs, so the loop of this one ends by the missing window.
void GuiMainDialog::OnDestroyed() {
  stopIcons();
  tray_.hide();
  JobIconControl& icons = JobIconControl::instance();
  icons.cache.evict(LauncherOptions::instance().iconUnusedCount);
  icons.cache.save();
  JobWindowContext::instance().dialog = nullptr;
  window = nullptr;
}

void GuiMainDialog::stopIcons() {
  const JobExecutionRecord record(JobExecutorPair::system(), JobExecutorPair::executor(),
                                  "Terminate"_text);
  JobIconControl::instance().stop();
}

void GuiMainDialog::OnShowState(int32_t oldState, int32_t) {
  if (oldState != Normal) return;
  RawParameterList list;
  for (const PlaceKey& each : PlaceKeys)
    list.set(RawString::fromChars(each.key), RawString::fromInt64(normalRect.*each.side));
  GuiProfileFile::instance().saveSection(list, placeSection());
}

// The old process does nothing further: the new one ends it.
void GuiMainDialog::restart() {
  tray_.hide();
  stopIcons();
  OnShowState(Normal, Destroying);
  RawLayer::RawShell(RawLayer::moduleName())
      .execute(LauncherOptions::instance().commandLine(), RawString::emptyStatic());
}

// --- Messages

int32_t GuiMainDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_KEYDOWN:
    if (wParam != VK_TAB) break;
    focusFirstBox();
    return 0;
  case WM_MEASUREITEM:
    if (wParam != 0) break; // of a menu's entries only
    GuiMenuDraw::MeasureMenuItem(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
    return 1;
  case WM_DRAWITEM:
    if (wParam != 0) break;
    GuiMenuDraw::DrawMenuItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return 1;
  case GuiTray::CallbackMessage:
    if (lParam == WM_LBUTTONDOWN || lParam == WM_RBUTTONDOWN) openTrayMenu();
    return 0;
  default:
    break;
  }
  return WinDialog::OnMessage(message, wParam, lParam);
}

void GuiMainDialog::focusFirstBox() const {
  SetFocus(showsSelectors() ? selectors_.window : buttons_.window);
}

// The window must be in front for the menu to close when the user presses elsewhere, and needs a
// message of its own behind it for the next one to open.
void GuiMainDialog::openTrayMenu() const {
  POINT point{};
  const HWND self = window;
  const HMENU menu = GetSystemMenu(self, FALSE);
  GetCursorPos(&point);
  SetForegroundWindow(self);
  const BOOL chosen =
      TrackPopupMenuEx(menu, TPM_RIGHTBUTTON | TPM_RETURNCMD, point.x, point.y, self, nullptr);
  PostMessageW(self, WM_NULL, 0, 0);
  PostMessageW(self, WM_SYSCOMMAND, static_cast<WPARAM>(chosen), 0);
}

int32_t GuiMainDialog::OnChildNotify(uint32_t code) {
  dispatchCommand(code);
  return owner ? owner->OnCommand(*this, code) : -1;
}

int32_t GuiMainDialog::OnCommand(WinView&, uint32_t code) {
  if (code != WinLayer::WinCodeEscape) dispatchCommand(code);
  return 0;
}

void GuiMainDialog::dispatchCommand(uint32_t code) {
  switch (code) {
  case MainCommandRestart:
    restart();
    break;
  case MainCommandSelectorsChanged:
    followSelectors();
    break;
  case MainCommandButtonsChanged:
    followButtons();
    break;
  case MainCommandRepaint:
    invalidate();
    JobIconControl::instance().cache.save();
    break;
  case MainCommandRepaintMenu:
    repaintOpenMenu();
    JobIconControl::instance().cache.save();
    break;
  default:
    break;
  }
}

// --- Size

bool GuiMainDialog::OnMinMaxInfo(WinSize&, WinSize&) {
  return true;
}

void GuiMainDialog::OnResized() {
  if (showsSelectors()) selectorArea_.ApplyAnchors();
  buttonArea_.ApplyAnchors();
  if (showsSelectors() && selectors_.ApplyAnchors()) selectors_.moveWindow(false);
  if (buttons_.ApplyAnchors()) buttons_.moveWindow(false);
}

void GuiMainDialog::followSelectors() {
  growBy(growthWithSelectors());
}

// In selector mode both boxes first give way by what the anchors will add, so that the list keeps
// its width and the buttons take the change.
void GuiMainDialog::followButtons() {
  if (!showsSelectors()) {
    growBy(
        GuiLayout::growth({sizeOf(buttons_.clientRect()), buttons_.margins, measured(buttons_)}));
    return;
  }
  const WinSize delta = growthWithSelectors();
  selectors_.rect.right -= delta.width;
  buttons_.rect.left -= delta.width;
  selectors_.moveWindow(false);
  buttons_.moveWindow(false);
  growBy(delta);
}

WinSize GuiMainDialog::growthWithSelectors() {
  const GuiLayout::Box selectors{sizeOf(selectors_.clientRect()), selectors_.margins,
                                 selectors_.itemExtent()};
  const GuiLayout::Box buttons{sizeOf(buttons_.clientRect()), buttons_.margins, measured(buttons_)};
  return GuiLayout::growthWithSelectors(selectors, buttons);
}

void GuiMainDialog::growBy(WinSize delta) {
  rect = windowRect();
  rect.right += delta.width;
  rect.bottom += delta.height;
  moveWindow(true);
}

} // namespace AppLayer
