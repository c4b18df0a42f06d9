// Keeps the record of the loads of a main screen: when an Ethernet scale's
// turn ends, a line for that scale and pass is appended to the record file,
// whatever the turn's end (loaded, failed, never reached); and one for each
// load over RS-232. The screen tells it of the loads through its load hooks,
// and the program of the message boxes shown; nothing of the load waits on
// it.
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

    // Told of every message box the screen shows: the last one of a load
    // over RS-232 is what its record says of it.
    void boxShown(const std::string& text);

    // What the record of Ethernet scale i would say now, as its turn ends.
    LoadRecord recordOf(int i);
    // What the record of the load over RS-232 would say now, as it ends.
    LoadRecord serialRecord(bool ready);

  private:
    void turnStarted(int i);
    void turnEnded(int i);
    void serialStarted();
    void serialEnded(bool ready);
    void begin();
    // The fields every line has: the times, the station, level and model,
    // the firmware file.
    LoadRecord commonPart();
    void takeFileFacts(LoadRecord& record);
    void append(const LoadRecord& record);

    Firmcast& form_;
    RecordStation& station_;
    std::string path_;
    std::string start_;
    Micros startMicros_ = 0;
    long checksumAnswers_ = 0;
    int pass_ = 0;
    int serialLoads_ = 0;
    std::string lastBox_;
    // The facts of the firmware file, taken once for each file loaded.
    std::string factsOf_;
    std::optional<FileFacts> facts_;
};

}  // namespace fc
