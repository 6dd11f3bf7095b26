#include "tests/end_to_end/system_calls.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/reg.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <fstream>
#include <map>
#include <set>

namespace quillon::test {
namespace {

constexpr int kNotTraced = 126;

// A call, and the argument that tells which file it changes: its path or its descriptor.
struct ChangingCall {
  std::uint64_t number;
  std::string name;
  int argument;
  bool isPath = true;
};
const ChangingCall kChangingCalls[] = {
    {SYS_open, "open", 0},
    {SYS_openat, "open", 1},
    {SYS_creat, "open", 0},
    {SYS_write, "write", 0, false},
    {SYS_pwrite64, "write", 0, false},
    {SYS_writev, "write", 0, false},
    {SYS_ftruncate, "write", 0, false},
    {SYS_fallocate, "write", 0, false},
    {SYS_copy_file_range, "write", 2, false},
    {SYS_sendfile, "write", 0, false},
    {SYS_truncate, "write", 0},
    {SYS_fsync, "flush", 0, false},
    {SYS_fdatasync, "flush", 0, false},
    {SYS_close, "close", 0, false},
    {SYS_rename, "rename", 0},
    {SYS_renameat, "rename", 1},
    {SYS_renameat2, "rename", 1},
    {SYS_link, "rename", 0},
    {SYS_linkat, "rename", 1},
    {SYS_unlink, "remove", 0},
    {SYS_unlinkat, "remove", 1},
};

struct Traced {
  bool opening = false;             // a call that opens a file of the folder was let through
  int failing = 0;                  // the error that the call it is in returns
  std::set<std::uint64_t> written;  // descriptors of such files
};

struct Tracer {
  std::string folder;
  Interruption interruption;
  std::map<pid_t, Traced> processes;
  std::vector<std::string> calls;
};

std::string TextAt(pid_t process, std::uint64_t address) {
  std::ifstream memory("/proc/" + std::to_string(process) + "/mem", std::ios::binary);
  memory.seekg(static_cast<std::streamoff>(address));
  std::string text;
  std::getline(memory, text, '\0');
  return text;
}

bool OpensToWrite(const __ptrace_syscall_info& info) {
  if (info.entry.nr == SYS_creat) return true;
  const std::uint64_t flags = info.entry.args[info.entry.nr == SYS_open ? 1 : 2];
  return (flags & (O_WRONLY | O_RDWR | O_CREAT | O_TRUNC)) != 0;
}

// The call's name when it changes a file of the folder, else empty.
std::string ChangeOf(const Tracer& tracer, pid_t process, const __ptrace_syscall_info& info) {
  for (const ChangingCall& call : kChangingCalls) {
    if (call.number != info.entry.nr) continue;
    if (call.name == "open" && !OpensToWrite(info)) return {};
    const std::uint64_t argument = info.entry.args[call.argument];
    const bool changes = call.isPath ? TextAt(process, argument).starts_with(tracer.folder)
                                     : tracer.processes.at(process).written.contains(argument);
    return changes ? call.name : std::string();
  }
  return {};
}

void OnEntry(Tracer* tracer, pid_t process, const __ptrace_syscall_info& info) {
  const std::string change = ChangeOf(*tracer, process, info);
  if (change.empty()) return;
  Traced& traced = tracer->processes.at(process);
  tracer->calls.push_back(change);
  if (tracer->calls.size() == tracer->interruption.call) {
    // No call has this number.
    ptrace(PTRACE_POKEUSER, process, sizeof(long) * ORIG_RAX, -1L);
    traced.failing = tracer->interruption.error;
    if (traced.failing != 0) return;
    for (const auto& [each, state] : tracer->processes) kill(each, SIGKILL);
    return;
  }
  traced.opening = change == "open";
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

// Until all have ended; answers how the program did.
int Trace(Tracer* tracer, pid_t program) {
  int end = 0;
  while (!tracer->processes.empty()) {
    int status = 0;
    const pid_t process = waitpid(-1, &status, __WALL);
    if (process < 0) break;
    if (WIFSTOPPED(status)) {
      tracer->processes.try_emplace(process);
      const int signal = OnStop(tracer, process, status);
      ptrace(PTRACE_SYSCALL, process, nullptr, static_cast<long>(signal));
      continue;
    }
    tracer->processes.erase(process);
    if (process == program) end = status;
  }
  return end;
}

void BeTraced() {
  if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(kNotTraced);
  raise(SIGSTOP);
}

// As the program spells it: links are followed.
std::string WithSlash(const std::filesystem::path& folder) {
  return std::filesystem::weakly_canonical(folder).string() + '/';
}

InterruptedRun RunTraced(const std::vector<std::string>& command,
                         const std::filesystem::path& folder, const Interruption& interruption) {
  const StandardStreams streams;
  // The leak sanitizer stops processes in the same way; one cannot be stopped twice.
  const pid_t child = StartProcess(command, streams, {"ASAN_OPTIONS=detect_leaks=0"}, BeTraced);
  int status = 0;
  waitpid(child, &status, __WALL);
  if (!WIFSTOPPED(status)) return {ResultOf(streams, status), {}};
  Tracer tracer{WithSlash(folder), interruption, {{child, {}}}, {}};
  constexpr long kOptions = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL | PTRACE_O_TRACEFORK |
                            PTRACE_O_TRACEVFORK | PTRACE_O_TRACECLONE | PTRACE_O_TRACEEXEC;
  ptrace(PTRACE_SETOPTIONS, child, nullptr, kOptions);
  ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
  return {ResultOf(streams, Trace(&tracer, child)), tracer.calls};
}

}  // namespace

bool CanInterrupt() {
  static const int status = RunTraced({"true"}, "/nowhere", {}).result.status;
  return status == 0;
}

InterruptedRun RunInterrupted(const std::vector<std::string>& arguments,
                              const std::filesystem::path& folder,
                              const Interruption& interruption) {
  std::vector<std::string> command = {QUILLON_PROGRAM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return RunTraced(command, folder, interruption);
}

}  // namespace quillon::test
