#include "plugin/model/form_record.h"
#include "quillon/document/open_document.h"
#include "tests/plugin/model/placement_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

struct FieldTree : ModelHost {};

TEST_F(FieldTree, is_walked_by_buckets_with_the_newest_names_first) {
  // The remainders of their hashes: 20, 20, 8, 15, 17; a byte above 127 counts as negative.
  Load({WidgetField("Tx", "zip"), WidgetField("Tx", "born"), WidgetField("Tx", "Summe"),
        WidgetField("Tx", "A"), WidgetField("Tx", "a\xE9")});
  // Loading goes from the last element to the first.
  EXPECT_EQ(WalkedNames(doc, false, false), "zip born a\xE9 A Summe");
}

TEST_F(FieldTree, can_be_changed_by_the_routine_that_walks_it) {
  Load({WidgetField("Tx", "a"), WidgetField("Tx", "a"), WidgetField("Tx", "b"),
        WidgetField("Tx", "c")});
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

TEST_F(FieldTree, loads_what_is_sound_in_a_damaged_form) {
  Load({"/T (loop) /Kids [" + FieldRef(0) + " " + FieldRef(1) + " 17 " + FieldRef(4) + "]",
        WidgetField("Tx", "x", "/Parent " + FieldRef(0)), "/T (shared) /Kids [" + FieldRef(1) + "]",
        WidgetField("Tx", "widget", "/Kids [" + FieldRef(1) + "]"),
        WidgetField("Tx", "bad.name", "/Parent " + FieldRef(0)), WidgetField("Tx", "last")});
  EXPECT_NE(Node("loop.x"), nullptr);
  EXPECT_NE(Node("last"), nullptr);
  EXPECT_EQ(Node("loop.bad.name"), nullptr) << "a dot below the top";
  EXPECT_EQ(Entry(FieldNodeDict(Node("widget")), "Kids"), "null");
}

// Merging by name.

struct Merging : PlacementHost {
  // The last element bears the name that the first and others have.
  void LoadTwins(const std::string& formEntries) {
    Load({WidgetField("Tx", "a"), WidgetField("Tx", "b"),
          "/T (a) /FT /Tx /Kids [" + FieldRef(3) + "]",
          "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(2)},
         {.formEntries = formEntries});
  }
};

TEST_F(Merging, puts_a_widget_under_the_later_field_of_its_name) {
  LoadTwins("/NeedAppearances false");
  EXPECT_EQ(WalkedNames(doc, true, false), "a a b");
  EXPECT_EQ(Objects->ArrayLength(FieldsArray()), 2U);
  const ObjectHandle widget = Document->AnnotDict(Widget(0));
  EXPECT_EQ(Entry(widget, "T"), "null");
  EXPECT_EQ(HighestOfName(FieldNodeOf(widget)), Node("a"));
  EXPECT_EQ(Entry(Form(), "$Wa"), "true");
}

TEST_F(Merging, keeps_names_apart_unless_the_form_asks) {
  LoadTwins("");
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

TEST_F(Merging, hides_a_widget_that_cannot_be_placed) {
  fieldPlacement.AddWidgetUnderName = [](ObjectHandle, const char*) -> FieldNode {
    Raise(quillon::kErrorBadParameter);
  };
  Open({WidgetField("Tx", "a.b")});
  EXPECT_EQ(FieldNodeOf(Field(0)), nullptr);
  EXPECT_EQ(Document->AnnotFlags(Widget(0)), 3U);
  EXPECT_EQ(Entry(Form(), "$Wa"), "true");
}

// Deleting.

TEST_F(FieldTree, deleting_ends_the_sharing_of_a_name_even_when_a_subscriber_fails) {
  static std::string unshared;
  unshared.clear();
  Subscribe(kEventNameUnshared, [](FormEventRecord* event, void*) {
    unshared += FieldNodeName(event->node);
    Raise(quillon::kErrorGeneral);
  });
  Load({WidgetField("Tx", "a"), WidgetField("Tx", "a")});
  FieldNode other = FieldNodeOfWidget(Widget(1));
  EXPECT_TRUE(other->status & kNodeNameShared);
  EXPECT_EQ(CatchFailure([&] { DeleteFieldNode(FieldNodeOfWidget(Widget(0))); }),
            quillon::kErrorGeneral);
  EXPECT_FALSE(other->status & kNodeNameShared);
  EXPECT_EQ(Node("a"), other);
  EXPECT_EQ(unshared, "a");
  EXPECT_EQ(Objects->ArrayLength(FieldsArray()), 1U);
}

TEST_F(FieldTree, deleting_leaves_no_parent_to_the_kids_of_a_node) {
  Load(TwoWidgets());
  FieldNode kid = FieldNodeOfWidget(Widget(0));
  DeleteFieldNode(Node("pair"));
  EXPECT_EQ(kid->parent, nullptr);
  EXPECT_EQ(HighestOfName(kid), kid);
}

}  // namespace
}  // namespace quillform
