// Runs a piece of a test as a process that lacks one capability, the way the
// loader runs on a machine where nobody granted it.
#pragma once

#include <functional>

namespace fc::netbed {

// Forks, drops `capability` (CAP_NET_ADMIN, CAP_NET_RAW, ...) from the
// child's effective, permitted and inheritable sets, and returns what `work`
// returned there (0 to 127). -1 when the capability could not be dropped or
// the child did not end normally.
int runWithoutCapability(int capability, const std::function<int()>& work);

}  // namespace fc::netbed
