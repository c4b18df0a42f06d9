#include "sim/graphic_display.h"

namespace fc::sim {

namespace {

std::string field(const std::string& text, std::size_t from1, std::size_t count) {
    return from1 - 1 < text.size() ? text.substr(from1 - 1, count) : std::string();
}

int hexByte(const std::string& text, std::size_t at) {
    return std::stoi(text.substr(at, 2), nullptr, 16);
}

}  // namespace

std::optional<std::string> GraphicDisplay::receive(const std::string& record) {
    const std::string command = field(record, 3, 4);
    if (field(record, 3, 6) == "D100SW")
        start(record);
    else if (command == "D500")
        data(record);
    else if (command == "P000" && !(endSeen_ && faults_.silentAtEnd))
        return answer(record);
    return std::nullopt;
}

void GraphicDisplay::start(const std::string& record) {
    image_.assign(image_.size(), 0xFF);
    started_ = true;
    expectedCrc_ = std::stol(field(record, 9, 5));
    nextRecord_ = 0;
    inOrder_ = true;
    endSeen_ = false;
}

void GraphicDisplay::data(const std::string& record) {
    if (std::stol(field(record, 7, 6)) != nextRecord_)
        inOrder_ = false;
    ++nextRecord_;
    storeHexLine(field(record, 13, 43));
    storeHexLine(field(record, 58, 43));
}

// A firmware line padded with "0": its length byte says where it ends.
void GraphicDisplay::storeHexLine(const std::string& text) {
    if (text.size() < 11 || text[0] != ':')
        return;
    const int length = hexByte(text, 1);
    const int address = (hexByte(text, 3) << 8) | hexByte(text, 5);
    const int type = hexByte(text, 7);
    if (type == 1)
        endSeen_ = true;
    if (type != 0 || text.size() < static_cast<std::size_t>(11 + 2 * length))
        return;
    for (int i = 0; i < length; ++i)
        image_[static_cast<std::size_t>(address + i) % image_.size()] =
            static_cast<std::uint8_t>(hexByte(text, 9 + 2 * static_cast<std::size_t>(i)));
}

std::string GraphicDisplay::answer(const std::string& record) {
    ++questions_;
    bool yes = started_ && inOrder_;
    if (endSeen_)
        yes = yes && !faults_.rejectsCrc && crcOf(image_) == expectedCrc_;
    else
        yes = yes && !faults_.rejectsQuestions;
    std::string line = field(record, 1, 2) + "P0" + std::string(9, '0') + (yes ? "SI" : "NO") +
                       field(record, 16, 6);
    line.resize(130, '0');
    return line;
}

std::uint16_t GraphicDisplay::crcOf(const std::vector<std::uint8_t>& image) {
    std::uint16_t crc = 0;
    for (std::size_t i = 0; i < 0xFF00 && i < image.size(); ++i) {
        crc = static_cast<std::uint16_t>(crc ^ (image[i] << 8));
        for (int bit = 0; bit < 8; ++bit)
            crc = static_cast<std::uint16_t>((crc & 0x8000) ? (crc << 1) ^ 0x1021 : crc << 1);
    }
    return crc;
}

}  // namespace fc::sim
