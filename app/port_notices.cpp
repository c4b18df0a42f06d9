#include "app/port_notices.h"

#include "common/error_log.h"
#include "control/firmcast_form.h"
#include "platform/linux/termios_port.h"

namespace fc {

PortNotices::PortNotices(TermiosPortOpener& opener, Firmcast& form) : opener_(opener) {
    opener_.setNotice(
        [&form](const std::string& text) { EscribirLog(form.common(), "PortOpen", text, 0); });
}

PortNotices::~PortNotices() {
    opener_.setNotice(nullptr);
}

}  // namespace fc
