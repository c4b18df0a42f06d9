#include "sim/visor_boot_loader.h"

#include <cstdio>
#include <cstdlib>

#include "sim/numbered_scale.h"

namespace fc {

namespace {

constexpr const char* kDone = ".\r\n";
constexpr const char* kRefused = "X\r\n";

int hexByte(const std::string& text, std::size_t pos) {
    if (pos + 2 > text.size())
        return -1;
    char digits[3] = {text[pos], text[pos + 1], 0};
    char* end = nullptr;
    const long value = std::strtol(digits, &end, 16);
    return end == digits + 2 ? static_cast<int>(value) : -1;
}

long hexWord(const std::string& text, std::size_t pos) {
    const int high = hexByte(text, pos), low = hexByte(text, pos + 2);
    return high < 0 || low < 0 ? -1 : high * 256L + low;
}

std::string hex2(int value) {
    char out[3];
    std::snprintf(out, sizeof out, "%02X", value & 0xFF);
    return out;
}

std::string hex4(long value) {
    char out[5];
    std::snprintf(out, sizeof out, "%04lX", value & 0xFFFF);
    return out;
}

// The length a record has once its count is known: ":", count, address,
// type, data, checksum.
std::size_t recordLength(const std::string& record) {
    const int count = hexByte(record, 1);
    return count < 0 ? 0 : 11 + 2 * static_cast<std::size_t>(count);
}

}  // namespace

VisorBootLoader::VisorBootLoader(const Config& config, Output output, Timer timer, Clock clock)
    : config_(config),
      output_(std::move(output)),
      timer_(std::move(timer)),
      clock_(std::move(clock)),
      flash_(kFlashSize, 0xFF) {}

bool VisorBootLoader::on() const {
    return clock_() >= offUntil_;
}

void VisorBootLoader::switchOffFor(Micros duration) {
    offUntil_ = clock_() + duration;
    synced_ = false;
    record_.clear();
}

void VisorBootLoader::receive(const std::string& bytes) {
    heard_.push_back(Heard{clock_(), bytes});
    if (!on())
        return;
    std::string echo;
    for (char c : bytes) {
        if (!synced_) {
            if (c == 'U') {
                synced_ = true;
                ++syncs_;
                echo += faults.doubleSync ? "UU" : "U";
            }
            continue;
        }
        echo.push_back(c);
    }
    if (!echo.empty())
        output_(echo);
    if (synced_) {
        for (char c : bytes) hear(c);
    }
}

void VisorBootLoader::hear(char c) {
    if (record_.empty() && c != ':')
        return;
    record_.push_back(c);
    const std::size_t length = recordLength(record_);
    if (record_.size() >= 3 && (length == 0 || record_.size() >= length)) {
        const std::string record = record_;
        record_.clear();
        recordComplete(record);
    }
}

void VisorBootLoader::recordComplete(const std::string& record) {
    const long number = static_cast<long>(records_.size());
    records_.push_back(record);
    if (number == faults.silentAtRecord)
        return;
    if (number == faults.wrongAnswerAtRecord || !recordChecksumIsRight(record)) {
        answer(config_.commandTime, kRefused);
        return;
    }
    perform(record, number);
}

void VisorBootLoader::perform(const std::string& record, long /*number*/) {
    const int count = hexByte(record, 1);
    const long address = hexWord(record, 3);
    const int type = hexByte(record, 7);
    const int first = hexByte(record, 9);
    if (type == 0) {
        for (int i = 0; i < count && address + i < kFlashSize; ++i)
            flash_[address + i] &= static_cast<Byte>(hexByte(record, 9 + 2 * i));
        programmed_.push_back(address);
        answer(config_.programTime, kDone);
    } else if (type == 3 && first == 0x07) {
        std::fill(flash_.begin(), flash_.end(), Byte{0xFF});
        ++erases_;
        answer(config_.eraseTime, kDone);
    } else if (type == 3 && first == 0x06) {
        if (!faults.bsbStuck)
            bsb_ = static_cast<Byte>(hexByte(record, 13));
        answer(config_.commandTime, kDone);
    } else if (type == 4) {
        const long from = hexWord(record, 9), to = hexWord(record, 13);
        if (hexByte(record, 17) == 1) {
            ++blankChecks_;
            answer(config_.blankCheckTime, blank(from, to) ? kDone : "R\r\n");
        } else if (faults.silentDumps.count(dumps_++) > 0) {
            // Asked, and never answered.
        } else {
            dumped_.push_back(from);
            answer(config_.dumpTime, dump(from, to));
        }
    } else if (type == 5) {
        answer(config_.commandTime, hex2(bsb_) + kDone);
    } else {
        answer(config_.commandTime, kDone);
    }
}

void VisorBootLoader::answer(Micros work, const std::string& text) {
    timer_(work + faults.slowAnswer, [this, text] {
        if (on())
            output_(text);
    });
}

std::string VisorBootLoader::dump(long from, long to) const {
    std::string out;
    for (long line = from; line <= to && line < kFlashSize; line += 16) {
        out += "\r\n" + hex4(line) + "=";
        for (long a = line; a < line + 16 && a <= to && a < kFlashSize; ++a) {
            Byte value = flash_[a];
            if (a == faults.wrongDumpByteAt)
                value ^= 0x01;
            out += hex2(value);
        }
    }
    return out;
}

bool VisorBootLoader::blank(long from, long to) const {
    for (long a = from; a <= to && a < kFlashSize; ++a) {
        if (a >= 0 && flash_[a] != 0xFF)
            return false;
    }
    return true;
}

}  // namespace fc
