#include <algorithm>
#include <sstream>

#include "plugin/host/form_events.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"
#include "quillon/document/open_document.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

struct FieldTree : ModelHost {
  // A field "pair" with two widgets, and a field "alone".
  void OpenPair() {
    Open({"/T (pair) /FT /Tx /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]",
          "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0),
          "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0), WidgetField("Tx", "alone")});
  }
};

// The order as it follows from the rules: buckets from 22 to 0, newest name first in each.
std::string ExpectedOrder(const std::vector<std::string>& madeInOrder) {
  std::vector<std::pair<unsigned, std::string>> names;
  for (auto name = madeInOrder.rbegin(); name != madeInOrder.rend(); ++name) {
    unsigned hash = 0;
    for (char c : *name) hash = hash * 31 + static_cast<unsigned>(c);
    if (name->size() == 1) hash = static_cast<unsigned>((*name)[0]) * 8 + 1;
    names.emplace_back(22 - hash % 23, *name);
  }
  std::stable_sort(names.begin(), names.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::ostringstream order;
  for (const auto& [bucket, name] : names) order << (order.tellp() == 0 ? "" : " ") << name;
  return order.str();
}

TEST_F(FieldTree, is_walked_by_buckets_with_the_newest_names_first) {
  std::vector<std::string> fields;
  std::vector<std::string> names;
  for (int i = 0; i < 60; ++i) {
    names.push_back(i % 3 == 0 ? std::string(1, static_cast<char>('A' + i))
                               : "f" + std::to_string(i * i));
    fields.push_back(WidgetField("Tx", i % 3 == 0 && names.back() == "\\" ? "\\\\" : names.back()));
  }
  Open(fields);
  LoadAllFields(doc);
  std::reverse(names.begin(), names.end());  // loading goes from the last element to the first
  EXPECT_EQ(WalkedNames(doc, false, false), ExpectedOrder(names));
}

TEST_F(FieldTree, gives_a_dictionary_one_node_whose_name_finds_it) {
  OpenPair();
  FieldNode node = FieldNodeOf(Field(1));
  ASSERT_TRUE(FieldNodeIsValid(node));
  FieldNode pair = FieldNodeOf(Field(0));
  EXPECT_EQ(Node("pair"), pair);
  EXPECT_EQ(FieldNodeOf(Field(1)), node);
  EXPECT_EQ(Node("alone"), node);
  EXPECT_EQ(Node("Alone"), nullptr);
  EXPECT_EQ(FieldNodeOfWidget(Widget(2)), node);
  EXPECT_EQ(FieldNodeOf(kNullObject), nullptr);
}

TEST_F(FieldTree, brings_all_widgets_of_a_field_with_the_first) {
  OpenPair();
  FieldNode widget = FieldNodeOfWidget(Widget(0));
  FieldNode field = Node("pair");
  EXPECT_TRUE(Objects->Equal(FieldNodeDict(field), Field(0))) << "a field comes before its widgets";
  ASSERT_NE(ExistingNodeOf(KidOf(Field(0), 1)), nullptr);
  for (FieldNode node = field; node != nullptr; node = node->sameNameNext) {
    EXPECT_TRUE(node->status & kNodeNameShared);
    EXPECT_TRUE(FieldNodeIsValid(node));
  }
  EXPECT_EQ(HighestOfName(widget), field);
  EXPECT_TRUE(FieldNodeIsTerminal(field));
  EXPECT_TRUE(NodeIsWidget(widget));
  EXPECT_FALSE(NodeIsWidget(field));
}

TEST_F(FieldTree, walks_pass_over_fields_with_kids_or_take_one_node_a_name) {
  OpenPair();
  LoadAllFields(doc);
  EXPECT_EQ(WalkedNames(doc, false, false), ExpectedOrder({"alone", "pair", "pair", "pair"}));
  EXPECT_EQ(WalkedNames(doc, true, false), ExpectedOrder({"alone", "pair", "pair"}));
  EXPECT_EQ(WalkedNames(doc, true, true), ExpectedOrder({"alone", "pair"}));
  std::vector<FieldNode> first;
  VisitFieldNodes(doc, false, true, [&](FieldNode node) -> Boolean {
    first.push_back(node);
    return 0;
  });
  EXPECT_EQ(first.size(), 1U);
}

TEST_F(FieldTree, can_be_changed_by_the_routine_that_walks_it) {
  Open({WidgetField("Tx", "a"), WidgetField("Tx", "a"), WidgetField("Tx", "b"),
        WidgetField("Tx", "c")});
  LoadAllFields(doc);
  int visited = 0;
  VisitFieldNodes(doc, false, false, [&](FieldNode node) -> Boolean {
    ++visited;
    DeleteFieldNode(node);
    return 1;
  });
  EXPECT_EQ(visited, 4);
  EXPECT_EQ(WalkedNames(doc, false, false), "");
  EXPECT_EQ(Objects->ArrayLength(FieldsArray()), 0U);
}

TEST_F(FieldTree, tells_terminal_fields_from_groups) {
  Open({"/T (g) /Kids [" + FieldRef(1) + "]", WidgetField("Tx", "x", "/Parent " + FieldRef(0))});
  LoadAllFields(doc);
  EXPECT_FALSE(FieldNodeIsTerminal(Node("g")));
  EXPECT_TRUE(FieldNodeIsTerminal(Node("g.x")));
  EXPECT_EQ(Node("g.x")->type, key::Tx);
}

TEST_F(FieldTree, inherits_type_and_flags_downwards) {
  Open({"/T (g) /FT /Ch /Ff 6 /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]",
        "/T (x) /Subtype /Widget /F 4 /Parent " + FieldRef(0),
        "/T (y) /FT /Tx /Ff 1 /Subtype /Widget /Parent " + FieldRef(0)});
  LoadAllFields(doc);
  EXPECT_EQ(Node("g.x")->type, key::Ch);
  EXPECT_EQ(GetFieldFlags(Node("g.x"), 1), 6U);
  EXPECT_EQ(GetFieldFlags(Node("g.x"), 0), 4U);
  EXPECT_EQ(Node("g.y")->type, key::Tx);
  EXPECT_EQ(GetFieldFlags(Node("g.y"), 1), 1U);
}

TEST_F(FieldTree, is_not_there_while_the_form_is_not_live) {
  Open({WidgetField("Tx", "a")});
  quillon::SetPermissions(doc, 0);
  EXPECT_FALSE(FormIsUsable(doc));
  EXPECT_EQ(FieldNodeOf(Field(0)), nullptr);
  LoadAllFields(doc);
  EXPECT_EQ(WalkedNames(doc, false, false), "");
  quillon::SetPermissions(doc, quillon::kPermitForms);
  LoadAllFields(doc);
  EXPECT_NE(Node("a"), nullptr);
}

TEST_F(FieldTree, loads_what_is_sound_in_a_damaged_form) {
  Open({"/T (loop) /Kids [" + FieldRef(0) + " " + FieldRef(1) + " 17 " + FieldRef(4) + "]",
        WidgetField("Tx", "x", "/Parent " + FieldRef(0)), "/T (shared) /Kids [" + FieldRef(1) + "]",
        WidgetField("Tx", "widget", "/Kids [" + FieldRef(1) + "]"),
        WidgetField("Tx", "bad.name", "/Parent " + FieldRef(0)), WidgetField("Tx", "last")});
  LoadAllFields(doc);
  EXPECT_NE(Node("loop.x"), nullptr);
  EXPECT_NE(Node("last"), nullptr);
  EXPECT_EQ(Entry(FieldNodeDict(Node("widget")), "Kids"), "null");
}

TEST_F(FieldTree, is_loaded_once) {
  Open({WidgetField("Tx", "a")});
  LoadAllFields(doc);
  DeleteFieldNode(Node("a"));
  Objects->ArrayInsert(FieldsArray(), 0, Document->AnnotDict(Widget(0)));
  LoadAllFields(doc);
  EXPECT_EQ(Node("a"), nullptr);
}

TEST_F(FieldTree, takes_a_wrong_parent_for_none) {
  Open({WidgetField("Tx", "a", "/Parent 17")});
  FieldNode node = FieldNodeOfWidget(Widget(0));
  EXPECT_STREQ(FieldNodeName(node), "a");
  EXPECT_EQ(Entry(FieldNodeDict(node), "Parent"), "null");
}

TEST_F(FieldTree, frees_what_it_made_when_the_host_fails) {
  OpenPair();
  auto* const get = Objects->ArrayGet;
  Objects->ArrayGet = [](ObjectHandle, std::uint32_t) -> ObjectHandle {
    Raise(quillon::kErrorGeneral);
  };
  const FailureCode failure = CodeOf([&] { FieldNodeOfWidget(Widget(0)); });
  Objects->ArrayGet = get;
  EXPECT_EQ(failure, quillon::kErrorGeneral);
  EXPECT_EQ(ExistingNodeOf(KidOf(Field(0), 0)), nullptr);
  EXPECT_TRUE(FieldNodeIsValid(FieldNodeOfWidget(Widget(0))));
  EXPECT_EQ(WalkedNames(doc, false, false), "pair pair pair");
}

// Merging by name.

struct Merging : ModelHost {
  Merging() { fieldPlacement.AddWidgetUnderName = &AddToFieldOfName; }
  // The last element bears the name that the first and others have.
  void OpenTwins(const std::string& formEntries) {
    Open({WidgetField("Tx", "a"), WidgetField("Tx", "b"),
          "/T (a) /FT /Tx /Kids [" + FieldRef(3) + "]",
          "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(2)},
         {.formEntries = formEntries});
  }
};

TEST_F(Merging, puts_a_widget_under_the_later_field_of_its_name) {
  OpenTwins("/NeedAppearances false");
  LoadAllFields(doc);
  EXPECT_EQ(WalkedNames(doc, true, false), "a a b");
  EXPECT_EQ(Objects->ArrayLength(FieldsArray()), 2U);
  const ObjectHandle widget = Document->AnnotDict(Widget(0));
  EXPECT_EQ(Entry(widget, "T"), "null");
  EXPECT_EQ(HighestOfName(FieldNodeOf(widget)), Node("a"));
  EXPECT_EQ(Entry(Form(), "$Wa"), "true");
}

TEST_F(Merging, gives_the_same_alone_as_in_a_bulk_load) {
  OpenTwins("/NeedAppearances true");
  EXPECT_EQ(HighestOfName(FieldNodeOfWidget(Widget(0))), Node("a"));
  FieldNode other = FieldNodeOfWidget(Widget(1));
  EXPECT_EQ(other->parent, nullptr);
  EXPECT_EQ(Objects->ArrayLength(FieldsArray()), 2U);
}

TEST_F(Merging, keeps_names_apart_unless_the_form_asks) {
  OpenTwins("");
  LoadAllFields(doc);
  EXPECT_EQ(Objects->ArrayLength(FieldsArray()), 3U);
  EXPECT_EQ(Entry(Document->AnnotDict(Widget(0)), "T"), "(a)");
  EXPECT_TRUE(FieldNodeOfWidget(Widget(0))->status & kNodeNameShared);
}

TEST_F(Merging, appends_a_field_that_the_form_does_not_list) {
  Open({WidgetField("Tx", "a")}, {.formEntries = "/NeedAppearances true"});
  Objects->ArrayRemove(FieldsArray(), 0);
  for (int i = 0; i < 2; ++i) FieldNodeOfWidget(Widget(0));
  EXPECT_EQ(Objects->ArrayLength(FieldsArray()), 1U);
}

TEST_F(Merging, dissolves_a_group_that_belongs_to_a_later_field) {
  static std::string dissolved;
  dissolved.clear();
  fieldPlacement.ReparentKids = [](ObjectHandle dict) { dissolved += FullName(dict); };
  Open({"/T (a.b) /Kids [" + FieldRef(1) + "]", WidgetField("Tx", "x", "/Parent " + FieldRef(0)),
        "/T (a) /Kids [" + FieldRef(3) + "]", WidgetField("Tx", "y", "/Parent " + FieldRef(2))},
       {.formEntries = "/NeedAppearances true"});
  EXPECT_EQ(FieldNodeOf(Field(0)), nullptr);
  EXPECT_EQ(dissolved, "a.b");
}

TEST_F(Merging, places_a_widget_whose_name_is_a_path) {
  Open({WidgetField("Tx", "a.b"), "/T (a) /Kids [" + FieldRef(2) + "]",
        "/T (b) /FT /Tx /Parent " + FieldRef(1) + " /Kids [" + FieldRef(3) + "]",
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(2)});
  LoadAllFields(doc);
  FieldNode placed = FieldNodeOfWidget(Widget(0));
  EXPECT_STREQ(FieldNodeName(placed), "a.b");
  EXPECT_EQ(placed->parent, Node("a.b"));
  EXPECT_EQ(Entry(Form(), "$Wa"), "true");
  EXPECT_EQ(Document->AnnotFlags(Widget(0)), 4U);
}

TEST_F(Merging, hides_a_widget_that_cannot_be_placed) {
  fieldPlacement.AddWidgetUnderName = [](ObjectHandle, const char*) -> FieldNode {
    Raise(quillon::kErrorBadParameter);
  };
  Open({WidgetField("Tx", "a.b"), WidgetField("Tx", "c.d")});
  EXPECT_EQ(FieldNodeOf(Field(0)), nullptr);
  fieldPlacement.AddWidgetUnderName = nullptr;
  EXPECT_EQ(FieldNodeOf(Field(1)), nullptr);
  EXPECT_EQ(Document->AnnotFlags(Widget(0)), 3U);
  EXPECT_EQ(Document->AnnotFlags(Widget(1)), 3U);
  EXPECT_EQ(Entry(Form(), "$Wa"), "true");
}

// Deleting.

std::vector<std::string> unshared;

struct Deleting : FieldTree {
  Deleting() {
    unshared.clear();
    FormEventRegister(
        kEventNameUnshared,
        [](FormEventRecord* event, void*) { unshared.push_back(FieldNodeName(event->node)); },
        nullptr, nullptr);
  }
};

TEST_F(Deleting, ends_the_sharing_of_a_name) {
  Open({WidgetField("Tx", "a"), WidgetField("Tx", "a")});
  LoadAllFields(doc);
  FieldNode other = FieldNodeOfWidget(Widget(1));
  EXPECT_TRUE(other->status & kNodeNameShared);
  DeleteFieldNode(FieldNodeOfWidget(Widget(0)));
  EXPECT_FALSE(other->status & kNodeNameShared);
  EXPECT_EQ(Node("a"), other);
  EXPECT_EQ(unshared, std::vector<std::string>{"a"});
  EXPECT_EQ(Objects->ArrayLength(FieldsArray()), 1U);
}

TEST_F(Deleting, goes_up_through_parents_that_lose_their_last_kid) {
  Open({"/T (a) /Kids [" + FieldRef(1) + " " + FieldRef(3) + "]",
        "/T (b) /Parent " + FieldRef(0) + " /Kids [" + FieldRef(2) + "]",
        WidgetField("Tx", "c", "/Parent " + FieldRef(1)),
        WidgetField("Tx", "d", "/Parent " + FieldRef(0))});
  LoadAllFields(doc);
  const ObjectHandle a = Field(0);
  const ObjectHandle widget = Document->AnnotDict(Widget(0));
  DeleteFieldNode(Node("a.b.c"));
  EXPECT_EQ(Node("a.b"), nullptr);
  EXPECT_NE(Node("a"), nullptr);
  EXPECT_EQ(Entry(widget, "Parent"), "null");
  EXPECT_EQ(Objects->ArrayLength(Objects->DictGet(a, key::Kids)), 1U);
  DeleteFieldNode(Node("a.d"));
  EXPECT_EQ(WalkedNames(doc, false, false), "");
  EXPECT_EQ(Entry(a, "Kids"), "null");
  EXPECT_EQ(Objects->ArrayLength(FieldsArray()), 0U);
}

TEST_F(Deleting, is_carried_through_when_a_subscriber_fails) {
  FormEventRegister(
      kEventNameUnshared, [](FormEventRecord*, void*) { Raise(quillon::kErrorGeneral); }, nullptr,
      nullptr);
  Open({WidgetField("Tx", "a"), WidgetField("Tx", "a")});
  LoadAllFields(doc);
  EXPECT_EQ(CodeOf([&] { DeleteFieldNode(FieldNodeOfWidget(Widget(0))); }), quillon::kErrorGeneral);
  EXPECT_EQ(Objects->ArrayLength(FieldsArray()), 1U);
  EXPECT_EQ(WalkedNames(doc, false, false), "a");
}

TEST_F(Deleting, leaves_no_parent_to_the_kids_of_a_node) {
  OpenPair();
  LoadAllFields(doc);
  FieldNode kid = FieldNodeOfWidget(Widget(0));
  DeleteFieldNode(Node("pair"));
  EXPECT_EQ(kid->parent, nullptr);
  EXPECT_EQ(HighestOfName(kid), kid);
}

}  // namespace
}  // namespace quillform
