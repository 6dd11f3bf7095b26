#include "sdk/forms_table.h"

#include <gtest/gtest.h>

#include "quillon/core/operations.h"
#include "tests/plugin/frame/plug_in_life.h"

namespace quillform {
namespace {

using quillon::test::RaisedBy;

FormsTable* Forms(std::uint32_t version = kFormsVersion) {
  return static_cast<FormsTable*>(
      quillon::core::GetTable(quillon::core::AtomFromName(kFormsTableName), version));
}

TEST(FormsTable, is_one_and_the_same_for_every_request_at_its_version) {
  PlugInLife life;
  ASSERT_TRUE(life.SetUp());
  ASSERT_TRUE(life.ShakeHands());
  EXPECT_EQ(Forms(0x20000), nullptr);
  EXPECT_EQ(Forms(0x0FFFF), nullptr);
  const FormsTable* table = Forms();
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(Forms(), table);
  EXPECT_EQ(table->slotCount, 22u);
}

TEST(FormsTable, what_form_data_raises_reaches_the_callers_block) {
  PlugInLife life;
  ASSERT_TRUE(life.SetUp());
  ASSERT_TRUE(life.ShakeHands());
  const FormsTable* table = Forms();
  ASSERT_NE(table, nullptr);
  const quillon::ObjectHandle none = quillon::kNullObject;
  EXPECT_EQ(RaisedBy([&] { table->CreateFDFFromForm(nullptr, none, 0, 0, 0, 0, nullptr); }),
            quillon::kErrorBadParameter);
  EXPECT_EQ(RaisedBy([&] { table->ImportFDF(nullptr, nullptr); }), quillon::kErrorBadParameter);
  EXPECT_EQ(quillon::OpenFrameCount(), 0u);
}

TEST(FormsTable, answers_for_no_node_without_raising) {
  PlugInLife life;
  ASSERT_TRUE(life.SetUp());
  ASSERT_TRUE(life.ShakeHands());
  ASSERT_TRUE(life.Initialise());
  const FormsTable* table = Forms();
  quillon::CallGuarded([&] {
    EXPECT_EQ(table->FieldNodeIsValid(nullptr), 0);
    EXPECT_EQ(table->NodeIsWidget(nullptr), 0);
    EXPECT_EQ(table->FieldNodeName(nullptr), nullptr);
    EXPECT_EQ(table->GetFieldFlags(nullptr, 1), 0u);
    EXPECT_EQ(table->SetFieldOptions(nullptr, quillon::kNullObject), 1u);
    EXPECT_EQ(table->FieldNodeDict(nullptr).first, 0u);
  });
  life.Unload();
}

}  // namespace
}  // namespace quillform
