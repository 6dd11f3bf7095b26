// A plug-in of another maker.
#include "tests/end_to_end/fields_of.h"

namespace quillon::test {
namespace {

struct PluginOption : testing::Test {
  ProcessResult Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--plugin", SAMPLE_PLUGIN});
    return Quillon(arguments, {}, {"QUILLON_SAMPLE_LOG=" + log, question});
  }

  TemporaryFolder folder;
  std::string log = folder.File("sample.log");
  std::string question = "NO_QUESTION=";
};

TEST_F(PluginOption, ForeignPlugInListensCatchesRaisesAndIsUnloaded) {
  ExpectEnd(Run({"fill", ExampleForm(), "applicant.city=London", "-o", folder.File("out.pdf")}), 0);
  EXPECT_EQ(ReadFile(log), "raise caught\nopened 0\nunloaded\n");
}

TEST_F(PluginOption, PluginsCommandTellsWhoRegisteredWhat) {
  const ProcessResult result = Run({"plugins"});
  ExpectEnd(result, 0);
  const std::size_t forms = result.out.find("Forms\n"), sample = result.out.find("Sample\n");
  ASSERT_NE(sample, std::string::npos) << result.out;
  EXPECT_LT(forms, sample);
  EXPECT_NE(result.out.find("notification: 0x04", sample), std::string::npos) << result.out;
}

TEST_F(PluginOption, QuestionsOfPlugInsAreAnsweredNoUnlessToldOtherwise) {
  question = "QUILLON_SAMPLE_QUESTION=Caf\xe9?";
  EXPECT_EQ(Run({"plugins"}).err, "quillon: Caf\u00e9? - No (--yes answers Yes)\n");
  EXPECT_EQ(Run({"plugins", "--yes"}).err, "quillon: Caf\u00e9? - Yes\n");
  const std::string once = "raise caught\nanswer ";
  EXPECT_EQ(ReadFile(log), once + "7\nunloaded\n" + once + "6\nunloaded\n");
}

TEST_F(PluginOption, ModuleThatIsNoPlugInIsAnError) {
  ExpectEnd(Quillon({"--plugin", folder.File("missing.so"), "plugins"}), 2, {"missing.so"});
}

}  // namespace
}  // namespace quillon::test
