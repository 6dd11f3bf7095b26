#include <sys/stat.h>

#include "tests/end_to_end/fields_of.h"
#include "tests/support/form_pdf.h"

namespace quillon::test {
namespace {

struct FillCommand : testing::Test {
  // Fills a copy of the example in place.
  ProcessResult FillInPlace(std::vector<std::string> arguments) {
    WriteFile(file, ReadFile(ExampleForm()));
    arguments.insert(arguments.begin(), {"fill", file, "--in-place"});
    return Quillon(arguments);
  }

  // The fill must fail with `status` 2, say each text, and leave everything as it was.
  void ExpectRefused(const std::vector<std::string>& arguments,
                     const std::vector<std::string>& texts) {
    const ProcessResult inPlace = FillInPlace(arguments);
    EXPECT_EQ(inPlace.status, 2);
    for (const std::string& text : texts) {
      EXPECT_NE(inPlace.err.find(text), std::string::npos) << text << "\nin\n" << inPlace.err;
    }
    EXPECT_EQ(ReadFile(file), ReadFile(ExampleForm()));
    const std::string absent = folder.File("absent.pdf");
    std::vector<std::string> elsewhere = {"fill", ExampleForm(), "-o", absent};
    elsewhere.insert(elsewhere.end(), arguments.begin(), arguments.end());
    EXPECT_EQ(Quillon(elsewhere).status, 2);
    EXPECT_FALSE(std::filesystem::exists(absent));
    EXPECT_EQ(folder.FileCount(), 1u) << "something was left behind";
    const ProcessResult toOutput = [&] {
      elsewhere[3] = "-";
      return Quillon(elsewhere);
    }();
    EXPECT_EQ(toOutput.out, "");
  }

  TempFolder folder;
  std::string file = folder.File("form.pdf");
};

TEST_F(FillCommand, WritesEveryValueGiven) {
  const std::string values = folder.File("values.json");
  WriteFile(values, R"({"applicant.city": "Gr\u00fcnau", "membership.fee": 48.5,
                        "applicant.address": "Line 1\nLine 2", "remarks": "from the file"})");
  const std::string out = folder.File("out.pdf");
  const ProcessResult result = Quillon({"fill", ExampleForm(), "applicant.name=Łukasz = Ž",
                                        "remarks=from the line", "--values", values, "-o", out});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  const Json fields = FieldsOf(out);
  EXPECT_EQ(FieldNamed(fields, "applicant.name")["value"], "Łukasz = Ž");
  EXPECT_EQ(FieldNamed(fields, "applicant.city")["value"], "Grünau");
  EXPECT_EQ(FieldNamed(fields, "membership.fee")["value"], "48.5");
  EXPECT_EQ(FieldNamed(fields, "applicant.address")["value"], "Line 1\nLine 2");
  if (HasTool("pdftotext")) {
    const std::string text = RunProcess({"pdftotext", out, "-"}).out;
    EXPECT_NE(text.find("Line 1\n"), std::string::npos) << "the lines are drawn as one";
  }
  EXPECT_EQ(FieldNamed(fields, "remarks")["value"], "from the line");
}

TEST_F(FillCommand, EmptiesAField) {
  ASSERT_EQ(FillInPlace({"applicant.city=London", "remarks="}).status, 0);
  EXPECT_EQ(FieldNamed(FieldsOf(file), "remarks")["value"], "");
  const std::string values = folder.File("values.json");
  WriteFile(values, R"({"applicant.city": null})");
  ASSERT_EQ(Quillon({"fill", file, "--values", values, "--in-place"}).status, 0);
  EXPECT_EQ(FieldNamed(FieldsOf(file), "applicant.city")["value"], nullptr);
}

TEST_F(FillCommand, AFormWithoutFontsGetsSome) {
  WriteFile(file, FormPdf({WidgetField("Tx", "name")},
                          {.defaultAppearance = "", .defaultResources = ""}));
  const ProcessResult result = Quillon({"fill", file, "--in-place", "name=Ada"});
  EXPECT_EQ(result.status, 3) << result.err;
  EXPECT_NE(result.err.find("The form had no fonts"), std::string::npos) << result.err;
  EXPECT_EQ(FieldNamed(FieldsOf(file), "name")["value"], "Ada");
  if (!HasTool("pdftotext")) return;
  EXPECT_NE(RunProcess({"pdftotext", file, "-"}).out.find("Ada"), std::string::npos);
}

TEST_F(FillCommand, StandardStreamsCarryTheDocument) {
  const ProcessResult result =
      Quillon({"fill", "-", "applicant.city=London", "-o", "-"}, ReadFile(ExampleForm()));
  ASSERT_EQ(result.status, 0) << result.err;
  WriteFile(file, result.out);
  EXPECT_EQ(FieldNamed(FieldsOf(file), "applicant.city")["value"], "London");
}

TEST_F(FillCommand, InPlaceKeepsPermissionsAndLinks) {
  WriteFile(file, ReadFile(ExampleForm()));
  ASSERT_EQ(chmod(file.c_str(), 0640), 0);
  const std::string link = folder.File("link.pdf");
  std::filesystem::create_symlink("form.pdf", link);
  ASSERT_EQ(Quillon({"fill", link, "applicant.city=London", "--in-place"}).status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(FieldNamed(FieldsOf(file), "applicant.city")["value"], "London");
  struct stat status {};
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0640u);
  EXPECT_EQ(folder.FileCount(), 2u);
}

TEST_F(FillCommand, NamesEveryOffenderAtOnceAndWritesNothing) {
  ExpectRefused(
      {"applicant.naem=Ada", "membership.number=1", "applicant.born=10 December 1815",
       "applicant.city=東京", "office=x", "no assignment", "applicant.email=a\nb", "motto=x"},
      {"applicant.naem: there is no field of this name; did you mean applicant.name",
       "membership.number: the field is read-only",
       "applicant.born: the value has 16 characters, the field holds 10",
       "applicant.city: the character \"東\" (U+6771) cannot be held",
       "office: this is a group of fields", "no assignment: this is not of the form",
       "applicant.email: the field holds a single line", "did you mean membership.motto?",
       "nothing was written"});
}

TEST_F(FillCommand, DoubtfulInputIsRefused) {
  ExpectRefused({"remarks=a", "remarks=b"}, {"remarks: the name is given twice"});
  ExpectRefused({"remarks=\xFF"}, {"this is not UTF-8"});
  ExpectRefused({"remarks=þÿab"}, {"remarks: a value cannot start with"});
  ExpectRefused({}, {"no values are given"});
}

TEST_F(FillCommand, BadValuesFilesAreRefused) {
  const TempFolder values;
  const auto refused = [&](const std::string& json, const std::string& text) {
    WriteFile(values.File("v.json"), json);
    ExpectRefused({"--values", values.File("v.json")}, {text});
  };
  refused("{\"remarks\": ", "the JSON cannot be read");
  refused(R"({"remarks": "a", "remarks": "b"})", "the name remarks is given twice");
  refused(R"({"remarks": true})", "remarks: a text field takes a text or a number, not boolean");
  ExpectRefused({"--values", values.path.string()}, {"the file cannot be read"});
  const ProcessResult all = Quillon({"fill", values.File("missing.pdf"), "--values",
                                     values.File("missing.json"), "bare", "-o", file});
  for (const char* offender : {"missing.pdf", "missing.json", "bare: this is not of the form"}) {
    EXPECT_NE(all.err.find(offender), std::string::npos) << all.err;
  }
}

TEST_F(FillCommand, NumbersInAValuesFileKeepTheirDigits) {
  const TempFolder values;
  WriteFile(
      values.File("v.json"),
      R"({"membership.fee": 48.50, "remarks": 12345678901234567890123, "applicant.city": 7})");
  ASSERT_EQ(FillInPlace({"--values", values.File("v.json")}).status, 0);
  EXPECT_EQ(FieldNamed(FieldsOf(file), "membership.fee")["value"], "48.50");
  EXPECT_EQ(FieldNamed(FieldsOf(file), "remarks")["value"], "12345678901234567890123");
  EXPECT_EQ(FieldNamed(FieldsOf(file), "applicant.city")["value"], "7");
}

TEST_F(FillCommand, ForceFillsReadOnlyFields) {
  ASSERT_EQ(FillInPlace({"membership.number=2025-0001", "--force"}).status, 0);
  EXPECT_EQ(FieldNamed(FieldsOf(file), "membership.number")["value"], "2025-0001");
}

TEST_F(FillCommand, PasswordsAreNotKeptAndTheUserIsTold) {
  const ProcessResult result =
      FillInPlace({"membership.password=open sesame", "applicant.city=London"});
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.err.find("membership.password: a password is not kept"), std::string::npos);
  EXPECT_EQ(ReadFile(file).find("open sesame"), std::string::npos);
  EXPECT_EQ(FieldNamed(FieldsOf(file), "applicant.city")["value"], "London");
}

TEST_F(FillCommand, OutputThatCannotBeWrittenIsAnError) {
  const ProcessResult result =
      Quillon({"fill", ExampleForm(), "remarks=x", "-o", folder.File("no/such/folder.pdf")});
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err, "");
  EXPECT_EQ(folder.FileCount(), 0u);
}

}  // namespace
}  // namespace quillon::test
