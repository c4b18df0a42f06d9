// Keeps the record of the Ethernet loads of a main screen: when a scale's
// turn ends, a line for that scale and pass is appended to the record file,
// whatever the turn's end (loaded, failed, never reached). The screen tells
// it of the turns through its load hooks; nothing of the load waits on it.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/pump.h"
#include "platform/record_station.h"
#include "record/load_record.h"

namespace fc {

class Firmcast;

class LoadRecorder {
  public:
    // Listens to `form`'s scale turns and appends to `path`.
    LoadRecorder(Firmcast& form, RecordStation& station, std::string path);
    LoadRecorder(const LoadRecorder&) = delete;
    LoadRecorder& operator=(const LoadRecorder&) = delete;

    // Told of a line that could not be written, with the system's reason.
    std::function<void(const std::string& why)> onWriteFailure;

    // What the record of scale i would say now, as its turn ends.
    LoadRecord recordOf(int i);

  private:
    void turnStarted(int i);
    void turnEnded(int i);
    void takeFileFacts(LoadRecord& record);

    Firmcast& form_;
    RecordStation& station_;
    std::string path_;
    std::string start_;
    Micros startMicros_ = 0;
    long checksumAnswers_ = 0;
    int pass_ = 0;
    // The facts of the firmware file, taken once for each file loaded.
    std::string factsOf_;
    std::optional<FileFacts> facts_;
};

}  // namespace fc
