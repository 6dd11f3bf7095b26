// Many pieces of work of one kind, done by several processes at once.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quillon::app {

struct WorkResult {
  bool done = false;   // false: the process that had it ended before
  std::string report;  // what the work answered
};

// Does work(0) to work(count - 1), each in one of `jobs` copies of this process, and answers their
// results in that order. The copies have what this process has in memory; what they change of it
// is lost, and so is what they print after their last piece. `progress` is called here after each
// piece. Throws HostFailure when there can be no processes.
std::vector<WorkResult> WorkInProcesses(std::size_t count, unsigned jobs,
                                        const std::function<std::string(std::size_t)>& work,
                                        const std::function<void()>& progress);

}  // namespace quillon::app
