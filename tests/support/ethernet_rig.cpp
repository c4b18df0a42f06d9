#include "support/ethernet_rig.h"

#include "support/intel_hex.h"
#include "support/wizard_steps.h"
#include "virtual/virtual_host.h"

namespace fc::test {

namespace {

std::vector<std::string> dataRecords(int seed, int count) {
    std::vector<int> bytes = patternBytes(seed, count);
    std::vector<std::string> lines;
    for (std::size_t k = 0; k < bytes.size(); k += 16) {
        std::vector<int> chunk(bytes.begin() + static_cast<long>(k),
                               bytes.begin() + static_cast<long>(std::min(k + 16, bytes.size())));
        lines.push_back(intelRecord(static_cast<int>(k), 0, chunk));
    }
    return lines;
}

}  // namespace

EthernetRig::EthernetRig() {
    hooks.DameMACAddress = [this](Firmcast&) {
        std::string mac = macsAsked < static_cast<int>(macs.size()) ? macs[macsAsked] : "";
        ++macsAsked;
        return mac;
    };
    hooks.frmDatosBalanza = [this](Firmcast& f) {
        records.push_back(Record{f.balanza_actual, f.mac_actual, f.pide_mac != kFalse,
                                 f.services().pump.now(),
                                 f.mensajes.empty() ? MensajeEth{} : f.mensajes.back()});
    };
    Firmcast& f = form();
    f.lblInformacion.addObserver([this](Control& c) {
        if (info.empty() || info.back().text != c.caption())
            info.push_back(InfoText{pump.now(), c.caption()});
    });
}

EthernetRig::Scale& EthernetRig::addScale(int n) {
    return addScale(n, nettest::scaleMac(n));
}

EthernetRig::Scale& EthernetRig::addScale(int n, const std::array<std::uint8_t, 6>& mac) {
    auto slot = std::make_unique<Scale>();
    Scale* s = slot.get();
    s->host = &network.addHost(nettest::scaleIp(n), mac);
    s->host->listen(nettest::kScalePort, [s] {
        auto device = std::make_unique<EthernetScale>();
        device->faults = s->faults;
        device->eraseTime = s->eraseTime;
        device->onMacStored = [s](const std::array<std::uint8_t, 6>& m) { s->host->setMac(m); };
        s->devices.push_back(device.get());
        return EthernetScale::acceptOrRefuse(std::move(device));
    });
    if (scales_.size() < static_cast<std::size_t>(n))
        scales_.resize(static_cast<std::size_t>(n));
    scales_[static_cast<std::size_t>(n - 1)] = std::move(slot);
    return *s;
}

void EthernetRig::writeList(const std::vector<std::string>& addresses) {
    std::string text =
        "[Balanzas]\r\nNumero=" + std::to_string(addresses.size()) + "\r\n[Direcciones]\r\n";
    for (std::size_t i = 0; i < addresses.size(); ++i)
        text += "dir" + std::to_string(i + 1) + "=" + addresses[i] + "\r\n";
    text += "[Puertos]\r\nTx=3000\r\n";
    home.write("config.ini", text);
}

void EthernetRig::writeList() {
    std::vector<std::string> addresses;
    for (std::size_t i = 0; i < scales_.size(); ++i)
        addresses.push_back(nettest::scaleIpText(static_cast<int>(i + 1)));
    writeList(addresses);
}

std::string EthernetRig::twoBankFile() {
    std::vector<std::string> lines = {bankRecord(0x4000)};
    for (const std::string& l : dataRecords(1, 3 * 1024)) lines.push_back(l);
    lines.push_back(bankRecord(0x5000));
    for (const std::string& l : dataRecords(2, 2 * 1024 + 256)) lines.push_back(l);
    lines.push_back(endRecord());
    return hexFile(lines);
}

void EthernetRig::scriptEthernetLoad(int modelCode, bool stopAtTheEnd,
                                     std::function<void()> onTheList) {
    Firmcast* f = &form();
    script.when([f] { return f->cmdAdelante.reachable() && f->paso_asistente == 0; },
                "pick the model", [this, modelCode] { pickModel(*this, modelCode); });
    script.when([f] { return f->frPuerto.reachable(); }, "choose Ethernet",
                [this] { click("optEthernet"); });
    script.after(10, "Next", [this] { click("cmdAdelante"); });
    script.when([f] { return f->paso_asistente == 2 && f->File1.reachable(); }, "pick the file",
                [this] { selectText("File1", "fw.hex"); });
    script.after(10, "Next", [this] { click("cmdAdelante"); });
    script.when([f] { return f->paso_asistente == 3 && f->frBalanzasEth.reachable(); },
                "Next on the scale list",
                [this, onTheList] {
                    if (onTheList)
                        onTheList();
                    click("cmdAdelante");
                });
    if (stopAtTheEnd)
        stopWhen([f] { return f->esperando_otra != kFalse; }, "the pass ended");
}

int EthernetRig::load(const std::string& file, const std::string& level) {
    driveC.write("fw.hex", file);
    scriptEthernetLoad();
    return run(level);
}

std::vector<std::string> EthernetRig::infoTexts() const {
    std::vector<std::string> texts;
    for (const InfoText& t : info) texts.push_back(t.text);
    return texts;
}

long long EthernetRig::firstInfoAt(const std::string& text) const {
    for (const InfoText& t : info) {
        if (t.text == text)
            return t.atMs;
    }
    return -1;
}

long long EthernetRig::lastInfoAt(const std::string& text) const {
    long long at = -1;
    for (const InfoText& t : info) {
        if (t.text == text)
            at = t.atMs;
    }
    return at;
}

}  // namespace fc::test
