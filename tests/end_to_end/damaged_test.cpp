// Files damaged in every way that the breaker knows: each is filled and comes out sound, or is
// refused with a message and nothing written.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/breaker/outcome.h"
#include "tests/breaker/ways.h"
#include "tests/end_to_end/process.h"

namespace quillon::test {
namespace {

// The example as it is, with its objects deflated, and encrypted: the same bytes in every run.
std::vector<std::string> Forms(const TemporaryFolder& folder) {
  std::vector<std::string> forms = {ExampleForm()};
  if (!HasTool("qpdf")) return forms;
  const std::string streams = folder.File("streams.pdf");
  const std::string encrypted = folder.File("encrypted.pdf");
  RunProcess({"qpdf", "--static-id", "--object-streams=generate", ExampleForm(), streams});
  RunProcess({"qpdf", "--static-id", "--static-aes-iv", "--encrypt", "", "owner", "128",
              "--use-aes=y", "--", ExampleForm(), encrypted});
  forms.insert(forms.end(), {streams, encrypted});
  return forms;
}

struct Damaged : testing::TestWithParam<DamageWay> {};

TEST_P(Damaged, IsFilledAndSoundOrRefused) {
  const TemporaryFolder folder;
  int damaged = 0;
  for (const std::string& form : Forms(folder)) {
    SCOPED_TRACE(form);
    std::string bytes = ReadFile(form);
    if (!GetParam().damage(bytes)) continue;
    ++damaged;
    const std::string file = folder.File("damaged.pdf");
    WriteFile(file, bytes);
    const Outcome outcome = OutcomeOf(file, "applicant.city");
    EXPECT_NE(outcome.verdict, Verdict::kBad) << outcome.text;
    const bool allowed = outcome.verdict != Verdict::kAsGood || GetParam().hitsContent;
    EXPECT_TRUE(allowed) << "the checker finds damaged data";
  }
  EXPECT_GT(damaged, 0) << "no form has what this way damages";
}

std::string NameOfWay(const testing::TestParamInfo<DamageWay>& info) {
  std::string name = info.param.name;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}
INSTANTIATE_TEST_SUITE_P(Ways, Damaged, testing::ValuesIn(DamageWays()), NameOfWay);

}  // namespace
}  // namespace quillon::test
