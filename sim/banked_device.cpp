#include "sim/banked_device.h"

namespace fc {

BankedDevice::BankedDevice() : BankedDevice(Config{}) {}

BankedDevice::BankedDevice(const Config& config) : SerialDevice(config.settings), config_(config) {}

void BankedDevice::onReceive(Byte byte) {
    char c = static_cast<char>(byte);
    if (inLine_) {
        if (c == '\r') {
            inLine_ = false;
            frameComplete(line_);
        } else {
            line_ += c;
        }
    } else if (c == 'S') {
        inLine_ = true;
        line_.assign(1, 'S');
    } else if (c == 0x15 || c == 0x17 || c == 0x05 || c == 0x07) {
        frameComplete(std::string(1, c));
    }
}

void BankedDevice::frameComplete(const std::string& text) {
    long index = static_cast<long>(frames_.size());
    frames_.push_back(Frame{index, text, now()});
    if (faults.closeAt == index)
        faults.closed = true;
    if (faults.closed || faults.silentAt.count(index))
        return;
    Micros delay = config_.lineTime;
    std::string answer = normalAnswer(text, delay);
    auto wrong = faults.wrongByteAt.find(index);
    if (wrong != faults.wrongByteAt.end())
        answer = std::string(1, wrong->second);
    after(delay, [this, answer] { send(answer); });
}

std::string BankedDevice::normalAnswer(const std::string& text, Micros& delay) {
    if (text == "\x15")
        return "\x15";
    if (text == "\x17") {
        erased_ = true;
        delay += config_.eraseTime;
        return "\x1A";
    }
    if (text == "\x05") {
        banks_.push_back(linesInBank_);
        linesInBank_ = 0;
        delay += config_.bankTime;
        return "\x1B";
    }
    if (text == "\x07") {
        // The end of the load records what is gathered too.
        if (linesInBank_ > 0)
            banks_.push_back(linesInBank_);
        linesInBank_ = 0;
        ended_ = true;
        return "\x1C";
    }
    if (!firstLineSeen_) {
        firstLineSeen_ = true;
        return "\x17";
    }
    ++linesInBank_;
    return "\x19";
}

}  // namespace fc
