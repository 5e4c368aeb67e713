#include "app/LauncherMessages.h"

#include "AppTestBed.h"

#include <gtest/gtest.h>

namespace {

#ifndef _WIN32
using AppLayer::LauncherMessages;

TEST(LauncherMessages, TheArgumentTakesTheFirstPlaceholder) {
  AppTestBed bed;
  LauncherMessages::show(raw("CannotAccessTemp"), raw("c:\\%s"));
  LauncherMessages::show(raw("BadFormatProfile"));
  LauncherMessages::showUsage();
  const std::vector<std::string> expected = {
      "Cannot access temp directory (c:\\%s) !!", "Bad format profile !!",
      "Arguments = [-p Profile] [-c ConfigFile] [-a Action] [-l|-r Button] [-d Button FullPath]"};
  EXPECT_EQ(bed.messages(), expected);
}
#endif

} // namespace
