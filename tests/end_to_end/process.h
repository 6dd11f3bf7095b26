// Running programs and looking at what they leave behind.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quillon::test {

struct ProcessResult {
  int status = -1;  // the exit status; 128 and the signal's number when a signal ended it
  std::string out;
  std::string err;
};

// Runs a program (found through PATH when it has no slash) to its end.
ProcessResult RunProcess(const std::vector<std::string>& command, const std::string& input = {},
                         const std::vector<std::string>& environment = {});

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

// An empty folder that goes away with its owner.
struct TempFolder {
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string File(const std::string& name) const { return (path / name).string(); }
  std::size_t FileCount() const;

  std::filesystem::path path;
};

std::string ExampleForm();

}  // namespace quillon::test
