// What the window tells the operator beyond the system's own words: the
// operating level, the device behind each serial port, and a look at the
// selected firmware file. None of it changes the wizard's road.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sim/echo_device.h"
#include "support/intel_hex.h"
#include "support/scenario_rig.h"
#include "support/wizard_steps.h"

namespace fc::test {
namespace {

using ::testing::HasSubstr;

// Serial ports that name their devices, as the machine's own do.
class NamedPorts : public VirtualSerialOpener {
  public:
    using VirtualSerialOpener::VirtualSerialOpener;
    std::string deviceOf(int commPort) const override {
        return commPort == 3 ? "" : "/dev/ttyUSB" + std::to_string(commPort - 1);
    }
};

TEST(OperatorAids, TheLevelIsNamedInTheWindowForEachLevel) {
    const char* names[] = {"Level 0: workshop", "Level 1: production", "Level 2: laboratory",
                           "Level 3: workshop"};
    for (int level = 0; level <= 3; ++level) {
        ScenarioRig rig;
        Firmcast* f = &rig.form();
        rig.stopWhen([f] { return f->Seleccion.reachable(); }, "step 0");
        EXPECT_EQ(rig.run(std::to_string(level)), -1);
        EXPECT_EQ(f->lblNivel.caption(), names[level]);
        EXPECT_TRUE(f->lblNivel.visible());
    }
}

TEST(OperatorAids, ThePortsShowTheDevicesTheyStandFor) {
    ScenarioRig rig;
    NamedPorts ports(rig.pump);
    Firmcast form(rig.servicesWith(ports));
    Firmcast* f = &form;
    rig.script.when([f] { return f->Seleccion.reachable(); }, "look", [] { throw ScenarioDone{}; });
    try {
        form.Form_Load("0");
    } catch (const ScenarioDone&) {
    }
    EXPECT_EQ(f->lblPuertos.caption(),
              "COM 1: /dev/ttyUSB0\nCOM 2: /dev/ttyUSB1\nCOM 4: /dev/ttyUSB3");
    EXPECT_EQ(f->Option1.caption(), "COM 1") << "the ports keep their own names";
}

// Walks to the file step of Serie_N over COM1 and selects `name` in C:\.
std::string checkShownFor(ScenarioRig& rig, const std::string& name) {
    EchoDevice device;
    rig.serial.attach(1, device);
    scriptModelAndPort(rig, 1, 1);
    Firmcast* f = &rig.form();
    rig.script.when([f] { return f->File1.reachable() && f->File1.listCount() > 0; }, "the file",
                    [&rig, name] { rig.selectText("File1", name); });
    rig.script.after(10, "look", [] { throw ScenarioDone{}; });
    EXPECT_EQ(rig.run("0"), -1);
    EXPECT_EQ(f->paso_asistente, 2) << "selecting a file only selects it";
    return f->lblComprobacion.caption();
}

TEST(OperatorAids, TheFileStepShowsWhatTheSelectedFileHolds) {
    ScenarioRig rig;
    rig.driveC.write("fw.hex",
                     hexFile({intelRecord(0x0100, 0, patternBytes(1, 16)),
                              intelRecord(0x0110, 0, patternBytes(2, 8)), ":00000001FF"}));
    EXPECT_EQ(checkShownFor(rig, "fw.hex"),
              "File check: 2 records, 24 bytes at 0x000100-0x000117, every checksum good");
}

TEST(OperatorAids, TheFileStepNamesTheFirstBadLineAndTheLoadIsStillTheOperators) {
    ScenarioRig rig;
    std::string bad = intelRecord(0x0110, 0, patternBytes(2, 16));
    bad.back() = bad.back() == '0' ? '1' : '0';
    rig.driveC.write("fw.hex",
                     hexFile({intelRecord(0x0100, 0, patternBytes(1, 16)), bad, ":00000001FF"}));
    EXPECT_THAT(checkShownFor(rig, "fw.hex"), HasSubstr("line 2 is not a sound record"));
    EXPECT_TRUE(rig.form().cmdAdelante.enabled());
}

}  // namespace
}  // namespace fc::test
