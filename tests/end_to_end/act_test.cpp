#include "tests/end_to_end/fields_of.h"
#include "tests/support/form_pdf.h"

namespace quillon::test {
namespace {

struct ActCommand : testing::Test {
  // The fields "name" and "remarks", and the button "go" with further entries.
  void MakeForm(const std::string& buttonEntries) {
    WriteFile(form, FormPdf({WidgetField("Tx", "name", "/V (Ada) /DV (nobody)"),
                             WidgetField("Tx", "remarks", "/V (long)"),
                             WidgetField("Btn", "go", "/Ff 65536 " + buttonEntries)}));
  }
  ProcessResult Act(std::vector<std::string> arguments = {}) {
    std::vector<std::string> command = {"act", form, "--field", "go", "-o", out};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Quillon(command);
  }
  // Of the result: a field's value, and whether it is shown.
  Json Value(const std::string& name) { return FieldNamed(FieldsOf(out), name)["value"]; }
  bool IsShown(const std::string& name) {
    return FieldNamed(FieldsOf(out), name)["widgets"][0]["visible"] == true;
  }

  TempFolder folder;
  std::string form = folder.File("form.pdf");
  std::string out = folder.File("out.pdf");
};

TEST_F(ActCommand, PerformsAChainAndTellsEachAction) {
  MakeForm(
      "/A << /S /ResetForm /Fields [10 0 R] /Next [ << /S /Hide /T (remarks) >>"
      " << /S /Hide /T (go) >> ] >>");
  const ProcessResult result = Act();
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out,
            "ResetForm: Use this button to select which fields to reset.\n"
            "Hide: Hide the \"remarks\" field.\nHide: Hide the \"go\" field.\n");
  EXPECT_EQ(Value("name"), "nobody");
  EXPECT_EQ(Value("remarks"), "long");
  EXPECT_TRUE(IsShown("name"));
  EXPECT_FALSE(IsShown("remarks"));
  EXPECT_FALSE(IsShown("go"));
}

TEST_F(ActCommand, EachTriggerHasAnActionOfItsOwn) {
  MakeForm(
      "/AA << /E << /S /Hide /T (remarks) >> /U << /S /ResetForm >> /X << /S /Hide /T (name) >> "
      ">>");
  ASSERT_EQ(Act({"--trigger", "E"}).status, 0);
  EXPECT_FALSE(IsShown("remarks"));
  EXPECT_EQ(Value("name"), "Ada");
  ASSERT_EQ(Act().status, 0);
  EXPECT_EQ(Value("name"), "nobody");
  const ProcessResult none = Act({"--trigger", "D"});
  EXPECT_EQ(none.status, 2);
  EXPECT_NE(none.err.find("go: it has no action for the trigger D"), std::string::npos) << none.err;
}

TEST_F(ActCommand, ImportsTheFileThatLiesBesideTheForm) {
  WriteFile(folder.File("values.fdf"),
            "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields [ << /T (name) /V (Grace) >> ] >> >>\nendobj\n"
            "trailer\n<< /Root 1 0 R >>\n%%EOF\n");
  MakeForm("/A << /S /ImportData /F (values.fdf) >>");
  const ProcessResult result = Act();
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(Value("name"), "Grace");
}

TEST_F(ActCommand, WhatNobodyPerformsIsAWarningInAChainAndAnErrorAlone) {
  MakeForm("/A << /S /JavaScript /JS (x) /Next << /S /ResetForm >> >>");
  const ProcessResult warned = Act();
  EXPECT_EQ(warned.status, 3);
  EXPECT_NE(warned.err.find("JavaScript"), std::string::npos) << warned.err;
  EXPECT_EQ(Value("name"), "nobody");
  std::filesystem::remove(out);
  MakeForm("/A << /S /JavaScript /JS (x) >>");
  EXPECT_EQ(Act().status, 2);
  EXPECT_FALSE(std::filesystem::exists(out));
}

}  // namespace
}  // namespace quillon::test
