// firmcast-batch --parallel N: the scales of the list loaded N at a time.
// Each scale is loaded by a worker, this program run again with --worker on
// that one scale, which takes the ordinary road of a single-scale load in
// its own process (its own pump, screen, sockets and record form) and
// clears only its own scale's rows of the address table. The parent starts
// and watches the workers, passes on what they said, and prints the scale
// lines of every pass in list order once all have ended.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "app/batch_options.h"

namespace fc::batch {

// The command line of the worker of scale i (counted from 0) of the list.
std::vector<std::string> workerArguments(const Options& options, std::size_t i);

// Runs the workers and returns the exit status: 0 when every scale of every
// pass is ok, 3 when a worker ended by the fatal trap, 1 otherwise.
int runParallelLoad(const Options& options, std::ostream& out, std::ostream& err);

}  // namespace fc::batch
