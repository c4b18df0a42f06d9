// The scale list of the Ethernet way on step 3 and config.ini: what the file
// gives on entry, the limits of the count, the entry of addresses and their
// checks, the focus order, Save Config and the file it writes.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "operator/scale_list_entry.h"
#include "operator/operator_script.h"
#include "support/scenario_rig.h"
#include "support/wizard_steps.h"

namespace fc::test {
namespace {

using Rows = std::vector<std::vector<std::string>>;

constexpr Integer kEnter = 13;

// A rig whose program folder may hold a config.ini, walked by the script to
// step 3 of a Serie_W on Ethernet, where `act` runs once.
struct ScaleRig : ScenarioRig {
    Firmcast* f = &form();

    void config(const std::string& text) { home.write("config.ini", text); }
    std::string configText() const {
        std::ifstream in(home.path() / "config.ini", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

    // Runs to step 3, does `act` there and stops; returns the exit status,
    // -1 when the scenario stopped.
    int onScaleStep(std::function<void()> act) {
        toScaleStep();
        script.when([this] { return f->cmdSave.reachable() && f->paso_asistente == 3; }, "step 3",
                    [act] {
                        act();
                        throw ScenarioDone{};
                    });
        return run("");
    }

    // Script: the model, the way and the file step, up to step 3.
    void toScaleStep() {
        script.when([this] { return f->Seleccion.reachable() && f->paso_asistente == 0; },
                    "Serie_W", [this] { pickModel(*this, 0); });
        script.when([this] { return f->frPuerto.reachable(); }, "Ethernet, Next",
                    [this] {
                        click("optEthernet");
                        click("cmdAdelante");
                    });
        script.when([this] { return f->File1.reachable() && f->paso_asistente == 2; }, "Next",
                    [this] { click("cmdAdelante"); });
    }

    // The operator's keys.
    void type(const std::string& control, const std::string& text) {
        operatorType(*f, control, text);
    }
    void enter(const std::string& control) { operatorKey(*f, control, kEnter); }
    void count(const std::string& n) {
        f->Text1.setText("");
        type("Text1", n);
        enter("Text1");
    }
    void address(int entry, const std::string& ip) {
        select("cmbbalanza", entry);
        f->txtDirTCP.setText("");
        type("txtDirTCP", ip);
        enter("txtDirTCP");
    }
    std::vector<std::string> combo() const {
        std::vector<std::string> items;
        for (int i = 0; i < f->cmbbalanza.listCount(); ++i) items.push_back(f->cmbbalanza.list(i));
        return items;
    }
};

std::string nineteenScales() {
    std::string text = "[Balanzas]\r\nNumero=19\r\n[Direcciones]\r\n";
    for (int i = 1; i <= 19; ++i)
        text += "dir" + std::to_string(i) + "=10.0.0." + std::to_string(i) + "\r\n";
    return text;
}

// ---- Reading config.ini on entry to step 3 -----------------------------------

TEST(ScaleList, WithoutConfigIniTheListStaysEmptyAndThePortIs3000) {
    ScaleRig rig;
    rig.f->puerto_tx = 1234;
    EXPECT_EQ(rig.onScaleStep([] {}), -1);
    EXPECT_EQ(rig.f->Text1.text(), "");
    EXPECT_EQ(rig.f->lista_balanzas, std::vector<std::string>{""});
    EXPECT_TRUE(rig.f->lstBalanzas.rows().empty());
    EXPECT_EQ(rig.f->puerto_tx, 3000);
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(ScaleList, TheFileGivesTheCountTheAddressesTheComboTheListAndThePort) {
    ScaleRig rig;
    rig.config(
        "[Balanzas]\r\nNumero=2\r\n[Direcciones]\r\ndir1=192.168.1.10\r\ndir2=192.168.1.11\r\n"
        "[Puertos]\r\nTx=3050\r\n");
    EXPECT_EQ(rig.onScaleStep([] {}), -1);
    Firmcast& f = *rig.f;
    EXPECT_EQ(f.Text1.text(), "2");
    EXPECT_EQ(f.lista_balanzas, (std::vector<std::string>{"192.168.1.10", "192.168.1.11"}));
    EXPECT_EQ(rig.combo(), (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(f.cmbbalanza.itemData(1), 1);
    EXPECT_EQ(f.cmbbalanza.listIndex(), 0);
    EXPECT_EQ(f.txtDirTCP.text(), "192.168.1.10");
    EXPECT_EQ(f.lstBalanzas.columns(),
              (std::vector<std::string>{"Scale", "IP Address", "Result"}));
    EXPECT_EQ(f.lstBalanzas.columnWidths(), (std::vector<int>{700, 1500, 4000}));
    EXPECT_TRUE(f.lstBalanzas.fullRowSelect());
    EXPECT_EQ(f.lstBalanzas.rows(), (Rows{{"1", "192.168.1.10"}, {"2", "192.168.1.11"}}));
    EXPECT_EQ(f.lstBalanzas.selectedRow(), 0);
    EXPECT_EQ(f.puerto_tx, 3050);
    EXPECT_TRUE(f.cmdSave.enabled());
}

TEST(ScaleList, OpeningStep3AgainForgetsWhatWasEnteredAndReadsTheFileAfresh) {
    ScaleRig rig;
    Firmcast* f = rig.f;
    rig.toScaleStep();
    rig.script.when([f] { return f->cmdSave.reachable() && f->paso_asistente == 3; }, "enter, back",
                    [&rig] {
                        rig.count("1");
                        rig.address(0, "10.0.0.1");
                        rig.click("cmdAtras");
                    });
    rig.script.when([f] { return f->File1.reachable() && f->paso_asistente == 2; }, "Next",
                    [&rig] { rig.click("cmdAdelante"); });
    rig.stopWhen([f] { return f->cmdSave.reachable() && f->paso_asistente == 3; }, "step 3 again");
    EXPECT_EQ(rig.run(""), -1);
    EXPECT_EQ(f->lista_balanzas, std::vector<std::string>{""});
    EXPECT_EQ(f->Text1.text(), "");
}

TEST(ScaleList, APortThatIsNotANumberKeeps3000WithoutAMessage) {
    ScaleRig rig;
    rig.config(
        "[Balanzas]\r\nNumero=1\r\n[Direcciones]\r\ndir1=10.0.0.1\r\n[Puertos]\r\nTx=30x0\r\n");
    rig.f->puerto_tx = 1;
    EXPECT_EQ(rig.onScaleStep([] {}), -1);
    EXPECT_EQ(rig.f->puerto_tx, 3000);
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(ScaleList, NumeroZeroShowsZeroThenTheResizeEndsInARunTimeError) {
    ScaleRig rig;
    rig.config("[Balanzas]\r\nNumero=0\r\n[Direcciones]\r\ndir1=10.0.0.1\r\n");
    EXPECT_EQ(rig.onScaleStep([] { ADD_FAILURE() << "the step 3 wait was reached"; }), 3);
    EXPECT_EQ(rig.f->Text1.text(), "0");
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "9Subscript out of range");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kCritical);
}

TEST(ScaleList, NineteenScalesInTheFileLoadInFull) {
    ScaleRig rig;
    rig.config(nineteenScales());
    EXPECT_EQ(rig.onScaleStep([] {}), -1);
    EXPECT_EQ(rig.f->Text1.text(), "19");
    ASSERT_EQ(rig.f->lista_balanzas.size(), 19u);
    EXPECT_EQ(rig.f->lista_balanzas[18], "10.0.0.19");
    EXPECT_EQ(rig.f->lstBalanzas.rows().size(), 19u);
    EXPECT_EQ(rig.f->cmbbalanza.listCount(), 19);
}

TEST(ScaleList, NumeroTwentyInTheFileYieldsAnEmptyBoxAndAnEmptyList) {
    ScaleRig rig;
    std::string text = "[Balanzas]\r\nNumero=20\r\n[Direcciones]\r\n";
    for (int i = 1; i <= 20; ++i)
        text += "dir" + std::to_string(i) + "=10.0.0." + std::to_string(i) + "\r\n";
    rig.config(text + "[Puertos]\r\nTx=4000\r\n");
    EXPECT_EQ(rig.onScaleStep([] {}), -1);
    EXPECT_EQ(rig.f->Text1.text(), "");
    EXPECT_EQ(rig.f->lista_balanzas, std::vector<std::string>{""});
    EXPECT_TRUE(rig.f->lstBalanzas.rows().empty());
    EXPECT_EQ(rig.f->cmbbalanza.listCount(), 0);
    EXPECT_EQ(rig.f->puerto_tx, 4000);
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(ScaleList, MoreAddressesThanTheCountIsARunTimeError) {
    ScaleRig rig;
    rig.config("[Balanzas]\r\nNumero=1\r\n[Direcciones]\r\ndir1=10.0.0.1\r\ndir2=10.0.0.2\r\n");
    EXPECT_EQ(rig.onScaleStep([] {}), 3);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "9Subscript out of range");
}

TEST(ScaleList, AfterARestartWithOnlyDir3TheComboShows3AndItsAddressSitsAtIndex0) {
    ScaleRig rig;
    rig.config("[Balanzas]\r\nNumero=3\r\n[Direcciones]\r\ndir3=10.0.0.3\r\n");
    EXPECT_EQ(rig.onScaleStep([] {}), -1);
    EXPECT_EQ(rig.combo(), std::vector<std::string>{"3"});
    EXPECT_EQ(rig.f->cmbbalanza.itemData(0), 0);
    EXPECT_EQ(rig.f->lista_balanzas, (std::vector<std::string>{"10.0.0.3", "", ""}));
    EXPECT_EQ(rig.f->txtDirTCP.text(), "10.0.0.3");
    EXPECT_EQ(rig.f->lstBalanzas.rows(), (Rows{{"1", "10.0.0.3"}}));
}

TEST(ScaleList, AnEntryWithoutEqualsInDireccionesIsSkipped) {
    ScaleRig rig;
    rig.config(
        "[Balanzas]\r\nNumero=2\r\n[Direcciones]\r\ndir1=10.0.0.1\r\nbroken "
        "line\r\ndir2=10.0.0.2\r\n");
    EXPECT_EQ(rig.onScaleStep([] {}), -1);
    EXPECT_EQ(rig.combo(), (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(rig.f->lista_balanzas, (std::vector<std::string>{"10.0.0.1", "10.0.0.2"}));
}

TEST(ScaleList, AnAddressRepeatedInTheFileIsNotCheckedOnReading) {
    ScaleRig rig;
    rig.config("[Balanzas]\r\nNumero=2\r\n[Direcciones]\r\ndir1=10.0.0.7\r\ndir2=10.0.0.7\r\n");
    EXPECT_EQ(rig.onScaleStep([] {}), -1);
    EXPECT_EQ(rig.f->lista_balanzas, (std::vector<std::string>{"10.0.0.7", "10.0.0.7"}));
    EXPECT_TRUE(rig.boxes().empty());
}

// ---- The count in Text1 --------------------------------------------------------

TEST(ScaleList, TypingTwoThenOneShowsTheTwentyMessageAndDropsTheOne) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] { rig.type("Text1", "21"); }), -1);
    EXPECT_EQ(rig.f->Text1.text(), "2");
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "It is not allowed to load more that twenty scales");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kInformation);
    EXPECT_TRUE(rig.f->Text1.hasFocus());
}

TEST(ScaleList, TwentyIsAcceptedAndEnterMakesTwentyEntries) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] { rig.count("20"); }), -1);
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_EQ(rig.f->Text1.text(), "20");
    EXPECT_EQ(rig.f->lista_balanzas.size(), 20u);
    EXPECT_EQ(rig.f->lstBalanzas.rows().size(), 20u);
    EXPECT_EQ(rig.f->cmbbalanza.listCount(), 20);
    EXPECT_EQ(rig.f->cmbbalanza.list(19), "20");
    EXPECT_EQ(rig.f->cmbbalanza.itemData(19), 19);
}

TEST(ScaleList, AfterEnterInTheCountTheFocusEndsOnText1) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] { rig.count("3"); }), -1);
    EXPECT_TRUE(rig.f->Text1.hasFocus());
    EXPECT_FALSE(rig.f->cmbbalanza.hasFocus());
    EXPECT_EQ(rig.f->cmbbalanza.listIndex(), 0);
}

TEST(ScaleList, LettersInTheCountPassUnexaminedAndEnterOnThemIsATypeMismatch) {
    ScaleRig rig;
    std::string typed;
    EXPECT_EQ(rig.onScaleStep([&rig, &typed] {
        rig.type("Text1", "ab");
        typed = rig.f->Text1.text();
        rig.enter("Text1");
    }),
              3);
    EXPECT_EQ(typed, "ab");
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "Run-time error '13':\n\nType mismatch");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kCritical);
}

TEST(ScaleList, EnterOnAnEmptyCountIsATypeMismatch) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] { rig.enter("Text1"); }), 3);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "Run-time error '13':\n\nType mismatch");
}

TEST(ScaleList, EnterOnACountOfZeroIsARunTimeError) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] { rig.count("0"); }), 3);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "Run-time error '9':\n\nSubscript out of range");
}

TEST(ScaleList, RaisingTheCountKeepsTheFirstAddressesAndLoweringItLosesTheRest) {
    ScaleRig rig;
    rig.config("[Balanzas]\r\nNumero=2\r\n[Direcciones]\r\ndir1=10.0.0.1\r\ndir2=10.0.0.2\r\n");
    std::vector<std::string> raised;
    Rows raisedRows;
    EXPECT_EQ(rig.onScaleStep([&] {
        rig.count("4");
        raised = rig.f->lista_balanzas;
        raisedRows = rig.f->lstBalanzas.rows();
        rig.count("1");
    }),
              -1);
    EXPECT_EQ(raised, (std::vector<std::string>{"10.0.0.1", "10.0.0.2", "", ""}));
    EXPECT_EQ(raisedRows, (Rows{{"1", "10.0.0.1"}, {"2", "10.0.0.2"}, {"3", ""}, {"4", ""}}));
    EXPECT_EQ(rig.f->lista_balanzas, std::vector<std::string>{"10.0.0.1"});
    EXPECT_EQ(rig.f->lstBalanzas.rows(), (Rows{{"1", "10.0.0.1"}}));
    EXPECT_EQ(rig.combo(), std::vector<std::string>{"1"});
}

// ---- The addresses -------------------------------------------------------------

TEST(ScaleList, AnAddressIsStoredByEnterAndTheFocusGoesToTheCombo) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] {
        rig.count("2");
        rig.address(1, "192.168.1.11");
    }),
              -1);
    EXPECT_EQ(rig.f->lista_balanzas, (std::vector<std::string>{"", "192.168.1.11"}));
    EXPECT_EQ(rig.f->lstBalanzas.rows(), (Rows{{"1", ""}, {"2", "192.168.1.11"}}));
    EXPECT_TRUE(rig.f->cmbbalanza.hasFocus());
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(ScaleList, TypingAnAddressWithoutEnterStoresNothing) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] {
        rig.count("1");
        rig.type("txtDirTCP", "10.1.1.1");
        rig.click("Text1");
    }),
              -1);
    EXPECT_EQ(rig.f->lista_balanzas, std::vector<std::string>{""});
}

TEST(ScaleList, ChoosingAScaleInTheComboShowsItsAddressAndEnterMovesToTheAddress) {
    ScaleRig rig;
    rig.config("[Balanzas]\r\nNumero=2\r\n[Direcciones]\r\ndir1=10.0.0.1\r\ndir2=10.0.0.2\r\n");
    EXPECT_EQ(rig.onScaleStep([&rig] {
        rig.select("cmbbalanza", 1);
        EXPECT_EQ(rig.f->txtDirTCP.text(), "10.0.0.2");
        rig.f->txtDirTCP.setText("typed over");
        rig.enter("cmbbalanza");
    }),
              -1);
    EXPECT_EQ(rig.f->txtDirTCP.text(), "10.0.0.2");
    EXPECT_TRUE(rig.f->txtDirTCP.hasFocus());
}

TEST(ScaleList, AnAddressThatIsNotValidIsRefusedWithTheWarning) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] {
        rig.count("1");
        rig.address(0, "192.168.1");
    }),
              -1);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "The IP Address is not a valid one");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kExclamation);
    EXPECT_EQ(rig.f->lista_balanzas, std::vector<std::string>{""});
    EXPECT_TRUE(rig.f->txtDirTCP.hasFocus());
}

TEST(ScaleList, TheSameAddressTwiceIsRefusedAtEntryWithItsTextSelected) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] {
        rig.count("2");
        rig.address(0, "10.0.0.5");
        rig.address(1, "10.0.0.5");
    }),
              -1);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text,
              "It is not allowed to introduce twice the same Ip Address");
    EXPECT_EQ(rig.dialogs.boxes()[0].style, mb::kInformation);
    EXPECT_EQ(rig.f->lista_balanzas, (std::vector<std::string>{"10.0.0.5", ""}));
    EXPECT_EQ(rig.f->txtDirTCP.selStart(), 0);
    EXPECT_EQ(rig.f->txtDirTCP.selLength(), 8);
    EXPECT_TRUE(rig.f->txtDirTCP.hasFocus());
}

TEST(ScaleList, TheSameAddressEnteredAgainForItsOwnScaleIsAccepted) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] {
        rig.count("1");
        rig.address(0, "10.0.0.5");
        rig.address(0, "10.0.0.5");
    }),
              -1);
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(ScaleList, TheStartAsksForEveryAddressWhenOneIsMissing) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] {
        rig.count("2");
        rig.address(0, "10.0.0.1");
        rig.f->Command2_Click();
    }),
              -1);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "You must introduce the Ip Address for every Scale.");
    EXPECT_TRUE(rig.f->cmbbalanza.hasFocus());
}

// ---- Save Config ---------------------------------------------------------------

TEST(ScaleList, SaveConfigWritesTheCountTheAddressesAndThePortInThatOrder) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] {
        rig.count("2");
        rig.address(0, "192.168.1.10");
        rig.address(1, "192.168.1.11");
        rig.click("cmdSave");
    }),
              -1);
    EXPECT_EQ(
        rig.configText(),
        "[Balanzas]\r\nNumero=2\r\n[Direcciones]\r\ndir1=192.168.1.10\r\ndir2=192.168.1.11\r\n"
        "[Puertos]\r\nTx=3000\r\n");
}

// The file is written from the list view: on a first run, before a count
// was entered, the view has no row for the one entry of the list.
TEST(ScaleList, SaveConfigBeforeAnyCountMeetsTheListViewsIndexError) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] { rig.click("cmdSave"); }), 3);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text, "Run-time error '35600':\n\nIndex out of bounds");
}

TEST(ScaleList, NothingIsSavedWithoutSaveConfig) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] {
        rig.count("1");
        rig.address(0, "192.168.1.10");
    }),
              -1);
    EXPECT_FALSE(std::filesystem::exists(rig.home.path() / "config.ini"));
}

TEST(ScaleList, SavingAgainPutsTheAddressesAfterThePort) {
    ScaleRig rig;
    rig.config(
        "[Balanzas]\r\nNumero=2\r\n[Direcciones]\r\ndir1=10.0.0.1\r\ndir2=10.0.0.2\r\n"
        "[Puertos]\r\nTx=3050\r\n");
    EXPECT_EQ(rig.onScaleStep([&rig] {
        rig.count("1");
        rig.click("cmdSave");
    }),
              -1);
    EXPECT_EQ(
        rig.configText(),
        "[Balanzas]\r\nNumero=1\r\n[Puertos]\r\nTx=3050\r\n[Direcciones]\r\ndir1=10.0.0.1\r\n");
}

TEST(ScaleList, SavingNineteenAndTwentyScalesOnlyNineteenSurviveARestart) {
    for (int n : {19, 20}) {
        ScaleRig saving;
        std::vector<std::string> ips;
        for (int i = 1; i <= n; ++i) ips.push_back("10.0.1." + std::to_string(i));
        EXPECT_EQ(saving.onScaleStep([&] { introduceListaBalanzas(*saving.f, ips, true); }), -1);
        ScaleRig reading;
        reading.config(saving.configText());
        EXPECT_EQ(reading.onScaleStep([] {}), -1);
        EXPECT_EQ(reading.f->lista_balanzas.size(), n == 19 ? 19u : 1u) << n;
        EXPECT_EQ(reading.f->Text1.text(), n == 19 ? "19" : "") << n;
    }
}

// ---- Entered by a program ------------------------------------------------------

TEST(ScaleList, AProgramEntersTheListAsAnOperatorAndSavesIt) {
    ScaleRig rig;
    rig.config("[Balanzas]\r\nNumero=1\r\n[Direcciones]\r\ndir1=10.9.9.9\r\n");
    EXPECT_EQ(rig.onScaleStep([&rig] {
        introduceListaBalanzas(*rig.f, {"192.168.1.10", "192.168.1.11", "192.168.1.12"}, true);
    }),
              -1);
    EXPECT_EQ(rig.f->lista_balanzas,
              (std::vector<std::string>{"192.168.1.10", "192.168.1.11", "192.168.1.12"}));
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_EQ(
        rig.configText(),
        "[Balanzas]\r\nNumero=3\r\n[Direcciones]\r\ndir1=192.168.1.10\r\ndir2=192.168.1.11\r\n"
        "dir3=192.168.1.12\r\n[Puertos]\r\nTx=3000\r\n");
}

TEST(ScaleList, AProgramEnteringARepeatedAddressMeetsTheSameRefusal) {
    ScaleRig rig;
    EXPECT_EQ(rig.onScaleStep([&rig] {
        introduceListaBalanzas(*rig.f, {"10.0.0.1", "10.0.0.1"}, false);
    }),
              -1);
    ASSERT_EQ(rig.dialogs.boxes().size(), 1u);
    EXPECT_EQ(rig.dialogs.boxes()[0].text,
              "It is not allowed to introduce twice the same Ip Address");
    EXPECT_EQ(rig.f->lista_balanzas, (std::vector<std::string>{"10.0.0.1", ""}));
}

}  // namespace
}  // namespace fc::test
