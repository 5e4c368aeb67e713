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
    // Writes the head of a file that has just been opened, by `writeDirect`.
    virtual void onNewFile() = 0;
  };

  // Set before `open`; read by the thread while it runs.
  RawString folder;
  RawString stem;
  RawString extension;
  uint32_t byteLimit = 0; // 0: none; once reached, the next line goes to a new file
  uint32_t lineLimit = 0; // heads of files count for neither
  Separater* separater = nullptr;

  JobLogStorer() = default;
  ~JobLogStorer() override; // closes the file; whoever owns the storer has stopped it

  // Opens the file of this moment and starts the thread, after the end of one that still runs.
  // False when either fails: then nothing is accepted and the queue is empty. Lines queued before
  // the first opening stand behind the file's head.
  bool open();
  void post(const RawString& line);        // a copy of the line; dropped while not accepting
  void writeDirect(const RawString& line); // around the queue: for heads of files
  // The stop protocol: takes no more lines and waits until the queued ones are written.
  void stop();
  [[nodiscard]] RawString path(); // of the file in use, or the last one
  [[nodiscard]] bool isAccepting();

 protected:
  void run() override;

 private:
  bool openFileOfNow();
  void closeFile();
  [[nodiscard]] RawString pathOf(const RawLayer::RawMoment& moment) const;
  [[nodiscard]] bool isLimitReached() const;
  void changeFile();
  bool takeFirst(RawString& line);
  void writeLine(const RawString& line);

  RawString path_;
  bool accepting_ = true;
  uint32_t bytesWritten_ = 0;
  uint32_t linesWritten_ = 0;
  RawLayer::RawStringList queue_; // oldest line in front
  RawLayer::RawFileOwner file_;
  RawLayer::RawEvent wakeUp_;
  uint32_t lastWait_ = 0;
  bool asleep_ = false;         // the thread found nothing and waits for the event, or is about to
  RawLayer::RawLock queueLock_; // guards `path_`, `accepting_`, `queue_` and `asleep_`
};

class JobLogServer : public JobLogStorer::Separater {
 public:
  JobLogServer();
  ~JobLogServer() override; // runs the stop protocol, so no queued line is lost
  static JobLogServer& instance();

  // Makes the folder, deletes the first files in it by name so that `maxFiles` are there with the
  // new one (0 or less keeps all), opens the file and writes its head. Files of others that lie in
  // the folder count and are deleted too.
  void start(const RawString& logFolder, int32_t maxFiles);
  void post(const RawString& line) { storer_.post(line); } // the line includes its CR LF
  void stop() { storer_.stop(); }
  void onNewFile() override;
  [[nodiscard]] RawString path() { return storer_.path(); }
  JobLogStorer& storer() { return storer_; }

 private:
  JobLogStorer storer_;
  RawString programLine_; // the first line of each head
};

} // namespace JobLayer
