// Where the file step starts: C:\ at levels 0 and 3; the model's folder on
// T: at level 1 and on S: at level 2, found whatever the case of its names;
// C:\ again, without a word, when that drive or folder is missing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "sim/echo_device.h"
#include "support/scenario_rig.h"
#include "support/wizard_steps.h"

namespace fc::test {
namespace {

using ::testing::ElementsAre;

// A drive letter backed by a temporary folder for as long as it lives; a
// rig sees it once it is put on the rig.
class Drive {
  public:
    explicit Drive(char letter) : letter_(letter) {}
    const TempFolder& folder() const { return folder_; }
    void putOn(ScenarioRig& rig) const { rig.addDrive(letter_, folder_.path()); }

  private:
    char letter_;
    TempFolder folder_;
};

struct FileStep {
    std::string drive;
    std::string folder;
    std::vector<std::string> files;
};

// Walks to the file step of `code` over COM1 at `level` and reports what it shows.
// The device must outlive the rig.
FileStep openFileStep(ScenarioRig& rig, EchoDevice& device, int code, const std::string& level) {
    rig.serial.attach(1, device);
    scriptModelAndPort(rig, code, 1);
    Firmcast* f = &rig.form();
    rig.stopWhen([f] { return f->File1.reachable(); }, "file step");
    EXPECT_EQ(rig.run(level), -1);
    FileStep shown{f->Drive1.drive(), f->Dir1.path(), {}};
    for (int i = 0; i < f->File1.listCount(); ++i) shown.files.push_back(f->File1.list(i));
    return shown;
}

TEST(StartFolder, AtLevel3AndLevel0EveryModelStartsOnC) {
    Drive t('T'), s('S');
    for (const char* level : {"0", "3"}) {
        for (int code : {0, 1, 2, 4, 5, 6, 8}) {
            EchoDevice device;
            ScenarioRig rig;
            t.putOn(rig);
            s.putOn(rig);
            rig.driveC.write("at-the-root.hex", "");
            t.folder().write("Programas/Balanzas/Serie_N/n.hex", "");
            FileStep shown = openFileStep(rig, device, code, level);
            EXPECT_EQ(shown.drive, "c:") << "level " << level << " code " << code;
            EXPECT_EQ(shown.folder, "C:\\") << "level " << level << " code " << code;
            EXPECT_THAT(shown.files, ElementsAre("at-the-root.hex"));
            EXPECT_TRUE(rig.boxes().empty());
        }
    }
}

TEST(StartFolder, Level1IsTheModelsFolderOnTFoundWhateverTheCase) {
    Drive t('T');
    t.folder().write("PROGRAMAS/balanzas/serie_n/n-1.hex", "");
    t.folder().write("PROGRAMAS/balanzas/serie_n/n-2.hex", "");
    EchoDevice device;
    ScenarioRig rig;
    t.putOn(rig);
    FileStep shown = openFileStep(rig, device, 1, "1");
    EXPECT_EQ(shown.drive, "t:");
    EXPECT_EQ(shown.folder, "T:\\Programas\\Balanzas\\Serie_N");
    EXPECT_THAT(shown.files, ElementsAre("n-1.hex", "n-2.hex"));
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(StartFolder, Level2IsTheModelsFolderOnS) {
    Drive s('S');
    s.folder().write("Programas/Pesaje_y_Etiquetaje/TR6100/firmcast/tr.s19", "");
    s.folder().write("Programas/Balanzas/Serie_H/Firmcast/h.s19", "");
    {
        EchoDevice device;
        ScenarioRig rig;
        s.putOn(rig);
        FileStep shown = openFileStep(rig, device, 5, "2");
        EXPECT_EQ(shown.drive, "s:");
        EXPECT_EQ(shown.folder, "S:\\Programas\\Pesaje_y_Etiquetaje\\TR6100\\firmcast");
        EXPECT_THAT(shown.files, ElementsAre("tr.s19"));
    }
    {
        EchoDevice device;
        ScenarioRig rig;
        s.putOn(rig);
        FileStep shown = openFileStep(rig, device, 2, "2");
        EXPECT_EQ(shown.folder, "S:\\Programas\\Balanzas\\Serie_H\\Firmcast");
        EXPECT_THAT(shown.files, ElementsAre("h.s19"));
    }
}

TEST(StartFolder, AStartFolderOnADriveThatDoesNotExistFallsBackToCWithoutAMessage) {
    for (const char* level : {"1", "2"}) {
        EchoDevice device;
        ScenarioRig rig;
        rig.driveC.write("here.hex", "");
        FileStep shown = openFileStep(rig, device, 0, level);
        EXPECT_EQ(shown.drive, "c:") << "level " << level;
        EXPECT_EQ(shown.folder, "C:\\") << "level " << level;
        EXPECT_THAT(shown.files, ElementsAre("here.hex"));
        EXPECT_TRUE(rig.boxes().empty());
    }
}

TEST(StartFolder, AStartFolderThatDoesNotExistOnItsDriveFallsBackToCWithoutAMessage) {
    Drive t('T');
    t.folder().write("Programas/Balanzas/Serie_W/w.hex", "");
    EchoDevice device;
    ScenarioRig rig;
    t.putOn(rig);
    FileStep shown = openFileStep(rig, device, 4, "1");  // no Matrix4000 folder on T:
    EXPECT_EQ(shown.drive, "c:");
    EXPECT_EQ(shown.folder, "C:\\");
    EXPECT_TRUE(rig.boxes().empty());
}

TEST(StartFolder, TheDriveListShowsTheDrivesThatExist) {
    {
        EchoDevice device;
        ScenarioRig rig;
        openFileStep(rig, device, 1, "0");
        Firmcast& f = rig.form();
        ASSERT_EQ(f.Drive1.listCount(), 1);
        EXPECT_EQ(f.Drive1.list(0), "c:");
    }
    Drive t('T'), s('S');
    EchoDevice device;
    ScenarioRig rig;
    t.putOn(rig);
    s.putOn(rig);
    openFileStep(rig, device, 1, "0");
    Firmcast& f = rig.form();
    ASSERT_EQ(f.Drive1.listCount(), 3);
    EXPECT_EQ(f.Drive1.list(0), "c:");
    EXPECT_EQ(f.Drive1.list(1), "s:");
    EXPECT_EQ(f.Drive1.list(2), "t:");
}

}  // namespace
}  // namespace fc::test
