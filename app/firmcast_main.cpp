// firmcast: the loader with its window. "firmcast [level]": the level is the
// first character of the command line, 0 to 3; the rest is ignored.
#include <QApplication>
#include <memory>
#include <string>

#include "app/mac_station.h"
#include "app/port_notices.h"
#include "common/error_log.h"
#include "control/firmcast_form.h"
#include "gui/datos_balanza_layout.h"
#include "gui/display_layout.h"
#include "gui/firmcast_layout.h"
#include "gui/visor_layout.h"
#include "platform/file_table.h"
#include "platform/linux/linux_machine.h"
#include "platform/linux/linux_record_station.h"
#include "platform/linux/process_launcher.h"
#include "platform/linux/termios_port.h"
#include "platform/noted_dialogs.h"
#include "platform/program_folder.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_pump.h"
#include "platform/qt/screen_window.h"
#include "record/load_recorder.h"
#include "record/record_setting.h"

int main(int argc, char** argv) {
    // The level is the system's own command line: Qt must not take options from it.
    int qtArgc = 1;
    QApplication application(qtArgc, argv);
    QApplication::setApplicationName(fc::kAppTitle);

    fc::QtPump pump;
    fc::QtDialogs dialogs(pump);
    fc::TermiosPortOpener serialPorts;
    fc::FileTable files;
    fc::LinuxMachine machine;
    fc::LinuxProcessLauncher launcher(machine.drives);
    // The boxes are told on their way to whoever keeps the record of the loads.
    fc::NotedDialogs notedDialogs(dialogs);
    fc::Firmcast form(
        machine.services(pump, notedDialogs, serialPorts, files, fc::programFolder()));
    fc::MacStation macStation(form);
    fc::PortNotices portNotices(serialPorts, form);
    // The record of every scale loaded, when config.ini names a file for it.
    fc::LinuxRecordStation recordStation;
    std::unique_ptr<fc::LoadRecorder> recorder;
    if (std::string record = fc::configuredRecordFile(fc::programFolder()); !record.empty()) {
        recorder = std::make_unique<fc::LoadRecorder>(form, recordStation, record);
        recorder->onWriteFailure = [&form, record](const std::string& why) {
            fc::EscribirLog(form.common(), "LoadRecorder", record + ": " + why, 0);
        };
        fc::LoadRecorder* told = recorder.get();
        notedDialogs.onBox = [told](const std::string& text) { told->boxShown(text); };
    }
    form.hooks().startProgram = [&launcher](const std::string& commandLine) {
        return launcher.start(commandLine);
    };
    fc::registerFirmcastLayout();
    fc::registerDatosBalanzaLayout();
    fc::registerDisplayLayout();
    fc::registerVisorLayout();
    fc::ScreenWindow window(form, pump);
    try {
        form.Form_Load(fc::commandLineText(argc, argv));
    } catch (const fc::ProgramEnd& end) {
        return end.exitStatus;
    }
}
