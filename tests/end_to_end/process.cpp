#include "tests/end_to_end/process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace quillon::test {

const char* const kLeakOptions =
    "LSAN_OPTIONS=print_suppressions=0:suppressions=" LEAK_SUPPRESSIONS;

pid_t StartProcess(const std::vector<std::string>& command, const StandardStreams& streams,
                   const std::vector<std::string>& environment, void (*first)()) {
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child != 0) return child;
  constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC;
  dup2(open(streams.in.c_str(), kFlags, 0600), STDIN_FILENO);
  dup2(open(streams.out.c_str(), kFlags, 0600), STDOUT_FILENO);
  dup2(open(streams.err.c_str(), kFlags, 0600), STDERR_FILENO);
  if (first != nullptr) first();
  std::vector<char*> words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  for (const std::string& entry : environment) putenv(const_cast<char*>(entry.c_str()));
  execvp(words[0], words.data());
  _exit(127);
}

ProcessResult ResultOf(const StandardStreams& streams, int waitStatus) {
  return {WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus),
          ReadFile(streams.out), ReadFile(streams.err)};
}

ProcessResult RunProcess(const std::vector<std::string>& command, const std::string& input,
                         const std::vector<std::string>& environment) {
  const StandardStreams streams;
  WriteFile(streams.in, input);
  const pid_t child = StartProcess(command, streams, environment, nullptr);
  int status = 0;
  waitpid(child, &status, 0);
  return ResultOf(streams, status);
}

ProcessResult Quillon(std::vector<std::string> arguments, const std::string& input,
                      std::vector<std::string> environment) {
  arguments.insert(arguments.begin(), QUILLON_PROGRAM);
  environment.emplace_back(kLeakOptions);
  return RunProcess(arguments, input, environment);
}

bool HasTool(const std::string& name) { return RunProcess({name, "--version"}).status != 127; }

std::string ReadFile(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void WriteFile(const std::string& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

std::string ExampleForm() { return EXAMPLE_FORM; }

}  // namespace quillon::test
