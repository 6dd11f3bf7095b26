#include "plugin/exchange/triggers.h"

#include <gtest/gtest.h>

#include "plugin/exchange/action_chain.h"
#include "plugin/model/keys.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

struct TriggersTest : ModelHost {
  void OpenWith(const std::string& entries, const std::vector<std::string>& extras = {}) {
    Open({quillon::test::WidgetField("Btn", "button", "/Ff 65536 " + entries)},
         {.objects = extras});
    owner = Field(0);
  }
  std::string Types(const ActionList& list) {
    std::string types;
    for (const ActionHandle action : list.actions) {
      types += Core->NameFromAtom(Document->ActionType(action));
      types += ' ';
    }
    return types;
  }
  std::string TypesOf(Atom trigger, bool useA) {
    return Types(GetTriggerActions(owner, trigger, "button", useA));
  }

  ObjectHandle owner = kNullObject;
};

TEST_F(TriggersTest, a_widgets_own_action_or_destination_is_its_mouse_up_with_use_a) {
  OpenWith("/A << /S /Own >> /AA << /U << /S /Additional >> /D << /S /Down >> >>");
  EXPECT_EQ(TypesOf(key::TriggerUp, true), "Own ");
  EXPECT_EQ(TypesOf(key::TriggerUp, false), "Additional ");
  EXPECT_EQ(TypesOf(key::TriggerDown, true), "Down ");
  EXPECT_FALSE(HasTriggerAction(owner, key::TriggerEnter, true));
  OpenWith("/A << /S /Own >> /Dest [3 0 R /Fit] /AA (text)");
  EXPECT_EQ(TypesOf(key::TriggerUp, true), "GoTo ") << "the destination comes first";
  EXPECT_FALSE(HasTriggerAction(owner, key::TriggerUp, false)) << "an AA that is none";
}

TEST_F(TriggersTest, a_chain_is_followed_depth_first_and_ends) {
  OpenWith("/A 11 0 R", {"<< /S /A /Next [ 12 0 R 7 11 0 R << /S /D >> ] >>",
                         "<< /S /B /Next << /S /C /Next 11 0 R >> >>"});
  EXPECT_EQ(TypesOf(key::TriggerUp, true), "A B C D ") << "depth first";
  std::vector<std::string> many;
  for (std::uint32_t i = 0; i < kMostActions + 5; ++i) {
    many.push_back("<< /S /A /Next " + quillon::test::Ref(12 + static_cast<int>(i)) + " >>");
  }
  OpenWith("/A 11 0 R", many);
  EXPECT_EQ(GetTriggerActions(owner, key::TriggerUp, "", true).actions.size(), kMostActions);
}

TEST_F(TriggersTest, a_list_becomes_one_chain_whose_last_action_has_no_next) {
  OpenWith("/A << /S /A /Next [ << /S /B /Next << /S /C /Next 11 0 R >> >> ] >>", {"<< /S /B >>"});
  ActionList list = GetTriggerActions(owner, key::TriggerUp, "button", true);
  EXPECT_TRUE(list.valid);
  list.actions.pop_back();  // B of the extra object
  SetTriggerActions(owner, &list, true);
  EXPECT_EQ(Entry(owner, "A"), "<< /Next << /Next << /S /C >> /S /B >> /S /A >>");
  EXPECT_EQ(Types(list), "A B C ") << "the list names what is in the document now";
  std::swap(list.actions[0], list.actions[2]);
  SetTriggerActions(owner, &list, true);
  EXPECT_EQ(TypesOf(key::TriggerUp, true), "C B A ");
}

}  // namespace
}  // namespace quillform
