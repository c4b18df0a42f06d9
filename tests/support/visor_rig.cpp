#include "support/visor_rig.h"

#include "support/intel_hex.h"

namespace fc::test {

VisorRig::VisorRig(const std::function<void(ScenarioRig&)>& beforeScreen,
                   const std::string& commandLine) {
    if (beforeScreen)
        beforeScreen(rig);
    wire = &rig.serial.attach(1, visor);
    wire->setReceiveFifo(14);
    VirtualHost& host = net.addHost(Ipv4{10, 77, 0, 51}, {0x02, 0x4D, 0x56, 0x00, 0x05, 0x10});
    bridge = std::make_unique<VisorUdpBridge>(
        rig.pump, [&host](const std::string& bytes) { host.sendUdp(3000, 3001, bytes); });
    host.onUdp(3000, [this](const Datagram& d) { bridge->datagram(d.bytes); });
    screen = std::make_unique<frmCargaMV510>(rig.servicesWith(rig.serial), &net);
    screen->Form_Load(commandLine, 0);
}

void VisorRig::chooseFile(const std::string& name, const std::vector<std::string>& lines) {
    rig.driveC.write(name, hexFile(lines));
    screen->Dir1_Change();
    for (int i = 0; i < screen->File1.listCount(); ++i) {
        if (screen->File1.list(i) == name)
            screen->File1.setListIndex(i);
    }
}

std::vector<std::string> VisorRig::imageFile(long address, const std::vector<int>& bytes) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < bytes.size(); at += 16) {
        const std::size_t end = std::min(bytes.size(), at + 16);
        lines.push_back(intelRecord(static_cast<int>(address + static_cast<long>(at)), 0,
                                    std::vector<int>(bytes.begin() + static_cast<long>(at),
                                                     bytes.begin() + static_cast<long>(end))));
    }
    lines.push_back(endRecord());
    return lines;
}

void VisorRig::useSerial(int port, const std::string& speed) {
    OptionButton* ports[] = {&screen->Option1, &screen->Option2, &screen->Option3,
                             &screen->Option4};
    ports[port - 1]->setValue(true);
    for (int i = 0; i < screen->cmbvelocidades.listCount(); ++i) {
        if (screen->cmbvelocidades.list(i) == speed)
            screen->cmbvelocidades.setListIndex(i);
    }
    // The operator's click on RS-232, which opens the line.
    if (!screen->optrs232.value())
        screen->optrs232.setValue(true);
    else
        screen->optrs232.click();
}

void VisorRig::useUdp(const std::string& address, const std::string& port) {
    screen->optEthernet.setValue(true);
    screen->txtDirTCP.setText(address);
    screen->TxtPort.setText(port);
}

void VisorRig::load() {
    screen->cmdAdelante.click();
}

std::vector<std::string> VisorRig::recordsOfType(const VisorBootLoader& loader, int type) {
    std::vector<std::string> out;
    for (const std::string& r : loader.records()) {
        if (r.size() >= 9 && r.substr(7, 2) == hexPair(type))
            out.push_back(r);
    }
    return out;
}

std::vector<std::int64_t> VisorRig::syncTimes(const VisorBootLoader& loader) {
    std::vector<std::int64_t> out;
    for (const auto& h : loader.heard()) {
        if (h.bytes == "U")
            out.push_back(h.at / 1000);
    }
    return out;
}

}  // namespace fc::test
