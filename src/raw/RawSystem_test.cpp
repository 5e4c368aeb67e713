#include "raw/RawSystem.h"

#include "TestText.h"
#include "raw/RawFile.h"
#include "raw/RawPath.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "host/HostFaults.h"
#include "host/HostSystem.h"
#endif

using namespace RawLayer;

namespace {

std::string strip(const char* line) {
  return bytesOf(stripProgramName(raw(line)));
}

// Minutes since some day of 1999.
int64_t minutesOf(const RawMoment& time) {
  constexpr int32_t DaysBefore[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
  const bool leap = time.year % 4 == 0 && time.month > 2;
  const int64_t days = DaysBefore[time.month - 1] + time.day + (leap ? 1 : 0) +
                       (time.year - 2000) * 365 + (time.year - 1997) / 4;
  return (days * 24 + time.hour) * 60 + time.minute;
}

void expectSane(const RawMoment& time) {
  EXPECT_GE(time.year, 2024);
  EXPECT_TRUE(time.month >= 1 && time.month <= 12);
  EXPECT_TRUE(time.day >= 1 && time.day <= 31);
  EXPECT_TRUE(time.hour >= 0 && time.hour <= 23);
  EXPECT_TRUE(time.minute >= 0 && time.minute <= 59);
  EXPECT_TRUE(time.second >= 0 && time.second <= 60);
  EXPECT_TRUE(time.milliseconds >= 0 && time.milliseconds <= 999);
}

} // namespace

TEST(RawSystem, TheProgramNameIsStrippedWithItsWhiteSpace) {
  EXPECT_EQ(strip("program -a x"), "-a x");
  EXPECT_EQ(strip("  program \t\r\n -a  x "), "-a  x ");
  EXPECT_EQ(strip("program"), "");
  EXPECT_EQ(strip("program   "), "");
  EXPECT_EQ(strip(""), "");
}

TEST(RawSystem, AQuotedProgramNameMayHoldBlanks) {
  EXPECT_EQ(strip("\"C:\\Program Files\\x.exe\" -a x"), "-a x");
  EXPECT_EQ(strip("C:\\\"Program Files\"\\x.exe -a"), "-a");
  EXPECT_EQ(strip("\"x.exe\"-a y"), "y");
  EXPECT_EQ(strip("\"never closed -a x"), "");
}

TEST(RawSystem, StrippingKeepsTheEncoding) {
  const RawString line = RawString::fromWide(u"p \u30BD");
  EXPECT_EQ(stripProgramName(line), RawString::fromWide(u"\u30BD"));
  EXPECT_EQ(stripProgramName(line).encoding(), EncodingWide);
}

TEST(RawSystem, TheClocksAreOneOffsetApart) {
  const RawMoment utc = utcTime();
  const RawMoment local = localTime();
  expectSane(utc);
  expectSane(local);
  EXPECT_NEAR(static_cast<double>(minutesOf(local) - minutesOf(utc)), localOffsetMinutes(), 1.0);
}

TEST(RawSystem, NamesComeInTheEncodingAskedFor) {
  for (const int32_t encoding :
       {EncodingAnsi, EncodingShiftJis, EncodingUtf8, EncodingWide, EncodingUtf16Le}) {
    EXPECT_EQ(moduleName(encoding).encoding(), encoding);
    EXPECT_EQ(computerName(encoding).encoding(), encoding);
    EXPECT_EQ(userName(encoding).encoding(), encoding);
    EXPECT_EQ(tempFolder(encoding).encoding(), encoding);
    EXPECT_EQ(userFolder(encoding).encoding(), encoding);
    EXPECT_EQ(specialFolder(RawFolderDesktop, encoding).encoding(), encoding);
    EXPECT_EQ(moduleName(encoding).shareAs(EncodingUtf8), moduleName());
    EXPECT_EQ(tempFolder(encoding).shareAs(EncodingUtf8), tempFolder());
    EXPECT_EQ(computerName(encoding).shareAs(EncodingUtf8), computerName());
    EXPECT_EQ(userName(encoding).shareAs(EncodingUtf8), userName());
  }
}

TEST(RawSystem, TheModuleIsTheRunningProgram) {
  EXPECT_TRUE(isFile(moduleName()));
  EXPECT_TRUE(nameOf(moduleName()).startsWithAt(0, raw("raw_test"), 8));
}

TEST(RawSystem, TheTemporaryFolderHasNoTrailingSeparator) {
  const RawString folder = tempFolder();
  EXPECT_TRUE(isFolder(folder));
  EXPECT_FALSE(isSeparatorAt(folder, folder.length() - 1));
}

TEST(RawSystem, NamesOfMachineAndUserAreNeverEmpty) {
  EXPECT_FALSE(computerName().isEmpty());
  EXPECT_FALSE(userName().isEmpty());
  EXPECT_FALSE(userFolder().isEmpty());
  EXPECT_EQ(userFolder(), specialFolder(RawFolderAppData));
  EXPECT_FALSE(specialFolder(RawFolderDesktop).isEmpty());
}

TEST(RawSystem, AnUnknownFolderIsEmpty) {
  EXPECT_TRUE(specialFolder(0x7FFF).isEmpty());
  EXPECT_EQ(specialFolder(0x7FFF, EncodingWide).encoding(), EncodingWide);
}

TEST(RawSystem, TheCommandLineStartsWithTheProgram) {
  EXPECT_EQ(commandLine().encoding(), EncodingUtf8);
  EXPECT_FALSE(commandLine().isEmpty());
  EXPECT_LT(stripProgramName(commandLine()).length(), commandLine().length());
}

TEST(RawSystem, TheLanguageHasANumber) {
  EXPECT_NE(userLanguage(), 0);
}

#ifndef _WIN32

TEST(RawSystem, AFailedQueryHasItsDefault) {
  HostFaults::Scope faults;
  faults.failAll(HostFaults::Query);
  EXPECT_EQ(computerName(), raw("host"));
  EXPECT_EQ(computerName(EncodingWide), RawString::fromWide(u"host"));
  EXPECT_EQ(userName(), raw("host"));
  EXPECT_TRUE(moduleName().isEmpty());
  EXPECT_TRUE(tempFolder().isEmpty());
  EXPECT_TRUE(userFolder().isEmpty());
}

TEST(RawSystem, ASeparatorBehindTheTemporaryFolderIsDropped) {
  HostSystem::Scope system;
  system.facts().tempFolder = raw("c:\\temp\\");
  EXPECT_EQ(tempFolder(), raw("c:\\temp"));
}

TEST(RawSystem, TheStandInKeepsWhatTestsSet) {
  {
    HostSystem::Scope system;
    system.fixClock({2024, 12, 31, 23, 30, 15, 42}, 540);
    system.setKey(0xA0, true);
    system.facts().moduleName = raw("c:\\x\\y.exe");
    EXPECT_EQ(programFolder(), raw("c:\\x"));
    EXPECT_TRUE(isKeyDown(0xA0));
    EXPECT_TRUE(isKeyDownNow(0xA0));
    EXPECT_EQ(localOffsetMinutes(), 540);
    const RawMoment local = localTime();
    EXPECT_EQ(local.year, 2025);
    EXPECT_EQ(local.month, 1);
    EXPECT_EQ(local.day, 1);
    EXPECT_EQ(local.hour, 8);
    EXPECT_EQ(local.minute, 30);
    EXPECT_EQ(local.milliseconds, 42);
    EXPECT_EQ(utcTime().hour, 23);
    messageBox(raw("caption"), raw("text"));
    const auto messages = system.takeMessages();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].caption, raw("caption"));
    EXPECT_EQ(messages[0].text, raw("text"));
  }
  EXPECT_FALSE(isKeyDown(0xA0));
  EXPECT_NE(localTime().year, 0);
  EXPECT_NE(programFolder(), raw("c:\\x"));
}

#endif
