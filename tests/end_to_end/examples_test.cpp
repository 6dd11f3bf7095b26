// The plug-ins that authors start from.
#include "tests/end_to_end/fields_of.h"
#include "tests/support/form_pdf.h"

namespace quillon::test {
namespace {

struct ExamplePlugIns : testing::Test {
  ExamplePlugIns() {
    WriteFile(form, FormPdf({WidgetField("Tx", "land"), WidgetField("Tx", "zip"),
                             WidgetField("Tx", "city"), WidgetField("Tx", "region"),
                             WidgetField("Tx", "name", "/DV (nobody)"),
                             WidgetField("Btn", "go", "/Ff 65536 /A << /S /ResetForm >>")}));
    WriteFile(rules,
              "# where people live\n"
              "only land: Austria; Germany\n\n"
              "fill city from zip: 1010 = Vienna; 80331 = Munich  # and so on\n"
              "fill region from city: Munich = Bavaria\n");
  }
  ProcessResult Run(std::vector<std::string> arguments, const std::string& setting = "NONE=") {
    arguments.insert(arguments.begin(),
                     {"--plugin", LIST_VALIDATOR_PLUGIN, "--plugin", EVENT_LOG_PLUGIN});
    return Quillon(arguments, {}, {"LIST_VALIDATOR_FILE=" + rules, "EVENT_LOG=" + log, setting});
  }

  TemporaryFolder folder;
  std::string form = folder.File("form.pdf");
  std::string out = folder.File("out.pdf");
  std::string rules = folder.File("rules.txt");
  std::string log = folder.File("events.txt");
};

TEST_F(ExamplePlugIns, EventLogCancelsAChange) {
  ExpectEnd(Run({"fill", form, "name=Ada", "-o", out}, "EVENT_LOG_CANCEL=name"), 2);
  EXPECT_EQ(ReadFile(log), "cancelled name \"Ada\"\n");
  EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(ExamplePlugIns, EventLogPutsAnotherValueInAValuesPlace) {
  const std::string setting = "EVENT_LOG_REPLACE=nobody=somebody";
  ExpectEnd(Run({"act", form, "--field", "go", "-o", out}, setting), 0);
  const std::string expected =
      "replaced name \"nobody\" by \"somebody\"\nchanged name \"somebody\"\n";
  EXPECT_NE(ReadFile(log).find(expected), std::string::npos) << ReadFile(log);
  EXPECT_EQ(ValueOf(out, "name"), "somebody");
  // Also when that is what stood there before.
  ExpectEnd(Run({"fill", out, "name=nobody", "--in-place"}, setting), 3,
            {"name: a plug-in changed the value given; now \"somebody\" stands"});
}

TEST_F(ExamplePlugIns, ListValidatorLetsOnlyListedValuesIn) {
  ExpectEnd(Run({"fill", form, "land=Atlantis", "-o", out}), 2,
            {"land: \"Atlantis\" is not one of Austria, Germany"});
  EXPECT_FALSE(std::filesystem::exists(out));
  ExpectEnd(Run({"fill", form, "land=Germany", "zip=9", "-o", out}), 0);
  EXPECT_EQ(ValueOf(out, "land"), "Germany");
  EXPECT_EQ(ValueOf(out, "city"), nullptr);
}

TEST_F(ExamplePlugIns, ListValidatorFillsWhatFollowsAndEventLogWritesEachChangeDown) {
  ExpectEnd(Run({"fill", form, "zip=80331", "-o", out}), 0);
  EXPECT_EQ(ValueOf(out, "city"), "Munich");
  EXPECT_EQ(ValueOf(out, "region"), "Bavaria");
  for (const char* line : {"will change zip \"80331\"\n", "changed region \"Bavaria\"\n"}) {
    EXPECT_NE(ReadFile(log).find(line), std::string::npos) << ReadFile(log);
  }
}

TEST_F(ExamplePlugIns, ListValidatorSaysWhatIsWrongWithItsFile) {
  WriteFile(rules, "only land: Austria\nland must be Austria\n");
  ExpectEnd(Run({"fill", form, "land=Austria", "-o", out}), 3, {"line 2 is no rule"});
}

}  // namespace
}  // namespace quillon::test
