// Finding a running process of this machine by the words of its command
// line, as a test does to reach a worker that another program started.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace fc::test {

// The first process whose command line holds `program` somewhere and, for
// each of `runs`, its words one after another; 0 when there is none.
pid_t processWith(const std::string& program, const std::vector<std::vector<std::string>>& runs);

}  // namespace fc::test
