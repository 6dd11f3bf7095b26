// Stops the program under test at one of the system calls by which it changes files. Every one of
// them is reached in turn, whatever the machine's speed.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/end_to_end/process.h"

namespace quillon::test {

// The calls of a run that open a file to write it, write, flush, close, rename or remove it, are
// counted from 1 on; only files in one folder count.
struct Interruption {
  std::size_t call = 0;  // 0: none
  int error = 0;         // what the call fails with, unmade; 0: the program is killed before it
};

struct InterruptedRun {
  ProcessResult result;
  std::vector<std::string> calls;  // the names of those that were reached
};

// Whether this system lets a process stop another.
bool CanInterrupt();

InterruptedRun RunInterrupted(const std::vector<std::string>& arguments,
                              const std::filesystem::path& folder,
                              const Interruption& interruption);

}  // namespace quillon::test
