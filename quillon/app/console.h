// What the program says to people: messages on the standard error stream, progress, exit statuses.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "quillon/core/failure.h"

namespace quillon::app {

enum ExitStatus : int {
  kExitDone = 0,
  kExitError = 2,
  kExitWarnings = 3,  // done, and something deserves a look
};

// "quillon: FILE: what". `file` may be empty; "-" reads "standard input".
void PrintError(std::string_view file, std::string_view what);
void PrintWarning(std::string_view file, std::string_view what);

// Prints the warnings (of a badly damaged file, the first ones and how many more there are) and
// answers the exit status of a command that is done.
ExitStatus FinishWith(std::string_view file, const std::vector<std::string>& warnings);

// Prints what is wrong and what therefore did not happen; answers the exit status.
ExitStatus FailWith(std::string_view file, const std::vector<std::string>& problems,
                    std::string_view outcome = "nothing was written");

// A failure with the object and byte it names.
std::string Describe(const HostFailure& failure);
std::string DescribePlace(const std::string& what, std::uint32_t objectNumber, std::int64_t offset);

// Texts from files with control characters shown as escapes, so that none reaches the terminal.
std::string Printable(std::string_view utf8);

// Whether `utf8` is well formed.
bool IsUtf8(std::string_view utf8);

// A line on the terminal that tells how far a long job is: only when the standard error stream is a
// terminal, and only once the job has taken a while. The line goes away with the record.
struct Progress {
  Progress(const char* jobName, std::size_t jobTotal);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Step();

  const char* job;
  std::size_t total;
  std::size_t done = 0;
  bool terminal;
  bool shown = false;
  std::chrono::steady_clock::time_point next;
};

}  // namespace quillon::app
