#include "plugin/exchange/fdf_answer.h"

#include <gtest/gtest.h>

#include "plugin/model/field_values.h"
#include "quillon/core/operations.h"
#include "quillon/viewer/messages.h"
#include "quillon/viewer/operations.h"
#include "tests/plugin/exchange/url_files.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

using quillon::test::FormPdf;
using quillon::test::WidgetField;

UrlFiles* web = nullptr;
std::vector<std::string> opened;  // addresses
FailureCode linkFailure = 0;

FailureCode OpenURL(DocView, const char* url, std::uint32_t) {
  opened.emplace_back(url);
  if (linkFailure != 0) return linkFailure;
  return web->Open(url, FormPdf({WidgetField("Tx", "name")})) != nullptr ? 0 : 1;
}

std::string Fdf(const std::string& entries) {
  return "%FDF-1.2\n1 0 obj\n<< /FDF << " + entries +
         " >> >>\nendobj\ntrailer\n<< /Root 1 0 R >>\n%%EOF\n";
}

struct FdfAnswer : ModelHost {
  FdfAnswer() : link{1, &OpenURL, nullptr, nullptr}, before(Link) {
    web = &urls;
    opened.clear();
    linkFailure = 0;
    Link = &link;
    quillon::SetMessageRoutine([this](const quillon::Message& message) {
      messages.push_back(message.text);
      return std::uint32_t{quillon::kAnswerOk};
    });
    OpenForm();
  }
  ~FdfAnswer() override { Link = before; }

  void OpenForm() {
    view = urls.Open("http://host/forms/a.pdf", FormPdf({WidgetField("Tx", "name")}));
    doc = Viewer->DocOf(view);
  }

  bool Answer(const std::string& bytes) { return AnswerFor(view, bytes); }
  bool AnswerFor(DocView target, const std::string& bytes) {
    return FDFDataHandler(bytes.data(), static_cast<std::uint32_t>(bytes.size()), target) != 0;
  }

  std::string Value(DocView shown) {
    LoadAllFields(Viewer->DocOf(shown));
    const ObjectHandle value = GetFieldValue(FindFieldByName(Viewer->DocOf(shown), "name"));
    return IsKind(value, ObjectKind::kString) ? Objects->StringValue(value, nullptr) : "(none)";
  }

  quillon::LinkTable link;
  quillon::LinkTable* before;
  UrlFiles urls;
  std::vector<std::string> messages;
};

using Texts = std::vector<std::string>;

TEST_F(FdfAnswer, what_cannot_be_form_data_is_a_failed_submission) {
  const std::string empty = Fdf("");
  ASSERT_LT(empty.size(), 80u);
  EXPECT_FALSE(Answer(std::string(73, '%')));
  EXPECT_FALSE(AnswerFor(nullptr, Fdf("/Fields [<< /T (name) /V (Ann) >>]")));
  EXPECT_EQ(messages, (Texts{"Submission of the form failed.", "Submission of the form failed."}));
  messages.clear();
  EXPECT_FALSE(Answer("<html>" + std::string(100, ' ')));
  EXPECT_FALSE(
      Answer("%FDF-1.2\n1 0 obj\n<< /Other 1 >>\nendobj\ntrailer\n<< /Root 1 0 R >>\n%%EOF"
             "                    "));
  EXPECT_FALSE(Answer(Fdf("/Fields [<< /V (no name at all here) >>]")));
  ASSERT_EQ(messages.size(), 3u);
  EXPECT_EQ(messages[0].find("%PDF"), std::string::npos) << messages[0];
  EXPECT_EQ(messages[1], "Invalid FDF");
  EXPECT_EQ(messages[2], "Invalid FDF");
  EXPECT_EQ(Value(view), "(none)");
}

TEST_F(FdfAnswer, data_for_another_form_waits_until_that_is_opened) {
  EXPECT_TRUE(Answer(Fdf("/F (b.pdf) /Fields [<< /T (name) /V (Bea) >>]")));
  EXPECT_EQ(opened, Texts{"http://host/forms/b.pdf"});
  EXPECT_EQ(Value(view), "(none)");
  EXPECT_EQ(Value(Viewer->ActiveDocView()), "Bea");

  EXPECT_TRUE(AnswerFor(view, Fdf("/F << /FS /URL /F (http://other/c.pdf) >> /Fields []")));
  EXPECT_EQ(opened.back(), "http://other/c.pdf");
}

TEST_F(FdfAnswer, a_server_does_not_name_files_of_this_machine) {
  for (const char* form : {"(/etc/passwd)", "<< /F (/etc/passwd) >>", "(file:///etc/passwd)"}) {
    Answer(Fdf(std::string("/F ") + form + " /Fields [<< /T (name) /V (Ann) >>]"));
  }
  for (const std::string& address : opened) EXPECT_EQ(address.rfind("http://host/", 0), 0u);
  EXPECT_EQ(messages, Texts{"Submission of the form failed."}) << "for the last of them";
}

TEST_F(FdfAnswer, a_form_that_cannot_be_opened_is_told) {
  linkFailure = Support->RegisterErrorString(quillon::kSeverityError, "The server is away.");
  Answer(Fdf("/F (b.pdf) /Fields [<< /T (name) /V (Bea) >>]"));
  EXPECT_EQ(messages, Texts{"The server is away."});
}

}  // namespace
}  // namespace quillform
