// One worker of a parallel Ethernet run, on the virtual clock: it loads one
// scale of a longer list by the ordinary road, names that scale by its place
// in the whole list, and shares the PC's address table with the other
// workers, whose clearing must never take its scale's row away before its
// MAC decision.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ethernet/address_table.h"
#include "ethernet/network_module.h"
#include "platform/own_rows_network.h"
#include "support/ethernet_rig.h"
#include "support/network_rig.h"

namespace fc {
namespace {

using test::EthernetRig;

bool inTable(VirtualNetwork& network, int n) {
    for (const NeighbourRow& row : network.table()) {
        if (row.ip == nettest::scaleIp(n))
            return true;
    }
    return false;
}

// The rig of the worker of scale `place` of the list: it loads scale 1 of
// the virtual LAN, seen through a network that deletes only that scale's rows.
struct WorkerRig {
    explicit WorkerRig(int place) {
        rig.addScale(1);
        rig.addScale(2);
        rig.writeList({nettest::scaleIpText(1)});
        rig.networkSeen = &ownRows;
        rig.form().primera_balanza = static_cast<Integer>(place);
    }
    EthernetRig rig;
    OwnRowsNetwork ownRows{rig.network, {nettest::scaleIp(1)}};
};

TEST(ParallelWorker, AWorkerNamesItsScaleByItsPlaceInTheWholeList) {
    WorkerRig worker(7);
    worker.rig.load(EthernetRig::twoBankFile(), "3");
    EXPECT_EQ(worker.rig.form().lblInformacion.caption(), "Scale 7 loaded OK");
    EXPECT_EQ(worker.rig.form().resultado_balanzas, std::vector<std::string>{"Scale 7 loaded OK"});
}

TEST(ParallelWorker, AWorkersChecksumErrorNamesItsPlaceInTheWholeList) {
    WorkerRig worker(12);
    worker.rig.scale(1).faults.wrongChecksum = true;
    worker.rig.load(EthernetRig::twoBankFile(), "3");
    EXPECT_EQ(worker.rig.form().lblInformacion.caption(), "Scale 12 Checksum Error");
}

TEST(ParallelWorker, AWorkersClearingOfTheTableLeavesTheRowsOfTheOtherWorkersScales) {
    EthernetRig rig;
    rig.addScale(1);
    rig.addScale(2);
    rig.network.learn(*rig.scale(1).host);
    rig.network.learn(*rig.scale(2).host);
    OwnRowsNetwork worker2(rig.network, {nettest::scaleIp(2)});
    NetworkModule red{rig.form().common(), worker2, rig.form().TimerClose};
    BorrarTablaARP(red, nettest::scaleIpText(2));
    EXPECT_TRUE(inTable(rig.network, 1));
    EXPECT_FALSE(inTable(rig.network, 2));
}

// The race on purpose: while worker 1's scale is being loaded, worker 2
// starts its own turn and clears the table (both at its start and in its
// record form's proof by echo). Worker 1's scale must still be found at its
// MAC decision, and get its new MAC.
TEST(ParallelWorker, AnotherWorkersClearingDuringTheLoadLeavesThisScalesRowForItsMacDecision) {
    WorkerRig worker(1);
    EthernetRig& rig = worker.rig;
    rig.macs = {"02C0DE0000B1"};
    rig.driveC.write("fw.hex", EthernetRig::twoBankFile());
    rig.scriptEthernetLoad(0, false);
    OwnRowsNetwork worker2(rig.network, {nettest::scaleIp(2)});
    NetworkModule red2{rig.form().common(), worker2, rig.form().TimerClose};
    Firmcast* f = &rig.form();
    bool rowBefore = false, rowAfter = false;
    rig.script.when([f] { return f->lblInformacion.caption() == "Mensaje 3"; },
                    "worker 2 clears the table",
                    [&] {
                        rig.network.learn(*rig.scale(2).host);
                        rowBefore = inTable(rig.network, 1);
                        BorrarTablaARP(red2, nettest::scaleIpText(2));
                        rowAfter = inTable(rig.network, 1);
                    });
    rig.stopWhen([f] { return f->esperando_otra != kFalse; }, "the pass ended");
    rig.run("2");
    EXPECT_TRUE(rowBefore);
    EXPECT_TRUE(rowAfter);
    EXPECT_FALSE(inTable(rig.network, 2));
    EXPECT_EQ(rig.macsAsked, 1);
    ASSERT_TRUE(rig.scale(1).last().macStored());
    EXPECT_EQ(f->estado_balanzas, std::vector<bool>{true});
    EXPECT_EQ(f->lblInformacion.caption(), "Scale 1 loaded OK");
}

// The same clearing without the worker's view of the table, as one load on
// its own does it: the scale's row is gone at its MAC decision, and the
// scale fails silently. This is the race the view closes.
TEST(ParallelWorker, AClearingOfTheWholeTableBeforeTheMacDecisionFailsTheScale) {
    EthernetRig rig;
    rig.addScale(1);
    rig.writeList();
    rig.macs = {"02C0DE0000B1"};
    rig.driveC.write("fw.hex", EthernetRig::twoBankFile());
    rig.scriptEthernetLoad(0, false);
    NetworkModule whole{rig.form().common(), rig.network, rig.form().TimerClose};
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->lblInformacion.caption() == "Mensaje 3"; },
                    "another load clears the whole table",
                    [&] { BorrarTablaARP(whole, nettest::scaleIpText(2)); });
    rig.stopWhen([f] { return f->esperando_otra != kFalse; }, "the pass ended");
    rig.run("2");
    EXPECT_EQ(rig.macsAsked, 0);
    EXPECT_EQ(f->estado_balanzas, std::vector<bool>{false});
}

}  // namespace
}  // namespace fc
