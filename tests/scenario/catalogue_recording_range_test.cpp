// The recording ranges of a Serie_G boot ROM load (frames hacerf and Frame4):
// the values each option leaves, Option5 and Option7 by level, and the
// operator's choice on Frame4 at level 2.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scenario_rig.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

struct Range {
    int banco;
    Long limite;
    Flag hacerF;
};

void expectRange(const Firmcast& f, Range want, const std::string& what) {
    EXPECT_EQ(f.rango_banco, want.banco) << what;
    EXPECT_EQ(f.limite_rango, want.limite) << what;
    EXPECT_EQ(f.hacer_f, want.hacerF) << what;
    EXPECT_EQ(f.rango_elegido, kTrue) << what;
}

// A form whose Gseries starts are recorded.
struct RangeRig : ScenarioRig {
    std::vector<std::string> started;
    RangeRig() {
        hooks.startProgram = [this](const std::string& commandLine) {
            started.push_back(commandLine);
            return 7L;
        };
    }
    std::string gseries(int level) const {
        return home.path().string() + "\\Gseries.exe " + std::to_string(level);
    }
};

TEST(RecordingRange, TheFramesAreCreatedHiddenAndDisabled) {
    ScenarioRig rig;
    Firmcast& f = rig.form();
    for (const Control* c :
         {static_cast<const Control*>(&f.hacerf), static_cast<const Control*>(&f.Frame4)}) {
        EXPECT_FALSE(c->visible()) << c->name();
        EXPECT_FALSE(c->enabled()) << c->name();
    }
    EXPECT_EQ(f.hacerf.caption(), "Seleccionar la carga");
    EXPECT_EQ(f.Frame4.caption(), "Seleccion de rango de grabaci\xC3\xB3n");
}

TEST(RecordingRange, TheFiveRangesOfFrame4SetTheirValues) {
    ScenarioRig rig;
    Firmcast& f = rig.form();
    f.Option6.setValue(true);
    expectRange(f, {0xFE, 0x7FFF, kTrue}, "Option6");
    f.Option9.setValue(true);
    expectRange(f, {0xF7, 0x7C00, kTrue}, "Option9");
    f.Option8.setValue(true);
    expectRange(f, {0xEF, 0x7800, kTrue}, "Option8");
    f.Option10.setValue(true);
    expectRange(f, {0xEB, 0x7600, kTrue}, "Option10");
    EXPECT_EQ(f.Option6.caption(), "Balanza completa (todo el chip)");
    EXPECT_EQ(f.Option9.caption(), "Balanza, idioma, protocolo ");
    EXPECT_EQ(f.Option8.caption(), "Balanza e idioma");
    EXPECT_EQ(f.Option10.caption(), "Solo balanza (incluidos 128 bytes");
    EXPECT_EQ(f.Option11.caption(), "Balanza normal (sin 128 bytes)");
}

TEST(RecordingRange, Option11LeavesHacerFAsItWas) {
    ScenarioRig rig;
    Firmcast& f = rig.form();
    f.Option6.setValue(true);
    f.Option11.setValue(true);
    expectRange(f, {0xEA, 0x7600, kTrue}, "Option11 after Option6");
    f.nivel = 0;
    f.Option5.setValue(true);
    f.Option11.setValue(true);
    expectRange(f, {0xEA, 0x7600, kFalse}, "Option11 after Option5");
}

TEST(RecordingRange, EachHandlerClearsItsOwnButtonSoThatItCanBePressedAgain) {
    RangeRig rig;
    Firmcast& f = rig.form();
    f.nivel = 3;
    int clicks = 0;
    auto counted = f.Option9.onClick;
    f.Option9.onClick = [&clicks, counted] {
        ++clicks;
        counted();
    };
    f.Option9.setValue(true);
    f.Option9.setValue(true);
    EXPECT_EQ(clicks, 2);
    for (OptionButton* option :
         {&f.Option5, &f.Option6, &f.Option7, &f.Option8, &f.Option9, &f.Option10, &f.Option11}) {
        option->setValue(true);
        EXPECT_FALSE(option->value()) << option->name();
    }
}

TEST(RecordingRange, Option5ByLevel) {
    {
        RangeRig rig;
        Firmcast& f = rig.form();
        f.hacer_f = kTrue;
        f.nivel = 0;
        f.Option5.setValue(true);
        expectRange(f, {0xEA, 0x7600, kFalse}, "level 0");
        f.nivel = 3;
        f.Option5.setValue(true);
        expectRange(f, {0xF6, 0x7C00, kFalse}, "level 3");
        EXPECT_TRUE(rig.started.empty());
    }
    RangeRig rig;
    Firmcast& f = rig.form();
    f.nivel = 1;
    f.rango_banco = 0x11;
    f.limite_rango = 0x2222;
    f.Option5.setValue(true);
    expectRange(f, {0x11, 0x2222, kFalse}, "level 1: the range is the tool's");
    EXPECT_THAT(rig.started, ElementsAre(rig.gseries(1)));
    EXPECT_EQ(f.lanzado_gseries, kTrue);
    EXPECT_EQ(f.proceso_externo, 7);
}

TEST(RecordingRange, Option5AtLevel2WaitsForTheOperatorsRangeOnFrame4) {
    RangeRig rig;
    Firmcast* f = &rig.form();
    f->nivel = 2;
    f->hacerf.setVisible(true);
    f->hacerf.setEnabled(true);
    rig.script.when([f] { return f->Frame4.reachable(); }, "choose Balanza e idioma",
                    [f] {
                        EXPECT_FALSE(f->hacerf.visible());
                        EXPECT_FALSE(f->hacerf.enabled());
                        EXPECT_EQ(f->rango_elegido, kFalse);
                        f->Option8.setValue(true);
                    });
    rig.script.at(5000, "the handler has long returned", [] {});
    f->Option5.setValue(true);
    EXPECT_EQ(rig.script.done().size(), 1u);
    expectRange(*f, {0xEF, 0x7800, kTrue}, "level 2, Option8");
    EXPECT_FALSE(f->Frame4.visible());
    EXPECT_FALSE(f->Frame4.enabled());
    EXPECT_TRUE(rig.started.empty());
}

TEST(RecordingRange, Option7ByLevelSplitsTheLevelsTheOtherWay) {
    for (int level : {1, 3}) {
        RangeRig rig;
        Firmcast& f = rig.form();
        f.nivel = static_cast<Integer>(level);
        f.hacer_f = kTrue;
        f.Option7.setValue(true);
        expectRange(f, {0xF6, 0x7C00, kFalse}, "level " + std::to_string(level));
        EXPECT_TRUE(rig.started.empty());
    }
    for (int level : {0, 2}) {
        RangeRig rig;
        Firmcast& f = rig.form();
        f.nivel = static_cast<Integer>(level);
        f.hacer_f = kTrue;
        f.Option7.setValue(true);
        EXPECT_THAT(rig.started, ElementsAre(rig.gseries(level)));
        EXPECT_EQ(f.hacer_f, kTrue) << "level " << level;
        EXPECT_EQ(f.rango_elegido, kTrue);
    }
}

}  // namespace
}  // namespace fc::test
