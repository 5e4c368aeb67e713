#include "app/GuiTitleMenu.h"

#include "TestProfile.h"
#include "TestText.h"

#include <gtest/gtest.h>

using namespace AppLayer;
using WinLayer::WinRect;

namespace {

RawStringList documents(int count) {
  RawStringList list;
  for (int i = 0; i < count; ++i) list.add(raw("C:\\Help\\Manual " + std::to_string(i) + ".pdf"));
  return list;
}

RawParameterList languages(int count) {
  RawParameterList list;
  for (int i = 0; i < count; ++i) list.add(raw("l" + std::to_string(i)));
  return list;
}

std::vector<GuiTitleEntry> menu(int documentCount, int languageCount,
                                const std::string& selection = "") {
  return GuiTitleMenu::entries(documents(documentCount), languages(languageCount), raw(selection));
}

constexpr size_t HelpPosition = 2;
constexpr size_t LanguagePosition = 5;

} // namespace

TEST(GuiTitleMenu, HasItsEntriesInOrder) {
  const struct {
    uint32_t id;
    const char* text;
  } expected[] = {
      {0x100C, "Version 1.37.2024.0907"},
      {0, ""},
      {0x100D, "View help."},
      {0x100E, "Move to primary screen."},
      {0, ""},
      {0x1033, "Select language."},
      {0x100F, "Open gui profile."},
      {0x1010, "Select window font."},
      {0x1011, "Select menu font."},
      {0x1012, "Select tip font."},
      {0x1013, "Open log folder."},
      {0, ""},
  };
  const std::vector<GuiTitleEntry> entries = menu(1, 1);
  ASSERT_EQ(entries.size(), std::size(expected));
  for (size_t i = 0; i < entries.size(); ++i) {
    EXPECT_EQ(entries[i].id, expected[i].id) << i;
    EXPECT_EQ(bytesOf(entries[i].text), expected[i].text) << i;
    const bool isSeparator = expected[i].id == 0;
    EXPECT_EQ(entries[i].kind, isSeparator ? GuiTitleEntry::Separator : GuiTitleEntry::Text) << i;
    EXPECT_FALSE(entries[i].isChecked) << i;
  }
}

TEST(GuiTitleMenu, WithoutAHelpFileViewHelpIsDisabledAndTheVersionIsNot) {
  const std::vector<GuiTitleEntry> entries = menu(0, 0);
  EXPECT_FALSE(entries[HelpPosition].isEnabled);
  EXPECT_EQ(entries[HelpPosition].kind, GuiTitleEntry::Text);
  EXPECT_TRUE(entries[0].isEnabled);
}

TEST(GuiTitleMenu, OneHelpFileIsAPlainEntry) {
  const GuiTitleEntry help = menu(1, 0)[HelpPosition];
  EXPECT_TRUE(help.isEnabled);
  EXPECT_EQ(help.kind, GuiTitleEntry::Text);
  EXPECT_EQ(help.id, 0x100DU);
}

TEST(GuiTitleMenu, SeveralHelpFilesAreASubmenuOfNames) {
  const GuiTitleEntry help = menu(2, 0)[HelpPosition];
  EXPECT_EQ(help.kind, GuiTitleEntry::Submenu);
  EXPECT_TRUE(help.isEnabled);
  ASSERT_EQ(help.entries.size(), 2U);
  EXPECT_EQ(help.entries[0].id, 0x1014U);
  EXPECT_EQ(help.entries[0].text, raw("Manual 0.pdf"));
  EXPECT_EQ(help.entries[1].id, 0x1015U);
  EXPECT_EQ(help.entries[1].text, raw("Manual 1.pdf"));
}

TEST(GuiTitleMenu, OfMoreThanThirtyHelpFilesTheFirstThirtyAreShown) {
  const GuiTitleEntry help = menu(31, 0)[HelpPosition];
  ASSERT_EQ(help.entries.size(), 30U);
  EXPECT_EQ(help.entries.back().id, 0x1031U);
  EXPECT_EQ(help.entries.back().text, raw("Manual 29.pdf"));
}

TEST(GuiTitleMenu, WithFewerThanTwoLanguagesTheirEntryIsDisabled) {
  for (int count : {0, 1}) {
    const GuiTitleEntry entry = menu(0, count)[LanguagePosition];
    EXPECT_FALSE(entry.isEnabled);
    EXPECT_EQ(entry.kind, GuiTitleEntry::Text);
    EXPECT_EQ(entry.id, 0x1033U);
  }
}

TEST(GuiTitleMenu, LanguagesAreASubmenuWithTheAutomaticChoiceOnTop) {
  const GuiTitleEntry entry = menu(0, 2)[LanguagePosition];
  EXPECT_EQ(entry.kind, GuiTitleEntry::Submenu);
  ASSERT_EQ(entry.entries.size(), 3U);
  EXPECT_EQ(entry.entries[0].id, 0x1033U);
  EXPECT_EQ(entry.entries[0].text, raw("(Auto)"));
  EXPECT_TRUE(entry.entries[0].isChecked);
  EXPECT_EQ(entry.entries[1].id, 0x1034U);
  EXPECT_EQ(entry.entries[1].text, raw("l0"));
  EXPECT_FALSE(entry.entries[1].isChecked);
  EXPECT_EQ(entry.entries[2].id, 0x1035U);
}

TEST(GuiTitleMenu, TheUsersLanguageIsChecked) {
  const GuiTitleEntry entry = menu(0, 3, "l1")[LanguagePosition];
  EXPECT_FALSE(entry.entries[0].isChecked);
  EXPECT_FALSE(entry.entries[1].isChecked);
  EXPECT_TRUE(entry.entries[2].isChecked);
  EXPECT_FALSE(entry.entries[3].isChecked);
}

TEST(GuiTitleMenu, NoMoreThan29LanguagesAreShown) {
  const GuiTitleEntry entry = menu(0, 30)[LanguagePosition];
  ASSERT_EQ(entry.entries.size(), 30U);
  EXPECT_EQ(entry.entries.back().id, 0x1050U);
  EXPECT_EQ(entry.entries.back().text, raw("l28"));
}

TEST(GuiTitleMenu, AHelpIdMeansTheFileOfItsIndex) {
  const RawStringList list = documents(2);
  EXPECT_EQ(GuiTitleMenu::helpFileOf(0x100D, list), raw("C:\\Help\\Manual 0.pdf"));
  EXPECT_EQ(GuiTitleMenu::helpFileOf(0x1014, list), raw("C:\\Help\\Manual 0.pdf"));
  EXPECT_EQ(GuiTitleMenu::helpFileOf(0x1015, list), raw("C:\\Help\\Manual 1.pdf"));
  EXPECT_TRUE(GuiTitleMenu::helpFileOf(0x1016, list).isEmpty());
  EXPECT_TRUE(GuiTitleMenu::helpFileOf(0xF060, list).isEmpty());
  EXPECT_TRUE(GuiTitleMenu::helpFileOf(0x1032, documents(31)).isEmpty());
  EXPECT_TRUE(GuiTitleMenu::helpFileOf(0x100D, documents(0)).isEmpty());
}

TEST(GuiTitleMenu, ALanguageIdMeansItsNameAndAnUnknownOneTheAutomaticChoice) {
  const RawParameterList list = languages(2);
  EXPECT_TRUE(GuiTitleMenu::languageOf(0x1033, list).isEmpty());
  EXPECT_EQ(GuiTitleMenu::languageOf(0x1034, list), raw("l0"));
  EXPECT_EQ(GuiTitleMenu::languageOf(0x1035, list), raw("l1"));
  EXPECT_TRUE(GuiTitleMenu::languageOf(0x1036, list).isEmpty());
  EXPECT_FALSE(GuiTitleMenu::isLanguageId(0x1032));
  EXPECT_TRUE(GuiTitleMenu::isLanguageId(0x1033));
  EXPECT_TRUE(GuiTitleMenu::isLanguageId(0x1050));
  EXPECT_FALSE(GuiTitleMenu::isLanguageId(0x1051));
}

TEST(GuiTitleMenu, AWindowGoesToTheMiddleOfTheWorkArea) {
  EXPECT_EQ(GuiTitleMenu::centred({5000, -300, 5101, -199}, {0, 30, 1000, 830}),
            (WinRect{449, 379, 550, 480}));
}

TEST(GuiTitleMenu, AWindowLargerThanTheWorkAreaShowsItsLeftTopCorner) {
  EXPECT_EQ(GuiTitleMenu::centred({0, 0, 1200, 900}, {10, 30, 1010, 830}),
            (WinRect{10, 30, 1210, 930}));
}
