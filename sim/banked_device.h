// A Serie_H scale, TR-6100 or Matrix 4000 labeller in its boot loader,
// speaking the banked dialect: it answers the probe 0x15 with 0x15, the first
// S-record line with 0x17, erases its flash on 0x17 and says 0x1A, takes
// each further line with 0x19, records the bank gathered so far on 0x05
// (0x1B), and ends the load on 0x07 (0x1C).
#pragma once

#include <string>
#include <vector>

#include "sim/device/serial_device.h"
#include "sim/device_faults.h"

namespace fc {

class BankedDevice : public SerialDevice {
  public:
    struct Config {
        LineSettings settings{57600, 'N', 8, 1};
        Micros eraseTime = 5'000'000;
        Micros lineTime = 1'000;
        Micros bankTime = 200'000;  // writing a gathered bank to flash
    };
    // Every frame received, in order: a control byte, or a line without its CR.
    struct Frame {
        long index;
        std::string text;
        Micros at;
    };

    BankedDevice();
    explicit BankedDevice(const Config& config);

    DeviceFaults faults;

    void onReceive(Byte byte) override;

    const std::vector<Frame>& frames() const { return frames_; }
    // How many lines each recorded bank gathered, in order.
    const std::vector<int>& banksRecorded() const { return banks_; }
    bool erased() const { return erased_; }
    bool ended() const { return ended_; }

  private:
    void frameComplete(const std::string& text);
    std::string normalAnswer(const std::string& text, Micros& delay);

    Config config_;
    bool inLine_ = false;
    std::string line_;
    std::vector<Frame> frames_;
    std::vector<int> banks_;
    int linesInBank_ = 0;
    bool firstLineSeen_ = false;
    bool erased_ = false;
    bool ended_ = false;
};

}  // namespace fc
