#include "plugin/exchange/open_fdf.h"

#include <gtest/gtest.h>

#include "plugin/model/field_values.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/start.h"
#include "tests/plugin/exchange/data_host.h"
#include "tests/plugin/exchange/url_files.h"

namespace quillform {
namespace {

using quillon::test::FormPdf;
using quillon::test::WidgetField;

struct OpenFdfTest : DataHost {
  // As the viewer opens a file for its user.
  DocView OpenByUser(const std::string& file) {
    const OwnedPath path = PathOf(file);
    view = Viewer->OpenDocument(path.get(), nullptr, nullptr, 0);
    doc = view != nullptr ? Viewer->DocOf(view) : nullptr;
    return view;
  }

  void Type(const char* text) {
    LoadAllFields(doc);
    objects = Document->ObjectDocOf(doc);
    const ObjectHandle value = Text(text);
    SetFieldValue(Node("a"), value);
    EXPECT_EQ(ValueOf("a"), std::string("(") + text + ")");
    Objects->Destroy(value);
  }

  static std::string Form(const std::string& id = "") {
    std::string pdf = FormPdf({WidgetField("Tx", "a")});
    if (!id.empty()) pdf.replace(pdf.find("/Root"), 0, "/ID [<" + id + "> <" + id + ">] ");
    return pdf;
  }
  static std::string Data(const std::string& entries) {
    return FdfWith(entries + " /Fields [<< /T (a) /V (1) >>]");
  }
};

TEST_F(OpenFdfTest, the_form_beside_the_file_opens_with_the_data_in_it) {
  Write("form.pdf", Form());
  ASSERT_NE(OpenByUser(Write("data.fdf", Data("/F << /Type /Filespec /DOS (form.pdf) >>"))),
            nullptr);
  EXPECT_EQ(ValueOf("a"), "(1)");
  EXPECT_TRUE(messages.empty());
}

TEST_F(OpenFdfTest, data_that_names_no_form_is_told) {
  EXPECT_EQ(OpenByUser(Write("data.fdf", Data(""))), nullptr);
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0].substr(0, 26), "Unable to locate the form,");
  EXPECT_EQ(OpenByUser(Write("data.fdf", Data("/F ()"))), nullptr);
  EXPECT_EQ(messages.back(), "Invalid FDF");
}

TEST_F(OpenFdfTest, a_form_that_is_not_there_can_be_looked_for) {
  const std::string data = Write("data.fdf", Data("/F (dir/form.pdf)"));
  EXPECT_EQ(OpenByUser(data), nullptr);
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0],
            "The form \"form.pdf\", specified within FDF, was not found. Would you like to browse "
            "for it?");
  EXPECT_EQ(questions, 0);
  answer = quillon::kAnswerYes;
  chosenFile = Write("elsewhere.pdf", Form());
  ASSERT_NE(OpenByUser(data), nullptr);
  EXPECT_EQ(ValueOf("a"), "(1)");
}

TEST_F(OpenFdfTest, another_version_of_the_form_is_closed_again_and_asked_about) {
  Write("form.pdf", Form("0102"));
  const std::string data = Write("data.fdf", Data("/F (form.pdf) /ID [<0304> <0304>]"));
  EXPECT_EQ(OpenByUser(data), nullptr);
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_NE(messages[0].find("has a different version"), std::string::npos);
  EXPECT_EQ(Viewer->ActiveDocView(), nullptr);
  answer = quillon::kAnswerYes;
  chosenFile = Write("right.pdf", Form("0304"));
  ASSERT_NE(OpenByUser(data), nullptr);
  EXPECT_EQ(ValueOf("a"), "(1)");
}

TEST_F(OpenFdfTest, data_that_names_data_or_something_else_as_its_form_opens_nothing) {
  Write("text.pdf", "no form");
  for (const char* form : {"/F (data.fdf)", "/F (text.pdf)"}) {
    messages.clear();
    EXPECT_EQ(OpenByUser(Write("data.fdf", Data(form))), nullptr);
    EXPECT_EQ(messages.size(), 1u) << form;
    EXPECT_EQ(Viewer->ActiveDocView(), nullptr);
  }
}

TEST_F(OpenFdfTest, a_form_that_cannot_take_the_data_is_closed_again) {
  Write("form.pdf", Form());
  EXPECT_EQ(OpenByUser(Write("data.fdf", FdfWith("/F (form.pdf) /Fields [7]"))), nullptr);
  EXPECT_EQ(messages, std::vector<std::string>{"Invalid FDF"});
  EXPECT_EQ(Viewer->ActiveDocView(), nullptr);
}

// What the link plug-in was asked to open.
std::vector<std::string> linked;

FailureCode NoteUrl(DocView, const char* url, std::uint32_t) {
  linked.emplace_back(url);
  return quillon::kErrorNone;
}

struct WebForms : OpenFdfTest {
  WebForms() {
    linked.clear();
    link.OpenURL = &NoteUrl;
    Link = &link;
  }
  ~WebForms() override { Link = nullptr; }

  static constexpr const char* kUrl = "http://host/form.pdf";

  DocView OpenForm() {
    view = urls.Open(kUrl, Form());
    doc = Viewer->DocOf(view);
    return view;
  }

  quillon::LinkTable link{};
  UrlFiles urls;
};

TEST_F(WebForms, data_for_a_form_that_is_shown_fills_it_and_is_used_up) {
  const DocView shown = OpenForm();
  const std::string data = Write("data.fdf", Data("/F (http://host/form.pdf)"));
  EXPECT_EQ(OpenByUser(data), shown);
  EXPECT_EQ(ValueOf("a"), "(1)");
  EXPECT_FALSE(Exists(data));
  EXPECT_TRUE(linked.empty());
}

TEST_F(WebForms, data_that_does_more_than_filling_waits_for_the_next_time) {
  OpenForm();
  const std::string data =
      Write("data.fdf", FdfWith("/F (http://host/form.pdf) /Fields [<< /T (a) /SetFf 2 >>]"));
  ASSERT_EQ(OpenByUser(data), view);
  EXPECT_EQ(GetFieldFlags(Node("a"), 1), 2u);
  EXPECT_TRUE(Exists(data));
  for (int time = 0; time < 2; ++time) {
    Viewer->CloseView(view);
    OpenForm();
    EXPECT_EQ(GetFieldFlags(Node("a"), 1), 2u);
  }
  EXPECT_TRUE(Exists(data));
}

TEST_F(WebForms, data_for_a_form_that_is_not_shown_waits_while_the_link_plug_in_opens_it) {
  const std::string data = Write("data.fdf", Data("/F (http://host/form.pdf)"));
  EXPECT_EQ(OpenByUser(data), nullptr);
  EXPECT_EQ(linked, std::vector<std::string>{kUrl});
  OpenForm();
  EXPECT_EQ(ValueOf("a"), "(1)");
  EXPECT_FALSE(Exists(data));
  // A scheme in capital letters is a file's name.
  EXPECT_EQ(OpenByUser(Write("data.fdf", Data("/F (HTTP://host/form.pdf)"))), nullptr);
  EXPECT_EQ(linked.size(), 1u);
  EXPECT_EQ(messages.size(), 1u);
}

TEST_F(WebForms, waiting_data_that_does_not_fit_is_dropped) {
  const std::string other = Write("other.fdf", Data("/F (http://host/form.pdf) /ID [(x) (y)]"));
  const std::string broken = Write("broken.fdf", FdfWith("/F (http://host/form.pdf) /Fields 7"));
  OpenByUser(other);
  OpenByUser(broken);
  view = urls.Open(kUrl, Form("0102"));
  doc = Viewer->DocOf(view);
  EXPECT_EQ(ValueOf("a"), "null");
  EXPECT_FALSE(Exists(other));
  EXPECT_FALSE(Exists(broken));
}

TEST_F(WebForms, values_come_back_when_the_same_address_opens_again) {
  OpenForm();
  Type("typed");
  Viewer->CloseView(view);
  OpenForm();
  EXPECT_EQ(ValueOf("a"), "(typed)");
  Viewer->CloseView(view);
  view = urls.Open("http://host/other.pdf", Form());
  doc = Viewer->DocOf(view);
  EXPECT_EQ(ValueOf("a"), "null");
}

TEST_F(WebForms, nothing_is_kept_of_a_form_that_is_not_in_a_browser) {
  const std::string file = Write("form.pdf", Form());
  for (const char* expected : {"null", "null"}) {
    OpenByUser(file);
    EXPECT_EQ(ValueOf("a"), expected);
    Type("typed");
    Viewer->CloseView(view);
  }
}

}  // namespace
}  // namespace quillform
