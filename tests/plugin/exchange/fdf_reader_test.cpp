#include "plugin/exchange/fdf_reader.h"

#include <gtest/gtest.h>

#include "plugin/exchange/fdf_apply.h"
#include "plugin/exchange/form_data_commands.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"
#include "quillon/objects/pdf_file.h"
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
  EXPECT_EQ(GetFieldFlags(Node("a"), 1), 8u);
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
  const ObjectHandle normal = Objects->DictGet(appearances, key::N);
  const ObjectHandle down = Objects->DictGet(appearances, key::AppearanceDown);
  for (const ObjectHandle made : {normal, Objects->DictGet(down, key::On)}) {
    ASSERT_TRUE(IsKind(made, ObjectKind::kStream));
    const std::string text = StreamText(made);
    // 30 less four times twice the border's width, for 50.
    EXPECT_NE(text.find("0.28 0 0 0.28 43 8 cm /FRM Do"), std::string::npos) << text;
    EXPECT_NE(text.find("1 0 0 "), std::string::npos) << text;
    const ObjectHandle resources = Objects->DictGet(Objects->StreamDict(made), key::Resources);
    const ObjectHandle inside =
        Objects->DictGet(Objects->DictGet(resources, key::XObject), key::FRM);
    EXPECT_EQ(StreamText(inside), "0 g");
  }
}

TEST_F(FdfReader, malformed_data_is_an_error) {
  Show({WidgetField("Tx", "a")});
  EXPECT_EQ(CodeOf([&] { Import("<< /T (a) /V (1) >> << /V (2) >>"); }), ownErrors.invalidFdf);
  EXPECT_EQ(ValueOf("a"), "(1)") << "what came before has been applied";
  EXPECT_EQ(CodeOf([&] { Import("7"); }), ownErrors.invalidFdf);
  EXPECT_EQ(CodeOf([&] { Import("<< /T (a) /Kids 7 >>"); }), ownErrors.invalidFdf);
  const std::string noFields = FdfWith("/Fields (none)");
  const std::string noFdf = "%FDF-1.2\n1 0 obj\n<< >>\nendobj\ntrailer\n<< /Root 1 0 R >>\n";
  for (const std::string& bytes : {noFields, noFdf}) {
    const OwnedFdf fdf(quillon::OpenPdfBytes(bytes, {kFdfHeader, {}}, nullptr));
    EXPECT_EQ(CodeOf([&] { ImportFDF(doc, fdf.doc); }), ownErrors.invalidFdf);
  }
}

TEST_F(FdfReader, names_that_no_field_can_have_and_kids_that_lead_back_match_nothing) {
  Show({WidgetField("Tx", "a")});
  EXPECT_TRUE(Import("<< /T (" + std::string(255, 'a') + ") /V (1) >>"));
  const std::string bytes =
      "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields 2 0 R >> >>\nendobj\n"
      "2 0 obj\n[<< /T (a) /Kids 2 0 R >>]\nendobj\ntrailer\n<< /Root 1 0 R >>\n";
  const OwnedFdf fdf(quillon::OpenPdfBytes(bytes, {kFdfHeader, {}}, nullptr));
  EXPECT_TRUE(ImportFDF(doc, fdf.doc));
  EXPECT_EQ(ValueOf("a"), "null");
}

TEST_F(FdfReader, a_status_is_shown_first_and_data_without_fields_is_values_only) {
  Show({WidgetField("Tx", "a")});
  const OwnedFdf fdf(
      quillon::OpenPdfBytes(FdfWith("/Status (Thank you)"), {kFdfHeader, {}}, nullptr));
  EXPECT_TRUE(ImportFDF(doc, fdf.doc));
  EXPECT_EQ(messages, std::vector<std::string>{"Thank you"});
}

TEST_F(FdfReader, the_import_command_fills_the_active_form_and_tells_of_other_files) {
  Show({WidgetField("Tx", "a")});
  chosenFile = Write("data.fdf", FdfOf("<< /T (a) /V (1) >>"));
  ImportFormData();
  EXPECT_EQ(ValueOf("a"), "(1)");
  chosenFile = Write("other.txt", "no form data");
  ImportFormData();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_NE(messages[0].find("%FDF"), std::string::npos) << messages[0];
}

}  // namespace
}  // namespace quillform
