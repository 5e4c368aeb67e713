#include "app/GuiMenuDraw.h"

#include "app/GuiMenuRules.h"
#include "job/JobIconControl.h"
#include "job/JobMenuList.h"
#include "win/WinFont.h"
#include "win/WinText.h"
#include "win/WinViewParts.h"
#include "win/WindowMetrics.h"

namespace AppLayer {

using JobLayer::JobIconControl;
using JobLayer::JobMenuList;
using JobLayer::JobMenuUnit;
using WinLayer::WindowMetrics;
using WinLayer::WinFont;
using WinLayer::WinRect;
using WinLayer::WinSelect;
using WinLayer::WinViewStyle;

namespace {

constexpr int32_t WidestTitle = 32767;
constexpr UINT MeasureFormat = DT_SINGLELINE | DT_NOPREFIX;
constexpr UINT TitleFormat = MeasureFormat | DT_VCENTER;

// Null when there is no entry of that item data.
const JobMenuUnit* unitOf(ULONG_PTR itemData) {
  static const JobMenuUnit separator(JobMenuUnit::TypeSeparator, 0, {});
  const auto id = static_cast<int32_t>(itemData);
  return id == 0 ? &separator : JobMenuList::instance().findId(id);
}

COLORREF groundColour(UINT state) {
  static const COLORREF normal = GuiMenuRules::normalColour(GetSysColor(COLOR_MENU));
  const bool isSelected = (state & ODS_SELECTED) && !(state & ODS_DISABLED);
  return isSelected ? GuiMenuRules::SelectedColour : normal;
}

} // namespace

void GuiMenuDraw::MeasureMenuItem(MEASUREITEMSTRUCT& item) {
  const JobMenuUnit* unit = unitOf(item.itemData);
  if (!unit) return;
  const WinLayer::WinWindowDc dc(nullptr);
  const WinSelect font(dc.get(), WinFont::menu().handle());
  const WinRect title =
      WinLayer::measureText(dc.get(), unit->title, {0, 0, WidestTitle, WidestTitle}, MeasureFormat);
  const WinLayer::WinSize size = GuiMenuRules::entrySize({title.width(), title.height()},
                                                         WindowMetrics::instance().menuIconSize,
                                                         unit->type == JobMenuUnit::TypeSeparator);
  item.itemWidth = static_cast<UINT>(size.width);
  item.itemHeight = static_cast<UINT>(size.height);
}

void GuiMenuDraw::DrawMenuItem(const DRAWITEMSTRUCT& item) {
  const JobMenuUnit* unit = unitOf(item.itemData);
  if (!unit) return;
  const int32_t iconSize = WindowMetrics::instance().menuIconSize;
  SetBkMode(item.hDC, TRANSPARENT);
  const WinSelect font(item.hDC, WinFont::menu().handle());
  const WinRect entry = WinLayer::rectOf(item.rcItem);
  WinLayer::fillRect(item.hDC, entry, groundColour(item.itemState));
  if (unit->type == JobMenuUnit::TypeSeparator) return;
  const WinRect inner = GuiMenuRules::innerRect(entry);
  if (unit->icon >= 0)
    JobIconControl::instance().draw(unit->icon, item.hDC, GuiMenuRules::iconRect(inner, iconSize));
  SetTextColor(item.hDC, WinViewStyle::windowTextColour());
  WinLayer::drawText(item.hDC, unit->title, GuiMenuRules::titleRect(inner, iconSize), TitleFormat);
}

} // namespace AppLayer
