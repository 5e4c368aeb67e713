// How documents are opened: seen at the launches of the host's shell.
#include "app/HelpCatalog.h"

#include "TestFolder.h"
#include "TestText.h"
#include "host/HostShell.h"

#include <gtest/gtest.h>

using namespace AppLayer;

namespace {

// The program's folder is a folder of its own, so that its parent holds nothing else.
class HelpCatalogOpen : public testing::Test {
 protected:
  HelpCatalogOpen() {
    home.makeFolder("Program/Zenvik");
    home.makeFolder("Zenvik");
    load("");
  }
  void load(const std::string& manual) {
    RawLayer::RawProfile profile(home.write("options.cfg", "[Manual]\n" + manual));
    catalog.loadFrom(profile, home.file("Program"), RawString::emptyStatic());
  }
  HostShell::Launch open(const std::string& path) {
    catalog.open(raw(path));
    const std::vector<HostShell::Launch> launches = shell.takeLaunches();
    EXPECT_EQ(launches.size(), 1U);
    EXPECT_TRUE(shell.takeWaits().empty());
    return launches.empty() ? HostShell::Launch() : launches[0];
  }
  TestFolder home;
  HostShell::Scope shell;
  HelpCatalog catalog;
};

} // namespace

TEST_F(HelpCatalogOpen, AnEmptyPathOpensNothing) {
  catalog.open(RawString::emptyStatic());
  EXPECT_TRUE(shell.takeLaunches().empty());
}

TEST_F(HelpCatalogOpen, WithoutTheViewerATextIsOpenedByItsAssociation) {
  const HostShell::Launch launch = open("C:\\Help\\ReadMe_A.txt");
  EXPECT_EQ(launch.file, raw("C:\\Help\\ReadMe_A.txt"));
  EXPECT_TRUE(launch.parameters.isEmpty());
  EXPECT_TRUE(launch.verb.isEmpty());
}

TEST_F(HelpCatalogOpen, TheViewerIsLookedForInThreePlaces) {
  const auto program = [this](const std::string& place) {
    const RawString path = home.write(place, "");
    const HostShell::Launch launch = open("C:\\Help\\Read Me.md");
    EXPECT_EQ(launch.parameters, raw("\"C:\\Help\\Read Me.md\"")) << place;
    return bytesOf(launch.file).substr(static_cast<size_t>(home.path().length()) + 1);
  };
  const auto slashes = [](std::string path) {
    for (char& unit : path)
      if (unit == '\\') unit = '/';
    return path;
  };
  EXPECT_EQ(slashes(program("Zenvik/Zenvik.exe")), "Zenvik/Zenvik.exe");
  EXPECT_EQ(slashes(program("Program/Zenvik/Zenvik.exe")), "Program/Zenvik/Zenvik.exe");
  EXPECT_EQ(slashes(program("Program/Zenvik.exe")), "Program/Zenvik.exe");
}

TEST_F(HelpCatalogOpen, APdfGoesToTheViewerOnlyWhenItIsListed) {
  home.write("Program/Zenvik.exe", "");
  EXPECT_EQ(open("C:\\Help\\Manual.pdf").file, raw("C:\\Help\\Manual.pdf"));
  load("Zenvik=txt,pdf\n");
  EXPECT_EQ(open("C:\\Help\\Manual.pdf").parameters, raw("\"C:\\Help\\Manual.pdf\""));
  EXPECT_EQ(open("C:\\Help\\Manual.PDF").parameters, raw("\"C:\\Help\\Manual.PDF\""));
}

TEST_F(HelpCatalogOpen, AStartThatFailsShowsNothing) {
  shell.answer().started = false;
  EXPECT_EQ(open("C:\\Help\\Manual.pdf").file, raw("C:\\Help\\Manual.pdf"));
}
