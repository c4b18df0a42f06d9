// The whole program loading Serie_W scales over Ethernet on the virtual
// clock: simulated scales on the virtual LAN, each behind its own address
// with its own MAC and faults, the scale list in config.ini, a firmware file
// on drive C:, MAC addresses handed out from a list, and an operator who walks
// the wizard to the load. A scale that takes a 0x68 message answers with its
// new MAC from then on, as a real one does.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "sim/ethernet_scale.h"
#include "support/network_rig.h"
#include "support/scenario_rig.h"

namespace fc::test {

// What each scale's turn showed in lblInformacion, with the time.
struct InfoText {
    long long atMs = 0;
    std::string text;
};

class EthernetRig : public ScenarioRig {
  public:
    struct Scale {
        VirtualHost* host = nullptr;
        EthernetScale::Faults faults;
        Micros eraseTime = 2'000'000;
        // The devices of its connections, oldest first.
        std::vector<EthernetScale*> devices;
        EthernetScale& last() { return *devices.back(); }
    };
    // What the record form was opened with.
    struct Record {
        int balanza = -1;
        std::string mac;
        bool pideMac = false;
        long long atMs = 0;
        // The last message of the list while the form is open.
        MensajeEth lastMessage;
    };

    EthernetRig();

    // Scale n (1..) at 10.77.0.(10+n) with the MAC given (the bed's own
    // by default), listening on the loader's port.
    Scale& addScale(int n);
    Scale& addScale(int n, const std::array<std::uint8_t, 6>& mac);
    Scale& scale(int n) { return *scales_.at(static_cast<std::size_t>(n - 1)); }

    // The list of config.ini: the addresses given, in order.
    void writeList(const std::vector<std::string>& addresses);
    // The list of every scale added, in order.
    void writeList();

    // A file of two banks (3 KiB at 0x40000, 2.25 KiB at 0x50000).
    static std::string twoBankFile();

    // Script: model Serie_W (code 0) over Ethernet, the file fw.hex, Next on
    // the scale list; unless told not to, the run stops when the pass has
    // ended.
    void scriptEthernetLoad(int modelCode = 0, bool stopAtTheEnd = true,
                            std::function<void()> onTheList = {});
    // Writes `file` as fw.hex, scripts the load, runs at `level`.
    int load(const std::string& file, const std::string& level = "0");

    // Addresses DameMACAddress hands out, in order; empty when they run out.
    std::vector<std::string> macs;
    int macsAsked = 0;
    std::vector<Record> records;
    std::vector<InfoText> info;
    // The texts lblInformacion showed, in order, repeats of the same left out.
    std::vector<std::string> infoTexts() const;
    long long firstInfoAt(const std::string& text) const;
    long long lastInfoAt(const std::string& text) const;

  private:
    std::vector<std::unique_ptr<Scale>> scales_;
};

}  // namespace fc::test
