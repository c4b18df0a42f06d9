// firmcast-korvacom: a communications driver for a graphic display, for
// Linux. It is installed as "korvacom/korvacom" in the program's folder,
// where the loader starts it, and speaks the driver's file interface there:
// its switches in "Korctrl.txt", commands in "ctrl.txt", records marked in
// "TX.TXT" as they go, the display's answers in "RX.TXT", the named event
// "Evento_Recursos_KorvaCOM" signalled when it takes a command. It carries
// the records over the line its switches name (firmcast-sim --device
// graphic-display is a display to carry them to) and ends on "G".
// Its folder is the one it lives in, or the one given as its argument.
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <iostream>
#include <thread>

#include "platform/linux/posix_kernel_objects.h"
#include "sim/korvacom_driver.h"
#include "sim/standins/korvacom_link.h"

namespace {

constexpr int kTickMs = 20;
constexpr int kAnswerMs = 5000;

std::filesystem::path ownFolder(int argc, char** argv) {
    if (argc > 1)
        return argv[1];
    std::error_code ec;
    std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::filesystem::current_path() : self.parent_path();
}

}  // namespace

int main(int argc, char** argv) {
    fc::sim::KorvacomDriver driver(ownFolder(argc, argv), {}, {});
    if (!driver.readSwitches())
        std::cerr << "korvacom: no switch file Korctrl.txt\n";
    fc::sim::KorvacomLink link;
    std::string reason;
    if (!link.open(driver.switches(), reason))
        std::cerr << "korvacom: " << reason << "\n";
    driver.setCarrier([&link](const std::string& record) { return link.carry(record, kAnswerMs); });
    fc::PosixKernelObjects kernel;
    fc::Handle event = kernel.createEvent(true, false, "Evento_Recursos_KorvaCOM");
    while (!driver.ended()) {
        if (driver.takeCommand() != 0 && event != 0)
            kernel.setEvent(event);
        if (!driver.sendNext())
            std::this_thread::sleep_for(std::chrono::milliseconds(kTickMs));
    }
    if (event != 0)
        kernel.closeHandle(event);
    return 0;
}
