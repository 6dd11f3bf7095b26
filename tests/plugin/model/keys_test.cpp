#include "plugin/model/keys.h"

#include <set>

#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

struct Keys : ModelHost {};

TEST_F(Keys, roles_with_one_spelling_hold_the_atom_that_documents_give) {
  Open({quillon::test::WidgetField("Tx", "a", "/BS << /S /D >>")});
  const ObjectHandle style = Objects->DictGet(Field(0), key::BS);
  const Atom read = Objects->NameValue(Objects->DictGet(style, key::S));
  for (Atom role : {key::AppearanceDown, key::BorderDashed, key::DashArray, key::TriggerDown}) {
    EXPECT_EQ(role, read);
  }
  EXPECT_NE(key::H, key::N);
}

TEST_F(Keys, every_role_has_an_atom_and_all_spellings_are_distinct_names) {
  std::set<Atom> atoms;
  std::size_t roles = 0;
#define QUILLFORM_COLLECT(Role, spelling)                \
  EXPECT_STREQ(Core->NameFromAtom(key::Role), spelling); \
  atoms.insert(key::Role);                               \
  ++roles;
  QUILLFORM_KEYS(QUILLFORM_COLLECT)
#undef QUILLFORM_COLLECT
  EXPECT_EQ(roles, 153U);
  EXPECT_EQ(atoms.size(), 137U);
}

TEST_F(Keys, numbers_map_to_keys_and_unknown_numbers_to_none) {
  EXPECT_EQ(FlagsKey(0), key::F);
  EXPECT_EQ(FlagsKey(1), key::Ff);
  EXPECT_EQ(FlagsKey(2), kNoAtom);
  EXPECT_EQ(InheritableKey(kBitOH), key::OH);
  EXPECT_EQ(InheritableKey(0x40), kNoAtom);
  EXPECT_EQ(InheritableKey(kBitV | kBitDV), kNoAtom);
}

}  // namespace
}  // namespace quillform
