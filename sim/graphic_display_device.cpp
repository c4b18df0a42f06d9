#include "sim/graphic_display_device.h"

namespace fc::sim {

void GraphicDisplayDevice::onReceive(Byte byte) {
    take(static_cast<char>(byte), true);
}

void GraphicDisplayDevice::onReceive(const std::string& bytes) {
    for (char c : bytes) take(c, false);
}

void GraphicDisplayDevice::take(char c, bool serial) {
    if (c == '\r')
        return;
    if (c != '\n') {
        line_ += c;
        return;
    }
    ++lines_;
    auto answer = display_.receive(line_);
    line_.clear();
    if (!answer)
        return;
    if (serial)
        SerialDevice::send(*answer + "\r\n");
    else
        TcpDevice::send(*answer + "\r\n");
}

}  // namespace fc::sim
