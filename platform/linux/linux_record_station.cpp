#include "platform/linux/linux_record_station.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <memory>
#include <vector>

namespace fc {

namespace {

std::string hex(const unsigned char* bytes, unsigned length) {
    static const char* kDigits = "0123456789abcdef";
    std::string text;
    for (unsigned i = 0; i < length; ++i) {
        text += kDigits[bytes[i] >> 4];
        text += kDigits[bytes[i] & 0x0F];
    }
    return text;
}

// Writes all of `data` to `fd`; false with errno set when a write fails.
bool writeAll(int fd, const std::string& data) {
    std::size_t done = 0;
    while (done < data.size()) {
        ssize_t n = ::write(fd, data.data() + done, data.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += static_cast<std::size_t>(n);
    }
    return true;
}

}  // namespace

std::string LinuxRecordStation::stationName() const {
    char name[256] = {};
    if (::gethostname(name, sizeof name - 1) != 0)
        return "";
    return name;
}

std::string LinuxRecordStation::utcNow() const {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t seconds = system_clock::to_time_t(now);
    const auto millis = duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm utc{};
    ::gmtime_r(&seconds, &utc);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", utc.tm_year + 1900,
                  utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec,
                  static_cast<int>(millis));
    return text;
}

std::optional<FileFacts> LinuxRecordStation::fileFacts(const std::string& path) const {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                    &EVP_MD_CTX_free);
    if (!context || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1)
        return std::nullopt;
    FileFacts facts;
    std::vector<char> block(std::size_t{64} * 1024);
    while (in) {
        in.read(block.data(), static_cast<std::streamsize>(block.size()));
        const std::streamsize got = in.gcount();
        if (got > 0)
            EVP_DigestUpdate(context.get(), block.data(), static_cast<std::size_t>(got));
        facts.size += got;
    }
    if (in.bad())
        return std::nullopt;
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned length = 0;
    if (EVP_DigestFinal_ex(context.get(), digest, &length) != 1)
        return std::nullopt;
    facts.sha256 = hex(digest, length);
    return facts;
}

bool LinuxRecordStation::appendLine(const std::string& path, const std::string& line,
                                    std::string& why) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
        why = std::strerror(errno);
        return false;
    }
    // O_APPEND puts each write at the end; the lock keeps a writer that must
    // write twice (a full disk, a signal) from being cut into by another.
    while (::flock(fd, LOCK_EX) != 0 && errno == EINTR) {
    }
    const bool written = writeAll(fd, line + "\n");
    if (!written)
        why = std::strerror(errno);
    ::close(fd);
    return written;
}

}  // namespace fc
