#include "app/HelpCatalog.h"

#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawPath.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace AppLayer;

namespace {

class HelpCatalogTest : public testing::Test {
 protected:
  HelpCatalogTest() { program.makeFolder("Docs"); }
  // The names found, in order.
  std::vector<std::string> load(const std::string& manual, const std::string& language = "") {
    RawLayer::RawProfile profile(program.write("options.cfg", "[Manual]\n" + manual));
    catalog.loadFrom(profile, program.path(), raw(language));
    std::vector<std::string> names;
    for (const RawString& path : catalog.documents.elements())
      names.push_back(bytesOf(RawLayer::nameOf(path)));
    return names;
  }
  TestFolder program;
  HelpCatalog catalog;
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(HelpCatalogTest, TheReadmeOfTheLanguageWins) {
  program.write("ReadMe_Tarvellon.txt", "");
  program.write("ReadMe_Tarvellon_ja.txt", "");
  load("", "ja");
  EXPECT_EQ(RawLayer::nameOf(catalog.readme), raw("ReadMe_Tarvellon_ja.txt"));
  EXPECT_TRUE(RawLayer::isAbsolutePath(catalog.readme) || bytesOf(catalog.readme)[0] == '/');
  load("", "de");
  EXPECT_EQ(RawLayer::nameOf(catalog.readme), raw("ReadMe_Tarvellon.txt"));
  load("");
  EXPECT_EQ(RawLayer::nameOf(catalog.readme), raw("ReadMe_Tarvellon.txt"));
}

TEST_F(HelpCatalogTest, WithoutAReadmeItsPathIsEmpty) {
  load("", "ja");
  EXPECT_TRUE(catalog.readme.isEmpty());
  program.makeFolder("ReadMe_Tarvellon.txt");
  load("");
  EXPECT_TRUE(catalog.readme.isEmpty()); // a folder is no readme
}

TEST_F(HelpCatalogTest, FindsReadmesAndManualsWhenNothingIsSaid) {
  for (const char* name :
       {"ReadMe_B.txt", "readme_a.TXT", "ReadMe_C.md", "Manual.pdf", "Notes.txt", "ReadMe_D.doc"})
    program.write(name, "");
  program.makeFolder("Folder.pdf");
  EXPECT_EQ(load(""), (Names{"Manual.pdf", "ReadMe_B.txt", "ReadMe_C.md", "readme_a.TXT"}));
}

TEST_F(HelpCatalogTest, SemicolonsJoinFoldersAndTheListIsSortedAsAWhole) {
  program.write("b.pdf", "");
  program.write("d.htm", "");
  program.write("Docs/a.pdf", "");
  program.write("Docs/c.htm", "");
  program.write("Docs/e.txt", "");
  EXPECT_EQ(load("Manual=*.pdf ;\t Docs\\*.htm,*.pdf;;\n"), (Names{"a.pdf", "c.htm", "b.pdf"}));
  EXPECT_EQ(load("Manual=Docs\\*.htm;*.pdf\n"), (Names{"c.htm", "b.pdf"})); // by whole paths
}

TEST_F(HelpCatalogTest, AFileFoundTwiceStandsOnce) {
  program.write("a.pdf", "");
  EXPECT_EQ(load("Manual=*.pdf;a.*\n"), Names{"a.pdf"});
}

TEST_F(HelpCatalogTest, AnEmptyOrMissingPlaceHasNoDocuments) {
  program.write("a.pdf", "");
  EXPECT_EQ(load("Manual=\n"), Names());
  EXPECT_EQ(load("Manual=Nowhere\\*.pdf\n"), Names());
}

TEST_F(HelpCatalogTest, ExtensionsForTheViewerAreAList) {
  load("");
  EXPECT_EQ(catalog.viewerExtensions.count(), 2);
  load("Zenvik=pdf, htm ,txt\n");
  EXPECT_EQ(catalog.viewerExtensions.count(), 3);
  EXPECT_FALSE(RawStringList::isEnd(catalog.viewerExtensions.find(raw("htm"))));
  EXPECT_TRUE(RawStringList::isEnd(catalog.viewerExtensions.find(raw("md"))));
}

TEST_F(HelpCatalogTest, WhatComesWithTheProgramIsFound) {
  RawLayer::RawProfile sample(raw(TARVELLON_SHARE "/Tarvellon.ini"));
  catalog.loadFrom(sample, raw(TARVELLON_SHARE), raw("ja"));
  EXPECT_EQ(RawLayer::nameOf(catalog.readme), raw("ReadMe_Tarvellon_ja.txt"));
  Names names;
  for (const RawString& path : catalog.documents.elements())
    names.push_back(bytesOf(RawLayer::nameOf(path)));
  EXPECT_EQ(names, (Names{"ReadMe_Manual.md", "ReadMe_Tarvellon.txt", "ReadMe_Tarvellon_ja.txt"}));
  catalog.loadFrom(sample, raw(TARVELLON_SHARE), raw("en"));
  EXPECT_EQ(RawLayer::nameOf(catalog.readme), raw("ReadMe_Tarvellon.txt"));
}
