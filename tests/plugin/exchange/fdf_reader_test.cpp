#include "plugin/exchange/fdf_reader.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "plugin/exchange/fdf_apply.h"
#include "plugin/exchange/form_data_commands.h"
#include "plugin/exchange/import_action.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/viewer/open_view.h"
#include "tests/plugin/exchange/data_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

struct FdfReader : DataHost {};

TEST_F(FdfReader, values_reach_the_fields_of_their_full_names) {
  Show({WidgetField("Tx", "a", "/V (old)"), "/T (g) /Kids [12 0 R]",
        WidgetField("Tx", "b", "/Parent 11 0 R"), WidgetField("Btn", "box")});
  EXPECT_TRUE(
      Import("<< /T (a) /V (new) >> << /T (g) /V (ignored) /Kids [<< /T (b) /V (x) >>] >> "
             "<< /T (box) /V /Yes >> << /T (none) /V (y) /Ff 1 >>"));
  EXPECT_EQ(ValueOf("a"), "(new)");
  EXPECT_EQ(ValueOf("g.b"), "(x)");
  EXPECT_EQ(ValueOf("box"), "/Yes");
  EXPECT_NE(Entry(Node("a")->dict, "AP"), "null") << "the appearance follows the value";
}

TEST_F(FdfReader, flags_are_replaced_or_set_and_cleared) {
  Show({WidgetField("Tx", "a", "/Ff 1"), WidgetField("Tx", "b", "/F 4")});
  EXPECT_FALSE(Import("<< /T (a) /SetFf 2 /ClrFf 1 >>"));
  EXPECT_EQ(GetFieldFlags(Node("a"), 1), 2u);
  EXPECT_FALSE(Import("<< /T (a) /Ff 8 /SetFf 2 >>"));
  // What is no integer stands in the way of the others and changes nothing.
  EXPECT_TRUE(Import("<< /T (a) /Ff (x) /SetFf 2 >>"));
  EXPECT_EQ(GetFieldFlags(Node("a"), 1), 8u);
  EXPECT_FALSE(Import("<< /T (b) /SetF 2 /ClrF 4 >>"));
  EXPECT_EQ(GetFieldFlags(Node("b"), 0), 2u);
  // One entry among values tells on all levels.
  EXPECT_FALSE(Import("<< /T (x) /Kids [<< /T (y) /V (1) >>] >> << /T (a) /V (1) /Ff 8 >>"));
}

TEST_F(FdfReader, options_actions_and_states_are_copied) {
  Show({WidgetField("Ch", "list", "/Opt [(old)]"), "/FT /Btn /T (two) /Kids [12 0 R 13 0 R]",
        "/Subtype /Widget /Rect [9 9 20 20] /Parent 11 0 R",
        "/Subtype /Widget /Rect [9 9 30 30] /Parent 11 0 R"});
  EXPECT_FALSE(Import("<< /T (list) /Opt [(a) [(b) (Bee)]] /V (b) >>"));
  EXPECT_EQ(Entry(Node("list")->dict, "Opt"), "[(a) [(b) (Bee)]]");
  EXPECT_EQ(ValueOf("list"), "(b)");
  EXPECT_FALSE(Import("<< /T (two) /AS /On /A << /S /Named /N /NextPage >> >>"));
  for (std::uint32_t i = 0; i < 2; ++i) {
    const ObjectHandle kid = KidOf(Field(1), i);
    EXPECT_EQ(Entry(kid, "AS"), "/On");
    EXPECT_EQ(Entry(kid, "A"), "<< /N /NextPage /S /Named >>");
  }
}

TEST_F(FdfReader, appearances_are_framed_as_icons) {
  Show({WidgetField("Btn", "b", "/Ff 65536 /MK << /BC [1 0 0] >> /BS << /W 2 /S /B >>",
                    "[0 0 100 30]")});
  const std::string icon =
      "<< /Subtype /Form /BBox [0 0 50 50] /Length 3 >> stream\n0 g\nendstream";
  const std::string bytes =
      "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields [<< /T (b) /AP << /N 2 0 R "
      "/D << /On 2 0 R >> >> >>] >> >>\nendobj\n2 0 obj\n" +
      icon + "\nendobj\ntrailer\n<< /Root 1 0 R >>\n";
  const OwnedFdf fdf(quillon::OpenPdfBytes(bytes, {kFdfHeader, {}}, nullptr));
  EXPECT_FALSE(ImportFDF(doc, fdf.doc));
  const ObjectHandle appearances = Objects->DictGet(Node("b")->dict, key::AP);
  const ObjectHandle down = Objects->DictGet(appearances, key::AppearanceDown);
  for (const ObjectHandle made :
       {Objects->DictGet(appearances, key::N), Objects->DictGet(down, key::On)}) {
    ASSERT_TRUE(IsKind(made, ObjectKind::kStream));
    const std::string text = StreamText(made);
    // 30 less four times twice the border's width, for 50.
    EXPECT_NE(text.find("0.28 0 0 0.28 43 8 cm /FRM Do"), std::string::npos) << text;
    const ObjectHandle resources = Objects->DictGet(Objects->StreamDict(made), key::Resources);
    const ObjectHandle forms = Objects->DictGet(resources, key::XObject);
    EXPECT_EQ(StreamText(Objects->DictGet(forms, key::FRM)), "0 g");
  }
}

TEST_F(FdfReader, malformed_data_is_an_error) {
  Show({WidgetField("Tx", "a")});
  EXPECT_EQ(CatchFailure([&] { Import("<< /T (a) /V (1) >> << /V (2) >>"); }),
            ownErrors.invalidFdf);
  EXPECT_EQ(ValueOf("a"), "(1)") << "what came before has been applied";
  EXPECT_EQ(CatchFailure([&] { Import("7"); }), ownErrors.invalidFdf);
  EXPECT_EQ(CatchFailure([&] { Import("<< /T (a) /Kids 7 >>"); }), ownErrors.invalidFdf);
  const std::string noFdf = "%FDF-1.2\n1 0 obj\n<< >>\nendobj\ntrailer\n<< /Root 1 0 R >>\n";
  const OwnedFdf fdf(quillon::OpenPdfBytes(noFdf, {kFdfHeader, {}}, nullptr));
  EXPECT_EQ(CatchFailure([&] { ImportFDF(doc, fdf.doc); }), ownErrors.invalidFdf);
}

TEST_F(FdfReader, kids_that_lead_back_match_nothing) {
  Show({WidgetField("Tx", "a")});
  const std::string bytes =
      "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields 2 0 R >> >>\nendobj\n"
      "2 0 obj\n[<< /T (a) /Kids 2 0 R >>]\nendobj\ntrailer\n<< /Root 1 0 R >>\n";
  const OwnedFdf fdf(quillon::OpenPdfBytes(bytes, {kFdfHeader, {}}, nullptr));
  EXPECT_TRUE(ImportFDF(doc, fdf.doc));
}

TEST_F(FdfReader, the_import_command_fills_the_active_form_and_tells_of_other_files) {
  Show({WidgetField("Tx", "a")});
  chosenFile = Write("data.fdf", FdfWith("/Status (Thank you) /Fields [<< /T (a) /V (1) >>]"));
  ImportFormData();
  EXPECT_EQ(ValueOf("a"), "(1)");
  EXPECT_EQ(messages, std::vector<std::string>{"Thank you"});
  chosenFile = Write("other.txt", "no form data");
  ImportFormData();
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_NE(messages[1].find("%FDF"), std::string::npos) << messages[1];
}

TEST_F(FdfReader, a_file_that_an_action_names_and_nobody_finds_is_asked_for) {
  const std::string pdf = quillon::test::FormPdf(
      {WidgetField("Tx", "a")}, {.objects = {"<< /S /ImportData /F (dir/data.fdf) >>"}});
  view = quillon::OpenViewOfFile(Write("form.pdf", pdf));
  doc = Viewer->DocOf(view);
  std::filesystem::create_directory(folder.File("dir"));
  PerformImportData(Action(1), view);
  EXPECT_EQ(messages, std::vector<std::string>{
                          "FDF \"data.fdf\" was not found. Would you like to browse for it?"});
  EXPECT_EQ(questions, 0);
  answer = quillon::kAnswerYes;
  chosenFile = Write("other.fdf", FdfOf("<< /T (a) /V (2) >>"));
  PerformImportData(Action(1), view);
  EXPECT_EQ(ValueOf("a"), "(2)");
}

}  // namespace
}  // namespace quillform
