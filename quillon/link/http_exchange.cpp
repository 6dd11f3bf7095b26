#include "quillon/link/http_exchange.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>

#include "quillon/link/url_text.h"

namespace quillon::link {
namespace {

struct FreeCurl {
  void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
};
struct FreeShare {
  void operator()(CURLSH* shared) const { curl_share_cleanup(shared); }
};
// Cookies and connections, from one request to the next.
std::unique_ptr<CURLSH, FreeShare> shared;

// The latest request. Each has a handle of its own: in one that is used again, libcurl 7.88 adds an
// answer's continued header line to a header of the answer before, which has been freed.
std::unique_ptr<CURL, FreeCurl> session;

std::uint32_t timeLimit = kUsualTimeLimit;

struct FreeList {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using HeaderList = std::unique_ptr<curl_slist, FreeList>;

struct FailureText {
  CURLcode code;
  const char* text;
};
constexpr FailureText kFailureTexts[] = {
    {CURLE_COULDNT_RESOLVE_HOST, "There is no server of that name."},
    {CURLE_COULDNT_RESOLVE_PROXY, "There is no proxy server of the name that is set."},
    {CURLE_COULDNT_CONNECT, "The server refuses the connection or cannot be reached."},
    {CURLE_OPERATION_TIMEDOUT, "The server did not answer in time."},
    {CURLE_GOT_NOTHING, "The server ended the connection without an answer."},
    {CURLE_PARTIAL_FILE, "The connection ended before the server's answer was complete."},
    {CURLE_RECV_ERROR, "The connection ended before the server's answer was complete."},
    {CURLE_SEND_ERROR, "The connection ended before everything was sent."},
    {CURLE_WEIRD_SERVER_REPLY, "The server's answer is not one of the web's."},
    {CURLE_UNSUPPORTED_PROTOCOL, "The server's answer is not one of the web's."},
    {CURLE_PEER_FAILED_VERIFICATION, "The server's certificate does not prove who it is."},
    {CURLE_SSL_CONNECT_ERROR, "A secure connection to the server cannot be made."},
    {CURLE_FILESIZE_EXCEEDED, "The server's answer is larger than can be taken."},
    {CURLE_OUT_OF_MEMORY, "There is not enough memory."},
};

// What one transfer has brought.
struct Transfer {
  Answer* answer;
  std::size_t headerBytes = 0;
  bool tooLarge = false;
};

std::size_t TakeBody(char* bytes, std::size_t, std::size_t count, void* data) {
  auto& transfer = *static_cast<Transfer*>(data);
  std::string& body = transfer.answer->body;
  transfer.tooLarge = count > kLargestAnswer - body.size();
  if (transfer.tooLarge) return 0;
  try {
    body.append(bytes, count);
  } catch (const std::bad_alloc&) {
    transfer.tooLarge = true;  // for this machine
    return 0;
  }
  return count;
}

std::size_t TakeHeader(char*, std::size_t, std::size_t count, void* data) {
  auto& transfer = *static_cast<Transfer*>(data);
  transfer.headerBytes += count;
  transfer.tooLarge = transfer.headerBytes > kMostAnswerHeaderBytes;
  return transfer.tooLarge ? 0 : count;
}

HeaderList MakeHeaderList(const std::vector<std::string>& headers) {
  HeaderList list;
  // Without the empty Expect, a large body waits a second for a permission that few servers give.
  for (const std::string& header :
       {std::string("Accept: application/pdf, application/vnd.fdf"), std::string("Expect:")}) {
    list.reset(curl_slist_append(list.release(), header.c_str()));
  }
  for (const std::string& header : headers) {
    list.reset(curl_slist_append(list.release(), header.c_str()));
  }
  return list;
}

// "Text/HTML; charset=x" is of the type text/html.
std::string MediaType(const char* contentType) {
  std::string_view text = contentType == nullptr ? "" : contentType;
  text = text.substr(0, text.find(';'));
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  std::string type(text);
  std::transform(type.begin(), type.end(), type.begin(), [](char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
  });
  return type;
}

void SetUp(CURL* curl, const Request& request, curl_slist* headers, Transfer* transfer) {
  curl_easy_setopt(curl, CURLOPT_SHARE, shared.get());
  curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(curl, CURLOPT_USERAGENT, "quillon");
  curl_easy_setopt(curl, CURLOPT_COOKIEFILE, "");  // cookies are kept, and nowhere but in memory
  curl_easy_setopt(curl, CURLOPT_URL, request.url.c_str());
  curl_easy_setopt(curl, CURLOPT_TIMEOUT, static_cast<long>(timeLimit));
  curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT,
                   static_cast<long>(std::min(timeLimit, kConnectTimeLimit)));
  curl_easy_setopt(curl, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(kLargestAnswer));
  curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);
  curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &TakeBody);
  curl_easy_setopt(curl, CURLOPT_WRITEDATA, transfer);
  curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, &TakeHeader);
  curl_easy_setopt(curl, CURLOPT_HEADERDATA, transfer);
  if (request.method == "POST") {
    curl_easy_setopt(curl, CURLOPT_POST, 1L);
    curl_easy_setopt(curl, CURLOPT_POSTFIELDS, request.body.data());
    curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE,
                     static_cast<curl_off_t>(request.body.size()));
  } else {
    curl_easy_setopt(curl, CURLOPT_HTTPGET, 1L);
  }
}

std::string Explain(CURLcode code, const Transfer& transfer) {
  if (transfer.tooLarge) return "The server's answer is larger than can be taken.";
  for (const FailureText& known : kFailureTexts) {
    if (known.code == code) return known.text;
  }
  return "The server cannot be asked: " + std::string(curl_easy_strerror(code)).substr(0, 90);
}

// One request and its answer, whatever that is.
std::string Ask(const Request& request, Answer* answer) {
  session.reset(curl_easy_init());
  CURL* curl = session.get();
  if (curl == nullptr || !shared) return "The network library cannot be used.";
  *answer = {};
  answer->url = request.url;
  Transfer transfer{answer};
  const HeaderList headers = MakeHeaderList(request.headers);
  SetUp(curl, request, headers.get(), &transfer);
  const CURLcode code = curl_easy_perform(curl);
  curl_easy_setopt(curl, CURLOPT_HTTPHEADER, nullptr);  // the list ends here
  if (code != CURLE_OK) return Explain(code, transfer);
  curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &answer->status);
  const char* contentType = nullptr;
  curl_easy_getinfo(curl, CURLINFO_CONTENT_TYPE, &contentType);
  answer->contentType = MediaType(contentType);
  return {};
}

bool IsRedirection(long status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

// The request that a redirection asks for: 307 and 308 repeat it, after the others a form is not
// sent again (RFC 9110, 15.4).
std::string Redirect(const Answer& answer, Request* request) {
  const char* target = nullptr;
  curl_easy_getinfo(session.get(), CURLINFO_REDIRECT_URL, &target);
  const std::optional<std::string> url = ResolveUrl(target == nullptr ? "" : target, &request->url);
  if (!url) return "The server points to an address that cannot be used.";
  if (IsSecure(request->url) && !IsSecure(*url)) {
    return "The server points from a secure address to one that is not.";
  }
  request->url = *url;
  if (answer.status != 307 && answer.status != 308) {
    request->method = "GET";
    request->headers.clear();
    request->body.clear();
  }
  return {};
}

}  // namespace

void StartHttp() {
  curl_global_init(CURL_GLOBAL_DEFAULT);
  timeLimit = kUsualTimeLimit;
  shared.reset(curl_share_init());
  if (!shared) return;
  for (const curl_lock_data what :
       {CURL_LOCK_DATA_COOKIE, CURL_LOCK_DATA_CONNECT, CURL_LOCK_DATA_SSL_SESSION}) {
    curl_share_setopt(shared.get(), CURLSHOPT_SHARE, what);
  }
}

void StopHttp() {
  session.reset();
  shared.reset();
  curl_global_cleanup();
}

void SetRequestTimeLimit(std::uint32_t seconds) {
  constexpr std::uint32_t kLongest = 24 * 60 * 60;
  timeLimit = seconds == 0 ? kUsualTimeLimit : std::min(seconds, kLongest);
}

std::string Exchange(Request request, BeforeRequest before, Answer* answer) {
  for (int hops = 0; hops <= kMostRedirections; ++hops) {
    if (before != nullptr) before(request);
    std::string problem = Ask(request, answer);
    if (!problem.empty()) return problem;
    if (answer->status >= 200 && answer->status < 300) return {};
    if (!IsRedirection(answer->status)) {
      return "The server answers with status " + std::to_string(answer->status) + ".";
    }
    problem = Redirect(*answer, &request);
    if (!problem.empty()) return problem;
  }
  return "The server sends from one address to the next without end.";
}

}  // namespace quillon::link
