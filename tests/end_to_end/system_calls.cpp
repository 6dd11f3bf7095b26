#include "tests/end_to_end/system_calls.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <set>
#include <string_view>

#ifdef __x86_64__
#include <sys/reg.h>
#endif

namespace quillon::test {

#ifndef __x86_64__

std::string WhyNoInterruption() { return "system calls are stopped on x86-64 only"; }

InterruptedRun RunInterrupted(const std::vector<std::string>&, const std::filesystem::path&,
                              const Interruption&) {
  return {};
}

#else

namespace {

constexpr int kNotTraced = 126;

// What a call takes that tells which file it changes: the number of the argument.
struct ChangingCall {
  std::uint64_t number;
  const char* name;
  int path;        // -1: none
  int descriptor;  // -1: none
};
constexpr ChangingCall kChangingCalls[] = {
    {SYS_open, "open", 0, -1},
    {SYS_openat, "open", 1, -1},
    {SYS_creat, "open", 0, -1},
    {SYS_write, "write", -1, 0},
    {SYS_pwrite64, "write", -1, 0},
    {SYS_writev, "write", -1, 0},
    {SYS_ftruncate, "write", -1, 0},
    {SYS_fallocate, "write", -1, 0},
    {SYS_copy_file_range, "write", -1, 2},
    {SYS_sendfile, "write", -1, 0},
    {SYS_truncate, "write", 0, -1},
    {SYS_fsync, "flush", -1, 0},
    {SYS_fdatasync, "flush", -1, 0},
    {SYS_close, "close", -1, 0},
    {SYS_rename, "rename", 0, -1},
    {SYS_renameat, "rename", 1, -1},
    {SYS_renameat2, "rename", 1, -1},
    {SYS_link, "rename", 0, -1},
    {SYS_linkat, "rename", 1, -1},
    {SYS_unlink, "remove", 0, -1},
    {SYS_unlinkat, "remove", 1, -1},
};

struct Traced {
  bool opening = false;             // a call that opens a file of the folder was let through
  int failing = 0;                  // the error that the call it is in returns
  std::set<std::uint64_t> written;  // descriptors of such files
};

struct Tracer {
  pid_t program;
  std::string folder;
  Interruption interruption;
  std::map<pid_t, Traced> processes;
  InterruptedRun run;
};

std::string TextAt(pid_t process, std::uint64_t address) {
  std::string text;
  for (;; address += sizeof(long)) {
    errno = 0;
    const long word = ptrace(PTRACE_PEEKDATA, process, address, nullptr);
    if (errno != 0) return text;
    for (std::size_t i = 0; i < sizeof word; ++i) {
      const auto byte = static_cast<char>(word >> 8 * i & 0xFF);
      if (byte == '\0') return text;
      text.push_back(byte);
    }
  }
}

bool OpensToWrite(const __ptrace_syscall_info& info) {
  if (info.entry.nr == SYS_creat) return true;
  const std::uint64_t flags = info.entry.args[info.entry.nr == SYS_open ? 1 : 2];
  return (flags & (O_WRONLY | O_RDWR | O_CREAT | O_TRUNC)) != 0;
}

// The call's name when it changes a file of the folder.
const char* ChangeOf(const Tracer& tracer, pid_t process, const __ptrace_syscall_info& info) {
  for (const ChangingCall& call : kChangingCalls) {
    if (call.number != info.entry.nr) continue;
    if (call.descriptor >= 0) {
      const std::set<std::uint64_t>& written = tracer.processes.at(process).written;
      return written.count(info.entry.args[call.descriptor]) != 0 ? call.name : nullptr;
    }
    if (std::string_view(call.name) == "open" && !OpensToWrite(info)) return nullptr;
    const std::string path = TextAt(process, info.entry.args[call.path]);
    return path.rfind(tracer.folder, 0) == 0 ? call.name : nullptr;
  }
  return nullptr;
}

void OnEntry(Tracer* tracer, pid_t process, const __ptrace_syscall_info& info) {
  const char* change = ChangeOf(*tracer, process, info);
  if (change == nullptr) return;
  Traced& traced = tracer->processes.at(process);
  tracer->run.calls.emplace_back(change);
  if (tracer->run.calls.size() == tracer->interruption.call) {
    // No call has this number.
    ptrace(PTRACE_POKEUSER, process, sizeof(long) * ORIG_RAX, -1L);
    traced.failing = tracer->interruption.error;
    if (traced.failing != 0) return;
    for (const auto& [each, state] : tracer->processes) kill(each, SIGKILL);
    return;
  }
  traced.opening = std::string_view(change) == "open";
  if (info.entry.nr == SYS_close) traced.written.erase(info.entry.args[0]);
}

void OnExit(Tracer* tracer, pid_t process, const __ptrace_syscall_info& info) {
  Traced& traced = tracer->processes.at(process);
  if (traced.opening && info.exit.is_error == 0) {
    traced.written.insert(static_cast<std::uint64_t>(info.exit.rval));
  }
  traced.opening = false;
  if (traced.failing == 0) return;
  ptrace(PTRACE_POKEUSER, process, sizeof(long) * RAX, static_cast<long>(-traced.failing));
  traced.failing = 0;
}

// What happened to a process that stopped; answers the signal that it gets when it goes on.
int OnStop(Tracer* tracer, pid_t process, int status) {
  const int signal = WSTOPSIG(status);
  if (signal == (SIGTRAP | 0x80)) {
    __ptrace_syscall_info info{};
    ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof info, &info);
    if (info.op == PTRACE_SYSCALL_INFO_ENTRY) OnEntry(tracer, process, info);
    if (info.op == PTRACE_SYSCALL_INFO_EXIT) OnExit(tracer, process, info);
    return 0;
  }
  // Stops that tell of a new process, and the first one of each.
  return signal == SIGTRAP || signal == SIGSTOP ? 0 : signal;
}

void Trace(Tracer* tracer) {
  while (!tracer->processes.empty()) {
    int status = 0;
    const pid_t process = waitpid(-1, &status, __WALL);
    if (process < 0) return;
    if (WIFSTOPPED(status)) {
      tracer->processes.try_emplace(process);
      const int signal = OnStop(tracer, process, status);
      ptrace(PTRACE_SYSCALL, process, nullptr, static_cast<long>(signal));
      continue;
    }
    tracer->processes.erase(process);
    if (process != tracer->program) continue;
    tracer->run.result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
}

[[noreturn]] void BecomeTraced(std::vector<std::string> command, const std::string& out,
                               const std::string& err) {
  dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
  dup2(open(out.c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
  dup2(open(err.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
  // The leak sanitizer stops processes in the same way; one cannot be stopped twice.
  setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
  if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(kNotTraced);
  raise(SIGSTOP);
  std::vector<char*> words;
  for (std::string& word : command) words.push_back(word.data());
  words.push_back(nullptr);
  execvp(words[0], words.data());
  _exit(127);
}

// As the program spells it: links are followed.
std::string WithSlash(const std::filesystem::path& folder) {
  return std::filesystem::weakly_canonical(folder).string() + '/';
}

InterruptedRun RunTraced(const std::vector<std::string>& command,
                         const std::filesystem::path& folder, const Interruption& interruption) {
  const TempFolder outputs;
  const std::string out = outputs.File("out"), err = outputs.File("err");
  const pid_t child = fork();
  if (child == 0) BecomeTraced(command, out, err);
  int status = 0;
  waitpid(child, &status, __WALL);
  Tracer tracer{child, WithSlash(folder), interruption, {}, {}};
  if (!WIFSTOPPED(status)) {
    tracer.run.result.status = WEXITSTATUS(status);
    return tracer.run;
  }
  tracer.processes.try_emplace(child);
  constexpr long kOptions = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL | PTRACE_O_TRACEFORK |
                            PTRACE_O_TRACEVFORK | PTRACE_O_TRACECLONE | PTRACE_O_TRACEEXEC;
  ptrace(PTRACE_SETOPTIONS, child, nullptr, kOptions);
  ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
  Trace(&tracer);
  tracer.run.result.out = ReadFile(out);
  tracer.run.result.err = ReadFile(err);
  return tracer.run;
}

}  // namespace

std::string WhyNoInterruption() {
  static const int status = RunTraced({"true"}, "/nowhere", {}).result.status;
  return status == 0 ? "" : "this system lets no process stop another";
}

InterruptedRun RunInterrupted(const std::vector<std::string>& arguments,
                              const std::filesystem::path& folder,
                              const Interruption& interruption) {
  std::vector<std::string> command = {QUILLON_PROGRAM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return RunTraced(command, folder, interruption);
}

#endif

}  // namespace quillon::test
