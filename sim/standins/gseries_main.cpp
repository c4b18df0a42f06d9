// Gseries: a stand-in for the site's Serie_G tool, for tests and
// demonstrations. It records how it was started and ends: one line per start,
// its arguments joined by blanks, appended to the file named by the
// environment variable FIRMCAST_GSERIES_RECORD, else to "Gseries.log" beside
// itself. The real tool takes the operating level as its one argument.
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

std::string recordFile() {
    const char* named = std::getenv("FIRMCAST_GSERIES_RECORD");
    if (named != nullptr && *named != '\0')
        return named;
    std::error_code ec;
    std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ((ec ? std::filesystem::current_path() : self.parent_path()) / "Gseries.log").string();
}

}  // namespace

int main(int argc, char** argv) {
    std::string line;
    for (int i = 1; i < argc; ++i) {
        if (i > 1)
            line += ' ';
        line += argv[i];
    }
    line += '\n';
    // One write on an appending descriptor: copies started together do not
    // mix their lines.
    int fd = open(recordFile().c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd < 0)
        return 1;
    bool written = write(fd, line.data(), line.size()) == static_cast<ssize_t>(line.size());
    close(fd);
    return written ? 0 : 1;
}
