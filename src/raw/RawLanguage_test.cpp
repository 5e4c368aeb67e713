#include "raw/RawLanguage.h"

#include "TestLines.h"
#include "TestProfile.h"
#include "raw/RawEncodings.h"
#include "raw/RawFile.h"
#include "raw/RawSystem.h"

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

using namespace RawLayer;
using std::string;
using TestProfile::sectionOf;
using TestProfile::Texts;

namespace {

const char* const fileName = "LanguageFile.ini";

const RawLocaleRecord* systemTable() {
  static const RawLocaleRecord table[] = {
      {"BadFormatProfile"_text, "Bad format profile !!"_text},
      {"CannotAccessTemp"_text, "Cannot access temp directory (%s) !!"_text},
      {""_text, ""_text},
  };
  return table;
}

const RawLocaleRecord* menuTable() {
  static const RawLocaleRecord table[] = {
      {"Open"_text, "Open\tNow"_text},
      {"Close"_text, "Close\nthen\r\nleave"_text},
      {""_text, ""_text},
  };
  return table;
}

// A catalogue with the system's messages over a file with these bytes, and section "L" chosen.
class Catalogue {
 public:
  RawLanguage language;

  explicit Catalogue(const string& bytes) {
    folder_.write(fileName, bytes);
    language.registerTable("SystemMessage"_text, systemTable());
    start("L"_text);
  }
  void start(const RawString& selection) {
    language.setPath(folder_.file(fileName));
    language.setSelection(selection);
    language.loadMap();
    language.loadSection();
  }
  string text(const string& id, const string& group = "SystemMessage") {
    return bytesOf(language.text(raw(group), raw(id)));
  }
  [[nodiscard]] string file() const { return folder_.read(fileName); }
  [[nodiscard]] RawString path() const { return folder_.file(fileName); }
  void write(const string& bytes) const { folder_.write(fileName, bytes); }

 private:
  TestFolder folder_;
};

// What the text of a value in the file is shown as.
string shown(const string& value) {
  return Catalogue("[L]\r\nG_id=" + value + "\r\n").text("id", "G");
}

Texts namesOf(const RawParameterList& map) {
  Texts names;
  for (const RawParameterUnit& unit : map.elements())
    names.push_back(bytesOf(unit.key) + " " + std::to_string(unit.number));
  return names;
}

const string englishSection = "[L]\r\nSystemMessage_BadFormatProfile=Bad format profile !!\r\n"
                              "SystemMessage_CannotAccessTemp=Cannot access temp directory (%s) !!"
                              "\r\n\r\n";

} // namespace

TEST(RawLanguage, WithoutFileTextsAreEnglish) {
  RawLanguage language;
  language.registerTable("SystemMessage"_text, systemTable());
  language.loadMap();
  language.loadSection();
  EXPECT_EQ(bytesOf(language.text("SystemMessage"_text, "BadFormatProfile"_text)),
            "Bad format profile !!");
  EXPECT_EQ(bytesOf(language.text("systemmessage"_text, "BADFORMATPROFILE"_text)),
            "Bad format profile !!");
  EXPECT_EQ(bytesOf(language.section()), "Default");
  EXPECT_EQ(language.languageMap().count(), 0);
  language.save();
}

TEST(RawLanguage, UnknownIdShowsAsItselfAndComesIntoTheFile) {
  Catalogue catalogue("[L]\r\nG_a=1\r\n");
  EXPECT_EQ(catalogue.text("NoSuch", "G"), "NoSuch");
  catalogue.language.save();
  EXPECT_EQ(bytesOf(RawProfile(catalogue.path()).readValue("L"_text, "G_NoSuch"_text)), "NoSuch");
}

TEST(RawLanguage, TranslationWinsOverEnglish) {
  Catalogue catalogue("[L]\r\nsystemmessage_badformatprofile=Schlecht\r\n");
  EXPECT_EQ(catalogue.text("BadFormatProfile"), "Schlecht");
  EXPECT_EQ(catalogue.text("CannotAccessTemp"), "Cannot access temp directory (%s) !!");
}

TEST(RawLanguage, EmptyValueCountsAsFound) {
  Catalogue catalogue("[L]\r\nSystemMessage_BadFormatProfile=\r\n");
  EXPECT_EQ(catalogue.text("BadFormatProfile"), "");
  catalogue.language.save();
  EXPECT_EQ(catalogue.file(), "[L]\r\nSystemMessage_BadFormatProfile=\r\n"); // nothing was missed
}

TEST(RawLanguage, EscapesAreResolved) {
  EXPECT_EQ(shown("a\\nb"), "a\r\nb");
  EXPECT_EQ(shown("a\\tb"), "a\tb");
  EXPECT_EQ(shown("\\slead"), " lead");
  EXPECT_EQ(shown("a\\\\nb"), "a\\nb");
  EXPECT_EQ(shown("\\N\\x\\\\"), "Nx\\");
  EXPECT_EQ(shown("plain \xE3\x81\x82"), "plain \xE3\x81\x82");
}

TEST(RawLanguage, LastBackslashGivesAZeroUnit) {
  EXPECT_EQ(shown("a\\"), string("a\0", 2));
  EXPECT_EQ(shown("\\"), string("\0", 1));
}

TEST(RawLanguage, LineBreaksAreStoredAsEscapesAndComeBackAsCrLf) {
  Catalogue catalogue("");
  catalogue.language.registerTable("Menu"_text, menuTable());
  EXPECT_EQ(catalogue.text("Close", "Menu"), "Close\r\nthen\r\nleave");
  EXPECT_EQ(catalogue.text("Open", "Menu"), "Open\tNow");
  catalogue.language.save();
  RawProfile profile(catalogue.path());
  EXPECT_EQ(bytesOf(profile.readValue("L"_text, "Menu_Close"_text)), "Close\\nthen\\nleave");
  EXPECT_EQ(bytesOf(profile.readValue("L"_text, "Menu_Open"_text)), "Open\\tNow");
}

TEST(RawLanguage, TableIsRegisteredOnce) {
  RawLocaleRecord table[] = {{"id"_text, "first"_text}, {""_text, ""_text}};
  RawLocaleRecord other[] = {{"ID"_text, "third"_text}, {""_text, ""_text}};
  RawLanguage language;
  language.registerTable("G"_text, table);
  table[0].text = "second"_text;
  language.registerTable("G"_text, table);
  EXPECT_EQ(bytesOf(language.text("G"_text, "id"_text)), "first");
  language.registerTable("G"_text, other); // another table replaces the value
  EXPECT_EQ(bytesOf(language.text("G"_text, "id"_text)), "third");
}

TEST(RawLanguage, MapGivesNamesAndIdsInFileOrder) {
  Catalogue catalogue("[Common]\r\n[LangMap]\r\nJapanese=1041\r\nEnglish=1033\r\nOther=x\r\n"
                      "langmap=5\r\n[English]\r\n");
  EXPECT_EQ(namesOf(catalogue.language.languageMap()),
            (Texts{"Japanese 1041", "English 1033", "Other 0"}));
}

TEST(RawLanguage, WithoutMapSectionsAreTheLanguages) {
  const Texts names{"English 0", "Japanese 0", " 0"};
  EXPECT_EQ(namesOf(Catalogue("[English]\r\na=b\r\n[Japanese]\r\n[english]\r\n[]\r\n")
                        .language.languageMap()),
            names);
  // A map without entries is none, and no language.
  EXPECT_EQ(namesOf(Catalogue("[English]\r\n[LANGMAP]\r\n// empty\r\n[Japanese]\r\n[]\r\n")
                        .language.languageMap()),
            names);
}

TEST(RawLanguage, MapGivenOutIsAListOfItsOwn) {
  Catalogue catalogue("[English]\r\n");
  catalogue.language.languageMap().clear();
  EXPECT_EQ(catalogue.language.languageMap().count(), 1);
}

TEST(RawLanguage, WithoutPathTheMapStays) {
  Catalogue catalogue("[English]\r\n");
  catalogue.language.setPath(RawString());
  catalogue.language.loadMap();
  EXPECT_EQ(catalogue.language.languageMap().count(), 1);
}

TEST(RawLanguage, SystemSectionMatchesTheWholeId) {
  const int32_t id = userLanguage();
  ASSERT_NE(id, 0);
  const string sibling = "Sibling=" + std::to_string(id + 0x400) + "\r\n"; // same primary language
  const string own = "Own=" + std::to_string(id) + "\r\n";
  EXPECT_EQ(bytesOf(Catalogue("[LangMap]\r\n" + sibling).language.systemSection()), "Default");
  EXPECT_EQ(
      bytesOf(Catalogue("[LangMap]\r\n" + sibling + own + "Next" + own).language.systemSection()),
      "Own");
  EXPECT_EQ(bytesOf(Catalogue("[Own]\r\n").language.systemSection()), "Default"); // no ids
}

TEST(RawLanguage, SelectionChoosesTheSectionAndEmptyIsAutomatic) {
  const string own = "[LangMap]\r\nOwn=" + std::to_string(userLanguage()) + "\r\n";
  Catalogue catalogue(own + "[Own]\r\nG_id=own\r\n[Other]\r\nG_id=other\r\n");
  catalogue.start("Other"_text);
  EXPECT_EQ(bytesOf(catalogue.language.section()), "Other");
  EXPECT_EQ(bytesOf(catalogue.language.selection()), "Other");
  EXPECT_EQ(catalogue.text("id", "G"), "other");
  catalogue.start(RawString());
  EXPECT_EQ(bytesOf(catalogue.language.section()), "Own");
  EXPECT_EQ(catalogue.text("id", "G"), "own");
}

TEST(RawLanguage, MissingSectionIsWrittenWithTheEnglishTexts) {
  const string other = "// Translations\r\n[Other]\r\n// kept\r\nG_a=1\r\n";
  EXPECT_EQ(Catalogue(other).file(), other + englishSection);
  EXPECT_EQ(Catalogue("[L]\r\n// only a comment\r\n").file(), englishSection);
}

TEST(RawLanguage, MissingFileIsMade) {
  const TestFolder folder;
  RawLanguage language;
  language.registerTable("SystemMessage"_text, systemTable());
  language.setPath(folder.file(fileName));
  language.setSelection("L"_text);
  language.loadMap();
  language.loadSection();
  EXPECT_EQ(folder.read(fileName), englishSection);
}

TEST(RawLanguage, SaveAddsWhatIsMissingInOrderOfKeys) {
  Catalogue catalogue("[Other]\r\n// kept\r\n[L]\r\nz_gone=still here\r\n"
                      "SystemMessage_CannotAccessTemp=\\sKein Temp\r\nSystemMessage_=x\r\n");
  EXPECT_EQ(catalogue.text("BadFormatProfile"), "Bad format profile !!");
  EXPECT_EQ(catalogue.text("aNew", "a"), "aNew");
  catalogue.language.save();
  EXPECT_EQ(
      catalogue.file(),
      "[Other]\r\n// kept\r\n[L]\r\nSystemMessage_=x\r\n"
      "SystemMessage_BadFormatProfile=Bad format profile !!\r\n"
      "SystemMessage_CannotAccessTemp=\\sKein Temp\r\na_aNew=aNew\r\nz_gone=still here\r\n\r\n");
}

TEST(RawLanguage, SaveIsDoneOnlyAfterAMiss) {
  Catalogue catalogue("[L]\r\nSystemMessage_BadFormatProfile=Schlecht\r\n");
  catalogue.text("BadFormatProfile");
  catalogue.language.save();
  EXPECT_EQ(catalogue.file(), "[L]\r\nSystemMessage_BadFormatProfile=Schlecht\r\n");
  catalogue.text("CannotAccessTemp");
  catalogue.language.save();
  EXPECT_NE(catalogue.file().find("CannotAccessTemp"), string::npos);
  catalogue.write("changed");
  catalogue.language.save();
  EXPECT_EQ(catalogue.file(), "changed");
}

TEST(RawLanguage, FileKeepsItsEncoding) {
  const RawMark mark = markOf(EncodingUtf16Le);
  const string start(mark.bytes, 2);
  Catalogue catalogue(start + TestLines::inCode(EncodingUtf16Le, "[L]\r\nG_a=\xE3\x81\x82\r\n"));
  EXPECT_EQ(catalogue.text("a", "G"), "\xE3\x81\x82");
  catalogue.text("BadFormatProfile");
  catalogue.language.save();
  EXPECT_EQ(catalogue.file(),
            start + TestLines::inCode(EncodingUtf16Le,
                                      "[L]\r\nG_a=\xE3\x81\x82\r\n" + englishSection.substr(5)));
}

TEST(RawLanguage, FileThatCouldNotBeReadIsNeverWritten) {
  const string translated = "[L]\r\nSystemMessage_BadFormatProfile=Schlecht\r\n";
  Catalogue catalogue(translated);
  {
    const RawFileOwner holder =
        openFile(catalogue.path(), RawAccessRead, RawShareNone, RawOpenExisting);
    ASSERT_TRUE(holder);
    catalogue.start("L"_text);
  }
  EXPECT_EQ(catalogue.text("CannotAccessTemp"), "Cannot access temp directory (%s) !!");
  catalogue.language.save();
  EXPECT_EQ(catalogue.file(), translated);
  const string tooLong = "[M]\r\n" + string(9000, 'x') + "\r\n" + translated;
  catalogue.write(tooLong);
  catalogue.start("L"_text);
  catalogue.text("CannotAccessTemp");
  catalogue.language.save();
  EXPECT_EQ(catalogue.file(), tooLong);
}

TEST(RawLanguage, AutomaticChoiceDoesNotSaveIntoTheNewSection) {
  const string file = "[L]\r\nG_id=old\r\n[Default]\r\nG_id=new\r\n";
  Catalogue catalogue(file);
  catalogue.text("BadFormatProfile"); // missed
  catalogue.language.setSelection(RawString());
  EXPECT_EQ(bytesOf(catalogue.language.section()), "Default");
  EXPECT_EQ(catalogue.text("id", "G"), "old"); // not switched in place
  catalogue.language.save();
  EXPECT_EQ(catalogue.file(), file);
}

TEST(RawLanguage, HostileFilesEndInEnglish) {
  for (const string& bytes :
       {string("\0\0\0", 3), string("\x7F[L]\r\n"), string("\xFF\xFE[", 3), string(20000, '['),
        string("[LangMap]\r\n=\r\n==\r\n[L]\r\n=\r\n\\=\\\r\n")}) {
    Catalogue catalogue(bytes);
    EXPECT_EQ(catalogue.text("BadFormatProfile"), "Bad format profile !!");
    catalogue.language.save();
  }
}

TEST(RawLanguage, FolderAsPathDoesNoHarm) {
  const TestFolder folder;
  RawLanguage language;
  language.setPath(folder.path());
  language.loadMap();
  language.loadSection();
  EXPECT_EQ(bytesOf(language.text("G"_text, "id"_text)), "id");
  language.save();
  EXPECT_TRUE(isFolder(folder.path()));
}

TEST(RawLanguage, SubstituteReplacesTheFirstPlaceholderOnly) {
  const auto substitute = [](const RawString& text, const RawString& argument) {
    return bytesOf(RawLanguage::substitute(text, argument));
  };
  EXPECT_EQ(substitute("Cannot (%s) !!"_text, "C:\\%s"_text), "Cannot (C:\\%s) !!");
  EXPECT_EQ(substitute("%s and %s"_text, "one"_text), "one and %s");
  EXPECT_EQ(substitute("%s"_text, ""_text), "");
  EXPECT_EQ(substitute("no place %S %"_text, "lost"_text), "no place %S %");
  EXPECT_EQ(substitute("(%s)"_text, RawString::fromWide(u"\x3042")), "(\xE3\x81\x82)");
}

TEST(RawLanguage, GroupRegistersItsTableAndSavesWhenItGoes) {
  const TestFolder folder;
  RawLanguage& language = RawLanguage::instance();
  language.setPath(folder.write(fileName, "[L]\r\nMenu_Open=Auf\r\n"));
  language.setSelection("L"_text);
  language.loadMap();
  language.loadSection();
  {
    const RawLanguageGroup group("Menu"_text, menuTable());
    EXPECT_EQ(bytesOf(group.text("Open"_text)), "Auf");
    EXPECT_EQ(bytesOf(group.text("Close"_text)), "Close\r\nthen\r\nleave");
    EXPECT_EQ(folder.read(fileName), "[L]\r\nMenu_Open=Auf\r\n");
  }
  language.setPath(RawString());
  EXPECT_EQ(sectionOf(folder.file(fileName), "L"),
            (Texts{"Menu_Close=Close\\nthen\\nleave", "Menu_Open=Auf"}));
}

TEST(RawLanguage, AnyThreadMayAsk) {
  Catalogue catalogue("[L]\r\nG_known=yes\r\n");
  RawLanguage& language = catalogue.language;
  std::atomic<int32_t> wrong{0};
  const auto ask = [&](int32_t seed) {
    for (int32_t i = 0; i < 200; ++i) {
      RawString known = language.text("G"_text, "known"_text);
      const RawString unknown = RawString::fromInt64((i * seed) % 40);
      if (!known.equals("yes"_text) || !language.text("G"_text, unknown).equals(unknown)) ++wrong;
      known.append("!"_text); // a value of its own
      if (i % 50 == 0) language.save();
      if (i % 20 == 0) language.loadMap();
      if (language.languageMap().count() != 1) ++wrong;
    }
  };
  std::thread threads[] = {std::thread(ask, 1), std::thread(ask, 3), std::thread(ask, 7)};
  for (std::thread& thread : threads) thread.join();
  language.save();
  EXPECT_EQ(wrong, 0);
  // The translation, the two messages and all unknown ids.
  EXPECT_EQ(sectionOf(catalogue.path(), "L").size(), 1u + 2u + 40u);
}

#ifndef _WIN32

TEST(RawLanguage, NoFaultCostsATranslation) {
  const string translated = "[L]\r\nG_mine=meins\r\n[M]\r\nG_other=anderes\r\n";
  int32_t number = 1;
  for (bool reached = true; reached; ++number) {
    Catalogue catalogue(translated);
    {
      HostFaults::Scope faults;
      faults.failNth(number);
      catalogue.start("L"_text);
      catalogue.text("BadFormatProfile");
      catalogue.language.save();
      reached = faults.calls() >= number;
    }
    const Texts own = sectionOf(catalogue.path(), "L");
    EXPECT_NE(std::find(own.begin(), own.end(), "G_mine=meins"), own.end()) << number;
    EXPECT_EQ(sectionOf(catalogue.path(), "M"), Texts{"G_other=anderes"}) << number;
  }
  EXPECT_GT(number, 10);
}

#endif
