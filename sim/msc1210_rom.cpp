#include "sim/msc1210_rom.h"

#include <algorithm>
#include <cstdlib>

#include "sim/numbered_scale.h"

namespace fc {

namespace {

int hexByte(const std::string& text, std::size_t pos) {
    if (pos + 2 > text.size())
        return -1;
    char digits[3] = {text[pos], text[pos + 1], 0};
    char* end = nullptr;
    long value = std::strtol(digits, &end, 16);
    return end == digits + 2 ? static_cast<int>(value) : -1;
}

long hexWord(const std::string& text, std::size_t pos) {
    int high = hexByte(text, pos), low = hexByte(text, pos + 2);
    return high < 0 || low < 0 ? -1 : high * 256L + low;
}

// How many characters a monitor command has, by its first.
std::size_t commandLength(char first) {
    switch (first) {
        case 'R':
        case 'C':
            return 6;
        case 'M':
            return 5;
        default:
            return 1;
    }
}

constexpr const char* kOk = "\rok\r\n";
constexpr long kConfigAddress = 0x807E;

}  // namespace

Msc1210Rom::Msc1210Rom() : Msc1210Rom(Config{}) {}

Msc1210Rom::Msc1210Rom(const Config& config)
    : SerialDevice(config.settings),
      config_(config),
      mode_(config.startsInRom ? Mode::Banner : Mode::Running),
      flash_(kFlashSize, 0xFF) {}

// DTR raised holds the chip in reset; lowered, it starts in its ROM.
void Msc1210Rom::onDtrChanged(bool on) {
    if (on) {
        mode_ = Mode::Reset;
        return;
    }
    if (mode_ != Mode::Reset)
        return;
    ++resets_;
    command_.clear();
    record_.clear();
    chipEraseArmed_ = false;
    mode_ = faults.silentResets > 0 ? Mode::Running : Mode::Banner;
    if (faults.silentResets > 0)
        --faults.silentResets;
}

void Msc1210Rom::onReceive(Byte byte) {
    char c = static_cast<char>(byte);
    switch (mode_) {
        case Mode::Running:
        case Mode::Reset:
            break;
        case Mode::Banner:
            if (c == '\r') {
                send("\r\n" +
                     (faults.bannerInstead.empty() ? config_.banner : faults.bannerInstead));
                mode_ = Mode::Monitor;
            }
            break;
        case Mode::Monitor:
            monitorCharacter(c);
            break;
        case Mode::Load:
            loadCharacter(c);
            break;
    }
}

void Msc1210Rom::monitorCharacter(char c) {
    if (command_.empty() && (c == '\r' || c == '\n')) {
        send(std::string(1, c));
        return;
    }
    if (command_.empty() && c == 'L') {
        commands_.push_back("L");
        mode_ = Mode::Load;
        return;
    }
    send(std::string(1, c));
    command_.push_back(c);
    if (command_.size() == commandLength(command_[0]))
        commandComplete();
}

void Msc1210Rom::commandComplete() {
    const std::string command = command_;
    command_.clear();
    commands_.push_back(command);
    if (command[0] == 'R' && command[1] == 'W') {
        int reg = hexByte(command, 2), value = hexByte(command, 4);
        if (reg >= 0 && value >= 0)
            registers_[reg] = value;
        send(faults.registerWritesFail ? "\n\n" : "\r\n");
    } else if (command == "M8000") {
        chipEraseArmed_ = true;
        after(config_.chipEraseTime / 2, [this] { send(kOk); });
    } else if (command == "M0000" && chipEraseArmed_) {
        chipEraseArmed_ = false;
        std::fill(flash_.begin(), flash_.end(), Byte{0xFF});
        ++chipErases_;
        after(config_.chipEraseTime, [this] { send(kOk); });
    } else if (command[0] == 'C' && command[1] == 'P') {
        long page = hexWord(command, 2);
        if (page >= 0 && page + 128 <= kFlashSize) {
            std::fill_n(flash_.begin() + page, 128, Byte{0xFF});
            erasedPages_.push_back(page);
            after(config_.pageEraseTime, [this] { send(kOk); });
        } else {
            send("\r?\r\n");
        }
    } else if (command == "E") {
        send("\r\n");
    } else {
        send("\r?\r\n");
    }
}

void Msc1210Rom::loadCharacter(char c) {
    if (c == '\n') {
        std::string record = record_;
        record_.clear();
        if (!record.empty() && record.back() == '\r')
            record.pop_back();
        if (!record.empty())
            recordComplete(record);
        return;
    }
    record_.push_back(c);
    if (!faults.answerEarly.empty() && record_.size() == 9 && hexByte(record_, 7) == 0) {
        send(faults.answerEarly);
        answeredEarly_ = true;
    }
}

void Msc1210Rom::recordComplete(const std::string& record) {
    const long number = records_++;
    const bool answered = answeredEarly_;
    answeredEarly_ = false;
    if (number == faults.silentAtRecord)
        return;
    if (!recordChecksumIsRight(record)) {
        answerRecord("X");
        return;
    }
    const int length = hexByte(record, 1);
    const long address = hexWord(record, 3);
    const int type = hexByte(record, 7);
    if (type == 1) {
        endSeen_ = true;
        answerRecord(faults.wrongEndAnswer ? "." : "T");
        return;
    }
    if (address == kConfigAddress && length == 2) {
        hcr1_ = hexByte(record, 9);
        hcr0_ = hexByte(record, 11);
    } else {
        recordAddresses_.push_back(address);
        for (int i = 0; i < length && address + i < kFlashSize; ++i)
            flash_[address + i] &= static_cast<Byte>(hexByte(record, 9 + 2 * i));
    }
    if (answered)
        return;
    if (number == faults.wrongAnswerAtRecord) {
        answerRecord(std::string(1, faults.wrongAnswer));
        return;
    }
    answerRecord(".");
}

void Msc1210Rom::answerRecord(const std::string& answer) {
    after(config_.recordTime, [this, answer] { send(answer); });
}

}  // namespace fc
