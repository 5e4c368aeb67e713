// JobLogServer: the log of the process. Any thread posts whole lines; one background thread,
// JobLogStorer, writes them to a dated file of which only the newest are kept.
//
// Producers never wait for the disk. A folder or file that cannot be made leaves the log off: all
// lines are dropped and nothing is shown. `start` and `stop` belong to the main thread.
#pragma once

#include "job/JobFacts.h"
#include "raw/RawFile.h"
#include "raw/RawLock.h"
#include "raw/RawStringList.h"
#include "raw/RawSystem.h"
#include "raw/RawThread.h"

namespace JobLayer {

class JobLogStorer : public RawLayer::RawThreadUnit {
public:
  class Separater {
  public:
    virtual ~Separater() = default;
    // Writes the head of a file that has just been opened.
    virtual void onNewFile() = 0;
  };

  RawString folder;
  RawString stem;
  RawString extension;
  uint32_t byteLimit = 0; // 0: none; reached, the next line goes to a new file
  uint32_t lineLimit = 0;
  Separater* separater = nullptr;

  JobLogStorer();
  ~JobLogStorer() override;

  // Opens the file of this moment and starts the thread; false when either fails.
  bool open();
  void post(const RawString& line); // a copy of the line; dropped while not accepting
  void writeDirect(const RawString& line); // around the queue: for heads of files
  void stop(); // the stop protocol: waits until what was queued is written
  [[nodiscard]] RawString path() const { return path_; }
  [[nodiscard]] bool isAccepting();

protected:
  void run() override;

private:
  bool openFileOf(const RawLayer::RawMoment& moment);
  void closeFile();
  bool takeFirst(RawString& line);
  void writeLine(const RawString& line);
  RawString path_;
  bool accepting_ = true;
  uint32_t bytesWritten_ = 0;
  uint32_t linesWritten_ = 0;
  RawLayer::RawStringList queue_;
  RawLayer::RawFileOwner file_;
  RawLayer::RawEvent wakeUp_;
  uint32_t lastWait_ = 0;
  RawLayer::RawLock queueLock_;
};

class JobLogServer : public JobLogStorer::Separater {
public:
  JobLogServer();
  ~JobLogServer() override; // runs the stop protocol, so no queued line is lost
  static JobLogServer& instance();

  // Makes the folder, deletes the oldest files so that `maxFiles` remain with the new one (0 or
  // less keeps all), opens the file and writes its head.
  void start(const RawString& logFolder, int32_t maxFiles);
  void post(const RawString& line); // includes its line end
  void stop();
  void onNewFile() override;
  [[nodiscard]] RawString path() const { return storer_.path(); }
  JobLogStorer& storer() { return storer_; }

private:
  JobLogStorer storer_;
};

} // namespace JobLayer
