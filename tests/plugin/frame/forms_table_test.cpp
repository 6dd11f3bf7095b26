#include "sdk/forms_table.h"

#include <gtest/gtest.h>

#include "plugin/frame/plugin_main.h"
#include "quillon/core/operations.h"
#include "tests/support/test_host.h"

namespace quillform {
namespace {

FormsTable* Forms(std::uint32_t version = kFormsVersion) {
  return static_cast<FormsTable*>(
      quillon::core::GetTable(quillon::core::AtomFromName(kFormsTableName), version));
}

TEST(FormsTable, is_offered_at_its_version_and_answers_for_no_node_without_raising) {
  const quillon::test::TestHost host({&PlugInMain});
  EXPECT_EQ(Forms(0x20000), nullptr);
  EXPECT_EQ(Forms(0x0FFFF), nullptr);
  const FormsTable* table = Forms();
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(Forms(), table);
  quillon::CallGuarded([&] {
    EXPECT_EQ(table->FieldNodeIsValid(nullptr), 0);
    EXPECT_EQ(table->NodeIsWidget(nullptr), 0);
    EXPECT_EQ(table->FieldNodeName(nullptr), nullptr);
    EXPECT_EQ(table->GetFieldFlags(nullptr, 1), 0u);
    EXPECT_EQ(table->SetFieldOptions(nullptr, quillon::kNullObject), 1u);
    EXPECT_EQ(table->FieldNodeDict(nullptr).first, 0u);
  });
}

}  // namespace
}  // namespace quillform
