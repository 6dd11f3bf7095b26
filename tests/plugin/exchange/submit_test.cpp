#include "plugin/exchange/submit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "plugin/exchange/action_handlers.h"
#include "plugin/model/keys.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "quillon/viewer/open_view.h"
#include "tests/plugin/exchange/data_host.h"
#include "tests/plugin/exchange/url_files.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

std::vector<std::string> temporaryPaths;

quillon::PathHandle TempPathNoted(quillon::FileSystemHandle fileSystem) {
  const PathHandle path = quillon::support::TempPath(fileSystem);
  temporaryPaths.push_back(quillon::PathString(path));
  return path;
}

struct SubmitTest : DataHost {
  SubmitTest() : support(*Support), hostSupport(Support) {
    temporaryPaths.clear();
    support.TempPath = &TempPathNoted;
    Support = &support;
  }
  ~SubmitTest() override {
    for (const std::string& file : temporaryPaths) EXPECT_FALSE(Exists(file)) << "left behind";
    Support = hostSupport;
  }

  static std::string Form(const std::string& actionEntries, const std::string& must = "1",
                          const std::string& target = "/F << /FS /URL /F (send.cgi) >> ") {
    return quillon::test::FormPdf(
        {WidgetField("Tx", "city", "/V (a b&c) /Parent 18 0 R"),
         WidgetField("Tx", "pin", "/Ff 8192 /V (7)"), WidgetField("Tx", "kept", "/Ff 4 /V (x)"),
         WidgetField("Tx", "empty"), WidgetField("Btn", "ok", "/V /Yes"), WidgetField("Btn", "off"),
         WidgetField("Tx", "must", "/Ff 2 /V (" + must + ")"),
         WidgetField("Btn", "send", "/Ff 65536"), "/T (addr) /Kids [10 0 R]"},
        {.objects = {"<< /S /SubmitForm " + target + actionEntries + " >>"}});
  }
  void PressSend() { PerformSubmitForm(Action(9), view); }

  // What the form sends from a browser, without the header.
  std::string SentFrom(const std::string& form) {
    view = urls.Open("http://host/forms/form.pdf", form);
    doc = Viewer->DocOf(view);
    urls.sent.clear();
    messages.clear();
    PressSend();
    if (urls.sent.size() != 1 || !urls.sent[0].closed) return "(not sent)";
    const std::string text = urls.sent[0].Text();
    return text.substr(text.find("\n\n") + 2);
  }
  std::string SentBy(const std::string& actionEntries) { return SentFrom(Form(actionEntries)); }

  // The pairs in alphabetical order.
  std::vector<std::string> SentPairs(const std::string& actionEntries) {
    std::vector<std::string> pairs;
    std::istringstream text(SentBy(actionEntries));
    for (std::string pair; std::getline(text, pair, '&');) pairs.push_back(pair);
    std::sort(pairs.begin(), pairs.end());
    return pairs;
  }

  quillon::SupportTable support;
  quillon::SupportTable* hostSupport;
  UrlFiles urls;
};

using Texts = std::vector<std::string>;

TEST_F(SubmitTest, pairs_are_sent_of_every_field_that_has_a_value_and_may_be_sent) {
  EXPECT_EQ(SentPairs("/Flags 4"), (Texts{"addr%2ecity=a+b%26c", "must=1", "ok=Yes"}));
  EXPECT_EQ(urls.sent[0].url, "http://host/forms/send.cgi");
  const std::string header =
      "Content-Type: application/x-www-form-urlencoded\nContent-Length: 33\n";
  EXPECT_EQ(urls.sent[0].Text().substr(0, header.size()), header);
  EXPECT_EQ(urls.sent[0].pieces.size(), 1u) << "a short form is one write";
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(temporaryPaths.size(), 1u);
}

TEST_F(SubmitTest, a_long_form_is_sent_whole_in_pieces) {
  // With the header and the other pairs there are 2049 bytes, two whole pieces, and one byte more.
  for (const std::size_t size : {1947u, 1948u, 1949u}) {
    const std::string value(size, 'x');
    const std::string body = SentFrom(Form("/Flags 4", value));
    EXPECT_NE(body.find("must=" + value), std::string::npos);
    EXPECT_EQ(body.size(), 32 + size);
    EXPECT_EQ(urls.sent[0].pieces.size(), size == 1949u ? 3u : 2u);
  }
}

TEST_F(SubmitTest, the_list_and_the_flags_decide_what_is_sent) {
  const std::string list = "/Fields [16 0 R 10 0 R 11 0 R 99 0 R (text)] ";
  EXPECT_EQ(SentBy(list + "/Flags 4"), "must=1&addr%2ecity=a+b%26c") << "in the list's order";
  EXPECT_EQ(SentPairs(list + "/Flags 5"), Texts{"ok=Yes"}) << "all but the listed ones";
  EXPECT_EQ(SentPairs("/Flags 6"),
            (Texts{"addr%2ecity=a+b%26c", "empty=", "must=1", "off=", "ok=Yes", "send="}));
}

TEST_F(SubmitTest, is_offered_only_with_a_link_plug_in) {
  EXPECT_EQ(Viewer->ActionHandlerOf(key::SubmitForm), nullptr);
  quillon::LinkTable table{};
  auto* const before = std::exchange(Link, &table);
  RegisterDataActionHandlers();
  Link = before;
  EXPECT_NE(Viewer->ActionHandlerOf(key::SubmitForm), nullptr);
}

TEST_F(SubmitTest, a_form_that_no_browser_shows_is_not_sent) {
  doc = quillon::test::OpenTestDocument(Form("/Flags 4"));
  view = quillon::OpenViewOfDocument(doc);
  PressSend();
  EXPECT_EQ(messages,
            Texts{"You need to be running inside a web browser in order to submit this form"});
  EXPECT_TRUE(urls.sent.empty());
  EXPECT_TRUE(temporaryPaths.empty());
}

TEST_F(SubmitTest, failures_are_told_and_nothing_stays_behind) {
  const quillon::CursorHandle cursor = Viewer->CurrentCursor();
  const Texts noAddress{"Error opening URL to submit this form"};
  for (const char* target : {"", "/F << /FS /URL /F (ftp://elsewhere) >> "}) {
    EXPECT_EQ(SentFrom(Form("/Flags 4", "1", target)), "(not sent)");
    EXPECT_EQ(messages, noAddress);
  }
  urls.openFailure = quillon::kErrorOpenFile;
  for (const char* flags : {"/Flags 4", ""}) {
    EXPECT_EQ(SentBy(flags), "(not sent)");
    EXPECT_EQ(messages, noAddress);
  }
  urls.openFailure = 0;
  urls.closeFailure = Support->RegisterErrorString(quillon::kSeverityError, "The server is tired.");
  SentBy("/Flags 4");
  EXPECT_EQ(messages, Texts{"The server is tired."});
  urls.room = 10;
  SentBy("/Flags 4");
  EXPECT_EQ(messages.size(), 1u) << "the line broke";
  EXPECT_TRUE(urls.sent[0].closed);
  EXPECT_EQ(temporaryPaths.size(), 6u);
  EXPECT_EQ(Viewer->CurrentCursor(), cursor);
}

TEST_F(SubmitTest, a_temporary_file_that_cannot_be_made_is_told) {
  support.TempPath = [](quillon::FileSystemHandle) {
    return quillon::PathOf("no-such-folder/no-such-file");
  };
  for (const char* flags : {"/Flags 4", ""}) {
    EXPECT_EQ(SentBy(flags), "(not sent)");
    EXPECT_EQ(messages, Texts{"The file cannot be opened."});
  }
}

}  // namespace
}  // namespace quillform
