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
  ProcessResult Act(const std::string& trigger = "U") {
    return Quillon({"act", form, "--field", "go", "--trigger", trigger, "-o", out});
  }
  bool IsShown(const std::string& name) {
    return FieldNamed(FieldsOf(out), name)["widgets"][0]["visible"] == true;
  }

  TemporaryFolder folder;
  std::string form = folder.File("form.pdf");
  std::string out = folder.File("out.pdf");
};

TEST_F(ActCommand, PerformsAChainAndTellsEachAction) {
  MakeForm(
      "/A << /S /ResetForm /Fields [10 0 R] /Next [ << /S /Hide /T (remarks) >>"
      " << /S /Hide /T (go) >> ] >>");
  const ProcessResult result = Quillon({"act", form, "--field", "go", "-o", out});
  ExpectEnd(result, 0);
  EXPECT_EQ(result.out,
            "ResetForm: Use this button to select which fields to reset.\n"
            "Hide: Hide the \"remarks\" field.\nHide: Hide the \"go\" field.\n");
  EXPECT_EQ(ValueOf(out, "name"), "nobody");
  EXPECT_EQ(ValueOf(out, "remarks"), "long");
  EXPECT_TRUE(IsShown("name"));
  EXPECT_FALSE(IsShown("remarks"));
  EXPECT_FALSE(IsShown("go"));
}

TEST_F(ActCommand, EachTriggerHasAnActionOfItsOwn) {
  MakeForm(
      "/AA << /E << /S /Hide /T (remarks) >> /U << /S /ResetForm >> /X << /S /Hide /T (name) >> "
      ">>");
  ExpectEnd(Act("E"), 0);
  EXPECT_FALSE(IsShown("remarks"));
  EXPECT_EQ(ValueOf(out, "name"), "Ada");
  ExpectEnd(Act("U"), 0);
  EXPECT_EQ(ValueOf(out, "name"), "nobody");
  ExpectEnd(Act("D"), 2, {"go: it has no action for the trigger D"});
}

TEST_F(ActCommand, ImportsTheFileThatLiesBesideTheForm) {
  WriteFile(folder.File("values.fdf"),
            "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields [ << /T (name) /V (Grace) >> ] >> >>\nendobj\n"
            "trailer\n<< /Root 1 0 R >>\n%%EOF\n");
  MakeForm("/A << /S /ImportData /F (values.fdf) >>");
  ExpectEnd(Act(), 0);
  EXPECT_EQ(ValueOf(out, "name"), "Grace");
}

TEST_F(ActCommand, WhatNobodyPerformsIsAWarningInAChainAndAnErrorAlone) {
  MakeForm("/A << /S /JavaScript /JS (x) /Next << /S /ResetForm >> >>");
  ExpectEnd(Act(), 3, {"JavaScript"});
  EXPECT_EQ(ValueOf(out, "name"), "nobody");
  std::filesystem::remove(out);
  MakeForm("/A << /S /JavaScript /JS (x) >>");
  ExpectEnd(Act(), 2);
  EXPECT_FALSE(std::filesystem::exists(out));
}

}  // namespace
}  // namespace quillon::test
