#include "app/GuiLayout.h"

#include <gtest/gtest.h>

using AppLayer::GuiLayout;
using WinLayer::WinRect;
using WinLayer::WinSize;

namespace {

GuiLayout layoutOf(GuiLayout::Mode mode) {
  GuiLayout layout;
  layout.mode = mode;
  return layout;
}

} // namespace

TEST(GuiLayout, ARowNeverHasSelectors) {
  EXPECT_EQ(GuiLayout::modeOf(false, false), GuiLayout::Column);
  EXPECT_EQ(GuiLayout::modeOf(false, true), GuiLayout::Selectors);
  EXPECT_EQ(GuiLayout::modeOf(true, false), GuiLayout::Row);
  EXPECT_EQ(GuiLayout::modeOf(true, true), GuiLayout::Row);
}

TEST(GuiLayout, ColumnStandsBelowItsStrip) {
  const GuiLayout::Places places = layoutOf(GuiLayout::Column).places({77, 88}, {100, 240});
  EXPECT_EQ(places.buttons, (WinRect{3, 15, 103, 255}));
  EXPECT_EQ(places.client, (WinSize{106, 258}));
  EXPECT_EQ(places.edgeButton, (WinSize{66, 13}));
  EXPECT_EQ(places.glyph, (WinSize{9, 9}));
  EXPECT_EQ(places.selectors, WinRect{});
}

TEST(GuiLayout, RowHasItsStripAtTheRightEnd) {
  const GuiLayout::Places places = layoutOf(GuiLayout::Row).places({77, 88}, {400, 25});
  EXPECT_EQ(places.buttons, (WinRect{3, 3, 403, 28}));
  EXPECT_EQ(places.client, (WinSize{419, 31}));
  EXPECT_EQ(places.edgeButton, (WinSize{13, 16}));
  EXPECT_EQ(places.glyph, WinSize{});
  EXPECT_EQ(places.selectors, WinRect{});
}

TEST(GuiLayout, SelectorsStandLeftOfTheButtonsAndBothAreAsHighAsTheHigher) {
  const GuiLayout::Places places = layoutOf(GuiLayout::Selectors).places({60, 300}, {100, 240});
  EXPECT_EQ(places.selectors, (WinRect{3, 15, 63, 315}));
  EXPECT_EQ(places.buttons, (WinRect{65, 15, 165, 315}));
  EXPECT_EQ(places.client, (WinSize{168, 318}));
  EXPECT_EQ(places.edgeButton, (WinSize{66, 13})) << "from the button box's width alone";
  EXPECT_EQ(places.glyph, (WinSize{9, 9}));

  const GuiLayout::Places lower = layoutOf(GuiLayout::Selectors).places({60, 30}, {100, 240});
  EXPECT_EQ(lower.selectors.height(), 240);
  EXPECT_EQ(lower.buttons.height(), 240);
}

TEST(GuiLayout, MeasuresComeFromTheProfile) {
  GuiLayout layout = layoutOf(GuiLayout::Selectors);
  layout.frameMargin = 5;
  layout.captionHeight = 20;
  const GuiLayout::Places places = layout.places({50, 40}, {70, 80});
  EXPECT_EQ(places.selectors, (WinRect{6, 26, 56, 106}));
  EXPECT_EQ(places.buttons, (WinRect{61, 26, 131, 106}));
  EXPECT_EQ(places.client, (WinSize{137, 112}));
  EXPECT_EQ(places.edgeButton, (WinSize{46, 21}));
  EXPECT_EQ(places.glyph, (WinSize{17, 17}));

  layout.mode = GuiLayout::Row;
  EXPECT_EQ(layout.places({}, {70, 80}).client, (WinSize{103, 92}));
  layout.mode = GuiLayout::Column;
  EXPECT_EQ(layout.places({}, {70, 80}).client, (WinSize{82, 112}));
}

TEST(GuiLayout, AnEmptyLauncherIsItsFrameAndStrip) {
  EXPECT_EQ(layoutOf(GuiLayout::Column).places({}, {8, 0}).client, (WinSize{14, 18}));
  EXPECT_EQ(layoutOf(GuiLayout::Row).places({}, {0, 24}).client, (WinSize{19, 30}));
}

TEST(GuiLayout, GrowthWithSelectorsAddsBothWidthsAndTakesTheGreaterHeight) {
  const GuiLayout::Box selectors{{62, 240}, {1, 1, 1, 1}, {80, 120}};
  const GuiLayout::Box buttons{{100, 240}, {}, {90, 264}};
  // 0 - 162 + 2 + 90 + 80; 264 against 122, and 240 in use.
  EXPECT_EQ(GuiLayout::growthWithSelectors(selectors, buttons), (WinSize{10, 24}));
}

TEST(GuiLayout, GrowthIsNegativeWhenTheContentShrinks) {
  const GuiLayout::Box selectors{{62, 240}, {1, 1, 1, 1}, {60, 230}};
  const GuiLayout::Box buttons{{100, 240}, {}, {80, 24}};
  EXPECT_EQ(GuiLayout::growthWithSelectors(selectors, buttons), (WinSize{-20, -8}));
}

TEST(GuiLayout, NoSelectorIsNarrowerThanTen) {
  const GuiLayout::Box selectors{{12, 24}, {1, 1, 1, 1}, {0, 0}};
  const GuiLayout::Box buttons{{50, 24}, {}, {50, 24}};
  EXPECT_EQ(GuiLayout::growthWithSelectors(selectors, buttons), (WinSize{0, 0}));
}

TEST(GuiLayout, GrowthWithoutSelectorsIsThatOfTheButtonBox) {
  EXPECT_EQ(GuiLayout::growth({{100, 240}, {1, 2, 3, 4}, {110, 216}}), (WinSize{14, -18}));
  EXPECT_EQ(GuiLayout::growth({{100, 240}, {}, {100, 240}}), (WinSize{0, 0}));
}

TEST(GuiLayout, CentredTruncatesItsHalves) {
  EXPECT_EQ(GuiLayout::centred({101, 50}, {0, 0, 200, 101}), (WinRect{49, 25, 150, 75}));
  EXPECT_EQ(GuiLayout::centred({100, 100}, {-800, 20, 0, 620}), (WinRect{-450, 270, -350, 370}));
  // Larger than the area: the half of what is over, truncated towards zero.
  EXPECT_EQ(GuiLayout::centred({105, 10}, {0, 0, 100, 10}).left, -2);
}
