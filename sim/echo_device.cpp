#include "sim/echo_device.h"

namespace fc {

void EchoDevice::onReceive(Byte byte) {
    heard_ += static_cast<char>(byte);
    send(std::string(1, static_cast<char>(byte)));
}

}  // namespace fc
