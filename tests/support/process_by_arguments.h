// Finding a running process of this machine by the words of its command
// line, as a test does to reach a worker that another program started.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace fc::test {

// The first process whose command line holds `program` somewhere and the
// words of `run` one after another, or 0 when there is none.
pid_t processWith(const std::string& program, const std::vector<std::string>& run);

}  // namespace fc::test
