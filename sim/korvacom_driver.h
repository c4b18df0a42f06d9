// A communications driver for a graphic display, speaking the driver's file
// interface in its folder: it reads its switches from "Korctrl.txt", takes
// one-letter commands from "ctrl.txt" (deleting the file once taken: "s"
// start sending, "S" stop, "R" restart, "G" end), sends the lines of
// "TX.TXT" one at a time while started, marking each sent line by a "*" in
// its third character, and writes the display's answers as lines of
// "RX.TXT". File names are found without regard to case. It knows nothing of
// time: whoever runs it calls takeCommand and sendNext at its own pace.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "sim/graphic_display.h"

namespace fc::sim {

struct DriverFaults {
    bool neverAnswers = false;  // takes no command and sends nothing
    long stopAfterLines = -1;   // sends this many lines in all, then no more
};

class KorvacomDriver {
  public:
    using Faults = DriverFaults;

    // The lines sent reach `display`'s own simulated display.
    KorvacomDriver(std::filesystem::path folder, Faults faults, GraphicDisplay::Faults display);

    // Carries each line sent to the display and gives back its answer, if
    // any; without one, the driver's own simulated display takes the lines.
    using Carrier = std::function<std::optional<std::string>(const std::string& line)>;
    void setCarrier(Carrier carrier) { carrier_ = std::move(carrier); }

    // Reads the switch file; false when there is none.
    bool readSwitches();
    const std::vector<std::string>& switches() const { return switches_; }

    // Takes the pending command, if any: the letter, or 0.
    char takeCommand();
    // Sends the first unmarked line of "TX.TXT" while started. True when a
    // line was sent.
    bool sendNext();

    bool sending() const { return sending_; }
    bool ended() const { return ended_; }
    long linesSent() const { return sent_; }
    const std::string& commandsTaken() const { return commands_; }
    GraphicDisplay& display() { return display_; }

    // The path of `name` in the folder, found without regard to case.
    std::filesystem::path file(const std::string& name) const;

  private:
    void writeAnswer(const std::string& line);

    std::filesystem::path folder_;
    Faults faults_;
    GraphicDisplay display_;
    Carrier carrier_;
    std::vector<std::string> switches_;
    std::string commands_;
    bool sending_ = false;
    bool ended_ = false;
    long sent_ = 0;
};

}  // namespace fc::sim
