#include "quillon/app/worker_processes.h"

#include <poll.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "quillon/core/failure.h"
#include "sdk/errors.h"

namespace quillon::app {
namespace {

// Which piece is to be done next: one number for all processes.
struct SharedCounter {
  SharedCounter()
      : memory(mmap(nullptr, sizeof(Counter), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                    -1, 0)) {
    if (memory == MAP_FAILED) Fail(kErrorNoMemory, "there is no memory to share");
    new (memory) Counter(0);
  }
  ~SharedCounter() { munmap(memory, sizeof(Counter)); }
  SharedCounter(const SharedCounter&) = delete;
  SharedCounter& operator=(const SharedCounter&) = delete;

  using Counter = std::atomic<std::uint64_t>;
  static_assert(Counter::is_always_lock_free);
  std::size_t Next() {
    return static_cast<std::size_t>(static_cast<Counter*>(memory)->fetch_add(1));
  }

  void* memory;
};

// A result on its way: this, then the report.
struct ResultHeader {
  std::uint64_t piece;
  std::uint64_t length;
};

struct Worker {
  pid_t process;
  int pipe;  // -1 when it has ended
  std::string received;
};

bool WriteAll(int file, const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t written = write(file, bytes, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

[[noreturn]] void Work(int output, std::size_t count, SharedCounter* counter,
                       const std::function<std::string(std::size_t)>& work) {
  for (std::size_t piece = counter->Next(); piece < count; piece = counter->Next()) {
    const std::string report = work(piece);
    const ResultHeader header{piece, report.size()};
    std::string message(reinterpret_cast<const char*>(&header), sizeof header);
    message += report;
    if (!WriteAll(output, message.data(), message.size())) break;
  }
  // The documents, files and plug-ins in memory are this process's copies only.
  _exit(0);
}

// The children of an earlier one have its end of the pipe too; it is closed in them, so that the
// end of a process is noticed.
bool StartWorker(std::vector<Worker>* workers, std::size_t count, SharedCounter* counter,
                 const std::function<std::string(std::size_t)>& work) {
  int ends[2];
  if (pipe(ends) != 0) return false;
  const pid_t process = fork();
  if (process == 0) {
    close(ends[0]);
    for (const Worker& other : *workers) close(other.pipe);
    Work(ends[1], count, counter, work);
  }
  close(ends[1]);
  if (process < 0) {
    close(ends[0]);
    return false;
  }
  workers->push_back({process, ends[0], {}});
  return true;
}

void TakeResults(Worker* worker, std::vector<WorkResult>* results,
                 const std::function<void()>& progress) {
  ResultHeader header;
  std::size_t position = 0;
  const std::string& bytes = worker->received;
  while (bytes.size() - position >= sizeof header) {
    std::memcpy(&header, bytes.data() + position, sizeof header);
    if (bytes.size() - position - sizeof header < header.length) break;
    position += sizeof header;
    (*results)[header.piece] = {true, bytes.substr(position, header.length)};
    position += header.length;
    progress();
  }
  worker->received.erase(0, position);
}

void ReadFrom(Worker* worker, std::vector<WorkResult>* results,
              const std::function<void()>& progress) {
  char buffer[1 << 16];
  const ssize_t got = read(worker->pipe, buffer, sizeof buffer);
  if (got < 0 && errno == EINTR) return;
  if (got > 0) {
    worker->received.append(buffer, static_cast<std::size_t>(got));
    TakeResults(worker, results, progress);
    return;
  }
  close(worker->pipe);
  worker->pipe = -1;
}

void ReadAll(std::vector<Worker>* workers, std::vector<WorkResult>* results,
             const std::function<void()>& progress) {
  const auto runs = [](const Worker& worker) { return worker.pipe >= 0; };
  while (std::any_of(workers->begin(), workers->end(), runs)) {
    std::vector<pollfd> waited;
    for (const Worker& worker : *workers) waited.push_back({worker.pipe, POLLIN, 0});
    if (poll(waited.data(), waited.size(), -1) < 0) continue;
    for (std::size_t i = 0; i < waited.size(); ++i) {
      if (waited[i].revents != 0) ReadFrom(&(*workers)[i], results, progress);
    }
  }
}

}  // namespace

std::vector<WorkResult> WorkInProcesses(std::size_t count, unsigned jobs,
                                        const std::function<std::string(std::size_t)>& work,
                                        const std::function<void()>& progress) {
  std::vector<WorkResult> results(count);
  SharedCounter counter;
  std::vector<Worker> workers;
  const std::size_t wanted = std::min<std::size_t>(std::max(jobs, 1u), count);
  while (workers.size() < wanted && StartWorker(&workers, count, &counter, work)) {
  }
  if (workers.empty() && count > 0) Fail(kErrorGeneral, "no process can be started");
  ReadAll(&workers, &results, progress);
  for (const Worker& worker : workers) waitpid(worker.process, nullptr, 0);
  return results;
}

}  // namespace quillon::app
