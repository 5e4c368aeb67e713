#include "app/LauncherOptions.h"

#include "AppTestBed.h"
#include "raw/RawFile.h"
#include "raw/RawProcess.h"

#include <gtest/gtest.h>

namespace {

using AppLayer::LauncherOptions;
using AppLayer::optionBoolean;
using AppLayer::optionInteger;
using RawLayer::RawProfile;
using RawLayer::RawString;

// Options loaded from a configuration of these lines.
class Loaded : public LauncherOptions {
 public:
  Loaded(const AppTestBed& bed, const std::string& lines, const std::string& line = "") {
    load(bed.folder().write("my.ini", lines), AppTestBed::arguments(line));
  }
};

TEST(LauncherOptions, IntegersEndWhereTheirDigitsEnd) {
  EXPECT_EQ(optionInteger(raw("12")), 12);
  EXPECT_EQ(optionInteger(raw("-12")), -12);
  EXPECT_EQ(optionInteger(raw("+7")), 7);
  EXPECT_EQ(optionInteger(raw("12a")), 12);
  EXPECT_EQ(optionInteger(raw("0x10")), 0);
  EXPECT_EQ(optionInteger(raw("abc")), 0);
  EXPECT_EQ(optionInteger(raw("")), 0);
  EXPECT_EQ(optionInteger(raw("-")), 0);
  EXPECT_EQ(optionInteger(raw("-2147483648")), -2147483647 - 1);
}

TEST(LauncherOptions, OnlyTheWordFalseIsFalse) {
  EXPECT_FALSE(optionBoolean(raw("False")));
  EXPECT_FALSE(optionBoolean(raw("fALSE")));
  EXPECT_TRUE(optionBoolean(raw("")));
  EXPECT_TRUE(optionBoolean(raw("0")));
  EXPECT_TRUE(optionBoolean(raw(" False")));
}

TEST(LauncherOptions, AMissingSectionLeavesEveryDefault) {
  AppTestBed bed;
  const Loaded options(bed, "");
  EXPECT_EQ(options.maxLogFiles, 200);
  EXPECT_EQ(options.iconUnusedCount, 60);
  EXPECT_EQ(options.iconExtension, raw("ico,exe,dll"));
  EXPECT_EQ(options.logCategories, raw("UCPV"));
  EXPECT_FALSE(options.viewSelector);
  EXPECT_FALSE(options.horizontal);
  EXPECT_FALSE(options.viewTip);
  EXPECT_FALSE(options.topMost);
  EXPECT_FALSE(options.sysTray);
  EXPECT_TRUE(options.iconCache);
  EXPECT_TRUE(options.iconDelay);
  EXPECT_EQ(options.buttonAlign, 1);
  EXPECT_EQ(options.terminateId, 0);
  EXPECT_EQ(options.logFolder, bed.temp("Tarvellon\\Log"));
  EXPECT_EQ(options.iconCacheFolder, bed.temp("Tarvellon"));
}

TEST(LauncherOptions, EveryKeyIsReadWithoutRegardToCase) {
  AppTestBed bed;
  const Loaded options(bed, "[option]\n"
                            "maxlogfiles=0\nIconUnusedCount=5\nIconExtension=icl\n"
                            "ViewSelector=True\nHorizontal=1\nViewTip=\nTopMost=yes\nSysTray=x\n"
                            "IconCache=false\nIconDelay=FALSE\nButtonAlign=Right\n");
  EXPECT_EQ(options.maxLogFiles, 0);
  EXPECT_EQ(options.iconUnusedCount, 5);
  EXPECT_EQ(options.iconExtension, raw("icl"));
  EXPECT_TRUE(options.viewSelector);
  EXPECT_TRUE(options.horizontal);
  EXPECT_TRUE(options.viewTip); // an empty value is true here
  EXPECT_TRUE(options.topMost);
  EXPECT_TRUE(options.sysTray);
  EXPECT_FALSE(options.iconCache);
  EXPECT_FALSE(options.iconDelay);
  EXPECT_EQ(options.buttonAlign, 2);
}

TEST(LauncherOptions, AlignmentNamesHaveExactCase) {
  AppTestBed bed;
  EXPECT_EQ(Loaded(bed, "[Option]\nButtonAlign=Left\n").buttonAlign, 0);
  EXPECT_EQ(Loaded(bed, "[Option]\nButtonAlign=Center\n").buttonAlign, 1);
  EXPECT_EQ(Loaded(bed, "[Option]\nButtonAlign=center\n").buttonAlign, 1);
  EXPECT_EQ(Loaded(bed, "[Option]\nButtonAlign=left\n").buttonAlign, 1);
}

TEST(LauncherOptions, RelativeFoldersStandOnTheConfigurationsFolder) {
  AppTestBed bed;
  const Loaded options(bed, "[Option]\nLogFolder=logs\nIconCacheFolder=.\\cache\n");
  EXPECT_EQ(options.logFolder, RawLayer::joinPath(bed.folder().path(), raw("logs")));
  EXPECT_EQ(options.iconCacheFolder, RawLayer::joinPath(bed.folder().path(), raw("cache")));
  EXPECT_TRUE(RawLayer::isFolder(options.cacheFolder));
}

TEST(LauncherOptions, OneShotSwitchesOverwriteEachOther) {
  AppTestBed bed;
  const Loaded options(bed, "", "-a One -d Two x \"y z\"");
  EXPECT_EQ(options.switchName, raw("d"));
  EXPECT_EQ(options.switchValue, raw("Two"));
  EXPECT_EQ(options.firstPath, raw("x"));
  EXPECT_EQ(options.pathList, raw("\"x\" \"y z\""));
}

TEST(LauncherOptions, ABareIniFileIsTheConfigurationOnlyWithoutASwitch) {
  AppTestBed bed;
  EXPECT_EQ(Loaded(bed, "", "other.INI").path, raw("other.INI"));
  EXPECT_EQ(Loaded(bed, "", "other.INI").readPath, raw("other.INI"));
  EXPECT_EQ(Loaded(bed, "", "-a x other.ini").path, bed.folder().file("my.ini"));
  EXPECT_EQ(Loaded(bed, "", "other.txt").path, bed.folder().file("my.ini"));
  EXPECT_EQ(Loaded(bed, "", "ini").path, bed.folder().file("my.ini"));
}

TEST(LauncherOptions, ThePredecessorIsADecimalNumber) {
  AppTestBed bed;
  EXPECT_EQ(Loaded(bed, "", "-@ 4711").terminateId, 4711);
  EXPECT_EQ(Loaded(bed, "", "-@ x").terminateId, 0);
}

TEST(LauncherOptions, ARestartRepeatsTheSwitchesBehindThisProcess) {
  AppTestBed bed;
  const Loaded options(bed, "", "-@ 12 -p \"a b\" -x bare");
  const std::string own = std::to_string(RawLayer::currentProcessId());
  EXPECT_EQ(options.commandLine(), raw("-@ " + own + " -p a b -x bare"));
  const Loaded bare(bed, "", "bare.txt -h");
  EXPECT_EQ(bare.commandLine(), raw("-@ " + own + " -NoTag_1 bare.txt -h"));
}

TEST(LauncherOptions, TheCacheFolderIsNamedByTheHashOfThePath) {
  // h = rotate(h + c): "A" gives 0x82, then "B" (0x82 + 0x42) rotated gives 0x188.
  EXPECT_EQ(LauncherOptions::cacheFolderName(raw("A")), raw("CACHE_00000082"));
  EXPECT_EQ(LauncherOptions::cacheFolderName(raw("AB")), raw("CACHE_00000188"));
  EXPECT_EQ(LauncherOptions::upperCased(raw("c:\\aZ\xC3\xA4")), raw("C:\\AZ\xC3\xA4"));
  // The rotation brings the top bit round: the sum of many units differs from a plain shift.
  EXPECT_EQ(LauncherOptions::cacheFolderName(raw(std::string(40, 'Z'))).length(), 14);
}

TEST(LauncherOptions, TheCacheFolderProvesItsOwner) {
  AppTestBed bed;
  const Loaded options(bed, "");
  const RawString owner = LauncherOptions::upperCased(options.path);
  EXPECT_EQ(options.cacheFolder,
            RawLayer::joinPath(options.iconCacheFolder, LauncherOptions::cacheFolderName(owner)));
  EXPECT_EQ(options.cacheFile, RawLayer::joinPath(options.cacheFolder, raw("IconCache.ini")));
  EXPECT_EQ(RawProfile(options.cacheFile).readValue(raw("Identify"), raw("Profile")), owner);
  EXPECT_EQ(Loaded(bed, "").cacheFolder, options.cacheFolder); // it is found again
}

TEST(LauncherOptions, AFolderOfAnotherConfigurationIsPassedOver) {
  AppTestBed bed;
  const RawString first = Loaded(bed, "").cacheFolder;
  RawProfile proof(RawLayer::joinPath(first, raw("IconCache.ini")));
  ASSERT_TRUE(proof.writeValue(raw("Identify"), raw("Profile"), raw("SOMEBODY")));
  const RawString second = Loaded(bed, "").cacheFolder;
  EXPECT_EQ(second, RawString::concat(first, raw("0")));

  RawProfile next(RawLayer::joinPath(second, raw("IconCache.ini")));
  ASSERT_TRUE(next.writeValue(raw("Identify"), raw("Profile"), raw("ANOTHER")));
  EXPECT_EQ(Loaded(bed, "").cacheFolder, RawString::concat(first, raw("1")));
}

TEST(LauncherOptions, AnOwnFolderWithoutProofIsTaken) {
  AppTestBed bed;
  const RawString folder = Loaded(bed, "").cacheFolder;
  ASSERT_TRUE(RawLayer::deleteFile(RawLayer::joinPath(folder, raw("IconCache.ini"))));
  EXPECT_EQ(Loaded(bed, "").cacheFolder, folder);
}

TEST(LauncherOptions, TheCacheFolderIsLookedForAlsoWithTheCacheOff) {
  AppTestBed bed;
  EXPECT_TRUE(RawLayer::isFolder(Loaded(bed, "[Option]\nIconCache=False\n").cacheFolder));
}

#ifndef _WIN32
TEST(LauncherOptions, ACacheFolderThatCannotBeMadeSwitchesTheCacheOff) {
  AppTestBed bed;
  bed.folder().write("blocker", "a file");
  const Loaded options(bed, "[Option]\nIconCacheFolder=blocker\n");
  EXPECT_FALSE(options.iconCache);
  EXPECT_TRUE(options.cacheFile.isEmpty());
  const auto messages = bed.messages();
  ASSERT_EQ(messages.size(), 1u);
  const std::string place = bytesOf(RawLayer::joinPath(
      RawLayer::joinPath(bed.folder().path(), raw("blocker")),
      LauncherOptions::cacheFolderName(LauncherOptions::upperCased(options.path))));
  EXPECT_EQ(messages[0], "Cannot access temp directory (" + place + ") !!");
}
#endif

} // namespace
