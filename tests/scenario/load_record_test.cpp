// The record of every device loaded, kept by the recorder as the main
// screen loads scales over Ethernet on the virtual clock: a line for each
// scale and pass, whatever the end of its turn, with what the load came to
// know of it and nothing it did not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <map>

#include "control/catalogue.h"
#include "record/load_record.h"
#include "record/load_recorder.h"
#include "sim/numbered_scale.h"
#include "support/ethernet_rig.h"
#include "support/firmware_files.h"
#include "support/network_rig.h"

namespace fc {
namespace {

using test::EthernetRig;
using ::testing::HasSubstr;

// A station that keeps the lines it is given, at a clock of its own.
class KeptLines : public RecordStation {
  public:
    std::string stationName() const override { return "line-3"; }
    std::string utcNow() const override {
        return "2026-11-24T08:00:0" + std::to_string(ticks_++) + ".000Z";
    }
    std::optional<FileFacts> fileFacts(const std::string& path) const override {
        factsAskedFor.push_back(path);
        return FileFacts{1234, std::string(64, 'a')};
    }
    bool appendLine(const std::string& path, const std::string& line, std::string& why) override {
        if (refuse) {
            why = "No space left on device";
            return false;
        }
        lines[path].push_back(line);
        return true;
    }
    std::map<std::string, std::vector<std::string>> lines;
    mutable std::vector<std::string> factsAskedFor;
    bool refuse = false;

  private:
    mutable int ticks_ = 0;
};

// "02-46-43-00-00-11": a MAC as the register writes it.
std::string registerText(const std::array<std::uint8_t, 6>& mac) {
    std::string text;
    for (std::uint8_t b : mac) {
        char two[4];
        std::snprintf(two, sizeof two, "%02X", b);
        text += (text.empty() ? "" : "-") + std::string(two);
    }
    return text;
}

struct RecordedRig {
    RecordedRig() {
        Firmcast& f = rig.form();
        // The record form takes a serial number, as the real one does.
        auto shown = rig.form().hooks().frmDatosBalanza;
        f.hooks().frmDatosBalanza = [this, shown](Firmcast& form) {
            shown(form);
            form.numero_serie = serials.empty() ? "" : serials.front();
            if (!serials.empty())
                serials.erase(serials.begin());
        };
    }
    const std::vector<std::string>& lines() { return station.lines["/records/loads.jsonl"]; }

    EthernetRig rig;
    KeptLines station;
    LoadRecorder recorder{rig.form(), station, "/records/loads.jsonl"};
    std::vector<std::string> serials;
};

TEST(LoadRecord, AScaleGivenANewMacIsRecordedWithItsOldAndNewMacItsSerialAndBothChecksums) {
    RecordedRig r;
    r.rig.addScale(1);
    r.rig.writeList();
    r.rig.macs = {"02C0DE0000A1"};
    r.serials = {"SN-0001"};
    r.rig.load(EthernetRig::twoBankFile(), "2");
    ASSERT_EQ(r.lines().size(), 1u);
    LoadRecord expected;
    Firmcast& f = r.rig.form();
    expected.start = "2026-11-24T08:00:00.000Z";
    expected.end = "2026-11-24T08:00:01.000Z";
    expected.station = "line-3";
    expected.level = "2";
    expected.model = 0;
    expected.modelName = "Serie_W scale";
    expected.way = "ethernet";
    expected.port = nettest::scaleIpText(1);
    expected.scale = 1;
    expected.pass = 1;
    expected.firmware = "fw.hex";
    expected.firmwareSize = 1234;
    expected.firmwareSha256 = std::string(64, 'a');
    expected.imageChecksum = f.checksum_memoria;
    expected.scaleChecksum = f.checksum_memoria;
    expected.macOld = registerText(nettest::scaleMac(1));
    expected.macNew = "02-C0-DE-00-00-A1";
    expected.serial = "SN-0001";
    expected.ok = true;
    expected.info = "Scale 1 loaded OK";
    // The turn runs from before the connection (500 ms and its 500 ms settle)
    // to the record form's end, on the virtual clock.
    const long long loading = r.rig.lastInfoAt("Scale 1 loaded OK") - r.rig.firstInfoAt("1");
    const std::string& line = r.lines()[0];
    const std::size_t at = line.rfind("\"duration_ms\":");
    ASSERT_NE(at, std::string::npos);
    expected.durationMs = std::stoll(line.substr(at + 14));
    EXPECT_GE(expected.durationMs, loading + 500);
    EXPECT_LE(expected.durationMs, loading + 1000);
    EXPECT_EQ(line, recordJson(expected));
}

TEST(LoadRecord, TheFirmwareFileIsReadFromWhereItsDriveLetterStands) {
    RecordedRig r;
    r.rig.addScale(1);
    r.rig.writeList();
    r.rig.load(EthernetRig::twoBankFile(), "3");
    ASSERT_EQ(r.station.factsAskedFor.size(), 1u);
    EXPECT_EQ(r.station.factsAskedFor[0], (r.rig.driveC.path() / "fw.hex").string());
}

TEST(LoadRecord, AScaleSwitchedOffIsRecordedFailedWithNoChecksumNoMacAndNoSerial) {
    RecordedRig r;
    r.rig.addScale(2);
    r.rig.writeList({nettest::scaleIpText(1), nettest::scaleIpText(2)});
    r.rig.macs = {"02C0DE0000A1"};
    r.serials = {"SN-0002"};
    r.rig.load(EthernetRig::twoBankFile(), "2");
    ASSERT_EQ(r.lines().size(), 2u);
    const std::string& off = r.lines()[0];
    EXPECT_THAT(off, HasSubstr("\"port\":\"" + nettest::scaleIpText(1) + "\",\"scale\":1,"));
    EXPECT_THAT(off, HasSubstr("\"scale_checksum\":null,\"mac_old\":null,\"mac_new\":null,"
                               "\"serial\":null,\"result\":\"failed\",\"info\":\"1\""));
    const std::string& good = r.lines()[1];
    EXPECT_THAT(good, HasSubstr("\"scale\":2,"));
    EXPECT_THAT(good, HasSubstr("\"mac_new\":\"02-C0-DE-00-00-A1\",\"serial\":\"SN-0002\","
                                "\"result\":\"ok\",\"info\":\"Scale 2 loaded OK\""));
}

TEST(LoadRecord, AWrongChecksumRecordsWhatTheScaleAnsweredAndTheMacItWasGiven) {
    RecordedRig r;
    r.rig.addScale(1);
    r.rig.scale(1).faults.wrongChecksum = true;
    r.rig.writeList();
    r.rig.macs = {"02C0DE0000A1"};
    r.serials = {"SN-WRONG"};
    r.rig.load(EthernetRig::twoBankFile(), "2");
    ASSERT_EQ(r.lines().size(), 1u);
    const long image = r.rig.form().checksum_memoria;
    EXPECT_THAT(r.lines()[0], HasSubstr("\"image_checksum\":" + std::to_string(image) +
                                        ",\"scale_checksum\":" + std::to_string(image + 1) + ","));
    EXPECT_THAT(r.lines()[0],
                HasSubstr("\"mac_new\":\"02-C0-DE-00-00-A1\",\"serial\":\"SN-WRONG\","
                          "\"result\":\"failed\",\"info\":\"Scale 1 Checksum Error\""));
}

TEST(LoadRecord, EachPassOfProductionWayAddsALineWithItsPassNumber) {
    RecordedRig r;
    r.rig.addScale(1);
    r.rig.writeList();
    Firmcast* f = &r.rig.form();
    r.rig.driveC.write("fw.hex", EthernetRig::twoBankFile());
    r.rig.scriptEthernetLoad(0, false);
    int passes = 0;
    r.rig.script.when([f, &passes] { return f->esperando_otra != kFalse && passes == 0; }, "again",
                      [&] {
                          ++passes;
                          r.rig.click("optProduccion");
                          r.rig.click("cmdAgain");
                      });
    r.rig.script.when([f] { return f->paso_asistente == 3 && f->cmdAdelante.reachable(); }, "Next",
                      [&] { r.rig.click("cmdAdelante"); });
    r.rig.stopWhen([f, &passes] { return f->esperando_otra != kFalse && passes == 1; },
                   "the second pass ended");
    r.rig.run("3");
    ASSERT_EQ(r.lines().size(), 2u);
    EXPECT_THAT(r.lines()[0], HasSubstr("\"pass\":1,"));
    EXPECT_THAT(r.lines()[1], HasSubstr("\"pass\":2,"));
}

TEST(LoadRecord, ALineThatCannotBeWrittenIsToldAndTheLoadGoesOn) {
    RecordedRig r;
    r.station.refuse = true;
    std::vector<std::string> told;
    r.recorder.onWriteFailure = [&told](const std::string& why) { told.push_back(why); };
    r.rig.addScale(1);
    r.rig.writeList();
    r.rig.load(EthernetRig::twoBankFile(), "3");
    EXPECT_EQ(told, std::vector<std::string>{"No space left on device"});
    EXPECT_EQ(r.rig.form().lblInformacion.caption(), "Scale 1 loaded OK");
}

// A load over RS-232 into a simulated numbered scale on COM1, with its record.
struct SerialRecordedRig : test::ScenarioRig {
    explicit SerialRecordedRig(NumberedScale::Config config = {}) : scale(config) {
        serial.attach(1, scale);
    }
    void load(int code, const std::string& file, const std::string& level) {
        recorder = std::make_unique<LoadRecorder>(form(), station, "/records/loads.jsonl");
        dialogs.onShown = [this](const ShownBox& box) { recorder->boxShown(box.text); };
        driveC.write("fw.hex", file);
        scriptSerialLoad(code, 1, "fw.hex");
        stopWhen([this] { return form().esperando_otra != kFalse; }, "the pass ended");
        run(level);
    }
    const std::vector<std::string>& lines() { return station.lines["/records/loads.jsonl"]; }

    NumberedScale scale;
    KeptLines station;
    std::unique_ptr<LoadRecorder> recorder;
};

constexpr int kSerieW = 0, kSerieN = 1;

TEST(LoadRecord, ALoadOverRs232IsRecordedWithItsPortItsResultAndItsLastBox) {
    SerialRecordedRig rig;
    rig.load(kSerieN, test::intelHexFile(20), "0");
    ASSERT_EQ(rig.lines().size(), 1u);
    const std::string& line = rig.lines()[0];
    EXPECT_THAT(line, HasSubstr("\"level\":\"0\",\"model\":1,\"model_name\":\"" +
                                std::string(catalogueEntry(kSerieN).device) +
                                "\",\"way\":\"rs232\",\"port\":\"COM1\",\"scale\":0,\"pass\":1,"
                                "\"firmware\":\"fw.hex\",\"firmware_size\":1234,"));
    EXPECT_THAT(line, HasSubstr("\"image_checksum\":null,\"scale_checksum\":null,\"mac_old\":"
                                "null,\"mac_new\":null,\"serial\":null,\"result\":\"ok\","
                                "\"info\":\"The scale is ready\""));
}

TEST(LoadRecord, AFailedLoadOverRs232IsRecordedWithTheBoxThatSaidWhy) {
    SerialRecordedRig rig;
    rig.scale.faults.silentAt[0] = true;
    rig.load(kSerieN, test::intelHexFile(3), "0");
    ASSERT_EQ(rig.lines().size(), 1u);
    EXPECT_THAT(rig.lines()[0],
                HasSubstr("\"result\":\"failed\",\"info\":\"No answer from scale, check the "
                          "cable or scale\",\"duration_ms\":"));
}

TEST(LoadRecord, ASerieWGivenAMacOverRs232IsRecordedWithItAndItsSerial) {
    NumberedScale::Config config;
    config.wantsMac = true;
    SerialRecordedRig rig(config);
    rig.hooks.DameMACAddress = [](Firmcast&) { return std::string("02C0DE000005"); };
    rig.hooks.frmDatosBalanza = [](Firmcast& f) { f.numero_serie = "SN-RS232"; };
    rig.load(kSerieW, test::intelHexFile(3), "1");
    ASSERT_EQ(rig.lines().size(), 1u);
    EXPECT_THAT(rig.lines()[0], HasSubstr("\"mac_old\":null,\"mac_new\":\"02-C0-DE-00-00-05\","
                                          "\"serial\":\"SN-RS232\",\"result\":\"ok\""));
}

}  // namespace
}  // namespace fc
