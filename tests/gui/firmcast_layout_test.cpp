// The main screen's hand-made window: the pictures it finds, where the
// buttons stand, the keyboard of a Windows wizard, and the guide that follows
// the step on screen. On Qt's offscreen platform, with the screen model not
// running its driver: each test puts the controls as a step has them.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTest>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "control/catalogue.h"
#include "control/firmcast_form.h"
#include "gui/firmcast_layout.h"
#include "gui_application.h"
#include "operator/recording_dialogs.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/qt/picture_label.h"
#include "platform/qt/qt_pump.h"
#include "platform/qt/screen_layout.h"
#include "platform/qt/screen_window.h"
#include "virtual/virtual_serial.h"

namespace fc::test {
namespace {

namespace fs = std::filesystem;

struct FirmcastLayoutRegistered {
    FirmcastLayoutRegistered() { registerFirmcastLayout(); }
    ~FirmcastLayoutRegistered() { unregisterScreenLayout("Firmcast"); }
};

class FirmcastWindowTest : public ::testing::Test, protected WithGuiApplication {
  protected:
    FirmcastWindowTest() {
        fs::create_directories(driveC_ / "fw");
        std::ofstream(driveC_ / "fw" / "a.hex") << ":00000001FF\r\n";
        form.load();
        showModelStep();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    ~FirmcastWindowTest() override { fs::remove_all(driveC_); }

    // The controls as the model step shows them, with the scales' frame.
    void showModelStep() {
        for (Control* c : std::initializer_list<Control*>{
                 &form.frPuerto, &form.frDirectorio, &form.frComParameters,
                 &form.frInfoComunicacion, &form.frEtiquetadoras, &form.frVisores})
            c->setVisible(false);
        form.optBalanzas.setValue(true);
        form.cmdAtras.setEnabled(false);
    }
    void showWayStep() {
        form.Seleccion.setVisible(false);
        form.frPuerto.setVisible(true);
        form.cmdAtras.setEnabled(true);
    }

    template <class W>
    W* widget(const std::string& name) {
        auto* w = qobject_cast<W*>(window.widgetFor(name));
        EXPECT_NE(w, nullptr) << name;
        return w;
    }
    QString text(const char* label) { return window.findChild<QLabel*>(label)->text(); }

    FirmcastLayoutRegistered registered_;
    fs::path driveC_ =
        fs::temp_directory_path() / ("firmcast-layout-" + std::to_string(::getpid()));
    LinuxMachine machine{Drives({{'c', driveC_.string()}})};
    QtPump pump;
    RecordingDialogs dialogs{pump};
    VirtualSerialOpener serial{pump};
    FileTable files;
    Firmcast form{machine.services(pump, dialogs, serial, files, "/nowhere")};
    ScreenWindow window{form, pump};
};

TEST_F(FirmcastWindowTest, EveryModelPictureAndAnimationFrameIsFound) {
    for (int code = 0; code < kCatalogueSize; ++code) {
        auto* picture = widget<PictureLabel>(catalogueEntry(code).picture);
        EXPECT_TRUE(picture->hasImage()) << catalogueEntry(code).image;
    }
    for (int n = 1; n <= 12; ++n) {
        EXPECT_TRUE(widget<PictureLabel>("Dibujo" + std::to_string(n))->hasImage()) << n;
    }
}

TEST_F(FirmcastWindowTest, ModelPicturesAreBigCardsAndBackNextExitStandAtTheBottomRight) {
    for (const char* name : {"Picture4", "Picture3", "Picture2", "Picture6"}) {
        QWidget* picture = widget<QWidget>(name);
        EXPECT_TRUE(picture->isVisible()) << name;
        EXPECT_GE(picture->width(), 200) << name;
        EXPECT_GE(picture->height(), 150) << name;
    }
    auto at = [&](const char* name) {
        QWidget* w = widget<QWidget>(name);
        return w->mapTo(&window, QPoint(0, 0));
    };
    EXPECT_LT(at("cmdAtras").x(), at("cmdAdelante").x());
    EXPECT_LT(at("cmdAdelante").x(), at("FIN").x());
    EXPECT_EQ(at("cmdAtras").y(), at("FIN").y());
    EXPECT_GT(at("cmdAdelante").y(), window.height() * 3 / 4);
    EXPECT_GT(at("FIN").x() + widget<QWidget>("FIN")->width(), window.width() * 9 / 10);
    EXPECT_GT(at("Picture4").y(), at("optBalanzas").y() - 1);
}

TEST_F(FirmcastWindowTest, EnterOnAFocusedPictureChoosesTheModel) {
    QWidget* picture = widget<QWidget>("Picture3");
    picture->setFocus(Qt::TabFocusReason);
    QTest::keyClick(picture, Qt::Key_Return);
    EXPECT_EQ(form.modelo_elegido, 1);
    EXPECT_EQ(form.es_serie_n, kTrue);
    EXPECT_EQ(form.paso_asistente, 1);
}

TEST_F(FirmcastWindowTest, SpaceOnAFocusedPictureChoosesTheModel) {
    QWidget* picture = widget<QWidget>("Picture2");
    picture->setFocus(Qt::TabFocusReason);
    QTest::keyClick(picture, Qt::Key_Space);
    EXPECT_EQ(form.modelo_elegido, 2);
}

TEST_F(FirmcastWindowTest, ClickingTheNameOfACardChoosesTheModel) {
    auto* name = widget<QWidget>("Picture6")->parentWidget()->findChild<QLabel*>("modelName");
    ASSERT_NE(name, nullptr);
    int started = 0;
    form.hooks().startProgram = [&started](const std::string&) {
        return static_cast<long>(++started);
    };
    QTest::mouseClick(name, Qt::LeftButton);
    EXPECT_EQ(started, 1);
    EXPECT_EQ(form.modelo_elegido, 3);
}

TEST_F(FirmcastWindowTest, AMouseClickOnAPictureChoosesTheModelOnce) {
    int started = 0;
    form.hooks().startProgram = [&started](const std::string&) {
        return static_cast<long>(++started);
    };
    QTest::mouseClick(widget<QWidget>("Picture6"), Qt::LeftButton);
    EXPECT_EQ(started, 1);
}

TEST_F(FirmcastWindowTest, EnterOnAnOptionButtonPressesNext) {
    auto* labellers = widget<QRadioButton>("optEtiquetadoras");
    labellers->setFocus(Qt::TabFocusReason);
    QTest::keyClick(labellers, Qt::Key_Return);
    EXPECT_EQ(dialogs.texts(), std::vector<std::string>{"You must select a model of scale"});
}

TEST_F(FirmcastWindowTest, EnterOnAFocusedButtonPressesThatButton) {
    showWayStep();
    form.paso_asistente = 1;
    auto* back = widget<QPushButton>("cmdAtras");
    back->setFocus(Qt::TabFocusReason);
    QTest::keyClick(back, Qt::Key_Return);
    EXPECT_EQ(form.paso_asistente, 0);
    EXPECT_TRUE(dialogs.texts().empty());
}

TEST_F(FirmcastWindowTest, EnterOnTheFolderListOpensTheFolder) {
    form.Seleccion.setVisible(false);
    form.frDirectorio.setVisible(true);
    form.Drive1.setDrive("c:");  // lists C:\ as the file step does
    auto* folders = widget<QListWidget>("Dir1");
    ASSERT_EQ(folders->count(), 2);
    folders->setFocus(Qt::TabFocusReason);
    folders->setCurrentRow(1);
    QTest::keyClick(folders, Qt::Key_Return);
    EXPECT_EQ(form.Dir1.path(), "C:\\fw");
    EXPECT_EQ(widget<QListWidget>("File1")->count(), 1);
}

// Each step's frames as the driver shows them, for a small screen's test.
void showStep(Firmcast& f, int step) {
    for (Control* c : std::initializer_list<Control*>{&f.Seleccion, &f.frPuerto, &f.frDirectorio,
                                                      &f.frComParameters, &f.frBalanzasEth,
                                                      &f.frInfoComunicacion})
        c->setVisible(false);
    switch (step) {
        case 0:
            f.Seleccion.setVisible(true);
            break;
        case 1:
            f.frPuerto.setVisible(true);
            break;
        case 2:
            f.frDirectorio.setVisible(true);
            f.frComParameters.setVisible(true);
            break;
        case 3:
            f.frDirectorio.setVisible(true);
            f.frBalanzasEth.setVisible(true);
            break;
        default:
            f.frInfoComunicacion.setVisible(true);
            f.cmdAgain.setVisible(true);
            f.optProduccion.setVisible(true);
            break;
    }
}

TEST_F(FirmcastWindowTest, OnA1024By600ScreenEveryButtonOfEveryStepCanBeReached) {
    window.resize(1024 - 40, 600 - 40);  // the panel less the window's frame
    ASSERT_LE(window.height(), 560) << "the window keeps to the screen's room";
    const QRect inside = window.rect();
    auto* scroll = window.findChild<QScrollArea*>("stepScroll");
    ASSERT_NE(scroll, nullptr);
    for (int step = 0; step <= 4; ++step) {
        showStep(form, step);
        QApplication::processEvents();
        // The row of buttons is always in view.
        for (const char* name : {"cmdAtras", "cmdAdelante", "FIN", "cmdAgain", "optProduccion"}) {
            QWidget* w = widget<QWidget>(name);
            if (!w->isVisible())
                continue;
            QRect at(w->mapTo(&window, QPoint(0, 0)), w->size());
            EXPECT_TRUE(inside.contains(at)) << name << " on step " << step;
        }
        // Every other button of the step comes into view when the page
        // scrolls to it, as it does when the keyboard reaches it.
        for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
            if (!button->isVisible() || !scroll->widget()->isAncestorOf(button))
                continue;
            scroll->ensureWidgetVisible(button, 0, 0);
            QRect at(button->mapTo(scroll->viewport(), QPoint(0, 0)), button->size());
            EXPECT_TRUE(scroll->viewport()->rect().contains(at))
                << button->objectName().toStdString() << " on step " << step;
        }
    }
}

TEST_F(FirmcastWindowTest, AfterAPassTheFocusIsOnTheModelThatIsHighlighted) {
    showStep(form, 4);
    QApplication::processEvents();
    // A new cycle, as "Again" starts it: the last model highlighted, the
    // model step shown, then the load's frame hidden.
    form.EligeModelo("1");
    form.Seleccion.setVisible(true);
    form.frInfoComunicacion.setVisible(false);
    form.cmdAgain.setVisible(false);
    QApplication::processEvents();
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "Picture3");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(form.es_serie_n, kTrue);
    EXPECT_EQ(form.es_serie_w, kFalse);
}

TEST_F(FirmcastWindowTest, TheSideBarShowsTheOperatingLevel) {
    form.nivel = 1;
    form.lblNivel.setCaption("Level 1: production");
    EXPECT_TRUE(widget<QLabel>("lblNivel")->isVisible());
    EXPECT_EQ(text("lblNivel"), "Level 1: production");
    QWidget* column = window.findChild<QWidget*>("stepColumn");
    ASSERT_NE(column, nullptr);
    EXPECT_TRUE(column->isAncestorOf(widget<QWidget>("lblNivel")));
}

TEST_F(FirmcastWindowTest, TabGoesThroughTheModelStepInReadingOrder) {
    widget<QWidget>("optBalanzas")->setFocus(Qt::TabFocusReason);
    std::vector<std::string> order;
    for (int n = 0; n < 10; ++n) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
    }
    EXPECT_EQ(order, (std::vector<std::string>{"optEtiquetadoras", "optVisores", "Picture4",
                                               "Picture3", "Picture2", "Picture6", "cmdCargaRomG",
                                               "cmdAdelante", "FIN", "optBalanzas"}));
}

TEST_F(FirmcastWindowTest, TheGuideNamesTheStepOnScreen) {
    EXPECT_EQ(text("stepTitle"), "Choose the device");
    EXPECT_EQ(window.findChild<QLabel*>("stepName0")->property("state").toString(), "current");
    showWayStep();
    EXPECT_EQ(text("stepTitle"), "Choose the connection");
    EXPECT_EQ(window.findChild<QLabel*>("stepName0")->property("state").toString(), "done");
    EXPECT_EQ(window.findChild<QLabel*>("stepName1")->property("state").toString(), "current");
    form.frPuerto.setVisible(false);
    form.frInfoComunicacion.setVisible(true);
    EXPECT_EQ(text("stepTitle"), "Loading the firmware");
    form.cmdAgain.setVisible(true);
    EXPECT_EQ(text("stepTitle"), "The load has ended");
}

}  // namespace
}  // namespace fc::test
