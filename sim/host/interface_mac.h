// A simulated scale that is given a new MAC address takes it as its network
// interface's address, as the real scale does, so that the loader's echo and
// address table then see the new one. Only in a network namespace of the
// scale's own, by a process allowed to change its interfaces.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace fc {

// Sets `interfaceName`'s hardware address; false with the system's reason.
bool setInterfaceMac(const std::string& interfaceName, const std::array<std::uint8_t, 6>& mac,
                     std::string& error);

}  // namespace fc
