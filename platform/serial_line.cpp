#include "platform/serial_line.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <vector>

#include "platform/pump.h"
#include "platform/runtime_error.h"

namespace fc {

bool parseLineSettings(const std::string& text, LineSettings& out) {
    std::vector<std::string> fields;
    std::stringstream in(text);
    std::string field;
    while (std::getline(in, field, ',')) fields.push_back(field);
    if (fields.size() != 4)
        return false;
    static const int speeds[] = {110,   300,   600,   1200,  2400,  4800,   9600,   14400,
                                 19200, 28800, 38400, 56000, 57600, 115200, 128000, 256000};
    LineSettings s;
    try {
        s.baud = std::stoi(fields[0]);
        s.dataBits = std::stoi(fields[2]);
        s.stopBits = std::stoi(fields[3]);
    } catch (...) {
        return false;
    }
    if (std::find(std::begin(speeds), std::end(speeds), s.baud) == std::end(speeds))
        return false;
    if (fields[1].size() != 1)
        return false;
    s.parity = static_cast<char>(std::toupper(static_cast<unsigned char>(fields[1][0])));
    if (std::string("NEOMS").find(s.parity) == std::string::npos)
        return false;
    if (s.dataBits < 4 || s.dataBits > 8)
        return false;
    if (s.stopBits != 1 && s.stopBits != 2)
        return false;
    out = s;
    return true;
}

SerialLine::SerialLine(Pump& pump, SerialPortOpener& opener) : pump_(pump), opener_(opener) {
    parseLineSettings(settings_, parsed_);
}

SerialLine::~SerialLine() {
    pump_.remove(*this);
}

void SerialLine::setCommPort(Integer port) {
    if (port_)
        throw RuntimeError(8000, "Operation not valid while the port is opened");
    if (port < 1 || port > 16)
        throw RuntimeError(err::kInvalidPortNumber);
    commPort_ = port;
}

void SerialLine::setSettings(const std::string& settings) {
    LineSettings parsed;
    if (!parseLineSettings(settings, parsed))
        throw RuntimeError(err::kInvalidPropertyValue);
    settings_ = settings;
    parsed_ = parsed;
    if (port_)
        port_->apply(parsed_);
}

void SerialLine::setPortOpen(bool open) {
    if (!open) {
        if (port_)
            pump_.remove(*this);
        port_.reset();
        return;
    }
    if (port_)
        throw RuntimeError(err::kPortAlreadyOpen);
    std::unique_ptr<SerialPort> port = opener_.open(commPort_);
    port->apply(parsed_);
    port->setDtr(dtrEnable_);
    port_ = std::move(port);
    pump_.add(*this);
}

void SerialLine::setDTREnable(bool on) {
    dtrEnable_ = on;
    if (port_)
        port_->setDtr(on);
}

SerialPort& SerialLine::open_() {
    if (!port_)
        throw RuntimeError(err::kPortNotOpen);
    return *port_;
}

void SerialLine::output(const std::string& text) {
    open_().write(text);
}

Integer SerialLine::outBufferCount() {
    SerialPort& port = open_();
    port.service();
    return static_cast<Integer>(std::min(port.outputPending(), 32767));
}

Integer SerialLine::inBufferCount() {
    SerialPort& port = open_();
    port.service();
    return static_cast<Integer>(std::min(port.inputAvailable(), 32767));
}

void SerialLine::setInBufferCount(Integer count) {
    if (count != 0)
        throw RuntimeError(err::kInvalidPropertyValue);
    open_().discardInput();
}

std::string SerialLine::input() {
    SerialPort& port = open_();
    port.service();
    return port.read();
}

void SerialLine::runDue(Micros) {
    if (port_)
        port_->service();
}

int SerialLine::wakeFd() const {
    return port_ ? port_->wakeFd() : -1;
}

}  // namespace fc
