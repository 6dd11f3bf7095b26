#include "plugin/exchange/fdf_answer.h"

#include <gtest/gtest.h>

#include "plugin/model/field_values.h"
#include "quillon/core/operations.h"
#include "quillon/viewer/operations.h"
#include "tests/plugin/exchange/data_host.h"
#include "tests/plugin/exchange/url_files.h"

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

struct FdfAnswer : DataHost {
  FdfAnswer() : link{1, &OpenURL, nullptr, nullptr}, before(Link) {
    web = &urls;
    opened.clear();
    linkFailure = 0;
    Link = &link;
    view = urls.Open("http://host/forms/a.pdf", FormPdf({WidgetField("Tx", "name")}));
  }
  ~FdfAnswer() override { Link = before; }

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
};

using Texts = std::vector<std::string>;

TEST_F(FdfAnswer, what_cannot_be_form_data_is_a_failed_submission) {
  EXPECT_FALSE(Answer(std::string(73, '%')));
  EXPECT_FALSE(AnswerFor(nullptr, FdfWith("/Fields [<< /T (name) /V (Ann) >>]")));
  EXPECT_EQ(messages, (Texts{"Submission of the form failed.", "Submission of the form failed."}));
  messages.clear();
  EXPECT_FALSE(Answer("<html>" + std::string(100, ' ')));
  EXPECT_FALSE(Answer(FdfWith("/Fields [<< /V (no name at all here) >>]")));
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[0].find("%PDF"), std::string::npos) << messages[0];
  EXPECT_EQ(messages[1], "Invalid FDF");
}

TEST_F(FdfAnswer, data_for_another_form_waits_until_that_is_opened) {
  EXPECT_TRUE(Answer(FdfWith("/F (b.pdf) /Fields [<< /T (name) /V (Bea) >>]")));
  EXPECT_EQ(opened, Texts{"http://host/forms/b.pdf"});
  EXPECT_EQ(Value(view), "(none)");
  EXPECT_EQ(Value(Viewer->ActiveDocView()), "Bea");

  EXPECT_TRUE(Answer(FdfWith("/F << /FS /URL /F (http://other/c.pdf) >> /Fields []")));
  EXPECT_EQ(opened.back(), "http://other/c.pdf");
}

TEST_F(FdfAnswer, a_server_does_not_name_files_of_this_machine) {
  for (const char* form : {"(/etc/passwd)", "<< /F (/etc/passwd) >>", "(file:///etc/passwd)"}) {
    Answer(FdfWith(std::string("/F ") + form + " /Fields [<< /T (name) /V (Ann) >>]"));
  }
  for (const std::string& address : opened) EXPECT_EQ(address.rfind("http://host/", 0), 0u);
  EXPECT_EQ(messages, Texts{"Submission of the form failed."}) << "for the last of them";
}

TEST_F(FdfAnswer, a_form_that_cannot_be_opened_is_told) {
  linkFailure = Support->RegisterErrorString(quillon::kSeverityError, "The server is away.");
  Answer(FdfWith("/F (b.pdf) /Fields [<< /T (name) /V (Bea) >>]"));
  EXPECT_EQ(messages, Texts{"The server is away."});
}

}  // namespace
}  // namespace quillform
