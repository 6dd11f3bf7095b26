// One question to a server and its answer, over HTTP (RFC 9110) and libcurl.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quillon::link {

// Bounds on what a server, which may be anybody, can make this process take.
inline constexpr std::size_t kLargestAnswer = std::size_t{128} << 20;  // no form is larger
inline constexpr std::size_t kMostAnswerHeaderBytes = std::size_t{64} << 10;
inline constexpr int kMostRedirections = 10;

// Seconds. A form of the usual size goes over a slow line in the whole of it.
inline constexpr std::uint32_t kUsualTimeLimit = 120;
inline constexpr std::uint32_t kConnectTimeLimit = 20;

struct Request {
  std::string method;  // GET or POST
  std::string url;     // as ResolveUrl gives it
  std::vector<std::string> headers;
  std::string body;  // of a POST
};

struct Answer {
  long status = 0;
  std::string url;          // of the last redirection
  std::string contentType;  // the media type alone, in lower case; empty when none was told
  std::string body;
};

// Cookies and connections are kept between the two, as a browser does: a server that knows who
// fetched a form knows who sends it back.
void StartHttp();
void StopHttp();

// For each request from here on, in all; 0 stands for kUsualTimeLimit.
void SetRequestTimeLimit(std::uint32_t seconds);

// Told of each request before it is sent.
using BeforeRequest = void (*)(const Request& request);

// Follows redirections to http and https, but never from an encrypted line to one that is not.
// Empty when the server answered with success, otherwise a sentence for people of less than 133
// bytes.
std::string Exchange(Request request, BeforeRequest before, Answer* answer);

}  // namespace quillon::link
