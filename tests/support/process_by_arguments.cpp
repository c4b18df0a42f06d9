#include "support/process_by_arguments.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace fc::test {

namespace {

bool holdsEvery(const std::string& cmdline, const std::vector<std::vector<std::string>>& runs) {
    for (const std::vector<std::string>& run : runs) {
        std::string words;
        for (const std::string& w : run) words += w + '\0';
        if (cmdline.find(words) == std::string::npos)
            return false;
    }
    return true;
}

}  // namespace

pid_t processWith(const std::string& program, const std::vector<std::vector<std::string>>& runs) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        std::ifstream in(entry.path() / "cmdline", std::ios::binary);
        const std::string cmdline((std::istreambuf_iterator<char>(in)),
                                  std::istreambuf_iterator<char>());
        if (cmdline.find(program) != std::string::npos && holdsEvery(cmdline, runs))
            return static_cast<pid_t>(std::stoi(name));
    }
    return 0;
}

}  // namespace fc::test
