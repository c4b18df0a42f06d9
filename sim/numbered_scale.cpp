#include "sim/numbered_scale.h"

#include <cctype>

namespace fc {

namespace {

int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

int byteAt(const std::string& text, size_t pos) {
    if (pos + 2 > text.size())
        return -1;
    int high = hexValue(text[pos]), low = hexValue(text[pos + 1]);
    return (high < 0 || low < 0) ? -1 : high * 16 + low;
}

int recordType(const std::string& record) {
    return record.size() >= 9 ? byteAt(record, 7) : -1;
}

}  // namespace

bool recordChecksumIsRight(const std::string& record) {
    if (record.size() < 11 || record[0] != ':' || record.size() % 2 == 0)
        return false;
    int sum = 0;
    for (size_t pos = 1; pos + 1 < record.size(); pos += 2) {
        int value = byteAt(record, pos);
        if (value < 0)
            return false;
        sum += value;
    }
    return (sum & 0xFF) == 0;
}

NumberedScale::NumberedScale() : NumberedScale(Config{}) {}

NumberedScale::NumberedScale(const Config& config)
    : SerialDevice(config.settings), config_(config) {}

void NumberedScale::onReceive(Byte byte) {
    char c = static_cast<char>(byte);
    switch (reading_) {
        case Reading::Idle:
            if (c == 'H') {
                frameStart_ = now();
                number_.clear();
                reading_ = Reading::Number;
            }
            break;
        case Reading::Number:
            if (c == ':') {
                record_.assign(1, ':');
                reading_ = Reading::Record;
            } else if (hexValue(c) >= 0) {
                number_ += c;
            } else {
                reading_ = Reading::Idle;  // noise: wait for the next frame head
            }
            break;
        case Reading::Record: {
            record_ += c;
            int length = record_.size() >= 3 ? byteAt(record_, 1) : -1;
            if (record_.size() >= 3 && length < 0) {
                reading_ = Reading::Idle;
            } else if (length >= 0 && record_.size() == static_cast<size_t>(11 + 2 * length)) {
                reading_ = Reading::Idle;
                frameComplete();
            }
            break;
        }
    }
}

void NumberedScale::frameComplete() {
    long number = std::stol(number_.empty() ? "0" : number_, nullptr, 16);
    frames_.push_back(Frame{number, record_, now(), frameStart_});
    answer(frames_.back());
}

void NumberedScale::answer(const Frame& frame) {
    if (faults.closeAt == frame.number)
        faults.closed = true;
    if (faults.closed || faults.silentAt.count(frame.number))
        return;
    auto wrong = faults.wrongByteAt.find(frame.number);
    if (wrong != faults.wrongByteAt.end())
        return reply(frame.number, std::string(1, wrong->second) + "\r", config_.lineTime);
    auto refusal = faults.refusals.find(frame.number);
    if (refusal != faults.refusals.end() && refusal->second > 0) {
        --refusal->second;
        return reply(frame.number, "\x15", config_.lineTime);
    }
    if (!recordChecksumIsRight(frame.record))
        return reply(frame.number, "\x15", config_.lineTime);
    std::string bytes = normalAnswer(frame);
    if (bytes.empty())
        return;
    Micros delay = config_.lineTime;
    if (frame.number == 1 && !erased_) {
        erased_ = true;
        delay += config_.eraseTime;
    }
    reply(frame.number, bytes, delay);
}

// What the loader answers a sound record, by its type.
std::string NumberedScale::normalAnswer(const Frame& frame) {
    int type = recordType(frame.record);
    const std::string ack2 = "\x06\r";
    if (frame.number == 1)
        return ack2;  // the first line, after the erase
    switch (type) {
        case 0x00:
            flashed_.emplace_back(byteAt(frame.record, 3) * 256 + byteAt(frame.record, 5),
                                  frame.record.substr(9, frame.record.size() - 11));
            return "\x06";
        case 0x01:
            endOfFileSeen_ = true;
            return ack2;
        case 0x67:
            if (config_.wantsMac)
                return "\x02\r";
            return config_.answersEndCommand ? ack2 : "";
        case 0x68:
            mac_ = frame.record.substr(9, 12);
            return ack2;
        default:
            return ack2;
    }
}

void NumberedScale::reply(long, const std::string& bytes, Micros delay) {
    after(delay, [this, bytes] {
        answerTimes_.push_back(now());
        send(bytes);
    });
}

}  // namespace fc
