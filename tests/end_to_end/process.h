// Running programs and looking at what they leave behind.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace quillon::test {

struct ProcessResult {
  int status = -1;  // the exit status; 128 and the signal's number when a signal ended it
  std::string out;
  std::string err;
};

// Runs a program (found through PATH when it has no slash) to its end. Its standard streams are
// files.
ProcessResult RunProcess(const std::vector<std::string>& command, const std::string& input = {},
                         const std::vector<std::string>& environment = {});

// The same in two halves, for those who have something to do between; `first` is called in the new
// process.
struct StandardStreams {
  TemporaryFolder folder;
  std::string in = folder.File("in");
  std::string out = folder.File("out");
  std::string err = folder.File("err");
};
pid_t StartProcess(const std::vector<std::string>& command, const StandardStreams& streams,
                   const std::vector<std::string>& environment, void (*first)());
ProcessResult ResultOf(const StandardStreams& streams, int waitStatus);

// Runs the program under test.
ProcessResult Quillon(std::vector<std::string> arguments, const std::string& input = {},
                      std::vector<std::string> environment = {});

// An entry of the environment for a program under test that is started through another one. Means
// something when it is built with the address sanitizer.
extern const char* const kLeakOptions;

// Whether a tool is installed.
bool HasTool(const std::string& name);

std::string ReadFile(const std::string& file);
void WriteFile(const std::string& file, const std::string& bytes);

std::string ExampleForm();

}  // namespace quillon::test
