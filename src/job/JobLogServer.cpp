#include "job/JobLog.h"

#include "job/JobLogLine.h"
#include "job/JobProduct.h"
#include "raw/RawFolder.h"
#include "raw/RawPath.h"

namespace JobLayer {

namespace {

// Deletes the first files by name until fewer than `maxFiles` are left: room for the new one.
void pruneFolder(const RawString& folder, int32_t maxFiles) {
  RawLayer::RawFolderFileList files;
  RawLayer::RawFolderWalker walker(folder);
  while (walker.next())
    if (!walker.isFolder()) files.add(walker);
  if (files.count() < maxFiles) return;
  RawLayer::RawFolderFileListSort(files).sortAll();
  while (files.count() >= maxFiles) {
    RawLayer::deleteFile(files.element(files.first())->fullPath);
    files.erase(files.first());
  }
}

} // namespace

JobLogServer::JobLogServer()
    : programLine_(JobLogLine::comment(JobProduct::name(), " "_text, JobProduct::version())) {
  storer_.stem = JobProduct::name();
  storer_.extension = "log"_text;
  storer_.separater = this;
}

JobLogServer::~JobLogServer() {
  stop();
}

JobLogServer& JobLogServer::instance() {
  static JobLogServer server;
  return server;
}

void JobLogServer::start(const RawString& logFolder, int32_t maxFiles) {
  if (storer_.isRunning()) storer_.stop();
  RawLayer::makeFolders(logFolder);
  if (maxFiles > 0) pruneFolder(logFolder, maxFiles);
  storer_.folder = logFolder;
  storer_.open();
}

void JobLogServer::onNewFile() {
  storer_.writeDirect(programLine_);
  storer_.writeDirect(
      JobLogLine::comment("<TimeZone>"_text, JobLogLine::zone(RawLayer::localOffsetMinutes())));
  storer_.writeDirect("\r\n"_text);
}

} // namespace JobLayer
