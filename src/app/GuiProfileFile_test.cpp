#include "app/GuiProfileFile.h"

#include "AppTestBed.h"

#include <gtest/gtest.h>

namespace {

using AppLayer::GuiProfileFile;
using RawLayer::RawLanguage;
using WinLayer::WindowMetrics;

class GuiProfileFileTest : public testing::Test {
 protected:
  void SetUp() override { WindowMetrics::instance() = WindowMetrics(); }
  void load(const std::string& lines) { profile.load(bed.folder().write("gui.ini", lines)); }
  AppTestBed bed;
  GuiProfileFile profile;
  const WindowMetrics& metrics = WindowMetrics::instance();
};

TEST_F(GuiProfileFileTest, AMissingSectionKeepsEveryDefault) {
  load("");
  EXPECT_EQ(metrics.margin, 4);
  EXPECT_EQ(metrics.frameMargin, 2);
  EXPECT_EQ(metrics.captionHeight, 12);
  EXPECT_EQ(metrics.buttonSeparator, 7);
  EXPECT_EQ(metrics.selectorSeparator, 5);
  EXPECT_EQ(metrics.baseIconSize, 32);
  EXPECT_EQ(metrics.buttonIconSize, 16);
  EXPECT_EQ(metrics.menuIconSize, 16);
}

TEST_F(GuiProfileFileTest, EveryMeasureIsRead) {
  load("[WindowParameter]\nMargin=1\nFrameMargin=2\nCaptionHeight=3\nButtonSeparator=4\n"
       "SelectorSeparator=5\nBaseIconSize=6\nButtonIconSize=7\nMenuIconSize=8\n");
  EXPECT_EQ(metrics.margin, 1);
  EXPECT_EQ(metrics.frameMargin, 2);
  EXPECT_EQ(metrics.captionHeight, 3);
  EXPECT_EQ(metrics.buttonSeparator, 4);
  EXPECT_EQ(metrics.selectorSeparator, 5);
  EXPECT_EQ(metrics.baseIconSize, 6);
  EXPECT_EQ(metrics.buttonIconSize, 7);
  EXPECT_EQ(metrics.menuIconSize, 8);
}

TEST_F(GuiProfileFileTest, MenuAndTipFollowTheWindowFontUntilTheyHaveSections) {
  load("[WindowFont]\nHeight=-12\nFaceName=One\n");
  EXPECT_EQ(metrics.windowFont.valueOf(raw("FaceName")), raw("One"));
  EXPECT_EQ(metrics.menuFont.valueOf(raw("FaceName")), raw("One"));
  EXPECT_EQ(metrics.tipFont.valueOf(raw("Height")), raw("-12"));

  load("[WindowFont]\nFaceName=One\n[MenuFont]\nFaceName=Two\n[TipFont]\nFaceName=Three\n");
  EXPECT_EQ(metrics.menuFont.valueOf(raw("FaceName")), raw("Two"));
  EXPECT_EQ(metrics.tipFont.valueOf(raw("FaceName")), raw("Three"));
}

TEST_F(GuiProfileFileTest, TheUsersLanguageWinsOverTheInitialOne) {
  RawLanguage& language = RawLanguage::instance();
  language.setSelection(raw("de"));
  load("");
  EXPECT_EQ(language.selection(), raw("de"));
  load("[UserSelection]\nLanguage=ja\n");
  EXPECT_EQ(language.selection(), raw("ja"));
  EXPECT_EQ(language.section(), raw("ja"));
  load("[UserSelection]\nLanguage=\n"); // automatic
  EXPECT_TRUE(language.selection().isEmpty());
}

} // namespace
