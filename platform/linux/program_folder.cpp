#include "platform/program_folder.h"

#include <filesystem>

#include "platform/environment.h"

namespace fc {

std::string programFolder() {
    std::string home = environmentVariable("FIRMCAST_HOME");
    if (!home.empty())
        return home;
    std::error_code ec;
    std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::filesystem::current_path().string() : exe.parent_path().string();
}

std::string commandLineText(int argc, char** argv) {
    std::string text;
    for (int i = 1; i < argc; ++i) {
        if (i > 1)
            text += " ";
        text += argv[i];
    }
    return text;
}

}  // namespace fc
