// The scale record form in its Qt window: a barcode read typed into the
// serial field and ended with Enter closes the form and writes the register
// row; the window's own close does nothing.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "common/common_module.h"
#include "ethernet/network_module.h"
#include "gui/datos_balanza_layout.h"
#include "gui_application.h"
#include "mac/frm_datos_balanza.h"
#include "mac/mac_module.h"
#include "mac/mac_tables.h"
#include "platform/linux/unix_odbc.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_pump.h"
#include "platform/runtime_error.h"
#include "platform/window_timer.h"
#include "unit/common_fixture.h"
#include "virtual/virtual_calendar.h"
#include "virtual/virtual_kernel_objects.h"
#include "virtual/virtual_network.h"

namespace fc::test {
namespace {

// Message boxes answered at once and kept; screens in real windows.
class AnsweringDialogs : public QtDialogs {
  public:
    using QtDialogs::QtDialogs;
    int msgBox(const std::string& text, int, const std::string&) override {
        texts.push_back(text);
        return mb::kOk;
    }
    std::vector<std::string> texts;
};

QWidget* windowOf(const std::string& title) {
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (w->isVisible() && w->windowTitle() == QString::fromStdString(title))
            return w;
    }
    return nullptr;
}

class RecordFormWindow : public ::testing::Test, protected WithGuiApplication {
  protected:
    void SetUp() override {
        source = "DRIVER={SQLite3};Database=" + (home / "mac.db").string() + ";";
        std::unique_ptr<OdbcConnection> bd;
        try {
            bd = odbc.openConnection(source);
        } catch (const RuntimeError& e) {
            GTEST_SKIP() << "the SQLite ODBC driver is not available here: " << e.description();
        }
        CreaTablasMac(*bd);
        m = std::make_unique<MacModule>(MacModule{c, odbc, source, nullptr, nullptr});
        bd->execute("INSERT INTO " + bd->quote(kTablaDetalleMac) + " (" +
                        bd->quote("Direccio_MAC") + ", " + bd->quote("Numero_serie") +
                        ") VALUES (?, ?)",
                    {std::string("02-C0-DE-00-00-09"), std::string(" ")});
        registerDatosBalanzaLayout();
    }
    std::string serialInRegister() {
        auto bd = odbc.openConnection(source);
        auto rows = bd->query("SELECT " + bd->quote("Numero_serie") + " FROM " +
                              bd->quote(kTablaDetalleMac));
        return rows.empty() ? "" : rows[0][0].value_or("");
    }

    QtPump pump;
    AnsweringDialogs dialogs{pump};
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
    WindowTimer TimerClose{pump, "TimerClose"};
    NetworkModule red{c, network, TimerClose};
    UnixOdbcEnvironment odbc;
    std::string source;
    std::unique_ptr<MacModule> m;
    std::string mac_actual = "02C0DE000009";
    Flag pide_mac = kTrue;
    Integer nivel = 1, tipo_conexion = 1, balanza_actual = 0;
    std::vector<std::string> lista_balanzas{"10.77.0.11"};
};

TEST_F(RecordFormWindow, ASerialTypedWithEnterClosesTheFormAndIsWritten) {
    frmDatosBalanza form(DatosBalanzaPanel{*m, red, mac_actual, pide_mac, nivel, tipo_conexion,
                                           lista_balanzas, balanza_actual});
    bool typed = false;
    bool closeIgnored = false;
    QTimer::singleShot(100, [&] {
        QWidget* window = windowOf("Scale Data");
        ASSERT_NE(window, nullptr);
        // The window's own close is refused: only Accept closes it.
        window->close();
        QApplication::processEvents();
        closeIgnored = form.loaded();
        auto* edit = window->findChild<QLineEdit*>("txtSerialNumber");
        ASSERT_NE(edit, nullptr);
        edit->selectAll();
        QTest::keyClicks(edit, "SN-GUI-7");
        QTest::keyClick(edit, Qt::Key_Return);
        typed = true;
    });
    form.Mostrar();
    EXPECT_TRUE(typed);
    EXPECT_TRUE(closeIgnored);
    EXPECT_FALSE(form.loaded());
    EXPECT_EQ(serialInRegister(), "SN-GUI-7");
    EXPECT_EQ(dialogs.texts.size(), 2u);
}

}  // namespace
}  // namespace fc::test
