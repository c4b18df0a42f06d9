// DameMACAddress against a real engine: a fresh MAC database (MacStore), the
// common module on the virtual clock with a calendar at 21/03/2005 10:42,
// recorded boxes, and modal screens that are noted and closed at once.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "common/common_module.h"
#include "mac/mac_module.h"
#include "platform/screen.h"
#include "support/mac_store.h"
#include "unit/common_fixture.h"
#include "virtual/virtual_network.h"

namespace fc::test {

// Notes each modal screen by name and closes it, as an operator's click would.
class NoticeDialogs : public RecordingDialogs {
  public:
    using RecordingDialogs::RecordingDialogs;
    void showModal(Screen& screen) override {
        screen.load();
        modals.push_back(screen.name());
        screen.unload();
    }
    std::vector<std::string> modals;
};

struct MacRig {
    explicit MacRig(MacStore& s) : store(s) {}

    MacStore& store;
    VirtualPump pump;
    NoticeDialogs dialogs{pump};
    commontest::NoSerialPorts serialPorts;
    FileTable files;
    commontest::ScratchFolder home;
    LinuxFileSystem fileSystem;
    VirtualKernelObjects kernel{pump};
    VirtualCalendar calendar{pump, LocalDateTime{2005, 3, 21, 10, 42, 0}};
    SqliteDatabaseEngine databases;
    Drives drives;  // none: the tests name host paths
    VirtualNetwork network{pump};
    Services services{pump,       dialogs, serialPorts, files,     home.str(), drives,
                      fileSystem, kernel,  calendar,    databases, network};
    CommonModule c{services};
    bool mainUnloaded = false;
    MacModule m{c, store.odbc, store.source(), nullptr, [this] { mainUnloaded = true; }};
};

// The engines every test runs on.
inline std::vector<std::string> macEngines() {
    return {"SQLite", "PostgreSQL"};
}

// A fresh store of the test's engine, or the test is skipped with the reason.
#define FC_MAC_STORE(store, engine)               \
    std::string whyNot_;                          \
    auto store = MacStore::make(engine, whyNot_); \
    if (!store)                                   \
    GTEST_SKIP() << engine << " is not available here: " << whyNot_

}  // namespace fc::test
