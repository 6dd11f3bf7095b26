// A server that answers anything: to a form that is submitted, or to an address that is opened. The
// first byte of the input chooses between the two and how much is read at a time; the rest is what
// the server sends, to one connection after the other, divided by kNextConnection. Real library of
// the protocol, real plug-ins; only the sockets lead nowhere.
#include <curl/curl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "fuzz/fuzz_host.h"
#include "plugin/exchange/pending_imports.h"
#include "quillon/core/operations.h"
#include "quillon/document/operations.h"
#include "quillon/link/http_exchange.h"
#include "quillon/link/url_files.h"
#include "quillon/objects/operations.h"
#include "quillon/viewer/action_run.h"
#include "quillon/viewer/deliveries.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "sdk/link_table.h"
#include "tests/support/form_pdf.h"

// The entry of the link plug-in, by the name that it has here: this program holds two plug-ins.
extern "C" quillon::Boolean LinkPlugInMain(std::uint32_t offeredVersion,
                                           std::uint32_t* chosenVersion,
                                           quillon::SetupRoutine* setup,
                                           const quillon::PlatformData* platform);

// The linker has the link plug-in call the first and lets this call the library's own as the
// second.
extern "C" CURL* __wrap_curl_easy_init();  // NOLINT(bugprone-reserved-identifier)
extern "C" CURL* __real_curl_easy_init();  // NOLINT(bugprone-reserved-identifier)

namespace quillon::fuzz {
namespace {

constexpr std::string_view kNextConnection = "\x1E\n";
constexpr const char* kAddress = "http://127.0.0.1/form.pdf";

// What the server sends to each connection, and its ends of them.
struct Server {
  std::vector<std::string> answers;
  std::size_t next = 0;
  std::vector<int> ends;
  long pieceSize = 0;
};
Server server;

// A connection on which the whole answer is waiting. Whatever asks for more finds its end.
curl_socket_t OpenSocket(void*, curlsocktype, curl_sockaddr*) {
  int pair[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair) != 0) return CURL_SOCKET_BAD;
  if (server.next < server.answers.size()) {
    const std::string& answer = server.answers[server.next++];
    // What does not fit a socket's buffer is not sent.
    static_cast<void>(send(pair[1], answer.data(), answer.size(), MSG_DONTWAIT | MSG_NOSIGNAL));
  }
  shutdown(pair[1], SHUT_WR);
  server.ends.push_back(pair[1]);
  return pair[0];
}

// No name is looked up and nothing leaves the process.
void LeadNowhere(CURL* curl) {
  static curl_slist* const everything = curl_slist_append(nullptr, "::127.0.0.1:80");
  curl_easy_setopt(curl, CURLOPT_CONNECT_TO, everything);
  curl_easy_setopt(curl, CURLOPT_PROXY, "");
  curl_easy_setopt(curl, CURLOPT_CAINFO, nullptr);  // reading them takes longer than all the rest
  curl_easy_setopt(curl, CURLOPT_CAPATH, nullptr);
  curl_easy_setopt(curl, CURLOPT_OPENSOCKETFUNCTION, &OpenSocket);
  curl_easy_setopt(curl, CURLOPT_BUFFERSIZE, server.pieceSize);
}

const std::string& Form() {
  using test::WidgetField;
  static const std::string body = test::FormPdf(
      {
          WidgetField("Tx", "text", "/V (old)"),
          WidgetField("Btn", "box", "/AP << /N << /Yes 9 0 R /Off 9 0 R >> >> /AS /Off"),
          WidgetField("Btn", "button", "/Ff 65536 /MK << /CA (Push) >>"),
          WidgetField("Ch", "combo", "/Ff 131072 /Opt [(red) (green)]"),
          WidgetField("Ch", "list", "/Opt [[(r) (red)] [(g) (green)]]"),
      },
      {.catalogEntries = "/Send << /S /SubmitForm /F << /FS /URL /F (send) >> >>"});
  static const std::string answer =
      "HTTP/1.1 200 OK\r\nContent-Type: application/pdf\r\n"
      "Content-Length: " +
      std::to_string(body.size()) + "\r\n\r\n" + body;
  return answer;
}

std::vector<std::string> Divide(std::string_view text) {
  std::vector<std::string> parts;
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = text.find(kNextConnection);
    parts.emplace_back(text.substr(0, end));
    if (end != std::string_view::npos) text.remove_prefix(end + kNextConnection.size());
  }
  return parts;
}

void Open(DocView view, const char* url) {
  static const auto* link = static_cast<const LinkTable*>(
      core::GetTable(core::AtomFromName(kLinkTableName), kLinkVersion));
  link->OpenURL(view, url, 0);
  DeliverWaitingData();
}

void Submit(DocView view) {
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(viewer::DocOf(view)));
  const ObjectHandle action = objects::DictGet(catalog, core::AtomFromName("Send"));
  RunActions(document::ActionFromObject(action), view);
  DeliverWaitingData();
}

void Talk(bool submitting) {
  Open(nullptr, kAddress);
  const DocView view = viewer::ActiveDocView();
  Require(view != nullptr && viewer::DocIsExternal(view) != 0, "the form did not open");
  Attempt([&] { submitting ? Submit(view) : Open(view, "http://127.0.0.1/"); });
  const DocView last = viewer::ActiveDocView();
  Require(last != nullptr, "no form is open any more");
  const std::uint32_t pages = document::PageCount(viewer::DocOf(last));
  Require(PagesWhenReopened(SavedBytes(last)) >= pages, "pages were lost on the way to the file");
}

// As at the start: no documents, no files that wait for forms, no connections, no cookies.
void Tidy() {
  Attempt([] { CloseAllViews(); });
  ForgetDeliveries();
  Attempt([] { quillform::ReleasePendingImports(); });
  link::ForgetFetched();
  link::StopHttp();
  for (const int end : server.ends) close(end);
}

}  // namespace
}  // namespace quillon::fuzz

// In the place of the system's, for every library: a socket of OpenSocket is connected from the
// start, and no other gets anywhere.
extern "C" __attribute__((visibility("default"))) int connect(int, const sockaddr*, socklen_t) {
  return 0;
}

CURL* __wrap_curl_easy_init() {
  CURL* curl = __real_curl_easy_init();
  if (curl != nullptr) quillon::fuzz::LeadNowhere(curl);
  return curl;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillon;
  using namespace quillon::fuzz;
  if (size == 0) return 0;
  StartOnce(&LinkPlugInMain);
  // Counted: the library is not made ready anew for each input.
  static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
  Require(ready == CURLE_OK, "the library of the protocol cannot be used");
  server = {Divide(TextOf(data + 1, size - 1)), 0, {}, 1024L << (data[0] >> 1) % 5};
  server.answers.insert(server.answers.begin(), Form());
  link::StartHttp();
  Attempt([&] { Talk(data[0] % 2 == 0); });
  Tidy();
  return 0;
}
