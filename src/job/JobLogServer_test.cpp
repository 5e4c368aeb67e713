#include "job/JobLog.h"

#include "job/JobLogLine.h"

#include "TestFolder.h"
#include "TestText.h"

#include <gtest/gtest.h>

using namespace JobLayer;

namespace {

std::string nameOf(JobLogServer& server) {
  const std::string path = bytesOf(server.path());
  return path.substr(path.find_last_of("\\/") + 1);
}

int countFiles(const TestFolder& folder, const std::vector<std::string>& names) {
  int count = 0;
  for (const std::string& name : names) count += folder.has(name) ? 1 : 0;
  return count;
}

// What a log file begins with here and now.
std::string head() {
  return "// Tarvellon Version 1.37.2024.0907\r\n// <TimeZone>" +
         bytesOf(JobLogLine::zone(RawLayer::localOffsetMinutes())) + "\r\n\r\n";
}

} // namespace

TEST(JobLogServer, AFileBeginsWithItsHead) {
  const TestFolder folder;
  JobLogServer server;
  server.start(folder.path(), 0);
  server.post("line\r\n"_text);
  server.stop();
  EXPECT_EQ(folder.read(nameOf(server)), head() + "line\r\n");
}

TEST(JobLogServer, MakesTheFolderWithItsParents) {
  const TestFolder folder;
  const RawString deep = raw(bytesOf(folder.path()) + "/a/b");
  JobLogServer server;
  server.start(deep, 200);
  server.stop();
  EXPECT_EQ(folder.read("a/b/" + nameOf(server)), head());
}

TEST(JobLogServer, NamesItsFiles) {
  const TestFolder folder;
  JobLogServer server;
  server.start(folder.path(), 0);
  server.stop();
  const std::string name = nameOf(server);
  EXPECT_EQ(name.size(), std::string("Tarvellon_20241007_181530_042.log").size());
  EXPECT_EQ(name.substr(0, 10), "Tarvellon_");
  EXPECT_EQ(name.substr(name.size() - 4), ".log");
}

TEST(JobLogServer, ThreeOfFiveFilesLeaveForANewThird) {
  const TestFolder folder;
  const std::vector<std::string> names = {"a_2.log", "a_4.log", "a_1.log", "a_5.log", "a_3.log"};
  for (const std::string& name : names) folder.write(name, "old");
  JobLogServer server;
  server.start(folder.path(), 3);
  server.stop();
  EXPECT_EQ(countFiles(folder, names), 2);
  EXPECT_TRUE(folder.has("a_4.log"));
  EXPECT_TRUE(folder.has("a_5.log"));
  EXPECT_TRUE(folder.has(nameOf(server)));
}

TEST(JobLogServer, FewerFilesThanTheLimitStay) {
  const TestFolder folder;
  const std::vector<std::string> names = {"a", "b"};
  for (const std::string& name : names) folder.write(name, "old");
  JobLogServer server;
  server.start(folder.path(), 3);
  server.stop();
  EXPECT_EQ(countFiles(folder, names), 2);
}

TEST(JobLogServer, ALimitOfOneLeavesTheNewFileAlone) {
  const TestFolder folder;
  const std::vector<std::string> names = {"a", "b"};
  for (const std::string& name : names) folder.write(name, "old");
  JobLogServer server;
  server.start(folder.path(), 1);
  server.stop();
  EXPECT_EQ(countFiles(folder, names), 0);
  EXPECT_TRUE(folder.has(nameOf(server)));
}

TEST(JobLogServer, NoLimitDeletesNothing) {
  for (const int32_t limit : {0, -1}) {
    const TestFolder folder;
    const std::vector<std::string> names = {"a", "b", "c", "d"};
    for (const std::string& name : names) folder.write(name, "old");
    JobLogServer server;
    server.start(folder.path(), limit);
    server.stop();
    EXPECT_EQ(countFiles(folder, names), 4);
  }
}

TEST(JobLogServer, FilesOfOthersCountAndGoByNameWithoutCase) {
  const TestFolder folder;
  for (const std::string name : {"B.txt", "a.doc", "C"}) folder.write(name, "mine");
  JobLogServer server;
  server.start(folder.path(), 2);
  server.stop();
  EXPECT_FALSE(folder.has("a.doc"));
  EXPECT_FALSE(folder.has("B.txt"));
  EXPECT_TRUE(folder.has("C"));
}

TEST(JobLogServer, FoldersAreNeitherCountedNorDeleted) {
  const TestFolder folder;
  folder.makeFolder("a");
  folder.makeFolder("b");
  folder.write("c", "old");
  JobLogServer server;
  server.start(folder.path(), 2);
  server.stop();
  EXPECT_TRUE(folder.has("a"));
  EXPECT_TRUE(folder.has("b"));
  EXPECT_TRUE(folder.has("c"));
}

TEST(JobLogServer, StaysOffWhereNoFolderCanBeMade) {
  const TestFolder folder;
  const RawString blocked = raw(bytesOf(folder.write("file", "x")) + "/logs");
  JobLogServer server;
  server.start(blocked, 5);
  EXPECT_FALSE(server.storer().isAccepting());
  server.post("line\r\n"_text);
  server.stop();
  EXPECT_EQ(folder.read("file"), "x");
}

TEST(JobLogServer, ItsEndLosesNoLine) {
  const TestFolder folder;
  std::string name;
  std::string all = head();
  {
    JobLogServer server;
    server.start(folder.path(), 0);
    name = nameOf(server);
    for (int i = 0; i < 1000; ++i) {
      const std::string line = std::to_string(i) + "\r\n";
      all += line;
      server.post(raw(line));
    }
  }
  EXPECT_EQ(folder.read(name), all);
}

TEST(JobLogServer, EachFileOfAChangeHasItsHead) {
  const TestFolder folder;
  JobLogServer server;
  server.storer().lineLimit = 1;
  server.start(folder.path(), 0);
  const std::string first = nameOf(server);
  server.post("one\r\n"_text);
  server.post("two\r\n"_text);
  for (int i = 0; i < 5000 && nameOf(server) == first; ++i) RawLayer::rawSleep(1);
  server.stop();
  EXPECT_EQ(folder.read(first), head() + "one\r\n");
  EXPECT_EQ(folder.read(nameOf(server)), head() + "two\r\n");
}

TEST(JobLogServer, IsOneForTheProcess) {
  EXPECT_EQ(&JobLogServer::instance(), &JobLogServer::instance());
}
