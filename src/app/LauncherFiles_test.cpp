#include "app/LauncherFiles.h"

#include "AppTestBed.h"
#include "raw/RawFile.h"

#include <gtest/gtest.h>

namespace {

using AppLayer::LauncherFiles;
using RawLayer::RawLanguage;
using RawLayer::RawString;

RawString executable(const AppTestBed& bed) {
  return RawLayer::joinPath(bed.folder().path(), raw("Launch.exe"));
}
RawString inFolder(const AppTestBed& bed, const std::string& name) {
  return RawLayer::joinPath(bed.folder().path(), raw(name));
}

TEST(LauncherFiles, TheProfileIsNamedLikeTheExecutable) {
  EXPECT_EQ(LauncherFiles::defaultProfile(raw("c:\\a\\Tarvellon.exe")),
            raw("c:\\a\\Tarvellon.ini"));
  EXPECT_EQ(LauncherFiles::defaultProfile(raw("c:\\a\\tool")), raw("c:\\a\\.ini"));
  EXPECT_EQ(LauncherFiles::defaultProfile(raw("abcde")), raw("a.ini"));
  EXPECT_EQ(LauncherFiles::defaultProfile(raw("abcd")), raw("abcd.ini"));
  EXPECT_EQ(LauncherFiles::defaultProfile(raw("x")), raw("x.ini"));
}

TEST(LauncherFiles, OneFileCarriesAllRolesByDefault) {
  AppTestBed bed;
  bed.folder().write("Launch.ini", "[Common]\nProgram=Tarvellon\n");
  LauncherFiles files;
  ASSERT_TRUE(files.find(executable(bed), AppTestBed::arguments("")));
  EXPECT_EQ(files.profile, inFolder(bed, "Launch.ini"));
  EXPECT_EQ(files.guiProfile, files.profile);
  EXPECT_EQ(files.configFile, files.profile);
  EXPECT_TRUE(RawLanguage::instance().path().isEmpty());
}

TEST(LauncherFiles, AMissingProfileIsMade) {
  AppTestBed bed;
  LauncherFiles files;
  ASSERT_TRUE(files.find(executable(bed), AppTestBed::arguments("")));
  EXPECT_EQ(bed.folder().read("Launch.ini"), "[Common]\r\nProgram=Tarvellon\r\n\r\n");
}

TEST(LauncherFiles, AFolderIsAcceptedAsItStands) {
  AppTestBed bed;
  bed.folder().makeFolder("Launch.ini");
  LauncherFiles files;
  EXPECT_TRUE(files.find(executable(bed), AppTestBed::arguments("")));
  EXPECT_EQ(files.configFile, inFolder(bed, "Launch.ini"));
}

TEST(LauncherFiles, TheSwitchNamesAnotherProfileOnTheExecutablesFolder) {
  AppTestBed bed;
  bed.folder().makeFolder("sub");
  bed.folder().write("sub/mine.ini", "[Common]\nProgram=Tarvellon\n");
  LauncherFiles files;
  ASSERT_TRUE(files.find(executable(bed), AppTestBed::arguments("-p sub\\mine.ini")));
  EXPECT_EQ(files.profile, inFolder(bed, "sub\\mine.ini"));
  ASSERT_TRUE(files.find(executable(bed), AppTestBed::arguments("-p -a x")));
  EXPECT_EQ(files.profile, inFolder(bed, "Launch.ini"));
}

TEST(LauncherFiles, CommonNamesTheOtherFiles) {
  AppTestBed bed;
  bed.folder().write("Launch.ini", "[Common]\nProgram=Tarvellon\nGuiProfile=gui.ini\n"
                                   "ConfigFile=..\\config.ini\nLanguage=ja\nLanguageFile=l.ini\n");
  LauncherFiles files;
  ASSERT_TRUE(files.find(executable(bed), AppTestBed::arguments("")));
  EXPECT_EQ(files.guiProfile, inFolder(bed, "gui.ini"));
  EXPECT_EQ(files.configFile,
            RawLayer::joinPath(RawLayer::folderOf(bed.folder().path()), raw("config.ini")));
  EXPECT_EQ(RawLanguage::instance().path(), inFolder(bed, "l.ini"));
  EXPECT_EQ(RawLanguage::instance().selection(), raw("ja"));
}

TEST(LauncherFiles, AnAbsoluteFileStaysAsItIs) {
  AppTestBed bed;
  bed.folder().write("Launch.ini",
                     "[Common]\nProgram=Tarvellon\nConfigFile=\\\\host\\share\\c.ini\n"
                     "GuiProfile=x:\\g.ini\n");
  LauncherFiles files;
  ASSERT_TRUE(files.find(executable(bed), AppTestBed::arguments("")));
  EXPECT_EQ(files.configFile, raw("\\\\host\\share\\c.ini"));
  EXPECT_EQ(files.guiProfile, raw("x:\\g.ini"));
}

TEST(LauncherFiles, TheLanguageFileIsLookedForBesideTheConfigurationFirst) {
  AppTestBed bed;
  bed.folder().makeFolder("c");
  bed.folder().write("Launch.ini", "[Common]\nProgram=Tarvellon\nConfigFile=c\\my.ini\n");
  bed.folder().write("LanguageFile.ini", "");
  LauncherFiles files;
  ASSERT_TRUE(files.find(executable(bed), AppTestBed::arguments("")));
  EXPECT_EQ(RawLanguage::instance().path(), inFolder(bed, "LanguageFile.ini"));
  bed.folder().write("c/LanguageFile.ini", "");
  ASSERT_TRUE(files.find(executable(bed), AppTestBed::arguments("")));
  EXPECT_EQ(RawLanguage::instance().path(), inFolder(bed, "c\\LanguageFile.ini"));
}

#ifndef _WIN32
TEST(LauncherFiles, AFileWithoutProgramIsNotOurs) {
  AppTestBed bed;
  bed.folder().write("Launch.ini", "[Common]\nProgram=\n");
  LauncherFiles files;
  EXPECT_FALSE(files.find(executable(bed), AppTestBed::arguments("")));
  EXPECT_EQ(bed.messages(), std::vector<std::string>{"Bad format profile !!"});
  EXPECT_EQ(bed.folder().read("Launch.ini"), "[Common]\nProgram=\n");
}

TEST(LauncherFiles, TheUsersFolderStandsWhereverItIsNamed) {
  AppTestBed bed;
  bed.folder().makeFolder("Data");
  HostSystem::state().facts.userFolder = bed.folder().file("Data");
  bed.folder().write("Launch.ini", "[Common]\nProgram=Tarvellon\nConfigFile=$(User)\\my.ini\n");
  LauncherFiles files;
  ASSERT_TRUE(files.find(executable(bed), AppTestBed::arguments("")));
  EXPECT_TRUE(bed.folder().has("Data/Tarvellon"));
  const std::string path = bytesOf(files.configFile);
  EXPECT_NE(path.find("Tarvellon\\my.ini"), std::string::npos) << path;
}
#endif

} // namespace
