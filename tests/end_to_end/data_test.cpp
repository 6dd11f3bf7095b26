// Values of every kind given on the command line, in files, and out again: `quillon fill`,
// `quillon export`, `quillon import`, `quillon fill --records`.
#include "tests/end_to_end/fields_of.h"
#include "tests/support/form_pdf.h"

namespace quillon::test {
namespace {

// One field of each kind; object 10 and so on are the fields, 17 an appearance.
std::string EveryKind() {
  const std::string states = "/MK << /CA (4) >> /AP << /N << /Yes 17 0 R /Off 17 0 R >> >>";
  const std::string radio = "/Subtype /Widget /Parent 12 0 R /MK << /CA (l) >> /Rect [0 0 9 9] ";
  return FormPdf({WidgetField("Tx", "text"), WidgetField("Btn", "box", states, "[0 0 9 9]"),
                  "/FT /Btn /Ff 32768 /T (radio) /Kids [13 0 R 14 0 R]",
                  radio + "/AP << /N << /red 17 0 R /Off 17 0 R >> >>",
                  radio + "/AP << /N << /blue 17 0 R /Off 17 0 R >> >>",
                  WidgetField("Ch", "combo", "/Ff 131072 /Opt [[(1) (One)] [(2) (Two)]]"),
                  WidgetField("Ch", "list", "/Ff 2097152 /Opt [(a) (b) (c)]")},
                 {.objects = {"<< /Type /XObject /Subtype /Form /BBox [0 0 9 9] /Length 0 >> "
                              "stream\n\nendstream"}});
}

struct DataCommands : testing::Test {
  void SetUp() override { WriteFile(form, EveryKind()); }

  std::string Out(const std::string& name) const { return folder.File(name); }

  static void ExpectDone(const std::vector<std::string>& arguments) {
    ExpectEnd(Quillon(arguments), 0);
  }
  // Refused with all of these texts, and without an output.
  void ExpectRefused(std::vector<std::string> arguments, const std::vector<std::string>& texts) {
    const std::string out = Out("refused.out");
    arguments.insert(arguments.end(), {"-o", out});
    ExpectEnd(Quillon(arguments), 2, texts);
    EXPECT_FALSE(std::filesystem::exists(out));
  }

  // "text box radio combo list", as JSON.
  static std::string ValuesOf(const std::string& file) {
    std::string values;
    const Json fields = FieldsOf(file);
    for (const char* name : {"text", "box", "radio", "combo", "list"}) {
      values += FieldNamed(fields, name)["value"].dump() + " ";
    }
    return values;
  }

  TemporaryFolder folder;
  std::string form = folder.File("form.pdf");
  const std::string kFilled = "\"x\" \"Yes\" \"blue\" \"2\" [\"a\",\"c\"] ";
  const std::string kEmpty = "null null null null null ";
};

TEST_F(DataCommands, EveryKindIsFilledByTheWordsPeopleUse) {
  WriteFile(Out("values.json"), R"({"box": true, "list": ["a", "c"]})");
  ExpectDone({"fill", form, "text=x", "radio=blue", "combo=Two", "--values", Out("values.json"),
              "-o", Out("filled.pdf")});
  EXPECT_EQ(ValuesOf(Out("filled.pdf")), kFilled);
  ExpectDone({"fill", Out("filled.pdf"), "box=off", "radio=red", "combo=1", "list=b", "-o",
              Out("changed.pdf")});
  EXPECT_EQ(ValuesOf(Out("changed.pdf")), "\"x\" null \"red\" \"1\" \"b\" ");
  ExpectDone({"fill", form, "box=on", "-o", Out("on.pdf")});
  EXPECT_EQ(ValuesOf(Out("on.pdf")), "null \"Yes\" null null null ");
}

TEST_F(DataCommands, WhatAFieldCannotBeSetToIsToldWithWhatItCan) {
  ExpectRefused({"fill", form, "box=Maybe", "radio=on", "combo=Three", "list=d"},
                {"box: \"Maybe\" is no state of the check box; it takes Yes, on or off",
                 "radio: \"on\" is no state of the radio button; it takes red, blue or off",
                 "combo: \"Three\" is none of the options: One or Two",
                 "list: \"d\" is none of the options: a, b or c"});
}

TEST_F(DataCommands, ExportedValuesFillTheEmptyFormAgain) {
  ExpectDone({"fill", form, "text=x", "box=Yes", "radio=blue", "combo=2", "list=a\nc", "-o",
              Out("filled.pdf")});
  for (const char* name : {"data.fdf", "data.json", "data.csv"}) {
    ExpectDone({"export", Out("filled.pdf"), "-o", Out(name)});
    ExpectDone({"import", form, Out(name), "-o", Out("again.pdf")});
    EXPECT_EQ(ValuesOf(Out("again.pdf")), kFilled) << name;
    // What is empty or off where the data comes from is so where it goes to.
    ExpectDone({"export", form, "-o", Out(name)});
    ExpectDone({"import", Out("filled.pdf"), Out(name), "-o", Out("again.pdf")});
    const bool all = std::string(name) != "data.fdf";
    EXPECT_EQ(ValuesOf(Out("again.pdf")), all ? kEmpty : "\"x\" null null \"2\" [\"a\",\"c\"] ");
  }
  const ProcessResult csv = Quillon({"export", Out("filled.pdf"), "--format", "csv", "-o", "-"});
  EXPECT_EQ(csv.out, "text,box,radio,combo,list\r\nx,Yes,blue,2,\"a\nc\"\r\n");
}

TEST_F(DataCommands, FormDataOpensTheFormBesideItInEveryCommand) {
  ExpectDone({"fill", form, "text=x", "-o", Out("filled.pdf")});
  ExpectDone({"export", Out("filled.pdf"), "-o", Out("data.fdf")});
  EXPECT_EQ(ValuesOf(Out("data.fdf")), "\"x\" null null null null ");
  ExpectDone({"fill", Out("data.fdf"), "combo=1", "-o", Out("more.pdf")});
  EXPECT_EQ(ValuesOf(Out("more.pdf")), "\"x\" null null \"1\" null ");
  EXPECT_EQ(Quillon({"fill", Out("data.fdf"), "combo=1", "--in-place"}).status, 2);
  std::filesystem::remove(Out("filled.pdf"));
  ExpectRefused({"fill", Out("data.fdf"), "combo=1"}, {"\"filled.pdf\"", "not found", "- No"});
}

TEST_F(DataCommands, AnImportThatFailsTellsWhereItStoppedAndWritesNothing) {
  WriteFile(Out("bad.fdf"),
            "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields [<< /T (text) /V (x) >> << /V (y) >>] >> >>\n"
            "endobj\ntrailer\n<< /Root 1 0 R >>\n");
  ExpectRefused({"import", form, Out("bad.fdf")}, {"at or after the field text", "Invalid FDF"});
  WriteFile(Out("bad.json"), R"({"text": "x", "txt": 1, "box": "No"})");
  ExpectRefused({"import", form, Out("bad.json")}, {"did you mean text?", "\"No\" is no state"});
  WriteFile(Out("two.csv"), "text\na\nb\n");
  ExpectRefused({"import", form, Out("two.csv")}, {"2 rows"});
  ExpectRefused({"import", form, form}, {"%FDF-1.2"});
  EXPECT_EQ(Quillon({"export", form, "-o", Out("no/folder.fdf")}).status, 2);
}

TEST_F(DataCommands, EachRowBecomesADocument) {
  WriteFile(Out("people.csv"),
            "\xEF\xBB\xBF"
            "id,text,box,list\r\n7,\"Ann, \"\"A\"\"\",on,\"a\nc\"\r\n\r\n8,,,b\r\n"
            "a/../9,Bo,off,\r\n");
  ExpectDone({"fill", form, "--records", Out("people.csv"), "--jobs", "2", "-o",
              Out("out/{id}-{row}.pdf")});
  EXPECT_EQ(ValuesOf(Out("out/7-1.pdf")), "\"Ann, \\\"A\\\"\" \"Yes\" null null [\"a\",\"c\"] ");
  EXPECT_EQ(ValuesOf(Out("out/8-2.pdf")), "null null null null \"b\" ");
  EXPECT_EQ(ValuesOf(Out("out/a_.._9-3.pdf")), "\"Bo\" null null null null ");
}

TEST_F(DataCommands, ABadRowDoesNotHarmTheOthers) {
  WriteFile(Out("people.csv"), "text,box\nAnn,on\nBo,maybe\nAnn,off\n,on\nCy,off\n");
  ExpectEnd(Quillon({"fill", form, "--records", Out("people.csv"), "--jobs", "3", "-o",
                     Out("{text}.pdf")}),
            3,
            {"row 2 (line 3): box: \"maybe\" is no state", "row 3 (line 4): the output",
             "is that of row 1 already", "row 4 (line 5): the column text", "3 of 5 rows"});
  EXPECT_EQ(ValuesOf(Out("Ann.pdf")), "\"Ann\" \"Yes\" null null null ");
  EXPECT_EQ(ValuesOf(Out("Cy.pdf")), "\"Cy\" null null null null ");
  EXPECT_EQ(folder.FileCount(), 4u);
}

TEST_F(DataCommands, MistakesInTheTableAreToldBeforeAnythingIsWritten) {
  const auto refuse = [&](const std::string& csv, const std::string& output,
                          const std::string& text) {
    WriteFile(Out("people.csv"), csv);
    ExpectEnd(Quillon({"fill", form, "--records", Out("people.csv"), "-o", Out(output)}), 2,
              {text});
    EXPECT_EQ(folder.FileCount(), 2u);
  };
  refuse("text,txet\na,b\n", "{text}.pdf", "txet: there is no field of this name; did you mean");
  refuse("text\na\n", "{name}.pdf", "the column name, which is not there");
  refuse("text\na\n", "all.pdf", "same file");
  refuse("text\na,b\n", "{text}.pdf", "line 2: the row has 2 cells");
  refuse("text\n\"a\n", "{text}.pdf", "a quotation begins here");
  refuse("", "{row}.pdf", "names the columns");
}

}  // namespace
}  // namespace quillon::test
