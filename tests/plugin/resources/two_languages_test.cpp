#include <gtest/gtest.h>

#include <string>

#include "plugin/host/host.h"
#include "plugin/resources/resources.h"
#include "quillon/core/operations.h"
#include "tests/plugin/host/settings_sandbox.h"
#include "tests/support/test_host.h"

namespace quillform {
namespace {

template <typename Table>
Table* HostTable(const char* name, std::uint32_t version) {
  return static_cast<Table*>(quillon::core::GetTable(quillon::core::AtomFromName(name), version));
}

std::string LocalString(std::uint32_t id) {
  char text[64];
  LoadLocalString(id, text, sizeof text);
  return text;
}

// The language is found once in a process, so this is one test.
TEST(SecondLanguage, is_chosen_by_the_users_setting_and_lacks_nothing) {
  ClearSettings();
  StoreSettingText("General", "Language", "DEU");
  const quillon::test::TestHost host;
  Support = HostTable<quillon::SupportTable>(quillon::kSupportTableName, quillon::kSupportVersion);
  Viewer = HostTable<quillon::ViewerTable>(quillon::kViewerTableName, quillon::kViewerVersion);

  EXPECT_EQ(LanguageOffset(), 146u);
  EXPECT_EQ(LocalString(8), "DEU");
  EXPECT_EQ(LocalString(19), "Ja");
  EXPECT_EQ(LocalString(20), "No") << "missing in the second language";
  EXPECT_EQ(LocalString(5), "For everybody") << "not that of id 151";
  char small[4];
  EXPECT_EQ(LoadLocalString(5, small, sizeof small), 3u);
  EXPECT_STREQ(small, "For") << "cut to the buffer";
}

}  // namespace
}  // namespace quillform
