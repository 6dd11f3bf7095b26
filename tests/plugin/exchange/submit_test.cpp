#include "plugin/exchange/submit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "quillon/objects/pdf_file.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "quillon/viewer/messages.h"
#include "quillon/viewer/open_view.h"
#include "tests/plugin/exchange/url_files.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

using quillon::test::kFirstField;
using quillon::test::WidgetField;

std::vector<std::string> temporaryPaths;

quillon::PathHandle TempPathNoted(quillon::FileSystemHandle fileSystem) {
  const PathHandle path = quillon::support::TempPath(fileSystem);
  temporaryPaths.push_back(quillon::PathString(path));
  return path;
}

bool Exists(const std::string& file) {
  const PathHandle path = quillon::PathOf(file);
  FileHandle opened = nullptr;
  const bool exists = quillon::support::OpenFile(path, quillon::kOpenRead, &opened) == 0;
  if (exists) quillon::support::CloseFile(opened);
  quillon::support::ReleasePath(path);
  return exists;
}

struct SubmitTest : ModelHost {
  SubmitTest() : support(*Support), hostSupport(Support) {
    temporaryPaths.clear();
    support.TempPath = &TempPathNoted;
    Support = &support;
    quillon::SetMessageRoutine([this](const quillon::Message& message) {
      messages.push_back(message.text);
      return std::uint32_t{quillon::kAnswerOk};
    });
  }
  ~SubmitTest() override {
    for (const std::string& file : temporaryPaths) EXPECT_FALSE(Exists(file)) << "left behind";
    Support = hostSupport;
  }

  static std::string Form(const std::string& actionEntries, const std::string& mustEntries = "") {
    return quillon::test::FormPdf(
        {WidgetField("Tx", "city", "/V (a b&c) /Parent 18 0 R"),
         WidgetField("Tx", "pin", "/Ff 8192 /V (7)"), WidgetField("Tx", "kept", "/Ff 4 /V (x)"),
         WidgetField("Tx", "empty"), WidgetField("Btn", "ok", "/V /Yes"), WidgetField("Btn", "off"),
         WidgetField("Tx", "must", "/Ff 2 " + (mustEntries.empty() ? "/V (1)" : mustEntries)),
         WidgetField("Btn", "send",
                     "/Ff 65536 /A << /S /SubmitForm /F << /FS /URL /F (send.cgi) >> " +
                         actionEntries + " >>"),
         "/T (addr) /Kids [10 0 R]"});
  }

  void OpenInBrowser(const std::string& pdf) {
    view = urls.Open("http://host/form.pdf", pdf);
    doc = Viewer->DocOf(view);
  }

  void PressSend() {
    const ObjectHandle button =
        quillon::ObjectByNumber(Document->ObjectDocOf(doc), kFirstField + 7);
    const ObjectHandle action = Objects->DictGet(button, Core->AtomFromName("A"));
    PerformSubmitForm(Document->ActionFromObject(action), view);
  }

  // What a form with this action sends, without the header; the pairs in alphabetical order.
  std::string SentBy(const std::string& actionEntries) {
    OpenInBrowser(Form(actionEntries));
    urls.sent.clear();
    PressSend();
    if (urls.sent.size() != 1 || !urls.sent[0].closed) return "(not sent)";
    const std::string text = urls.sent[0].Text();
    return text.substr(text.find("\n\n") + 2);
  }

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
  std::vector<std::string> messages;
};

using Pairs = std::vector<std::string>;

TEST_F(SubmitTest, pairs_are_sent_of_every_field_that_has_a_value_and_may_be_sent) {
  EXPECT_EQ(SentPairs("/Flags 4"), (Pairs{"addr%2ecity=a+b%26c", "must=1", "ok=Yes"}));
  EXPECT_EQ(urls.sent[0].url, "http://host/send.cgi");
  const std::string header =
      "Content-Type: application/x-www-form-urlencoded\nContent-Length: 33\n";
  EXPECT_EQ(urls.sent[0].Text().substr(0, header.size()), header);
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(temporaryPaths.size(), 1u);
}

TEST_F(SubmitTest, the_list_and_the_flags_decide_what_is_sent) {
  const std::string list = "/Fields [16 0 R 10 0 R 11 0 R 99 0 R (text)] ";
  EXPECT_EQ(SentBy(list + "/Flags 4"), "must=1&addr%2ecity=a+b%26c") << "in the list's order";
  EXPECT_EQ(SentPairs(list + "/Flags 5"), Pairs{"ok=Yes"}) << "all but the listed ones";
  EXPECT_EQ(SentPairs("/Flags 6"),
            (Pairs{"addr%2ecity=a+b%26c", "empty=", "must=1", "off=", "ok=Yes", "send="}));
}

TEST_F(SubmitTest, a_form_that_no_browser_shows_is_not_sent) {
  doc = quillon::test::OpenTestDocument(Form("/Flags 4"));
  view = quillon::OpenViewOfDocument(doc);
  PressSend();
  EXPECT_EQ(messages,
            Pairs{"You need to be running inside a web browser in order to submit this form"});
  EXPECT_TRUE(urls.sent.empty());
  EXPECT_TRUE(temporaryPaths.empty());
}

TEST_F(SubmitTest, failures_are_told_and_nothing_stays_behind) {
  const quillon::CursorHandle cursor = Viewer->CurrentCursor();
  urls.openFailure = quillon::kErrorOpenFile;
  for (const char* flags : {"/Flags 4", ""}) {
    messages.clear();
    EXPECT_EQ(SentBy(flags), "(not sent)");
    EXPECT_EQ(messages, Pairs{"Error opening URL to submit this form"});
  }
  urls.openFailure = 0;
  urls.closeFailure = Support->RegisterErrorString(quillon::kSeverityError, "The server is tired.");
  messages.clear();
  SentBy("/Flags 4");
  EXPECT_EQ(messages, Pairs{"The server is tired."});
  EXPECT_EQ(temporaryPaths.size(), 3u);
  EXPECT_EQ(Viewer->CurrentCursor(), cursor);
}

TEST_F(SubmitTest, a_temporary_file_that_cannot_be_made_is_told) {
  support.TempPath = [](quillon::FileSystemHandle) {
    return quillon::PathOf("no-such-folder/no-such-file");
  };
  for (const char* flags : {"/Flags 4", ""}) {
    messages.clear();
    EXPECT_EQ(SentBy(flags), "(not sent)");
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0], "The file cannot be opened.");
  }
}

}  // namespace
}  // namespace quillform
