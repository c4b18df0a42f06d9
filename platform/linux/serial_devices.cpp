#include "platform/linux/serial_devices.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

#include "platform/environment.h"

namespace fc {

namespace {

namespace fs = std::filesystem;

std::string folderOf(const std::string& variable, const std::string& otherwise) {
    std::string folder = environmentVariable(variable);
    if (folder.empty())
        return otherwise;
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    return folder;
}

// The number after `prefix` in `name` ("ttyUSB12" gives 12), or -1 when the
// rest is not all digits.
long numberAfter(const std::string& name, const std::string& prefix) {
    if (name.size() <= prefix.size() || name.compare(0, prefix.size(), prefix) != 0)
        return -1;
    long value = 0;
    for (std::size_t i = prefix.size(); i < name.size(); ++i) {
        if (!std::isdigit(static_cast<unsigned char>(name[i])) || value > 1000000)
            return -1;
        value = value * 10 + (name[i] - '0');
    }
    return value;
}

// A ttyS whose type the kernel reports as 0 (no UART) is no port at all.
bool hasNoUart(const std::string& sysRoot, const std::string& name) {
    std::ifstream type(sysRoot + "/class/tty/" + name + "/type");
    int value = -1;
    return type >> value && value == 0;
}

std::vector<SerialDevice> numbered(const std::string& devRoot, const std::string& sysRoot,
                                   const std::string& prefix) {
    std::vector<std::pair<long, std::string>> found;
    std::error_code ec;
    for (const fs::directory_entry& entry : fs::directory_iterator(devRoot, ec)) {
        std::string name = entry.path().filename().string();
        long n = numberAfter(name, prefix);
        if (n < 0)
            continue;
        if (prefix == "ttyS" && hasNoUart(sysRoot, name))
            continue;
        found.emplace_back(n, name);
    }
    std::sort(found.begin(), found.end());
    std::vector<SerialDevice> devices;
    for (const auto& [n, name] : found) {
        SerialDevice device{devRoot + "/" + name, "", 0};
        if (prefix == "ttyS" && n < 4)
            device.defaultCom = static_cast<int>(n) + 1;
        devices.push_back(device);
    }
    return devices;
}

std::vector<SerialDevice> byId(const std::string& devRoot) {
    std::vector<SerialDevice> devices;
    std::error_code ec;
    const fs::path folder = fs::path(devRoot) / "serial" / "by-id";
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ec)) {
        SerialDevice device{entry.path().string(), "", 0};
        std::error_code linkError;
        fs::path target = fs::read_symlink(entry.path(), linkError);
        if (!linkError)
            device.target = (folder / target).lexically_normal().string();
        devices.push_back(device);
    }
    std::sort(devices.begin(), devices.end(),
              [](const SerialDevice& a, const SerialDevice& b) { return a.path < b.path; });
    return devices;
}

}  // namespace

std::string serialDeviceRoot() {
    return folderOf("FIRMCAST_DEV_ROOT", "/dev");
}

std::string kernelObjectRoot() {
    return folderOf("FIRMCAST_SYS_ROOT", "/sys");
}

std::vector<SerialDevice> listSerialDevices(const std::string& devRoot,
                                            const std::string& sysRoot) {
    std::vector<SerialDevice> devices;
    for (const char* prefix : {"ttyS", "ttyUSB", "ttyACM"}) {
        std::vector<SerialDevice> group = numbered(devRoot, sysRoot, prefix);
        devices.insert(devices.end(), group.begin(), group.end());
    }
    std::vector<SerialDevice> named = byId(devRoot);
    devices.insert(devices.end(), named.begin(), named.end());
    return devices;
}

}  // namespace fc
