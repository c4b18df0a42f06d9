// A scale (Serie_N, Serie_W) or TR-8200 labeller in its boot loader, speaking
// the numbered-line dialect: it reads frames "H<number>:<record>", checks
// each record's checksum, erases its flash on frame 1, and answers 0x06 (one
// byte for a data record, two for any other), 0x15 for a record it refuses,
// and 0x02 to the end command when it wants a MAC address.
#pragma once

#include <string>
#include <vector>

#include "sim/device/serial_device.h"
#include "sim/device_faults.h"

namespace fc {

class NumberedScale : public SerialDevice {
  public:
    struct Config {
        LineSettings settings{57600, 'E', 7, 1};
        Micros eraseTime = 8'000'000;   // the flash erase, on frame 1
        Micros lineTime = 1'000;        // writing one record
        bool wantsMac = false;          // answers the end command with 0x02
        bool answersEndCommand = true;  // else silence after the end command
    };
    struct Frame {
        long number;
        std::string record;
        Micros at;         // when its last character arrived
        Micros startedAt;  // when its "H" arrived
    };

    NumberedScale();
    explicit NumberedScale(const Config& config);

    DeviceFaults faults;

    void onReceive(Byte byte) override;

    const std::vector<Frame>& frames() const { return frames_; }
    // The data written to flash, by address (records of type 00 only).
    const std::vector<std::pair<long, std::string>>& flashed() const { return flashed_; }
    const std::string& mac() const { return mac_; }
    // When each answer went out, in order.
    const std::vector<Micros>& answerTimes() const { return answerTimes_; }
    bool erased() const { return erased_; }
    bool endOfFileSeen() const { return endOfFileSeen_; }

  private:
    void frameComplete();
    void answer(const Frame& frame);
    void reply(long number, const std::string& bytes, Micros delay);
    std::string normalAnswer(const Frame& frame);

    Config config_;
    enum class Reading { Idle, Number, Record } reading_ = Reading::Idle;
    std::string number_;
    std::string record_;
    std::vector<Frame> frames_;
    std::vector<std::pair<long, std::string>> flashed_;
    std::string mac_;
    std::vector<Micros> answerTimes_;
    Micros frameStart_ = 0;
    bool erased_ = false;
    bool endOfFileSeen_ = false;
};

// True when the bytes of an Intel HEX record (":" first) add up to 0.
bool recordChecksumIsRight(const std::string& record);

}  // namespace fc
