#include "plugin/exchange/triggers.h"

#include <gtest/gtest.h>

#include "plugin/exchange/action_chain.h"
#include "plugin/model/keys.h"
#include "quillon/objects/pdf_file.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

constexpr const char* kActionB = "<< /S /B >>";

struct TriggersTest : ModelHost {
  // Object `index` of those that stand after the only field, "button".
  ObjectHandle Extra(std::uint32_t index) {
    return quillon::ObjectByNumber(objects, quillon::test::kFirstField + 1 + index);
  }
  void OpenWith(const std::string& entries, const std::vector<std::string>& extras = {}) {
    Open({quillon::test::WidgetField("Btn", "button", "/Ff 65536 " + entries)},
         {.objects = extras});
    owner = Field(0);
  }
  ActionHandle NewAction(const char* type, bool indirect) {
    const ObjectHandle dict = Objects->NewDict(objects, indirect, 1);
    Objects->DictPut(dict, key::S, Name(type));
    return Document->ActionFromObject(dict);
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
  OpenWith("/A << /S /Own >> /Dest [3 0 R /Fit]");
  EXPECT_EQ(TypesOf(key::TriggerUp, true), "GoTo ") << "the destination comes first";
  OpenWith("/AA << >>");
  EXPECT_TRUE(HasTriggerAction(owner, kAnyTrigger, true));
  EXPECT_FALSE(HasTriggerAction(owner, key::TriggerUp, false));
  OpenWith("/AA (text)");
  EXPECT_FALSE(HasTriggerAction(owner, key::TriggerUp, false)) << "an AA that is none";
}

TEST_F(TriggersTest, actions_and_destinations_take_each_others_place) {
  OpenWith("/Dest [3 0 R /Fit]");
  SetTriggerAction(owner, key::TriggerUp, NewAction("New", true), true);
  EXPECT_EQ(TypesOf(key::TriggerUp, true), "New ");
  EXPECT_EQ(Entry(owner, "Dest"), "null");
  const ObjectHandle destination = Objects->NewArray(objects, true, 1);
  Objects->ArrayPut(destination, 0, Text("x"));
  SetTriggerAction(owner, key::TriggerUp, Document->ActionFromObject(destination), true);
  EXPECT_EQ(Entry(owner, "A"), "null");
  EXPECT_EQ(Entry(owner, "Dest"), "[(x)]");
  SetTriggerAction(owner, key::TriggerUp, nullptr, true);
  EXPECT_FALSE(HasTriggerAction(owner, kAnyTrigger, true));
}

TEST_F(TriggersTest, additional_actions_are_made_room_for_and_a_placed_one_is_copied) {
  OpenWith("/A << /S /Own /Note (a) >>");
  SetTriggerAction(owner, key::TriggerEnter, GetTriggerAction(owner, key::TriggerUp, true), true);
  EXPECT_EQ(Entry(owner, "AA"), "<< /E << /Note (a) /S /Own >> >>");
  SetTriggerAction(owner, key::TriggerUp, nullptr, true);
  EXPECT_EQ(Entry(owner, "AA"), "<< /E << /Note (a) /S /Own >> >>");
  SetTriggerAction(owner, key::TriggerEnter, nullptr, true);
  EXPECT_FALSE(HasTriggerAction(owner, key::TriggerEnter, true));
}

TEST_F(TriggersTest, a_chain_follows_next_and_each_element_of_an_array_depth_first) {
  OpenWith("/A << /S /A /Next [ << /S /B /Next << /S /C >> >> 7 << /S /D >> ] >>");
  EXPECT_EQ(TypesOf(key::TriggerUp, true), "A B C D ");
}

TEST_F(TriggersTest, circles_and_endless_chains_end) {
  OpenWith("/A 11 0 R", {"<< /S /A /Next [ 12 0 R 11 0 R ] >>", "<< /S /B /Next 11 0 R >>"});
  EXPECT_EQ(TypesOf(key::TriggerUp, true), "A B ");
  std::vector<std::string> many;
  for (std::uint32_t i = 0; i < kMostActions + 5; ++i) {
    many.push_back("<< /S /A /Next " + quillon::test::Ref(12 + static_cast<int>(i)) + " >>");
  }
  OpenWith("/A 11 0 R", many);
  EXPECT_EQ(GetTriggerActions(owner, key::TriggerUp, "", true).actions.size(), kMostActions);
}

TEST_F(TriggersTest, a_list_becomes_one_chain_whose_last_action_has_no_next) {
  OpenWith("/A << /S /A /Next [ << /S /B /Next << /S /C /Next 11 0 R >> >> ] >>", {kActionB});
  ActionList list = GetTriggerActions(owner, key::TriggerUp, "button", true);
  EXPECT_TRUE(list.valid);
  list.actions.pop_back();  // B of the extra object
  SetTriggerActions(owner, &list, true);
  EXPECT_EQ(Entry(owner, "A"), "<< /Next << /Next << /S /C >> /S /B >> /S /A >>");
  EXPECT_EQ(Types(list), "A B C ") << "the list names what is in the document now";
  std::swap(list.actions[0], list.actions[2]);
  SetTriggerActions(owner, &list, true);
  EXPECT_EQ(TypesOf(key::TriggerUp, true), "C B A ");
  list.actions.clear();
  SetTriggerActions(owner, &list, true);
  EXPECT_FALSE(HasTriggerAction(owner, key::TriggerUp, true));
}

TEST_F(TriggersTest, actions_of_their_own_stay_themselves_and_never_follow_themselves) {
  OpenWith("", {"<< /S /A /Next 12 0 R >>", "<< /S /B >>"});
  ActionList list{key::TriggerDown, "", {}, true};
  const ActionHandle a = Document->ActionFromObject(Extra(0));
  const ActionHandle b = Document->ActionFromObject(Extra(1));
  list.actions = {b, a, b};
  SetTriggerActions(owner, &list, true);
  EXPECT_EQ(TypesOf(key::TriggerDown, true), "B A B ");
  EXPECT_TRUE(Objects->Equal(Document->ActionDict(list.actions[0]), Extra(1)));
  EXPECT_TRUE(Objects->Equal(Document->ActionDict(list.actions[1]), Extra(0)));
}

TEST_F(TriggersTest, a_destination_at_the_head_of_a_longer_list_becomes_an_action) {
  OpenWith("/Dest [3 0 R /Fit]");
  ActionList list = GetTriggerActions(owner, key::TriggerUp, "", true);
  list.actions.push_back(NewAction("B", true));
  SetTriggerActions(owner, &list, true);
  EXPECT_EQ(Entry(owner, "Dest"), "null");
  EXPECT_EQ(TypesOf(key::TriggerUp, true), "GoTo B ");
}

}  // namespace
}  // namespace quillform
