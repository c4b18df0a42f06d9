#include "mac/mac_module.h"

#include "platform/runtime_error.h"

namespace fc {

void CierraBdMac(MacModule& m) {
    if (!m.bd_mac)
        return;
    try {
        m.bd_mac->close();
    } catch (const RuntimeError&) {
        // A lost connection is closed already.
    }
    m.bd_mac.reset();
}

}  // namespace fc
