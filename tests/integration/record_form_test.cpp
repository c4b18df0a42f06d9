// The scale record form against a real MAC database on the virtual clock:
// what it shows and asks when it opens, the serial number from a barcode
// reader ending with Enter or from the Accept button, the refusals, the
// register row written with its history, the proof by echo over Ethernet, and
// the database's faults.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/common_module.h"
#include "ethernet/network_module.h"
#include "mac/frm_datos_balanza.h"
#include "mac/mac_module.h"
#include "mac/mac_register.h"
#include "mac/mac_tables.h"
#include "operator/operator_script.h"
#include "operator/recording_dialogs.h"
#include "platform/dialogs.h"
#include "platform/runtime_error.h"
#include "platform/window_timer.h"
#include "support/mac_store.h"
#include "support/network_rig.h"
#include "unit/common_fixture.h"
#include "virtual/virtual_calendar.h"
#include "virtual/virtual_kernel_objects.h"
#include "virtual/virtual_network.h"

namespace fc {
namespace {

using test::MacStore;
using ::testing::ElementsAre;

const std::string kMac = "02C0DE000001";
const std::string kMacShown = "02-C0-DE-00-00-01";

struct FormRig {
    explicit FormRig(MacStore& s, const std::string& source = "") : store(s) {
        m.origen = source.empty() ? store.source() : source;
        TimerClose.onTimer = [this] { TimerClose.setEnabled(false); };
        lista_balanzas = {nettest::scaleIpText(1)};
    }

    MacStore& store;
    VirtualPump pump;
    RecordingDialogs dialogs{pump};
    commontest::NoSerialPorts serialPorts;
    FileTable files;
    commontest::ScratchFolder home;
    LinuxFileSystem fileSystem;
    VirtualKernelObjects kernel{pump};
    VirtualCalendar calendar{pump, LocalDateTime{2005, 3, 21, 10, 42, 0}};
    SqliteDatabaseEngine databases;
    Drives drives;
    VirtualNetwork network{pump};
    Services services{pump,       dialogs, serialPorts, files,     home.str(), drives,
                      fileSystem, kernel,  calendar,    databases, network};
    CommonModule c{services};
    MacModule m{c, store.odbc, "", nullptr, nullptr};
    WindowTimer TimerClose{pump, "TimerClose"};
    NetworkModule red{c, network, TimerClose};
    OperatorScript script{pump};

    std::string mac_actual = kMac;
    Flag pide_mac = kTrue;
    Integer nivel = 1;
    Integer tipo_conexion = 1;  // RS-232 unless a test says Ethernet
    std::vector<std::string> lista_balanzas;
    Integer balanza_actual = 0;

    frmDatosBalanza& form() {
        if (!form_) {
            form_ = std::make_unique<frmDatosBalanza>(
                DatosBalanzaPanel{m, red, mac_actual, pide_mac, nivel, tipo_conexion,
                                  lista_balanzas, balanza_actual});
        }
        return *form_;
    }
    // A register row for the address, as DameMACAddress leaves it, or with
    // a serial and notes of its own.
    void addRow(const std::string& serial = " ", const std::string& notes = "") {
        auto bd = store.open();
        bd->execute("INSERT INTO " + bd->quote(kTablaDetalleMac) + " (" +
                        bd->quote("Direccio_MAC") + ", " + bd->quote("Numero_serie") + ", " +
                        bd->quote("Departamento") + ", " + bd->quote("fecha_actual") + ", " +
                        bd->quote("Notas") + ") VALUES (?, ?, ?, ?, ?)",
                    {kMacShown, serial, std::string("PRODUCTION"),
                     LocalDateTime{2004, 1, 2, 3, 4, 5}, notes});
    }
    std::vector<OdbcRow> rows() {
        auto bd = store.open();
        return bd->query("SELECT " + bd->quote("Numero_serie") + ", " + bd->quote("Departamento") +
                             ", " + bd->quote("Notas") + " FROM " + bd->quote(kTablaDetalleMac) +
                             " WHERE " + bd->quote("Direccio_MAC") + " = ?",
                         {kMacShown});
    }
    // As a barcode reader: the field's text replaced, then Enter.
    void scan(const std::string& serial) {
        script.when([this] { return form().loaded(); }, "scan " + serial,
                    [this, serial] { operatorScan(form(), "txtSerialNumber", serial); });
    }
    // Shows the form; the script answers it.
    void show() { form().Mostrar(); }

  private:
    std::unique_ptr<frmDatosBalanza> form_;
};

#define FC_SQLITE_STORE(store)                      \
    std::string whyNot_;                            \
    auto store = MacStore::make("SQLite", whyNot_); \
    if (!store)                                     \
    GTEST_SKIP() << "SQLite is not available here: " << whyNot_

TEST(RecordForm, OnOpeningItShowsTheAddressTheLevelTheTimeAndAsksToCheckTheNewMac) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.addRow();
    rig.scan("SN-1");
    rig.show();
    frmDatosBalanza& f = rig.form();
    EXPECT_EQ(f.txtMAC.text(), kMacShown);
    EXPECT_EQ(f.Label4.caption(), "PRODUCTION");
    EXPECT_EQ(f.Label5.caption(), "10:42:00 21/03/2005");
    ASSERT_GE(rig.dialogs.boxes().size(), 2u);
    const ShownBox& first = rig.dialogs.boxes()[0];
    EXPECT_EQ(first.text,
              "Check the MAC Address in PC and in the scale's display are the same 02C0DE000001");
    EXPECT_EQ(first.style & 0xF0, mb::kCritical);
    EXPECT_EQ(first.title, kAppTitle);
    EXPECT_EQ(rig.dialogs.boxes()[1].text, "Push key 'C' in the scale.");
    EXPECT_FALSE(f.loaded());
}

TEST(RecordForm, TheLevelWordFollowsTheLevel) {
    FC_SQLITE_STORE(store);
    for (auto [nivel, word] : std::vector<std::pair<Integer, std::string>>{
             {0, "DISTRIBUTOR"}, {1, "PRODUCTION"}, {2, "ENGINEER"}}) {
        FormRig rig(*store);
        rig.nivel = nivel;
        rig.scan("SN-1");
        rig.show();
        EXPECT_EQ(rig.form().Label4.caption(), word);
    }
}

TEST(RecordForm, AScaleThatKeepsItsMacIsAskedToCheckTheSerialTheRegisterHolds) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.pide_mac = kFalse;
    rig.addRow("OLD-7");
    rig.script.when([&rig] { return rig.form().loaded(); }, "accept",
                    [&rig] { operatorClick(rig.form(), "cmdAceptar"); });
    rig.show();
    ASSERT_FALSE(rig.dialogs.boxes().empty());
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "Check the Serial Number OLD-7");
    EXPECT_EQ(rig.dialogs.boxes()[0].style & 0xF0, mb::kCritical);
}

TEST(RecordForm, ABarcodeReadEndingWithEnterWritesTheSerialTheLevelAndTheTime) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.addRow();
    rig.scan("SN-0042");
    rig.show();
    auto rows = rig.rows();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0][0], "SN-0042");
    EXPECT_EQ(rows[0][1], "PRODUCTION");
    // A new address has no history to keep.
    EXPECT_EQ(rows[0][2].value_or(""), "");
    EXPECT_FALSE(rig.form().loaded());
}

TEST(RecordForm, ASerialOfExactly26CharactersIsAcceptedAnd27Refused) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.addRow();
    const std::string s27(27, '7');
    const std::string s26(26, '6');
    rig.scan(s27);
    rig.scan(s26);
    rig.show();
    EXPECT_THAT(rig.dialogs.texts(),
                ElementsAre(::testing::_, ::testing::_,
                            "The length of the serial number must be minor than 26"));
    EXPECT_EQ(rig.rows().at(0)[0], s26);
}

TEST(RecordForm, ATooLongSerialKeepsItsTextAndTheFocus) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.addRow();
    const std::string s27(27, '7');
    rig.script.when([&rig] { return rig.form().loaded(); }, "scan 27",
                    [&rig, s27] {
                        operatorScan(rig.form(), "txtSerialNumber", s27);
                        EXPECT_EQ(rig.form().txtSerialNumber.text(), s27);
                        EXPECT_EQ(rig.form().focused(), &rig.form().txtSerialNumber);
                    });
    rig.scan("SN-1");
    rig.show();
}

TEST(RecordForm, EnterInTheFieldWithNothingInItGivesTheMessageOfStep2) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.addRow();
    rig.scan("");
    rig.scan("SN-1");
    rig.show();
    EXPECT_EQ(rig.dialogs.texts().at(2), "You must enter the Scale\xC2\xB4s serial number");
    EXPECT_EQ(rig.rows().at(0)[0], "SN-1");
}

TEST(RecordForm, TheOtherBarcodeStartingWithXIsRefusedAndTheFieldCleared) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.addRow();
    rig.script.when([&rig] { return rig.form().loaded(); }, "scan X",
                    [&rig] {
                        operatorScan(rig.form(), "txtSerialNumber", "X123");
                        EXPECT_EQ(rig.form().txtSerialNumber.text(), "");
                        EXPECT_EQ(rig.form().focused(), &rig.form().txtSerialNumber);
                    });
    rig.scan("SN-1");
    rig.show();
    EXPECT_EQ(rig.dialogs.texts().at(2),
              "Introduce el C\xC3\xB3"
              "digo de Barras de Arriba");
    EXPECT_EQ(rig.rows().at(0)[0], "SN-1");
}

TEST(RecordForm, ARowOpenedAgainForAScaleThatKeepsItsMacGainsOldDateAndSerialInNotas) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.pide_mac = kFalse;
    rig.addRow("OLD-7", "first");
    rig.scan("NEW-8");
    rig.show();
    auto rows = rig.rows();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0][0], "NEW-8");
    const std::string notes = rows[0][2].value_or("");
    EXPECT_EQ(notes.rfind("first,2004-01-02 03:04:05", 0), 0u) << notes;
    EXPECT_EQ(notes.substr(notes.size() - 6), ",OLD-7");
}

TEST(RecordForm, AnAddressWithoutARowLeavesNoRecordWithoutAWord) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.scan("SN-1");
    rig.show();
    EXPECT_TRUE(rig.rows().empty());
    EXPECT_EQ(rig.dialogs.boxes().size(), 2u);  // the two of the opening
}

TEST(RecordForm, OverRs232NoCheckOfTheScaleIsMade) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.network.addHost(nettest::scaleIp(1), nettest::scaleMac(1));
    rig.addRow();
    rig.scan("SN-1");
    rig.show();
    EXPECT_EQ(rig.network.echoRequests(nettest::scaleIp(1)), 0);
    EXPECT_EQ(rig.dialogs.boxes().size(), 2u);
}

TEST(RecordForm, OverEthernetAScaleThatAnswersWithItsNewMacPassesTheCheck) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.tipo_conexion = 0;
    rig.network.addHost(nettest::scaleIp(1), {0x02, 0xC0, 0xDE, 0x00, 0x00, 0x01});
    rig.addRow();
    rig.scan("SN-1");
    rig.show();
    EXPECT_GE(rig.network.echoRequests(nettest::scaleIp(1)), 1);
    EXPECT_EQ(rig.dialogs.boxes().size(), 2u);
    EXPECT_EQ(rig.rows().at(0)[0], "SN-1");
}

TEST(RecordForm, OverEthernetAnotherMacIsNotValidButTheRecordStays) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.tipo_conexion = 0;
    rig.network.addHost(nettest::scaleIp(1), nettest::scaleMac(1));
    rig.addRow();
    rig.scan("SN-1");
    rig.show();
    ASSERT_EQ(rig.dialogs.boxes().size(), 3u);
    const ShownBox& box = rig.dialogs.boxes()[2];
    EXPECT_EQ(box.text, "MAC address not valid " + nettest::scaleMacText(1) +
                            ". Please, repeat the firmcast.");
    EXPECT_EQ(box.style & 0xF0, mb::kCritical);
    EXPECT_EQ(box.title, kAppTitle);
    EXPECT_EQ(rig.rows().at(0)[0], "SN-1");
}

TEST(RecordForm, OverEthernetAScaleThatDoesNotAnswerIsToldWithAnEmptyMac) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    rig.tipo_conexion = 0;
    rig.network.addHost(nettest::scaleIp(1), nettest::scaleMac(1)).setUp(false);
    rig.addRow();
    rig.scan("SN-1");
    rig.show();
    ASSERT_EQ(rig.dialogs.boxes().size(), 3u);
    EXPECT_EQ(rig.dialogs.boxes()[2].text, "The scale does not answer ");
    EXPECT_EQ(rig.dialogs.boxes()[2].title, kAppTitle);
}

TEST(RecordForm, TheFormCantBeClosedExceptThroughCmdAceptar) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store);
    EXPECT_FALSE(rig.form().closable());
    EXPECT_EQ(rig.form().cmdAceptar.caption(), "&Accept");
    EXPECT_EQ(rig.form().Label1.caption(), "Serial Number");
    EXPECT_EQ(rig.form().Label2.caption(), "MAC Address");
}

TEST(RecordForm, ADatabaseThatCannotBeReachedAtOpeningIsToldAndTheFormCloses) {
    FC_SQLITE_STORE(store);
    FormRig rig(*store, "NoSuchDataSourceAnywhere");
    rig.show();
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.texts()[0].rfind(
                  "Problema al acceder a la base de datos de MACs, error: 40002 ", 0),
              0u)
        << rig.dialogs.texts()[0];
    EXPECT_FALSE(rig.form().loaded());
}

}  // namespace
}  // namespace fc
