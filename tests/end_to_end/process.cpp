#include "tests/end_to_end/process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace quillon::test {

const char* const kLeakOptions =
    "LSAN_OPTIONS=print_suppressions=0:suppressions=" LEAK_SUPPRESSIONS;

namespace {

struct Pipe {
  Pipe() {
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  }
  ~Pipe() {
    Close(0);
    Close(1);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  void Close(std::size_t end) {
    if (ends.at(end) >= 0) close(ends.at(end));
    ends.at(end) = -1;
  }

  std::array<int, 2> ends{-1, -1};
};

[[noreturn]] void Become(const std::vector<std::string>& command,
                         const std::vector<std::string>& environment) {
  std::vector<char*> words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  for (const std::string& entry : environment) putenv(const_cast<char*>(entry.c_str()));
  execvp(words[0], words.data());
  _exit(127);
}

// Feeds and drains the process at the same time, so that no pipe fills up.
void Converse(Pipe* in, Pipe* out, Pipe* err, std::string_view input, ProcessResult* result) {
  std::array<char, 1 << 16> buffer;
  while (out->ends[0] >= 0 || err->ends[0] >= 0) {
    if (input.empty()) in->Close(1);
    std::array<pollfd, 3> fds{pollfd{in->ends[1], POLLOUT, 0}, pollfd{out->ends[0], POLLIN, 0},
                              pollfd{err->ends[0], POLLIN, 0}};
    if (poll(fds.data(), fds.size(), -1) < 0) break;
    if (fds[0].revents != 0) {
      const ssize_t written =
          write(in->ends[1], input.data(), std::min(input.size(), buffer.size()));
      input.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : input.size());
    }
    const auto drain = [&](Pipe* pipe, short events, std::string* text) {
      if (events == 0) return;
      const ssize_t got = read(pipe->ends[0], buffer.data(), buffer.size());
      if (got <= 0) return pipe->Close(0);
      text->append(buffer.data(), static_cast<std::size_t>(got));
    };
    drain(out, fds[1].revents, &result->out);
    drain(err, fds[2].revents, &result->err);
  }
}

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& command, const std::string& input,
                         const std::vector<std::string>& environment) {
  static const auto ignored = std::signal(SIGPIPE, SIG_IGN);
  static_cast<void>(ignored);
  Pipe in, out, err;
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    std::signal(SIGPIPE, SIG_DFL);
    dup2(in.ends[0], STDIN_FILENO);
    dup2(out.ends[1], STDOUT_FILENO);
    dup2(err.ends[1], STDERR_FILENO);
    Become(command, environment);
  }
  in.Close(0);
  out.Close(1);
  err.Close(1);
  ProcessResult result;
  Converse(&in, &out, &err, input, &result);
  int status = 0;
  waitpid(child, &status, 0);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return result;
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

TempFolder::TempFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "quillon-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path = name;
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

std::size_t TempFolder::FileCount() const {
  const std::filesystem::directory_iterator files(path);
  return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

std::string ExampleForm() { return EXAMPLE_FORM; }

}  // namespace quillon::test
