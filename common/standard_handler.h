// The standard error handler of the common procedures and the driver control:
// a warning box with the error's number, " - " and its description, titled
// with the procedure's name; then the log entry (name, description, number).
// The procedure then leaves.
#pragma once

#include <functional>
#include <string>

#include "platform/runtime_error.h"

namespace fc {

struct CommonModule;

void standardHandler(CommonModule& c, const std::string& procedure, const RuntimeError& error);

// Runs `body` under the standard handler of `procedure`: a run-time error
// ends the body and is reported. True when the body ran to its end.
bool withStandardHandler(CommonModule& c, const std::string& procedure,
                         const std::function<void()>& body);

}  // namespace fc
