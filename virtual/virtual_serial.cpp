#include "virtual/virtual_serial.h"

#include <utility>

#include "platform/runtime_error.h"

namespace fc {

VirtualWire& VirtualSerialOpener::attach(int commPort, SerialDevice& device) {
    // A port still open on an earlier wire keeps that wire alive until it closes.
    auto wire = std::make_shared<VirtualWire>(pump_, device);
    wires_[commPort] = wire;
    return *wire;
}

VirtualWire& VirtualSerialOpener::wire(int commPort) {
    return *wires_.at(commPort);
}

std::unique_ptr<SerialPort> VirtualSerialOpener::open(int commPort) {
    auto found = wires_.find(commPort);
    if (found == wires_.end())
        throw RuntimeError(err::kInvalidPortNumber);
    return std::make_unique<VirtualSerialPort>(found->second);
}

VirtualSerialPort::VirtualSerialPort(std::shared_ptr<VirtualWire> wire) : wire_(std::move(wire)) {
    wire_->openProgramEnd();
}

VirtualSerialPort::~VirtualSerialPort() {
    wire_->closeProgramEnd();
}

int VirtualSerialPort::inputAvailable() {
    return static_cast<int>(wire_->programReceived().size());
}

std::string VirtualSerialPort::read() {
    return std::exchange(wire_->programReceived(), {});
}

}  // namespace fc
