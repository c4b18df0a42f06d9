#include "app/batch_world.h"

#include <utility>

#include "platform/program_folder.h"

namespace fc::batch {

namespace {

std::string settingsText(const LineSettings& s) {
    return std::to_string(s.baud) + "," + std::string(1, s.parity) + "," +
           std::to_string(s.dataBits) + "," + std::to_string(s.stopBits);
}

// An open port that reports the settings or the DTR it was refused.
class ReportingPort : public SerialPort {
  public:
    ReportingPort(std::unique_ptr<SerialPort> port, std::function<void(const std::string&)> fail)
        : port_(std::move(port)), fail_(std::move(fail)) {}

    void apply(const LineSettings& settings) override {
        try {
            port_->apply(settings);
        } catch (const RuntimeError&) {
            fail_("the device does not take the settings " + settingsText(settings));
            throw;
        }
    }
    void setDtr(bool on) override {
        try {
            port_->setDtr(on);
        } catch (const RuntimeError&) {
            fail_(std::string("the device does not take DTR ") + (on ? "on" : "off"));
            throw;
        }
    }
    void write(const std::string& bytes) override { port_->write(bytes); }
    int outputPending() override { return port_->outputPending(); }
    int inputAvailable() override { return port_->inputAvailable(); }
    std::string read() override { return port_->read(); }
    void discardInput() override { port_->discardInput(); }
    void service() override { port_->service(); }
    int wakeFd() const override { return port_->wakeFd(); }

  private:
    std::unique_ptr<SerialPort> port_;
    std::function<void(const std::string&)> fail_;
};

}  // namespace

std::unique_ptr<SerialPort> ReportingPortOpener::open(int commPort) {
    const std::string device = TermiosPortOpener::deviceName(commPort);
    std::unique_ptr<SerialPort> port;
    try {
        port = ports_.open(commPort);
    } catch (const PortOpenError& error) {
        if (onFailure)
            onFailure(commPort, error.device(), error.reason());
        throw;
    }
    return std::make_unique<ReportingPort>(std::move(port),
                                           [this, commPort, device](const std::string& reason) {
                                               if (onFailure)
                                                   onFailure(commPort, device, reason);
                                           });
}

BatchWorld::BatchWorld(std::ostream& out) {
    dialogs.onShown = [&out](const ShownBox& box) { out << "msgbox: " << box.text << std::endl; };
}

Services BatchWorld::services() {
    Services s = machine.services(pump, notedDialogs, serialPorts, files, programFolder());
    if (network == nullptr)
        return s;
    return Services{s.pump,       s.dialogs, s.serialPorts, s.files,     s.programFolder, s.drives,
                    s.fileSystem, s.kernel,  s.calendar,    s.databases, *network};
}

}  // namespace fc::batch
