#include "tests/support/loopback_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace quillon::test {
namespace {

// A socket bound to a free port of the loopback.
int BindSocket(int* port) {
  const int made = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  if (made < 0 || bind(made, plain, length) != 0 || getsockname(made, plain, &length) != 0) {
    throw std::runtime_error("no socket on the loopback");
  }
  *port = ntohs(address.sin_port);
  return made;
}

// The one that may be set for the machine would be asked for everything.
void LeaveProxyOut() { setenv("no_proxy", "*", 1); }

std::string UrlOf(int port, const std::string& path) {
  return "http://127.0.0.1:" + std::to_string(port) + path;
}

std::size_t DeclaredLength(const std::string& headers) {
  const std::size_t place = headers.find("Content-Length: ");
  return place == std::string::npos ? 0 : std::strtoul(headers.c_str() + place + 16, nullptr, 10);
}

bool ReadRequest(int connection, HttpRequest* request) {
  std::string bytes;
  char part[4096];
  std::size_t end = std::string::npos, whole = 0;
  do {
    const ssize_t got = read(connection, part, sizeof part);
    if (got <= 0) return false;
    bytes.append(part, static_cast<std::size_t>(got));
    end = bytes.find("\r\n\r\n");
    if (end == std::string::npos) continue;
    whole = end + 4 + DeclaredLength(bytes.substr(0, end + 2));
  } while (end == std::string::npos || bytes.size() < whole);
  const std::size_t line = bytes.find("\r\n");
  *request = {bytes.substr(0, line), bytes.substr(line + 2, end - line), bytes.substr(end + 4)};
  return true;
}

void WriteAll(int connection, const std::string& bytes) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count = send(connection, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) return;
    sent += static_cast<std::size_t>(count);
  }
}

void Serve(LoopbackServer* server) {
  while (!server->ending) {
    const int connection = accept4(server->listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) continue;
    HttpRequest request;
    std::optional<std::string> answer = "";
    if (!server->ending && ReadRequest(connection, &request)) {
      answer = server->routine(request);
      const std::lock_guard<std::mutex> hold(server->lock);
      server->requests.push_back(std::move(request));
    }
    if (answer) {
      WriteAll(connection, *answer);
      close(connection);
    } else {
      server->silent.push_back(connection);
    }
  }
}

}  // namespace

std::string HttpAnswer(const std::string& status, const std::string& headers,
                       const std::string& body) {
  return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers +
         "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

LoopbackServer::LoopbackServer(Routine answering) : routine(std::move(answering)) {
  LeaveProxyOut();
  listener = BindSocket(&port);
  if (listen(listener, 16) != 0) throw std::runtime_error("nobody can listen on the loopback");
  thread = std::thread([this] { Serve(this); });
}

LoopbackServer::~LoopbackServer() {
  ending = true;
  shutdown(listener, SHUT_RDWR);
  thread.join();
  close(listener);
  for (const int connection : silent) close(connection);
}

std::string LoopbackServer::Url(const std::string& path) const { return UrlOf(port, path); }

std::vector<HttpRequest> LoopbackServer::Requests() {
  const std::lock_guard<std::mutex> hold(lock);
  return requests;
}

std::string RefusingUrl() {
  LeaveProxyOut();
  int port = 0;
  close(BindSocket(&port));
  return UrlOf(port, "/");
}

}  // namespace quillon::test
