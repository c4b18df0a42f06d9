// What the load tests on the test bed share: simulated scales in their
// namespaces that take a given MAC as their interface's, a loader's home
// with the bed's scale list and the MAC register as its data source, the
// register's rows, and a scale's MAC as the PC learns it by an echo. After
// each test the scales have their own MACs back and the table is empty.
#pragma once

#include <string>
#include <vector>

#include "bed_fixture.h"
#include "integration/batch_run.h"
#include "mac/mac_tables.h"
#include "support/ethernet_rig.h"
#include "support/mac_store.h"
#include "support/scenario_rig.h"

namespace fc::netbed {

inline constexpr int kScalePort = 3000;

// A simulated Ethernet scale in `scale`'s namespace that takes a MAC it is
// given as its interface's address.
inline std::vector<std::string> scaleSim(const BedScale& scale,
                                         const std::vector<std::string>& faults) {
    std::vector<std::string> options{"--device", "ethernet-scale", "--erase-ms",
                                     "300",      "--interface",    kScaleInterface};
    options.insert(options.end(), faults.begin(), faults.end());
    return simInScale(scale, kScalePort, options);
}

class LoadOnBed : public BedTest {
  protected:
    void TearDown() override {
        // The bed's scales keep their own MACs and links for the next tests.
        for (const BedScale& scale : bed.scales) {
            run("ip -n " + scale.ns + " link set dev " + kScaleInterface + " address " +
                text(scale.mac));
            run("ip -n " + scale.ns + " link set dev " + kScaleInterface + " up");
        }
        clearTable();
    }

    // config.ini with the bed's scales, and the MAC register as the data
    // source "MacConnection".
    void prepareHome(test::MacStore& store, const std::vector<BedScale>& scales) {
        std::string list =
            "[Balanzas]\r\nNumero=" + std::to_string(scales.size()) + "\r\n[Direcciones]\r\n";
        for (std::size_t i = 0; i < scales.size(); ++i)
            list += "dir" + std::to_string(i + 1) + "=" + text(scales[i].ip) + "\r\n";
        home.write("config.ini", list + "[Puertos]\r\nTx=3000\r\n");
        home.write("odbc.ini", store.iniSection(kOrigenMac));
        file = folder.write("fw.hex", test::EthernetRig::twoBankFile());
    }

    // firmcast-batch with `args`, in the loader's home, on its register.
    test::BatchResult runLoader(const std::vector<std::string>& args) {
        // The ODBC driver's own allocations, kept past its unloading where no
        // suppression can name them, are not the loader's: the leak checks
        // of the record form run in the tests' own process.
        return test::runBatchProcess(args, {{"FIRMCAST_HOME", home.path().string()},
                                            {"ODBCINI", (home.path() / "odbc.ini").string()},
                                            {"LSAN_OPTIONS", "detect_leaks=0"}});
    }

    // What the register holds for `mac` (with dashes): serial and department.
    std::vector<OdbcRow> registerRow(test::MacStore& store, const std::string& mac) {
        auto bd = store.open();
        return bd->query("SELECT " + bd->quote("Numero_serie") + ", " + bd->quote("Departamento") +
                             " FROM " + bd->quote(kTablaDetalleMac) + " WHERE " +
                             bd->quote("Direccio_MAC") + " = ?",
                         {mac});
    }

    // The scale's MAC as the PC learns it by an echo.
    std::string learntMac(const BedScale& scale) {
        clearTable();
        if (!echo(scale.ip))
            return "no answer";
        auto rows = rowsOf(scale.ip);
        return rows.empty() ? "no row" : text(macOf(rows.front()));
    }

    test::TempFolder home, folder;
    std::string file;
};

}  // namespace fc::netbed
