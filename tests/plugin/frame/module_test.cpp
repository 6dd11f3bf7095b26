#include <gtest/gtest.h>

#include "quillon/core/host.h"
#include "quillon/core/operations.h"
#include "sdk/forms_table.h"
#include "tests/support/test_host.h"

namespace quillform {
namespace {

// The built module, not the code linked into this program: its own resources and exceptions.
TEST(PlugInModule, is_loaded_by_file_and_raises_into_the_hosts_blocks) {
  quillon::test::TestHost host;
  quillon::LoadPlugIn(QUILLFORM_MODULE_FILE);
  quillon::InitialisePlugIns();
  ASSERT_EQ(quillon::PlugIns().size(), 1u);
  EXPECT_TRUE(quillon::PlugIns().front().initialised);
  const auto* table = static_cast<const FormsTable*>(
      quillon::core::GetTable(quillon::core::AtomFromName(kFormsTableName), kFormsVersion));
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(quillon::test::RaisedBy([&] {
              table->FormEventUnregister(kEventKeystroke, 12345);
              return 0;
            }),
            quillon::kErrorBadParameter);
  EXPECT_EQ(quillon::OpenFrameCount(), 0u);
}

}  // namespace
}  // namespace quillform
