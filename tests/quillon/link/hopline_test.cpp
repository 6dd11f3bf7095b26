// The real plug-in, loaded into a host, against a server on the loopback.
#include <gtest/gtest.h>

#include <algorithm>

#include "quillon/core/host.h"
#include "quillon/core/operations.h"
#include "quillon/core/report.h"
#include "quillon/document/operations.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "quillon/viewer/deliveries.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "sdk/link_table.h"
#include "tests/support/form_pdf.h"
#include "tests/support/loopback_server.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::HttpAnswer;
using test::HttpRequest;
using test::LoopbackServer;

const std::string kFdf = "%FDF-1.2\n" + std::string(80, '%') + "\n";
constexpr const char* kFdfType = "Content-Type: application/vnd.fdf\r\n";

Boolean Receive(const void*, std::uint32_t, DocView) { return 1; }
constexpr DataHandlerRecord kReceiver = {sizeof(DataHandlerRecord), &Receive};

std::vector<std::string> watched;
void WillRequest(void*, const char* method, const char* url) {
  watched.push_back(std::string(method) + " " + url);
}
constexpr LinkWatcher kWatcher = {sizeof(LinkWatcher), nullptr, &WillRequest,
                                  [](void*, const char*, const char*, FailureCode) {}};

std::string TextOf(FailureCode code) {
  char text[133];
  return support::ErrorText(code, text, sizeof text);
}

struct HoplineTest : testing::Test {
  HoplineTest() {
    watched.clear();
    SetReporter([this](const std::string& text) { reported += text; });
    LoadPlugIn(HOPLINE_MODULE);
    InitialisePlugIns();
    viewer::RegisterDataHandler(1, core::AtomFromName("FDF"), &kReceiver);
    link =
        static_cast<LinkTable*>(core::GetTable(core::AtomFromName(kLinkTableName), kLinkVersion));
    urls = support::FileSystemByName(core::AtomFromName(kUrlFileSystemName));
    link->Watch(&kWatcher);
  }
  ~HoplineTest() override { SetReporter({}); }

  FailureCode OpenURL(const std::string& url) {
    return CallGuarded([&] { return link->OpenURL(nullptr, url.c_str(), 0); });
  }

  // Writes to the address and closes it: what goes wrong, or "".
  std::string Send(const std::string& url, const std::string& body = "a=1&b=2") {
    return SendText(url, "Content-Type: application/x-www-form-urlencoded\nContent-Length: " +
                             std::to_string(body.size()) + "\n\n" + body);
  }

  std::string SendText(const std::string& url, const std::string& text) {
    const PathHandle path = support::NewPath(urls, url.c_str(), nullptr);
    FileHandle file = nullptr;
    EXPECT_EQ(support::OpenFile(path, kOpenWrite, &file), kErrorNone);
    support::ReleasePath(path);
    const auto size = static_cast<std::uint32_t>(text.size());
    EXPECT_EQ(support::WriteFile(file, text.data(), size), size);
    EXPECT_EQ(support::FilePosition(file), size);
    const FailureCode code = support::CloseFile(file);
    return code == kErrorNone ? "" : TextOf(code);
  }

  std::string reported;
  test::TestHost host;
  LinkTable* link = nullptr;
  FileSystemHandle urls = nullptr;
};

std::string FormBytes() { return test::FormPdf({test::WidgetField("Tx", "name")}); }

std::string FullPath(DocHandle doc) {
  const PathHandle path = support::FilePath(document::FileOf(doc));
  std::string text = PathString(path);
  support::ReleasePath(path);
  return text;
}

TEST_F(HoplineTest, a_large_body_arrives_whole) {
  std::string body;
  for (int i = 0; body.size() < 3000000; ++i) body += std::to_string(i) + '&';
  LoopbackServer server([](const HttpRequest&) { return HttpAnswer("204 No Content", "", ""); });
  EXPECT_EQ(Send(server.Url("/"), body), "") << "a server may have nothing to say";
  EXPECT_TRUE(server.Requests().at(0).body == body);
  EXPECT_EQ(DeliverWaitingData().used, 0u);
}

TEST_F(HoplineTest, a_form_that_is_not_whole_is_never_sent) {
  LoopbackServer server([](const HttpRequest&) { return HttpAnswer("200 OK", kFdfType, kFdf); });
  EXPECT_NE(SendText(server.Url("/"), "Content-Length: 9\n\na=1"), "");
  EXPECT_NE(SendText(server.Url("/"), "Content-Length: 9\n"), "");
  EXPECT_TRUE(server.Requests().empty());
}

struct BadAnswer {
  const char* what;
  std::string answer;
  const char* text;  // that the failure must have in it
};

TEST_F(HoplineTest, every_unusable_answer_says_why) {
  const std::string pdfType = "Content-Type: application/pdf\r\n";
  const BadAnswer cases[] = {
      {"an error", HttpAnswer("404 Not Found", kFdfType, kFdf), "status 404"},
      {"no type", HttpAnswer("200 OK", "", "hello"), "of no known type"},
      {"a type to make a mess",
       HttpAnswer("200 OK", "Content-Type: a\x1b[2J" + std::string(300, 'b') + "\r\n", "x"),
       "of the type a?[2jbbb"},
      {"nothing", "", "without an answer"},
      {"another protocol", "SSH-2.0-x\r\n", "not one of the web's"},
      {"a cut body", "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\nabc", "before the server's"},
      {"a bad length", "HTTP/1.1 200 OK\r\nContent-Length: -7\r\n\r\nabc", "answer"},
      {"too much", "HTTP/1.1 200 OK\r\nContent-Length: 5000000000\r\n\r\nabc", "larger than"},
      {"endless headers",
       "HTTP/1.1 200 OK\r\n" +
           [] {
             std::string lines;
             for (int i = 0; i < 2000; ++i) lines += "X-Header: " + std::string(60, 'x') + "\r\n";
             return lines;
           }() +
           "\r\n",
       "larger than"},
      {"a file of this machine", HttpAnswer("302 Found", "Location: file:///etc/passwd\r\n", ""),
       "cannot be used"},
      {"a circle", HttpAnswer("307 Again", "Location: /\r\n", ""), "without end"},
  };
  for (const BadAnswer& bad : cases) {
    LoopbackServer server([&](const HttpRequest&) { return bad.answer; });
    EXPECT_NE(Send(server.Url("/")).find(bad.text), std::string::npos)
        << bad.what << ": " << Send(server.Url("/"));
    EXPECT_NE(TextOf(OpenURL(server.Url("/"))).find(bad.text), std::string::npos) << bad.what;
  }
  LoopbackServer damaged(
      [&](const HttpRequest&) { return HttpAnswer("200 OK", pdfType, "%PDF-1.4 and no more"); });
  EXPECT_NE(TextOf(OpenURL(damaged.Url("/"))).find("cannot be opened"), std::string::npos);
  EXPECT_NE(reported, "") << "why it cannot";
  EXPECT_EQ(DeliverWaitingData().used, 0u);
  EXPECT_EQ(viewer::ActiveDocView(), nullptr);
}

TEST_F(HoplineTest, servers_that_refuse_or_say_nothing_do_not_hold_up_the_viewer) {
  EXPECT_NE(Send(test::RefusingUrl()).find("refuses"), std::string::npos);
  EXPECT_NE(TextOf(OpenURL("http://no-such-host.invalid/")).find("no server of that name"),
            std::string::npos);
  LoopbackServer server([](const HttpRequest&) { return std::nullopt; });
  CallGuarded([&] { link->SetTimeLimit(1); });
  EXPECT_NE(Send(server.Url("/")).find("in time"), std::string::npos);
}

TEST_F(HoplineTest, redirections_are_followed_as_the_protocol_says) {
  LoopbackServer server([](const HttpRequest& request) {
    if (request.line.find(" /again") != std::string::npos) {
      return HttpAnswer("307 Temporary Redirect", "Location: /here\r\n", "");
    }
    if (request.line.find(" /done") != std::string::npos) {
      return HttpAnswer("303 See Other", "Location: /here\r\n", "");
    }
    return HttpAnswer("200 OK", kFdfType, kFdf);
  });
  EXPECT_EQ(Send(server.Url("/again")), "");
  EXPECT_EQ(Send(server.Url("/done")), "");
  const std::vector<HttpRequest> requests = server.Requests();
  ASSERT_EQ(requests.size(), 4u);
  EXPECT_EQ(requests[1].line, "POST /here HTTP/1.1");
  EXPECT_EQ(requests[1].body, "a=1&b=2");
  EXPECT_EQ(requests[3].line, "GET /here HTTP/1.1");
  EXPECT_EQ(requests[3].body, "");
  EXPECT_EQ(std::count(watched.begin(), watched.end(), "POST " + server.Url("/here")), 1);
}

TEST_F(HoplineTest, relative_addresses_start_where_a_document_really_came_from) {
  LoopbackServer server([](const HttpRequest& request) {
    if (request.line.find(" /old.pdf") == std::string::npos) {
      return HttpAnswer("200 OK", "", FormBytes());
    }
    return HttpAnswer("301 Moved", "Location: /forms/new.pdf\r\n", "");
  });
  ASSERT_EQ(OpenURL(server.Url("/old.pdf")), kErrorNone);
  const DocHandle doc = viewer::DocOf(viewer::ActiveDocView());
  EXPECT_EQ(FullPath(doc), server.Url("/old.pdf")) << "the address that was asked for";
  const PathHandle base = support::FilePath(document::FileOf(doc));
  const PathHandle path = support::NewPath(urls, "send.cgi", base);
  EXPECT_EQ(PathString(path), server.Url("/forms/send.cgi"));
  for (const PathHandle done : {path, base}) support::ReleasePath(done);
}

TEST_F(HoplineTest, a_server_recognises_who_fetched_the_form) {
  LoopbackServer server([](const HttpRequest&) {
    return HttpAnswer("200 OK", std::string("Set-Cookie: id=7\r\n") + kFdfType, kFdf);
  });
  EXPECT_EQ(OpenURL(server.Url("/form.fdf")), kErrorNone);
  EXPECT_EQ(Send(server.Url("/send")), "");
  EXPECT_NE(server.Requests().at(1).headers.find("Cookie: id=7"), std::string::npos);
}

}  // namespace
}  // namespace quillon
