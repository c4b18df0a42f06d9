#include "firmware/error_box.h"

#include <string>

#include "platform/dialogs.h"
#include "platform/runtime_error.h"

namespace fc {

void avisaError(Dialogs& dialogs, const RuntimeError& error) {
    dialogs.msgBox(std::to_string(error.number()) + error.description(), mb::kCritical);
}

}  // namespace fc
