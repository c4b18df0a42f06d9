// Setting up the line (speed list, frame format by family, the port errors)
// and the waits built on the time-out timer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "serial/answer_wait.h"
#include "serial/line_speeds.h"
#include "sim/echo_device.h"
#include "support/scenario_rig.h"

namespace fc::test {
namespace {

// The main screen after start-up, with `code`'s model chosen and COM `port`
// selected, ready to apply the way.
struct LineRig : ScenarioRig {
    EchoDevice device;
    explicit LineRig(int attachedPort = 1) { serial.attach(attachedPort, device); }

    void chooseModel(int code) {
        form().load();
        CargaComboVelocidades(form().cmbvelocidades);
        form().raiseModelFlag(code);
        form().modelo_elegido = static_cast<Integer>(code);
    }
};

TEST(CargaComboVelocidades, FillsTheNineSpeedsWithTheirItemData) {
    LineRig rig;
    ComboBox& list = rig.form().cmbvelocidades;
    list.addItem("stale");
    CargaComboVelocidades(list);
    ASSERT_EQ(list.listCount(), 9);
    const char* texts[] = {"115200", "57600", "38400", "28800", "19200",
                           "14400",  "9600",  "2400",  "1200"};
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(list.list(i), texts[i]);
        EXPECT_EQ(list.itemData(i), i);
    }
}

TEST(LanzaLinea, With2400SelectedTheSettingsBegin9600) {
    LineRig rig;
    rig.chooseModel(1);
    rig.form().puerto_com = 1;
    rig.form().cmbvelocidades.setListIndex(7);
    EXPECT_EQ(rig.form().lanza_linea(), kTrue);
    EXPECT_EQ(rig.form().Linea.settings(), "9600,e,7,1");
}

TEST(LanzaLinea, With1200SelectedTheSettingsBegin9600) {
    LineRig rig;
    rig.chooseModel(2);
    rig.form().puerto_com = 1;
    rig.form().cmbvelocidades.setListIndex(8);
    EXPECT_EQ(rig.form().lanza_linea(), kTrue);
    EXPECT_EQ(rig.form().Linea.settings(), "9600,N,8,1");
}

TEST(LanzaLinea, WithNothingSelectedTheSpeedIs57600AndTheListShowsIt) {
    LineRig rig;
    rig.chooseModel(1);
    rig.form().puerto_com = 1;
    ASSERT_EQ(rig.form().cmbvelocidades.listIndex(), -1);
    EXPECT_EQ(rig.form().lanza_linea(), kTrue);
    EXPECT_EQ(rig.form().Linea.settings(), "57600,e,7,1");
    EXPECT_EQ(rig.form().cmbvelocidades.listIndex(), 1);
    EXPECT_EQ(rig.form().cmbvelocidades.text(), "57600");
}

TEST(LanzaLinea, NumberedFamilyRunsSevenBitsEvenParity) {
    for (int code : {0, 1, 6, 8}) {
        LineRig rig;
        rig.chooseModel(code);
        rig.form().puerto_com = 1;
        rig.form().cmbvelocidades.setListIndex(0);
        ASSERT_EQ(rig.form().lanza_linea(), kTrue) << code;
        EXPECT_EQ(rig.form().Linea.settings(), "115200,e,7,1") << code;
        EXPECT_EQ(rig.form().lblBits.caption(), "Bits: 7");
        EXPECT_EQ(rig.form().lblParidad.caption(), "Parity: EVEN");
        EXPECT_TRUE(rig.form().frComParameters.visible());
        EXPECT_TRUE(rig.form().Linea.portOpen());
        EXPECT_EQ(rig.form().Linea.commPort(), 1);
    }
}

TEST(LanzaLinea, OtherModelsRunEightBitsNoParity) {
    for (int code : {2, 4, 5}) {
        LineRig rig;
        rig.chooseModel(code);
        rig.form().puerto_com = 1;
        rig.form().cmbvelocidades.setListIndex(4);
        ASSERT_EQ(rig.form().lanza_linea(), kTrue) << code;
        EXPECT_EQ(rig.form().Linea.settings(), "19200,N,8,1") << code;
        EXPECT_EQ(rig.form().lblBits.caption(), "Bits: 8");
        EXPECT_EQ(rig.form().lblParidad.caption(), "Parity: NONE");
    }
}

TEST(LanzaLinea, APortThatCannotBeOpenedSaysWhichAndGoesBackToTheWayStep) {
    for (Integer port = 1; port <= 4; ++port) {
        LineRig rig(9);  // nothing on COM1..COM4
        rig.chooseModel(1);
        rig.form().puerto_com = port;
        rig.form().paso_asistente = 2;
        EXPECT_EQ(rig.form().lanza_linea(), kFalse);
        EXPECT_THAT(rig.boxes(),
                    ::testing::ElementsAre("Error at port COM" + std::to_string(port)));
        EXPECT_EQ(rig.form().paso_asistente, 1);
        EXPECT_FALSE(rig.form().Linea.portOpen());
    }
}

TEST(LanzaLinea, APortInUseFailsAsAnyOther) {
    LineRig rig;
    rig.chooseModel(1);
    rig.form().puerto_com = 1;
    auto other = rig.serial.open(1);  // another program holds the port
    EXPECT_EQ(rig.form().lanza_linea(), kFalse);
    EXPECT_THAT(rig.boxes(), ::testing::ElementsAre("Error at port COM1"));
}

TEST(Command1, RS232WithNoPortSelectedSaysSoAndStaysOnTheWayStep) {
    LineRig rig;
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->Seleccion.reachable(); }, "pick Serie_N",
                    [&] { rig.click("Picture3"); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "RS-232, no port, Next",
                    [&] {
                        rig.click("optrs232");
                        rig.click("cmdAdelante");
                    });
    rig.script.after(100, "look", [] { throw ScenarioDone{}; });
    rig.run("");
    EXPECT_THAT(rig.boxes(), ::testing::ElementsAre("You must select one Serial Port"));
    EXPECT_EQ(f->paso_asistente, 1);
    EXPECT_TRUE(f->frPuerto.visible());
    EXPECT_FALSE(f->frDirectorio.visible());
    EXPECT_FALSE(f->Linea.portOpen());
}

TEST(Command1, SerialWayOpensTheLineAndShowsTheFileStep) {
    LineRig rig;
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->Seleccion.reachable(); }, "pick Serie_N",
                    [&] { rig.click("Picture3"); });
    rig.script.when([f] { return f->frPuerto.reachable(); }, "RS-232 on COM1",
                    [&] {
                        rig.click("optrs232");
                        rig.click("Option1");
                        rig.click("cmdAdelante");
                    });
    rig.stopWhen([f] { return f->File1.reachable(); }, "file step");
    rig.run("");
    EXPECT_TRUE(rig.boxes().empty());
    EXPECT_EQ(f->caption(), "Firmcast working on port COM1 ");
    EXPECT_TRUE(f->Linea.portOpen());
    EXPECT_EQ(f->Linea.settings(), "57600,e,7,1");
    EXPECT_EQ(f->transporte_elegido, 1);
    EXPECT_EQ(f->puerto_elegido, 1);
    EXPECT_EQ(f->paso_asistente, 2);
    // A Serie_N scale may not change the speed.
    EXPECT_FALSE(f->frComParameters.enabled());
}

TEST(Timerout, LeftEnabledAt65535ItRaisesTheFlagAgainEvery65535Ms) {
    LineRig rig;
    Firmcast& f = rig.form();
    f.timerout.setInterval(65535);
    f.timerout.setEnabled(true);
    std::vector<long long> raised;
    while (raised.size() < 3) {
        rig.pump.doEvents();
        if (f.tiempo_agotado) {
            raised.push_back(rig.pump.now());
            f.tiempo_agotado = kFalse;  // as every wait does first
        }
    }
    EXPECT_EQ(raised, (std::vector<long long>{65535, 131070, 196605}));
}

TEST(EsperaTiempo, ReturnsWhenTheTimerFires) {
    LineRig rig;
    Firmcast& f = rig.form();
    f.tiempo_agotado = kTrue;  // stale: the wait clears it first
    espera_tiempo(f.serialPanel(), 2500);
    // The timer fires at 2500 ms, inside a pump; the loop's sleep of 1 ms
    // follows before it looks at the flag.
    EXPECT_EQ(rig.pump.now(), 2501);
    EXPECT_FALSE(f.timerout.enabled());
}

TEST(EsperaTiempo, WithZeroNeverReturns) {
    LineRig rig;
    Firmcast& f = rig.form();
    EXPECT_THROW(espera_tiempo(f.serialPanel(), 0), WaitNeverEnds);
}

TEST(AnswerWait, SeesTheAnswerAsSoonAsItArrives) {
    LineRig rig;
    Firmcast& f = rig.form();
    rig.chooseModel(2);
    f.puerto_com = 1;
    f.cmbvelocidades.setListIndex(6);  // 9600,N,8,1: 10 bits a character
    ASSERT_EQ(f.lanza_linea(), kTrue);
    f.Linea.output(std::string(1, '\x15'));
    bool answered = espera_respuesta(f.serialPanel(), 1000, al_menos(f.serialPanel(), 1));
    EXPECT_TRUE(answered);
    // Out and back: two characters of 10 bits at 9600 baud.
    EXPECT_NEAR(static_cast<double>(rig.pump.nowMicros()), 2 * 10 * 1e6 / 9600, 1000);
    EXPECT_EQ(f.Linea.input(), std::string(1, '\x15'));
    EXPECT_FALSE(f.timerout.enabled());
}

TEST(AnswerWait, TimesOutAfterExactlyItsTime) {
    LineRig rig;
    Firmcast& f = rig.form();
    rig.chooseModel(2);
    f.puerto_com = 1;
    ASSERT_EQ(f.lanza_linea(), kTrue);
    rig.serial.wire(1).setSilent(true);
    f.Linea.output("x");
    bool answered = espera_respuesta(f.serialPanel(), 5000, al_menos(f.serialPanel(), 1));
    EXPECT_FALSE(answered);
    EXPECT_EQ(rig.pump.now(), 5000);
    EXPECT_EQ(f.tiempo_agotado, kTrue);
}

TEST(AnswerWait, DrainWaitsUntilTheLastByteIsSent) {
    LineRig rig;
    Firmcast& f = rig.form();
    rig.chooseModel(2);
    f.puerto_com = 1;
    f.cmbvelocidades.setListIndex(4);  // 19200
    ASSERT_EQ(f.lanza_linea(), kTrue);
    f.Linea.output(std::string(96, 'A'));
    EXPECT_GT(f.Linea.outBufferCount(), 0);
    drena_salida(f.serialPanel());
    EXPECT_EQ(f.Linea.outBufferCount(), 0);
    EXPECT_NEAR(static_cast<double>(rig.pump.nowMicros()), 96 * 10 * 1e6 / 19200, 1000);
}

}  // namespace
}  // namespace fc::test
