// An HTTP server on the loopback for one test: real sockets, answers from a routine.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace quillon::test {

struct HttpRequest {
  std::string line;     // "POST /form HTTP/1.1"
  std::string headers;  // the lines after it, as they came
  std::string body;
};

// The bytes of an answer with these parts and its length.
std::string HttpAnswer(const std::string& status, const std::string& headers,
                       const std::string& body);

struct LoopbackServer {
  // Runs on the server's thread. No answer at all keeps the connection open and silent.
  using Routine = std::function<std::optional<std::string>(const HttpRequest&)>;

  explicit LoopbackServer(Routine answering);
  ~LoopbackServer();
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  std::string Url(const std::string& path) const;
  std::vector<HttpRequest> Requests();

  Routine routine;
  int listener = -1;
  int port = 0;
  std::vector<int> silent;  // connections that are kept open
  std::mutex lock;
  std::vector<HttpRequest> requests;
  std::atomic<bool> ending = false;
  std::thread thread;
};

// An address at which nobody listens.
std::string RefusingUrl();

}  // namespace quillon::test
