// The visor screen's window on Qt's offscreen platform: where the parts
// stand, a long record that does not widen it, and a click on the window
// reaching the screen's handler.
#include <gtest/gtest.h>

#include <QRadioButton>
#include <QTest>
#include <string>

#include "gui/visor_layout.h"
#include "gui_application.h"
#include "operator/recording_dialogs.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/qt/qt_pump.h"
#include "platform/qt/screen_layout.h"
#include "platform/qt/screen_window.h"
#include "virtual/virtual_serial.h"
#include "visor/frm_carga_mv510.h"

namespace fc::test {
namespace {

struct VisorLayoutRegistered {
    VisorLayoutRegistered() { registerVisorLayout(); }
    ~VisorLayoutRegistered() { unregisterScreenLayout("frmCargaMV510"); }
};

class VisorWindowTest : public ::testing::Test, protected WithGuiApplication {
  protected:
    VisorWindowTest() {
        visor.Form_Load("0", 0);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    QPoint at(const char* name) {
        QWidget* w = window.widgetFor(name);
        EXPECT_NE(w, nullptr) << name;
        return w ? w->mapTo(&window, QPoint(0, 0)) : QPoint();
    }

    VisorLayoutRegistered registered_;
    LinuxMachine machine{Drives({{'c', "/tmp"}})};
    QtPump pump;
    RecordingDialogs dialogs{pump};
    VirtualSerialOpener serial{pump};
    FileTable files;
    frmCargaMV510 visor{machine.services(pump, dialogs, serial, files, "/nowhere"), nullptr};
    ScreenWindow window{visor, pump};
};

TEST_F(VisorWindowTest, TheWayStandsBesideTheFilesAndTheButtonsAtTheBottomRight) {
    EXPECT_LT(at("Frame2").x(), at("frDirectorio").x());
    EXPECT_LT(at("Frame2").y(), at("Frame1").y());
    EXPECT_GT(at("frInfoComunicacion").y(), at("frComParameters").y());
    EXPECT_LT(at("cmdAdelante").x(), at("cmdAtras").x());
    EXPECT_LT(at("cmdAtras").x(), at("FIN").x());
    EXPECT_EQ(at("cmdAdelante").y(), at("FIN").y());
    EXPECT_GT(at("FIN").y(), at("frInfoComunicacion").y());
}

TEST_F(VisorWindowTest, ARecordOf128BytesInTextoDoesNotWidenTheWindow) {
    const int width = window.width();
    visor.Texto.setVisible(true);
    visor.Texto.setCaption(":80" + std::string(262, 'A'));
    pump.doEvents();
    EXPECT_EQ(window.width(), width);
}

TEST_F(VisorWindowTest, ClickingEthernetInTheWindowShowsTheEthernetParameters) {
    auto* ethernet = qobject_cast<QRadioButton*>(window.widgetFor("optEthernet"));
    ASSERT_NE(ethernet, nullptr);
    ethernet->click();  // as a click on its circle or its text
    pump.doEvents();
    EXPECT_TRUE(visor.optEthernet.value());
    EXPECT_EQ(visor.tipo_conexion, 0);
    EXPECT_TRUE(window.widgetFor("frEthParameters")->isVisible());
    EXPECT_FALSE(window.widgetFor("frComParameters")->isVisible());
}

}  // namespace
}  // namespace fc::test
