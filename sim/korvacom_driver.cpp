#include "sim/korvacom_driver.h"

#include <cctype>
#include <fstream>
#include <iterator>

namespace fc::sim {

namespace fs = std::filesystem;

namespace {

std::string lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string readAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string withoutLineEnd(std::string line) {
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.pop_back();
    return line;
}

}  // namespace

KorvacomDriver::KorvacomDriver(fs::path folder, Faults faults, GraphicDisplay::Faults display)
    : folder_(std::move(folder)), faults_(faults), display_(display) {}

fs::path KorvacomDriver::file(const std::string& name) const {
    std::error_code ec;
    if (fs::exists(folder_ / name, ec))
        return folder_ / name;
    for (fs::directory_iterator it(folder_, ec), end; !ec && it != end; it.increment(ec)) {
        if (lower(it->path().filename().string()) == lower(name))
            return it->path();
    }
    return folder_ / name;
}

bool KorvacomDriver::readSwitches() {
    std::ifstream in(file("Korctrl.txt"), std::ios::binary);
    if (!in)
        return false;
    switches_.clear();
    for (std::string line; std::getline(in, line);) switches_.push_back(withoutLineEnd(line));
    return true;
}

char KorvacomDriver::takeCommand() {
    if (faults_.neverAnswers || ended_)
        return 0;
    fs::path ctrl = file("ctrl.txt");
    std::error_code ec;
    if (!fs::exists(ctrl, ec))
        return 0;
    std::string text = readAll(ctrl);
    if (text.empty())
        return 0;  // still being written
    fs::remove(ctrl, ec);
    char letter = text[0];
    commands_.push_back(letter);
    if (letter == 's')
        sending_ = true;
    else if (letter == 'S')
        sending_ = false;
    else if (letter == 'G')
        ended_ = true;
    return letter;
}

bool KorvacomDriver::sendNext() {
    if (!sending_ || ended_ || faults_.neverAnswers)
        return false;
    if (faults_.stopAfterLines >= 0 && sent_ >= faults_.stopAfterLines)
        return false;
    fs::path tx = file("TX.TXT");
    const std::string text = readAll(tx);
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        std::size_t next = end == std::string::npos ? text.size() : end + 1;
        std::string line = withoutLineEnd(text.substr(start, next - start));
        if (line.size() >= 3 && line[2] != '*') {
            std::fstream out(tx, std::ios::binary | std::ios::in | std::ios::out);
            out.seekp(static_cast<std::streamoff>(start + 2));
            out.put('*');
            out.close();
            ++sent_;
            if (auto answer = carrier_ ? carrier_(line) : display_.receive(line))
                writeAnswer(*answer);
            return true;
        }
        start = next;
    }
    return false;
}

void KorvacomDriver::writeAnswer(const std::string& line) {
    std::ofstream out(file("RX.TXT"), std::ios::binary | std::ios::app);
    out << line << "\r\n";
}

}  // namespace fc::sim
