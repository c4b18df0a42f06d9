#include "test_bed.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace fc::netbed {

namespace {

std::vector<std::string> split(const std::string& value, char separator) {
    std::vector<std::string> parts;
    std::stringstream in(value);
    std::string part;
    while (std::getline(in, part, separator)) {
        if (!part.empty())
            parts.push_back(part);
    }
    return parts;
}

bool parseIp(const std::string& value, Ipv4& ip) {
    unsigned a, b, c, d;
    char end;
    if (std::sscanf(value.c_str(), "%u.%u.%u.%u%c", &a, &b, &c, &d, &end) != 4 || a > 255 ||
        b > 255 || c > 255 || d > 255)
        return false;
    ip = {static_cast<std::uint8_t>(a), static_cast<std::uint8_t>(b), static_cast<std::uint8_t>(c),
          static_cast<std::uint8_t>(d)};
    return true;
}

bool parseMac(const std::string& value, Mac& mac) {
    unsigned b[6];
    char end;
    if (std::sscanf(value.c_str(), "%x:%x:%x:%x:%x:%x%c", &b[0], &b[1], &b[2], &b[3], &b[4], &b[5],
                    &end) != 6)
        return false;
    for (int i = 0; i < 6; ++i) {
        if (b[i] > 255)
            return false;
        mac[i] = static_cast<std::uint8_t>(b[i]);
    }
    return true;
}

bool parseScale(const std::string& entry, BedScale& scale) {
    std::vector<std::string> fields = split(entry, ',');
    if (fields.size() != 3)
        return false;
    scale.ns = fields[0];
    return parseIp(fields[1], scale.ip) && parseMac(fields[2], scale.mac);
}

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

}  // namespace

std::optional<TestBed> currentBed(std::string& whyNot) {
    if (variable("FIRMCAST_NETBED") != "1") {
        whyNot =
            "not in a test bed of network namespaces (FIRMCAST_NETBED unset): run it through "
            "tests/netbed/run_netbed_tests.sh";
        return std::nullopt;
    }
    TestBed bed;
    bed.loader = variable("FIRMCAST_NETBED_LOADER");
    for (const std::string& entry : split(variable("FIRMCAST_NETBED_SCALES"), ';')) {
        BedScale scale;
        if (!parseScale(entry, scale)) {
            whyNot = "FIRMCAST_NETBED_SCALES has an entry that is not <ns>,<ip>,<mac>: " + entry;
            return std::nullopt;
        }
        bed.scales.push_back(scale);
    }
    if (bed.loader.empty() || bed.scales.empty()) {
        whyNot = "FIRMCAST_NETBED_LOADER or FIRMCAST_NETBED_SCALES is empty";
        return std::nullopt;
    }
    return bed;
}

std::string text(const Ipv4& ip) {
    return std::to_string(ip[0]) + "." + std::to_string(ip[1]) + "." + std::to_string(ip[2]) + "." +
           std::to_string(ip[3]);
}

std::string text(const Mac& mac) {
    char out[18];
    std::snprintf(out, sizeof out, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3],
                  mac[4], mac[5]);
    return out;
}

Mac macOf(const NeighbourRow& row) {
    Mac mac;
    std::copy(row.physical.begin(), row.physical.begin() + mac.size(), mac.begin());
    return mac;
}

bool run(const std::string& command) {
    std::fflush(stdout);
    return std::system(command.c_str()) == 0;
}

}  // namespace fc::netbed
