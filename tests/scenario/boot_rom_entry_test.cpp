// The way to the boot-ROM load of a Serie_G scale: the button under the
// kinds of device shows the kinds of G scale; a range chosen raises
// es_serie_g and leads to the way step, a choice that starts the tool stays
// on step 0; and a whole pass to a simulated MSC1210 ROM, told by its box
// alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sim/msc1210_rom.h"
#include "support/intel_hex.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A rig whose starts of the G scales' tool are counted, not made.
struct EntryRig : ScenarioRig {
    int toolStarts = 0;
    // The operator's hand while a click's handler waits for the next one
    // (Balanza G at level 2 waits for the range): a script of its own, since
    // a script's step does not run while the step before it is still running.
    OperatorScript meanwhile{pump};
    EntryRig() {
        hooks.startProgram = [this](const std::string&) {
            ++toolStarts;
            return 9L;
        };
    }
    // Runs the program at `level`, the operator choosing the kind `option` of
    // G scale, until the way step shows or the wizard is back on step 0 with
    // the kinds put away.
    void chooseKindOfG(const std::string& level, const std::string& option,
                       const std::function<void(Firmcast&)>& onFrame4 = {}) {
        Firmcast* f = &form();
        script.when([f] { return f->cmdCargaRomG.reachable(); }, "the boot ROM button",
                    [this] { click("cmdCargaRomG"); });
        script.when([f] { return f->hacerf.reachable(); }, "the kind of G scale",
                    [this, option] { click(option); });
        if (onFrame4)
            meanwhile.when([f] { return f->Frame4.reachable(); }, "the range",
                           [f, onFrame4] { onFrame4(*f); });
        stopWhen(
            [f] {
                return f->frPuerto.reachable() || (f->paso_asistente == 0 && !f->hacerf.visible());
            },
            "the way step, or step 0 again");
        EXPECT_EQ(run(level), -1);
    }
};

TEST(BootRomEntry, TheButtonIsOnStep0AndShowsTheKindsOfGScale) {
    EntryRig rig;
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->cmdCargaRomG.reachable(); }, "press it",
                    [&rig] { rig.click("cmdCargaRomG"); });
    rig.stopWhen([f] { return f->hacerf.reachable(); }, "the kinds of G scale");
    EXPECT_EQ(rig.run("0"), -1);
    EXPECT_EQ(f->cmdCargaRomG.caption(), "G scale through its boot ROM");
    EXPECT_TRUE(f->Option5.reachable());
    EXPECT_TRUE(f->Option7.reachable());
    EXPECT_EQ(f->es_serie_g, kFalse);
    EXPECT_EQ(f->paso_asistente, 0);
}

TEST(BootRomEntry, BalanzaGAtLevel0RaisesSerieGWithItsRangeAndGoesToTheWayStep) {
    EntryRig rig;
    rig.chooseKindOfG("0", "Option5");
    Firmcast& f = rig.form();
    EXPECT_TRUE(f.frPuerto.reachable());
    EXPECT_EQ(f.es_serie_g, kTrue);
    EXPECT_EQ(f.es_serie_n + f.es_serie_w + f.es_serie_h, 0);
    EXPECT_EQ(f.rango_banco, 0xEA);
    EXPECT_EQ(f.limite_rango, 0x7600);
    EXPECT_EQ(f.hacer_f, kFalse);
    EXPECT_FALSE(f.hacerf.visible());
    EXPECT_EQ(f.modelo_elegido, 3);
    EXPECT_EQ(rig.toolStarts, 0);
}

TEST(BootRomEntry, BalanzaGAtLevel1StartsTheToolAndStaysOnStep0) {
    EntryRig rig;
    rig.chooseKindOfG("1", "Option5");
    Firmcast& f = rig.form();
    EXPECT_EQ(rig.toolStarts, 1);
    EXPECT_EQ(f.es_serie_g, kFalse);
    EXPECT_EQ(f.paso_asistente, 0);
    EXPECT_FALSE(f.frPuerto.reachable());
    EXPECT_FALSE(f.hacerf.visible());
}

TEST(BootRomEntry, BalanzaGAtLevel2AsksForTheRangeOnFrame4) {
    EntryRig rig;
    rig.chooseKindOfG("2", "Option5", [](Firmcast& f) { operatorClick(f, "Option9"); });
    Firmcast& f = rig.form();
    EXPECT_EQ(f.es_serie_g, kTrue);
    EXPECT_EQ(f.rango_banco, 0xF7);
    EXPECT_EQ(f.limite_rango, 0x7C00);
    EXPECT_EQ(f.hacer_f, kTrue);
    EXPECT_FALSE(f.Frame4.visible());
    EXPECT_EQ(rig.toolStarts, 0);
}

TEST(BootRomEntry, CountingScalesAtLevels0And2StartTheToolAndAt1And3Load) {
    for (const char* level : {"0", "2"}) {
        EntryRig rig;
        rig.chooseKindOfG(level, "Option7");
        EXPECT_EQ(rig.toolStarts, 1) << level;
        EXPECT_EQ(rig.form().es_serie_g, kFalse) << level;
    }
    for (const char* level : {"1", "3"}) {
        EntryRig rig;
        rig.chooseKindOfG(level, "Option7");
        EXPECT_EQ(rig.toolStarts, 0) << level;
        EXPECT_EQ(rig.form().es_serie_g, kTrue) << level;
        EXPECT_EQ(rig.form().limite_rango, 0x7C00) << level;
    }
}

TEST(BootRomEntry, AToolStartedEarlierDoesNotUndoTheBootRomChoice) {
    EntryRig rig;
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->Picture6.reachable(); }, "the G picture first",
                    [&rig] {
                        rig.click("Picture6");
                        rig.click("cmdCargaRomG");
                    });
    rig.script.when([f] { return f->hacerf.reachable(); }, "Balanza G",
                    [&rig] { rig.click("Option5"); });
    rig.stopWhen([f] { return f->frPuerto.reachable(); }, "the way step");
    rig.script.at(20'000, "still on step 0", [] { throw ScenarioDone{}; });
    EXPECT_EQ(rig.run("0"), -1);
    EXPECT_EQ(rig.toolStarts, 1);
    EXPECT_TRUE(f->frPuerto.reachable());
    EXPECT_EQ(f->es_serie_g, kTrue);
}

TEST(BootRomEntry, AWholePassEndsWithTheRomsBoxAloneAndTheWaitForAgain) {
    EntryRig rig;
    Msc1210Rom rom;
    rig.serial.attach(1, rom);
    rig.driveC.write("g.hex",
                     hexFile({intelRecord(0x0100, 0, patternBytes(4, 16)),
                              intelRecord(0x0110, 0, patternBytes(5, 16)), ":00000001FF"}));
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->cmdCargaRomG.reachable(); }, "the boot ROM button",
                    [&rig] { rig.click("cmdCargaRomG"); });
    rig.script.when([f] { return f->hacerf.reachable(); }, "Balanza G",
                    [&rig] { rig.click("Option5"); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "RS-232 on COM1",
                    [&rig] {
                        rig.click("optrs232");
                        rig.click("Option1");
                        rig.click("cmdAdelante");
                    });
    rig.script.when([f] { return f->File1.reachable() && f->File1.listCount() > 0; }, "the file",
                    [&rig] {
                        rig.selectText("File1", "g.hex");
                        rig.click("cmdAdelante");
                    });
    rig.stopWhen([f] { return f->cmdAgain.reachable(); }, "the wait for Again");
    EXPECT_EQ(rig.run("0"), -1);
    EXPECT_THAT(rig.boxes(), ElementsAre("The scale is ready"));
    EXPECT_EQ(rig.dialogs.boxes().front().title, "The Scale is ready");
    EXPECT_EQ(f->intento_msc, 0) << "the first pulse found the banner";
    EXPECT_EQ(rom.recordAddresses().front(), 0x80);
    EXPECT_EQ(rom.recordAddresses().back(), 0x75F0);
    EXPECT_EQ(rom.flash()[0x100], patternBytes(4, 16)[0]);
    EXPECT_EQ(rom.flash()[0x11F], patternBytes(5, 16)[15]);
    EXPECT_EQ(rom.settings().baud, 19200);
    EXPECT_EQ(f->Linea.settings(), "19200,N,8,1");
    EXPECT_FALSE(f->Linea.portOpen()) << "the pass closed the line";
}

}  // namespace
}  // namespace fc::test
