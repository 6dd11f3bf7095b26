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

  // The fill must fail, say each text, and leave everything as it was.
  void ExpectRefused(const std::vector<std::string>& arguments,
                     const std::vector<std::string>& texts) {
    ExpectEnd(FillInPlace(arguments), 2, texts);
    EXPECT_EQ(ReadFile(file), ReadFile(ExampleForm()));
    for (const std::string& output : {folder.File("absent.pdf"), std::string("-")}) {
      std::vector<std::string> elsewhere = {"fill", ExampleForm(), "-o", output};
      elsewhere.insert(elsewhere.end(), arguments.begin(), arguments.end());
      const ProcessResult result = Quillon(elsewhere);
      ExpectEnd(result, 2);
      EXPECT_EQ(result.out, "");
    }
    EXPECT_EQ(folder.FileCount(), 1u) << "something was left behind";
  }

  TemporaryFolder folder;
  TemporaryFolder elsewhere;
  std::string file = folder.File("form.pdf");
  std::string values = elsewhere.File("values.json");
};

TEST_F(FillCommand, WritesEveryValueGiven) {
  WriteFile(values, R"({"applicant.city": "Gr\u00fcnau", "membership.fee": 48.50,
                        "applicant.address": "Line 1\nLine 2", "remarks": "from the file",
                        "membership.motto": 12345678901234567890123})");
  const ProcessResult result = Quillon({"fill", ExampleForm(), "applicant.name=Łukasz = Ž",
                                        "remarks=from the line", "--values", values, "-o", file});
  ExpectEnd(result, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(ValueOf(file, "applicant.name"), "Łukasz = Ž");
  EXPECT_EQ(ValueOf(file, "applicant.city"), "Grünau");
  EXPECT_EQ(ValueOf(file, "membership.fee"), "48.50") << "numbers keep their digits";
  EXPECT_EQ(ValueOf(file, "membership.motto"), "12345678901234567890123");
  EXPECT_EQ(ValueOf(file, "applicant.address"), "Line 1\nLine 2");
  EXPECT_EQ(ValueOf(file, "remarks"), "from the line");
  if (!HasTool("pdftotext")) return;
  const std::string text = RunProcess({"pdftotext", file, "-"}).out;
  EXPECT_NE(text.find("Line 1\n"), std::string::npos) << "the lines are drawn as one";
}

TEST_F(FillCommand, EmptiesAField) {
  ExpectEnd(FillInPlace({"applicant.city=London", "remarks="}), 0);
  EXPECT_EQ(ValueOf(file, "remarks"), "");
  WriteFile(values, R"({"applicant.city": null})");
  ExpectEnd(Quillon({"fill", file, "--values", values, "--in-place"}), 0);
  EXPECT_EQ(ValueOf(file, "applicant.city"), nullptr);
}

TEST_F(FillCommand, AFormWithoutFontsGetsSome) {
  WriteFile(file, FormPdf({WidgetField("Tx", "name")},
                          {.defaultAppearance = "", .defaultResources = ""}));
  ExpectEnd(Quillon({"fill", file, "--in-place", "name=Ada"}), 3, {"The form had no fonts"});
  EXPECT_EQ(ValueOf(file, "name"), "Ada");
  if (!HasTool("pdftotext")) return;
  EXPECT_NE(RunProcess({"pdftotext", file, "-"}).out.find("Ada"), std::string::npos);
}

TEST_F(FillCommand, AnAppearanceThatIsMissingIsMadeAndOneThatIsNoneIsNamed) {
  WriteFile(file, FormPdf({WidgetField("Tx", "name")}, {.defaultAppearance = ""}));
  ExpectEnd(Quillon({"fill", file, "--in-place", "name=Ada"}), 3, {"no default appearance"});
  EXPECT_EQ(ValueOf(file, "name"), "Ada");
  WriteFile(file, FormPdf({WidgetField("Tx", "name", "/DA (((/Helv x Tf)))")}, {}));
  ExpectEnd(Quillon({"fill", file, "--in-place", "name=Ada"}), 2, {"name: ", "((/Helv x Tf))"});
}

// Pipes, in which nobody can go back.
TEST_F(FillCommand, StandardStreamsCarryTheDocument) {
  ExpectEnd(RunProcess({"sh", "-c", "cat \"$1\" | \"$2\" fill - remarks=x -o - | cat >\"$3\"", "sh",
                        ExampleForm(), QUILLON_PROGRAM, file},
                       {}, {kLeakOptions}),
            0);
  EXPECT_EQ(ValueOf(file, "remarks"), "x");
}

TEST_F(FillCommand, InPlaceKeepsPermissionsAndLinks) {
  WriteFile(file, ReadFile(ExampleForm()));
  constexpr auto kPermissions = std::filesystem::perms(0640);
  std::filesystem::permissions(file, kPermissions);
  const std::string link = folder.File("link.pdf");
  std::filesystem::create_symlink("form.pdf", link);
  ExpectEnd(Quillon({"fill", link, "applicant.city=London", "--in-place"}), 0);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(ValueOf(file, "applicant.city"), "London");
  EXPECT_EQ(std::filesystem::status(file).permissions(), kPermissions);
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
  const auto refused = [&](const std::string& json, const std::string& text) {
    WriteFile(values, json);
    ExpectRefused({"--values", values}, {text});
  };
  refused("{\"remarks\": ", "the JSON cannot be read");
  refused(R"({"remarks": "a", "remarks": "b"})", "the name remarks is given twice");
  refused(R"({"remarks": true})", "remarks: a text field takes a text or a number, not boolean");
  ExpectRefused({"--values", elsewhere.path.string()}, {"the file cannot be read"});
  ExpectEnd(Quillon({"fill", "missing.pdf", "--values", "missing.json", "bare", "-o", file}), 2,
            {"missing.pdf", "missing.json", "bare: this is not of the form"});
}

TEST_F(FillCommand, ForceFillsReadOnlyFields) {
  ExpectEnd(FillInPlace({"membership.number=2025-0001", "--force"}), 0);
  EXPECT_EQ(ValueOf(file, "membership.number"), "2025-0001");
}

TEST_F(FillCommand, PasswordsAreNotKeptAndTheUserIsTold) {
  ExpectEnd(FillInPlace({"membership.password=open sesame", "applicant.city=London"}), 3,
            {"membership.password: a password is not kept"});
  EXPECT_EQ(ReadFile(file).find("open sesame"), std::string::npos);
  EXPECT_EQ(ValueOf(file, "applicant.city"), "London");
}

TEST_F(FillCommand, OutputThatCannotBeWrittenIsAnError) {
  const std::string nowhere = folder.File("no/such/folder.pdf");
  ExpectEnd(Quillon({"fill", ExampleForm(), "remarks=x", "-o", nowhere}), 2, {nowhere});
  EXPECT_EQ(folder.FileCount(), 0u);
}

}  // namespace
}  // namespace quillon::test
