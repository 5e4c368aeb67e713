#include "app/GuiButtonKeys.h"

#include <cstddef>

namespace AppLayer {

using Action = GuiButtonAction;

namespace {

enum Key : uint32_t {
  Enter = 0x0D,
  Space = 0x20,
  PageUp = 0x21,
  PageDown = 0x22,
  End = 0x23,
  Home = 0x24,
  Left = 0x25,
  Up = 0x26,
  Right = 0x27,
  Down = 0x28,
  Delete = 0x2E,
};

struct Row {
  Key key;
  Action inColumn;
  Action inRow;
};
constexpr Row plainKeys[] = {
    {Enter, Action::Run, Action::Run},
    {Space, Action::Run, Action::Run},
    {PageUp, Action::ToFirst, Action::ToFirst},
    {Home, Action::ToFirst, Action::ToFirst},
    {PageDown, Action::ToLast, Action::ToLast},
    {End, Action::ToLast, Action::ToLast},
    {Up, Action::ToPrevious, Action::ShowMenu},
    {Down, Action::ToNext, Action::ShowMenu},
    {Left, Action::ShowMenu, Action::ToPrevious},
    {Right, Action::ShowMenu, Action::ToNext},
    {Delete, Action::Delete, Action::Delete},
};
constexpr Row altKeys[] = {
    {Up, Action::MoveUp, Action::ShowMenu},   {Down, Action::MoveDown, Action::ShowMenu},
    {Left, Action::ShowMenu, Action::MoveUp}, {Right, Action::ShowMenu, Action::MoveDown},
    {Delete, Action::Delete, Action::Delete},
};

template <std::size_t N>
Action lookUp(const Row (&rows)[N], uint32_t key, bool horizontal) {
  for (const Row& row : rows)
    if (row.key == key) return horizontal ? row.inRow : row.inColumn;
  return Action::None;
}

} // namespace

GuiButtonAction buttonActionOf(uint32_t virtualKey, bool withAlt, bool horizontal) {
  return withAlt ? lookUp(altKeys, virtualKey, horizontal)
                 : lookUp(plainKeys, virtualKey, horizontal);
}

int32_t buttonCursorAfter(const JobLayer::JobButtonList& buttons, int32_t cursor,
                          GuiButtonAction action) {
  switch (action) {
  case Action::ToFirst:
    return buttons.nextUsable(0);
  case Action::ToLast:
    return buttons.previousUsable(buttons.count() - 1);
  case Action::ToPrevious:
    return buttons.previousUsable(cursor - 1);
  case Action::ToNext:
    return buttons.nextUsable(cursor + 1);
  default:
    return -1;
  }
}

} // namespace AppLayer
