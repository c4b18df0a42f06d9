#include "sim/ethernet_scale.h"

#include <algorithm>

namespace fc {

namespace {

constexpr long kHeader = 5;  // type, bank (2), number (2)

char hexDigit(int value) {
    return "0123456789ABCDEF"[value & 0xF];
}

std::uint8_t byteAt(const std::string& text, size_t index) {
    return static_cast<std::uint8_t>(text[index]);
}

}  // namespace

EthernetScale::EthernetScale() : image_(static_cast<size_t>(kFlashSize), 0x00) {}

std::unique_ptr<TcpDevice> EthernetScale::acceptOrRefuse(std::unique_ptr<EthernetScale> scale) {
    if (!scale || scale->faults.refuseConnections)
        return nullptr;
    return scale;
}

void EthernetScale::onConnect(TcpDeviceLink& link) {
    TcpDevice::onConnect(link);
    // A new connection starts the boot loader's count again; its flash, MAC
    // and record stay.
    pending_.clear();
    connectionMessages_ = 0;
    failed_ = false;
    reading = faults.stopReadingAt != 0;
    if (faults.readBytesPerSecond > 0)
        readBytesPerSecond = faults.readBytesPerSecond;
}

long EthernetScale::messageSize(std::uint8_t) {
    return kHeader + 1024;
}

// Reads end at message boundaries: the type byte alone first, then the rest
// of the message it starts, so that a fault at a message falls exactly
// between two messages.
long EthernetScale::readLimit() const {
    if (pending_.empty())
        return 1;
    return messageSize(byteAt(pending_, 0)) - static_cast<long>(pending_.size());
}

void EthernetScale::onReceive(const std::string& bytes) {
    size_t at = 0;
    while (at < bytes.size()) {
        if (pending_.empty() && faults.stopReadingAt == connectionMessages_) {
            reading = false;
            return;
        }
        pending_.push_back(bytes[at++]);
        long size = messageSize(byteAt(pending_, 0));
        long need = size - static_cast<long>(pending_.size());
        long part = std::min(need, static_cast<long>(bytes.size() - at));
        pending_.append(bytes, at, static_cast<size_t>(part));
        at += static_cast<size_t>(part);
        if (static_cast<long>(pending_.size()) == size) {
            std::string message;
            message.swap(pending_);
            take(message);
            if (!reading)
                return;
        }
    }
    if (pending_.empty() && faults.stopReadingAt == connectionMessages_)
        reading = false;
}

void EthernetScale::take(const std::string& message) {
    std::uint8_t tipo = byteAt(message, 0);
    long index = connectionMessages_++;
    types_.push_back(tipo);
    switch (tipo) {
        case kErase:
            reading = false;
            after(eraseTime, [this] { finishErase(); });
            break;
        case kData:
            storeData(message);
            break;
        case kScaleByte:
            scaleBytes_.push_back(message[kHeader]);
            break;
        case kEndOfLoad: {
            if (faults.silentEndOfLoad)
                break;
            long checksum = checksumOf(image_);
            if (faults.wrongChecksum)
                checksum = (checksum + 1) & 0xFFFF;
            answer(checksumAnswer(checksum));
            break;
        }
        case kMac:
            for (size_t k = 0; k < mac_.size(); ++k) mac_[k] = byteAt(message, kHeader + k);
            macStored_ = true;
            if (onMacStored)
                onMacStored(mac_);
            break;
        default:
            break;
    }
    if (index == faults.failAt) {
        failed_ = true;
        reading = false;
        answer(errorAnswer(faults.errorNumber));
    }
    if (index == faults.dropAt) {
        failed_ = true;
        reading = false;
        resetConnection();
    }
}

// A data message's payload goes to bank * 16 + (number - 1) * 1024; what
// falls outside the flash is dropped.
void EthernetScale::storeData(const std::string& message) {
    long bank = byteAt(message, 1) | (byteAt(message, 2) << 8);
    long number = byteAt(message, 3) | (byteAt(message, 4) << 8);
    long address = bank * 16 + (number - 1) * 1024;
    for (size_t k = kHeader; k < message.size(); ++k, ++address) {
        long cell = address - kFlashBase;
        if (cell >= 0 && cell < kFlashSize)
            image_[static_cast<size_t>(cell)] = byteAt(message, k);
    }
}

void EthernetScale::finishErase() {
    std::fill(image_.begin(), image_.end(), 0xFF);
    erased_ = true;
    if (!faults.silentErase)
        answer(eraseAnswer());
    if (!failed_ && faults.stopReadingAt != connectionMessages_)
        reading = true;
}

void EthernetScale::answer(const std::string& bytes) {
    answers_.push_back(bytes);
    if (!faults.splitAnswers || bytes.size() < 2) {
        send(bytes);
        return;
    }
    size_t first = bytes.size() / 2;
    send(bytes.substr(0, first));
    std::string rest = bytes.substr(first);
    after(faults.splitDelay, [this, rest] { send(rest); });
}

long EthernetScale::checksumOf(const std::vector<std::uint8_t>& image) {
    long sum = 0;
    for (size_t p = 0; p + 1 < image.size(); p += 2)
        sum = (sum + image[p + 1] * 256 + image[p]) % 65536;
    return 65536 - sum - 1;
}

// Code 3 alone.
std::string EthernetScale::erasedAnswer() {
    return std::string(1, static_cast<char>(kErased));
}

std::string EthernetScale::eraseAnswer() const {
    return std::string(1, static_cast<char>(faults.eraseCode));
}

// Code 5; characters 7-8 the high byte and 9-10 the low byte in hex digits,
// characters 2-6 "0".
std::string EthernetScale::checksumAnswer(long checksum) {
    std::string text(1, static_cast<char>(kChecksum));
    text += "00000";
    for (int shift : {12, 8, 4, 0}) text.push_back(hexDigit(static_cast<int>(checksum >> shift)));
    return text;
}

// Code 10; characters 6 and 7 the error number's two hex digits, characters
// 2-5 "0".
std::string EthernetScale::errorAnswer(int errorNumber) {
    std::string text(1, static_cast<char>(kError));
    text += "0000";
    text.push_back(hexDigit(errorNumber >> 4));
    text.push_back(hexDigit(errorNumber));
    return text;
}

}  // namespace fc
