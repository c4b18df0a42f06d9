// The PC's IP-to-hardware address table, and the echo that makes the system
// learn an address again. A scale that leaves its boot loader, or has just
// been given a new MAC, answers at the same IP with another hardware address,
// so the loader clears the table between steps and reads the MAC afresh.
//
// Nothing here tells the operator anything: failure is a False result or an
// empty MAC.
#pragma once

#include <string>

namespace fc {

struct NetworkModule;

// Deletes every row of the table, whatever address is given: the argument is
// kept for the callers, and no filtering is done.
void BorrarTablaARP(NetworkModule& m, const std::string& ip);

// One echo to the address; True when it was answered.
bool HacerPing(NetworkModule& m, const std::string& ip);

// Clears the table, then echoes up to three times, then reads the MAC as
// DameMacDeTabla does.
bool DameMacPorPing(NetworkModule& m, const std::string& ip, std::string& mac);

// The MAC of the first row whose IP text equals `ip` exactly (so a text with
// leading zeros never matches), as twelve hex digits.
bool DameMacDeTabla(NetworkModule& m, const std::string& ip, std::string& mac);

}  // namespace fc
