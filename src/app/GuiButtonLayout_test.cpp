#include "app/GuiButtonLayout.h"

#include "TestText.h"

#include <gtest/gtest.h>

using namespace AppLayer;

namespace {

constexpr uint16_t Title = JobButtonUnit::ShowTitle;
constexpr uint16_t Icon = JobButtonUnit::HasIcon;
constexpr uint16_t Hidden = JobButtonUnit::IsHidden;
constexpr uint16_t Separator = JobButtonUnit::IsSeparator;

// Each unit of a title is 7 pixels wide and 11 high.
WinSize measure(const RawString& text) {
  return {text.length() * 7, 11};
}

class GuiButtonLayoutTest : public testing::Test {
 protected:
  JobButtonList buttons;
  GuiButtonLayout layout;

  JobButtonUnit& add(uint16_t flags, const std::string& title = "") {
    JobButtonUnit* unit = buttons.add(raw(title));
    unit->flags = flags;
    unit->title = raw(title);
    return *unit;
  }
  WinSize arranged() {
    layout.measureAll(buttons, measure);
    return layout.arrange(buttons);
  }
  [[nodiscard]] WinRect rect(int32_t index) const {
    return GuiButtonLayout::rectOf(*buttons.at(index));
  }
  [[nodiscard]] WinSize contentSize(int32_t index) const {
    return {buttons.at(index)->width, buttons.at(index)->height};
  }
  [[nodiscard]] int32_t hit(int32_t x, int32_t y) const {
    return GuiButtonLayout::hitTest(buttons, {x, y});
  }
  // Three buttons and a separator: widths of contents 21, -, 56, 16.
  void addSome() {
    add(Title, "abc");
    add(Separator, "-");
    add(Title | Icon, "defgh");
    add(Icon, "icon");
  }
};

} // namespace

// --- Measuring

TEST_F(GuiButtonLayoutTest, AContentIsAsWideAsItsPartsAndAsHighAsItsTitle) {
  add(Title, "abc");
  add(Icon, "abc");
  add(Icon | Title, "abc");
  add(Separator, "-");
  add(Hidden | Title, "abc");
  layout.iconSize = 20;
  arranged();
  EXPECT_EQ(contentSize(0), (WinSize{21, 11}));
  EXPECT_EQ(contentSize(1), (WinSize{20, 20}));
  EXPECT_EQ(contentSize(2), (WinSize{21 + 3 + 20, 11}));
  EXPECT_EQ(contentSize(3), (WinSize{0, 0}));
  EXPECT_EQ(contentSize(4), (WinSize{0, 0}));
}

TEST_F(GuiButtonLayoutTest, AUnitWithoutTitleAndIconKeepsItsExtent) {
  JobButtonUnit& unit = add(0, "abc");
  unit.width = 33;
  unit.height = 44;
  arranged();
  EXPECT_EQ(contentSize(0), (WinSize{33, 44}));
}

// --- Column

TEST_F(GuiButtonLayoutTest, InAColumnAllButtonsHaveTheWidthOfTheWidest) {
  addSome();
  EXPECT_EQ(arranged(), (WinSize{54 + 8, 24 + 7 + 24 + 24}));
  EXPECT_EQ(rect(0), (WinRect{0, 0, 62, 24}));
  EXPECT_EQ(rect(1), (WinRect{0, 24, 62, 31}));
  EXPECT_EQ(rect(2), (WinRect{0, 31, 62, 55}));
  EXPECT_EQ(rect(3), (WinRect{0, 55, 62, 79}));
}

TEST_F(GuiButtonLayoutTest, AColumnOfSeparatorsIsEightWide) {
  add(Separator, "-");
  add(Separator, "-");
  EXPECT_EQ(arranged(), (WinSize{8, 14}));
  layout.separator = 5;
  EXPECT_EQ(arranged(), (WinSize{8, 10}));
}

TEST_F(GuiButtonLayoutTest, AnEmptyListIsEightWideOrHasOnlyItsHeight) {
  EXPECT_EQ(arranged(), (WinSize{8, 0}));
  layout.horizontal = true;
  EXPECT_EQ(arranged(), (WinSize{0, 24}));
}

TEST_F(GuiButtonLayoutTest, ARowIsAsHighAsTheIconWhateverTheFont) {
  add(Title, "abc");
  layout.iconSize = 16;
  layout.measureAll(buttons, [](const RawString&) { return WinSize{30, 60}; });
  EXPECT_EQ(layout.arrange(buttons), (WinSize{38, 24}));
  EXPECT_EQ(rect(0), (WinRect{0, 0, 38, 24}));
  EXPECT_EQ(contentSize(0), (WinSize{30, 60}));
}

TEST_F(GuiButtonLayoutTest, AHiddenButtonTakesNoPlaceInAColumn) {
  add(Title, "a");
  add(Hidden | Title, "a very wide title that does not count");
  add(Title, "b");
  EXPECT_EQ(arranged(), (WinSize{15, 48}));
  EXPECT_EQ(rect(1), (WinRect{0, 24, 15, 24}));
  EXPECT_EQ(rect(2), (WinRect{0, 24, 15, 48}));
}

TEST_F(GuiButtonLayoutTest, AHiddenSeparatorTakesNoPlaceEither) {
  add(Hidden | Separator, "-");
  EXPECT_EQ(arranged(), (WinSize{8, 0}));
}

// --- Row

TEST_F(GuiButtonLayoutTest, InARowEachButtonHasItsOwnWidth) {
  layout.horizontal = true;
  addSome();
  EXPECT_EQ(arranged(), (WinSize{29 + 7 + 62 + 24, 24}));
  EXPECT_EQ(rect(0), (WinRect{0, 0, 29, 24}));
  EXPECT_EQ(rect(1), (WinRect{29, 0, 36, 24}));
  EXPECT_EQ(rect(2), (WinRect{36, 0, 98, 24}));
  EXPECT_EQ(rect(3), (WinRect{98, 0, 122, 24}));
}

TEST_F(GuiButtonLayoutTest, AHiddenButtonTakesNoPlaceInARow) {
  layout.horizontal = true;
  add(Title, "a");
  add(Hidden | Title, "b");
  add(Title, "c");
  EXPECT_EQ(arranged(), (WinSize{30, 24}));
  EXPECT_EQ(rect(1), (WinRect{15, 0, 15, 24}));
  EXPECT_EQ(rect(2), (WinRect{15, 0, 30, 24}));
}

// --- What the units cover together

TEST_F(GuiButtonLayoutTest, LaidOutUnitsCoverAllOfTheirSize) {
  for (const bool horizontal : {false, true}) {
    layout.horizontal = horizontal;
    buttons.clear();
    add(Hidden | Title, "h");
    addSome();
    add(Hidden | Title, "h");
    add(Separator, "-");
    EXPECT_EQ(GuiButtonLayout::seamlessSize(buttons), WinSize());
    const WinSize size = arranged();
    EXPECT_EQ(GuiButtonLayout::seamlessSize(buttons), size);
  }
}

TEST_F(GuiButtonLayoutTest, AChangedListHasGapsUntilItIsLaidOutAgain) {
  addSome();
  arranged();
  buttons.erase(buttons.nodeAt(1));
  EXPECT_EQ(GuiButtonLayout::seamlessSize(buttons), WinSize());
  const WinSize size = arranged();
  EXPECT_EQ(GuiButtonLayout::seamlessSize(buttons), size);
  add(Title, "new");
  EXPECT_EQ(GuiButtonLayout::seamlessSize(buttons), WinSize());
}

TEST_F(GuiButtonLayoutTest, AnEmptyListCoversNothing) {
  EXPECT_EQ(GuiButtonLayout::seamlessSize(buttons), WinSize());
}

// --- Hit testing

TEST_F(GuiButtonLayoutTest, AHitTakesAllFourEdgesIn) {
  add(Title, "abc");
  arranged();
  EXPECT_EQ(hit(0, 0), 0);
  EXPECT_EQ(hit(29, 24), 0);
  EXPECT_EQ(hit(30, 24), -1);
  EXPECT_EQ(hit(29, 25), -1);
  EXPECT_EQ(hit(-1, 0), -1);
  EXPECT_EQ(hit(0, -1), -1);
}

TEST_F(GuiButtonLayoutTest, TheFirstOfTwoNeighboursWinsOnTheirEdge) {
  addSome();
  arranged();
  EXPECT_EQ(hit(5, 23), 0);
  EXPECT_EQ(hit(5, 24), 0);
  EXPECT_EQ(hit(5, 25), 1);
  EXPECT_EQ(hit(5, 31), 1);
  EXPECT_EQ(hit(5, 32), 2);
  layout.horizontal = true;
  arranged();
  EXPECT_EQ(hit(29, 5), 0);
  EXPECT_EQ(hit(30, 5), 1);
}

TEST_F(GuiButtonLayoutTest, AHiddenUnitIsHitOnItsLineAheadOfTheNextButton) {
  add(Hidden | Title, "a");
  add(Title, "b");
  arranged();
  EXPECT_EQ(hit(3, 0), 0);
  EXPECT_EQ(hit(3, 1), 1);
  layout.horizontal = true;
  arranged();
  EXPECT_EQ(hit(0, 3), 0);
  EXPECT_EQ(hit(1, 3), 1);
}

TEST_F(GuiButtonLayoutTest, BehindAButtonAHiddenUnitIsNotHit) {
  add(Title, "a");
  add(Hidden | Title, "b");
  arranged();
  EXPECT_EQ(hit(3, 24), 0);
}

TEST_F(GuiButtonLayoutTest, AnEmptyListIsNeverHit) {
  EXPECT_EQ(hit(0, 0), -1);
}

// --- Contents

TEST_F(GuiButtonLayoutTest, ATitleStandsLeftCentredOrRight) {
  add(Title, "abcdef"); // the widest: 42
  add(Title, "abc");    // 21 by 11 in an inner rectangle of (4, 28) to (46, 44)
  arranged();
  layout.align = 0;
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).text, (WinRect{4, 30, 25, 41}));
  layout.align = 1;
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).text, (WinRect{14, 30, 35, 41}));
  layout.align = 2;
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).text, (WinRect{25, 30, 46, 41}));
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).icon, WinRect());
}

TEST_F(GuiButtonLayoutTest, AnIconStandsThreePixelsBeforeItsTitle) {
  add(Title, "abcdefgh"); // 56
  add(Title | Icon, "abc");
  arranged(); // 21 + 3 + 16 = 40 of 56
  layout.align = 0;
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).icon, (WinRect{4, 28, 20, 44}));
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).text, (WinRect{23, 30, 44, 41}));
  layout.align = 1;
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).icon, (WinRect{12, 28, 28, 44}));
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).text, (WinRect{31, 30, 52, 41}));
  layout.align = 2;
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).icon, (WinRect{20, 28, 36, 44}));
}

TEST_F(GuiButtonLayoutTest, AnIconAloneIsPlacedAsATitleIs) {
  add(Title, "abcdef"); // 42
  add(Icon, "abc");
  arranged();
  layout.align = 1;
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).icon, (WinRect{17, 28, 33, 44}));
  layout.align = 2;
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).icon, (WinRect{30, 28, 46, 44}));
  EXPECT_EQ(layout.contentOf(*buttons.at(1)).text, WinRect());
}

// (16 - 21) / 2 is -2, not -3.
TEST_F(GuiButtonLayoutTest, ATitleHigherThanItsRowStandsOutOnBothSidesTruncated) {
  add(Title, "abc");
  layout.measureAll(buttons, [](const RawString&) { return WinSize{10, 21}; });
  layout.arrange(buttons);
  EXPECT_EQ(layout.contentOf(*buttons.at(0)).text, (WinRect{4, 2, 14, 23}));
}
