#include "common/standard_handler.h"

#include "common/common_module.h"
#include "common/error_log.h"
#include "platform/dialogs.h"

namespace fc {

void standardHandler(CommonModule& c, const std::string& procedure, const RuntimeError& error) {
    c.services.dialogs.msgBox(std::to_string(error.number()) + " - " + error.description(),
                              mb::kExclamation, procedure);
    EscribirLog(c, procedure, error.description(), error.number());
}

bool withStandardHandler(CommonModule& c, const std::string& procedure,
                         const std::function<void()>& body) {
    try {
        body();
        return true;
    } catch (const RuntimeError& error) {
        standardHandler(c, procedure, error);
        return false;
    }
}

}  // namespace fc
