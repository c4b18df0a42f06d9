// The visor's screen on the virtual clock, with a simulated visor on COM1
// (115200,N,8,1, the PC's receiver with a 16-byte-trigger FIFO as a 16550
// has, trigger level 14) and the same kind of visor behind a UDP bridge on
// the simulated network. Firmware files are written to drive C:, which the
// screen opens on.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/vb_types.h"
#include "sim/visor_device.h"
#include "support/scenario_rig.h"
#include "virtual/virtual_network.h"
#include "visor/frm_carga_mv510.h"

namespace fc::test {

constexpr const char* kVisorIp = "10.77.0.51";

class VisorRig {
  public:
    // `beforeScreen` may name drives before the screen is built; the screen
    // loads with `commandLine`.
    explicit VisorRig(const std::function<void(ScenarioRig&)>& beforeScreen = {},
                      const std::string& commandLine = "0");

    ScenarioRig rig;
    VirtualNetwork net{rig.pump};
    VisorSerial visor;
    VirtualWire* wire = nullptr;
    std::unique_ptr<VisorUdpBridge> bridge;
    std::unique_ptr<frmCargaMV510> screen;

    // Writes `name` on C: with these records and chooses it in the file list.
    void chooseFile(const std::string& name, const std::vector<std::string>& lines);
    // A file whose image holds `bytes` from `address`, 16 to a record.
    static std::vector<std::string> imageFile(long address, const std::vector<int>& bytes);
    // The way: COM n at a speed of the list, or UDP to the visor's address.
    void useSerial(int port = 1, const std::string& speed = "115200");
    void useUdp(const std::string& address = kVisorIp, const std::string& port = "3000");
    // Presses the load button; returns when the load has ended.
    void load();

    VisorBootLoader& serialLoader() { return visor.loader(); }
    VisorBootLoader& udpLoader() { return bridge->loader(); }
    std::vector<std::string> boxes() const { return rig.boxes(); }
    // The records of one kind that reached a loader, in order.
    static std::vector<std::string> recordsOfType(const VisorBootLoader& loader, int type);
    // The times (ms) at which "U" reached a loader.
    static std::vector<std::int64_t> syncTimes(const VisorBootLoader& loader);
};

}  // namespace fc::test
