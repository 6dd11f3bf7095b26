// The plug-ins that authors start from.
#include "tests/end_to_end/fields_of.h"
#include "tests/support/form_pdf.h"

namespace quillon::test {
namespace {

struct EventLogExample : testing::Test {
  EventLogExample() {
    WriteFile(form, FormPdf({WidgetField("Tx", "city"), WidgetField("Tx", "name", "/DV (nobody)"),
                             WidgetField("Btn", "go", "/Ff 65536 /A << /S /ResetForm >>")}));
  }
  ProcessResult Run(std::vector<std::string> arguments) {
    std::vector<std::string> command = {"--plugin", EVENT_LOG_PLUGIN};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Quillon(command, {}, environment);
  }

  TempFolder folder;
  std::string form = folder.File("form.pdf");
  std::string out = folder.File("out.pdf");
  std::string log = folder.File("events.txt");
  std::vector<std::string> environment = {"EVENT_LOG=" + log};
};

TEST_F(EventLogExample, WritesEachChangeDown) {
  const ProcessResult result = Run({"fill", form, "city=London", "-o", out});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(ReadFile(log), "will change city \"London\"\nchanged city \"London\"\n");
}

TEST_F(EventLogExample, CancelsAChange) {
  environment.push_back("EVENT_LOG_CANCEL=city");
  const ProcessResult result = Run({"fill", form, "city=London", "-o", out});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(ReadFile(log), "cancelled city \"London\"\n");
  EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(EventLogExample, PutsAnotherValueInAValuesPlace) {
  environment.push_back("EVENT_LOG_REPLACE=nobody=somebody");
  const ProcessResult result = Run({"act", form, "--field", "go", "-o", out});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_NE(ReadFile(log).find("replaced name \"nobody\" by \"somebody\"\n"
                               "changed name \"somebody\"\n"),
            std::string::npos)
      << ReadFile(log);
  EXPECT_EQ(FieldNamed(FieldsOf(out), "name")["value"], "somebody");
  // Also when that is what stood there before.
  const ProcessResult filled = Run({"fill", out, "name=nobody", "--in-place"});
  EXPECT_EQ(filled.status, 3) << filled.err;
  EXPECT_NE(filled.err.find("name: a plug-in changed the value given; now \"somebody\" stands"),
            std::string::npos)
      << filled.err;
}

struct ListValidatorExample : testing::Test {
  ListValidatorExample() {
    WriteFile(form, FormPdf({WidgetField("Tx", "land"), WidgetField("Tx", "zip"),
                             WidgetField("Tx", "city"), WidgetField("Tx", "region")}));
    WriteFile(rules,
              "# where people live\n"
              "only land: Austria; Germany\n\n"
              "fill city from zip: 1010 = Vienna; 80331 = Munich  # and so on\n"
              "fill region from city: Munich = Bavaria\n");
  }
  ProcessResult Fill(std::vector<std::string> values, const std::string& plugIn = "") {
    std::vector<std::string> command = {"--plugin", LIST_VALIDATOR_PLUGIN};
    if (!plugIn.empty()) command.insert(command.end(), {"--plugin", plugIn});
    command.insert(command.end(), {"fill", form, "-o", out});
    command.insert(command.end(), values.begin(), values.end());
    return Quillon(command, {}, {"LIST_VALIDATOR_FILE=" + rules, "EVENT_LOG=" + log});
  }
  Json Value(const std::string& name) { return FieldNamed(FieldsOf(out), name)["value"]; }

  TempFolder folder;
  std::string form = folder.File("form.pdf");
  std::string out = folder.File("out.pdf");
  std::string rules = folder.File("rules.txt");
  std::string log = folder.File("events.txt");
};

TEST_F(ListValidatorExample, LetsOnlyListedValuesIn) {
  const ProcessResult refused = Fill({"land=Atlantis"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_NE(refused.err.find("land: \"Atlantis\" is not one of Austria, Germany"),
            std::string::npos)
      << refused.err;
  EXPECT_FALSE(std::filesystem::exists(out));
  EXPECT_EQ(Fill({"land=Germany", "zip=9"}).status, 0);
  EXPECT_EQ(Value("land"), "Germany");
  EXPECT_EQ(Value("city"), nullptr);
}

TEST_F(ListValidatorExample, FillsWhatFollowsFromOneFieldToTheNext) {
  const ProcessResult result = Fill({"zip=80331"});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(Value("city"), "Munich");
  EXPECT_EQ(Value("region"), "Bavaria");
}

TEST_F(ListValidatorExample, WorksBesideOtherPlugInsOfTheSameMake) {
  const ProcessResult result = Fill({"zip=1010"}, EVENT_LOG_PLUGIN);
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(Value("city"), "Vienna");
  EXPECT_NE(ReadFile(log).find("changed city \"Vienna\"\n"), std::string::npos) << ReadFile(log);
}

TEST_F(ListValidatorExample, SaysWhatIsWrongWithItsFile) {
  WriteFile(rules, "only land: Austria\nland must be Austria\n");
  const ProcessResult result = Fill({"land=Germany"});
  EXPECT_NE(result.err.find("line 2 is no rule"), std::string::npos) << result.err;
}

}  // namespace
}  // namespace quillon::test
