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
    SetFieldValue(Node("a"), Text(text));
    EXPECT_EQ(ValueOf("a"), std::string("(") + text + ")");
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

TEST_F(OpenFdfTest, data_without_a_form_that_takes_it_opens_nothing_and_tells_why) {
  Write("form.pdf", Form());
  Write("text.pdf", "no form");
  const struct {
    const char* entries;
    const char* message;  // its start
  } cases[] = {{"", "Unable to locate the form,"},
               {"/F () /Fields []", "Invalid FDF"},
               {"/F (data.fdf) /Fields []", ""},
               {"/F (text.pdf) /Fields []", ""},
               {"/F (form.pdf) /Fields [7]", "Invalid FDF"}};
  for (const auto& one : cases) {
    messages.clear();
    EXPECT_EQ(OpenByUser(Write("data.fdf", FdfWith(one.entries))), nullptr);
    ASSERT_EQ(messages.size(), 1u) << one.entries;
    EXPECT_EQ(messages[0].rfind(one.message, 0), 0u) << messages[0];
    EXPECT_EQ(Viewer->ActiveDocView(), nullptr);
  }
}

TEST_F(OpenFdfTest, a_form_that_is_not_there_can_be_looked_for) {
  answer = quillon::kAnswerYes;
  chosenFile = Write("elsewhere.pdf", Form());
  ASSERT_NE(OpenByUser(Write("data.fdf", Data("/F (dir/form.pdf)"))), nullptr);
  EXPECT_EQ(messages,
            std::vector<std::string>{"The form \"form.pdf\", specified within FDF, was not found. "
                                     "Would you like to browse for it?"});
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

  DocView OpenForm(const std::string& id = "", const char* url = kUrl) {
    view = urls.Open(url, Form(id));
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
  Viewer->CloseView(view);
  OpenForm();
  EXPECT_EQ(GetFieldFlags(Node("a"), 1), 2u);
  EXPECT_TRUE(Exists(data));
}

TEST_F(WebForms, data_for_a_form_that_is_not_shown_waits_while_the_link_plug_in_opens_it) {
  const std::string data = Write("data.fdf", Data("/F (http://host/form.pdf)"));
  EXPECT_EQ(OpenByUser(data), nullptr);
  EXPECT_EQ(linked, std::vector<std::string>{kUrl});
  OpenForm();
  EXPECT_EQ(ValueOf("a"), "(1)");
  EXPECT_FALSE(Exists(data));
}

TEST_F(WebForms, waiting_data_that_does_not_fit_is_dropped) {
  const std::string other = Write("other.fdf", Data("/F (http://host/form.pdf) /ID [(x) (y)]"));
  const std::string broken = Write("broken.fdf", FdfWith("/F (http://host/form.pdf) /Fields 7"));
  OpenByUser(other);
  OpenByUser(broken);
  OpenForm("0102");
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
  OpenForm("", "http://host/other.pdf");
  EXPECT_EQ(ValueOf("a"), "null");
}

TEST_F(WebForms, nothing_is_kept_of_a_form_that_is_not_in_a_browser) {
  const std::string file = Write("form.pdf", Form());
  OpenByUser(file);
  Type("typed");
  Viewer->CloseView(view);
  OpenByUser(file);
  EXPECT_EQ(ValueOf("a"), "null");
}

}  // namespace
}  // namespace quillform
