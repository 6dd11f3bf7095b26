#include "tests/end_to_end/fields_of.h"

namespace quillon::test {
namespace {

struct PluginOption : testing::Test {
  std::string Log() { return ReadFile(log); }

  TempFolder folder;
  std::string log = folder.File("sample.log");
  std::vector<std::string> environment = {"QUILLON_SAMPLE_LOG=" + log};
};

TEST_F(PluginOption, ForeignPlugInListensCatchesRaisesAndIsUnloaded) {
  const std::string out = folder.File("out.pdf");
  const ProcessResult result = Quillon(
      {"--plugin", SAMPLE_PLUGIN, "fill", ExampleForm(), "applicant.city=London", "-o", out}, {},
      environment);
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(Log(), "raise caught\nopened 0\nunloaded\n");
}

TEST_F(PluginOption, PluginsCommandTellsWhoRegisteredWhat) {
  const ProcessResult result = Quillon({"--plugin", SAMPLE_PLUGIN, "plugins"}, {}, environment);
  EXPECT_EQ(result.status, 0) << result.err;
  const std::size_t forms = result.out.find("Forms\n"), sample = result.out.find("Sample\n");
  ASSERT_NE(forms, std::string::npos) << result.out;
  ASSERT_NE(sample, std::string::npos) << result.out;
  EXPECT_LT(forms, sample);
  EXPECT_NE(result.out.find("notification: 0x04", sample), std::string::npos) << result.out;
}

TEST_F(PluginOption, QuestionsOfPlugInsAreAnsweredNoUnlessToldOtherwise) {
  environment.push_back("QUILLON_SAMPLE_QUESTION=Caf\xe9?");
  const ProcessResult no = Quillon({"--plugin", SAMPLE_PLUGIN, "plugins"}, {}, environment);
  EXPECT_EQ(no.status, 0);
  EXPECT_EQ(no.err, "quillon: Caf\u00e9? - No (--yes answers Yes)\n");
  EXPECT_NE(Log().find("answer 7\n"), std::string::npos) << Log();
  const ProcessResult yes =
      Quillon({"--plugin", SAMPLE_PLUGIN, "plugins", "--yes"}, {}, environment);
  EXPECT_EQ(yes.err, "quillon: Caf\u00e9? - Yes\n");
  EXPECT_NE(Log().find("answer 6\n"), std::string::npos) << Log();
}

TEST_F(PluginOption, ModuleThatIsNoPlugInIsAnError) {
  const ProcessResult result = Quillon({"--plugin", folder.File("missing.so"), "plugins"});
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("missing.so"), std::string::npos) << result.err;
}

}  // namespace
}  // namespace quillon::test
